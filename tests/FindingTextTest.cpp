// What a finding says, suggests and shows, and where.
#include <gtest/gtest.h>

#include "FindingCodes.h"
#include "JsonText.h"
#include "findings/Check.h"
#include "findings/FindingText.h"
#include "text/Text.h"

TEST(FindingText, SuggestionIsWhatWasMeant)
{
    for (const auto& [szMembers, szSuggestion] : std::initializer_list<std::pair<const char*, const char*>>{
             {"'tvcontrol':[{'action':'volume_up'}]", "did you mean \"volumeup\"?"},
             {"'tvcontrol':[{'action':'VolumeUp'}]", "did you mean \"volumeup\"?"},
             {"'tvcontrol':[{'action':'volumeup '}]", "did you mean \"volumeup\"?"},
             {"'tvcontrol':[{'action':'volmueup'}]", "did you mean \"volumeup\"?"},
             {"'tvcontrol':[{'action':'xyz'}]", ""},
             {"'tvcontrol':[{'action':'play'}]", "did you mean \"play_content\"?"},
             {"'tvcontrol':[{'action':5}]", ""},
             {"'tvcontrol':[{'action':'login'}],'stat':1", ""},
             {"'tvcontrol':[{'action':'login'}],'dialog':{'dialog_id':1}", "did you mean \"1\"?"},
             {"'tvcontrol':[{'action':'login'}],'system_sentence':true", ""},
             {"'tvcontrol':[{'action':'login'}],'tvcontrl':[]", "did you mean \"tvcontrol\", which is there already?"},
             {"'tvcontrol':[{'action':'login'}],'error':{}", "did you mean \"err\"?"},
             {"'tvcontrol':[{'action':'login'}],'':1", ""},
             {"'stat':'fail','err':{'message':'x'}", "did you mean \"msg\"?"},
             {"'stat':'fail','err':{'error_code':1}", "did you mean \"code\"?"},
             {"'tvcontrol':[{'action':'login'}],'dialog':{'seq':1}", "did you mean \"dialog_seq\"?"},
             {"'tvcontrol':[{'action':'login'}],'dialog':{'id':'1'}", "did you mean \"dialog_id\"?"},
             {"'tvcontrol':[{'action':'login'}],'nlu_info':{'type':1}", "did you mean \"dialog_type\"?"},
             {"'tvcontrol':[{'action':'login'}],'dialog_id':'x'", "it belongs into \"dialog\""},
             {"'tvcontrol':[{'action':'login'}],'dialog':{'dialog_type':1}", "it belongs into \"nlu_info\""},
             {"'tvcontrol':[{'action':'login'}],'nlu_info':{'dialog_seq':1}", "it belongs into \"dialog\""},
             {"'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'movie','episode':{}}]",
              "it belongs into a TV show"},
             {"'tvcontrol':[{'action':'change_channel','params':[{'channel':'1'}]}]", "did you mean \"channel_no\"?"},
             {"'tvcontrol':[{'action':'poweroff','params':[{'device':'tv'}]}]", "did you mean \"target_device\"?"},
             {"'tvcontrol':[{'action':'display_cast','params':[{'name':[]}]}]", "did you mean \"names\"?"},
             {"'tvcontrol':[{'action':'set_channel','params':[{'umd_channel':[]}]}]", "did you mean \"umd_channels\"?"},
             {"'tvcontrol':[{'action':'change_channel','params':[{'channel_number':'1'}]}]",
              "did you mean \"channel_no\"?"},
             {"'tvcontrol':[{'action':'set_channel','params':[{'channel_name':'1'}]}]",
              "it belongs into \"umd_channel\""},
             {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'channel_name':'x'}]}]}]",
              "did you mean \"name\"?"},
             {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'frequency':'x'}]}]}]",
              "did you mean \"freq\"?"},
             {"'tvcontrol':[{'action':'set_channel','params':[{'umd_channels':[{'umd_channel':{'number':'1'}}]}]}]",
              "did you mean \"channel_number\"?"},
             {"'tvcontrol':[{'action':'login'}],'displaycontrol':[{'action':'schedule'}]",
              "did you mean \"schedule_livecontent\"?"},
             {"'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'application'}]", "did you mean \"app\"?"},
             {"'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'movie','certification':[]}]",
              "did you mean \"certifications\"?"},
             {"'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'movie','cert_flag':true}]", ""},
             {"'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'app','app_info':{'id':'1','premium_flag':"
              "'P'}}]",
              "did you mean \"p\"?"},
             {"'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'app','app_info':{'id':'1','premium_flag':"
              "'sp'}}]",
              "did you mean \"ps\"?"},
             {"'tvcontrl':[]", "did you mean \"tvcontrol\"?"},
             {"'tvcontrol':[{'action':'login','amount':5}]", "it belongs into an object of \"params\""},
             {"'tvcontrol':[{'action':'set_volume','params':[{'amount':'5'}]}]",
              "did you mean 5 without quotation marks?"},
             {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'number':7}]}]}]", "did you mean \"7\"?"},
             {"'tvcontrol':[{'action':'set_channel','params':{}}]", "put it into a list"}}) {
        SCOPED_TRACE(szMembers);
        EXPECT_EQ(szSuggestion, Only(CheckReply(Reply(szMembers))).strSuggestion);
    }
}

