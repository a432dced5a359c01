// The codes of all findings, and the rules' files.
#include "findings/CheckRules.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "findings/Report.h"
#include "findings/Suggestion.h"
#include "reading/Files.h"
#include "text/Text.h"

namespace
{

// Documented one by one; scripts/check-docs holds the lists together.
constexpr std::string_view kCodes[] = {
    "byte-order-mark", "comment",      "converted",     "duplicate-key",   "negative",      "no-action",
    "no-app-info",     "no-command",   "no-effect",     "no-follow-up",    "no-id",         "no-lookup",
    "no-number",       "no-parameter", "no-position",   "no-rsp",          "no-type",       "no-word",
    "not-a-turn",      "not-json",     "not-looked-at", "not-offered",     "not-strict",    "not-utf8",
    "out-of-range",    "poster-cut",   "poster-no-url", "poster-plain",    "poster-size",   "poster-slash",
    "poster-unfilled", "too-deep",     "too-many",      "too-many-values", "trailing-text", "unknown-key",
    "unknown-word",    "unused",       "utf-16",        "utf-32",          "wrong-domains", "wrong-type",
};

// Takes a line of a rules' file. Returns what is wrong with it; empty when nothing is.
std::string AddLine(std::string strLine, CheckRules& stRules)
{
    std::replace_if(
        strLine.begin(), strLine.end(), [](char c) { return c == '=' || c == ','; }, ' ');
    std::istringstream words(strLine);
    std::string strOption;
    if (!(words >> strOption) || strOption.front() == '#') return {};
    const bool bIgnore = strOption == "--ignore";
    const bool bStrict = strOption == "--strict" && (words >> std::ws).eof();
    stRules.bStrict = stRules.bStrict || bStrict;
    if (!bIgnore && !bStrict && strOption != "--allow")
        return Quoted(strOption) + " is none of --ignore, --allow and --strict";
    std::string strWrong;
    for (std::string strWord; words >> strWord && strWrong.empty();) {
        (bIgnore ? stRules.vIgnored : stRules.vAllowed).push_back(strWord);
        if (bIgnore) strWrong = WrongCode(strWord);
    }
    return strWrong;
}

}  // namespace

bool CheckRules::Wants(const Finding& stFinding) const
{
    const std::string& strPointer = stFinding.strPointer;
    const auto IsOfKey = [&](const std::string& strKey) {
        const std::string strStep = PointerStep(strKey);
        return strPointer.size() >= strStep.size() &&
               strPointer.compare(strPointer.size() - strStep.size(), strStep.size(), strStep) == 0;
    };
    const bool bAllowed = stFinding.strCode == "unknown-key" && std::any_of(vAllowed.begin(), vAllowed.end(), IsOfKey);
    return !bAllowed && std::find(vIgnored.begin(), vIgnored.end(), stFinding.strCode) == vIgnored.end();
}

std::string WrongCode(const std::string& strCode)
{
    if (std::find(std::begin(kCodes), std::end(kCodes), strCode) != std::end(kCodes)) return {};
    return Quoted(strCode) + " is no code of a finding" +
           DidYouMean(Nearest(strCode, {std::begin(kCodes), std::end(kCodes)}), ", ");
}

std::string AddRulesBeside(const std::string& strFile, CheckRules& stRules)
{
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path folder = fs::absolute(strFile == "-" ? "." : strFile, error).lexically_normal();
    if (!fs::is_directory(folder, error)) folder = folder.parent_path();
    while (!fs::is_regular_file(folder / ".parlo-check", error)) {
        if (folder == folder.parent_path()) return {};
        folder = folder.parent_path();
    }
    std::string strText;
    std::string strReason;
    const std::string strRules = folder / ".parlo-check";
    if (!ReadAll(strRules, strText, strReason)) return strRules + " cannot be read: " + strReason;
    std::istringstream lines(strText);
    std::size_t nLine = 0;
    for (std::string strLine; strReason.empty() && std::getline(lines, strLine); ++nLine)
        strReason = AddLine(strLine, stRules);
    return strReason.empty() ? strReason : strRules + ':' + std::to_string(nLine) + ": " + strReason;
}
