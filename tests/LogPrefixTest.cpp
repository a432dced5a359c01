// What log readers put before a line.
#include <gtest/gtest.h>

#include <string>

#include "log/LogPrefix.h"

TEST(LogPrefix, IsTakenApart)
{
    // The line; its kind; time|process|thread|priority|message.
    const char* const kRows[][3] = {
        {"11-25 10:00:00.123  1234  1235 E ParloAPI: A: f(1) > m", "ours",
         "11-25 10:00:00.123|1234|1235|E|A: f(1) > m"},
        {"11-25 10:00:00.123  1234  1235 D ParloAPI  : A: f(1) >", "ours", "11-25 10:00:00.123|1234|1235|D|A: f(1) >"},
        {"E/ParloAPI( 1234): A: f(1) > m", "ours", "|1234||E|A: f(1) > m"},
        {"11-25 10:00:00.1+0900 E/ParloAPI(P 1, T 2): A: f(1) > ", "ours", "11-25 10:00:00.1+0900|1|2|E|A: f(1) > "},
        {"Nov 25 10:00:00 tv app[99]: ParloAPI: A: f(1) > m", "ours", "Nov 25 10:00:00|99|||A: f(1) > m"},
        {"2026-11-25T10:00:00.1Z tv app[99]: E ParloAPI: A: f(1) > m", "ours",
         "2026-11-25T10:00:00.1Z|99||E|A: f(1) > m"},
        {"[11-25 10:00:00] ParloAPI A: f(1) > m", "ours", "11-25 10:00:00||||A: f(1) > m"},
        {"\033[31mE ParloAPI: A: f(1) > m\033[0m", "ours", "|||E|A: f(1) > m\033[0m"},
        {"x ParloAPI[7]: E ParloAPI: A: f(1) > m", "ours", "|7||E|A: f(1) > m"},
        {"E ParloAPI: no form", "tagged", "|||E|no form"},
        {"E ParloAPI:   A: f(x) > m", "tagged", "|||E|  A: f(x) > m"},
        {"E ParloAPI2: A: f(1) > m", "unknown", ""},
        {"E MyParloAPI: A: f(1) > m", "unknown", ""},
        {"CAService: f(1) > m", "bare", ""},
        {"Other: f(1) > m", "unknown", ""},
        {"I/Other( 7): m", "foreign", ""},
        {"11-25 10:00:00.1 7 8 I Other: m", "foreign", ""},
        {"12,", "unknown", ""},
        {"1.5", "unknown", ""},
        {"\t\"10:00:00\"", "unknown", ""},
        {"", "unknown", ""}};
    for (const auto& [szLine, szKind, szParts] : kRows) {
        constexpr const char* kKinds[] = {"ours", "tagged", "bare", "foreign", "unknown"};
        LogPrefix stPrefix;
        EXPECT_STREQ(szKind, kKinds[static_cast<int>(RecognisePrefix(szLine, stPrefix))]) << szLine;
        if (*szParts == '\0') continue;
        EXPECT_EQ(szParts, stPrefix.strTime + '|' + stPrefix.strProcess + '|' + stPrefix.strThread + '|' +
                               std::string(stPrefix.cPriority != '\0' ? 1 : 0, stPrefix.cPriority) + '|' +
                               std::string(szLine).substr(stPrefix.nLength))
            << szLine;
    }
}