// What the line of a finding says besides its place.
TEST(FindingText, TextTellsWhatIsThere)
{
    for (const auto& [szText, szPart] : std::initializer_list<std::pair<const char*, const char*>>{
             {"{\"rsp\":null}", "f:1:8: error: \"rsp\" is null: it is refused"},
             {"{\u201Crsp\u201D:{}}", "f:1:2: error: texts and keys stand between double quotation marks"},
             {"{\"rsp\":\u20AC}", "not \"\u20AC\""},
             {"{\"rsp\":[-Infinity]}", "f:1:9: error: \"-Infinity\" is no number"},
             {"{\"rsp\":[0x10]}", "f:1:9: error: \"0x10\" is no number"},
             {"{\"rsp\":[trueish]}", "f:1:9: error: \"trueish\" is no value"},
             {"{1:2}", "f:1:2: error: a key between double quotation marks is missing here, not \"1\""},
             {"{\"rsp\":{\"stat\":\"ok\" \"tvcontrol\":[]}}", "closing brace, before \"tvcontrol\""},
             {"{\"rsp\":{\"stat\":\"ok}}", "f:1:16: error: this text is not closed"},
             {"{\"rsp\":{\"stat\":\"a\\\"b,\n\"tvcontrol\":[]}}", "f:1:16: error: this text is not closed"},
             {"{\"rsp:{\"tvcontrol\":[]}}", "f:1:2: error: this text is not closed"},
             {"{\"rsp\":{\"stat\":\"\\n\\u00e9\\x\"}}", "f:1:25: error: a backslash stands"},
             {"{\"rsp\":{\"\\uD83D\\n\":1}}", "f:1:10: error: this is one half"},
             {"{\"rsp\":{\"stat\":\"fail\",\n\"stat\":\"fail\"}}",
              "lost (it stands in line 1, column 9) [duplicate-key]"},
             {"{\"rsp\":{\"tvcontrol\":[{\"action\":\"\"}]}}", "f:1:32: error: \"action\" is empty: no match, code 0"},
             {"{\"rsp\":{\"tvcontrol\":[{\"action\":\"volumeup\u200B\"}]}}",
              "is \"volumeup\\xE2\\x80\\x8B\", an unknown"},
             {"{\"rsp\":{\"tvcontrol\":[{\"action\":\"play_content\"}],\"tvcontent\":[{\"type\":\"movie\",\"poster\":"
              "{\"images\":{\"index\":[57.5]}}}]}}",
              "not an integer: as the first one it counts as 57 "},
             {"{\"utterance\":\"u\",\"reply\":5}", "f:1:26: error: \"reply\" is neither an object nor a text"},
             {"{\"utterance\":\"\",\"reply\":\"\"}", "f:1:14: error: \"utterance\" is empty"},
             {"\n{\"utterance\":\"u\",\"reply\":{\"rsp\":{},\"rsp\":{}}}", "(it stands in line 2, column 27)"},
         }) {
        SCOPED_TRACE(szText);
        std::string strLines;
        for (const Finding& stFinding : CheckByForm(szText)) strLines += FindingLine("f", stFinding, CPaint(false));
        EXPECT_NE(std::string::npos, strLines.find(szPart)) << strLines;
    }
}

// The library leaves these parts to the application, and says nothing of what comes of them.
TEST(FindingText, HandedOverPartsHaveNoOutcome)
{
    const std::string strStart = "'domain':['a','b'],'dialog':[],'tvcontrol':[{'action':'display_content'}]";
    const std::string strEnd = ",'nlu_info':{'dialog_type':'1'}";
    const auto Outcomes = [](const std::string& strMembers) {
        std::string strOutcomes;
        for (const Finding& stFinding : CheckReply(Reply(strMembers)))
            strOutcomes += stFinding.strText.substr(stFinding.strText.rfind(": ") + 2) + '|';
        return strOutcomes;
    };
    const std::string strLeft = "left to the application, which reads it|";
    EXPECT_EQ("reads as an empty object|" + strLeft + strLeft + strLeft,
              Outcomes(strStart + ",'tvcontent':[{'type':'mvie'},{'type':'movie','x':1}]" + strEnd));
    EXPECT_EQ("reads as an empty object|ignored|", Outcomes(strStart + strEnd));
}

