// What is found in a document and where, and what in a correct one: nothing.
#include <gtest/gtest.h>

#include <set>

#include "CADataRepository/Vocabulary.h"
#include "FindingCodes.h"
#include "JsonText.h"
#include "findings/Check.h"
#include "findings/Description.h"

namespace
{

struct Row {
    const char* szText;      // with single quotes, or the members of "rsp"
    const char* szFindings;  // "code@pointer" of each, in order
};

template <std::size_t N>
void ExpectCodes(const Row (&rows)[N], bool bMembers, bool bSchema = false)
{
    for (const auto& [szText, szFindings] : rows) {
        SCOPED_TRACE(szText);
        const std::string strText = bMembers ? Reply(szText) : Quoted(std::string(szText));
        EXPECT_EQ(szFindings, Codes(bSchema ? CheckSchema(strText) : CheckReply(strText)));
    }
}

// A reply that plays content, with the given item.
std::string Played(const std::string& strItem)
{
    return Reply(Command("play_content", "'index':1,'idx':1") + ",'tvcontent':[{" + strItem + "}]");
}

std::string Poster(const std::string& strUrl, const char* szIndex = "55,57")
{
    return Played("'type':'movie','poster':{'images':{'url':'" + strUrl + "'" +
                  (*szIndex == '-' ? "" : ",'index':[" + std::string(szIndex) + "]") + "}}");
}

// The document has each key of the object and of those below it, and each kind that is offered.
void ExpectWritten(const Description::Object& stObject, const std::string& strDocument)
{
    for (const Description::Key& stKey : stObject) {
        EXPECT_NE(std::string::npos, strDocument.find('"' + std::string(stKey.szName) + "\":")) << stKey.szName;
        if (stKey.pObject != nullptr) ExpectWritten(*stKey.pObject, strDocument);
    }
    for (std::size_t i = 0; i < stObject.nKinds; ++i) {
        const auto& stKind = stObject.pKinds[i];
        const std::size_t nItem = strDocument.find("{\"type\": \"" + std::string(stKind.szType) + '"');
        EXPECT_TRUE(!stKind.bOffered || nItem != std::string::npos) << stKind.szType;
        const std::string strItem = strDocument.substr(std::min(nItem, strDocument.size()));
        for (const Description::Key& stKey : *stKind.pObject)
            EXPECT_TRUE(strItem.empty() ||
                        strItem.find('"' + std::string(stKey.szName) + "\":") < strItem.find("\n    {\"type\"", 1))
                << stKind.szType << " " << stKey.szName;
        ExpectWritten(*stKind.pObject, strDocument);
    }
}

}  // namespace

