#include "ReplyShapes.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "findings/Description.h"

using Description::Key;
using Description::Object;
using Description::Type;
using namespace std::string_view_literals;

namespace Fuzz
{
namespace
{

// Values as they stand in the text, the plainest first.
constexpr std::string_view kTexts[] = {
    "x",      "",     "ok",       "ps",     "p",       "s",     "Analog", "http://e.example.com/%d.jpg",
    "%d",     "%%",   "%s%n",     "//",     ".png",    "7",     "+09:30", "http://e.example.com//%03d.jp",
    "No",     "Yes",  "{Null}",   "\\n\n",  "\\u20ac", "\\ud8", "\xC3(",  "\\u0000\\ud83d\\ude00",
    "\x01\t", "\0"sv, "\xFF\xFE", "//x/**/"};
constexpr std::string_view kNumbers[] = {"1",           "0",
                                         "-1",          "57",
                                         "2.0",         "2.5",
                                         "2147483647",  "2147483648",
                                         "-2147483648", "18446744073709551616",
                                         "1e400",       "1e-9",
                                         "-1.5e3",      "0.25E-7",
                                         "25.0e+1",     "7.5e",
                                         "1.e5",        "0.1e99999999999999"};
constexpr std::string_view kOthers[] = {"null",         "true",     "false", "[]", "{}", "[1,\"x\",null,[]]",
                                        "{\"name\":5}", "/**/null", "0//\n", "",   "]",  "\"",
                                        "0,",           "{\"x\""};

constexpr std::size_t kLengths[] = {1, 1, 2, 0, 1, 3, 1};  // of a list that is not long

const Shape kText{Shape::TEXT};
const Shape kNumber{Shape::NUMBER};

Shape Of(const Object& object);

Shape Of(const Key& key)
{
    // Which words stand there decides what becomes of the reply.
    if (key.szName == "domain") return {Shape::LIST, {}, {{Shape::WORD, {"tvcontrol", "movie", "x"}}}};
    if (key.pWords != nullptr) return {Shape::WORD, key.pWords()};
    if (!key.szExact.empty()) return {Shape::ONE_OF, {}, {kText, {Shape::WORD, {key.szExact}}}};
    switch (key.eType) {
        case Type::OBJECT:
            return Of(*key.pObject);
        case Type::OBJECTS:
            return {Shape::LIST, {}, {Of(*key.pObject)}};
        case Type::TEXTS:
        case Type::SCALARS:
            return {Shape::LIST, {}, {kText}};
        case Type::INTEGERS:
            return {Shape::LIST, {}, {kNumber}};
        case Type::TEXT:
        case Type::SCALAR:
        case Type::BOOLEAN:
            return kText;
        default:
            return kNumber;
    }
}

// What an object must have stands first, then what has parts: the first key is hardly ever missing.
Shape Of(const Object& object)
{
    Shape shape{Shape::OBJECT};
    for (const int nRank : {0, 1, 2})
        for (const Key& key : object) {
            if (nRank != (key.bNeeded ? 0 : key.pObject != nullptr ? 1 : 2)) continue;
            shape.vNames.push_back(key.szName);
            shape.vParts.push_back(Of(key));
        }
    if (object.pKinds == nullptr) return shape;
    shape = {Shape::ONE_OF};
    for (std::size_t i = 0; i < object.nKinds; ++i) {
        Shape kind = Of(*object.pKinds[i].pObject);
        const auto itType = std::find(kind.vNames.begin(), kind.vNames.end(), "type") - kind.vNames.begin();
        kind.vParts[static_cast<std::size_t>(itType)] = {Shape::WORD, {object.pKinds[i].szType}};
        std::rotate(kind.vNames.begin(), kind.vNames.begin() + itType, kind.vNames.begin() + itType + 1);
        std::rotate(kind.vParts.begin(), kind.vParts.begin() + itType, kind.vParts.begin() + itType + 1);
        shape.vParts.push_back(std::move(kind));
    }
    return shape;
}

class CBuilder
{
public:
    explicit CBuilder(CInput& input) : m_Input(input) {}

    std::string Take() { return std::move(m_strText); }

