// What a caller's surroundings must not do to a reply: a small stack, another locale, replies without a command.
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <functional>
#include <locale>
#include <random>

#include "CAPlainNumbers.h"
#include "Conversation.h"

namespace
{

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kMostStack = std::size_t{2} << 20;  // the sanitizer keeps data of its own there
#else
constexpr std::size_t kMostStack = std::size_t{128} << 10;
#endif

// How much stack the call takes, in a thread that has twice what it may take.
std::size_t StackOf(std::function<void()> call)
{
    constexpr std::size_t kSize = 2 * kMostStack;
    constexpr char cUntouched = 0x5A;
    void* const pMemory = mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    char* const pStack = static_cast<char*>(pMemory);
    std::fill_n(pStack, kSize, cUntouched);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, pMemory, kSize);
    pthread_t thread{};
    const auto run = [](void* pCall) -> void* {
        (*static_cast<std::function<void()>*>(pCall))();
        return nullptr;
    };
    EXPECT_EQ(0, pthread_create(&thread, &attributes, run, &call));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const char* const pUsed = std::find_if(pStack, pStack + kSize, [](char c) { return c != cUntouched; });
    const auto nUsed = static_cast<std::size_t>(pStack + kSize - pUsed);
    munmap(pMemory, kSize);
    return nUsed;
}

std::string Repeated(std::size_t nTimes, const std::string& strText)
{
    std::string strResult;
    for (std::size_t i = 0; i < nTimes; ++i) strResult += strText;
    return strResult;
}

constexpr std::size_t kMostLevels = 128;

}  // namespace

class Failures : public Conversation
{
protected:
    // Whether the document could be read.
    bool IsRead(const std::string& strReply)
    {
        g_Platform.vLog.clear();
        SayRaw(strReply);
        m_Parser.ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, strReply, m_nCount);
        const int nErrors = g_Platform.Count("json parse error");
        return nErrors == 0;
    }
};

TEST_F(Failures, NestingTakesLittleStack)
{
    const struct {
        const char* szBegin;
        std::size_t nLevels;  // of what stands around the units
        const char* szOpen;
        const char* szClose;
        const char* szEnd;
    } kShapes[] = {{"{'rsp':{'x':", 2, "[", "]", "}}"},
                   {"{'rsp':{'x':", 2, "[1,2.5,", "]", "}}"},
                   {"{'rsp':{'x':", 2, "{'a':", "}", "}}"},
                   {"{'rsp':{'x':", 2, "{'a':1,'b':[", "]}", "}}"},
                   {"{'rsp':{'schema':", 2, "[{'rules':", "}]", "}}"},
                   {"{'rsp':{'tvcontrol':[{'action':'login','params':[", 5, "[", "]", "]}]}}"},
                   {"{'rsp':{'tvcontrol':[{'action':'login','params':[", 5, "{'a':", "}", "]}]}}"},
                   {"{'rsp':{'tvcontrol':[{'action':'login','params':[", 5, "[{'a':/**/", "}]", "]}]}}"},
                   {"{'rsp':{'tvcontrol':[{'action':'login','params':[", 5, "[1,{'a':2,'b':", "}]", "]}]}}"}};
    const std::string strLong(1000, 'x');
    for (const auto& [szBegin, nAround, szOpen, szClose, szEnd] : kShapes) {
        const auto nEach = static_cast<std::size_t>(std::string(szOpen).find('[') != std::string::npos) +
                           static_cast<std::size_t>(std::string(szOpen).find('{') != std::string::npos);
        const std::size_t nMost = (kMostLevels - nAround) / nEach;
        for (const std::size_t n : {nMost, nMost + 1, std::size_t{100000}}) {
            const std::string strOpened = Quoted(szBegin + Repeated(n, szOpen));
            const std::string strClosing = Quoted(Repeated(n, szClose) + szEnd);
            for (const std::string& strText : {strOpened + "1.5e3" + strClosing, strOpened + "\"" + strLong + "\"",
                                               strOpened + "?" + strClosing, strOpened}) {
                bool bRead = false;
                const std::size_t nStack = StackOf([&] { bRead = IsRead(strText); });
                EXPECT_LE(nStack, kMostStack) << szBegin << szOpen << " " << n;
                EXPECT_EQ(n == nMost && strText.size() > strOpened.size() + strClosing.size() + 1 &&
                              strText.find(strLong) == std::string::npos,
                          bRead)
                    << szBegin << szOpen << " " << n;
            }
        }
    }
}

