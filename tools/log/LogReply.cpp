// The bytes of a reply's pieces.
#include "log/LogReply.h"

#include <charconv>
#include <utility>

#include "text/Text.h"

namespace
{

constexpr std::size_t kPiece = 500;
constexpr std::size_t kMostPieces = 205;  // of a longer reply no more is logged
constexpr std::size_t kMostBytes = kPiece * kMostPieces;

constexpr const char* kEscapes[] = {"", "\\n and \\xNN", "\\xNN", "#ooo"};

// Takes one character of an escaped text off its front. An escape that is none stands for itself.
char TakeEscaped(std::string_view& szText, Escape eEscape)
{
    constexpr std::string_view kLetters = "ntr\\";
    const int nBase = eEscape == Escape::OCTAL ? 8 : 16;
    const std::string_view szLead = nBase == 8 ? "#" : "\\x";
    std::size_t nTaken = 1;
    int nCode = 0;
    if (szText.size() >= 4 && Begins(szText, szLead)) {
        const auto [pRest, error] = std::from_chars(szText.data() + szLead.size(), szText.data() + 4, nCode, nBase);
        if (pRest == szText.data() + 4 && nCode >= 0 && nCode < 256) nTaken = 4;
    } else if (eEscape == Escape::BACKSLASH && szText.size() > 1 && szText.front() == '\\') {
        nCode = static_cast<unsigned char>("\n\t\r\\"[std::min(kLetters.find(szText[1]), kLetters.size())]);
        if (nCode != 0) nTaken = 2;
    }
    const char cTaken = nTaken == 1 ? szText.front() : static_cast<char>(nCode);
    szText.remove_prefix(nTaken);
    return cTaken;
}

// `szText` without the log's escapes. A log with escapes has one line a record: what follows a raw control character
// is not the record's.
std::string Plain(std::string_view szText, Escape eEscape)
{
    if (eEscape == Escape::NONE) return std::string(szText);
    szText = szText.substr(0, szText.find_first_of("\n\033"));
    std::string strPlain;
    while (!szText.empty()) strPlain += TakeEscaped(szText, eEscape);
    return strPlain;
}

// `szText` without so many blanks before each further line.
std::string Unindented(std::string_view szText, std::size_t nIndent)
{
    const std::string strBreak = '\n' + std::string(nIndent, ' ');
    std::string strPlain;
    for (std::size_t nEnd = 0; nIndent > 0 && (nEnd = szText.find(strBreak)) != szText.npos;) {
        strPlain.append(szText.substr(0, nEnd)).append("\n");
        szText.remove_prefix(nEnd + strBreak.size());
    }
    return strPlain.append(szText);
}

// Whether `szText` can be a message of `nLength` bytes: what follows those is a colour or, where it was not escaped,
// another line.
bool Fits(std::string_view szText, std::size_t nLength, Escape eEscape)
{
    if (szText.size() < nLength) return false;
    const bool bTorn = EndsInEscape(szText.substr(0, nLength));  // a colour that is cut in two
    szText.remove_prefix(nLength);
    if (bTorn && ColourLength(szText) > 0) return false;
    while (const std::size_t nColour = ColourLength(szText)) szText.remove_prefix(nColour);
    return szText.empty() || szText.front() == '\r' || (szText.front() == '\n' && eEscape == Escape::NONE);
}

}  // namespace

DumpLine DumpLineOf(const LogForm& stForm, std::size_t& nSize)
{
    constexpr std::string_view kBar = "=================print all receive data================";
    constexpr std::string_view kSize = "###########strRawData############(print max length:50KB; actural size:";
    std::string_view szMessage = stForm.szMessage;
    if (stForm.szFunction != "PrintRcvData") return DumpLine::NONE;
    if (Begins(szMessage, kBar) && Fits(szMessage, kBar.size(), Escape::NONE)) return DumpLine::NONE;
    if (!Begins(szMessage, kSize)) return DumpLine::PIECE;
    szMessage.remove_prefix(kSize.size());
    const auto [pRest, error] = std::from_chars(szMessage.data(), szMessage.data() + szMessage.size(), nSize);
    const bool bSize = error == std::errc() && pRest != szMessage.data() + szMessage.size() && *pRest == ')';
    return bSize ? DumpLine::SIZE : DumpLine::PIECE;
}

Escape EscapeOf(std::string_view szBehind)
{
    if (Begins(szBehind, "\\n")) return Escape::BACKSLASH;
    if (Begins(szBehind, "\\x0")) return Escape::HEX;
    return Begins(szBehind, "#012") ? Escape::OCTAL : Escape::NONE;
}

std::string WholeMessage(std::string_view szMessage, Escape eEscape, bool bTorn)
{
    szMessage = szMessage.substr(0, szMessage.find_last_not_of('\r') + 1);  // a log may end records alone so
    std::string strPlain = Plain(szMessage, eEscape);
    std::string_view szWhole = strPlain;
    if (CutShownColour(szWhole)) return std::string(szWhole);
    if (!bTorn || eEscape != Escape::NONE) return strPlain;
    strPlain.resize(std::min(strPlain.find('\n'), strPlain.size()));
    const std::size_t nColour = strPlain.rfind('\033');  // perhaps the beginning of one
    return nColour != std::string::npos && nColour + 5 > strPlain.size() ? strPlain.substr(0, nColour) : strPlain;
}

