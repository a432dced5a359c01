// What is told of a reply: statements in order, each with the operation of the log line that it rests on.
#include "rendering/Explain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "JsonText.h"
#include "parlo-api.h"
#include "session/LogTap.h"
#include "session/Refusal.h"

// One service for a test, which the replies go through in order.
class Explanation : public testing::Test
{
protected:
    Explanation()
    {
        unsetenv("PARLO_LOG");
        EXPECT_TRUE(ca_initial_service("test"));
    }
    ~Explanation() override { ca_uninitial(); }

    std::string Explained(std::string strText)
    {
        m_stCase = Case();
        m_info = {};
        CRefusal refusal;
        {
            const CLogTap tap([&](const LogLine& stLine) {
                refusal.Listen(stLine);
                m_stCase.vLog.push_back(stLine);
            });
            m_stCase.bAccepted = ca_get_speech_action("hi", strText, m_info);
        }
        m_stCase.strRefusal = refusal.Reason();
        m_stCase.strRefusalLine = refusal.Line();
        m_stCase.stReply = {"file", "hi", strText};
        m_stCase.pInfo = &m_info;
        return Explain(m_stCase, CPaint(false));
    }

    // The explanation without its heading, as "TITLE: STATEMENT @OPERATION; STATEMENT. TITLE: ...", with single quotes.
    std::string Told(const std::string& strText)
    {
        std::istringstream lines(Explained(strText));
        std::string strTold, strLine;
        std::getline(lines, strLine);
        EXPECT_EQ("file: \"hi\"", strLine);
        while (std::getline(lines, strLine)) {
            const std::size_t nIndent = strLine.find_first_not_of(' ');
            const std::size_t nFunction = strLine.find(": ", nIndent + 5) + 2;
            if (nIndent == 2)
                strTold += (strTold.empty() ? "[" : " [") + strLine.substr(2) + "]";
            else if (nIndent == 4)
                strTold += " " + strLine.substr(4) + ".";
            else
                strTold += " @" + strLine.substr(nFunction, strLine.find('(', nFunction) - nFunction);
        }
        std::replace(strTold.begin(), strTold.end(), '"', '\'');
        return strTold;
    }

    Case m_stCase;
    CADataRepository::_ConvActionInfo m_info;
};

// Replies, by the members of their "rsp", each above what is told of it: "[SECTION] STATEMENT. @OPERATION". A line that
// begins with a blank goes on with the one before it.
static const char kRows[] = R"(
'tvcontrol':[{'action':'volumeup','params':[{'amount':'7'},{'amount':5}]}]
  -> [command 1 of 1: 'volumeup'] 'params[0].amount' is a text, not an integer: ignored. @t_ParseTVControl the system
   action lookup answers: code 12. @GetSystemAction parameters: '5'. @GetSystemAction
'tvcontrol':[{'action':'set_channel','params':[{'channels':[{'source_id':'S'}],'umd_channels':[7]}]}]
  -> [command 1 of 1: 'set_channel'] 'params[0].umd_channels[0]' is an integer, not an object: read as an empty one.
   @t_ParseTVControl the system action lookup has no answer for it. @GetSystemAction the channel lookup answers: code
   5. @GetSystemActionChannel parameters: 'S', ''. 2 channels in the record.
'tvcontrol':[{'action':'display_candidates','params':[{'names':['a']}]},{'action':'show_moreinfo'},
 {'intent':'search_title'}]
  -> [command 1 of 3: 'display_candidates'] ASKED 1 candidate in the record. [command 2 of 3: 'show_moreinfo'] the
   second action lookup answers: code 67. @Get2ndAction [command 3 of 3: ''] the intent lookup answers: code 5.
   @t_GetActionIntent
'tvcontrol':[{'action':'display_candidates'},{'action':'dance','intent':'x'}]
  -> [command 1 of 2: 'display_candidates'] ASKED [command 2 of 2: 'dance'] unknown word: no second action.
   @Get2ndAction its intent is absent or an unknown word: code 0. @t_GetActionIntent
'tvcontrol':[{'action':'volumeup'},{'action':'show_moreinfo'}]
  -> [command 1 of 2: 'volumeup'] the system action lookup answers: code 12. @GetSystemAction parameters: ''.
   @GetSystemAction a number is absent: its parameter is empty. @itoa [command 2 of 2: 'show_moreinfo'] not looked
   at: only channels or candidates of the first command ask for a second one.
'tvcontrol':[{'action':7,'intents':'x','params':{}},5]
  -> [command 1 of 2: ''] 'action' is an integer, not a text: ignored. 'intents' is an unknown key: ignored. 'params'
   is an object, not a list: ignored. @t_ParseTVControl unknown word: no lookup knows it, code 0. @GetSystemAction
   the record's kind is no match. @t_SetSpeechInfo [command 2 of 2: ''] the command is an integer, not an object:
   read as an empty one. @t_ParseTVControl not looked at: only channels or candidates of the first command ask for a
   second one.