    // One value in sixteen is none that belongs there.
    void Value(const Shape& shape)
    {
        const std::size_t nKind = m_Input.Byte();
        if (nKind >= 240) return Anything();
        switch (shape.eKind) {
            case Shape::TEXT:
                return nKind < 200 ? Quoted(m_Input.OneOf(kTexts)) : Quoted(m_Input.Bytes(nKind % 40));
            case Shape::NUMBER:
                return Raw(kNumbers[nKind % std::size(kNumbers)]);
            case Shape::WORD:
                return Quoted(shape.vNames[nKind % shape.vNames.size()]);
            case Shape::LIST:
                return List(shape.vParts.front(), nKind % 8 == 7 ? nKind : kLengths[nKind % 8]);
            case Shape::OBJECT:
                return Object(shape, nKind);
            case Shape::ONE_OF:
                return Value(shape.vParts[nKind % shape.vParts.size()]);
        }
    }

    void Raw(std::string_view szText) { m_strText += szText; }

private:
    void Quoted(std::string_view szText)
    {
        m_strText += '"';
        m_strText += szText;
        m_strText += '"';
    }

    // A list of many has alike elements, so that a few bytes make a long one.
    void List(const Shape& element, std::size_t nElements)
    {
        Raw("[");
        for (std::size_t i = 0; i < std::min<std::size_t>(nElements, 7); ++i) {
            if (i > 0) Raw(",");
            Value(element);
        }
        if (nElements > 7) {
            const std::string strLast = "," + m_strText.substr(m_strText.rfind(",") + 1);
            for (std::size_t i = 7; i < nElements && m_strText.size() < 65536; ++i) m_strText += strLast;
        }
        Raw("]");
    }

    void Member(const Shape& shape, std::size_t nMember)
    {
        Quoted(shape.vNames[nMember]);
        Raw(":");
        Value(shape.vParts[nMember]);
    }

    // The first key, and some of the others: a key may be there twice.
    void Object(const Shape& shape, std::size_t nKind)
    {
        Raw("{");
        if (nKind < 192) Member(shape, 0);
        for (std::size_t i = nKind % 8; i > 0; --i) {
            if (m_strText.back() != '{') Raw(",");
            Member(shape, m_Input.Byte() % shape.vNames.size());
        }
        Raw("}");
    }

    void Anything()
    {
        const std::size_t nKind = m_Input.Byte();
        if (nKind < 160) return Raw(m_Input.OneOf(kOthers));
        if (nKind < 192) return Raw(m_Input.OneOf(kNumbers));
        if (nKind < 224) return Quoted(m_Input.OneOf(kTexts));
        const std::size_t nDepth = m_Input.Byte() * 5;
        for (std::size_t i = 0; i < nDepth; ++i) Raw(nKind % 2 == 0 ? "[" : "{\"params\":");
        Raw("0");
        m_strText.append(nDepth, nKind % 2 == 0 ? ']' : '}');
    }

    CInput& m_Input;
    std::string m_strText;
};

std::string Make(CInput& input, const Shape& shape)
{
    CBuilder builder(input);
    const std::size_t nKind = input.Byte();
    if (nKind == 255) builder.Raw(input.Bytes(64));
    if (nKind >= 240) builder.Raw("\xEF\xBB\xBF /*\n*/");
    builder.Value(shape);
    if (nKind >= 224) builder.Raw(input.OneOf(kOthers));
    std::string strText = builder.Take();
    if (nKind / 8 == 27) strText.resize(strText.size() * input.Byte() / 256);
    return strText;
}

}  // namespace

std::size_t CInput::Byte()
{
    const std::string_view szByte = Bytes(1);
    return szByte.empty() ? 0 : static_cast<std::uint8_t>(szByte.front());
}

std::string_view CInput::Bytes(std::size_t nMost)
{
    const std::string_view szTaken = m_szInput.substr(0, nMost);
    m_szInput.remove_prefix(szTaken.size());
    return szTaken;
}

std::string MakeReply(CInput& input)
{
    static const Shape shape = Of(Description::kReply);
    return Make(input, shape);
}

std::string MakeSchema(CInput& input)
{
    static const Shape shape = Of(Description::kSearchSchema);
    return Make(input, shape);
}

std::string MakeContent(CInput& input)
{
    static const Shape shape = Of(*Description::kItem.KindOf("epg")->pObject);
    return Make(input, shape);
}

}  // namespace Fuzz
