// Commands and display control: from "tvcontrol" and "displaycontrol" to the action record.
#include "Conversation.h"

using TVControl = Conversation;

TEST_F(TVControl, ParametersGoToTheirFields)
{
    m_Parser.t_ParseTVControl(ParsedJson(DataFile("every-key.json"))["rsp"]["tvcontrol"]);
    m_Parser.t_ParseTVControl(
        Parsed("[{'params':[{'index':3}]},{'params':[{'idx':3}]},{'params':[{'amount':7,'time':8,'names':"
               "['old'],'channels':[{}]},{'amount':9,'names':['n',2,{}],'channels':[{}]}]}]"));
    const std::vector<_TVControl>& v = Store().GetTVControl();
    const _TVControl& st = v.at(0);
    EXPECT_EQ((std::vector{11, 12, 13, 14, 15}),
              (std::vector{st.nAmount, st.nIndex, st.nPlaySpeed, st.nListOrder, st.nTime}));
    EXPECT_EQ(
        Words("direction gb_function type prevnext target_device target_status colorkey channel_no keyword website"),
        (Texts{st.szDirection, st.szGBFunction, st.szType, st.szPrevNext, st.szTargetDevice, st.szTargetStatus,
               st.szColorkey, st.szChannelNo, st.szKeyword, st.szWebsite}));
    EXPECT_EQ((std::vector{0, -1}), (std::vector{v.at(2).nIndex, v.at(3).nIndex})) << "marked by index, read from idx";
    EXPECT_EQ((std::vector{9, 8}), (std::vector{v.at(4).nAmount, v.at(4).nTime})) << "later objects overwrite";
    EXPECT_TRUE(v.at(4).vNames == (Texts{"n", "2", ""}) && v.at(4).vChannels.size() == 2);
}

// Each row of the table: action word, members of "params", code, parameters.
TEST_F(TVControl, ActionsAndTheirParameters)
{
    const Texts vRows = Words(DataFile("actions.txt"));
    for (std::size_t i = 0; i < vRows.size(); i += 4) {
        EXPECT_EQ(vRows[i + 2] + " " + vRows[i + 3], ActionOf(Command(vRows[i], vRows[i + 1]))) << vRows[i];
        EXPECT_EQ(vRows[i + 2] == "0" ? E_CA_ACTION_TYPE_NO_MATCH : E_CA_ACTION_TYPE_SYSTEM, m_stInfo.eActionType);
    }
    EXPECT_TRUE(Say(Command("volumedown")));
    EXPECT_EQ(Texts{""}, m_stInfo.vSystemActionParam) << "an absent number is an empty parameter";
}

TEST_F(TVControl, CandidatesAreTheNamesOrTheCastInDetail)
{
    EXPECT_EQ("46 [turn it up,]", ActionOf(Command("display_cast", "'names':['x','y']")));
    EXPECT_EQ((Texts{"x", "y"}), m_stInfo.vCandidates);
    EXPECT_EQ(1, g_Platform.Count("tv control error")) << "no intent for one command";
    const std::string strThree = "'tvcontrol':[{'action':'display_cast'},{'action':'show_moreinfo'},{'intent':'play'}";
    EXPECT_TRUE(Say(strThree + "]") && m_stInfo.e2ndAction == 67 && m_stInfo.eActionIntent == 1);
    EXPECT_TRUE(Say(strThree + ",{'intent':'play'}]") && m_stInfo.e2ndAction == 67 && m_stInfo.eActionIntent == 0);
    m_Parser.t_ParseContent(Parsed("{'casting':[{'name':'Ann'},{'name':5},{'name':'Bob'}]}"));
    EXPECT_EQ("43 [turn it up,]", ActionOf(Command("display_detailinfo_cast", "'names':['ignored']")));
    EXPECT_EQ((Texts{"Ann", "", "Bob"}), m_stInfo.vCandidates);
}

TEST_F(TVControl, SearchIsHandedOver)
{
    const Texts vRows = Words(R"(
        ['tvcontrol','search'] display_content handover   ['tvcontrol'] display_content action
        ['a','b','c'] display_content handover            [] display_content action
        ['tvcontrol'] search_failed failed                ['search'] search_failed action
        ['tvcontrol','search'] search_failed action       ['tvcontrol','x'] volumeup action)");
    for (std::size_t i = 0; i < vRows.size(); i += 3) {
        SCOPED_TRACE(vRows[i] + vRows[i + 1]);
        const bool bHandOver = vRows[i + 2] == "handover";
        const std::string strMembers = "'system_sentence':'hi','domain':" + vRows[i] + "," + Command(vRows[i + 1]) +
                                       ",'tvcontent':[],'nlu_info':{'dialog_type':1}";
        Store().m_stDialogOpen.nDialogType = 0;
        ASSERT_TRUE(Say(strMembers));
        EXPECT_EQ(bHandOver ? "" : "hi", m_stInfo.strSysResponse);
        EXPECT_EQ(bHandOver ? 0 : 1, Store().m_stDialogOpen.nDialogType) << "a hand-over is read no further";
        EXPECT_EQ(vRows[i + 2] == "action" ? vRows[i + 1] : "", m_stInfo.strFirstAction);
        EXPECT_EQ(bHandOver, m_stInfo.vSystemActionParam == Texts({"turn it up", Reply(strMembers)}));
    }
}

TEST_F(TVControl, DisplayControlSilencesTheSentence)
{
    for (const std::string strControl :
         {"[]", "[{'action':102}]", "{'action':'play_content'}", "[{'action':'Play'}]"}) {
        ASSERT_TRUE(Say("'system_sentence':'not spoken','displaycontrol':" + strControl + "," + Command("volumeup")));
        EXPECT_EQ("", m_stInfo.strSysResponse) << strControl;
        EXPECT_EQ(-1, m_stInfo.stDisCtrlInfo.nAction) << strControl;
    }
}
