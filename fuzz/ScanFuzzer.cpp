// The library's parse against the bare JSON library's: both read the same document or refuse the text, in whatever
// locale, but that the library refuses what the scan says about comments; and the JSON library meets no more values and
// comments than the scan has counted, also in a text that it gives up. Input: any bytes, choices of a generator. It
// writes valid documents with comments where they are allowed, and puts odd tokens, comments, slashes, signs and
// brackets at any place of them.
#include <json/reader.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <locale>
#include <random>

#include "CAJson.h"
#include "CAJsonScan.h"
#include "CAPlainNumbers.h"
#include "FuzzInput.h"

// How many values the scan has counted, read past the access check.
std::size_t ValueCount(const CAJsonScan& scan);
template <auto pMember>
struct Opened {
    friend std::size_t ValueCount(const CAJsonScan& scan) { return scan.*pMember; }
};
template struct Opened<&CAJsonScan::m_nValues>;

namespace
{

struct TextCount {
    ~TextCount() { std::fprintf(stderr, "%llu texts, %llu accepted, %llu refused alone\n", nTexts, nAccepted, nAlone); }
    unsigned long long nTexts = 0;
    unsigned long long nAccepted = 0;
    unsigned long long nAlone = 0;  // by the library, and not by the JSON library
} g_Count;

struct OddMarks : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class CGenerator
{
public:
    explicit CGenerator(std::string_view szInput) : m_szInput(szInput)
    {
        std::seed_seq seed(szInput.begin(), szInput.end());
        m_Random.seed(seed);
    }

    // A text, and the comments in it. They are 0 when it may be wrong.
    std::string Text(bool bSpoiled, std::size_t& nComments)
    {
        m_vTokens.clear();
        m_nComments = 0;
        Blank();
        Value(0);
        Blank();
        for (std::size_t n = bSpoiled ? 1 + Choice(3) : 0; n > 0; --n) Spoil();
        nComments = bSpoiled ? 0 : m_nComments;
        std::string strText;
        for (const std::string& strToken : m_vTokens) strText += strToken;
        return strText;
    }

private:
    using Words = std::initializer_list<std::string_view>;

    std::size_t Choice(std::size_t nMost)
    {
        if (m_szInput.empty()) return m_Random() % nMost;
        const auto n = static_cast<unsigned char>(m_szInput.front());
        m_szInput.remove_prefix(1);
        return n % nMost;
    }
    void Put(std::string_view szToken) { m_vTokens.emplace_back(szToken); }
    void PutAny(Words words) { Put(words.begin()[Choice(words.size())]); }

