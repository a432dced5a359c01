// From a log back to the calls and replies: logs that the library really wrote, in every form in which readers show
// them, whole and damaged.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Printable.h"
#include "log/LogCalls.h"
#include "log/LogReplay.h"
#include "parlo-api.h"

namespace
{

using Records = std::vector<LogLine>;

std::string Command(const std::string& strAction, const std::string& strMore = "")
{
    return R"({"rsp":{"domain":["tvcontrol"],"tvcontrol":[{"action":")" + strAction + "\"}]" + strMore + "}}";
}

// Every way through the library, among them texts that are hard on a log.
const std::vector<std::string> kReplies = {
    Command("muteon"),
    "{\n  \"rsp\": {\r\n\t\"system_sentence\": \"a\\nb \\\\n \xC3\xA9\xFF\",\n\t\"tvcontrol\": [{\n\"action\": "
    "\"set_channel\"}]\n}\n}\n",
    R"({"rsp":{"domain":["a","b"],"tvcontrol":[{"action":"display_content"}],"tvcontent":[{"type":"movie"}]}})",
    Command("search_failed"),
    Command("nonsense\\n[31m."),
    R"({"rsp":{"domain":["left","behind"]}})",
    R"({"rsp":{"tvcontrol":[{"action":"display_candidates"}]}})",
    R"({"rsp":{"stat":"fail","err":{"code":"E1","msg":"busy"}}})",
    "no JSON",
    Command("muteoff", ",\"x\":\"" + std::string(2000, 'x') + "\""),
};

// What the library logs of a life with these replies.
Records Logged(const std::vector<std::string>& vReplies, bool bStatus = true)
{
    Records vRecords;
    const CLogTap tap([&vRecords](const LogLine& stLine) { vRecords.push_back(stLine); });
    EXPECT_TRUE(ca_initial_service("test"));
    if (bStatus) ca_get_conv_status();
    for (std::string strReply : vReplies) {
        CADataRepository::_ConvActionInfo info;
        ca_get_speech_action("hi", strReply, info);
    }
    ca_uninitial();
    return vRecords;
}

std::string Coloured(const LogLine& stLine, const std::string& strEscape)
{
    return stLine.strLine + strEscape + (stLine.nPriority == 6 ? "[31m" : "[34m");
}

std::string Letter(const LogLine& stLine)
{
    return stLine.nPriority == 6 ? "E" : "D";
}

std::string Threadtime(const LogLine& stLine, const char* szIds = "1234  1235")
{
    return std::string("11-25 10:00:00.123  ") + szIds + ' ' + Letter(stLine) +
           " ParloAPI: " + Coloured(stLine, "\033") + '\n';
}

std::string Repeated(const LogLine& stLine)
{
    std::string strLines = Threadtime(stLine);
    const std::string strPrefix = strLines.substr(0, strLines.find("ParloAPI: ") + 10);
    for (std::size_t n = strLines.find('\n'); n + 1 < strLines.size(); n = strLines.find('\n', n + 1))
        strLines.insert(n + 1, strPrefix);
    return strLines;
}

using Form = std::function<std::string(const LogLine&)>;
const std::pair<const char*, Form> kForms[] = {
    {"threadtime", [](const LogLine& l) { return Threadtime(l); }},
    {"brief, no colours", [](const LogLine& l) { return Letter(l) + "/ParloAPI( 1234): " + l.strLine + '\n'; }},
    {"colours as text, CRLF",
     [](const LogLine& l) {
         return "11-25 10:00:00.123+0900 " + Letter(l) + "/ParloAPI(P 1234, T 1235): " + Coloured(l, "^[") + "\r\n";
     }},
    {"journal",
     [](const LogLine& l) {
         return "Nov 25 10:00:00 tv voice[1234]: " + Letter(l) + " ParloAPI: " + Coloured(l, "\\x1B") + '\n';
     }},
    {"bare", [](const LogLine& l) { return Coloured(l, "\033") + '\n'; }},
    {"the substitute",
     [](const LogLine& l) { return Letter(l) + " ParloAPI: " + Host::Printable(l.strLine, "\\") + '\n'; }},
    {"prefix repeated", Repeated}};

