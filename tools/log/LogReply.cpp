// The bytes of a reply's pieces.
#include "log/LogReply.h"

#include <algorithm>

namespace
{

constexpr std::size_t kPiece = 500;
constexpr std::size_t kMostPieces = 205;

int HexDigit(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Takes one character of an escaped text off its front. An escape that is none stands for itself.
char TakeEscaped(std::string_view& szText)
{
    const char c = szText.front();
    const char cKind = c == '\\' && szText.size() > 1 ? szText[1] : '\0';
    const int nHigh = cKind == 'x' && szText.size() > 3 ? HexDigit(szText[2]) : -1;
    const int nLow = nHigh >= 0 ? HexDigit(szText[3]) : -1;
    if (nLow >= 0) {
        szText.remove_prefix(4);
        return static_cast<char>(nHigh * 16 + nLow);
    }
    const bool bEscape = cKind == 'n' || cKind == 't' || cKind == '\\';
    szText.remove_prefix(bEscape ? 2 : 1);
    if (!bEscape) return c;
    return cKind == 'n' ? '\n' : cKind == 't' ? '\t' : '\\';
}

// `szText` without the log's own carriage returns, if it has them, and without its escapes. A log with escapes has
// one line a record: what follows a raw control character is not the record's.
std::string Plain(std::string_view szText, bool bCarriage, bool bEscaped)
{
    if (bEscaped) szText = szText.substr(0, szText.find_first_of("\n\033"));
    std::string strPlain;
    strPlain.reserve(szText.size());
    while (!szText.empty()) {
        const bool bEnd = szText.size() == 1 || szText[1] == '\n';
        if (bCarriage && bEnd && szText.front() == '\r') {
            szText.remove_prefix(1);
        } else if (bEscaped) {
            strPlain += TakeEscaped(szText);
        } else {
            strPlain += szText.front();
            szText.remove_prefix(1);
        }
    }
    return strPlain;
}

// Whether `szText` can be a message of `nLength` bytes: what follows those is a colour or another line.
bool Fits(std::string_view szText, std::size_t nLength)
{
    if (szText.size() < nLength) return false;
    const bool bTorn = EndsInEscape(szText.substr(0, nLength));  // a colour that is cut in two
    szText.remove_prefix(nLength);
    if (bTorn && ColourLength(szText) > 0) return false;
    while (const std::size_t nColour = ColourLength(szText)) szText.remove_prefix(nColour);
    return szText.empty() || szText.front() == '\n' || szText.front() == '\r';
}

}  // namespace

std::string WholeMessage(const LogRecord& stRecord, std::string_view szMessage, bool bEscaped)
{
    std::string strPlain = Plain(szMessage, stRecord.bCarriage, bEscaped);
    // Behind the last line that ends in a colour nothing is the record's.
    for (std::size_t nEnd = bEscaped ? 0 : strPlain.size(); nEnd > 0; nEnd = strPlain.rfind('\n', nEnd - 1)) {
        if (nEnd == std::string::npos) break;
        std::string_view szUpTo = std::string_view(strPlain).substr(0, nEnd);
        if (!CutShownColour(szUpTo)) continue;
        strPlain.resize(szUpTo.size());
        break;
    }
    return strPlain;
}

void CLogReply::Announce(std::size_t nSize)
{
    m_bSize = true;
    m_nSize = nSize;
}

void CLogReply::Add(const LogRecord& stRecord, std::string_view szMessage, bool bEscaped)
{
    if (m_vLengths.size() == std::min(Wanted(), kMostPieces)) {
        m_bTooMany = true;
        return;
    }
    // A piece of a length that is expected here is right, however many lines seem to follow it.
    for (const std::size_t nLength : {LengthOf(m_vLengths.size()), LengthOf(Wanted() - 1), kPiece}) {
        for (const bool bCarriage : {stRecord.bCarriage, false}) {
            const std::string strPlain = Plain(szMessage, bCarriage, bEscaped);
            if (!Fits(strPlain, nLength)) continue;
            m_vLengths.push_back(nLength);
            m_strText.append(strPlain, 0, nLength);
            return;
        }
    }
    const std::string strPlain = WholeMessage(stRecord, szMessage, bEscaped);
    m_vLengths.push_back(std::min(strPlain.size(), kPiece));
    m_strText.append(strPlain, 0, kPiece);
}

std::size_t CLogReply::Wanted() const
{
    return m_bSize ? std::min((m_nSize + kPiece - 1) / kPiece, kMostPieces) : kMostPieces;
}

// The length of a piece by its place.
std::size_t CLogReply::LengthOf(std::size_t nPiece) const
{
    const std::size_t nOffset = nPiece * kPiece;
    return m_bSize && nOffset < m_nSize ? std::min(m_nSize - nOffset, kPiece) : kPiece;
}

CLogReply::State CLogReply::GetState() const
{
    if (m_bSize && m_nSize == 0) return State::WHOLE;
    if (m_vLengths.empty()) return State::NONE;
    if (!Gaps().empty()) return State::GAPS;
    return m_strText.size() < m_nSize ? State::CUT : State::WHOLE;
}

std::vector<CLogReply::Gap> CLogReply::Gaps() const
{
    std::vector<Gap> vGaps;
    // With pieces missing only the places of those are known that are missing behind the first of all.
    if (!m_bSize || m_bTooMany) return {{false, 0, 0}};
    if (m_vLengths.size() < Wanted()) {
        const std::size_t nLogged = std::min(m_nSize, kMostPieces * kPiece);
        return {{false, 0, nLogged - std::min(m_strText.size(), nLogged)}};
    }
    for (std::size_t i = 0; i < m_vLengths.size(); ++i)
        if (m_vLengths[i] < LengthOf(i))
            vGaps.push_back({true, i * kPiece + m_vLengths[i], LengthOf(i) - m_vLengths[i]});
    return vGaps;
}
