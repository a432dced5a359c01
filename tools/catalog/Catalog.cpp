// Tables of the vocabulary and of availability.
#include "catalog/Catalog.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "findings/Actions.h"
#include "parlo-api.h"

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

// Every language of the countries, once.
std::vector<std::string> AllLanguages()
{
    std::vector<std::string> vAll;
    for (const auto& [szCountry, vLanguages] : kConversationCountries)
        for (const std::string_view szLanguage : vLanguages)
            if (!szLanguage.empty() && std::find(vAll.begin(), vAll.end(), szLanguage) == vAll.end())
                vAll.emplace_back(szLanguage);
    return vAll;
}

template <const auto& kWords>
Json::Value Entries()
{
    Json::Value list(Json::arrayValue);
    for (const auto& stWord : kWords) {
        Json::Value& entry = list.append(Json::objectValue);
        entry["word"] = std::string(stWord.szWord);
        entry["code"] = static_cast<int>(stWord.eCode);
    }
    return list;
}

constexpr struct {
    const char* szTitle;
    const char* szName;
    Json::Value (*pEntries)();
} kVocabularies[] = {
    {"Actions of a TV control command", "actions", Entries<kActionWords>},
    {"Intents of a TV control command", "intents", Entries<kIntentWords>},
    {"Actions of a display control request", "display_actions", Entries<kDisplayActionWords>},
    {"Categories of a search schema", "schema_categories", Entries<kSchemaCategoryWords>},
    {"Rules of a search schema", "schema_rules", Entries<kSortRuleWords>},
};

// Two words where an action stands have no code, and steer the reply.
constexpr const char* kFlowWords[][2] = {
    {"display_content",
     "with two or more domains a search hand-over: no lookup, the application reads the reply itself"},
    {"search_failed",
     "with the one domain \"tvcontrol\" a failed search: no lookup, the application searches by itself"},
};

Json::Value List(std::initializer_list<const char*> vTexts)
{
    Json::Value list(Json::arrayValue);
    for (const char* szText : vTexts)
        if (szText != nullptr) list.append(szText);
    return list;
}

// What the library makes of an action.
Json::Value FactsOf(const CodedWord<E_CA_TVCONTROL>& stAction)
{
    constexpr const char* kLookups[] = {"none", "system", "channel", "candidate", "candidate"};
    constexpr const char* kLists[] = {nullptr, nullptr, "vChannels", "vCandidates", nullptr};  // no reply brings a cast
    const ActionRow stRow = ActionOf(stAction.eCode);
    const auto nLookup = static_cast<std::size_t>(stRow.eLookup);
    const bool bParams = AsksForSecond(stRow) || stRow.vKeys[0] != nullptr;
    Json::Value value;
    value["word"] = std::string(stAction.szWord);
    value["code"] = stAction.eCode;
    value["lookup"] = kLookups[nLookup];
    value["takes"] = List({stRow.vKeys[0], stRow.vKeys[1]});
    value["needed"] = stRow.Has(NEEDS_PARAMS);
    value["fills"] = List({bParams ? "vSystemActionParam" : nullptr, kLists[nLookup],
                           stRow.Has(SHOWS_CONTENTS) ? "vSAContents" : nullptr});
    value["after"] = Json::arrayValue;
    for (const auto& [szWord, eCode] : kActionWords)
        if (stRow.Has(MAY_FOLLOW) && AsksForSecond(ActionOf(eCode))) value["after"].append(std::string(szWord));
    if (stAction.eCode == E_CA_TVCONTROL_PLAY_CONTENT)
        value["code_without_position"] = E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX;
    return value;
}

// The same of a word that is no action: what it is instead, how it steers a reply or which vocabularies have it. Null
// when it is nothing.
Json::Value NoAction(const std::string& strWord)
{
    Json::Value uses;
    for (const auto& [szFlowWord, szUse] : kFlowWords)
        if (strWord == szFlowWord) uses.append(szUse);
    for (const auto& [szTitle, szName, pEntries] : kVocabularies)
        for (const Json::Value& entry : pEntries())
            if (entry["word"] == strWord)
                uses.append("listed under " + Quoted(szTitle) + ", code " + entry["code"].asString());
    Json::Value value;
    if (uses.isNull()) return value;
    value["word"] = strWord;
    value["no_action"] = uses;
    return value;
}