'tvcontrol':[{'action':'muteon','params':[3,{'idx':1},{'index':1,'action':'muteoff'},{'channels':[4]}]}]
  -> [command 1 of 1: 'muteoff'] 'params[0]' is an integer, not an object: read as an empty one. @t_ParseTVControl
   'params[1].idx' counts only beside an integer 'index': ignored. @t_ParseTVControl 'params[2].index' only says that
   'idx' counts, which is no integer: position 0. @t_ParseTVControl 'params[3].channels[0]' is an integer, not an
   object: read as an empty one. @t_ParseTVControl the system action lookup answers: code 15. @GetSystemAction
'stats':'ok','domain':'x','dialog':{'dialog_seq':'1'},'system_sentence':7,MUTE
  -> [envelope] 'domain' is a text, not a list: ignored. 'stats' is an unknown key: ignored. 'system_sentence' is an
   integer, not a text: ignored. 'dialog.dialog_seq' is a text, not an integer: ignored. MUTED
'domain':[1,'a'],'system_sentence':'{Null}','nlu_info':{'dialog_type':'1','x':1},MUTE
  -> [envelope] 'nlu_info.dialog_type' is a text, not an integer: ignored. 'domain[0]' is an integer, not a text:
   ignored. [sentence] '{Null}' stands for no sentence: not
   stored. @t_ParseSearchServer MUTED
'system_sentence':'so','displaycontrol':7,MUTE
  -> [envelope] 'displaycontrol' is an integer, not a list: ignored. [sentence] not stored: there is a
   'displaycontrol' beside it. @t_ParseSearchServer MUTED [display control] it is an integer, not a list: ignored.
   @t_ParseDisplayControl
'displaycontrol':[{'action':'muteon','params':[{'index':'1'},6]},8,{'action':'record_livecontent','x':1},null],MUTE
  -> MUTED [display control] 'params[0].index' is a text, not an integer: ignored. 'params[1]' is an integer, not an
   object: read as an empty one. @t_ParseDisplayControl request 1: 'muteon', an unknown word, code -1; a later
   request replaces it: ignored. @SetDisplayControlResult request 2 is an integer, not an object: skipped.
   @t_ParseDisplayControl 'x' is an unknown key: ignored. @t_ParseDisplayControl request 3: 'record_livecontent'; it
   is in the record. @t_SetSpeechInfo request 4 is null, not an object: skipped. @t_ParseDisplayControl
'domain':['a','b'],'system_sentence':'so','displaycontrol':[{}],'tvcontrol':[{'action':'display_content'}],
 'tvcontent':[{'type':'movie'}]
  -> [sentence] not stored: there is a 'displaycontrol' beside it. @t_ParseSearchServer [command 1 of 1:
   'display_content'] two or more domains and display_content: a search hand-over, no lookup; the record gets the
   utterance and the whole reply. @t_IsContentsSearchAction [display control] request 1: '', an unknown word, code
   -1; it does not reach the record. @SetDisplayControlResult [contents] not read: a search hand-over carries the
   whole reply. @t_ParseSearchServer
PLAY,'tvcontent':[{'type':'movie','title':'M','year':'2'},{'title':'n'},{'type':'epg'},{'type':'app',
 'app_info':{'title':'A'}},{'type':'app'},{'type':'fitness'},7]
  -> PLAYED [content 1 of 7: movie 'M'] 'year' is a text, not an integer: ignored. @t_ParseSearchServer kept.
   @t_CheckPermit [content 2 of 7:  'n'] it has no type: dropped. @t_ParseSearchServer [content 3 of 7: epg '']
   unknown type: dropped. @t_ParseSearchServer [content 4 of 7: app 'A'] dropped: an app without an id.
   @t_ParseSearchServer [content 5 of 7: app ''] kept. @t_CheckPermit [content 6 of 7: fitness ''] refused: items of
   this type are not offered. @t_CheckPermit [content 7 of 7:  ''] it has no type: dropped. @t_ParseSearchServer
   [contents] the record's result list has 2 entries. @GetSAContentsList
PLAY,'tvcontent':[{'type':'movie','poster':{'images':{'url':'u','index':[]}}}]
  -> PLAYED [content 1 of 1: movie ''] the poster is not offered in size 57: size 0 taken, as no size stands first in
   its list. @t_ParsePoster kept. @t_CheckPermit [contents] the record's result list has 1 entry. @GetSAContentsList
MUTE,'tvcontent':[{'type':'movie'}]
  -> MUTED [content 1 of 1: movie ''] kept. @t_CheckPermit [contents] the action shows no contents: the record's
   result list stays empty.
