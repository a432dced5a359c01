// What is told of a reply: statements in order, each with the operation of the log line that it rests on.
#include "explaining/RenderExplanation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "CADataRepository/Vocabulary.h"
#include "JsonText.h"
#include "explaining/Render.h"
#include "findings/Description.h"
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
        m_stCase.strRefusal = refusal.Reason(strText);
        m_stCase.strRefusalLine = refusal.Line();
        m_stCase.stReply = {"file", "hi", strText};
        m_stCase.pInfo = &m_info;
        return Explain(m_stCase, CPaint(false));
    }

    // The explanation without its heading, as "[SECTION] STATEMENT. @OPERATION ...", with single quotes.
    std::string Told(const std::string& strText)
    {
        std::istringstream lines(Explained(strText));
        std::string strTold, strLine;
        std::getline(lines, strLine);
        EXPECT_EQ("file: \"hi\"", strLine);
        while (std::getline(lines, strLine)) {
            const std::size_t nIndent = strLine.find_first_not_of(' ');
            const std::size_t nFunction = strLine.find(": ", nIndent + 5) + 2;  // of a log line
            if (nIndent == 2)
                strTold += (strTold.empty() ? "[" : " [") + strLine.substr(2) + "]";
            else if (nIndent == 4 && strLine.compare(4, 2, "1:") == 0)
                strTold += " " + strLine.substr(6, strLine.find(": ", strLine.find(": ") + 2) - 6) + ".";
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

TEST_F(Explanation, SaysWhatBecameOfEachPartAndWhy)
{
    std::ifstream file(PARLO_TEST_DATA "/explanations.txt");
    int nRows = 0;
    for (std::string strReply, strTold; std::getline(file, strReply);) {
        if (strReply.empty() || strReply.front() == '#') continue;
        std::getline(file, strTold);
        EXPECT_EQ(strTold, "  " + Told(strReply.front() == '\'' ? Reply(strReply) : Quoted(strReply.substr(1))))
            << strReply;
        ++nRows;
        const std::string strWhole = Explain(m_stCase, CPaint(false));
        m_stCase.stReply.strText.clear();
        m_stCase.pInfo = nullptr;
        std::istringstream alone(Explain(m_stCase, CPaint(false)));
        for (std::string strLine; std::getline(alone, strLine);) {
            const bool bHeld = strLine.rfind("      log: ", 0) != 0 || strWhole.find(strLine) != std::string::npos;
            EXPECT_TRUE(bHeld) << "from the log alone" << strLine;
        }
    }
    EXPECT_LE(30, nRows);
}

// What is said of each kind of content item is what becomes of one.
TEST_F(Explanation, KindsAreOfferedAndShownAsDescribed)
{
    const std::string strKeys =
        "'id':'i','title':'called','premium_flag':'s','poster':{'images':{'url':'u%d.jpg','index':[1,57]}}";
    for (std::size_t i = 0; i < Description::kItem.nKinds; ++i) {
        const auto& [szType, pObject, bOffered, nSize] = Description::kItem.pKinds[i];
        SCOPED_TRACE(szType);
        Explained(Reply("'tvcontrol':[{'action':'play_content'}],'tvcontent':[{'type':'" + std::string(szType) + "'," +
                        strKeys + ",'app_info':{" + strKeys + "}}]"));
        EXPECT_EQ(bOffered, m_info.vSAContents.size() == 1);
        const std::string strShown = RenderRecord(m_stCase.stReply, m_info, CPaint(false));
        for (const char* szPart : {"  called  ", nSize == 57 ? "  u57.jpg" : "  u1.jpg"})
            EXPECT_EQ(bOffered, strShown.find(szPart) != std::string::npos) << strShown;
        for (const LogLine& stLine : m_stCase.vLog)
            EXPECT_TRUE(szType == "apps" || stLine.strMessage.find("unknown type") == std::string::npos)
                << "_ContentsItem::GetPrintString";
    }
}

// The log tells the parameters of every system action, but "gb_function".
TEST_F(Explanation, EveryParameterIsToldFromTheLog)
{
    for (const auto& [szWord, eCode] : CADataRepository::kActionWords) {
        const CADataRepository::ActionRow stRow = CADataRepository::ActionOf(eCode);
        const std::string strKey = stRow.vKeys[0] == nullptr ? "gb_function" : stRow.vKeys[0];
        if (stRow.eLookup != CADataRepository::ActionLookup::SYSTEM || strKey == "gb_function") continue;
        bool bTold = false;
        for (const char* szValue : {"7", "'7'"}) {
            Explained(Reply("'tvcontrol':[{'action':'" + std::string(szWord) + "','params':[{'index':0,'" + strKey +
                            "':" + szValue + "}]}]"));
            m_stCase.pInfo = nullptr;
            bTold = bTold || Explain(m_stCase, CPaint(false)).find("parameters: \"7\"") != std::string::npos;
        }
        EXPECT_TRUE(bTold) << szWord << ": the log does not tell " << strKey;
        if (strKey == "idx") continue;  // an action without a position is another one, or has no parameter
        Explained(Reply("'tvcontrol':[{'action':'" + std::string(szWord) + "'}]"));
        m_stCase.pInfo = nullptr;
        EXPECT_NE(std::string::npos, Explain(m_stCase, CPaint(false)).find("parameters: \"\"")) << szWord;
    }
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
