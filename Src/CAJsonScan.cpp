#include "CAJsonScan.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace
{

enum class Kind : unsigned char { OTHER, END, QUOTE, SLASH, OPEN, CLOSE, COMMA, NUMBER };

// What each byte outside a string begins. The zero behind the text ends it.
struct Kinds {
    Kind m_Of[256] = {Kind::END};
    constexpr Kinds()
    {
        for (const char c : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '-'}) t_Set(c, Kind::NUMBER);
        for (const char c : {'[', '{'}) t_Set(c, Kind::OPEN);
        for (const char c : {']', '}'}) t_Set(c, Kind::CLOSE);
        t_Set('"', Kind::QUOTE);
        t_Set('/', Kind::SLASH);
        t_Set(',', Kind::COMMA);
    }
    constexpr void t_Set(char c, Kind eKind) { m_Of[static_cast<unsigned char>(c)] = eKind; }
};
constexpr Kinds kKinds;

Kind KindOf(char c)
{
    return kKinds.m_Of[static_cast<unsigned char>(c)];
}

const char* SkipDigits(const char* p)
{
    while (*p >= '0' && *p <= '9') ++p;
    return p;
}

// The decimal number that `p` begins with, clamped where it is beyond any exponent that matters.
long long Exponent(const char* p, const char* pEnd)
{
    constexpr long long kMost = 1000000000000;
    const bool bNegative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    long long nValue = 0;
    for (; p != pEnd; ++p) nValue = std::min(nValue * 10 + (*p - '0'), kMost);
    return bNegative ? -nValue : nValue;
}

}  // namespace

CAJsonScan::CAJsonScan(const std::string& strText)
    : m_strText(strText), m_pNext(strText.data()), m_pEnd(m_pNext + strText.size()), m_pCopied(m_pNext)
{
    m_bAcceptable = t_Scan();
    if (!m_strRewritten.empty()) m_strRewritten.append(m_pCopied, m_pEnd);
}

// False when the text may not be parsed.
bool CAJsonScan::t_Scan()
{
    t_SkipBlanks();
    const Kind eKind = KindOf(*m_pNext);
    if (eKind == Kind::OPEN && !t_ScanNested()) return false;
    if (eKind == Kind::QUOTE) t_SkipString();
    if (eKind == Kind::NUMBER) t_SkipNumber();
    while (*m_pNext >= 'a' && *m_pNext <= 'z') ++m_pNext;  // true, false, null
    t_SkipBlanks();
    return m_nValues <= kMostValues;
}

// From the first bracket to the one that closes it.
bool CAJsonScan::t_ScanNested()
{
    for (;;) {
        while (KindOf(*m_pNext) == Kind::OTHER) ++m_pNext;
        switch (KindOf(*m_pNext)) {
            case Kind::QUOTE:
                t_SkipString();
                break;
            case Kind::COMMA:
                ++m_nValues;
                ++m_pNext;
                break;
            case Kind::NUMBER:
                t_SkipNumber();
                break;
            case Kind::OPEN:
                ++m_nValues;
                if (m_nDepth == kMostLevels) return false;
                m_Opened[m_nDepth++] = *m_pNext++;
                break;
            case Kind::CLOSE:
                // cppcheck-suppress negativeIndex  // one is open: the scan begins with a bracket and ends with its end
                if (m_Opened[--m_nDepth] != (*m_pNext++ == ']' ? '[' : '{')) return false;
                if (m_nDepth == 0) return true;
                break;
            case Kind::SLASH:
                t_SkipComment();
                break;
            case Kind::END:
                if (m_pNext == m_pEnd) return true;
                ++m_pNext;
                break;
            case Kind::OTHER:
                break;
        }
    }
}

// Blanks and comments.
void CAJsonScan::t_SkipBlanks()
{
    for (;;) {
        while (*m_pNext == ' ' || *m_pNext == '\t' || *m_pNext == '\n' || *m_pNext == '\r') ++m_pNext;
        if (*m_pNext != '/') return;
        t_SkipComment();
    }
}

void CAJsonScan::t_SkipComment()
{
    const char cKind = *++m_pNext;
    if (cKind != '/' && cKind != '*') return;
    ++m_nComments;
    ++m_pNext;
    const std::string_view szRest(m_pNext, static_cast<std::size_t>(m_pEnd - m_pNext));
    const std::size_t nEnd = cKind == '/' ? szRest.find_first_of("\r\n") : szRest.find("*/");
    m_pNext = nEnd == std::string_view::npos ? m_pEnd : m_pNext + nEnd + (cKind == '/' ? 1 : 2);
}

// A quotation mark ends the string when an even number of backslashes is before it.
void CAJsonScan::t_SkipString()
{
    const char* const pBegin = ++m_pNext;
    while (const void* pQuote = std::memchr(m_pNext, '"', static_cast<std::size_t>(m_pEnd - m_pNext))) {
        const char* const pEnd = static_cast<const char*>(pQuote);
        const char* p = pEnd;
        while (p != pBegin && p[-1] == '\\') --p;
        m_pNext = pEnd + 1;
        if ((pEnd - p) % 2 == 0) return;
    }
    m_pNext = m_pEnd;
}

void CAJsonScan::t_SkipNumber()
{
    const char* const pNumber = m_pNext;
    m_pNext = SkipDigits(pNumber + 1);
    if (*m_pNext == '.') t_WriteWithoutPoint();
}

// Writes the number whose point is next. One that is no number, as "1.5e", becomes one that is none either.
void CAJsonScan::t_WriteWithoutPoint()
{
    if (m_strRewritten.empty()) m_strRewritten.reserve(m_strText.size() + m_strText.size() / 2);
    const char* const pFraction = m_pNext + 1;
    m_strRewritten.append(m_pCopied, m_pNext);
    m_pNext = SkipDigits(pFraction);
    m_strRewritten.append(pFraction, m_pNext).append(1, 'e');
    long long nExponent = pFraction - m_pNext;
    bool bNumber = true;
    if (*m_pNext == 'e' || *m_pNext == 'E') {
        const char* const pExponent = m_pNext + 1;
        const char* const pDigits = *pExponent == '-' || *pExponent == '+' ? pExponent + 1 : pExponent;
        m_pNext = SkipDigits(pDigits);
        nExponent += Exponent(pExponent, m_pNext);
        bNumber = m_pNext != pDigits;
    }
    if (bNumber) m_strRewritten += std::to_string(nExponent);
    m_pCopied = m_pNext;
}
