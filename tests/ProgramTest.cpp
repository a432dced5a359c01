// The parts of the program parlo, one by one: what it reads, how it words and aligns what it shows.
#include <gtest/gtest.h>
#include <json/reader.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "commands/Catalog.h"
#include "comparing/Difference.h"
#include "parlo-api.h"
#include "reading/Expectation.h"
#include "reading/Files.h"
#include "reading/Input.h"
#include "rendering/CaseJson.h"
#include "rendering/Output.h"
#include "rendering/Progress.h"
#include "rendering/RecordJson.h"
#include "rendering/Render.h"
#include "rendering/Text.h"
#include "session/Refusal.h"
#include "session/Session.h"

using namespace CADataRepository;

static const CPaint kPlain(false);

static Json::Value Parsed(const std::string& strJson)
{
    Json::Value value;
    std::istringstream(strJson) >> value;
    return value;
}

TEST(Input, TurnIsTheReplyByteByByteOrAReason)
{
    const std::string strDeep = "{\"utterance\":\"u\",\"reply\":" + std::string(2000, '[');
    const std::string kRows[][2] = {
        {R"({"utterance":"u","reply":{"a" : [1.0,  "\u0041/"], "a":1e0 } , "x":{}})",
         R"(u|{"a" : [1.0,  "\u0041/"], "a":1e0 })"},
        {R"( { "reply" :{}, "utterance" : "\u00e9\u0000z" } )" + std::string("\r"), std::string("\xC3\xA9\0z|{}", 7)},
        {R"({"utterance":"별","reply":{"별":"별"}})", R"(별|{"별":"별"})"},
        {R"({"utterance":"","reply":{"first":1},"reply":{"second":2}})", R"(|{"second":2})"},
        {R"({"utterance":"u","reply":"no\tJSON \u0000"})", std::string("u|no\tJSON \0", 11)},
        {R"({"utterance":"u","reply":""})", "u|"},
        {"\xEF\xBB\xBF{\"utterance\":\"u\",\"reply\":{}}", "u|{}"},
        {R"({"utterance":"reply","reply":{"reply":"}"},"x":["\\",{"y":2}]})", R"(reply|{"reply":"}"})"},
        {R"({"utterance":"u","reply":{"a":"\""/*}*/}})", R"(u|{"a":"\""/*}*/})"},
        {R"({"utterance":"u","reply":{},"re\u0070ly":{"b":1}})", R"(u|{"b":1})"},
        {R"({"utterance":"u","reply":{oops}})", "u|{oops}"},
        {R"({"rsp":{}})", "the line is a reply, which \"parlo reply\" takes"},
        {R"({"utterance":"u","reply":{}} x)", "the line is not JSON"},
        {R"({"utterance":"u","reply":{})", "the line is not JSON"},
        {strDeep, "the line is not JSON"},
        {"[]", "the line is not a JSON object"},
        {"null", "the line is not a JSON object"},
        {R"({"reply":{}})", "the line has no text \"utterance\""},
        {R"({"utterance":1,"reply":{}})", "the line has no text \"utterance\""},
        {R"({"utterance":"u"})", "the line has no \"reply\" that is an object or a text"},
        {R"({"utterance":"u","reply":[{}]})", "the line has no \"reply\" that is an object or a text"}};
    for (const auto& [strLine, strWanted] : kRows) {
        ServerReply stReply;
        std::string strOutcome;
        if (ReadTurn(strLine, stReply, strOutcome)) strOutcome = stReply.strUtterance + '|' + stReply.strText;
        EXPECT_EQ(strWanted, strOutcome) << strLine;
    }
}

// What each entry of a file comes to: "PLACE:LINE=UTTERANCE|REPLY" or "PLACE:LINE!REASON", one behind another.
static std::string Entries(const std::string& strText, FileForm eForm)
{
    const std::string strFile = testing::TempDir() + "parlo-entries-" + std::to_string(getpid());
    std::ofstream(strFile) << strText;
    std::string strEntries;
    ForEachEntry(strFile, eForm, "u", [&](const Entry& stEntry) {
        const ServerReply& stReply = stEntry.stReply;
        strEntries += stReply.strSource.substr(strFile.size()) + "/" + std::to_string(stReply.nLine);
        strEntries +=
            stEntry.strReason.empty() ? "=" + stReply.strUtterance + "|" + stReply.strText : "!" + stEntry.strReason;
        strEntries += stReply.bMark ? " MARK;" : ";";
    });
    std::remove(strFile.c_str());
    return strEntries;
}

