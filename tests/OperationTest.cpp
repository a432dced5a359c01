// Operations by themselves, in what no recorded conversation reaches.
#include <map>
#include <set>
#include <stdexcept>

#include "CADataRepository/Vocabulary.h"
#include "CAImageSizeTable.h"
#include "CAUtil.h"
#include "Conversation.h"

using Operations = Conversation;

TEST_F(Operations, LanguagesOfTwoFamilies)
{
    std::string strEnglish, strPortuguese;
    for (const std::string strLanguage :
         {"", "en_US", "en_AU", "en_GB", "en_IE", "en", "pt_PT", "pt_BR", "pt", "EN_US"}) {
        if (CCAUtil::IsEnLanguage(strLanguage)) strEnglish += strLanguage + " ";
        if (CCAUtil::IsPTLanguage(strLanguage)) strPortuguese += strLanguage + " ";
    }
    EXPECT_EQ("en_US en_AU en_GB pt_PT pt_BR ", strEnglish + strPortuguese);
}

TEST_F(Operations, NumbersAsText)
{
    EXPECT_EQ("0, 2147483647, ", CCAUtil::itoa(0) + ", " + CCAUtil::itoa(2147483647) + ", " + CCAUtil::itoa(-1));
    EXPECT_EQ("-2147483648", CCAUtil::ConvertIntToString(-2147483647 - 1));
    for (const int nSize : {-1, 0, 1, 4, 5}) {
        char szText[] = "xxxxxx";
        EXPECT_EQ(4, CCAUtil::VsnPrint(szText, nSize, "%d", 1234));
        EXPECT_EQ(nSize < 1 ? "xxxxxx" : std::string("1234").substr(0, static_cast<unsigned>(nSize) - 1), szText);
    }
    EXPECT_EQ(0, CCAUtil::VsnPrint(nullptr, 5, "%d", 1234));
    EXPECT_EQ("E itoa:  ERROR - nInput:-1\nE VsnPrint: pStr is NULL\n", Logged());
}

// A new action word is seen by what was recorded, and what it takes is read from "params" and handed on.
TEST_F(Operations, EveryWordIsRecordedAndGetsItsParameters)
{
    const std::string strRecorded = DataFile("conversations/action-words.txt");
    for (const auto& [szWord, eCode] : kActionWords) {
        EXPECT_NE(std::string::npos, strRecorded.find("= " + std::string(szWord) + ": true, "))
            << szWord << ": not in conversations/action-words.txt";
        const ActionRow stRow = CADataRepository::ActionOf(eCode);
        if (stRow.eLookup != ActionLookup::SYSTEM || stRow.vKeys[0] == nullptr) continue;
        std::set<std::string> setTaken;
        for (const char* szValue : {"'7'", "7"}) {
            std::string strParam = "'index':0";
            for (const char* szKey : stRow.vKeys)
                if (szKey != nullptr) strParam += ",'" + std::string(szKey) + "':" + szValue;
            setTaken.insert(ActionOf(Command(std::string(szWord), strParam)));
        }
        EXPECT_EQ(1U, setTaken.count(std::to_string(eCode) + " [7" + (stRow.vKeys[1] == nullptr ? "]" : ",7]")))
            << szWord << ": its keys are not read from \"params\", or not into the fields of kParams";
    }
}

TEST_F(Operations, RawReplyIsLoggedInPieces)
{
    const std::size_t kRows[][3] = {{1, 1, 1}, {500, 1, 500}, {501, 2, 1}, {102400, 205, 400}, {200000, 205, 500}};
    for (const auto& [nLength, nPieces, nLastPiece] : kRows) {
        g_Platform.vLog.clear();
        CCAUtil::PrintRcvData(std::string(nLength, 'x'));
        EXPECT_EQ(2 + nPieces, g_Platform.vLog.size()) << nLength;
        EXPECT_NE(std::string::npos, g_Platform.vLog.back().strText.find("> " + std::string(nLastPiece, 'x') + "\033"));
    }
}

// Two questions that the library does not really ask the set: asked here instead.
static bool g_bAdultLock = false;
static bool g_bGamePanel = true;
static std::string g_strAsked;
bool CCAUtil::FlagAdultLock(bool bBroadcast)
{
    g_strAsked += bBroadcast ? "broadcast " : "other ";
    return g_bAdultLock;
}
bool CCAUtil::IsSupportGamePanel()
{
    return g_bGamePanel;
}