TEST_F(Failures, OnlyNestingOfTheValueCounts)
{
    const std::string strDeep(1000, '[');
    for (const std::string& strText :
         Texts{"{'rsp':{'x':'" + strDeep + "'}}", "{'rsp':{'x':'\\\\\\'" + strDeep + "\\\\'}}", "{'" + strDeep + "':0}",
               "/*" + strDeep + "*/{'rsp':{}}//" + strDeep, "{'rsp'://" + strDeep + "\r{}}",
               "{'rsp':/*'*/{}/*'" + strDeep + "*/}", "{'rsp':{}}" + strDeep, "{'rsp':{}} // {\n x " + strDeep,
               "true " + strDeep, "'x'" + strDeep, "1.5" + strDeep})
        EXPECT_TRUE(IsRead(Quoted(strText))) << strText;
    for (const std::string& strText :
         Texts{"{'a':{},'rsp':" + std::string(200, '[') + std::string(200, ']') + "}",
               "{'rsp':{'x':'\\\\'," + strDeep + "}}", "{'rsp':/**/" + strDeep + "}", "[}" + strDeep, "{]", "]",
               "{'rsp':[0}", "{'rsp':{}/", "{'rsp':{}/*", "{'rsp':'", "{'rsp':'\\", "{'rsp':1.", "{'rsp':-"})
        EXPECT_FALSE(IsRead(Quoted(strText))) << strText;
    EXPECT_TRUE(IsRead("{}" + std::string(100000, '/')));
    std::string strNul = "{\"rsp\":{\"x\":\"#\"}}";
    strNul[strNul.find('#')] = '\0';
    EXPECT_TRUE(IsRead(strNul));
    EXPECT_FALSE(IsRead(strNul + std::string(1, '\0') + "x") && IsRead(std::string(1, '\0') + strNul));
}

// Any text that begins like a number: it is read as the JSON library reads it in the classic locale, or refused.
TEST_F(Failures, NumbersAreTheSameInEveryLocale)
{
    g_Platform.bKeepLog = false;
    Texts vNumbers = {"5.0",
                      "1.500",
                      "-0.0",
                      "1.e5",
                      "-.5",
                      "-.",
                      "-",
                      "1.5e",
                      "1.5e+",
                      "1.5E-3",
                      "1.5e+3",
                      "1e999",
                      "1.0e999",
                      "0.1",
                      "1.5e9999999999999999999999",
                      "1234567.25",
                      "1e5",
                      "4.9406564584124654e-324",
                      "2.4703282292062327e-324",
                      "1.7976931348623157e308",
                      "0." + std::string(400, '0') + "1e401",
                      std::string(400, '9') + ".5e-390",
                      "123456789012345678901234567890",
                      "9007199254740993.0",
                      "0.1000000000000000055511151231257827"};
    std::mt19937 random(5);
    for (int i = 0; i < 4000; ++i) {
        std::string strNumber(1, "0123456789-"[random() % 11]);
        while (random() % 6 != 0) strNumber += "0012345678999...eE+-"[random() % 20];
        vNumbers.push_back(strNumber);
    }
    const std::locale before;
    for (const bool bOdd : {false, true}) {
        for (const std::string& strNumber : vNumbers) {
            const std::string strReply = Reply(Command("display_candidates", "'names':[" + strNumber + "]"));
            const Json::Value root = ParsedJson(strReply);
            std::locale::global(bOdd ? OddLocale() : before);
            const bool bResult = SayRaw(strReply);
            ASSERT_EQ(!root.isNull(), bResult) << strNumber;
            if (!bResult) continue;
            const CAPlainNumbers plain;
            const Json::Value& names = root["rsp"]["tvcontrol"][0]["params"][0]["names"];
            ASSERT_TRUE(names.size() == 1 && m_stInfo.vCandidates == Texts{names[0].asString()}) << strNumber;
        }
    }
    std::locale::global(before);
}

TEST_F(Failures, WhatWaitsForACommandIsBounded)
{
    const auto items = [](std::size_t n) { return "'tvcontent':[" + Repeated(n, "{'type':'movie'},") + "0]"; };
    const std::string strError = "too much content waits for a command, the oldest is dropped: ";
    EXPECT_FALSE(Say("'tvcontent':[{'type':'app'}]"));
    EXPECT_FALSE(Say(items(CCADataHandler::kMostWaiting - 1)));
    EXPECT_TRUE(Say(Command("play_content") + "," + items(5000)) && m_stInfo.vSAContents.size() == 9096);
    EXPECT_EQ("app movie", m_stInfo.vSAContents[0].stItem.szType + " " + m_stInfo.vSAContents[1].stItem.szType);
    EXPECT_EQ(0, g_Platform.Count(strError + "4096 items"));

    EXPECT_FALSE(Say(items(4097)));
    EXPECT_FALSE(Say("'system_sentence':'no content: nothing is dropped'"));
    EXPECT_TRUE(Say(Command("play_content") + ",'tvcontent':[{'type':'app'}]"));
    EXPECT_EQ(1, g_Platform.Count(strError + "4097 items"));
    EXPECT_TRUE(m_stInfo.vSAContents.size() == 1 && m_stInfo.vSAContents[0].stItem.szType == "app");

    std::vector<_SAContents> vList;
    EXPECT_FALSE(Say(items(4097)));
    Store().GetSAContentsList(vList);
    g_Platform.vLog.clear();
    Store().ExpectContents(1);
    EXPECT_EQ("E ExpectContents: " + strError + "4097 items\n", Logged());
    Store().GetSAContentsList(vList);
    EXPECT_TRUE(vList.empty());
}
