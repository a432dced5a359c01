// "check": every mistake in replies, conversations and search schema documents, at its place.
#include <unistd.h>

#include "commands/Command.h"
#include "findings/Check.h"
#include "findings/CheckRules.h"
#include "findings/FindingText.h"
#include "reading/Files.h"
#include "text/Output.h"

namespace
{

struct CheckOptions {
    std::string strFormat = "text";
    CheckRules stRules;
};

// Prints the findings of a file that are wanted. Says whether it may pass.
bool CheckFile(const std::string& strFile, const Options& stOptions, const CheckOptions& stCheck)
{
    std::string strText;
    std::string strReason;
    CheckRules stRules = stCheck.stRules;
    if (!ReadAll(strFile, strText, strReason))
        strReason = strFile + " cannot be read: " + strReason;
    else
        strReason = AddRulesBeside(strFile, stRules);
    if (!strReason.empty()) Fail(strReason);
    if (!strReason.empty()) return false;

    const CPaint paint = stOptions.Paint();
    const bool bExcerpt = isatty(STDOUT_FILENO) != 0;
    const std::string strFormat = stOptions.bJson ? "json" : stCheck.strFormat;
    bool bPasses = true;
    for (const Finding& stFinding : CheckByForm(strText, strFile)) {
        if (!stRules.Wants(stFinding)) continue;
        bPasses = bPasses && stFinding.eSeverity < (stRules.bStrict ? Severity::WARNING : Severity::ERROR);
        Print(strFormat == "json"     ? FindingJson(strFile, stFinding)
              : strFormat == "github" ? FindingGithub(strFile, stFinding)
                                      : FindingLine(strFile, stFinding, paint));
        if (strFormat == "text" && bExcerpt) Print(FindingExcerpt(strText, stFinding, paint));
    }
    return bPasses;
}

int RunCheck(const Options& stOptions, const CheckOptions& stCheck)
{
    bool bPass = true;
    for (const std::string& strFile : stOptions.vFiles) bPass = CheckFile(strFile, stOptions, stCheck) && bPass;
    return HasFailed() ? kExitUnreadable : bPass ? kExitOk : kExitFailure;
}

}  // namespace

void AddCheck(CCommandLine& line)
{
    const auto pCheck = std::make_shared<CheckOptions>();
    CCommand command = line.Add("check", "Find every mistake in replies, and tell where it stands",
                                "  parlo check reply.json\n  parlo check --strict examples/replies/*.json\n"
                                "  parlo check --ignore unused --allow request_id,confidence replies",
                                [pCheck](const Options& stOptions) { return RunCheck(stOptions, *pCheck); });
    command.Replies("a reply, a conversation or a search schema document; - for standard input");
    command.Text("--format", pCheck->strFormat, "how findings are printed: text, json, an object a line, or github",
                 {"text", "json", "github"});
    command.Json("the same as --format json");
    command.Texts("--ignore", pCheck->stRules.vIgnored, "leave out findings with these codes", WrongCode);
    command.Texts("--allow", pCheck->stRules.vAllowed, "take these keys for known ones, which others read");
    command.NoSet();
    command.Flag("--strict", pCheck->stRules.bStrict, "Let warnings fail too");
}
