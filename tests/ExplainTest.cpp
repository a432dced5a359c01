// What is told of a reply: statements in order, each with the operation of the log line that it rests on.
#include "commands/Explain.h"

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
        m_stOutcome = Outcome();
        CRefusal refusal;
        {
            const CLogTap tap([&](const LogLine& stLine) {
                refusal.Listen(stLine);
                m_stOutcome.vLog.push_back(stLine);
            });
            m_stOutcome.bAccepted = ca_get_speech_action("hi", strText, m_stOutcome.info);
        }
        m_stOutcome.strRefusal = refusal.Reason();
        m_stOutcome.strRefusalLine = refusal.Line();
        return Explain({"file", "hi", strText}, m_stOutcome, CPaint(false));
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

    Outcome m_stOutcome;
};

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
    std::istringstream lines(DataFile("explanations.txt"));
    for (std::string strLine; std::getline(lines, strLine);) {
        if (strLine[0] == '#') continue;
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
        for (const LogLine& stLine : m_stOutcome.vLog) held.insert("      log: " + Shown(stLine.strLine));
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
