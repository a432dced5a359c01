// What log readers put before a line.
#include <gtest/gtest.h>

#include <string>

#include "log/LogReader.h"

namespace
{

const char* const kKinds[] = {"ours", "foreign", "unknown"};

// "ours 10:00|1234|1235|E|message"
std::string Told(CLogPrefixes& prefixes, const std::string& strLine)
{
    LogPrefix stPrefix;
    std::string strMessage;
    const LineKind eKind = prefixes.Recognise(strLine, true, stPrefix, strMessage);
    const std::string strKind = kKinds[static_cast<int>(eKind)];
    if (eKind != LineKind::OURS) return strKind;
    return strKind + ' ' + stPrefix.strTime + '|' + stPrefix.strProcess + '|' + stPrefix.strThread + '|' +
           stPrefix.strPriority + '|' + strMessage;
}

std::string Told(const std::string& strLine)
{
    CLogPrefixes prefixes;
    return Told(prefixes, strLine);
}

}  // namespace

TEST(LogPrefix, OfEachFormIsRecognised)
{
    for (const LogFormat& stFormat : kLogFormats) {
        SCOPED_TRACE(stFormat.szName);
        const std::string strExample = stFormat.szExample;
        const std::size_t nTag = strExample.find("ParloAPI");
        EXPECT_EQ(0U, Told(strExample).find("ours"));
        const std::string strOther = Told(std::string(strExample).replace(nTag, 8, "Wifi"));
        EXPECT_TRUE(strOther == "foreign" || (strOther == "unknown" && (strExample[0] == '@' || nTag == 2)))
            << strOther;
    }
}

TEST(LogPrefix, IsTakenApart)
{
    const char* const kRows[][2] = {
        {"11-25 10:00:00.123  1234  1235 E ParloAPI: A: f(1) > m", "ours 11-25 10:00:00.123|1234|1235|E|A: f(1) > m"},
        {"1448390523.118  1480  1502 D ParloAPI  : x", "ours 1448390523.118|1480|1502|D|x"},
        {"        3.118  1480  1502 D ParloAPI:", "ours 3.118|1480|1502|D|"},
        {"E/ParloAPI( 1234): A: f(1) > m", "ours |1234||E|A: f(1) > m"},
        {"E/ParloAPI  : m", "ours |||E|m"},
        {"E( 1234) A: f(1) > m  (ParloAPI)", "ours |1234||E|A: f(1) > m"},
        {"E( 1234) m  (Wifi)", "foreign"},
        {"E( 1234) m\r  (ParloAPI)", "ours |1234||E|m\r"},
        {"11-25 10:00:00.1+0900 E/ParloAPI(P 1, T 2): A: f(1) > ", "ours 11-25 10:00:00.1+0900|1|2|E|A: f(1) > "},
        {"[ 11-24 18:42:03.118  1480: 1502 E/ParloAPI ]", "ours 11-24 18:42:03.118|1480|1502|E|"},
        {"Nov 25 10:00:00 tv app[99]: ParloAPI: A: f(1) > m", "ours Nov 25 10:00:00|99|||A: f(1) > m"},
        {"<15>Nov  5 10:00:00 ParloAPI[9]: m", "ours Nov  5 10:00:00|9||15|m"},
        {"Wed 2026-11-25 10:00:00 UTC tv ParloAPI[9]: m", "ours 2026-11-25 10:00:00 UTC|9|||m"},
        {"2026-11-25T10:00:00.1Z tv app[99]: E ParloAPI: m", "ours 2026-11-25T10:00:00.1Z|99||E|m"},
        {"<11>1 2015-11-24T18:42:03Z tv app 1480 - [a b=\"x\"] ParloAPI: m", "ours 2015-11-24T18:42:03Z|1480||11|m"},
        {"[    1.5] ParloAPI[7]: m", "ours 1.5|7|||m"},
        {R"({"__REALTIME_TIMESTAMP":"5","_PID":"7","SYSLOG_IDENTIFIER":"ParloAPI","PRIORITY":"3","MESSAGE":[65,10,233]})",
         "ours 5|7||3|A\n\xE9"},
        {R"({"_PID":"7","SYSLOG_IDENTIFIER":"app","MESSAGE":"E ParloAPI: m"})", "ours |7|||m"},
        {R"({"_PID":"7","SYSLOG_IDENTIFIER":"app","MESSAGE":"no ParloAPI"})", "foreign"},
        {R"({"rsp":{"MESSAGE": "ParloAPI")", "unknown"},
        {"\033[38;5;9mE ParloAPI: A: f(1) > m\033[0m", "ours |||E|A: f(1) > m"},
        {"[11-25 10:00:00] ParloAPI A: f(1) > m", "ours ||||A: f(1) > m"},
        {"E ParloAPI: E ParloAPI: A: f(1) > m", "ours |||E|E ParloAPI: A: f(1) > m"},
        {"11-25 10:00:00.1 7 8 I Up: q: ParloAPI: A: f(1) > m", "foreign"},
        {"Nov 25 10:00:00 tv up[9]: q: ParloAPI: A: f(1) > m", "foreign"},
        {"E ParloAPI2: A: f(1) > m", "foreign"},
        {"I Up: q: ParloAPI: A: f(1) > m", "foreign"},
        {"?? ParloAPI: no form", "unknown"},
        {"12,", "unknown"},
        {"\t\"10:00:00\"", "unknown"},
        {"", "unknown"}};
    for (const auto& [szLine, szTold] : kRows) EXPECT_EQ(szTold, Told(szLine)) << szLine;

    CLogPrefixes prefixes;  // in a log of a known form none of an unknown one is ours
    EXPECT_EQ("ours |7||E|m", Told(prefixes, "E/ParloAPI(7): m"));
    EXPECT_EQ("ours |8||E|", Told(prefixes, "E/ParloAPI(8):"));
    EXPECT_EQ("ours |9||E|m", Told(prefixes, "E/ParloAPI(9): m"));
    EXPECT_EQ("unknown", Told(prefixes, "E/ParloAPI(9):m"));
    EXPECT_EQ("unknown", Told(prefixes, "[11-25 10:00:00] ParloAPI A: f(1) > m"));
}
