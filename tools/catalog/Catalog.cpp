// Tables of the vocabulary and of availability.
#include "catalog/Catalog.h"

#include <json/value.h>

#include <cstdlib>
#include <vector>

#include "catalog/ActionFacts.h"
#include "parlo-api.h"
#include "records/RecordJson.h"

namespace
{

using namespace CADataRepository;

struct StatusWords {
    int nStatus;
    const char* szShort;  // for a cell of the table
    const char* szWords;
};

constexpr StatusWords kStatusWords[] = {
    {E_CA_CONV_STATUS_AVAILABLE, "yes", "conversation is available"},
    {E_CA_CONV_STATUS_NOT_SUPPORTED, "no", "conversation is not supported by this set or in its country"},
    {E_CA_CONV_STATUS_LANGUAGE_NOT_SUPPORTED, ".", "the voice language does not fit the country"},
    {E_CA_CONV_STATUS_NO_SERVICE, "?", "there is no service"},
};

constexpr const char* kCountries[] = {"KR", "US", "AU", "CA", "BR", "PT", "ES", "CN", "NO", "SE", "AT", "GB",
                                      "DE", "IT", "PL", "FI", "BE", "DK", "IE", "FR", "NL", "RU", "CH"};

constexpr const char* kLanguages[] = {"ko_KR", "en_US", "en_AU", "en_GB", "pt_BR", "pt_PT", "de_DE",
                                      "fr_FR", "es_ES", "it_IT", "nl_NL", "zh_CN", "pl_PL", "ru_RU",
                                      "nn_NO", "nb_NO", "da_DK", "sv_SE", "fi_FI"};

// Calls `visit` with each vocabulary: its title, its name in JSON and its words.
template <typename Visit>
void ForEachVocabulary(const Visit& visit)
{
    visit("Actions of a TV control command", "actions", kActionWords);
    visit("Intents of a TV control command", "intents", kIntentWords);
    visit("Actions of a display control request", "display_actions", kDisplayActionWords);
    visit("Categories of a search schema", "schema_categories", kSchemaCategoryWords);
    visit("Rules of a search schema", "schema_rules", kSortRuleWords);
}

// What a word is where an action stands, but is none. The first two have no code.
struct OtherUse {
    std::string_view szWord;
    const char* szUse;
};

constexpr OtherUse kFlowWords[] = {
    {"display_content",
     "with two or more domains a search hand-over: no lookup, the application reads the reply itself"},
    {"search_failed",
     "with the one domain \"tvcontrol\" a failed search: no lookup, the application searches by itself"},
};

// What the word is when it is no action: how it steers a reply, or which other vocabularies have it. Empty when it is
// nothing.
std::vector<std::string> OtherUses(std::string_view szWord)
{
    std::vector<std::string> vUses;
    for (const auto& [szFlowWord, szUse] : kFlowWords)
        if (szFlowWord == szWord) vUses.emplace_back(szUse);
    ForEachVocabulary([&](const char* szTitle, const char*, const auto& vWords) {
        for (const auto& stWord : vWords)
            if (stWord.szWord == szWord)
                vUses.push_back("listed under " + Quoted(szTitle) + ", code " + std::to_string(stWord.eCode));
    });
    return vUses;
}

// Calls `visit` for each country and voice language, with the substitute set to them.
template <typename Visit>
void ForEachSet(const Visit& visit)
{
    for (const char* szCountry : kCountries) {
        setenv("PARLO_COUNTRY", szCountry, 1);
        for (const char* szLanguage : kLanguages) {
            setenv("PARLO_LANGUAGE", szLanguage, 1);
            visit(szCountry, szLanguage);
        }
    }
}

Json::Value List(const std::vector<std::string>& vTexts)
{
    Json::Value list(Json::arrayValue);
    for (const std::string& strText : vTexts) list.append(strText);
    return list;
}

Json::Value FactsValue(const ActionFacts& stFacts)
{
    Json::Value value;
    value["lookup"] = stFacts.strLookup;
    value["takes"] = List(stFacts.vTakes);
    value["fills"] = List(stFacts.vFills);
    value["after"] = List(stFacts.vAfter);
    if (stFacts.nCodeWithout != 0 && stFacts.nCodeWithout != stFacts.nCode)
        value["code_without_position"] = stFacts.nCodeWithout;
    return value;
}

std::string LineOf(const char* szLabel, const std::string& strValue, const CPaint& paint)
{
    return "  " + paint.Label(Padded(szLabel, 17)) + (strValue.empty() ? "-" : strValue) + '\n';
}

const StatusWords& WordsOf(int nStatus)
{
    for (const StatusWords& stWords : kStatusWords)
        if (stWords.nStatus == nStatus) return stWords;
    return kStatusWords[3];
}

}  // namespace