TEST(Findings, CorrectReplyHasNone)
{
    for (const char* szMembers :
         {"'tvcontrol':[{'action':'volumeup'}]", "'tvcontrol':[{'action':'volumeup','params':[{'amount':5.0}]}]",
          "'stat':'fail','err':{'code':404,'msg':'x'}", "'stat':'fail','err':{'code':'E1'},'response_info':{}",
          "'stat':null,'err':null,'domain':null,'tvcontrol':[{'action':'muteon','intent':null,'params':null}]",
          "'domain':['a','b'],'system_sentence':'x','tvcontrol':[{'action':'display_content','intent':'play'}],"
          "'tvcontent':[{'type':'epg'}],'nlu_info':{'dialog_type':1}",
          "'domain':['tvcontrol'],'system_sentence':'x','tvcontrol':[{'action':'search_failed'}]",
          "'tvcontrol':[{'action':'display_cast','params':[{'names':['a']}]},{'action':'set_channel','intent':'play'}]",
          "'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'major':1}]},{'umd_channels':[{}]}]},"
          "{'action':'show_moreinfo'}]",
          "'system_sentence':'{Null}','tvcontrol':[{'action':'muteon'}],'displaycontrol':[{'action':'play_content'}]",
          "'tvcontrol':[{'action':'quit_record'}],'tvcontent':[{'type':'app','app_info':{'id':'1','premium_flag':'ps',"
          "'poster':{'images':{},'images4premium':{}}}}]"}) {
        SCOPED_TRACE(szMembers);
        EXPECT_EQ("", Codes(CheckReply(Reply(szMembers))));
    }
    for (const char* szMembers :
         {"'tvcontrol':[{'action':'display_candidates','params':[{'names':['a']}]},{'intent':'play'}]",
          "'tvcontrol':[{'action':'login','intent':'','params':[{}]}],'displaycontrol':[],'tvcontent':[]",
          "'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'apps','app_info':{'id':'1','premium_flag':'s',"
          "'poster':{'images':{},'images4premium':{}}}},{'type':'app','app_info':{'id':'2','premium_flag':''}}]",
          "'domain':['a','b'],'tvcontrol':[{'action':'display_content'}]"}) {
        SCOPED_TRACE(szMembers);
        EXPECT_EQ("", Codes(CheckReply(Reply(szMembers))));
    }
    for (const char* szUrl : {"a%20b.jpg", "caf%C3%A9.jpg", "caf%c3%a9.jpg", "%2F.jpg", "%D0%B0.jpg", "%d0%b0.jpg",
                              "100%25.jpg", "x.jpeg?size=3&x=%2F", "50%off", "100%", "%%d.jpg", ""}) {
        SCOPED_TRACE(szUrl);
        EXPECT_EQ("", Codes(CheckReply(Poster(*szUrl == '\0' ? "" : "http://a.example/" + std::string(szUrl), "-"))));
    }
    EXPECT_EQ("", Codes(CheckReply(Poster("http://a.example/%03d.jpg"))));
    EXPECT_EQ("", Codes(CheckReply(Poster("http://a.example/1/%d.jpg"))));
    EXPECT_EQ("", Codes(CheckReply(Poster("http://a.example/%d.webp", "5"))));
    EXPECT_EQ("", Codes(CheckReply(Poster("http://a.example/57.jpg", "-"))));
}

TEST(Findings, TextsThatAreNoJsonOrMoreThanThat)
{
    const Row rows[] = {
        {"", "not-json@"},
        {"{'rsp':{'stat':'ok',}}", "not-json@"},
        {"{'rsp':True}", "not-json@"},
        {"[]", "no-rsp@"},
        {"{'rps':{}}", "unknown-key@/rps"},
        {"{'tvcontrol':[{'action':'muteon'}]}", "unknown-key@/tvcontrol"},
        {"{'rsp':{},'tvcontrol':[{'action':'muteon'}]}", "unknown-key@/tvcontrol"},
        {"{}", "no-rsp@"},
        {"{'rsp':7}", "wrong-type@/rsp"},
        {"{'rsp':null}", "no-rsp@/rsp"},
        {"\xEF\xBB\xBF{'rsp':{'tvcontrol':[{'action':'muteon'}]}}", "byte-order-mark@"},
        {"\xFF\xFE{", "utf-16@"},
        {"\xFE\xFF{}", "utf-16@"},
        {"/**/{'rsp':{'tvcontrol':[{'action':'muteon'}],'system_sentence':'\xE9'}} {",
         "comment@ not-utf8@ trailing-text@"},
        {"{'rsp':{'tvcontrol':[{'action':'poweron','action':'muteon'}],'dialog':{'dialog_seq':01,'dialog_id':'\n'}}}",
         "duplicate-key@0/action not-strict@ not-strict@"},
        {"{'rsp':{'tvcontrol':[{'action':'muteon'}],'system_sentence':'\\ude00 "
         "\\ud83d\\u0041\\ud83d\\ude00\\\\ude00'}}",
         "not-strict@ not-strict@"},
    };
    ExpectCodes(rows, false);
    for (const std::string_view szText : {std::string_view("\xFF\xFE\0\0{\0\0\0", 8), std::string_view("\0\0\0{", 4),
                                          std::string_view("{\0\0\0", 4), std::string_view("\0\0\xFE\xFF", 4)})
        EXPECT_EQ("utf-32@", Codes(CheckReply(szText)));
    EXPECT_EQ("utf-16@", Codes(CheckReply(std::string_view("{\0\"\0", 4))));
    EXPECT_EQ("too-deep@", Codes(CheckReply("{\"rsp\":" + std::string(128, '['))));
    std::string strMany;
    for (int i = 0; i < 1 << 18; ++i) strMany += "{},\",\",";
    EXPECT_EQ("too-many-values@", Codes(CheckReply("{\"rsp\":[" + strMany + "0]}")));
}