std::string Text(const Records& vRecords, const Form& form, const std::string& strForeign = "")
{
    std::string strText;
    for (const LogLine& stLine : vRecords) strText += strForeign + form(stLine);
    return strText;
}

struct Told {
    std::string strWords;  // "reply muteon, code 14 [same]"
    std::string strReply;
    std::vector<std::string> vMissing;
    Comparison stReplayed;
    std::string strShort;  // "reply unknown gaps 3!"
};

std::string Short(const LogCall& call)
{
    const CLogReply::State eState = call.reply.GetState();
    std::string strShort = std::string(NameOf(call.digest.Kind())) + ' ' + call.digest.Words();
    if (eState != CLogReply::State::NONE) strShort += std::string(" ") + NameOf(eState) + ' ';
    if (eState == CLogReply::State::WHOLE)
        strShort += call.reply.Text();
    else if (eState != CLogReply::State::NONE)
        strShort += std::to_string(call.reply.Text().size());
    return strShort + (call.Missing().empty() ? "" : "!");
}

// With `nFile` the log is two files, of which the first has so many bytes.
std::vector<Told> Read(const std::string& strLog, std::size_t nPart = 1000, std::size_t nFile = 0)
{
    constexpr const char* kResults[] = {"same", "missing", "differs", "not compared"};
    std::vector<Told> vTold;
    CLogReplay replay;
    CLogCalls calls(
        [&](LogCall& call) {
            Told stTold{"", call.reply.Text(), call.Missing(), replay.Run(call), Short(call)};
            stTold.strWords = std::string(NameOf(call.digest.Kind())) + ' ' + call.digest.Words() + " [" +
                              kResults[static_cast<int>(stTold.stReplayed.eResult)] + ']';
            vTold.push_back(std::move(stTold));
        },
        true);
    CLogReader reader([&calls](const LogTextLine& stLine) { return calls.Take(stLine); });
    for (const std::string& strFile : {strLog.substr(0, nFile), strLog.substr(nFile)}) {
        reader.BeginFile("log");
        for (std::size_t n = 0; n < strFile.size(); n += nPart) reader.Feed(std::string_view(strFile).substr(n, nPart));
        reader.EndFile();
    }
    calls.End();
    return vTold;
}

std::string Words(const std::vector<Told>& vTold)
{
    std::string strWords;
    for (const Told& stTold : vTold) strWords += stTold.strWords + '\n';
    return strWords;
}

class Log : public testing::Test
{
protected:
    Log()
    {
        for (const char* szName : {"PARLO_COUNTRY", "PARLO_LANGUAGE", "PARLO_VOICE_RECOG", "PARLO_LOG"})
            unsetenv(szName);
    }
};

}  // namespace

TEST_F(Log, IsTheSameInEveryForm)
{
    const Records vRecords = Logged(kReplies);
    const std::string kForeign[] = {"", "11-25 10:00:00.1 7 8 I Other: ParloAPI is up\nI/Other( 7): a\n"};
    for (const auto& [szForm, form] : kForms) {
        for (const std::string& strForeign : kForeign) {
            if (!strForeign.empty() && szForm == std::string("bare")) continue;
            SCOPED_TRACE(szForm + strForeign);
            for (const std::size_t nPart : {std::size_t{1}, std::size_t{1000000}}) {
                const std::vector<Told> vTold = Read(Text(vRecords, form, strForeign), nPart);
                EXPECT_EQ(
                    "start done [same]\nstatus done [same]\nreply muteon, code 14 [same]\n"
                    "reply set_channel, code 5 [same]\nreply search hand-over [same]\nreply failed search [same]\n"
                    "reply nonsense\n[31m., code 0 [same]\n"
                    "reply refused: it holds no TV control command [same]\n"
                    "reply display_candidates, code 55 [same]\n"
                    "reply refused: the server reported error E1: busy [same]\n"
                    "reply refused: it is not JSON, or beyond a limit [same]\n"
                    "reply muteoff, code 15 [same]\nstop done [same]\n",
                    Words(vTold));
                for (std::size_t i = 0; i < kReplies.size() && i + 2 < vTold.size(); ++i)
                    EXPECT_EQ(kReplies[i], vTold[i + 2].strReply);
                for (const Told& stTold : vTold) EXPECT_TRUE(stTold.vMissing.empty()) << stTold.strWords;
            }
        }
    }
}