std::string RenderVocabulary(const CPaint& paint)
{
    std::string strResult;
    ForEachVocabulary([&](const char* szTitle, const char*, const auto& vWords) {
        std::vector<std::vector<std::string>> vRows = {{"word", "code"}};
        for (const auto& stWord : vWords) vRows.push_back({std::string(stWord.szWord), std::to_string(stWord.eCode)});
        strResult += (strResult.empty() ? "" : "\n") + paint.Title(szTitle) + '\n' + Table(vRows, 2, paint);
    });
    return strResult;
}

std::string VocabularyJson()
{
    Json::Value root(Json::objectValue);
    std::vector<Json::Value> vFacts;
    for (const ActionFacts& stFacts : AllActionFacts()) vFacts.push_back(FactsValue(stFacts));
    ForEachVocabulary([&](const char*, const char* szName, const auto& vWords) {
        Json::Value& list = root[szName] = Json::arrayValue;
        for (const auto& stWord : vWords) {
            Json::Value entry(Json::objectValue);
            if (&root[szName] == &root["actions"]) entry = vFacts[list.size()];
            entry["word"] = std::string(stWord.szWord);
            entry["code"] = static_cast<int>(stWord.eCode);
            list.append(entry);
        }
    });
    return JsonLine(root);
}

std::string RenderAction(const std::string& strWord, const CPaint& paint)
{
    for (const ActionFacts& stFacts : AllActionFacts()) {
        if (stFacts.strWord != strWord) continue;
        std::string strCode = std::to_string(stFacts.nCode);
        if (stFacts.nCodeWithout != 0 && stFacts.nCodeWithout != stFacts.nCode)
            strCode += ", without a position " + std::to_string(stFacts.nCodeWithout);
        return paint.Title(strWord) + '\n' + LineOf("code", strCode, paint) +
               LineOf("lookup", stFacts.strLookup, paint) + LineOf("takes", Joined(stFacts.vTakes), paint) +
               LineOf("fills", Joined(stFacts.vFills), paint) + LineOf("may follow", Joined(stFacts.vAfter), paint);
    }
    const std::vector<std::string> vUses = OtherUses(strWord);
    std::string strResult = vUses.empty() ? std::string() : paint.Title(strWord) + '\n';
    for (const std::string& strUse : vUses) strResult += LineOf("no action", strUse, paint);
    return strResult;
}

std::string ActionJson(const std::string& strWord)
{
    for (const ActionFacts& stFacts : AllActionFacts()) {
        if (stFacts.strWord != strWord) continue;
        Json::Value value = FactsValue(stFacts);
        value["word"] = strWord;
        value["code"] = stFacts.nCode;
        return JsonLine(value);
    }
    const std::vector<std::string> vUses = OtherUses(strWord);
    if (vUses.empty()) return {};
    Json::Value value;
    value["word"] = strWord;
    value["no_action"] = List(vUses);
    return JsonLine(value);
}

std::vector<std::string_view> ActionWords()
{
    std::vector<std::string_view> vWords;
    for (const auto& stWord : kActionWords) vWords.push_back(stWord.szWord);
    for (const auto& stWord : kFlowWords) vWords.push_back(stWord.szWord);
    return vWords;
}

std::string StatusJson(int nStatus, bool bSubstitute)
{
    Json::Value value;
    value["status"] = nStatus;
    value["available"] = nStatus == E_CA_CONV_STATUS_AVAILABLE;
    value["text"] = WordsOf(nStatus).szWords;
    value["substitute"] = bSubstitute;
    return JsonLine(value);
}

std::string AllStatusesJson()
{
    std::string strLines;
    ForEachSet([&](const char* szCountry, const char* szLanguage) {
        Json::Value value;
        value["country"] = szCountry;
        value["language"] = szLanguage;
        value["status"] = ca_get_conv_status();
        strLines += JsonLine(value);
    });
    return strLines;
}

std::string RenderStatus(int nStatus)
{
    return WordsOf(nStatus).szWords + (" (" + std::to_string(nStatus)) + ")\n";
}

std::string RenderAllStatuses(const CPaint& paint)
{
    std::vector<std::vector<std::string>> vRows = {{"country"}};
    vRows.front().insert(vRows.front().end(), std::begin(kLanguages), std::end(kLanguages));
    ForEachSet([&](const char* szCountry, const char*) {
        if (vRows.back().front() != szCountry) vRows.emplace_back(1, szCountry);
        vRows.back().emplace_back(WordsOf(ca_get_conv_status()).szShort);
    });
    std::string strLegend = "\n";
    for (const StatusWords& stWords : kStatusWords)
        if (stWords.nStatus != E_CA_CONV_STATUS_NO_SERVICE)
            strLegend +=
                "  " + Padded(stWords.szShort, 5) + stWords.szWords + " (" + std::to_string(stWords.nStatus) + ")\n";
    return Table(std::move(vRows), 0, paint) + strLegend;
}
