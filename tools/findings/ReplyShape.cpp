// Tables of the keys that are read, with their types.
#include "findings/ReplyShape.h"

#include "rendering/Text.h"

namespace
{

enum class E_KIND { TEXT, INTEGER, LIST, OBJECT };

struct ReplyKey {
    const char* szKey;
    E_KIND eKind;
};

constexpr ReplyKey kEnvelopeKeys[] = {
    {"stat", E_KIND::TEXT},
    {"err", E_KIND::OBJECT},
    {"domain", E_KIND::LIST},
    {"dialog", E_KIND::OBJECT},
    {"system_sentence", E_KIND::TEXT},
    {"tvcontrol", E_KIND::LIST},
    {"response_info", E_KIND::OBJECT},
    {"displaycontrol", E_KIND::LIST},
    {"tvcontent", E_KIND::LIST},
    {"nlu_info", E_KIND::OBJECT},
};
constexpr ReplyKey kDialogKeys[] = {{"dialog_id", E_KIND::TEXT}, {"dialog_seq", E_KIND::INTEGER}};
constexpr ReplyKey kNluKeys[] = {{"dialog_type", E_KIND::INTEGER}};
constexpr ReplyKey kCommandKeys[] = {{"action", E_KIND::TEXT}, {"intent", E_KIND::TEXT}, {"params", E_KIND::LIST}};
constexpr ReplyKey kParamKeys[] = {
    {"amount", E_KIND::INTEGER},     {"index", E_KIND::INTEGER},      {"idx", E_KIND::INTEGER},
    {"prevnext", E_KIND::TEXT},      {"listorder", E_KIND::INTEGER},  {"time", E_KIND::INTEGER},
    {"direction", E_KIND::TEXT},     {"gb_function", E_KIND::TEXT},   {"play_speed", E_KIND::INTEGER},
    {"target_device", E_KIND::TEXT}, {"target_status", E_KIND::TEXT}, {"colorkey", E_KIND::TEXT},
    {"keyword", E_KIND::TEXT},       {"website", E_KIND::TEXT},       {"type", E_KIND::TEXT},
    {"channel_no", E_KIND::TEXT},    {"action", E_KIND::TEXT},        {"names", E_KIND::LIST},
    {"channels", E_KIND::LIST},      {"umd_channels", E_KIND::LIST},
};
constexpr ReplyKey kChannelKeys[] = {
    {"major", E_KIND::INTEGER}, {"minor", E_KIND::INTEGER}, {"ptc", E_KIND::INTEGER},    {"dtv", E_KIND::TEXT},
    {"number", E_KIND::TEXT},   {"name", E_KIND::TEXT},     {"onid", E_KIND::TEXT},      {"tsid", E_KIND::TEXT},
    {"sid", E_KIND::TEXT},      {"freq", E_KIND::TEXT},     {"source_id", E_KIND::TEXT}, {"type", E_KIND::TEXT},
};
constexpr ReplyKey kUMDElementKeys[] = {{"umd_channel", E_KIND::OBJECT}};
constexpr ReplyKey kUMDChannelKeys[] = {
    {"lineup_id", E_KIND::TEXT},    {"channel_id", E_KIND::TEXT}, {"channel_number", E_KIND::TEXT},
    {"channel_name", E_KIND::TEXT}, {"attributes", E_KIND::TEXT},
};
constexpr ReplyKey kRequestKeys[] = {{"action", E_KIND::TEXT}, {"params", E_KIND::LIST}};
constexpr ReplyKey kRequestParamKeys[] = {{"title", E_KIND::TEXT}, {"index", E_KIND::INTEGER}};
constexpr ReplyKey kItemKeys[] = {
    {"type", E_KIND::TEXT},     {"id", E_KIND::TEXT},          {"title", E_KIND::TEXT},
    {"year", E_KIND::INTEGER},  {"duration", E_KIND::INTEGER}, {"cert_flag", E_KIND::TEXT},
    {"poster", E_KIND::OBJECT}, {"genres", E_KIND::LIST},      {"certifications", E_KIND::LIST},
};

struct KindWords {
    E_KIND eKind;
    bool (Json::Value::*pIs)() const;
    const char* szWords;
};

constexpr KindWords kKindWords[] = {
    {E_KIND::TEXT, &Json::Value::isString, "a text"},
    {E_KIND::INTEGER, &Json::Value::isInt, "an integer"},
    {E_KIND::LIST, &Json::Value::isArray, "a list"},
    {E_KIND::OBJECT, &Json::Value::isObject, "an object"},
};

const KindWords& WordsOf(E_KIND eKind)
{
    return kKindWords[static_cast<std::size_t>(eKind)];
}

std::string IsNot(const std::string& strName, const Json::Value& value, E_KIND eKind)
{
    return strName + " is " + KindInWords(value) + ", not " + WordsOf(eKind).szWords;
}

std::string EmptyObject(const std::string& strName, const Json::Value& value)
{
    return IsNot(strName, value, E_KIND::OBJECT) + ": read as an empty one";
}

// Collects the sentences of one object and of the lists within it.
class CFindings
{
public:
    template <std::size_t N>
    void Object(const std::string& strPath, const Json::Value& object, const ReplyKey (&keys)[N], bool bUnknown = true);