// Whatever is lost, a call that counts as whole has the reply's bytes, and a call that lost a line is not said to be
// the same.
TEST_F(Log, WithEveryTenthLineLostTellsTheWholeCallsAndWhatTheOthersLack)
{
    const Records vRecords = Logged(kReplies);
    for (std::size_t nLost = 0; nLost < 10; ++nLost) {
        std::string strLog;
        std::size_t nReply = 0;
        std::map<std::size_t, bool> mapHurt;  // by reply
        for (std::size_t i = 0; i < vRecords.size(); ++i) {
            nReply += vRecords[i].strFunction == "ca_get_speech_action" &&
                      vRecords[i].strMessage == "get action from json package";
            if (i % 10 == nLost)
                mapHurt[nReply] = true;
            else
                strLog += Threadtime(vRecords[i]);
        }
        std::size_t nSame = 0;
        for (const Told& stTold : Read(strLog)) {
            const auto reply = std::find(kReplies.begin(), kReplies.end(), stTold.strReply);
            const bool bSame = stTold.stReplayed.eResult == Comparison::Result::SAME;
            EXPECT_NE(Comparison::Result::DIFFERS, stTold.stReplayed.eResult) << stTold.stReplayed.strSet;
            if (stTold.strReply.empty() || !stTold.vMissing.empty()) continue;
            ASSERT_NE(kReplies.end(), reply) << nLost;
            const bool bHurt = mapHurt[static_cast<std::size_t>(reply - kReplies.begin()) + 1];
            EXPECT_EQ(!bHurt, bSame) << nLost << ' ' << stTold.strWords;
            nSame += bSame;
        }
        EXPECT_EQ(static_cast<std::size_t>(std::count_if(
                      mapHurt.begin(), mapHurt.end(), [](const auto& hurt) { return hurt.second && hurt.first > 0; })),
                  kReplies.size() - nSame);
    }
}

TEST_F(Log, SaysWhatOfAReplyIsThere)
{
    const std::string strEmpty = Command("muteon", ",\"x\":\"\"");
    const auto Long = [&](std::size_t nSize) {
        return Command("muteon", ",\"x\":\"" + std::string(nSize - strEmpty.size(), 'x') + '"');
    };
    struct {
        std::string strReply;
        std::size_t nBytes;
        const char* szMissing;
        Comparison::Result eResult;
    } const kRows[] = {
        {Long(499), 499, "", Comparison::Result::SAME},
        {Long(500), 500, "", Comparison::Result::SAME},
        {Long(501), 501, "", Comparison::Result::SAME},
        {Long(102499), 102499, "", Comparison::Result::SAME},
        {Long(102500), 102500, "", Comparison::Result::SAME},
        {Long(102501), 102500, "", Comparison::Result::NOT_COMPARED},
        {Long(300000), 102500, "", Comparison::Result::NOT_COMPARED},
        {std::string("{\0}", 3), 1, "2 bytes of the reply at offset 1", Comparison::Result::NOT_COMPARED},
        {Long(600).replace(520, 1, 1, '\0'), 520, "80 bytes of the reply at offset 520",
         Comparison::Result::NOT_COMPARED},
        {std::string(500, ' ') + "=================print all receive data", 539, "", Comparison::Result::SAME},
    };
    for (const auto& [strReply, nBytes, szMissing, eResult] : kRows) {
        for (const auto& [szForm, form] : kForms) {
            SCOPED_TRACE(szForm + std::to_string(strReply.size()));
            const std::vector<Told> vTold = Read(Text(Logged({strReply, kReplies[0]}, false), form));
            ASSERT_EQ(4U, vTold.size());
            EXPECT_EQ(strReply.substr(0, nBytes), vTold[1].strReply);
            EXPECT_EQ(szMissing, vTold[1].vMissing.empty() ? "" : vTold[1].vMissing.front());
            EXPECT_EQ(eResult, vTold[1].stReplayed.eResult);
            EXPECT_EQ("reply muteon, code 14 [same]", vTold[2].strWords);
        }
    }
}

