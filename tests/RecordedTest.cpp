// Plays the conversations of tests/data/conversations and compares what comes of each step with what is recorded
// below it. With PARLO_RECORD set the files are written anew instead; see scripts/record.
//
// A conversation is a set, a service on it, and steps. A step is a word with its argument; text that it takes follows
// in lines that begin with two blanks ("@file" stands for a file of tests/data). What came of it is recorded below,
// behind four blanks: "|" and a line of the log, "=" and a result or a field of a record. Log lines begin with E (error
// priority, red) or D (debug priority, blue) and lack their line number; "?" begins what is no line of the library's.
// Bytes that are not printable are \xNN, a backslash of the log is \\, "\text[FROM,SIZE]" is that part of the step's
// text.
//
// start NAME, stop, status      the entry points
// say UTTERANCE / TEXT          a reply, into a fresh record
// more UTTERANCE / TEXT         the same, into the record of the step before
// parse STATUS / TEXT           a document past the service: the search schema document for status 1, which becomes
//                               "CATEGORY[TYPE FROM TO CYCLE]..."
// content / TEXT                a programme that is shown in detail, with its cast
// items / TEXT                  what each element of the reply's "tvcontent" fills, also of a kind that is refused
// poster KIND INDEX / URL       a poster's template
// part NAME / TEXT              a part of a reply by itself
// candidates WORD               the candidate lookup by itself
// steps DOMAIN...               the private steps of a service without a command; without a store if that is refused
// request, list, zone OFFSET    asks for the schema, the result list, a time zone's minutes
// languages COUNTRY / TEXT      which of the languages are available in the country, and the status of the others
// set NAME=VALUE...             the set: country and language ("-": none), init, get, deinit, factory, flag
// refuse OBJECT...              from here on there is no memory for these: store, service, sizes
// log OPERATION...              from here on records the log lines of these only; "all": every line, as at the start
// hide FIELD...                 from here on leaves these fields of a record out
// for WORD...                   the next step once for each word, which stands in for each "$" in it
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <set>

#include "Conversation.h"
#include "Step.h"

namespace
{

// `strMore`: a character that is escaped beside those that are not printable.
std::string Escaped(const std::string& strText, char cMore)
{
    std::string strShown;
    for (std::size_t i = 0; i < strText.size(); ++i) {
        const char c = strText[i];
        char szByte[8] = {c};
        if (c == '\n' || c == '\t' || c == cMore)
            std::snprintf(szByte, sizeof szByte, "\\%c", c == '\n' ? 'n' : c == '\t' ? 't' : c);
        else if (c < ' ' || c > '~' || (c == ' ' && i + 1 == strText.size()))
            std::snprintf(szByte, sizeof szByte, "\\x%02X", static_cast<unsigned char>(c));
        strShown += szByte;
    }
    return strShown;
}

std::string Replaced(std::string strText, const char* szOld, const std::string& strNew)
{
    for (std::size_t n = 0; (n = strText.find(szOld, n)) != std::string::npos; n += strNew.size())
        strText.replace(n, std::strlen(szOld), strNew);
    return strText;
}

class CPlayer
{
public:
    // The conversation with what comes of it now.
    std::string Play(const std::string& strFile)
    {
        BeginConversation();
        std::istringstream lines(strFile);
        Texts vStep;
        for (std::string strLine; std::getline(lines, strLine);) {
            if (strLine.rfind("    ", 0) == 0) continue;
            const bool bText = strLine.rfind("  ", 0) == 0;
            if (!bText) Run(std::exchange(vStep, {}));
            m_strPlayed += strLine + "\n";
            if (bText || (!strLine.empty() && strLine[0] != '#')) vStep.push_back(strLine.substr(bText ? 2 : 0));
        }
        Run(vStep);
        EndConversation();
        return m_strPlayed;
    }

private:
    void Run(const Texts& vLines)
    {
        if (vLines.empty()) return;
        const std::size_t nBlank = std::min(vLines[0].find(' '), vLines[0].size() - 1);
        Step step{vLines[0].substr(0, vLines[0].find(' ')), vLines[0].substr(nBlank + 1), ""};
        for (std::size_t i = 1; i < vLines.size(); ++i)
            step.strText += (i > 1 ? "\n" : "") + (vLines[i][0] == '@' ? DataFile(vLines[i].substr(1)) : vLines[i]);
        const Texts vWords = Words(step.strArgument);
        if (step.strVerb == "for")
            m_vFor = vWords;
        else if (step.strVerb == "log")
            m_Logged = {vWords.begin(), vWords.end()};
        else if (step.strVerb == "hide")
            m_Hidden = {vWords.begin(), vWords.end()};
        else if (m_vFor.empty())
            Record(step, "", "\n    = ");
        else
            for (const std::string& strWord : std::exchange(m_vFor, {}))
                Record({step.strVerb, Replaced(step.strArgument, "$", strWord), Replaced(step.strText, "$", strWord)},
                       strWord + ": ", ", ");
    }