    template <std::size_t N>
    void Elements(const std::string& strPath, const Json::Value& list, const ReplyKey (&keys)[N]);

    void Say(std::string strText) { m_vTexts.push_back(std::move(strText)); }
    std::vector<std::string> Texts() && { return std::move(m_vTexts); }

private:
    std::vector<std::string> m_vTexts;
};

template <std::size_t N>
void CFindings::Object(const std::string& strPath, const Json::Value& object, const ReplyKey (&keys)[N], bool bUnknown)
{
    if (!object.isObject()) return;
    for (const std::string& strKey : object.getMemberNames()) {
        const Json::Value& value = object[strKey];
        const ReplyKey* pKey = nullptr;
        for (const ReplyKey& stKey : keys)
            if (strKey == stKey.szKey) pKey = &stKey;
        const std::string strName = Quoted(strPath + strKey);
        if (pKey == nullptr && bUnknown) Say(strName + " is an unknown key: ignored");
        if (pKey == nullptr || value.isNull() || (value.*WordsOf(pKey->eKind).pIs)()) continue;
        Say(IsNot(strName, value, pKey->eKind) + ": ignored");
    }
}

template <std::size_t N>
void CFindings::Elements(const std::string& strPath, const Json::Value& list, const ReplyKey (&keys)[N])
{
    if (!list.isArray()) return;
    for (Json::ArrayIndex i = 0; i < list.size(); ++i) {
        const std::string strElement = strPath + '[' + std::to_string(i) + ']';
        if (!list[i].isObject()) Say(EmptyObject(Quoted(strElement), list[i]));
        Object(strElement + '.', list[i], keys);
    }
}

}  // namespace

const char* KindInWords(const Json::Value& value)
{
    for (const KindWords& stWords : kKindWords)
        if ((value.*stWords.pIs)()) return stWords.szWords;
    return value.isNull() ? "null" : value.isBool() ? "a boolean" : "a number";
}

std::vector<std::string> IgnoredInEnvelope(const Json::Value& rsp)
{
    CFindings findings;
    findings.Object("", rsp, kEnvelopeKeys);
    findings.Object("dialog.", Child(rsp, "dialog"), kDialogKeys);
    findings.Object("nlu_info.", Child(rsp, "nlu_info"), kNluKeys, false);
    const Json::Value& domain = Child(rsp, "domain");
    for (Json::ArrayIndex i = 0; domain.isArray() && i < domain.size(); ++i)
        if (!domain[i].isString())
            findings.Say(IsNot("\"domain[" + std::to_string(i) + "]\"", domain[i], E_KIND::TEXT) + ": ignored");
    return std::move(findings).Texts();
}

std::vector<std::string> IgnoredInCommand(const Json::Value& command)
{
    CFindings findings;
    if (!command.isObject()) findings.Say(EmptyObject("the command", command));
    findings.Object("", command, kCommandKeys);
    return std::move(findings).Texts();
}

std::vector<std::string> IgnoredInCommandParam(const Json::Value& param, const std::string& strName)
{
    CFindings findings;
    const std::string strPath = strName + '.';
    if (!param.isObject()) findings.Say(EmptyObject(Quoted(strName), param));
    findings.Object(strPath, param, kParamKeys);
    const bool bIndex = Child(param, "index").isInt();
    const bool bIdx = Child(param, "idx").isInt();
    if (bIdx && !bIndex) findings.Say(Quoted(strPath + "idx") + " counts only beside an integer \"index\": ignored");
    if (bIndex && !bIdx)
        findings.Say(Quoted(strPath + "index") + " only says that \"idx\" counts, which is no integer: position 0");
    findings.Elements(strPath + "channels", Child(param, "channels"), kChannelKeys);
    const Json::Value& umdChannels = Child(param, "umd_channels");
    findings.Elements(strPath + "umd_channels", umdChannels, kUMDElementKeys);
    for (Json::ArrayIndex i = 0; umdChannels.isArray() && i < umdChannels.size(); ++i)
        findings.Object(strPath + "umd_channels[" + std::to_string(i) + "].umd_channel.",
                        Child(umdChannels[i], "umd_channel"), kUMDChannelKeys);
    return std::move(findings).Texts();
}

std::vector<std::string> IgnoredInRequest(const Json::Value& request)
{
    CFindings findings;
    findings.Object("", request, kRequestKeys);
    findings.Elements("params", Child(request, "params"), kRequestParamKeys);
    return std::move(findings).Texts();
}

std::vector<std::string> IgnoredInItem(const Json::Value& item)
{
    CFindings findings;
    findings.Object("", item, kItemKeys, false);
    return std::move(findings).Texts();
}