TEST_F(Log, OfTwoProcessesIsAsOfEachAlone)
{
    // One leaves parts of a refused reply behind, which the other must not see.
    const Records vA = Logged({kReplies[5], kReplies[6], kReplies[9]}),
                  vB = Logged({kReplies[6], kReplies[5], kReplies[0]});
    std::string strA, strB, strBoth;
    for (std::size_t i = 0; i < std::max(vA.size(), vB.size()); ++i) {
        const std::string strLineA = i < vA.size() ? Threadtime(vA[i], "1 1") : "";
        const std::string strLineB = i < vB.size() ? Threadtime(vB[i], "2 2") : "";
        strA += strLineA;
        strB += strLineB;
        strBoth += strLineA + strLineB;
    }
    const auto Sorted = [](std::vector<Told> vTold) {
        std::sort(vTold.begin(), vTold.end(), [](const Told& a, const Told& b) { return a.strWords < b.strWords; });
        return Words(vTold);
    };
    std::vector<Told> vAlone = Read(strA);
    for (Told& stTold : Read(strB)) vAlone.push_back(std::move(stTold));
    EXPECT_EQ(Sorted(vAlone), Sorted(Read(strBoth)));
    EXPECT_EQ(std::string::npos, Words(vAlone).find("differs"));
}

TEST_F(Log, ReplayShowsTheFirstDifference)
{
    // A change of the log; the call that it hurts; the set's line and the one here.
    struct {
        const char* szFrom;
        const char* szTo;
        const char* szSet;
        const char* szHere;
    } const kRows[] = {{"eControl:14", "eControl:15", "> eControl:15", "> eControl:14"},
                       {"strAction = muteon", "strAction = mute", "> strAction = mute", "> strAction = muteon"},
                       {"TAG_RSP", "TAG_RSP2", "> TAG_RSP2", "> TAG_RSP"},
                       {"CAService: t_IsContents", "CAOther: t_IsContents", "CAOther: t_Is", "CAService: t_Is"},
                       {"m_strAppName:test", "m_strAppName:other", "", ""},  // the set's name is used
                       {"GetSystemAction(", "GetSystemAction(9", "", ""},    // so is any version's line number
                       {"GetData return:1", "GetData return:7", "", ""},     // and what the television answered
                       {"US", "KR", "", ""}};
    const std::string strLog = Text(Logged({kReplies[0]}), kForms[0].second);
    for (const auto& [szFrom, szTo, szSet, szHere] : kRows) {
        SCOPED_TRACE(szTo);
        std::string strChanged = strLog;
        for (std::size_t n = 0; (n = strChanged.find(szFrom, n)) != strLog.npos; n += std::string(szTo).size())
            strChanged.replace(n, std::string(szFrom).size(), szTo);
        ASSERT_NE(strLog, strChanged);
        Comparison stWorst{Comparison::Result::SAME, "", "", "", 0};
        for (const Told& stTold : Read(strChanged))
            if (stTold.stReplayed.eResult != Comparison::Result::SAME) stWorst = stTold.stReplayed;
        EXPECT_EQ(*szSet == '\0' ? Comparison::Result::SAME : Comparison::Result::DIFFERS, stWorst.eResult)
            << stWorst.strSet << stWorst.strHere;
        EXPECT_NE(std::string::npos, stWorst.strSet.find(szSet)) << stWorst.strSet;
        EXPECT_NE(std::string::npos, stWorst.strHere.find(szHere)) << stWorst.strHere;
    }
}

