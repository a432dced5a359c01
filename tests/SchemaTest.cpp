// The search schema document: how a caller loads one, and what it becomes.
#include "Conversation.h"

using Schema = Conversation;

TEST_F(Schema, CallerLoadsItAndTheListIsOrderedAnew)
{
    CCADataHandler& store = *CCASingleton<CCADataHandler>::GetInstance();
    store.SetSeachServerContentsList(_ContentsItem());
    EXPECT_EQ(1U, Results().size());
    EXPECT_TRUE(CCAParsePacket().ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, DataFile("every-key-schema.json"), m_nCount));
    EXPECT_EQ(77U, m_nCount);
    store.SetSchemaList({4, {}});
    EXPECT_EQ(1U, Results().size());
    EXPECT_EQ(2, g_Platform.Count(" Data has been updated, it will be sorted"));
    EXPECT_EQ(1, g_Platform.Count(" 4 is not valid category!"));
    EXPECT_TRUE(Say(Command("muteon")));
    EXPECT_EQ(8U, SchemaList(store).size()) << "the schema outlasts a reply";
}

TEST_F(Schema, EntriesAndRules)
{
    EXPECT_TRUE(m_Parser.t_ParseSearchSchema(DataFile("every-key-schema.json")));
    EXPECT_EQ("1[0 0 0 0] 3[1 2 5 3][1 7 0 -1] 6 6[3 0 2147483647 0] 6 1[3 0 0 0][2 0 0 0][0 0 0 0] 2", SchemaText(SchemaList(Store())));
    EXPECT_EQ(1, g_Platform.Count(" invalide type: unknown, so the one before"));
}

TEST_F(Schema, RefusedDocumentLeavesAnErrorCode)
{
    const Texts vRows =
        Words("{'code':'E1','msg':'x'} E1 {'code':404,'msg':'x'} 404 {'code':-1,'msg':'x'} x {'msg':5} 5");
    for (std::size_t i = 0; i < vRows.size(); i += 2) {
        EXPECT_FALSE(m_Parser.t_ParseSearchSchema(Reply("'stat':'fail','schema':[{}],'err':" + vRows[i])));
        EXPECT_EQ(vRows[i + 1], Store().GetCommunicateErrorCode());
    }
    EXPECT_FALSE(m_Parser.t_ParseSearchSchema("") || m_Parser.t_ParseSearchSchema("{"));
    EXPECT_TRUE(m_Parser.t_ParseSearchSchema("{}") &&
                m_Parser.t_ParseSearchSchema(Reply("'schema':{'category':'lintra'}")));
    EXPECT_TRUE(SchemaList(Store()).empty());
}

TEST_F(Schema, RequestedOnceBeforeAReply)
{
    Store().RequestSchema();
    for (int i = 0; i < 2; ++i) EXPECT_EQ("14 []", ActionOf(Command("muteon")));
    EXPECT_EQ(1, g_Platform.Count("parse schema file failed, need to check it, strFileSchema:"));
    EXPECT_FALSE(m_Parser.ParseData(static_cast<E_CA_PARSE_JSON_STATUS>(2), "{}", m_nCount));
}