    // Where a comment is allowed.
    void Blank()
    {
        if (Choice(4) == 0) PutAny({" ", "\t", "\r\n", "\n"});
        for (; Choice(8) == 0; ++m_nComments)
            PutAny({"/**/", "//\n", "//\"[{\r", "/*\"*/", "/*[{,:*/", "/***/", "/*//*/"});
    }
    void String() { PutAny({R"("")", R"("a")", R"("b")", R"("\"")", R"("\\")", R"("/*")", R"("//")", R"("[{,:}]")"}); }
    void Number()
    {
        std::string strNumber(Choice(2), '-');
        strNumber += std::to_string(Choice(200) * Choice(200));
        if (Choice(2) == 0) strNumber += '.' + std::to_string(Choice(200));
        if (Choice(4) == 0) strNumber += "e" + std::to_string(static_cast<int>(Choice(60)) - 30);
        Put(strNumber);
    }
    void Value(int nDepth)
    {
        const std::size_t nKind = Choice(nDepth < 4 ? 7 : 3);
        if (nKind == 0) return String();
        if (nKind == 1) return Number();
        if (nKind == 2) return PutAny({"true", "false", "null"});
        const bool bObject = nKind > 4;
        Put(bObject ? "{" : "[");
        for (std::size_t n = Choice(4); n > 0; --n) {
            Blank();
            if (bObject) {
                String();
                PutAny({":", " :"});
                Blank();
            }
            Value(nDepth + 1);
            Blank();
            if (n > 1) Put(",");
        }
        Put(bObject ? "}" : "]");
    }
    void Spoil()
    {
        const auto where = m_vTokens.begin() + static_cast<std::ptrdiff_t>(Choice(m_vTokens.size()));
        const std::size_t nKind = Choice(8);
        if (nKind == 0) where->clear();
        if (nKind == 1) std::swap(*where, m_vTokens[Choice(m_vTokens.size())]);
        if (nKind < 2) return;
        const Words kOdd = {"/**/", "//\n", "//\r", "/*\"*/", "/", "/\"", "/x", "/[", "/]", "/*",  "*/",
                            ",",    ":",    "[",    "]",      "{", "}",   "\"", "'",  "1",  "-",   "+",
                            "e",    ".",    "E5",   ".5",     "0", "tru", "x",  "\\", "\n", "/*/", "/**//\"\"k\":"};
        where->insert(Choice(2) == 0 ? where->size() : Choice(where->size() + 1), kOdd.begin()[Choice(kOdd.size())]);
    }

    std::string_view m_szInput;
    std::minstd_rand m_Random;
    std::vector<std::string> m_vTokens;
    std::size_t m_nComments = 0;
};

bool Same(const Json::Value& one, const Json::Value& other)
{
    if (one.type() != other.type() || one.size() != other.size()) return false;
    for (const auto placement : {Json::commentBefore, Json::commentAfterOnSameLine, Json::commentAfter})
        if (one.getComment(placement) != other.getComment(placement)) return false;
    if (one.isDouble() && one.type() == Json::realValue) {
        const double a = one.asDouble(), b = other.asDouble();
        return std::memcmp(&a, &b, sizeof a) == 0;
    }
    if (!one.isArray() && !one.isObject()) return one == other;
    return (one.isArray() || one.getMemberNames() == other.getMemberNames()) &&
           std::equal(one.begin(), one.end(), other.begin(), Same);
}

std::size_t Nodes(const Json::Value& value)
{
    std::size_t nNodes = 1;
    for (const Json::Value& child : value) nNodes += Nodes(child);
    return nNodes;
}

std::size_t Comments(const Json::Value& value)
{
    std::size_t nComments = 0;
    for (const auto placement : {Json::commentBefore, Json::commentAfterOnSameLine, Json::commentAfter}) {
        const std::string strComments = value.getComment(placement);
        for (std::size_t n = 0; n < strComments.size(); ++nComments) {
            const std::string_view szEnd = strComments.compare(n, 2, "//") == 0 ? "\n" : "*/";
            n = strComments.find(szEnd, n + 2);
            n = n == std::string::npos ? strComments.size() : n + szEnd.size();
        }
    }
    for (const Json::Value& child : value) nComments += Comments(child);
    return nComments;
}

bool ParseBare(const std::string& strText, Json::Value& root)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    return Json::Reader().parse(strText.data(), strText.data() + strText.size(), root, true);
#pragma GCC diagnostic pop
}

void Compare(const std::string& strText, bool bSpoiled, std::size_t nComments)
{
    static const std::locale odd(std::locale::classic(), new OddMarks);
    Json::Value bare, root, rootOdd;
    const bool bBare = ParseBare(strText, bare);
    const bool bParsed = CAJson::Parse(strText, root);
    std::locale::global(odd);
    const bool bParsedOdd = CAJson::Parse(strText, rootOdd);
    std::locale::global(std::locale::classic());

    ++g_Count.nTexts;
    g_Count.nAccepted += bParsed;
    g_Count.nAlone += bBare && !bParsed;
    const CAJsonScan scan(strText);
    Fuzz::Require(bParsed == bParsedOdd && (!bParsed || bBare));
    Fuzz::Require(bParsed || !bBare || (bSpoiled && strText.find('/') != std::string::npos));
    Fuzz::Require(bSpoiled || (bParsed && scan.CommentCount() >= nComments));
    Fuzz::Require(!bParsed || (Same(bare, root) && Same(root, rootOdd)));
    Fuzz::Require(!scan.IsAcceptable() ||
                  (Nodes(bare) <= ValueCount(scan) + 1 && Comments(bare) <= scan.CommentCount()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    constexpr int kTexts = 32;  // the first ones by the input's bytes, all others by numbers that follow from them
    CGenerator generator(Fuzz::Input(pData, nSize));
    for (int i = 0; i < kTexts; ++i) {
        std::size_t nComments = 0;
        const bool bSpoiled = i % 4 != 3;
        const std::string strText = generator.Text(bSpoiled, nComments);
        Compare(strText, bSpoiled, nComments);
    }
    return 0;
}