TEST_F(Log, SettingsComeFromItsOwnLines)
{
    const char* const kRows[][4] = {{"KR", "ko_KR", "1", "--country KR --language ko_KR --voice-recog 1"},
                                    {"none", "en_US", "1", "--country none --language en_US --voice-recog 1"},
                                    {"", "none", "1", "--country  --language none --voice-recog 1"},
                                    {"JP", "en_US", "1", "--country JP --voice-recog 1"},
                                    {"US", "en_US", "0", "--voice-recog 0"},
                                    {"US", "en_US", "none", "--voice-recog none"}};
    for (const auto& [szCountry, szLanguage, szVoice, szOptions] : kRows) {
        setenv("PARLO_COUNTRY", szCountry, 1);
        setenv("PARLO_LANGUAGE", szLanguage, 1);
        setenv("PARLO_VOICE_RECOG", szVoice, 1);
        SetValues stSet;
        const Records vRecords = Logged({});
        for (const LogLine& stLine : vRecords) stSet.Listen(stLine);
        EXPECT_EQ(szOptions, stSet.Options());
        for (const char* szName : {"PARLO_COUNTRY", "PARLO_LANGUAGE", "PARLO_VOICE_RECOG"}) unsetenv(szName);
        EXPECT_EQ("start done [same]\nstatus done [same]\nstop done [same]\n",
                  Words(Read(Text(vRecords, kForms[5].second))));
    }
}

TEST_F(Log, ThatBeginsOrEndsInTheMiddleIsToldAsFarAsItGoes)
{
    const Records vRecords = Logged({kReplies[9]}, false);
    for (std::size_t nFirst = 0; nFirst < vRecords.size(); ++nFirst) {
        for (const bool bFront : {true, false}) {
            const auto middle = vRecords.begin() + static_cast<std::ptrdiff_t>(nFirst);
            const Records vPart = bFront ? Records(vRecords.begin(), middle) : Records(middle, vRecords.end());
            for (const Told& stTold : Read(Text(vPart, kForms[0].second))) {
                EXPECT_NE(Comparison::Result::DIFFERS, stTold.stReplayed.eResult) << nFirst << stTold.stReplayed.strSet;
                EXPECT_TRUE(!stTold.vMissing.empty() || stTold.strReply.empty() || stTold.strReply == kReplies[9]);
            }
        }
    }
}

