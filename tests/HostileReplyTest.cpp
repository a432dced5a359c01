// Replies that nobody meant: every type in every place, and sizes, depths and bytes beyond reason.
#include <functional>
#include <set>

#include "CAPlainNumbers.h"
#include "Conversation.h"

// As text, whatever the locale.
static std::string Document(const Json::Value& root)
{
    const CAPlainNumbers plain;
    return JsonLine(root);
}

class HostileReply : public Conversation
{
protected:
    // Puts every type in every place below `place`. What is of another type must read as if it were missing.
    void TryEachType(const std::string& strPath, Json::Value& place, const std::function<std::string()>& outcome)
    {
        const std::string strOriginal = outcome();
        const Json::Value original = std::exchange(place, Json::Value());
        const std::string strMissing = outcome();
        for (const char* szOther : {"true", "5", "3000000000", "2.5", "'x'", "[1]", "{'name':'x'}"}) {
            place = Parsed(szOther);
            const bool bFits = original.isInt() ? place.isInt() : original.type() == place.type();
            const std::string strOther = outcome();
            if (bFits || strOriginal == strMissing || m_AnyType.count(strPath) != 0) continue;
            EXPECT_EQ(strMissing, strOther) << strPath << " as " << szOther;
        }
        place = original;
        for (auto it = place.begin(); it != place.end(); ++it) TryEachType(strPath + "/" + it.name(), *it, outcome);
    }

    std::set<std::string> m_AnyType;  // paths that are read whatever they are, or whose mere presence counts
};

TEST_F(HostileReply, AnotherTypeReadsAsMissing)
{
    g_Platform.bKeepLog = false;
    m_AnyType = {"/rsp/displaycontrol", "/rsp/tvcontent//app_info", "/rsp/tvcontent//poster/images/index/", "/names/"};
    Json::Value root = ParsedJson(DataFile("every-key.json"));
    ASSERT_TRUE(SayRaw(Document(root)));
    const auto nOffered = static_cast<Json::ArrayIndex>(m_stInfo.vSAContents.size());
    root["rsp"]["tvcontent"].resize(nOffered);  // they stand first; for the others see below
    const auto outcome = [this, &root] {
        Store().InitializeData();
        Store().m_stDialogOpen = _DialogOpen();
        return SayRaw(Document(root)) ? JsonLine(ToJson(m_stInfo)) : "refused";
    };
    TryEachType("", root, outcome);
    Json::Value& rsp = root["rsp"];
    rsp.removeMember("tvcontent");
    for (const char* szAction : {"display_candidates", "set_volume", "play_content", "run_webbrowser"}) {
        rsp["tvcontrol"][0]["params"][0]["action"] = szAction;
        TryEachType("", rsp["tvcontrol"][0]["params"][0], outcome);
    }
    EXPECT_EQ("14 []", ActionOf(Command("muteon")));
}

// Past the reply, which shows neither the kinds that it refuses nor a programme.
TEST_F(HostileReply, ItemOfAnotherTypeReadsAsMissing)
{
    g_Platform.bKeepLog = false;
    m_AnyType = {"/poster/images/index/", "/schedule", "/forecast_info//condition_icon/",
                 "/records//standing//season_stats/"};
    Json::Value elements = ParsedJson(DataFile("every-key.json"))["rsp"]["tvcontent"];
    std::string strUnread;
    for (Json::Value& element : elements) {
        EXPECT_LT(1U, ItemOf(element).size()) << "nothing is read of " << JsonLine(element);
        TryEachType("", element, [&] { return JsonLine(ItemOf(element)); });
        for (const std::string& strKey : element.getMemberNames()) {
            Json::Value without = element;
            without.removeMember(strKey);
            if (ItemOf(without) == ItemOf(element)) strUnread += element["type"].asString() + "/" + strKey + " ";
        }
    }
    EXPECT_EQ("movie/casting movie/channel movie/schedule tvshow/season kids/category kids/trainer fitness/character ",
              strUnread);
    TryEachType("", elements[0], [&] { return JsonLine(ContentOf(elements[0])); });
}

TEST_F(HostileReply, SchemaOfAnotherTypeReadsAsMissing)
{
    for (const char* szStat : {"ok", "fail"}) {
        Json::Value root = ParsedJson(DataFile("every-key-schema.json"));
        root["rsp"]["stat"] = szStat;
        m_AnyType = {"/rsp/err/msg", "/rsp/err/code"};
        TryEachType("", root, [&] {
            g_Platform.vLog.clear();
            Store().SetCommunicateErrorCode("");
            std::string strLog;
            m_Parser.ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, Document(root), m_nCount);
            for (const LogLine& line : g_Platform.vLog) strLog += line.strText;
            return strLog + SchemaText(std::exchange(SchemaList(Store()), {})) + Store().GetCommunicateErrorCode();
        });
    }
}

TEST_F(HostileReply, SizeAndBytes)
{
    const std::string strWeird("a\0b\xFF\xC3\xED\xA0\x80", 8);
    EXPECT_EQ("65 [" + strWeird + "]", ActionOf(Command("run_youtube", "'keyword':'" + strWeird + "'")));
    EXPECT_EQ(std::string("65 [\0x]", 7), ActionOf(Command("run_youtube", "'keyword':'\\u0000x'")));
    EXPECT_EQ("13 [7]", ActionOf(Command("volumeup','action':'volumedown", "'amount':3,'amount':7")));
    EXPECT_EQ("12 []", ActionOf(Command("volumeup", "'amount':99999999999999999999999")));
    EXPECT_EQ("refused", ActionOf(Command("volumeup", "'amount':1e999")));
    EXPECT_EQ(1, g_Platform.Count("json parse error"));
    const std::string strPad(8 << 20, 'x'), strMany(8 << 20, ',');
    EXPECT_EQ("14 []", ActionOf("'pad':'" + strPad + "'," + Command("muteon")));
    EXPECT_EQ("14 []", ActionOf("'pad':'" + strMany + "'," + Command("muteon")));
    EXPECT_EQ("14 []", ActionOf(Command("muteon") + "}} trailing"));
}
