#include "ReplyShapes.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "CADataRepository/Vocabulary.h"
#include "CAReplyKeys.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
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

Shape Words(std::initializer_list<std::string_view> vWords)
{
    return {Shape::WORD, vWords};
}

template <typename Code, std::size_t N>
Shape Words(const CodedWord<Code> (&words)[N], std::initializer_list<std::string_view> vMore = {})
{
    Shape shape = Words(vMore);
    for (const CodedWord<Code>& stWord : words) shape.vNames.push_back(stWord.szWord);
    return shape;
}

Shape ListOf(Shape element)
{
    return {Shape::LIST, {}, {std::move(element)}};
}

// The parts stand first: the first of them is hardly ever missing.
template <typename... Tables>
Shape Object(std::initializer_list<std::pair<std::string_view, Shape>> vParts, const Tables&... tables)
{
    Shape shape{Shape::OBJECT};
    const auto add = [&shape](std::string_view szKey, Shape part) {
        shape.vNames.push_back(szKey);
        shape.vParts.push_back(std::move(part));
    };
    for (const auto& [szKey, part] : vParts) add(szKey, part);
    [[maybe_unused]] const auto addTable = [&add](const auto& table) {
        for (const auto& key : table) add(key.szKey, {key.pText != nullptr ? Shape::TEXT : Shape::NUMBER});
    };
    (addTable(tables), ...);
    return shape;
}

const Shape kText{Shape::TEXT};
const Shape kNumber{Shape::NUMBER};

Shape Poster()
{
    const Shape images = Object({{"index", ListOf(kNumber)}, {"url", kText}, {"type", kText}});
    return Object({{"images", images}, {"images4premium", images}});
}

Shape Item()
{
    const Shape genres = ListOf(Object({}, kGenreKeys));
    const Shape certifications = ListOf(Object({}, kCertificationKeys));
    const Shape episode = Object({{"title", kText}, {"number", kNumber}});
    const Shape standing = Object({{"text_color", Words({"x"})}, {"season_stats", ListOf(kText)}}, kStandingKeys);
    const Shape record = Object({{"standing", ListOf(standing)}}, kSportsRecordKeys);
    const Shape day = Object({{"condition_icon", ListOf(kText)}}, kForeInfoKeys);
    const Shape detail = Object({{"name", kText}, {"value", kText}});
    return {Shape::ONE_OF,
            {},
            {Object({{"type", Words({"movie", "tvshow"})},
                     {"poster", Poster()},
                     {"season", kNumber},
                     {"episode", episode},
                     {"genres", genres},
                     {"certifications", certifications}},
                    kMnTKeys),
             Object({{"type", Words({"app", "apps"})},
                     {"app_info", Object({{"poster", Poster()}}, kAppKeys, kRunnableAppKeys)}}),
             Object({{"type", Words({"kids", "fitness"})}, {"poster", Poster()}}, kKidsKeys, kFitnessKeys),
             Object({{"type", Words({"weather"})},
                     {"weather_info", ListOf(Object({}, kWInfoKeys))},
                     {"forecast_info", ListOf(day)}},
                    kWeatherKeys),
             Object({{"type", Words({"stock", "epg"})}, {"detailed", ListOf(detail)}}, kStockKeys),
             Object({{"type", Words({"sports"})}, {"records", ListOf(record)}}, kSportsKeys)}};
}

Shape Command()
{
    const Shape umdChannel = Object({{"umd_channel", Object({}, kUMDChannelKeys)}});
    const Shape param = Object({{"index", kNumber},
                                {"idx", kNumber},
                                {"names", ListOf(kText)},
                                {"keyword", kText},
                                {"website", kText},
                                {"channels", ListOf(Object({}, kChannelKeys))},
                                {"umd_channels", ListOf(umdChannel)}},
                               kParamKeys);
    return Object({{"action", Words(kActionWords, {"volumeup", "display_content", "search_failed"})},
                   {"params", ListOf(param)},
                   {"intent", Words(kIntentWords)}});
}

Shape Failure()
{
    return Object({{"code", kNumber}, {"msg", kText}});
}

Shape Reply()
{
    const Shape display =
        Object({{"action", Words(kDisplayActionWords)}, {"params", ListOf(Object({}, kDisplayItemKeys))}});
    return Object({{"tvcontrol", ListOf(Command())},
                   {"domain", ListOf(Words({"tvcontrol", "movie", "x"}))},
                   {"tvcontent", ListOf(Item())},
                   {"displaycontrol", ListOf(display)},
                   {"system_sentence", kText},
                   {"dialog", Object({{"dialog_seq", kNumber}, {"dialog_id", kText}})},
                   {"nlu_info", Object({{"dialog_type", kNumber}})},
                   {"response_info", Object({}, kResponseInfoKeys)},
                   {"stat", Words({"ok", "fail"})},
                   {"err", Failure()}});
}

Shape Schema()
{
    const Shape rule = Object({{"rule", Words(kSortRuleWords)}, {"from", kText}, {"to", kText}, {"cycle", kText}});
    return Object({{"schema", ListOf(Object({{"category", Words(kSchemaCategoryWords)}, {"rules", ListOf(rule)}}))},
                   {"stat", Words({"ok", "fail"})},
                   {"err", Failure()}});
}

Shape Content()
{
    const Shape channel = Object({{"source_id", ListOf(kText)}, {"name", kText}});
    return Object({{"casting", ListOf(Object({}, kCastingKeys))},
                   {"channel", channel},
                   {"schedule", Object({}, kScheduleKeys)},
                   {"poster", Poster()},
                   {"genres", ListOf(Object({}, kGenreKeys))},
                   {"certifications", ListOf(Object({}, kCertificationKeys))}},
                  kOnTVKeys);
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
    static const Shape shape = Object({{"rsp", Reply()}});
    return Make(input, shape);
}

std::string MakeSchema(CInput& input)
{
    static const Shape shape = Object({{"rsp", Schema()}});
    return Make(input, shape);
}

std::string MakeContent(CInput& input)
{
    static const Shape shape = Content();
    return Make(input, shape);
}

}  // namespace Fuzz