// Each line of its own: nothing is told that the log does not say.
TEST_F(Log, IsToldOnlyAsFarAsItsLinesGo)
{
    // '%' stands for a threadtime prefix, '&' for one of another process, '$' for the size's line up to the number.
    const auto Filled = [](std::string strLog) {
        const std::pair<char, const char*> kMarks[] = {
            {'$', "%CAUtil: PrintRcvData(1) > ###########strRawData############(print max length:50KB; actural size:"},
            {'%', "11-24 18:42:03.118  1480  1502 E ParloAPI: "},
            {'&', "11-24 18:42:03.118  2210  1502 E ParloAPI: "}};
        for (const auto& [cMark, szText] : kMarks)
            for (std::size_t n = 0; (n = strLog.find(cMark, n)) != std::string::npos; n += std::string(szText).size())
                strLog.replace(n, 1, szText);
        return strLog;
    };
    const std::string strPiece = "%CAUtil: PrintRcvData(1) > ";
    const std::string strForged = "{/*\n%parlo-api: ca_uninitial(1) > delete the thread\n%*/}";
    const std::string strStart = "%CAService: InitService(1) > m_strAppName:a\n%parlo-api: ca_initial_service(1) > ";
    const std::string strStatus = "parlo-api: ca_get_conv_status(1) > get action from json package\n";
    const std::string strEnd = "CAUtil: CompareCountryLanguage(1) > country[US], voice language[en_US]\n";
    const std::string strAction = "CAService: t_IsContentsSearchAction(1) > szAction[0]:";
    const std::string strCode = "CASystemActionMap: GetSystemAction(1) > eControl:12\n";
    const std::string strMute = R"({"rsp":{"tvcontrol":[{"action":"muteon"}]}})";
    const std::string strFull(500, 'x');
    const std::string strLong = "[ 11-24 18:42:03.118 7:8 E/ParloAPI ]\n";
    // The log; what each call is, its reply's state and bytes, and "!" when something is missing.
    const std::pair<std::string, std::string> kRows[] = {
        {"$3)\n%\n" + strPiece + "{  #012}", "reply unknown altered 8!\n"},
        {"$3)#012\n" + strPiece + "{\xC3\x82#012}", "reply unknown altered 5!\n"},
        {"$5)\n\n" + strPiece + "{\n    1\n    }\n", "reply unknown whole {\n1\n}!\n"},
        {"$3)\n%\n" + strPiece + "{\n&}\n%}\n", "reply unknown whole {\n}!\n"},
        {"$4)\n%\n" + strPiece + "{\n11-24 18:42:03.118  1480  1502 E ParloAPI:\n%}\n",
         "reply unknown whole {\n\n}!\n"},
        {"$54)\n%\n" + strPiece + strForged,
         "reply unknown whole {/*\nparlo-api: ca_uninitial(1) > delete the thread\n*/}!\n"},
        {"$97)\n\n" + strPiece + strForged + "\n", "reply unknown gaps 3!\nstop done\n"},
        {"$600)\n%\n" + strPiece + "{\n%CAParseJson: ParseData(1) > t_eStatus:0\n" + strPiece +
             "=================print all receive data================\n$2)\n%\n" + strPiece + "{}",
         "reply unknown gaps 1!\nreply unknown whole {}!\n"},
        {strStart + "initial succeed\n%CAService: InitService(1) > init service again, please check it!!\n"
                    "%parlo-api: ca_initial_service(1) > InitService failed\n",
         "start done\nstart refused: the service was there already\n"},
        {"%CAService: InitService(1) > m_strAppName:b\n" + strStart + "initial succeed\n",
         "start unknown!\nstart done\n"},
        {"[ 1.0] ParloAPI[7]: " + strStatus +
             "[ 1.0] ParloAPI[7]: CAUtil: GetCountry(1) > Countrycode is US\n"
             "[ 1.0] Wifi[9]: rssi\n[ 1.0] ParloAPI[7]: " +
             strEnd,
         "status done!\n"},
        {"E/ParloAPI: " + strAction + "volumeup\nW/Wifi    : rssi\nE/ParloAPI: " + strCode,
         "reply volumeup, code 12!\n"},
        {"%CASystemActionMap: GetSystemAction(1) > strAction = mute\non\n%" + strCode,
         "reply action unknown, code 12!\n"},
        {"%" + strAction + "set_channel\n%CASystemActionMap: GetSystemAction(1) > eControl:0\n", "reply unknown!\n"},
        {"%parlo-api: ca_uninitial(1) > delete the thread\n%parlo-api: ca_uninitial(1) > m_pCAService is NULL\n",
         "stop there was no service\n"},
        {"%CAUtil: PrintRcvData(1) > =================print all receive data================\n"
         "11-24 18:43:03.118  1480  1502 E ParloAPI: " +
             strCode,
         "reply unknown!\nreply action unknown, code 12!\n"},
        {"$3)\n\n" + strPiece + "{\n}\n}\n", "reply unknown altered 3!\n"},
        {"$8)\n%\033[31m\n" + strPiece + "{\033[31m\n%}\033[31m\n", "reply unknown whole {\033[31m\n}!\n"},
        {"$7)\n    \n" + strPiece + "{\n      1\n    }\n", "reply unknown whole {\n  1\n}!\n"},
        {"$9)\n    \n" + strPiece + "{\n     1\n    }\n", "reply unknown gaps 6!\n"},
        {"$2)\n%\n" + strPiece + "{}\n" + strPiece + "{}\n%" + strCode, "reply action unknown, code 12 whole {}!\n"},
        {"$1000)\n%\n" + strPiece + strFull + '\n' + strPiece + strFull + '\n',
         "reply unknown whole " + strFull + strFull + "!\n"},
        {"$29)\n%\n" + strPiece + "{\n%x\n11-24 18:42:03.118  1480  1502 D ParloAPI: CAUtil: GetCountry(1) > \n%}\n",
         "reply unknown gaps 3!\nstatus unknown!\n"},
        {"$43)\n%\n" + strPiece + strMute + "\n%" + strAction + "volumeup\n%" + strCode,
         "reply unknown whole " + strMute + "!\nreply volumeup, code 12!\n"},
        {"$43)\n%\n" + strPiece + strMute.substr(0, 30) + "\n%" + strAction + "muteon\n%" + strCode,
         "reply muteon, code 12 gaps 30!\n"},
        {"%CAService: t_IsContentsSearchAction(1) > domain[0]:a\n11-24 18:47:03.118  1480  1502 E ParloAPI: " + strCode,
         "reply unknown!\nreply action unknown, code 12!\n"},
        {strLong +
             "CAUtil: PrintRcvData(1) > ###########strRawData############(print max length:50KB; actural "
             "size:52)\n\n\n" +
             strLong + "CAUtil: PrintRcvData(1) > {\n" + strLong + "q: a(1) >\n\n}\n\n" + strLong + strStatus,
         "reply unknown whole {\n" + strLong + "q: a(1) >\n\n}!\nstatus unknown!\n"},
        {"11-24 18:42:03.118   5   5 I Up: q: ParloAPI: parlo-api: ca_uninitial(1) > delete the thread\n", ""},
    };
    for (const auto& [strLog, strTold] : kRows) {
        std::string strWords;
        for (const Told& stTold : Read(Filled(strLog))) strWords += stTold.strShort + '\n';
        EXPECT_EQ(Filled(strTold), strWords) << strLog;
    }
}