TEST(Findings, KeysTypesAndWordsThatAreNotRead)
{
    const Row rows[] = {
        {"'tvcontrl':[]", "unknown-key@tvcontrl"},
        {"'tvcontrol':{}", "wrong-type@tvcontrol"},
        {"'domain':['a',5],'tvcontrol':[{'action':'display_content'}]", "wrong-type@domain/1"},
        {"'domain':['a','b'],'tvcontrol':[{'action':'display_content'}],'tvcontent':[{'typ':'movie','x':1},{}]",
         "unknown-key@tvcontent/0/typ unknown-key@tvcontent/0/x no-type@tvcontent/1"},
        {"'tvcontrol':[5,null]", "wrong-type@0 wrong-type@1"},
        {"'tvcontrol':[{'action':5,'intent':'Play','amount':1}],'tvcontent':[]",
         "wrong-type@0/action unknown-word@0/intent unknown-key@0/amount"},
        {"'tvcontrol':[{'action':'muteOn','params':[{'action':'mute_on','amount':'5','time':3000000000,'chanels':[]}]}"
         "]",
         "unknown-word@0/action unknown-word@0/0/action wrong-type@0/0/amount out-of-range@0/0/time "
         "unknown-key@0/0/chanels"},
        {"'stat':'fail','err':{'code':1.5,'msg':[],'a/b~c':1}",
         "wrong-type@err/code wrong-type@err/msg "
         "unknown-key@err/a~1b~0c"},
        {"'stat':'failed','err':{}", "unknown-word@stat"},
        {"'stat':'fail','err':{'code':1,'msg':5}", "converted@err/msg"},
        {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[null]}]}]", "wrong-type@0/0/channels/0"},
        {"'domain':[1,'a'],'dialog':[],'nlu_info':{'type':1},'response_info':{'query':1},'tvcontrol':[{'action':'login'"
         "}]",
         "wrong-type@domain/0 wrong-type@dialog unknown-key@nlu_info/type wrong-type@response_info/query"},
        {"'tvcontrol':[{'action':'display_cast','params':[{'names':['a',5,{}]},{'names':7}]}]",
         "no-effect@0/0/names converted@0/0/names/1 wrong-type@0/0/names/2 wrong-type@0/1/names"},
        {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'number':5,'major':'1'}],'umd_channels':"
         "[{'umd_channel':{'name':'x'}},{'channel_name':'x'}]}]}]",
         "wrong-type@0/0/channels/0/number wrong-type@0/0/channels/0/major "
         "unknown-key@0/0/umd_channels/0/umd_channel/name unknown-key@0/0/umd_channels/1/channel_name"},
        {"'tvcontrol':[{'action':'set_channel','params':[{'umd_channels':[{'umd_channel':{'attributes':'DTV analog'}},"
         "{'umd_channel':{'attributes':'Analogue'}},{'umd_channel':{'attributes':'Digital'}}]}]}]",
         "unknown-word@0/0/umd_channels/0/umd_channel/attributes"},
        {"'tvcontrol':[{'action':'login'}],'displaycontrol':['x',{'action':'volumeup','params':[{'idx':1,'title':2}]}]",
         "wrong-type@displaycontrol/0 unknown-word@displaycontrol/1/action unknown-key@displaycontrol/1/0/idx "
         "wrong-type@displaycontrol/1/0/title"},
    };
    ExpectCodes(rows, true);
}

