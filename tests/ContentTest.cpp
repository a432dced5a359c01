// Content items: what of an element of "tvcontent" reaches the record, and what is refused.
#include "Conversation.h"

using Content = Conversation;

TEST_F(Content, EachKeyGoesToItsField)
{
    const Json::Value elements = ParsedJson(DataFile("every-key.json"))["rsp"]["tvcontent"];
    std::string strItems;
    for (const Json::Value& element : elements) strItems += ::ItemOf(element);
    EXPECT_EQ(DataFile("every-key.items.txt"), strItems + ContentOf(elements[0]));
}

TEST_F(Content, EveryItemIsKeptDroppedOrRefused)
{
    EXPECT_TRUE(m_Parser.ParseData(CA_PARSE_JSON_SEARCH_SERVER, Reply(R"('tvcontent':[{'type':'app','app_info':{}},
        {'type':'app','app_info':{'id':'a','title':'Game'}},{'type':'fitness','title':'Yoga'},{'type':'Movie'},7,
        {'type':'apps'},{'type':'kids','title':'Tale'},{'type':'weather','condition':'Sunny'},{'type':'movie'},
        {'type':'stock','name':'ACME'},{'type':'sports','country':'KR'},{'type':'epg'}])"),
                                   m_nCount));
    EXPECT_EQ(3U, m_nCount);
    EXPECT_EQ(3, g_Platform.Count(" __FAIL__JSON__READER!!!!!"));
    for (const char* szItem : {"fitness->Yoga", "kids->Tale", "weather->Sunny", "stock->ACME", "sports->KR"})
        EXPECT_EQ(1, g_Platform.Count(" This content can not be permitted to play: " + std::string(szItem)));
    for (const char* szItem : {"1### Content:apps->unknown type: apps", "0### Content:kids->Tale"})
        EXPECT_EQ(1, g_Platform.Count(" t_CheckPlay(bAdultLock: 0, strCert: ) return " + std::string(szItem)));
    for (const char* szFlag : {"", "no", "Yes", "No "}) EXPECT_TRUE(CCAParsePacket::t_IsPermitted(true, szFlag));
    EXPECT_FALSE(CCAParsePacket::t_IsPermitted(true, "No"));
    EXPECT_TRUE(CCAParsePacket::t_IsPermitted(false, "No"));
}

TEST_F(Content, PremiumFlagFollowsTheGamePanel)
{
    for (const std::string strFlag : {"", "s", "p", "ps", "x"}) {
        std::string strWithout = strFlag, strWith = strFlag;
        EXPECT_EQ(strFlag != "p", CCAParsePacket::t_ResolvePremiumFlag(false, strWithout)) << strFlag;
        EXPECT_TRUE(CCAParsePacket::t_ResolvePremiumFlag(true, strWith)) << strFlag;
        EXPECT_EQ(strFlag == "ps" ? "s p" : strFlag + " " + strFlag, strWithout + " " + strWith);
    }
}