TEST(Files, TellRepliesFromConversations)
{
    const std::string strMark = "\xEF\xBB\xBF", strTurn = R"({"utterance":"a","reply":{"b":1}})";
    const std::string strReply = "{\n \"rsp\": {}\n}\n",
                      strNoReply = "/1!it is a conversation, which \"parlo conversation\" takes;";
    const struct {
        FileForm eForm;
        std::string strText, strWanted;
    } kRows[] = {{FileForm::CONVERSATION, "\n \t\r\n" + strTurn + "\n\noops\r\n" + strTurn,
                  ":3/3=a|{\"b\":1};:5/5!the line is not JSON;:6/6=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, strMark + strTurn + "\n", ":1/1=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, R"({"utterance":"","reply":{}})", ":1/1!the utterance is empty;"},
                 {FileForm::CONVERSATION, "{\"utterance\n" + strTurn, ":1/1!the line is not JSON;:2/2=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, "", ""},
                 {FileForm::CONVERSATION, "{\"rsp\":{}}\n" + strTurn,
                  ":1/1!the line is a reply, which \"parlo reply\" takes;:2/2=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, strMark + strReply,
                  "/1!it is one reply, which \"parlo reply\" takes, not a conversation;"},
                 {FileForm::REPLY, strReply, "/1=u|" + strReply + ";"},
                 {FileForm::REPLY, strMark + "x", "/1=u|x MARK;"},
                 {FileForm::REPLY, "", "/1=u|;"},
                 {FileForm::REPLY, "\n" + strTurn + "\n" + strTurn, strNoReply},
                 {FileForm::EITHER, "\n" + strTurn + "\n[]", ":2/2=a|{\"b\":1};:3/3!the line is not a JSON object;"},
                 {FileForm::EITHER, "oops\n" + strTurn, ":1/1!the line is not JSON;:2/2=a|{\"b\":1};"},
                 {FileForm::EITHER, "oops\noops\n", "/1=u|oops\noops\n;"},
                 {FileForm::EITHER, "{\"rsp\":{}}\n" + strTurn, "/1=u|{\"rsp\":{}}\n" + strTurn + ";"},
                 {FileForm::EITHER, " \n" + strReply, "/1=u| \n" + strReply + ";"}};
    for (const auto& [eForm, strText, strWanted] : kRows) EXPECT_EQ(strWanted, Entries(strText, eForm)) << strText;
}

TEST(Session, WhatFailsIsToldAndDoesNotEndTheConversation)
{
    const std::string strTurn = R"({"utterance":"u","reply":{"rsp":{"tvcontrol":[{"action":"muteon"}]}}})";
    const std::string strDialog = R"({"utterance":"v","reply":{"rsp":{"dialog":{"dialog_seq":4}}}})";
    const std::string strFile = testing::TempDir() + "parlo-turns-" + std::to_string(getpid());
    std::ofstream(strFile) << strTurn + "\n[\n" + strDialog + "\n" + strTurn;
    std::string strShown;
    const auto Show = [&strShown](const Case& stCase) {
        const std::string& strSource = stCase.stReply.strSource;
        strShown += strSource.substr(strSource.rfind(':')) + (stCase.bAccepted ? "=" : "!") +
                    (stCase.pInfo != nullptr ? std::to_string(stCase.pInfo->nDialogSeq) : "") + stCase.strRefusal;
        EXPECT_TRUE(stCase.vLog.empty()) << "kept although nobody asked for it";
    };
    CSession session(false);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(HasFailed());
    session.RunFile(strFile, FileForm::CONVERSATION, "", Show);
    std::remove(strFile.c_str());
    session.RunFile("/no:/such\033file", FileForm::REPLY, "u", Show);
    const std::string strComplaint = "parlo: " + strFile;
    EXPECT_EQ(strComplaint + ":2 is refused: the line is not JSON.\n" + strComplaint +
                  ":3 is refused: it holds no TV control command.\n" +
                  "parlo: /no:/such\\x1Bfile cannot be read: No such file or directory.\n",
              testing::internal::GetCapturedStderr());
    EXPECT_TRUE(HasFailed());
    EXPECT_EQ(
        ":1=-1:2!the line is not JSON:3!-1it holds no TV control command:4=4"
        ":/such\033file!it cannot be read: No such file or directory",
        strShown);
}

TEST(Text, IsQuotedCutAndCounted)
{
    const std::string strX(237, 'x');
    for (const std::string strRow :
         {"xxx|xxx", "xxxx|xxx... (241 bytes)", "별|별", "별x|별... (241 bytes)", "x별|x... (241 bytes)",
          "xx별|xx... (242 bytes)", "😀|... (241 bytes)", "xxé|xx... (241 bytes)"})
        EXPECT_EQ(strX + strRow.substr(strRow.find('|') + 1), Shown(strX + strRow.substr(0, strRow.find('|'))));
    EXPECT_EQ(R"(" a\"\\\n\x1B \xE2\x80\xAEb""" \"\n)", Quoted(" a\"\\\n\033 \u202Eb") + Quoted("") + Shown(" \\\"\n"));
    const std::size_t nNoText = Shown(std::string(1000, '\x80')).size();
    EXPECT_EQ(237 * 4 + std::string("... (1000 bytes)").size(), nNoText) << "a cut looks back over three bytes at most";
    EXPECT_EQ("a, , b|", Joined({"a", "", "b"}) + "|" + Joined({}));
    EXPECT_EQ("0 men, 1 man, 2 men",
              Count(0, "man", "men") + ", " + Count(1, "man", "men") + ", " + Count(2, "man", "men"));
}

TEST(Text, TablesAreAlignedByColumns)
{
    ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8"));
    EXPECT_EQ("별 |é  |abc|abcd|",
              Padded("별", 3) + "|" + Padded("é", 3) + "|" + Padded("abc", 3) + "|" + Padded("abcd", 3) + "|");
    const std::vector<std::vector<std::string>> vRows = {{"name", "n", "end"}, {"별별별", "", "x"}, {"é", "10", ""}};
    EXPECT_EQ("  name    n   end\n  별별별  -   x\n  é       10  -\n", Table(vRows, 2, kPlain));
    EXPECT_EQ("\033[2ma\033[0m\nbc\n", Table({{"a"}, {"bc"}}, 0, CPaint(true)));
    std::setlocale(LC_CTYPE, "C");
}

TEST(Render, WhatTheLibraryFilledIsShownAndNothingElse)
{
    using Fill = std::function<void(_ConvActionInfo&)>;
    const std::pair<Fill, const char*> kRows[] = {
        {[](auto& r) { r.nReserved1 = r.nReserved2 = 1, r.strFirstAction = r.strUserInputVoice = "x"; }, ""},
        {[](auto& r) { r.strAction = "display\ncontent"; }, "action           display\\ncontent"},
        {[](auto& r) { r.eActionType = 1, r.eSystemAction = E_CA_TVCONTROL_VOLUMEUP, r.strAction = "volumeup"; },
         "action           volumeup, code 12/kind             system action"},
        {[](auto& r) { r.eActionType = 3; }, "action           code 0/kind             no match"},
        {[](auto& r) { r.e2ndAction = E_CA_TVCONTROL_SHOW_MOREINFO; }, "second action    show_moreinfo (67)"},
        {[](auto& r) { r.eActionIntent = E_CA_TVCONTROL_INTENT_SEARCH_TITLE; }, "intent           search_title (5)"},
        {[](auto& r) { r.vSystemActionParam.resize(2); }, "parameters       \"\", \"\""},
        {[](auto& r) { r.vCandidates.resize(1); }, "candidates       \"\""},
        {[](auto& r) {
             r.vChannels.resize(1);
             r.vChannels[0].nMajor = 11, r.vChannels[0].szNumber = "11-1", r.vChannels[0].szSourceID = "S";
         },
         "channels         1 channel/  number  name  type  major  minor  source/  11-1    -     -     11     -      S"},
        {[](auto& r) { r.stDisCtrlInfo.numberOfItem = 2; }, "display control  none (-1) on 2 entries"},
        {[](auto& r) {
             r.stDisCtrlInfo.nAction = 105, r.stDisCtrlInfo.vItems.assign(2, {-1, "t"}),
             r.stDisCtrlInfo.vItems[1].nNumber = 0;
         },
         "display control  record_livecontent (105) on 0 entries/  index  title/  -      t/  0      t"},
        {[](auto& r) { r.strSysResponse = "hi"; }, "sentence         hi"},
        {[](auto& r) { r.strDialogId = "d", r.nDialogSeq = 0; }, "dialog           id \"d\", sequence 0"},
        {[](auto& r) { r.nDialogType = 0; }, "dialog           type 0"},
        {[](auto& r) { r.vDomain.resize(1); }, "domains          \"\""},
        {[](auto& r) {
             r.vSAContents.resize(2);
             for (_SAContents& stContents : r.vSAContents) {
                 stContents.stItem.stMnT.szTitle = "film", stContents.stItem.stMnT.nYear = 2013;
                 stContents.stItem.stApp.szTitle = "app", stContents.stItem.stApp.stPoster.szUrl = "u";
             }
             r.vSAContents[0].stItem.szType = "movie", r.vSAContents[1].stItem.szType = "apps";
         },
         "results          2 results/  type   title  year  poster/  movie  film   2013  -/  apps   app    -     u"}};
    for (const auto& [fill, szWanted] : kRows) {
        _ConvActionInfo info;
        fill(info);
        std::string strWanted = "f\\n: \"u\\x1B\"\n";
        std::istringstream lines(szWanted);
        for (std::string strLine; std::getline(lines, strLine, '/');) strWanted += "  " + strLine + '\n';
        EXPECT_EQ(strWanted, RenderRecord({"f\n", "u\033", ""}, info, kPlain));
    }
    _ConvActionInfo info;
    info.strSysResponse = "hi";
    EXPECT_EQ("\033[1mf: \"u\"\033[0m\n  \033[36msentence         \033[0mhi\n",
              RenderRecord({"f", "u", ""}, info, CPaint(true)));
}

TEST(Refusal, IsToldFromTheLinesOfTheLog)
{
    // Lines as FUNCTION:MESSAGE; "S:" stands for the reader of a reply. The reason; the line that it rests on.
    const std::string strStart = "S:Start to parse search server data.;", strRsp = strStart + "S:TAG_RSP;";
    const std::string strError = "the server reported error ", strNotSaid = "the library does not say why|";
    for (const std::string& strRow :
         {"a:b|" + strNotSaid,
          "a:strPreAllResult is empty() or|the utterance or the reply is empty|a:strPreAllResult is empty() or" +
              std::string(),
          strStart + "x:y|it has no \"rsp\"|S:Start to parse search server data.",
          strStart + "S:json parse error|it is not JSON, or beyond a limit|S:json parse error",
          strRsp + "x:vTVControl is empty|it holds no TV control command|x:vTVControl is empty",
          strRsp + "x:pDataHandler is NULL|memory ran out|x:pDataHandler is NULL",
          strRsp + "x:stopped by an exception: std::bad_alloc|memory ran out|x:stopped by an exception: std::bad_alloc",
          strRsp + "x:stopped by an exception: y|" + strNotSaid + "S:TAG_RSP",
          strRsp + "S:errCode:E, msg:a, msg:\n|" + strError + "E: a, msg:\\n|S:errCode:E, msg:a, msg:\n",
          strRsp + "S:errCode:E, msg:|" + strError + "E|S:errCode:E, msg:",
          strRsp + "S:errCode:E|" + strError + "E|S:errCode:E",
          strRsp + "S:errCode:, msg:m;S:nErrCode:404|" + strError + "404: m|S:errCode:, msg:m",
          strRsp + "t_ParseSearchSchema:errCode:E, msg:m|" + strNotSaid + "S:TAG_RSP"}) {
        CRefusal refusal;
        std::istringstream lines(strRow.substr(0, strRow.find('|')));
        for (std::string strLine; std::getline(lines, strLine, ';');) {
            const std::string strFunction = strLine.substr(0, strLine.find(':'));
            refusal.Listen({strLine, strFunction == "S" ? "t_ParseSearchServer" : strFunction,
                            strLine.substr(strFunction.size() + 1)});
        }
        EXPECT_EQ(strRow.substr(strRow.find('|') + 1), refusal.Reason() + '|' + refusal.Line());
    }
}

TEST(Comparing, DifferencesFieldByField)
{
    // One; another; how they differ, as "PATH ONE OTHER"; the same where one says only what matters.
    const char* const kRows[][4] = {{R"({"a":1,"b":[{"c":"x"}]})", R"({"a":1,"b":[{"c":"x"}]})", "", ""},
                                    {R"({"a":1})", R"({"a":2,"z":0})", "a 1 2;z  0;", "a 1 2;"},
                                    {R"({"a":{"b":[{"c":"x"},{}]}})", R"({"a":{"b":[{"c":"y","d":1},{}]}})",
                                     "a.b[0].c \"x\" \"y\";a.b[0].d  1;", "a.b[0].c \"x\" \"y\";"},
                                    {R"({"a":[1]})", R"({"a":[1,2]})", "a [1] [1,2];", "a [1] [1,2];"},
                                    {R"({"typo":1})", "{}", "typo 1 ;", "typo 1 ;"},
                                    {R"({"a":"1"})", R"({"a":1})", "a \"1\" 1;", "a \"1\" 1;"}};
    for (const auto& [szOne, szOther, szAll, szPart] : kRows) {
        for (const bool bPart : {false, true}) {
            std::string strFound;
            for (const auto& [strPath, strOne, strOther] : Differences(Parsed(szOne), Parsed(szOther), bPart))
                strFound += strPath + ' ' + strOne + ' ' + strOther + ';';
            EXPECT_EQ(bPart ? szPart : szAll, strFound) << szOne;
        }
    }
    EXPECT_EQ("    a\\n: now nothing, then \"\\u202e\"\n", DifferenceText({"a\n", "", "\"\\u202e\""}, "now", "then"));
    EXPECT_EQ(Parsed(R"({"a":2,"l":[{"c":3}],"m":[1,2]})"),
              PartLike(Parsed(R"({"a":2,"b":9,"l":[{"c":3,"d":4}],"m":[1,2]})"),
                       Parsed(R"({"a":0,"l":[{"c":0}],"m":[1],"x":0})")));
}

TEST(Expectation, ChangesNoOtherByteOfItsLine)
{
    const std::string kRows[][2] = {
        {R"( {"utterance" : "é\u0041", "reply":{}} )", R"( {"utterance" : "é\u0041", "reply":{}, "expect": {"a":1}} )"},
        {R"({"expect":  {"old":[1]} ,"utterance":"u"})", R"({"expect":  {"a":1} ,"utterance":"u"})"},
        {"\xEF\xBB\xBF{\"expect\":null}\r", "\xEF\xBB\xBF{\"expect\":{\"a\":1}}\r"},
        {"\xEF\xBB\xBF{}", "\xEF\xBB\xBF{\"expect\": {\"a\":1}}"},
        {"oops", "oops"}};
    for (const auto& [strLine, strWanted] : kRows) {
        EXPECT_EQ(strWanted, WithExpectation(strLine, Parsed("{\"a\":1}")));
        EXPECT_EQ(strLine == "oops" ? "null" : "{\"a\":1}", JsonText(ExpectationOf(strWanted)));
    }
}

TEST(Progress, IsSharesOfTheWhole)
{
    const std::string strBlank(20, ' '), strFull(20, '#');
    EXPECT_EQ("a\\n [" + strBlank + "] 0 % of 1.0 B", ProgressText("a\n", 0, 1));
    EXPECT_EQ("f [########            ] 42 % of 10.0 GB", ProgressText("f", 4200000000, 10000000000));
    EXPECT_EQ("f [" + strFull + "] 100 % of 1.2 MB", ProgressText("f", 1234567, 1234567));
}

// Lines that nobody hears are not formatted, so what is heard must be enough for the reason.
TEST(Refusal, HearsEveryLineThatItNeeds)
{
    const CSession session(false);
    int nRefused = 0;
    for (const char* szReply :
         {"", "{", "[]", "{}", R"({"rsp":{}})", R"({"rsp":{"stat":"fail","err":{"code":"E","msg":"m"}}})",
          R"({"rsp":{"stat":"fail","err":{"code":7}}})", R"({"rsp":{"stat":"fail"}})", "json parse error",
          R"({"rsp":{"tvcontrol":[{"action":"TAG_RSP"}]}})"}) {
        std::string strReasons[2];
        std::size_t nLines[2] = {};
        for (const bool bAll : {false, true}) {
            CRefusal refusal;
            const auto Listen = [&](const LogLine& stLine) {
                ++nLines[bAll ? 1 : 0];
                refusal.Listen(stLine);
            };
            const CLogTap tap(Listen, bAll ? nullptr : CRefusal::Hears);
            _ConvActionInfo info;
            std::string strReply = szReply;
            if (!ca_get_speech_action("u", strReply, info)) strReasons[bAll ? 1 : 0] = refusal.Reason();
        }
        EXPECT_EQ(strReasons[1], strReasons[0]) << szReply;
        EXPECT_LT(nLines[0], nLines[1]) << szReply;
        nRefused += strReasons[0].empty() ? 0 : 1;
    }
    EXPECT_EQ(9, nRefused);
}

TEST(Catalog, StatusOfEveryCountryAndLanguage)
{
    for (const char* szName : {"PARLO_COUNTRY", "PARLO_LANGUAGE", "PARLO_VOICE_RECOG", "PARLO_LOG"}) unsetenv(szName);
    EXPECT_EQ("there is no service (-1)\n", RenderStatus(ca_get_conv_status()));
    const CSession session(false);
    EXPECT_EQ("conversation is available (0)\n", RenderStatus(ca_get_conv_status()));
    std::istringstream table(RenderAllStatuses(kPlain));
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
    EXPECT_NE(std::string::npos, RenderAllStatuses(kPlain).find("KR       no "));
}

TEST(Catalog, WordsAsTextAndAsJson)
{
    const CSession session(false);
    const Json::Value root = Parsed(VocabularyJson());
    EXPECT_EQ((std::vector<std::string>{"actions", "display_actions", "intents", "schema_categories", "schema_rules"}),
              root.getMemberNames());
    // What some of the actions take and fill, and whether they may follow another one.
    const std::map<std::string, std::string> mapWanted = {
        {"poweroff", "1 system|target_device|vSystemActionParam|0"},
        {"set_channel", "5 channel|channels|vSystemActionParam,vChannels|16"},
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
    std::istringstream text(RenderVocabulary(kPlain));
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

// The fields of every record, with their types, as the headers declare them.
static std::map<std::string, std::map<std::string, std::string>> DeclaredFields()
{
    std::map<std::string, std::map<std::string, std::string>> mapRecords;
    for (const char* szHeader : {"ActionInfo", "Contents", "Information", "SearchList", "TVControl"}) {
        std::ifstream file(PARLO_SOURCES "/include/CADataRepository/" + std::string(szHeader) + ".h");
        std::string strRecord;
        for (std::string strLine, strType, strName; std::getline(file, strLine);) {
            strLine.erase(std::min(strLine.find("//"), strLine.size()));
            std::istringstream words(strLine);
            words >> strType >> strName;
            if (strType == "struct") strRecord = strName;
            if (strLine.find_first_not_of(' ') == 4 && strLine.find(';') != std::string::npos && strName != "=")
                mapRecords[strRecord][strName.substr(0, strName.find_first_of(";{"))] = strType;
        }
    }
    return mapRecords;
}

TEST(RecordJson, EveryFieldUnderItsName)
{
    const auto mapRecords = DeclaredFields();
    std::set<std::string> seen;
    const std::function<void(const std::string&, const Json::Value&)> Compare = [&](const std::string& strType,
                                                                                    const Json::Value& value) {
        const bool bList = strType.rfind("std::vector<", 0) == 0;
        const std::string strRecord = bList ? strType.substr(12, strType.size() - 13) : strType;
        if (mapRecords.count(strRecord) == 0) return;
        ASSERT_TRUE(!bList || value.size() == 1) << strRecord << ": the test fills no list of them";
        const Json::Value& object = bList ? value[0] : value;
        EXPECT_EQ(mapRecords.at(strRecord).size(), object.size()) << strRecord;
        for (const auto& [strName, strFieldType] : mapRecords.at(strRecord)) {
            EXPECT_TRUE(object.isMember(strName)) << strRecord << "::" << strName;
            if (object.isMember(strName)) Compare(strFieldType, object[strName]);
        }
        seen.insert(strRecord);
    };
    _ConvActionInfo info;
    info.vChannels.resize(1);
    info.stDisCtrlInfo.vItems.resize(1);
    info.vSAContents.resize(1);
    _ContentsItem& stItem = info.vSAContents[0].stItem;
    stItem.stMnT.vGenres.resize(1), stItem.stMnT.vRatings.resize(1);
    stItem.stOnTV.vGenres.resize(1), stItem.stOnTV.vRatings.resize(1);
    stItem.stInfo.stWeather.vWInfo.resize(1), stItem.stInfo.stWeather.vForeInfo.resize(1);
    stItem.stInfo.stStock.vDetailed.resize(1);
    stItem.stInfo.stSports.vRecords.resize(1);
    stItem.stInfo.stSports.vRecords[0].vStanding.resize(1);
    Compare("_ConvActionInfo", ToJson(info));
    Compare("_Content", ToJson(_Content{{{"cast"}}, stItem.stOnTV}));
    EXPECT_EQ(36U, seen.size());
}

TEST(RecordJson, TextsKeepTheirBytesOnOneLine)
{
    const std::string strBytes("\"\\\n\0 \x7F\xC2\x85\xC2\xA0 \xC3\xA9\xFF\xC2", 15);
    _ConvActionInfo info;
    info.strAction = strBytes;
    info.vDomain = {strBytes, ""};
    info.vSAContents.resize(3);
    info.vSAContents[2].stItem.stApp.szTitle = strBytes;
    std::string strLine;
    std::size_t nPieces = 0;
    Case stCase;
    stCase.stReply.strFile = "f";
    stCase.bAccepted = true;
    stCase.pInfo = &info;
    const auto Write = [&](bool bCompact) {
        strLine.clear();
        WriteCaseLine(stCase, bCompact, [&](const std::string& strPiece) { strLine += strPiece, ++nPieces; });
        return strLine;
    };
    Write(false);
    EXPECT_LT(30U, nPieces);
    EXPECT_EQ(0U, strLine.find(R"({"file":"f","line":1,"accepted":true,"eActionType":0,"eSystemAction":0,)"));
    EXPECT_NE(std::string::npos, strLine.find(R"("strAction":"\"\\\n\u0000 \u007f\u0085)"
                                              "\xC2\xA0 \xC3\xA9\xFF\xC2\","));
    EXPECT_EQ(strLine.size() - 1, strLine.find('\n'));
    Json::Value record = Parsed(strLine);
    for (const char* szName : {"file", "line"}) record.removeMember(szName);
    EXPECT_EQ(OutcomeJson(stCase, false), record);
    info = {};
    info.vSAContents.resize(2);
    info.vSAContents[1].stItem.stMnT.nYear = 0;
    EXPECT_EQ(R"({"file":"f","line":1,"accepted":true,"vSAContents":[{},{"stItem":{"stMnT":{"nYear":0}}}]})"
              "\n",
              Write(true));
    stCase.bAccepted = false;
    stCase.strRefusal = "no \"rsp\"";
    EXPECT_EQ(R"({"file":"f","line":1,"accepted":false,"reason":"no \"rsp\""})"
              "\n",
              Write(false));
    EXPECT_EQ("\"\\u007f\\u009f\xC3\x9F\\u061c\\u202e\\u2069\xE2\x80\xAF\xD8\x9D\"\n",
              JsonLine("\x7F\xC2\x9F\xC3\x9F\xD8\x9C\xE2\x80\xAE\xE2\x81\xA9\xE2\x80\xAF\xD8\x9D"));
}
