// Content items: what of an element of "tvcontent" reaches the record, and what is refused.
#include "Conversation.h"

using Content = Conversation;

// Every kind of element, those that are refused in a reply included, and a programme with its cast.
TEST_F(Content, EachKeyGoesToItsField)
{
    std::string strItems;
    const Json::Value elements = ParsedJson(DataFile("every-key.json"))["rsp"]["tvcontent"];
    for (const Json::Value& element : elements) {
        _ContentsItem stItem;
        stItem.szType = element["type"].asString();
        if (stItem.szType == "movie") m_Parser.t_ParseMovieByOne(element, stItem.stMnT);
        if (stItem.szType == "tvshow") m_Parser.t_ParseTVShowByOne(element, stItem.stMnT);
        if (stItem.szType[0] == 'a') m_Parser.t_ParseAppsByOne(element["app_info"], stItem.stApp);
        if (stItem.szType == "kids") m_Parser.t_ParseKidsBook(element, stItem.stVideo);
        if (stItem.szType == "fitness") m_Parser.t_ParseFitnessVOD(element, stItem.stVideo);
        if (stItem.szType == "weather") m_Parser.t_ParseWeatherInfo(element, stItem.stInfo.stWeather);
        if (stItem.szType == "stock") m_Parser.t_ParseStockInfo(element, stItem.stInfo.stStock);
        if (stItem.szType == "sports") m_Parser.t_ParseSportsInfo(element, stItem.stInfo.stSports);
        strItems += JsonLine(Filled(ToJson(stItem), ToJson(_ContentsItem())));
    }
    EXPECT_TRUE(m_Parser.t_ParseContent(elements[0]));
    strItems += JsonLine(Filled(ToJson(Store().GetContent()), ToJson(_Content())));
    EXPECT_EQ(DataFile("every-key.items.txt"), strItems);
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