TEST_F(Log, WithEachLineTwiceOrQuotedOrOverTwoFilesIsTheSame)
{
    const Records vRecords = Logged(kReplies);
    const std::string strLog = Text(vRecords, kForms[0].second);
    const std::string strWords = Words(Read(strLog));
    std::string strTwice, strQuoted, strCarriages;
    for (std::size_t n = 0, nEnd = 0; n < strLog.size(); n = nEnd + 1) {
        nEnd = strLog.find('\n', n);
        const std::string strLine = strLog.substr(n, nEnd - n);
        strTwice += strLine + '\n' + strLine + '\n';
        strQuoted += "> " + strLine + '\n';
        strCarriages += strLine + "\r\r\n";
    }
    for (const std::string& strOther : {strTwice, strQuoted, strCarriages, "\xEF\xBB\xBF" + strLog})
        EXPECT_EQ(strWords, Words(Read(strOther))) << strOther.substr(0, 300);
    for (std::size_t n = strLog.find('\n'); n < strLog.size(); n = strLog.find('\n', n + 997))
        EXPECT_EQ(strWords, Words(Read(strLog, 1000, n + 1))) << n;
}

TEST_F(Log, BytesOfAnyKindAreSurvivedInBoundedMemory)
{
    const std::string strLong(300000, 'x');
    const std::string strPiece = "E ParloAPI: CAUtil: PrintRcvData(1) > ";
    std::string strThreads;
    for (int i = 0; i < 100; ++i) strThreads += "1:1 " + std::to_string(i) + " 1 E " + strPiece.substr(2) + "x\n";
    std::string strPieces;
    for (int i = 0; i < 300; ++i) strPieces += strPiece + strLong.substr(0, 600) + '\n';
    for (const std::string& strLog :
         {strLong, "\033[m\n" + strPieces, strPiece + strLong + '\n' + strLong, strThreads, strPieces,
          std::string(1000, '\0') + '\n',
          strPiece + "###########strRawData############(print max length:50KB; actural size:99999999999999999999)",
          strPiece + "###########strRawData############(print max length:50KB; actural size:-1)\n" + strPieces,
          strPiece + "###########strRawData############(print max length:50KB; actural size:5)\\n\n" + strPieces}) {
        for (const Told& stTold : Read(strLog)) {
            EXPECT_GE(102500U, stTold.strReply.size());
            EXPECT_FALSE(stTold.vMissing.empty());
        }
    }
}
