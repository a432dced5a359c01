// The words of the server where a slip would hide; the table itself is include/CADataRepository/Vocabulary.h.
#include <map>
#include <set>

#include "CADataRepository/Vocabulary.h"
#include "Conversation.h"

class Vocabulary : public Conversation
{
protected:
    int FollowUp(const std::string& strWord) { return Ask("action", strWord), m_stInfo.e2ndAction; }
    int Intent(const std::string& strWord) { return Ask("intent", strWord), m_stInfo.eActionIntent; }
    bool Ask(const std::string& strKey, const std::string& strWord)
    {
        return Say("'tvcontrol':[{'action':'display_cast'},{'" + strKey + "':'" + strWord + "'}]");
    }
};

TEST_F(Vocabulary, EveryWordHasACodeOfItsOwn)
{
    std::map<int, int> words;
    std::set<int> followUps, showing;
    for (const auto& [szWord, eCode] : kActionWords) {
        const std::string strWord(szWord);
        ++words[eCode];
        followUps.insert(FollowUp(strWord));
        ASSERT_TRUE(Say(Command(strWord) + ",'tvcontent':[{'type':'movie'}]"));
        if (!m_stInfo.vSAContents.empty()) showing.insert(m_stInfo.eSystemAction);
        const std::size_t nOn = strWord.rfind("_on");
        if (nOn != strWord.size() - 3) continue;
        EXPECT_TRUE(Say(Command(strWord.substr(0, nOn) + "_off")) && m_stInfo.eSystemAction == eCode + 1) << szWord;
    }
    std::string strIntents;
    for (const auto& word : kIntentWords) strIntents += std::to_string(Intent(std::string(word.szWord))) + " ";
    EXPECT_EQ("1 5 6 7 8 9 10 11 12 13 14 ", strIntents);
    for (const char* szIntent : {"", "Play", "search_", "volumeup", "play\\u0000"}) EXPECT_EQ(0, Intent(szIntent));
    const std::set<int> reserved = {0, 23, 62, 63, 64, 66, 88, 89, 90, 91, 92, 93, 95};
    for (int nCode = 0; nCode <= 95; ++nCode)
        EXPECT_EQ(reserved.count(nCode) != 0 ? 0 : nCode == 31 ? 2 : 1, words[nCode]) << nCode;
    EXPECT_EQ((std::set<int>{0, 5, 22, 34, 36, 37, 67}), followUps);
    EXPECT_EQ((std::set<int>{23, 34, 35, 36, 37, 38, 55, 61}), showing);
}
