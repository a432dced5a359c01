// "test": conversations whose lines say what they expect.
#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <utility>

#include "commands/Command.h"
#include "comparing/Difference.h"
#include "comparing/JUnit.h"
#include "reading/Expectation.h"
#include "session/CaseJson.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

struct TestOptions {
    std::string strJUnit;  // empty: no such file
    bool bUpdate = false;
};

class CTestRun
{
public:
    CTestRun(const Options& stOptions, const TestOptions& stTest) : m_stOptions(stOptions), m_stTest(stTest) {}
    int Run();

private:
    void File(CSession& session, const std::string& strFile);
    void Turn(const Case& stCase);
    void Update(const std::string& strFile);
    void Closing(std::size_t nFailures);

    const Options& m_stOptions;
    const TestOptions& m_stTest;
    std::vector<TestResult> m_vResults;
    std::vector<std::pair<std::size_t, std::string>> m_vNewLines;  // of the file that is run, by line number
    std::size_t m_nSilent = 0;                                     // turns that expect nothing
    std::size_t m_nUpdated = 0;
};

// The outcome under the names that an expectation may use.
Json::Value Outcome(const Case& stCase, bool bCompact)
{
    Json::Value outcome = OutcomeJson(stCase, bCompact);
    outcome["refused"] = !stCase.bAccepted;
    return outcome;
}

// What the line should expect: the parts that it names so far, or everything that is filled.
Json::Value Renewed(const Case& stCase, const Json::Value& expect)
{
    if (!stCase.bAccepted) {
        Json::Value refused;
        refused["refused"] = true;
        return refused;
    }
    Json::Value part = PartLike(Outcome(stCase, false), expect);
    if (part.isObject() && !part.empty() && expect["refused"] != true) return part;
    part = OutcomeJson(stCase, true);
    part.removeMember("accepted");
    return part;
}

void CTestRun::Turn(const Case& stCase)
{
    const Json::Value expect = ExpectationOf(stCase.stReply.szTurn);
    const Json::Value outcome = Outcome(stCase, false);
    TestResult stResult{stCase.stReply.strSource, stCase.stReply.strFile, {}};
    const bool bTurn = !stCase.stReply.szTurn.empty() && (stCase.bAccepted || stCase.pInfo != nullptr);
    if (!expect.isNull() && !expect.isObject()) {
        stResult.strFailure = "    \"expect\" is no object\n";
    } else if (!expect.isNull()) {
        for (const Difference& stDifference : Differences(expect, outcome, true))
            stResult.strFailure += DifferenceText(stDifference, "expected", "got");
        if (!stResult.strFailure.empty() && !stCase.bAccepted)
            stResult.strFailure += "    refused: " + Shown(stCase.strRefusal) + '\n';
    } else if (!bTurn) {
        stResult.strFailure = "    " + Shown(stCase.strRefusal) + '\n';
    } else {
        ++m_nSilent;
    }
    const bool bRenew = m_stTest.bUpdate && bTurn && (expect.isNull() || !stResult.strFailure.empty());
    if (bRenew) {
        m_vNewLines.emplace_back(
            stCase.stReply.nLine,
            WithExpectation(stCase.stReply.szTurn,
                            Renewed(stCase, expect.isObject() ? expect : Json::Value(Json::objectValue))));
        return;
    }
    if (expect.isNull() && bTurn) return;
    Print((stResult.strFailure.empty() ? "pass " : "FAIL ") + Shown(stResult.strName) + '\n' + stResult.strFailure);
    m_vResults.push_back(std::move(stResult));
}

// Puts the new lines into the file, by way of a file beside it, so that it is whole whatever happens.
void CTestRun::Update(const std::string& strFile)
{
    if (m_vNewLines.empty()) return;
    const std::string strNew = strFile + ".new";
    std::ifstream in(strFile, std::ios::binary);
    std::ofstream out(strNew, std::ios::binary);
    std::size_t nNext = 0;
    std::string strLine;
    for (std::size_t nLine = 1; std::getline(in, strLine); ++nLine) {
        const bool bNew = nNext < m_vNewLines.size() && m_vNewLines[nNext].first == nLine;
        out << (bNew ? m_vNewLines[nNext++].second : strLine);
        if (!in.eof()) out << '\n';
    }
    out.close();
    struct stat stStat = {};
    if (stat(strFile.c_str(), &stStat) == 0) static_cast<void>(chmod(strNew.c_str(), stStat.st_mode & 07777U));
    if (!out.good() || in.bad() || std::rename(strNew.c_str(), strFile.c_str()) != 0) {
        static_cast<void>(std::remove(strNew.c_str()));
        return Fail(strFile + " cannot be updated");
    }
    Print("updated " + Count(m_vNewLines.size(), "line", "lines") + " of " + Shown(strFile) + '\n');
    m_nUpdated += m_vNewLines.size();
}

void CTestRun::File(CSession& session, const std::string& strFile)
{
    m_vNewLines.clear();
    session.RunFile(
        strFile, FileForm::CONVERSATION, "", [this](const Case& stCase) { Turn(stCase); }, true);
    if (strFile != "-") Update(strFile);
}

void CTestRun::Closing(std::size_t nFailures)
{
    std::string strText =
        std::to_string(m_vResults.size() - nFailures) + " passed, " + std::to_string(nFailures) + " failed";
    if (m_nUpdated > 0) strText += ", " + std::to_string(m_nUpdated) + " updated";
    if (m_nSilent > 0 && !m_stTest.bUpdate) strText += ", " + Count(m_nSilent, "turn", "turns") + " without \"expect\"";
    Print(strText + '\n');
}

int CTestRun::Run()
{
    // Each file is a dialog of its own: what one leaves must not decide about the next.
    for (const std::string& strFile : m_stOptions.vFiles) {
        CSession session(false);
        File(session, strFile);
    }
    std::size_t nFailures = 0;
    for (const TestResult& stResult : m_vResults) nFailures += stResult.strFailure.empty() ? 0 : 1;
    Closing(nFailures);
    if (!m_stTest.strJUnit.empty() && !WriteJUnit(m_stTest.strJUnit, m_vResults))
        Fail(m_stTest.strJUnit + " cannot be written");
    return nFailures > 0 || HasFailed() ? kExitFailure : kExitOk;
}

}  // namespace

void AddTest(CCommandLine& line)
{
    const auto pTest = std::make_shared<TestOptions>();
    CCommand command = line.Add(
        "test", "Compare each turn of a conversation with what it expects",
        "  parlo test evening.jsonl\n  parlo test --junit results.xml *.jsonl\n  parlo test --update evening.jsonl",
        [pTest](const Options& stOptions) { return CTestRun(stOptions, *pTest).Run(); });
    command.Files("a conversation whose lines have \"expect\": OBJECT; - for standard input");
    command.Text("--junit", pTest->strJUnit, "Write the results into this file too, as JUnit XML");
    command.Flag("--update", pTest->bUpdate, "Write what comes out now into the files");
}