TEST(FindingText, StandWhereTheyAreInTheText)
{
    const struct {
        const char* szText;
        std::size_t nLine, nColumn, nLength;
    } kRows[] = {
        {"{'rsp':\r\n {'тв':1,'stat':'fail'}}", 2, 3, 6},  // a key, two bytes a letter
        {"{'rsp':\n {'stat':'fail','é':0}}", 2, 17, 4},
        {"{'rsp':{'tvcontrol':[{'action':\n'x'}]}}", 2, 1, 3},                         // a value
        {"{'rsp':{'stat':'fail',\n 'err': {'msg':1,'msg': /*'msg'*/ 2}}}", 2, 18, 5},  // the repeated key
        {"{'rsp':{'stat':'fail'", 1, 22, 0},                                           // the end of the text
        {"{'rsp':\n[1,\n]}", 2, 3, 1},                                                 // the comma, not the bracket
        {"\xEF\xBB\xBF", 1, 1, 0},
    };
    for (const auto& [szText, nLine, nColumn, nLength] : kRows) {
        SCOPED_TRACE(szText);
        const std::vector<Finding> vFindings = CheckReply(Quoted(std::string(szText)));
        ASSERT_FALSE(vFindings.empty());
        EXPECT_EQ(nLine, vFindings.front().nLine);
        EXPECT_EQ(nColumn, vFindings.front().nColumn);
        EXPECT_EQ(nLength, vFindings.front().nLength);
    }
}

TEST(FindingText, ConversationIsCheckedLineByLine)
{
    const std::string strText = Quoted(std::string(
        "\xEF\xBB\xBF\n{'utterance':'u','reply':{'rsp':{'tvcontrol':[{'action':'muteon'}]}},'expect':{'strAction':'x'}}"
        "\n"
        "{'utterance':'ü','reply':{'rsp':{'tvcontrol':[{'action':'x'}]}}}\n"
        "{'utterance':'u','reply':'{'}\n{'utterance':'','reply':5}\n{'reply':{'rsp':{'stat':'fail'}}} x\nx"));
    const std::vector<Finding> vFindings = CheckByForm(strText);
    std::string strPlaces;
    for (const Finding& stFinding : vFindings)
        strPlaces += FindingLine("f", stFinding, CPaint(false)).substr(0, 6) + stFinding.strCode + '\n';
    EXPECT_EQ(
        "f:3:57unknown-word\nf:4:26not-json\nf:5:14not-a-turn\nf:5:25not-a-turn\nf:6:35not-a-turn\nf:7:1:not-json\n",
        strPlaces);
    EXPECT_NE(std::string::npos, vFindings[1].strText.find("line 1, column 2 of this text"));
    EXPECT_EQ("not-a-turn", Only(CheckByForm("{\"utterance\":\"u\",\n\"reply\":{\"rsp\":{}}}")).strCode);
}

// A character that does not show is told from what it stands beside; what scripts and emoji need stays.
TEST(FindingText, InvisibleCharactersShow)
{
    for (const char* szHidden :
         {"\u00A0", "\u00AD", "\u200B", "\u200C", "\u200D", "\u2060", "\u2064", "\uFEFF", "\U000E0041"}) {
        const std::string strShown = ::Quoted(std::string_view("a" + std::string(szHidden)));
        EXPECT_EQ(std::string::npos, strShown.find(szHidden)) << strShown;
        EXPECT_EQ(0U, strShown.find("\"a\\x")) << strShown;
    }
    for (const std::string_view szHonest : {"\U0001F468\u200D\U0001F469", "\u0645\u06CC\u200C\u062E", "\u00E9\u8A9E"})
        EXPECT_EQ('"' + std::string(szHonest) + '"', ::Quoted(szHonest));
}

TEST(FindingText, LineAndMarkerAreFitForATerminal)
{
    const std::string strKey = "\u0085\u202Ex\u8A9E";
    const std::string strText = "{\"rsp\":{\"stat\":\"fail\",\t\"" + strKey + "\":1}}";
    const Finding stFinding = Only(CheckReply(strText));
    const std::string strShown =
        FindingLine("\033.json", stFinding, CPaint(false)) + FindingExcerpt(strText, stFinding, CPaint(false));
    EXPECT_EQ(std::string::npos, strShown.find_first_of("\033\x85")) << strShown;
    EXPECT_EQ(std::string::npos, strShown.find("\u202E")) << strShown;
    const std::string strExcerpt = FindingExcerpt(strText, stFinding, CPaint(false));
    EXPECT_EQ(strExcerpt.find('"' + std::string("\\xC2")), strExcerpt.find('^') - strExcerpt.find('\n') - 1);

    const std::string strLong = "{\"rsp\":{\"stat\":\"fail\",\"" + std::string(100000, 'x') + "\":1}}";
    EXPECT_LT(FindingExcerpt(strLong, Only(CheckReply(strLong)), CPaint(false)).size(), 400U);
}