TEST(Findings, CommandsAndParametersWithoutEffect)
{
    const Row rows[] = {
        {"'stat':'ok'", "no-command@/rsp"},
        {"'stat':'fail','err':{},'tvcontrol':[{'action':'x'}]", "no-effect@tvcontrol unknown-word@0/action"},
        {"'stat':'ok','err':{'code':1},'tvcontrol':[{'intent':'play'}]", "no-effect@err no-action@0"},
        {"'tvcontrol':[{'action':''}]", "no-action@0/action"},
        {"'tvcontrol':[{'action':'login','params':[{'action':''}]}]", "no-effect@0/action no-action@0/0/action"},
        {"'tvcontrol':[{'action':'login'}],'displaycontrol':[{'action':''}]", "no-action@displaycontrol/0/action"},
        {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'major':1}]}]},{'intent':'play'}]",
         "not-looked-at@1 no-effect@1/intent"},
        {"'domain':['a','b'],'tvcontrol':[{'action':'display_content'},{'action':'login'}]", "not-looked-at@1"},
        {"'tvcontrol':[]", "no-command@tvcontrol"},
        {"'tvcontrol':[{'action':'show_colorkeys'}]", "no-lookup@0/action"},
        {"'tvcontrol':[{'action':'display_content'}]", "wrong-domains@0/action"},
        {"'domain':['a','b'],'tvcontrol':[{'action':'search_failed'}]", "wrong-domains@0/action"},
        {"'domain':['tvcontrol'],'tvcontrol':[{'action':'search_failed','intent':'play'},{'action':'login'}],"
         "'tvcontent':[{}]",
         "no-effect@0/intent not-looked-at@1 no-effect@tvcontent no-type@tvcontent/0"},
        {"'tvcontrol':[{'action':'volumeup','intent':'play','params':[{'amount':1,'time':5},{'amount':-2},"
         "{'direction':'up','index':1,'idx':2}]},{'action':'login','intent':'play'}]",
         "no-effect@0/intent no-effect@0/0/amount no-effect@0/0/time negative@0/1/amount "
         "unused@0/2/direction no-effect@0/2/idx not-looked-at@1"},
        {"'tvcontrol':[{'action':'play_content','params':[{'idx':1},{'index':1},{'index':1,'idx':-1},{'indx':1,'idx':1}"
         "]}]",
         "no-effect@0/0/idx no-position@0/1/index negative@0/2/idx unknown-key@0/3/indx"},
        {"'tvcontrol':[{'action':'display_detailinfo_cast','params':[{'names':['a']}]}]", "no-effect@0/0/names"},
        {"'tvcontrol':[{'action':'login','params':[{'action':'logout'}]}]", "no-effect@0/action"},
        {"'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'major':1}]}]},"
         "{'action':'volumeup','intent':'play','params':[{}]},{}]",
         "no-follow-up@1/action no-effect@1/intent no-effect@1/params not-looked-at@2"},
        {"'tvcontrol':[{'action':'display_detailinfo_cast','intent':'play'},{'action':'play_content','intent':'play'},"
         "{'intent':'play'}]",
         "no-effect@0/intent no-effect@1/intent"},
        {"'tvcontrol':[{'action':'display_cast','intent':'play','params':[{'names':['a']}]}]", "no-effect@0/intent"},
        {"'tvcontrol':[{'action':'display_cast','params':[{'names':['a']}]},{'action':'volumeup','intent':'play'}]",
         "no-follow-up@1/action"},
        {"'tvcontrol':[{'action':'set_volume','params':[{},{'time':5}]}]", "no-parameter@0 no-effect@0/1/time"},
        {"'tvcontrol':[{'action':'change_channel','params':[{'channel_no':''}]}]", "no-parameter@0/0/channel_no"},
        {"'tvcontrol':[{'action':'move_channel','params':[{'umd_channels':[{'umd_channel':{'channel_number':''}}]}]}]",
         "no-parameter@0/0/umd_channels"},
        {"'tvcontrol':[{'action':'alarm_livecontent','params':[{'channels':[{}]}]}],'tvcontent':[{}]",
         "no-parameter@0/0/channels no-type@tvcontent/0"},
        {"'tvcontrol':[{'action':'display_genre','params':[{'names':['']}]}]", "no-parameter@0/0/names"},
        {"'tvcontrol':[{'action':'set_volume','amount':5}]", "unknown-key@0/amount"},
        {"'tvcontrol':[{'action':'set_volume','params':[{'volume':5}]}]", "unknown-key@0/0/volume"},
        {"'tvcontrol':[{'action':'set_volume','params':[5]},null]", "wrong-type@0/0 wrong-type@1"},
        {"'system_sentence':'x','tvcontrol':[{'action':'login'}],'tvcontent':[{'type':'epg'}],"
         "'displaycontrol':[{'action':'play_content','params':[{'index':-1}]},{'params':[{'index':-1},{'index':0},{'"
         "index':-1,'title':'x'}]}]",
         "no-effect@system_sentence no-effect@tvcontent no-effect@displaycontrol/0 no-action@displaycontrol/1 "
         "negative@displaycontrol/1/0/index"},
    };
    ExpectCodes(rows, true);
}

