// The way of a reply through the library, and why it was refused.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "parlo-api.h"
#include "session/Refusal.h"
#include "session/Session.h"
#include "text/Output.h"

using namespace CADataRepository;

TEST(Session, WhatFailsIsToldAndDoesNotEndTheConversation)
{
    const std::string strTurn = R"({"utterance":"u","reply":{"rsp":{"tvcontrol":[{"action":"muteon"}]}}})";
    const std::string strDialog = R"({"utterance":"v","reply":{"rsp":{"dialog":{"dialog_seq":4}}}})";
    const std::string strFile = testing::TempDir() + "parlo-turns-" + std::to_string(getpid());
    std::ofstream(strFile) << strTurn + "\n[\n" + strDialog + "\n" + strTurn;
    std::string strShown;
    const auto Show = [&strShown](const Case& stCase) {
        const std::string& strSource = stCase.stReply.strSource;
        strShown += strSource.substr(strSource.rfind(':')) + (stCase.bAccepted ? "=" : "!") +
                    (stCase.pInfo != nullptr ? std::to_string(stCase.pInfo->nDialogSeq) : "") + stCase.strRefusal;
        EXPECT_TRUE(stCase.vLog.empty()) << "kept although nobody asked for it";
    };
    testing::internal::CaptureStderr();
    EXPECT_FALSE(HasFailed());
    RunFiles({strFile, "/no:/such\033file"}, {FileForm::CONVERSATION}, Show);
    std::remove(strFile.c_str());
    const std::string strComplaint = "parlo: " + strFile;
    EXPECT_EQ(strComplaint + ":2 is refused: the line is not JSON.\n" + strComplaint +
                  ":3 is refused: it holds no TV control command.\n" +
                  "parlo: /no:/such\\x1Bfile cannot be read: No such file or directory.\n",
              testing::internal::GetCapturedStderr());
    EXPECT_TRUE(HasFailed());
    EXPECT_EQ(
        ":1=-1:2!the line is not JSON:3!-1it holds no TV control command:4=4"
        ":/such\033file!it cannot be read: No such file or directory",
        strShown);
}

TEST(Refusal, IsToldFromTheLinesOfTheLog)
{
    // Lines as FUNCTION:MESSAGE; "S:" stands for the reader of a reply. The reason; the line that it rests on.
    const std::string strStart = "S:Start to parse search server data.;", strRsp = strStart + "S:TAG_RSP;";
    const std::string strError = "the server reported error ", strNotSaid = "the library does not say why|";
    for (const std::string& strRow :
         {"a:b|" + strNotSaid,
          "a:strPreAllResult is empty() or|the utterance or the reply is empty|a:strPreAllResult is empty() or" +
              std::string(),
          strStart + "x:y|it has no \"rsp\"|S:Start to parse search server data.",
          strStart + "S:json parse error|it is not JSON, or beyond a limit|S:json parse error",
          strRsp + "x:vTVControl is empty|it holds no TV control command|x:vTVControl is empty",
          strRsp + "x:pDataHandler is NULL|memory ran out|x:pDataHandler is NULL",
          strRsp + "x:stopped by an exception: std::bad_alloc|memory ran out|x:stopped by an exception: std::bad_alloc",
          strRsp + "x:stopped by an exception: y|" + strNotSaid + "x:stopped by an exception: y",
          strRsp + "S:errCode:E, msg:a, msg:\n|" + strError + "E: a, msg:\\n|S:errCode:E, msg:a, msg:\n",
          strRsp + "S:errCode:E, msg:|" + strError + "E|S:errCode:E, msg:",
          strRsp + "S:errCode:E|" + strError + "E|S:errCode:E",
          strRsp + "S:errCode:, msg:m;S:nErrCode:404|" + strError + "404: m|S:errCode:, msg:m",
          strRsp + "t_ParseSearchSchema:errCode:E, msg:m|" + strNotSaid + "S:TAG_RSP"}) {
        CRefusal refusal;
        std::istringstream lines(strRow.substr(0, strRow.find('|')));
        for (std::string strLine; std::getline(lines, strLine, ';');) {
            const std::string strFunction = strLine.substr(0, strLine.find(':'));
            refusal.Listen({strLine, strFunction == "S" ? "t_ParseSearchServer" : strFunction,
                            strLine.substr(strFunction.size() + 1)});
        }
        EXPECT_EQ(strRow.substr(strRow.find('|') + 1), refusal.Reason() + '|' + refusal.Line());
    }
}

TEST(Refusal, TellsACodeOfZeroFromNone)
{
    const std::string strNone = "the server reported a failure without a code: m",
                      strZero = "the server reported error 0";
    const std::string kRows[][2] = {{R"({"rsp":{"err":{"code":0}}})", strZero + ": m"},
                                    {R"({"rsp":{"err":{"code":"0x"}}})", strNone},
                                    {R"({"rsp":{"err":{}}})", strNone},
                                    {R"({"rsp":[{"code":0}]})", strNone},
                                    {"[0]", strNone},
                                    {R"({"rsp":{"err":{"code":0)", strZero + ", or a failure without a code: m"},
                                    {"", strZero + ", or a failure without a code: m"}};
    for (const auto& [strReply, strWanted] : kRows) {
        CRefusal refusal;
        for (const char* szMessage : {"errCode:, msg:m", "nErrCode:0"})
            refusal.Listen({szMessage, "t_ParseSearchServer", szMessage});
        EXPECT_EQ(strWanted, refusal.Reason(strReply)) << strReply;
    }
}

// Lines that nobody hears are not formatted, so what is heard must be enough for the reason.
TEST(Refusal, HearsEveryLineThatItNeeds)
{
    const CSession session;
    int nRefused = 0;
    for (const char* szReply :
         {"", "{", "[]", "{}", R"({"rsp":{}})", R"({"rsp":{"stat":"fail","err":{"code":"E","msg":"m"}}})",
          R"({"rsp":{"stat":"fail","err":{"code":7}}})", R"({"rsp":{"stat":"fail"}})", "json parse error",
          R"({"rsp":{"tvcontrol":[{"action":"TAG_RSP"}]}})"}) {
        std::string strReasons[2];
        std::size_t nLines[2] = {};
        for (const bool bAll : {false, true}) {
            CRefusal refusal = CRefusal::OfCall();
            const auto Listen = [&](const LogLine& stLine) {
                ++nLines[bAll ? 1 : 0];
                refusal.Listen(stLine);
            };
            const CLogTap tap(Listen, bAll ? nullptr : CRefusal::Hears);
            _ConvActionInfo info;
            std::string strReply = szReply;
            if (!ca_get_speech_action("u", strReply, info)) strReasons[bAll ? 1 : 0] = refusal.Reason();
        }
        EXPECT_EQ(strReasons[1], strReasons[0]) << szReply;
        EXPECT_LT(nLines[0], nLines[1]) << szReply;
        nRefused += strReasons[0].empty() ? 0 : 1;
    }
    EXPECT_EQ(9, nRefused);
}
