// Each kind of finding at its line and column, and what an unknown word may have meant.
#include <gtest/gtest.h>

#include <algorithm>

#include "JsonText.h"
#include "findings/Check.h"
#include "findings/FindingText.h"
#include "findings/Suggestion.h"

namespace
{

// "LINE:COLUMN: " of the mark '~' in the text, which has characters of one column only before it.
std::string PlaceOfMark(const std::string& strText)
{
    const std::string strBefore = strText.substr(0, strText.find('~'));
    const std::string strLine = strBefore.substr(strBefore.rfind('\n') + 1);
    const auto nColumns = std::count_if(strLine.begin(), strLine.end(), [](char c) { return (c & 0xC0) != 0x80; });
    return std::to_string(std::count(strBefore.begin(), strBefore.end(), '\n') + 1) + ':' +
           std::to_string(nColumns + 1) + ": ";
}

}  // namespace

TEST(FindingPlace, EachCodeStandsWhereItsMistakeIs)
{
    const struct {
        const char* szMarked;
        const char* szCode;
    } kRows[] = {
        {"~x", "not-json"},
        {"{'rsp':{'stat':'ok'}~,\n}", "not-json"},
        {"{'rsp':~null}", "no-rsp"},
        {"~[]", "no-rsp"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}]}}\n~{}", "trailing-text"},
        {"{\n ~/* x */'rsp':{'tvcontrol':[{'action':'login'}]}}", "comment"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],'dialog':{'dialog_seq':~01}}}", "not-strict"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],'system_sentence':'n~\\uDE00'}}", "not-strict"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],'system_sentence':'ü~\xE9'}}", "not-utf8"},
        {"{'rsp':{'tvcontrol':[{'action':'login',~'action':'logout'}]}}", "duplicate-key"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],\n  ~'domains':[]}}", "unknown-key"},
        {"{'rsp':{'tvcontrol':[{'action': ~'logn'}]}}", "unknown-word"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],'domain':~'x'}}", "wrong-type"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],'domain':['a',~5]}}", "wrong-type"},
        {"{'rsp':{'tvcontrol':[{'action':'volumeup','params':[{'amount':~2147483648}]}]}}", "out-of-range"},
        {"{'rsp':{'stat':'fail','err':{'code':1,'msg':~5}}}", "converted"},
        {"{'rsp':{'tvcontrol':~[]}}", "no-command"},
        {"{'rsp':~{'stat':'ok'}}", "no-command"},
        {"{'rsp':{'tvcontrol':[~{'intent':''}]}}", "no-action"},
        {"{'rsp':{'tvcontrol':[{'action':~''}]}}", "no-action"},
        {"{'rsp':{'tvcontrol':[{'action':~'delete_item'}]}}", "no-lookup"},
        {"{'rsp':{'domain':['a'],'tvcontrol':[{'action':~'display_content'}]}}", "wrong-domains"},
        {"{'rsp':{~'err':{},'tvcontrol':[{'action':'login'}]}}", "no-effect"},
        {"{'rsp':{'tvcontrol':[{'action':'volumeup','params':[{'amount':1,~'time':5}]}]}}", "no-effect"},
        {"{'rsp':{'tvcontrol':[{'action':'volumeup','params':[{'amount':~-1}]}]}}", "negative"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content','params':[{~'index':1}]}]}}", "no-position"},
        {"{'rsp':{'tvcontrol':[{'action':'login'},\n~{'action':'logout'}]}}", "not-looked-at"},
        {"{'rsp':{'tvcontrol':[{'action':'display_detailinfo_cast'},{'action':~'login'}]}}", "no-follow-up"},
        {"{'rsp':{'tvcontrol':[{'action':'volumeup','params':[{~'type':'x'}]}]}}", "unused"},
        {"{'rsp':{'tvcontrol':[~{'action':'set_volume'}]}}", "no-parameter"},
        {"{'rsp':{'tvcontrol':[{'action':'login'}],'displaycontrol':[~{}]}}", "no-action"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],'tvcontent':[~{'id':'1'}]}}", "no-type"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':~'epg'}]}}", "not-offered"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],'tvcontent':[~{'type':'app'}]}}", "no-app-info"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'app','app_info':~{'title':'x'}}]}}",
         "no-id"},
        {"{'rsp':{'schema':[{'category':'social','rules':[{'from':~'7x','rule':'result_after'}]}]}}", "no-number"},
        {"{'rsp':{'schema':[{'category':'social','rules':[~{'from':'7'}]}]}}", "no-word"},
        {"{'rsp':{'schema':[~{'rules':[]}]}}", "no-word"},
        {"{'rsp':{'schema':[{'category':'social'},\n~{'category':'social'}]}}", "no-effect"},
        {"\n~[1]\n{'utterance':'u','reply':{'rsp':{'stat':'fail'}}}", "not-a-turn"},
        {"{'utterance':'u','reply':{'rsp':{'stat':'fail'}}}\n{'utterance':'u','reply':{}} ~x", "not-a-turn"},
        {"{'utterance':'u','reply':{'rsp':{'tvcontrol':[{'action':'login'}]}},\t~'x':1}", "unknown-key"},
        {"{'utterance':'ü','reply':~'{}'}", "no-rsp"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],\n'tvcontent':[{'type':'movie','poster':{'images':{'url':~'"
         "http://a.example/%d.jpeg','index':[57]}}}]}}",
         "poster-cut"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],\n'tvcontent':[{'type':'movie','poster':{'images':{'url':~'"
         "http://a.example/%d.jpg'}}}]}}",
         "poster-unfilled"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],\n'tvcontent':[{'type':'tvshow','poster':{'images':{'url':~'"
         "http://a.example/%x.jpg','index':[57]}}}]}}",
         "poster-plain"},
        {"{'rsp':{'tvcontrol':[{'action':'play_content'}],\n'tvcontent':[{'type':'movie','poster':{'images':{'url':~'"
         "http://a.example/a//%d.jpg','index':[57]}}}]}}",
         "poster-slash"},
    };
    for (const auto& [szMarked, szCode] : kRows) {
        SCOPED_TRACE(szMarked);
        const std::string strMarked = Quoted(std::string(szMarked));
        std::string strText = strMarked;
        strText.erase(strText.find('~'), 1);
        const std::vector<Finding> vFindings = CheckByForm(strText);
        ASSERT_EQ(1U, vFindings.size());
        const std::string strLine = FindingLine("f", vFindings.front(), CPaint(false));
        EXPECT_EQ(0U, strLine.find("f:" + PlaceOfMark(strMarked))) << strLine;
        EXPECT_EQ(szCode, vFindings.front().strCode);
    }
}

TEST(FindingPlace, NearestWordIsNoGuess)
{
    const std::vector<std::string_view> vWords = {"dialog_id", "dialog_seq", "amount", "app", "channel_no", "s", "ps"};
    for (const auto& [szWord, szNearest] : std::initializer_list<std::pair<const char*, const char*>>{
             {"Dialog-Id", "dialog_id"},
             {"seq", "dialog_seq"},
             {"volume", "amount"},
             {"application", "app"},
             {"ap", "app"},
             {"channel_number", "channel_no"},
             {"sp", "ps"},
             {"pss", "ps"},
             {"x", ""},
             {"", ""},
             {"amt", "amount"},
             {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", ""}}) {
        SCOPED_TRACE(szWord);
        EXPECT_EQ(szNearest, Nearest(szWord, vWords));
    }
}