    // Runs one step and records it.
    void Record(const Step& step, const std::string& strBefore, const std::string& strBetween)
    {
        g_Platform.vLog.clear();
        std::string strResults;
        for (const std::string& strResult : RunStep(step)) {
            if (m_Hidden.count(strResult.substr(0, strResult.find(' '))) != 0) continue;
            strResults += (strResults.empty() ? "" : strBetween) + Escaped(strResult, '\n');
        }
        for (const LogLine& line : g_Platform.vLog) RecordLine(line, step.strText);
        if (!strResults.empty()) m_strPlayed += "    = " + strBefore + strResults + "\n";
    }

    void RecordLine(const LogLine& line, const std::string& strText)
    {
        const auto [cKind, strFile, strOperation, strMessage] = Read(line);
        if (cKind != '?' && m_Logged.count("all") + m_Logged.count(strOperation) == 0) return;
        const std::size_t nPart = strMessage.size() < 20 ? std::string::npos : strText.find(strMessage);
        const std::string strShown = nPart == std::string::npos ? Escaped(strMessage, '\\')
                                                                : "\\text[" + std::to_string(nPart) + "," +
                                                                      std::to_string(strMessage.size()) + "]";
        m_strPlayed += std::string("    | ") + cKind + " " + strFile + " " + strOperation +
                       (strShown.empty() ? ":" : ": ") + strShown + "\n";
    }

    std::string m_strPlayed;
    Texts m_vFor;
    std::set<std::string> m_Logged = {"all"}, m_Hidden;
};

// The lines of two texts that are alike neither at the start nor at the end, behind "-" and "+".
std::string Differing(std::string strOld, std::string strNew)
{
    auto [itOld, itNew] = std::mismatch(strOld.begin(), strOld.end(), strNew.begin(), strNew.end());
    const auto nStart = static_cast<std::size_t>(itOld - strOld.begin());
    const std::size_t nLine = nStart == 0 ? 0 : strOld.rfind('\n', nStart - 1) + 1;
    strOld.erase(0, nLine);
    strNew.erase(0, nLine);
    const auto nEnd =
        std::mismatch(strOld.rbegin(), strOld.rend(), strNew.rbegin(), strNew.rend()).first - strOld.rbegin();
    std::string strResult;
    for (const auto& [strMark, strText] : {std::pair("\n- ", strOld), std::pair("\n+ ", strNew)}) {
        const std::size_t nEndLine = strText.find('\n', strText.size() - static_cast<std::size_t>(nEnd));
        strResult += strMark + Replaced(strText.substr(0, nEndLine), "\n", strMark);
    }
    return strResult;
}

Texts Conversations()
{
    Texts vNames;
    for (const auto& entry : std::filesystem::directory_iterator(PARLO_TEST_DATA "/conversations"))
        vNames.push_back(entry.path().stem());
    std::sort(vNames.begin(), vNames.end());
    return vNames;
}

class Recorded : public testing::TestWithParam<std::string>
{
};

}  // namespace

TEST_P(Recorded, ConversationGoesAsBefore)
{
    const std::string strName = "conversations/" + GetParam() + ".txt";
    const std::string strRecorded = DataFile(strName);
    const std::string strPlayed = CPlayer().Play(strRecorded);
    if (std::getenv("PARLO_RECORD") == nullptr)
        EXPECT_TRUE(strRecorded == strPlayed)
            << "scripts/record writes what comes of it now" << Differing(strRecorded, strPlayed);
    else
        std::ofstream(PARLO_TEST_DATA "/" + strName) << strPlayed;
}

INSTANTIATE_TEST_SUITE_P(, Recorded, testing::ValuesIn(Conversations()), [](const auto& name) {
    std::string strName = name.param;
    std::replace(strName.begin(), strName.end(), '-', '_');
    return strName;
});
