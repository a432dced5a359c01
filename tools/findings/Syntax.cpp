// Why a text is no JSON, in plain words: the JSON library's messages, and a look at what stands there.
#include "findings/Syntax.h"

#include <json/reader.h>

#include <algorithm>
#include <cctype>
#include <utility>

#include "text/Text.h"

namespace
{

constexpr std::size_t kNowhere = std::string_view::npos;

// By what the JSON library's message contains.
constexpr std::pair<std::string_view, const char*> kReasons[] = {
    {"Missing ':'", "a colon is missing between this key and its value"},
    {"Missing ',' or '}'", "a comma is missing here, or the object's closing brace"},
    {"Missing ',' or ']'", "a comma is missing here, or the list's closing bracket"},
    {"Missing '}' or object member name", "a key between double quotation marks is missing here"},
    {"value, object or array expected", "a value is missing here"},
    {"is not a number", "the number is too large"},
    {"Empty escape", "nothing follows the backslash"},
    {"Bad escape", "a backslash stands before a character that it cannot stand before"},
    {"Bad unicode", "\\u needs four hexadecimal digits"},
    {"surrogate pair", "this is one half of a surrogate pair: the other \\u is missing"},
};

constexpr std::pair<std::string_view, const char*> kForeignWords[] = {
    {"True", "did you mean true?"},   {"TRUE", "did you mean true?"},      {"False", "did you mean false?"},
    {"FALSE", "did you mean false?"}, {"None", "did you mean null?"},      {"NULL", "did you mean null?"},
    {"Null", "did you mean null?"},   {"undefined", "did you mean null?"},
};

constexpr std::string_view kForeignQuotes[] = {"'",      "\u2018", "\u2019", "\u201A", "\u201B", "\u201C",
                                               "\u201D", "\u201E", "\u201F", "\u00AB", "\u00BB", "`"};

bool IsOfWord(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || std::string_view("_+-.").find(c) != kNowhere;
}

// The word or number around `nStart`; empty when there is none.
Span WordAt(std::string_view szText, std::size_t nStart)
{
    std::size_t nEnd = nStart;
    while (nEnd < szText.size() && IsOfWord(szText[nEnd])) ++nEnd;
    if (nEnd == nStart) return {nStart, 0};
    while (nStart > 0 && IsOfWord(szText[nStart - 1])) --nStart;
    return {nStart, nEnd - nStart};
}

// The last character before `nEnd` that is no blank; npos when there is none.
std::size_t Before(std::string_view szText, std::size_t nEnd)
{
    return nEnd == 0 ? kNowhere : szText.find_last_not_of(" \t\r\n", nEnd - 1);
}

// How many bytes the UTF-8 character at the start takes; 0 when it is none.
std::size_t CharacterLength(std::string_view szText)
{
    const auto Byte = [szText](std::size_t i) {
        return i < szText.size() ? static_cast<unsigned char>(szText[i]) : 0U;
    };
    const unsigned nFirst = Byte(0);
    const unsigned nSecond = Byte(1);
    const auto Continues = [&](std::size_t i) { return (Byte(i) & 0xC0U) == 0x80U; };
    if (nFirst < 0x80) return 1;
    if (nFirst < 0xC2 || nFirst > 0xF4 || !Continues(1)) return 0;
    if (nFirst < 0xE0) return 2;
    const bool bOverlong = (nFirst == 0xE0 && nSecond < 0xA0) || (nFirst == 0xF0 && nSecond < 0x90);
    const bool bNoCharacter = (nFirst == 0xED && nSecond > 0x9F) || (nFirst == 0xF4 && nSecond > 0x8F);
    if (bOverlong || bNoCharacter || !Continues(2)) return 0;
    if (nFirst < 0xF0) return 3;
    return Continues(3) ? 4 : 0;
}

// Says what stands at `stSpan` in the place of what `stRemark` misses; makes the place as long as that is.
void TellUnexpected(std::string_view szText, Span& stSpan, Remark& stRemark)
{
    const Span stWord = WordAt(szText, stSpan.nStart);
    const std::string_view szWord = szText.substr(stWord.nStart, stWord.nLength);
    const bool bWithin = stWord.nStart != stSpan.nStart;  // what is before it was a value for the JSON library
    const std::string_view szFirst = bWithin ? "0123456789+-." : "+-.";
    const bool bNumber = !szWord.empty() && szFirst.find(szWord[0]) != kNowhere;
    if (szText[stSpan.nStart] == '"') {
        stRemark.strText += ", before " + Quoted(szText.substr(stSpan.nStart + 1, stSpan.nLength - 2));
    } else if (bNumber || bWithin) {
        stRemark.strText = Quoted(szWord) + (bNumber ? " is no number" : " is no value");
        stSpan = stWord;
    } else if (!szWord.empty()) {
        stRemark.strText += ", not " + Quoted(szWord);
        stSpan = stWord;
        for (const auto& [szForeign, szMeant] : kForeignWords)
            if (szWord == szForeign) stRemark.strSuggestion = szMeant;
    } else {
        stSpan.nLength = std::max<std::size_t>(CharacterLength(szText.substr(stSpan.nStart)), 1);
        stRemark.strText += ", not " + Quoted(szText.substr(stSpan.nStart, stSpan.nLength));
    }
}

// The quotation mark of another kind that stands there; empty when none does.
std::string_view ForeignQuote(std::string_view szText)
{
    for (const std::string_view szQuote : kForeignQuotes)
        if (szText.substr(0, szQuote.size()) == szQuote) return szQuote;
    return {};
}

// Whether a text of JSON may go on with the backslash at the start.
bool IsEscape(std::string_view szText)
{
    if (szText.substr(1, 1) != "u")
        return szText.size() > 1 && std::string_view("\"\\/bfnrt").find(szText[1]) != kNowhere;
    const std::string_view szCode = szText.substr(2, 4);
    const bool bFour = szCode.size() == 4 && szCode.find_first_not_of("0123456789abcdefABCDEF") == kNowhere;
    return bFour && (SurrogateHalf(szText) != 1 || szText.substr(6, 2) == "\\u");
}

// The first backslash of the text at `stSpan` that is no escape; the text itself when there is none.
Span BadEscape(std::string_view szText, Span stSpan)
{
    const std::size_t nEnd = stSpan.nStart + stSpan.nLength;
    std::size_t n = szText.find('\\', stSpan.nStart);
    while (n < nEnd && IsEscape(szText.substr(n, nEnd - n))) n = szText.find('\\', n + 2);
    return n < nEnd ? Span{n, 2} : stSpan;
}

// Where a text opens that was to end before the word at `nWord`, as it ends like what stands between values; npos when
// there is none.
std::size_t OpenBefore(std::string_view szText, std::size_t nWord)
{
    if (nWord == 0 || szText[nWord - 1] != '"') return kNowhere;
    std::size_t nOpen = nWord - 1;
    bool bEscaped = true;
    while (bEscaped) {
        nOpen = nOpen == 0 ? kNowhere : szText.rfind('"', nOpen - 1);
        if (nOpen == kNowhere) return kNowhere;
        bEscaped = nOpen > 0 && (nOpen - 1 - szText.find_last_not_of('\\', nOpen - 1)) % 2 == 1;
    }
    const std::size_t nLast = Before(szText, nWord - 1);
    return nLast > nOpen && std::string_view(",:{[").find(szText[nLast]) != kNowhere ? nOpen : kNowhere;
}

// What is wrong at `stSpan`, where the JSON library gave up with `szMessage`; may move the place.
Remark Explain(std::string_view szText, std::string_view szMessage, Span& stSpan, const CPlaces& places)
{
    Remark stRemark{Severity::ERROR, "not-json", "it is not JSON"};
    for (const auto& [szPart, szReason] : kReasons)
        if (szMessage.find(szPart) != kNowhere) stRemark.strText = szReason;

    const bool bSyntax = szMessage.find("Missing") == 0 || szMessage.find("Syntax") == 0;
    if (!bSyntax) stSpan = BadEscape(szText, stSpan);
    if (!bSyntax) return stRemark;
    const std::string_view szRest = szText.substr(std::min(stSpan.nStart, szText.size()));
    const std::size_t nBefore = Before(szText, stSpan.nStart);
    const std::size_t nOpen = OpenBefore(szText, WordAt(szText, stSpan.nStart).nStart);
    const bool bComma = nBefore != kNowhere && szText[nBefore] == ',';
    if (szRest.empty()) {
        stRemark.strText =
            places.Open().empty() ? "there is nothing in it" : "the text ends although an object or list is open";
    } else if (nOpen != kNowhere || (szRest[0] == '"' && (stSpan.nLength == szRest.size() || stSpan.nLength < 2))) {
        stRemark.strText = "this text is not closed";
        if (nOpen != kNowhere) stSpan = {nOpen, 1};
    } else if (bComma && (szRest[0] == '}' || szRest[0] == ']')) {
        stRemark.strText = "nothing follows this comma";
        stRemark.strSuggestion = "leave it out";
        stSpan = {nBefore, 1};
    } else if (const std::string_view szQuote = ForeignQuote(szRest); !szQuote.empty()) {
        stRemark.strText = "texts and keys stand between double quotation marks";
        stSpan.nLength = szQuote.size();
    } else if (szRest[0] == '/') {
        const bool bOpen = szRest.substr(0, 2) == "/*" && szRest.find("*/", 2) == kNowhere;
        stRemark.strText = bOpen ? "this comment is not closed" : "the library takes no comment here";
    } else {
        TellUnexpected(szText, stSpan, stRemark);
    }
    return stRemark;
}

void CheckUtf8(std::string_view szText, CReport& report)
{
    std::size_t nFirst = 0;
    std::size_t nBad = 0;
    for (std::size_t i = 0; i < szText.size();) {
        const std::size_t nLength = CharacterLength(szText.substr(i));
        if (nLength == 0 && nBad++ == 0) nFirst = i;
        i += std::max<std::size_t>(nLength, 1);
    }
    if (nBad == 0) return;
    report.At({nFirst, 1}, "",
              {Severity::ERROR, "not-utf8",
               "the byte " + Quoted(szText.substr(nFirst, 1)) + " is not UTF-8" +
                   (nBad > 1 ? ", nor are " + Count(nBad - 1, "more", "more") : "")});
}

// "UTF-16" or "UTF-32" when the text is that; null otherwise.
const char* WideEncoding(std::string_view szText)
{
    const std::string_view szStart = szText.substr(0, 4);
    if (szStart.size() < 2) return nullptr;
    const bool bMark = szStart.substr(0, 2) == "\xFF\xFE" || szStart.substr(0, 2) == "\xFE\xFF";
    if (szStart.size() == 4) {
        const auto nZeros = std::count(szStart.begin(), szStart.end(), '\0');
        if (nZeros == 3 || (nZeros == 2 && (bMark || szStart == std::string_view("\0\0\xFE\xFF", 4)))) return "UTF-32";
    }
    return bMark || (szStart[0] == '\0') != (szStart[1] == '\0') ? "UTF-16" : nullptr;
}

}  // namespace