void CLogReply::Add(std::string_view szMessage, Escape eEscape, bool bSure)
{
    const std::string strMessage = Unindented(szMessage, m_nIndent);
    const std::string strWhole = WholeMessage(strMessage, eEscape, false);
    if (strMessage != szMessage) m_vUndone.insert("indentation by " + std::to_string(m_nIndent));
    // A piece of a length that is expected here is right, however many lines seem to follow it, and whatever had to be
    // taken back for it.
    const bool bLong = m_nSize && strWhole.size() > Next();
    for (const Escape eTried : {eEscape, Escape::NONE, Escape::BACKSLASH, Escape::HEX, Escape::OCTAL}) {
        if ((eTried != eEscape && !bLong) || !AddFitting(Plain(strMessage, eTried), eTried)) continue;
        m_bMore = m_bMore || (bSure && eTried == eEscape && strWhole.size() > m_vLengths.back());
        if (eTried != Escape::NONE) m_vUndone.insert(kEscapes[static_cast<int>(eTried)]);
        return;
    }
    if (bLong && eEscape == Escape::NONE && m_nIndent == 0 && AddUnindented(strWhole)) return;
    m_bAltered = m_bAltered || strWhole.size() > Next();
    Append(strWhole);
}

void CLogReply::Append(std::string_view szPiece)
{
    m_vLengths.push_back(szPiece.size());
    m_strText += szPiece.substr(0, kMostBytes - std::min(m_strText.size(), kMostBytes));
}

bool CLogReply::AddFitting(const std::string& strPlain, Escape eEscape)
{
    for (const std::size_t nLength : {Next(), LengthOf(Wanted() - 1), LengthOf(0)}) {
        if (!Fits(strPlain, nLength, eEscape)) continue;
        Append(std::string_view(strPlain).substr(0, nLength));
        return true;
    }
    return false;
}

// Adds a piece whose further lines are moved to the right by one number of blanks, if without them its size is right.
bool CLogReply::AddUnindented(const std::string& strText)
{
    const auto nBreaks = static_cast<std::size_t>(std::count(strText.begin(), strText.end(), '\n'));
    const std::size_t nIndent = (strText.size() - Next()) / std::max<std::size_t>(nBreaks, 1);
    if (strText.size() - nBreaks * nIndent != Next() || !AddFitting(Unindented(strText, nIndent), Escape::NONE))
        return false;
    m_nIndent = nIndent;
    m_vUndone.insert("indentation by " + std::to_string(nIndent));
    return true;
}

std::size_t CLogReply::Wanted() const
{
    return m_nSize ? std::min((*m_nSize + kPiece - 1) / kPiece, kMostPieces) : kMostPieces;
}

// The length of a piece by its place.
std::size_t CLogReply::LengthOf(std::size_t nPiece) const
{
    const std::size_t nOffset = nPiece * kPiece;
    return m_nSize && nOffset < *m_nSize ? std::min(*m_nSize - nOffset, kPiece) : kPiece;
}

CLogReply::State CLogReply::GetState() const
{
    if (m_bAltered) return State::ALTERED;
    if (m_nSize == 0U) return State::WHOLE;
    if (m_vLengths.empty()) return State::NONE;
    if (!Gaps().empty()) return State::GAPS;
    if (m_bMore || m_strText.size() > *m_nSize) return State::ALTERED;
    return m_strText.size() < *m_nSize ? State::CUT : State::WHOLE;
}

std::vector<CLogReply::Gap> CLogReply::Gaps() const
{
    std::vector<Gap> vGaps;
    // With pieces missing only the places of those are known that are missing behind the first of all.
    if (!m_nSize) return {{false, 0, 0}};
    if (m_vLengths.size() < Wanted()) {
        const std::size_t nLogged = std::min(*m_nSize, kMostBytes);
        return {{false, 0, nLogged - std::min(m_strText.size(), nLogged)}};
    }
    for (std::size_t i = 0; i < m_vLengths.size(); ++i)
        if (m_vLengths[i] < LengthOf(i))
            vGaps.push_back({true, i * kPiece + m_vLengths[i], LengthOf(i) - m_vLengths[i]});
    return vGaps;
}

std::vector<std::string> CLogReply::Missing() const
{
    std::vector<std::string> vMissing;
    for (const Gap& stGap : IsThere() ? Gaps() : std::vector<Gap>())
        vMissing.push_back(
            stGap.bPlace
                ? Count(stGap.nBytes, "byte", "bytes") + " of the reply at offset " + std::to_string(stGap.nOffset)
            : !m_nSize ? "how long the reply was"
                       : std::to_string(Wanted() - Pieces()) + " of the reply's " + Count(Wanted(), "piece", "pieces"));
    return vMissing;
}

const char* NameOf(CLogReply::State eState)
{
    constexpr const char* kNames[] = {"none", "whole", "cut", "gaps", "altered"};
    return kNames[static_cast<int>(eState)];
}