TEST(Findings, ItemsAndPosters)
{
    const std::pair<std::string, const char*> vRows[] = {
        {Played("'id':'1'"), "no-type@tvcontent/0"},
        {Played("'type':'Movie'"), "unknown-word@tvcontent/0/type"},
        {Played("'type':'weather','condition':7"), "not-offered@tvcontent/0/type wrong-type@tvcontent/0/condition"},
        {Played("'type':'tvshow','season':{'number':2},'cert_flag':'no','episode':{'number':'7'}"),
         "no-effect@tvcontent/0/season unknown-word@tvcontent/0/cert_flag wrong-type@tvcontent/0/episode/number"},
        {Played("'type':'app','title':'x'"), "unknown-key@tvcontent/0/title"},
        {Played("'typ':'app','title':'x'"), "unknown-key@tvcontent/0/typ unknown-key@tvcontent/0/title"},
        {Played("'kind':'x','Type':'x','title':'x'"), "unknown-key@tvcontent/0/Type"},
        {Played("'type':'apps','app_info':{'ID':'x'}"), "unknown-key@tvcontent/0/app_info/ID"},
        {Played("'type':'apps','app_info':{}"), "no-id@tvcontent/0/app_info"},
        {Played("'type':'apps','app_info':{'id':''}"), "no-id@tvcontent/0/app_info/id"},
        {Played("'type':''"), "no-type@tvcontent/0/type"},
        {Played("'type':'app','app_info':{'id':'x','premium_flag':'sp','poster':{'images':{}}}"),
         "unknown-word@tvcontent/0/app_info/premium_flag"},
        {Played("'type':'movie','poster':{'images':{'index':[57]}}"), "poster-no-url@tvcontent/0/poster/images"},
        {Played("'type':'movie','poster':{'images':{'url':'','index':[57]}}"),
         "poster-no-url@tvcontent/0/poster/images/url"},
        {Played("'type':'apps','app_info':{'id':'x','premium_flag':'s','poster':{'images4premium':{}}}"),
         "no-effect@tvcontent/0/app_info/poster/images4premium"},
        {Played("'type':'apps','app_info':{'id':'x','poster':{'images':{}}}"), "no-effect@tvcontent/0/app_info/poster"},
        {Played("'type':'movie','poster':{'images':{'url':'http://a.example/%d.jpg','index':['57']}}"),
         "wrong-type@tvcontent/0/poster/images/index/0"},
    };
    for (const auto& [strReply, szFindings] : vRows) {
        SCOPED_TRACE(strReply);
        EXPECT_EQ(szFindings, Codes(CheckReply(strReply)));
    }
    const struct {
        const char* szUrl;
        const char* szIndex;
        const char* szCode;
        const char* szBecomes;
    } kPosters[] = {
        {"http://a.example/%d.jpeg", "57", "poster-cut", "http://a.example/57.jpe"},
        {"http://a.example/%d.jpg?q", "57", "poster-cut", "http://a.example/57.jpg?"},
        {"http://a.example/%d.jpg", "157", "poster-cut", "http://a.example/157.j"},
        {"http://a.example/57.gif", "57", "poster-cut", "http://a.example/57.gi"},
        {"http://a.example/%d.jpg", "-", "poster-unfilled", "http://a.example/%d.jpg"},
        {"http://a.example/%d/a%20b.jpg", "-", "poster-unfilled", "http://a.example/%d/a%20b.jpg"},
        {"http://a.example/%02d.jpg", "-", "poster-unfilled", "http://a.example/%02d.jpg"},
        {"http://a.example/%i.jpg", "-", "poster-unfilled", "http://a.example/%i.jpg"},
        {"http://a.example/%%d.jpg", "57", "poster-plain", "http://a.example/%d.jpg"},
        {"http://a.example/%x.jpg", "57", "poster-plain", "http://a.example/39.jpg"},
        {"http://a.example/%+d.jpg", "57", "poster-plain", "http://a.example/+57.jpg"},
        {"http://a.example/{index}.jpg", "57", "poster-plain", "http://a.example/{index}.jpg"},
        {"http://a.example/100%", "57", "poster-plain", "http://a.example/100"},
        {"http://a.example/%d/%d.jpg", "57", "poster-plain", "http://a.example/%d/%d.jpg"},
        {"http://a.example//%d.jpg", "57", "poster-slash", "http://a.example/57.jpg"},
        {"http://a.example/%d.jpg", "", "poster-size", "http://a.example/0.jpg"},
        {"http://a.example/%d.jpg", " -3,55", "poster-size", "http://a.example/-3.jpg"},
    };
    for (const auto& [szUrl, szIndex, szCode, szBecomes] : kPosters) {
        SCOPED_TRACE(szUrl);
        const Finding stFinding = Only(CheckReply(Poster(szUrl, szIndex)));
        EXPECT_EQ(szCode, stFinding.strCode);
        EXPECT_NE(std::string::npos, stFinding.strText.find('"' + std::string(szBecomes) + '"')) << stFinding.strText;
    }
}

