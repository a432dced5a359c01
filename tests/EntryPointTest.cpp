// The four entry points: results, the lines they log, what a failure leaves behind.
#include <regex>
#include <stdexcept>

#include "CAService.h"
#include "Conversation.h"

using EntryPoints = Conversation;

TEST_F(EntryPoints, ServicesFollowEachOther)
{
    CCAService* const pService = m_pCAService;
    EXPECT_FALSE(ca_initial_service("other")) << "there is one already";
    EXPECT_TRUE(m_pCAService == pService && g_Platform.Count("init service again, please check it!!") == 1);
    EXPECT_EQ("14 []", ActionOf("'dialog':{'dialog_seq':3}," + Command("muteon")));

    ca_uninitial();
    EXPECT_TRUE(m_pCAService == nullptr && CCAService::pInstance == nullptr && CCADataHandler::pInstance == nullptr);
    EXPECT_TRUE(ActionOf(Command("muteon")) == "refused" && ca_get_conv_status() == -1);
    ca_uninitial();
    EXPECT_EQ(3, g_Platform.Count("m_pCAService is NULL"));

    Store().SetSystemMessage("of the store that was there first");
    EXPECT_TRUE(ca_initial_service("again"));
    EXPECT_EQ("14 []", ActionOf(Command("muteon")));
    EXPECT_EQ(-1, m_stInfo.nDialogSeq);
    EXPECT_EQ("of the store that was there first", m_stInfo.strSysResponse);
}

// What is not of the reply's action stays as the caller passed it.
TEST_F(EntryPoints, ReplyFillsTheFieldsOfItsAction)
{
    m_stInfo.nReserved1 = m_stInfo.nReserved2 = 42;
    m_stInfo.eActionIntent = E_CA_TVCONTROL_INTENT_SEARCH_YEAR;
    m_stInfo.vCandidates = {"the caller's"};
    std::string strReply = DataFile("every-key.json");
    ASSERT_TRUE(ca_get_speech_action("turn it up", strReply, m_stInfo));
    EXPECT_EQ(DataFile("every-key.json"), strReply);
    EXPECT_EQ(4U, m_stInfo.vSAContents.size());
    m_stInfo.vSAContents.clear();
    EXPECT_EQ(DataFile("every-key.record.txt"), Filled(ToJson(m_stInfo), ToJson(_ConvActionInfo())).toStyledString());
}

// Each line in the form of the library's lines: red ("31") at error priority, blue ("34") at debug priority.
TEST_F(EntryPoints, EachStepOfAReplyIsLogged)
{
    ASSERT_TRUE(Say("'tvcontrol':[{'action':'muteon'}]"));
    const std::regex form("(3[14])ParloAPI(.*)\\(\\d+\\) > ([^]*)\033\\[\\1m");
    std::string strLog;
    for (const auto& [nPriority, strTag, strText] : g_Platform.vLog)
        strLog += std::regex_replace((nPriority == 6   ? "31"
                                      : nPriority == 3 ? "34"
                                                       : "") +
                                         strTag + strText,
                                     form, "$1$2:$3\n");
    EXPECT_EQ(DataFile("muteon.log"), strLog);
}

TEST_F(EntryPoints, RefusedReplySaysWhyAndLeavesTheRecordAlone)
{
    const char* const kRefused[][3] = {
        {"", "{}", "strPreAllResult is empty() or strRawData is empty(0) or m_pDataMgr is NULL"},
        {"hi", "", "strPreAllResult is empty() or strRawData is empty(2) or m_pDataMgr is NULL"},
        {"hi", "not json", "json parse error"},
        {"hi", "[{}]", "parse speech data failed"},
        {"hi", "{'rsp':{'stat':'fail','err':{'code':'E100','msg':'x'}}}", "errCode:E100, msg:x"},
        {"hi", "{'rsp':{'stat':'fail','err':{'code':404,'msg':5}}}", "nErrCode:404"}};
    for (const auto& [szUtterance, szReply, szReason] : kRefused) {
        g_Platform.vLog.clear();
        std::string strReply = Quoted(szReply);
        EXPECT_FALSE(ca_get_speech_action(szUtterance, strReply, m_stInfo)) << szReason;
        EXPECT_EQ(ToJson(_ConvActionInfo()), ToJson(m_stInfo)) << szReason;
        EXPECT_TRUE(g_Platform.Count(szReason) == 1 && g_Platform.Count("ParseDataFlow failed") == 1) << szReason;
    }
}

TEST_F(EntryPoints, FailureKeepsTheStoreUntilTheNextSuccess)
{
    EXPECT_FALSE(Say("'system_sentence':'first','domain':['a','b'],'dialog':{'dialog_id':'d','dialog_seq':4}"));
    EXPECT_EQ("first", m_stInfo.strSysResponse);
    EXPECT_EQ(1, g_Platform.Count("GetSpeechActionData failed"));
    EXPECT_EQ("refused", ActionOf("'stat':'fail','domain':[],'system_sentence':'bad'," + Command("muteon")));

    m_Parser.t_ParseTVControl(Parsed("[{'action':'muteoff'}]"));
    EXPECT_EQ("15 []", ActionOf(Command("volumeup"))) << "a stale command comes before the reply's";
    EXPECT_TRUE(m_stInfo.strSysResponse == "first" && m_stInfo.vDomain == (Texts{"a", "b"}));

    EXPECT_EQ("14 []", ActionOf("'system_sentence':'{Null}'," + Command("muteon")));
    EXPECT_TRUE(m_stInfo.strSysResponse.empty() && m_stInfo.vDomain.empty());
    EXPECT_EQ(4, m_stInfo.nDialogSeq) << "lasts until a reply gives another";
    EXPECT_EQ("", m_stInfo.strDialogId) << "cleared by a reply without one";
}

// Whatever is thrown at whichever point of a reply: nothing escapes, the store's lock is free, the next call works.
TEST_F(EntryPoints, NoExceptionPasses)
{
    const std::string strReply = Command("play_content") + ",'tvcontent':[{'type':'movie'}],'displaycontrol':[{}]";
    ASSERT_TRUE(Say(strReply));
    const std::size_t nLines = g_Platform.vLog.size();
    for (std::size_t nThrowAt = 1; nThrowAt <= nLines; ++nThrowAt) {
        g_Platform.vLog.clear();
        g_Platform.onLog = [nThrowAt](const LogLine&) {
            if (g_Platform.vLog.size() == nThrowAt) throw std::runtime_error("boom");
        };
        EXPECT_FALSE(Say(strReply));
        EXPECT_EQ(1, g_Platform.Count("stopped by an exception: boom")) << nThrowAt;
        g_Platform.onLog = nullptr;
        Store().InitializeData();
        EXPECT_TRUE(Say(strReply) && m_stInfo.vSAContents.size() == 1) << nThrowAt;
    }
    g_Platform.onLog = [](const LogLine& line) {
        if (line.strText.find("stopped by") == std::string::npos) throw 7;
    };
    EXPECT_TRUE(ca_get_conv_status() == -1 && !ca_initial_service("again"));
    ca_uninitial();
    EXPECT_EQ(3, g_Platform.Count("stopped by an exception"));
    g_Platform.onLog = nullptr;
}