PLAY,'tvcontent':[{'type':'movie','poster':{'images':{'url':'http://x.org//%d','index':[3,57]}}},{'type':'tvshow',
 'poster':{'images':{'url':'%s','index':[3]}}},{'type':'app','app_info':{'id':'i','premium_flag':'p',
 'poster':{'images4premium':{'url':'u','index':[59]}}}}]
  -> PLAYED [content 1 of 3: movie ''] the poster's address had a doubled slash: one taken out. @t_ParsePoster kept.
   @t_CheckPermit [content 2 of 3: tvshow ''] the poster is not offered in size 57: size 3 taken, the first one
   offered. @t_ParsePoster the poster's address is no template that can be filled: taken as it is. @t_ParsePoster
   kept. @t_CheckPermit [content 3 of 3: app ''] the poster has no preferred size for this type: size 59 taken, the
   first one offered. @t_ParsePoster kept. @t_CheckPermit [contents] the record's result list has 3 entries.
   @GetSAContentsList
'tvcontent':[{'type':'movie'}]
  -> [refused] it holds no TV control command. @GetSpeechActionData [content 1 of 1: movie ''] kept. @t_CheckPermit
   [contents] what was kept stays for the next reply, as this one is refused.
'tvcontrol':[{'action':'display_candidates'},{'action':'muteon'},{},{'intent':'search_title'}]
  -> [command 1 of 4: 'display_candidates'] ASKED no intent is looked up: that takes two or three commands.
   @t_GetActionIntent [command 2 of 4: 'muteon'] code 14 cannot be a second action: ignored. @Get2ndAction [command 3
   of 4: ''] not looked at: only a second command is, and with candidates the last intent of two or three. [command 4
   of 4: ''] not looked at: only a second command is, and with candidates the last intent of two or three.
)";

// What stands for longer text in the rows.
static const char* const kShort[][2] = {
    {"MUTED", "[command 1 of 1: 'muteon'] the system action lookup answers: code 14. @GetSystemAction"},
    {"PLAYED",
     "[command 1 of 1: 'play_content'] the system action lookup answers: code 23, there is no position. "
     "@GetSystemAction"},
    {"ASKED",
     "the system action lookup has no answer for it. @GetSystemAction the channel lookup has no answer for it. "
     "@GetSystemActionChannel the candidate lookup answers: code 55. @GetSystemActionCandidate parameters: 'hi', ''."},
    {"MUTE", "'tvcontrol':[{'action':'muteon'}]"},
    {"PLAY", "'tvcontrol':[{'action':'play_content'}]"}};

static std::string Lengthened(std::string strText)
{
    for (const auto& [szShort, szLong] : kShort)
        for (std::size_t n = 0; (n = strText.find(szShort)) != std::string::npos;)
            strText.replace(n, std::string(szShort).size(), szLong);
    return strText;
}

TEST_F(Explanation, SaysWhatBecameOfEachPartAndWhy)
{
    std::vector<std::pair<std::string, std::string>> vRows;
    std::istringstream lines(kRows);
    std::string strLine;
    std::getline(lines, strLine);
    while (std::getline(lines, strLine)) {
        if (strLine[0] != ' ')
            vRows.emplace_back(strLine, "");
        else if (strLine[1] != ' ')
            vRows.back().first += strLine.substr(1);
        else
            vRows.back().second += strLine.substr(strLine[2] == '-' ? 5 : 2);
    }
    EXPECT_EQ(18U, vRows.size());
    for (const auto& [strMembers, strTold] : vRows)
        EXPECT_EQ(Lengthened(strTold), Told(Reply(Lengthened(strMembers)))) << strMembers;
    EXPECT_EQ("[refused] it is not JSON, or beyond a limit. @t_ParseSearchServer", Told("{'rsp':{}"));
    EXPECT_EQ("[refused] it has no 'rsp'. @t_ParseSearchServer", Told("[1]"));
    EXPECT_EQ("[refused] the utterance or the reply is empty. @ParseDataFlow", Told(""));
}

// On the replies that the documents show.
TEST_F(Explanation, NamesOnlyLinesThatTheLogHolds)
{
    int nReplies = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PARLO_SOURCES "/examples/replies")) {
        std::ifstream file(entry.path());
        std::istringstream lines(Explained({std::istreambuf_iterator<char>(file), {}}));
        std::set<std::string> held;
        for (const LogLine& stLine : m_stCase.vLog) held.insert("      log: " + Shown(stLine.strLine));
        int nNamed = 0;
        for (std::string strLine; std::getline(lines, strLine);) {
            if (strLine.rfind("      ", 0) != 0) continue;
            ++nNamed;
            EXPECT_EQ(1U, held.count(strLine)) << entry.path() << strLine;
        }
        EXPECT_LT(0, nNamed) << entry.path();
        ++nReplies;
    }
    EXPECT_LE(10, nReplies);
}