TEST(Findings, SearchSchema)
{
    const Row rows[] = {
        {"{'rsp':{'schema':[{'category':'social','rules':[{'from':'2','to':'-5','cycle':'0','rule':'result_after'}]}]}"
         "}",
         ""},
        {"{'rsp':{'schema':[{'category':'','rules':[{'from':'','to':'1','cycle':'+1','rule':''}]}]}}",
         "no-word@schema/0/category no-number@schema/0/rules/0/from no-word@schema/0/rules/0/rule"},
        {"{'rsp':{'schema':[{'category':'lintra','rules':[{'to':'1','rule':'position_range_turn'},{'from':'1','rule':"
         "'position_after_turn'},{'from':'2','to':'1','rule':'position_range_turn'},{'from':'3','to':'3','rule':"
         "'position_range_turn'},{'rule':'position_after_turn'},{'rule':'result_before'},{'from':'3','to':3,"
         "'rule':'position_range_turn'}]}]}}",
         "no-number@schema/0/rules/0 no-effect@schema/0/rules/2 no-number@schema/0/rules/4 "
         "wrong-type@schema/0/rules/6/to"},
        {"{'rsp':{'stat':'fail','schema':[]}}", "no-effect@schema"},
        {"{'rsp':{'err':{},'schema':[{'category':'social','rule':[]}]}}", "no-effect@err unknown-key@schema/0/rule"},
        {"{'rsp':{'schema':[{'category':'Social','rules':[{'from':2,'to':'5x','cycle':'9999999999'}]},{'rules':{}},"
         "{'category':'others'},{'category':'lintra'}]}}",
         "unknown-word@schema/0/category no-word@schema/0/rules/0 wrong-type@schema/0/rules/0/from "
         "no-number@schema/0/rules/0/to no-number@schema/0/rules/0/cycle no-word@schema/1 wrong-type@schema/1/rules "
         "no-effect@schema/3"},
    };
    ExpectCodes(rows, false, true);
    EXPECT_EQ("wrong-type@schema", Codes(CheckByForm(Reply("'schema':{}"))));
    EXPECT_EQ("did you mean \"schema\"?", Only(CheckByForm(Reply("'schemas':[]"))).strSuggestion);
}