TEST_F(Operations, AdultLockAndGamePanelDecide)
{
    g_strAsked.clear();
    std::string strPermitted;
    for (const bool bLock : {false, true}) {
        g_bAdultLock = bLock;
        for (const char* szType : {"movie", "app", "epg", "kids"}) {
            for (const char* szFlag : {"", "no", "No", "No "}) {
                _ContentsItem stItem;
                stItem.szType = szType;
                stItem.stOnTV.szCertFlag = stItem.stMnT.szCertFlag = stItem.stApp.szCertFlag = szFlag;
                strPermitted += m_Parser.t_CheckPermit(stItem) ? '+' : '-';
            }
        }
    }
    EXPECT_EQ("++++++++++++----++-+++-+++-+----", strPermitted);
    EXPECT_EQ(2, g_Platform.Count(" t_CheckPlay(bAdultLock: 1, strCert: No) return 0### Content:epg->") +
                     g_Platform.Count(" t_CheckPlay(bAdultLock: 0, strCert: No) return 1### Content:epg->"));
    EXPECT_EQ("other other other other other other other other broadcast ", g_strAsked.substr(0, 58));
    Json::Value items = ParsedJson(DataFile("every-key.json"))["rsp"]["tvcontent"];
    for (Json::Value& item : items) {
        item["cert_flag"] = "No";
        if (item.isMember("app_info")) item["app_info"]["cert_flag"] = "No";
    }
    EXPECT_TRUE(SayRaw(Reply(Command("play_content") + ",'tvcontent':" + JsonLine(items))));
    for (const _SAContents& stContents : m_stInfo.vSAContents)
        ADD_FAILURE() << stContents.stItem.szType << " is offered under the lock";
    g_bAdultLock = false;

    std::string strFlags;
    for (const bool bPanel : {false, true}) {
        g_bGamePanel = bPanel;
        for (const char* szFlag : {"", "s", "p", "ps", "x"}) {
            _AppContents stApp;
            m_Parser.t_ParseAppsByOne(Parsed("{'id':'1','runtitle':'r','premium_flag':'" + std::string(szFlag) + "'}"),
                                      stApp);
            strFlags += stApp.szPremiumFlag + stApp.szRunTitle + " ";
        }
    }
    EXPECT_EQ("r sr p sr xr r sr pr pr xr ", strFlags);
}

// All rows of the size table, past the access check: the lookup asks for half of them only.
std::map<std::string, int>& SizeRows(CCAImageSizeTable& table);
template <auto pMember>
struct OpenedTable {
    friend std::map<std::string, int>& SizeRows(CCAImageSizeTable& table) { return table.*pMember; }
};
template struct OpenedTable<&CCAImageSizeTable::m_mapSize>;

TEST_F(Operations, SizeTableTakesRows)
{
    CCAImageSizeTable table;
    table.t_AddItem("1080", "poster", 7);
    table.t_AddItem("1080", "kids", 1);
    for (const int nSize : {0, -1}) table.t_AddItem("1080", "poster", nSize);
    table.t_AddItem("", "poster", 8);
    table.t_AddItem("1080", "", 8);
    EXPECT_EQ(4, g_Platform.Count("t_AddItem error"));
    EXPECT_EQ("E t_AddItem: t_AddItem error\n", Shown(g_Platform.vLog.back()));
    std::string strRows;
    for (const auto& [strKey, nSize] : SizeRows(table)) strRows += strKey + " " + std::to_string(nSize) + ", ";
    EXPECT_EQ(
        "1080;app 59, 1080;fitness 55, 1080;kids 1, 1080;movie 57, 1080;poster 7, 1080;tvshow 57, 720;app 58, "
        "720;fitness 54, 720;kids 56, 720;movie 56, 720;tvshow 56, ",
        strRows);
}

// Whatever is thrown at whichever point of a reply: nothing escapes, the store's lock is free, the next call works.
TEST_F(Operations, NoExceptionPasses)
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
        EXPECT_EQ("E ca_get_speech_action: stopped by an exception: boom\n", Shown(g_Platform.vLog.back())) << nThrowAt;
        g_Platform.onLog = nullptr;
        Store().InitializeData();
        EXPECT_TRUE(Say(strReply) && m_stInfo.vSAContents.size() == 1) << nThrowAt;
    }
    g_Platform.onLog = [](const LogLine& line) {
        if (line.strText.find("stopped by") == std::string::npos) throw 7;
    };
    EXPECT_EQ(-1, ca_get_conv_status());
    EXPECT_EQ("E ca_get_conv_status: stopped by an exception\n", Shown(g_Platform.vLog.back()));
    EXPECT_FALSE(ca_initial_service("again"));
    EXPECT_EQ("E ca_initial_service: stopped by an exception\n", Shown(g_Platform.vLog.back()));
    ca_uninitial();
    EXPECT_EQ("E ca_uninitial: stopped by an exception\n", Shown(g_Platform.vLog.back()));
    g_Platform.onLog = nullptr;
}