bool ParseDocument(std::string_view szText, Json::Value& root, CReport& report)
{
    if (const char* szEncoding = WideEncoding(szText)) {
        report.At({0, 1}, "",
                  {Severity::ERROR, szEncoding[4] == '1' ? "utf-16" : "utf-32",
                   std::string("the text is ") + szEncoding, "write it as UTF-8"});
        return false;
    }
    const CPlaces& places = report.Places();
    if (places.TooMany() != kNowhere)
        report.At({places.TooMany(), 1}, "",
                  {Severity::ERROR, "too-many-values",
                   "it holds more than " + std::to_string(CPlaces::kMostValues) + " values, and is refused"});
    if (places.TooDeep() != kNowhere)
        report.At({places.TooDeep(), 1}, "",
                  {Severity::ERROR, "too-deep",
                   "it is nested deeper than " + std::to_string(CPlaces::kDeepest) + " levels, and is refused"});
    if (places.TooMany() != kNowhere || places.TooDeep() != kNowhere) return false;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // the reader of the library, which tells places
    Json::Reader reader;
    try {
        if (reader.parse(szText.data(), szText.data() + szText.size(), root, false)) return true;
    } catch (const Json::Exception& e) {
        report.At({0, 1}, "", {Severity::ERROR, "not-json", std::string("it is refused: ") + Shown(e.what())});
        return false;
    }
    const std::vector<Json::Reader::StructuredError> vErrors = reader.getStructuredErrors();
#pragma GCC diagnostic pop
    const auto nStart = vErrors.empty() ? 0 : static_cast<std::size_t>(vErrors.front().offset_start);
    const auto nEnd = vErrors.empty() ? 0 : static_cast<std::size_t>(vErrors.front().offset_limit);
    Span stSpan{nStart, std::max(nEnd, nStart) - nStart};
    const Remark stRemark = Explain(szText, vErrors.empty() ? "" : vErrors.front().message, stSpan, places);
    report.At(stSpan, "", stRemark);
    return false;
}

void CheckText(std::string_view szText, CReport& report)
{
    CheckUtf8(szText, report);
    for (const Span& stComment : report.Places().Comments())
        report.At(stComment, "", {Severity::WARNING, "comment", "a comment is no JSON, although the library takes it"});
    for (const Span& stLoose : report.Places().Loose()) {
        const char c = szText[stLoose.nStart];
        report.At(stLoose, "",
                  {Severity::WARNING, "not-strict",
                   std::string(c == '"'    ? "a control character in a text is no JSON"
                               : c == '\\' ? "one half of a surrogate pair is no character"
                                           : "such a number is no JSON") +
                       ", although the library takes it"});
    }
    if (const Span stRest = report.Places().Rest(); stRest.nLength > 0)
        report.At(stRest, "", {Severity::WARNING, "trailing-text", "the text behind the document has no effect"});
}