TEST(Findings, TurnsAndTheirExpectations)
{
    const std::string strMute = "'reply':{'rsp':{'tvcontrol':[{'action':'muteon'}]}}";
    const auto Turn = [](const std::string& strMembers) { return "{'utterance':'u'," + strMembers + "}\n"; };
    const auto Shows = [&Turn](const char* szDomain) {
        return Turn("'reply':{'rsp':{" + std::string(szDomain) + "'tvcontrol':[{'action':'display_content'}]}}");
    };
    const std::string strRefused = Turn("'reply':{'rsp':{'domain':['a','b']}}");
    const std::pair<std::string, const char*> vRows[] = {
        {Turn(strMute + ",'expect':{'refused':false,'accepted':true,'reason':'','stDisCtrlInfo':{'nAction':-1}}"), ""},
        {Turn(strMute + ",'name':'n','comment':['c'],'call':3,'state':'whole','utterance_known':false"), ""},
        {Turn(strMute + ",'expect':{'eSystmAction':14}"), "unknown-key@/expect/eSystmAction"},
        {Turn(strMute + ",'expect':{'refused':'no','stDisCtrlInfo':{'action':1}}"),
         "wrong-type@/expect/refused unknown-key@/expect/stDisCtrlInfo/action"},
        {Turn(strMute + ",'expect':{'eSystemAction':'14','strAction':14,'nDialogSeq':0,'vChannels':null}"),
         "wrong-type@/expect/eSystemAction wrong-type@/expect/strAction wrong-type@/expect/vChannels"},
        {Turn(strMute + ",'expect':5"), "wrong-type@/expect"},
        {"{'utterance':'\xE9'," + strMute + "}", "not-utf8@"},
        {"{'utterance':'u','reply':{'rsp':{'tvcontrol':[{'action':'muteon'}],'system_sentence':'\xE9'}}}", "not-utf8@"},
        {strRefused + Shows(""), "no-command@/rsp"},
        {strRefused + Turn("'reply':{'rsp':{'stat':'fail'}}") + Shows(""), "no-command@/rsp"},
        {strRefused + Shows("'domain':['a'],"), "no-command@/rsp wrong-domains@0/action"},
        {strRefused + Turn(strMute) + Shows(""), "no-command@/rsp wrong-domains@0/action"},
        {Turn("'reply':{'rsp':{'stat':'fail'}}") + Shows(""), "wrong-domains@0/action"},
        {Turn("'reply':{'rsp':{'domain':['a']}}") + Shows(""), "no-command@/rsp wrong-domains@0/action"},
    };
    for (const auto& [strText, szFindings] : vRows) {
        SCOPED_TRACE(strText);
        EXPECT_EQ(szFindings, Codes(CheckByForm(Quoted(strText))));
    }
}

// The description and the library's own tables name the same keys: a document with every key and kind has none unknown
// but keys of other kinds, and every parameter of an action is described.
TEST(Findings, DescriptionKnowsEveryKey)
{
    ExpectWritten(*Description::kReply.Find("rsp")->pObject, DataFile("every-key.json"));
    std::set<std::string> setUnknown;
    for (const Finding& stFinding : CheckByForm(DataFile("every-key.json")))
        if (const std::string strKey = stFinding.strPointer.substr(stFinding.strPointer.rfind('/') + 1);
            stFinding.strCode == "unknown-key" || stFinding.strCode == "wrong-type" ||
            (stFinding.strCode == "unknown-word" && strKey == "type"))
            setUnknown.insert(strKey);
    EXPECT_EQ((std::set<std::string>{"1", "2", "casting", "category", "channel", "character", "schedule", "text_color",
                                     "trainer"}),
              setUnknown);
    for (const CADataRepository::ActionRow& stRow : CADataRepository::kActionRows)
        for (const char* szKey : stRow.vKeys)
            EXPECT_TRUE(szKey == nullptr || Description::kParam.Find(szKey) != nullptr) << szKey;
}
