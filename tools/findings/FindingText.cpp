// Findings in three forms.
#include "findings/FindingText.h"

#include <json/writer.h>

#include <algorithm>

#include "Printable.h"

namespace
{

constexpr std::size_t kBefore = 40;  // bytes of a long line that are shown before the place, and from it on
constexpr std::size_t kBehind = 80;

// Moves `n` to where a character begins, at most three bytes back.
std::size_t CharacterStart(std::string_view szText, std::size_t n)
{
    for (int i = 0; i < 3 && n > 0 && n < szText.size() && (static_cast<unsigned char>(szText[n]) & 0xC0U) == 0x80U;
         ++i)
        --n;
    return n;
}

std::string OtherPlace(const Finding& stFinding)
{
    if (stFinding.nOther == Finding::kNoOther) return {};
    return " (it stands in line " + std::to_string(stFinding.nOtherLine) + ", column " +
           std::to_string(stFinding.nOtherColumn) + ')';
}

// What would end a part of GitHub's line as a percent sign and its code.
std::string Escaped(std::string strText, const char* szEnds)
{
    constexpr const char* kHex = "0123456789ABCDEF";
    for (std::size_t n = 0; (n = strText.find_first_of(szEnds, n)) != std::string::npos; n += 3)
        strText.replace(n, 1, {'%', kHex[strText[n] >> 4], kHex[strText[n] & 0xF]});
    return strText;
}

std::string Sentence(const Finding& stFinding)
{
    return stFinding.strText + OtherPlace(stFinding) +
           (stFinding.strSuggestion.empty() ? "" : "; " + stFinding.strSuggestion);
}

}  // namespace

std::string FindingLine(const std::string& strFile, const Finding& stFinding, const CPaint& paint)
{
    const std::string strPlace = Host::Printable(strFile) + ':' + std::to_string(stFinding.nLine) + ':' +
                                 std::to_string(stFinding.nColumn) + ": ";
    const bool bPointer = stFinding.bOneLine && !stFinding.strPointer.empty();
    return strPlace + paint.Title(SeverityWord(stFinding.eSeverity)) + ": " + Sentence(stFinding) +
           (bPointer ? " (" + Shown(stFinding.strPointer) + ')' : "") + paint.Faint(" [" + stFinding.strCode + ']') +
           '\n';
}

std::string FindingGithub(const std::string& strFile, const Finding& stFinding)
{
    const char* szKind = stFinding.eSeverity == Severity::NOTE ? "notice" : SeverityWord(stFinding.eSeverity);
    return std::string("::") + szKind + " file=" + Escaped(Host::Printable(strFile), "%:,") +
           ",line=" + std::to_string(stFinding.nLine) + ",col=" + std::to_string(stFinding.nColumn) +
           ",title=" + stFinding.strCode + "::" + Escaped(Sentence(stFinding), "%") + '\n';
}

std::string FindingExcerpt(std::string_view szText, const Finding& stFinding, const CPaint& paint)
{
    const std::size_t nPlace = std::min(stFinding.nOffset, szText.size());
    const std::size_t nLineStart = nPlace == 0 ? 0 : szText.rfind('\n', nPlace - 1) + 1;  // none before: npos + 1 is 0
    std::size_t nLineEnd = std::min(szText.find('\n', nPlace), szText.size());
    if (nLineEnd > nLineStart && szText[nLineEnd - 1] == '\r') --nLineEnd;

    const bool bHead = nPlace - nLineStart > kBefore;
    const std::size_t nFrom = bHead ? CharacterStart(szText, nPlace - kBefore) : nLineStart;
    const bool bTail = nLineEnd > nPlace + kBehind;
    const std::size_t nTo = bTail ? CharacterStart(szText, nPlace + kBehind) : std::max(nLineEnd, nPlace);
    const std::size_t nMarkedTo = std::clamp(nPlace + stFinding.nLength, nPlace, nTo);

    const std::string strBefore =
        (bHead ? "..." : "") + Host::Printable(szText.substr(nFrom, nPlace - nFrom), {}, true);
    const std::string strMarked = Host::Printable(szText.substr(nPlace, nMarkedTo - nPlace), {}, true);
    const std::string strBehind =
        Host::Printable(szText.substr(nMarkedTo, nTo - nMarkedTo), {}, true) + (bTail ? "..." : "");
    const std::size_t nMarks = std::max<std::size_t>(Columns(strMarked), 1);
    return "  " + strBefore + strMarked + strBehind + "\n  " + std::string(Columns(strBefore), ' ') +
           paint.Label('^' + std::string(nMarks - 1, '~')) + '\n';
}

Json::Value FindingMembers(const Finding& stFinding)
{
    Json::Value object;
    object["line"] = static_cast<Json::UInt64>(stFinding.nLine);
    object["column"] = static_cast<Json::UInt64>(stFinding.nColumn);
    object["severity"] = SeverityWord(stFinding.eSeverity);
    object["code"] = stFinding.strCode;
    object["pointer"] = stFinding.strPointer;
    object["text"] = stFinding.strText;
    object["suggestion"] = stFinding.strSuggestion;
    return object;
}

std::string FindingJson(const std::string& strFile, const Finding& stFinding)
{
    Json::Value object = FindingMembers(stFinding);
    object["file"] = strFile;
    object["offset"] = static_cast<Json::UInt64>(stFinding.nOffset);
    object["length"] = static_cast<Json::UInt64>(stFinding.nLength);
    object["text"] = stFinding.strText + OtherPlace(stFinding);
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return EscapedInJson(Json::writeString(builder, object)) + '\n';
}