std::string JoinedTexts(const Json::Value& list)
{
    std::vector<std::string> vTexts;
    for (const Json::Value& text : list) vTexts.push_back(text.asString());
    return Joined(vTexts);
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

Json::Value Vocabulary()
{
    Json::Value root;
    for (const auto& [szTitle, szName, pEntries] : kVocabularies) root[szName] = pEntries();
    for (Json::ArrayIndex i = 0; i < std::size(kActionWords); ++i) root["actions"][i] = FactsOf(kActionWords[i]);
    return root;
}

std::string RenderVocabulary(const Json::Value& vocabulary, const CPaint& paint)
{
    std::string strResult;
    for (const auto& [szTitle, szName, pEntries] : kVocabularies) {
        std::vector<std::vector<std::string>> vRows = {{"word", "code"}};
        for (const Json::Value& entry : vocabulary[szName])
            vRows.push_back({entry["word"].asString(), entry["code"].asString()});
        strResult += (strResult.empty() ? "" : "\n") + paint.Title(szTitle) + '\n' + Table(vRows, 2, paint);
    }
    return strResult;
}

Json::Value Word(const std::string& strWord)
{
    for (const auto& stAction : kActionWords)
        if (stAction.szWord == strWord) return FactsOf(stAction);
    return NoAction(strWord);
}

std::string RenderWord(const Json::Value& word, const CPaint& paint)
{
    std::string strResult = paint.Title(word["word"].asString()) + '\n';
    for (const Json::Value& use : word["no_action"]) strResult += LineOf("no action", use.asString(), paint);
    if (!word.isMember("code")) return strResult;
    const std::string strWithout = word["code_without_position"].asString();
    const bool bOne = word["takes"].size() == 1;
    const char* szNeeded = !word["needed"].asBool() ? "" : bOne ? ", which it needs" : ", one of which it needs";
    return strResult +
           LineOf("code", word["code"].asString() + (strWithout.empty() ? "" : ", without a position ") + strWithout,
                  paint) +
           LineOf("lookup", word["lookup"].asString(), paint) +
           LineOf("takes", JoinedTexts(word["takes"]) + szNeeded, paint) +
           LineOf("fills", JoinedTexts(word["fills"]), paint) +
           LineOf("may follow", word["after"].empty() ? "" : "channel and candidate actions", paint);
}

Json::Value Status(int nStatus)
{
    Json::Value value;
    value["status"] = nStatus;
    value["available"] = nStatus == E_CA_CONV_STATUS_AVAILABLE;
    value["text"] = WordsOf(nStatus).szWords;
    return value;
}

std::string RenderStatus(int nStatus)
{
    return WordsOf(nStatus).szWords + (" (" + std::to_string(nStatus)) + ")\n";
}

Json::Value AllStatuses()
{
    Json::Value list;
    for (const CountryLanguages& stRow : kConversationCountries)
        for (const std::string& strLanguage : AllLanguages()) {
            Json::Value& value = list.append(Json::objectValue);
            value["country"] = std::string(stRow.szCountry);
            value["language"] = strLanguage;
            setenv("PARLO_COUNTRY", value["country"].asCString(), 1);
            setenv("PARLO_LANGUAGE", strLanguage.c_str(), 1);
            value["status"] = ca_get_conv_status();
        }
    return list;
}

std::string RenderAllStatuses(const Json::Value& statuses, const CPaint& paint)
{
    std::vector<std::vector<std::string>> vRows = {AllLanguages()};
    vRows.front().insert(vRows.front().begin(), "country");
    for (const Json::Value& status : statuses) {
        if (status["country"] != vRows.back().front()) vRows.emplace_back(1, status["country"].asString());
        vRows.back().emplace_back(WordsOf(status["status"].asInt()).szShort);
    }
    std::string strLegend = "\n";
    for (const StatusWords& stWords : kStatusWords)
        if (stWords.nStatus != E_CA_CONV_STATUS_NO_SERVICE)
            strLegend += "  " + Padded(stWords.szShort, 5) + RenderStatus(stWords.nStatus);
    return Table(std::move(vRows), 0, paint) + strLegend;
}
