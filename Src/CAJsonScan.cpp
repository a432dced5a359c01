#include "CAJsonScan.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace
{

bool IsOneOf(std::string_view szSet, char c)
{
    return szSet.find(c) != std::string_view::npos;
}

constexpr std::string_view kBlanks = " \t\r\n";

const char* SkipDigits(const char* p)
{
    while (*p >= '0' && *p <= '9') ++p;
    return p;
}

const char* SkipSign(const char* p)
{
    return *p == '-' || *p == '+' ? p + 1 : p;
}

// The exponent that is written from `p` to `pEnd`, clamped where it is beyond any that matters; 0 for none.
long long Exponent(const char* p, const char* pEnd)
{
    constexpr long long kMost = 1000000000000;
    if (p == pEnd) return 0;
    long long nValue = 0;
    for (const char* pDigit = SkipSign(p); pDigit != pEnd; ++pDigit)
        nValue = std::min(nValue * 10 + (*pDigit - '0'), kMost);
    return *p == '-' ? -nValue : nValue;
}

}  // namespace

CAJsonScan::CAJsonScan(const std::string& strText)
    : m_strText(strText), m_pNext(strText.data()), m_pEnd(m_pNext + strText.size()), m_pCopied(m_pNext)
{
    m_bAcceptable = t_Scan();
    if (!m_strRewritten.empty()) m_strRewritten.append(m_pCopied, m_pEnd);
}

// This and what it calls is false when the text may not be parsed.
bool CAJsonScan::t_Scan()
{
    t_SkipBlanks();
    do {
        if (!t_SkipToken()) return false;
        while (*m_pNext == ' ' || *m_pNext == ':') ++m_pNext;  // not worth a token
    } while (m_nDepth > 0 && m_pNext != m_pEnd);
    // What is behind the value may be comments, and behind a closing bracket in a wrong place the JSON library looks
    // for another one there.
    m_nComments += static_cast<std::size_t>(std::count(m_pNext, m_pEnd, '/'));
    return m_nValues <= kMostValues;
}

bool CAJsonScan::t_SkipToken()
{
    switch (*m_pNext) {
        case '"':
            t_SkipString();
            return true;
        case '/':
            return m_nDepth > 0 && t_SkipComments();
        case '[':
        case '{':
            ++m_nValues;
            if (m_nDepth == kMostLevels) return false;
            m_Opened[m_nDepth++] = *m_pNext++;
            return true;
        case ']':
        case '}':
            return m_nDepth > 0 && m_Opened[--m_nDepth] == (*m_pNext++ == ']' ? '[' : '{');
        case ',':
            ++m_nValues;
            ++m_pNext;
            return true;
        default:
            if (*m_pNext == '-' || (*m_pNext >= '0' && *m_pNext <= '9')) return t_SkipNumber();
            if (m_pNext != m_pEnd) ++m_pNext;
            return true;
    }
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

// Blanks and comments, as far as there are any.
void CAJsonScan::t_SkipBlanks()
{
    for (;;) {
        while (IsOneOf(kBlanks, *m_pNext)) ++m_pNext;
        if (m_pNext[0] != '/' || !IsOneOf("/*", m_pNext[1])) return;
        ++m_nComments;
        const bool bLine = m_pNext[1] == '/';
        const std::string_view szRest(m_pNext + 2, static_cast<std::size_t>(m_pEnd - m_pNext - 2));
        const std::size_t nEnd = bLine ? szRest.find_first_of("\r\n") : szRest.find("*/");
        m_pNext = nEnd == std::string_view::npos ? m_pEnd : szRest.data() + nEnd + (bLine ? 1 : 2);
    }
}

// The comments between two tokens. Behind one that follows a value of an object the JSON library takes any token for
// the comma, and of a slash that begins no comment it swallows the next byte too: from there on it would read another
// text than this scan. Nobody writes such a reply by mistake.
bool CAJsonScan::t_SkipComments()
{
    const char* pBefore = m_pNext - 1;  // there is a bracket before
    while (IsOneOf(kBlanks, *pBefore)) --pBefore;
    t_SkipBlanks();
    return m_pNext == m_pEnd || (*m_pNext != '/' && (IsOneOf("[{,:", *pBefore) || IsOneOf("]},", *m_pNext)));
}

// A number with a point is written without it.
bool CAJsonScan::t_SkipNumber()
{
    const char* const pNumber = m_pNext;
    const char* const pPoint = SkipDigits(pNumber + 1);
    const char* const pFraction = *pPoint == '.' ? pPoint + 1 : pPoint;
    const char* const pFractionEnd = SkipDigits(pFraction);
    const bool bExponent = *pFractionEnd == 'e' || *pFractionEnd == 'E';
    const char* const pExponent = bExponent ? pFractionEnd + 1 : pFractionEnd;
    m_pNext = bExponent ? SkipDigits(SkipSign(pExponent)) : pFractionEnd;
    if (*pPoint != '.') return true;

    const bool bDigits = pFractionEnd != pFraction || *pNumber != '-' || pPoint != pNumber + 1;
    if (!bDigits || (bExponent && m_pNext == SkipSign(pExponent))) return false;
    if (m_strRewritten.empty()) m_strRewritten.reserve(m_strText.size() + m_strText.size() / 2);
    m_strRewritten.append(m_pCopied, pPoint).append(pFraction, pFractionEnd).append(1, 'e');
    m_strRewritten += std::to_string(Exponent(pExponent, m_pNext) - (pFractionEnd - pFraction));
    m_pCopied = m_pNext;
    return true;
}
