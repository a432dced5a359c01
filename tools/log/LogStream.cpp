// Which lines make up a record.
#include <algorithm>
#include <limits>
#include <string_view>

#include "log/LogCalls.h"
#include "session/LogForm.h"

namespace
{

constexpr std::size_t kLongestText = 1 << 16;   // bytes of a record; more is dropped
constexpr std::size_t kLongestPiece = 1 << 13;  // the same of a piece, however it is escaped and indented

// Messages that end in a text of the reply or the set.
constexpr std::string_view kOpenTexts[] = {"strAction = ",  "szAction[",          "domain[",      "strSearchKeywords:",
                                           "m_strAppName:", "strActionIntent = ", "premiumflag:", "errCode:"};

bool IsClosed(std::string_view szText)
{
    szText = szText.substr(0, szText.find_last_not_of('\r') + 1);
    return CutShownColour(szText);
}

// How many brackets it opens and does not close.
std::ptrdiff_t Brackets(std::string_view szText)
{
    return std::count(szText.begin(), szText.end(), '[') - std::count(szText.begin(), szText.end(), ']');
}

}  // namespace

void LogStream::Begin(const LogTextLine& stLine)
{
    stFirst = stLine;
    bPending = true;
    bClosed = IsClosed(stLine.strMessage);
    if (stLine.bAlone) eStyle = Style::RAW;
    if (stLine.bSubstitute) {
        eStyle = Style::ONE_LINE;
        eEscape = Escape::BACKSLASH;
    }
    LogForm stForm;
    ParseLogForm(stFirst.strMessage, stForm);
    const std::string_view szText = stForm.szMessage;
    const auto IsBegin = [szText](std::string_view szStart) { return Begins(szText, szStart); };
    nText = stFirst.strMessage.size() - szText.size();
    bOpenText = std::any_of(std::begin(kOpenTexts), std::end(kOpenTexts), IsBegin);
    nBrackets = Brackets(szText);
    std::size_t nSize = 0;
    eDump = DumpLineOf(stForm, nSize);
    if (eDump != DumpLine::SIZE) return;
    // The message ends in a line break: where the log shows that in the same line, it does so with every record.
    eEscape = EscapeOf(szText);
    const std::string_view szBehind = szText.substr(szText.find(')') + 1);
    if (!szBehind.empty() && ColourLength(szBehind) == 0) eStyle = Style::ONE_LINE;
}

void LogStream::Append(const LogTextLine& stLine)
{
    if (eStyle == Style::UNKNOWN) eStyle = stLine.bTagged ? Style::PREFIXED : Style::RAW;
    const std::string& strContent = Content(stLine);
    std::string& strText = stFirst.strMessage;
    strText += '\n';
    strText.append(strContent, 0, kLongestText - std::min(strText.size(), kLongestText));
    nBrackets += Brackets(strContent);
    bClosed = IsClosed(strContent);
}

bool LogStream::GoesOn(const LogTextLine& stLine) const
{
    if (!bPending || bClosed || eStyle == Style::ONE_LINE) return false;
    if (!stLine.bTagged && eStyle == Style::PREFIXED) return false;
    if (stLine.bTagged && stLine.stPrefix.strPriority != stFirst.stPrefix.strPriority) return false;
    if (eDump == DumpLine::PIECE) return Length() < kLongestPiece;
    if (eDump == DumpLine::SIZE) return stFirst.strMessage.find('\n') == std::string::npos;
    return Length() < kLongestText && (bColours || bOpenText || nBrackets > 0);
}

// Whether the pending record is a piece that may have more bytes.
bool LogStream::MayLack() const
{
    const bool bOpen = bPending && !bClosed && eStyle != Style::ONE_LINE && eDump == DumpLine::PIECE;
    return bOpen && Length() < (call ? call->reply.Next() : CLogReply().Next());
}

// Whether it must have more.
bool LogStream::Lacks() const
{
    return call && call->reply.Size() && MayLack() && !call->reply.MayHave(Length());
}

// What a line that follows adds to the record.
const std::string& LogStream::Content(const LogTextLine& stLine) const
{
    return eStyle == Style::RAW ? stLine.strRaw : stLine.strMessage;
}

// The length of the pending record with all that is held, or without the lines of other programs; and whether it is a
// piece's then, with its colour at the end if the log has them.
std::size_t LogStream::LengthWithHeld(bool bAll, bool& bMadeUp) const
{
    std::size_t nLength = Length();
    std::string_view szLast;
    bool bRecord = false;
    for (const LogTextLine& stLine : vHeld) {
        bRecord = bRecord || stLine.eSort == LogTextLine::Sort::RECORD;
        if (!bAll && stLine.eSort != LogTextLine::Sort::MORE) continue;
        szLast = Content(stLine);
        nLength += 1 + szLast.size();
    }
    const std::size_t nShown = szLast.size();
    const bool bColour = CutShownColour(szLast);
    bMadeUp = (bAll || !bRecord) && bColour == bColours && call->reply.MayHave(nLength - (nShown - szLast.size()));
    return nLength;
}
