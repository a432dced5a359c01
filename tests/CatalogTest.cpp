// What the program tells without a reply: words, and where conversation is available.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <map>
#include <sstream>

#include "catalog/Catalog.h"
#include "parlo-api.h"
#include "records/RecordJson.h"
#include "session/Session.h"

using namespace CADataRepository;

static const CPaint kPlain(false);

TEST(Catalog, StatusOfEveryCountryAndLanguage)
{
    for (const char* szName : {"PARLO_COUNTRY", "PARLO_LANGUAGE", "PARLO_VOICE_RECOG", "PARLO_LOG"}) unsetenv(szName);
    EXPECT_EQ("there is no service (-1)\n", RenderStatus(ca_get_conv_status()));
    const CSession session;
    EXPECT_EQ("conversation is available (0)\n", RenderStatus(ca_get_conv_status()));
    std::istringstream table(RenderAllStatuses(AllStatuses(), kPlain));
    std::string strLine, strAvailable, strWord;
    std::getline(table, strLine);
    std::istringstream heading(strLine);
    const std::vector<std::string> vHeading{std::istream_iterator<std::string>(heading), {}};
    while (std::getline(table, strLine) && !strLine.empty()) {
        std::istringstream row(strLine);
        row >> strWord;
        strAvailable += ' ' + strWord + ':';
        for (std::size_t i = 1; row >> strWord; ++i)
            if (strWord == "yes") strAvailable += vHeading.at(i) + ',';
    }
    const std::string strEnglish = ":en_US,en_AU,en_GB,", strPortuguese = ":pt_BR,pt_PT,";
    EXPECT_EQ(" KR:ko_KR, US" + strEnglish + " AU" + strEnglish + " CA" + strEnglish + " BR" + strPortuguese + " PT" +
                  strPortuguese + " ES:es_ES, CN:zh_CN, NO:nn_NO,nb_NO, SE:sv_SE, AT:de_DE, GB" + strEnglish +
                  " DE:de_DE, IT:it_IT, PL:pl_PL, FI:fi_FI, BE:nl_NL, DK:da_DK, IE" + strEnglish +
                  " FR:fr_FR, NL:nl_NL, RU:ru_RU, CH:de_DE,",
              strAvailable);
    EXPECT_EQ("the voice language does not fit the country (6)\n", RenderStatus(ca_get_conv_status()));
    setenv("PARLO_VOICE_RECOG", "0", 1);
    EXPECT_EQ("conversation is not supported by this set or in its country (4)\n", RenderStatus(ca_get_conv_status()));
    EXPECT_NE(std::string::npos, RenderAllStatuses(AllStatuses(), kPlain).find("KR       no "));
}

TEST(Catalog, WordsAsTextAndAsJson)
{
    const Json::Value root = Vocabulary();
    EXPECT_EQ((std::vector<std::string>{"actions", "display_actions", "intents", "schema_categories", "schema_rules"}),
              root.getMemberNames());
    // What some of the actions take and fill, and whether they may follow another one.
    const std::map<std::string, std::string> mapWanted = {
        {"poweroff", "1 system|target_device|vSystemActionParam|0"},
        {"set_channel", "5 channel|channels,umd_channels|vSystemActionParam,vChannels|16"},
        {"play_content", "22/23 system|idx|vSystemActionParam,vSAContents|16"},
        {"show_optlist_for_confirm", "50 candidate|names|vSystemActionParam,vCandidates|0"},
        {"run_webbrowser", "57 system|keyword,website|vSystemActionParam|0"},
        {"delete_item", "58 none|||0"},
        {"uninstall_application", "61 system||vSAContents|0"}};
    std::size_t nWanted = 0;
    for (const Json::Value& action : root["actions"]) {
        if (mapWanted.count(action["word"].asString()) == 0) continue;
        const auto Words = [&](const char* szName) {
            std::string strWords = "|";
            for (const Json::Value& word : action[szName]) strWords += (strWords == "|" ? "" : ",") + word.asString();
            return strWords;
        };
        const std::string strWithout =
            action.isMember("code_without_position") ? "/" + action["code_without_position"].asString() : "";
        EXPECT_EQ(mapWanted.at(action["word"].asString()),
                  action["code"].asString() + strWithout + " " + action["lookup"].asString() + Words("takes") +
                      Words("fills") + "|" + std::to_string(action["after"].size()));
        ++nWanted;
    }
    EXPECT_EQ(mapWanted.size(), nWanted);
    std::map<std::string, int> mapInText;  // how often a line of the text is this word and code
    std::istringstream text(RenderVocabulary(root, kPlain));
    EXPECT_EQ(0U, text.str().find("Actions of a TV control command\n  word"));
    std::size_t nWords = 0;
    for (std::string strLine, strWord, strCode; std::getline(text, strLine); strCode.clear())
        if (std::istringstream(strLine) >> strWord >> strCode) ++mapInText[strWord + ' ' + strCode];
    for (const Json::Value& vocabulary : root)
        for (const Json::Value& entry : vocabulary) {
            ++nWords;
            EXPECT_LT(0, mapInText[entry["word"].asString() + ' ' + entry["code"].asString()]) << JsonLine(entry);
        }
    EXPECT_EQ(std::size(kActionWords) + std::size(kIntentWords) + std::size(kDisplayActionWords) +
                  std::size(kSchemaCategoryWords) + std::size(kSortRuleWords),
              nWords);
}

// What somebody may take for an action.
TEST(Catalog, OtherWordsAreToldFromActions)
{
    const char* const kRows[][2] = {{"play", "listed under \"Intents of a TV control command\", code 1"},
                                    {"youtube", "listed under \"Categories of a search schema\", code "},
                                    {"display_content", "with two or more domains a search hand-over: "},
                                    {"search_failed", "with the one domain \"tvcontrol\" a failed search: "}};
    for (const auto& [szWord, szUse] : kRows) {
        EXPECT_EQ(0U, RenderWord(Word(szWord), kPlain).find(std::string(szWord) + "\n  no action        " + szUse))
            << szWord;
        EXPECT_EQ(0U, Word(szWord)["no_action"][0].asString().find(szUse)) << szWord;
    }
    EXPECT_EQ(std::string::npos, RenderWord(Word("play_content"), kPlain).find("no action"))
        << "it is a display action too";
    EXPECT_TRUE(Word("plai").isNull());
}
