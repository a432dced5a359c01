// "test": conversations whose lines say what they expect.
#include <algorithm>
#include <chrono>
#include <map>
#include <utility>

#include "commands/Command.h"
#include "comparing/Difference.h"
#include "comparing/JUnit.h"
#include "findings/Check.h"
#include "reading/Expectation.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

using Clock = std::chrono::steady_clock;

struct TestOptions {
    std::string strJUnit;  // empty: no such file
    bool bUpdate = false;
    bool bFailuresOnly = false;
};

class CTestRun
{
public:
    CTestRun(const Options& stOptions, const TestOptions& stTest) : m_stOptions(stOptions), m_stTest(stTest) {}
    int Run();

private:
    void File(const std::string& strFile);
    void Turn(const Case& stCase);
    void UpdateFile(const CLineFile& file);
    int End();

    const Options& m_stOptions;
    const TestOptions& m_stTest;
    std::vector<TestResult> m_vResults;
    std::map<std::size_t, std::string> m_mapNewLines;  // of the file that is run, by line number
    std::size_t m_nUpdated = 0;
    Clock::time_point m_started;
};

// The outcome under the names that an expectation may use.
Json::Value Outcome(const Case& stCase)
{
    Json::Value outcome = OutcomeJson(stCase, false);
    outcome["refused"] = !stCase.bAccepted;
    return outcome;
}

// What the line should expect: the parts that it names so far, or everything that is filled.
Json::Value Renewed(const Case& stCase, const Json::Value& expect)
{
    Json::Value part;
    part["refused"] = true;
    if (!stCase.bAccepted) return part;
    part = PartLike(Outcome(stCase), expect);
    if (part.isObject() && !part.empty() && expect["refused"] != true) return part;
    part = OutcomeJson(stCase, true);
    part.removeMember("accepted");
    return part;
}

// Whether the expectation names a field that there is not, whatever the outcome.
bool IsMisspelt(const Case& stCase, const Json::Value& expect)
{
    Json::Value names = stCase.bAccepted ? Outcome(stCase) : OutcomeNames();
    names["reason"] = "";
    const std::vector<Difference> vDifferences = Differences(expect, names, true);
    return std::any_of(vDifferences.begin(), vDifferences.end(),
                       [](const Difference& stDifference) { return stDifference.strOther.empty(); });
}

std::vector<std::string> Failures(const Case& stCase, const Json::Value& expect)
{
    if (expect.isNull()) return {Shown(stCase.strRefusal)};
    if (!expect.isObject()) return {"\"expect\" is no object"};
    std::vector<std::string> vFailures;
    for (const Difference& stDifference : Differences(expect, Outcome(stCase), true))
        vFailures.push_back(DifferenceText(stDifference, "expected", "got"));
    if (!vFailures.empty() && !stCase.bAccepted) vFailures.back() += "\n    refused: " + Shown(stCase.strRefusal);
    return vFailures;
}

void CTestRun::Turn(const Case& stCase)
{
    const ServerReply& stReply = stCase.stReply;
    const Json::Value members = MembersOf(stReply.szTurn);
    const Json::Value& expect = members["expect"];
    const Json::Value& name = members["name"];
    const std::chrono::duration<double> time = Clock::now() - std::exchange(m_started, Clock::now());
    const bool bTurn = !stReply.szTurn.empty() && stCase.pInfo != nullptr;
    TestResult stResult{name.isString() ? name.asString() : stReply.strUtterance, stReply.strFile, stReply.nLine,
                        time.count(), expect.isNull() && bTurn};
    if (!stResult.bSkipped) stResult.vFailures = Failures(stCase, expect);
    const bool bWrong = !stResult.vFailures.empty() && !(expect.isObject() && IsMisspelt(stCase, expect));
    if (m_stTest.bUpdate && bTurn && (stResult.bSkipped || bWrong)) {
        m_mapNewLines[stReply.nLine] =
            WithExpectation(stReply.szTurn, Renewed(stCase, expect.isObject() ? expect : Json::objectValue));
        return;
    }
    const bool bFailed = !stResult.vFailures.empty();
    if (bFailed || !(stResult.bSkipped || m_stTest.bFailuresOnly))
        Print((bFailed ? "FAIL " : "pass ") + Shown(stReply.strSource) +
              (name.isString() ? ' ' + Quoted(name.asString()) : "") + '\n');
    for (const std::string& strFailure : stResult.vFailures) Print("    " + strFailure + '\n');
    m_vResults.push_back(std::move(stResult));
}

void CTestRun::UpdateFile(const CLineFile& file)
{
    std::string strNew;
    std::string_view szRest = file.Kept();
    for (std::size_t nLine = 1; !szRest.empty(); ++nLine) {
        const std::string_view szLine = szRest.substr(0, szRest.find('\n'));
        const auto itNew = m_mapNewLines.find(nLine);
        strNew += itNew == m_mapNewLines.end() ? szLine : itNew->second;
        if (szLine.size() < szRest.size()) strNew += '\n';
        szRest.remove_prefix(std::min(szLine.size() + 1, szRest.size()));
    }
    const std::string strReason = Update(file, strNew);
    if (!strReason.empty()) return Fail(file.Name() + " cannot be updated: " + strReason);
    Print("updated " + Count(m_mapNewLines.size(), "line", "lines") + " of " + Shown(file.Name()) + '\n');
    m_nUpdated += m_mapNewLines.size();
}

void CTestRun::File(const std::string& strFile)
{
    if (const std::string strReason = m_stTest.bUpdate ? CannotUpdate(strFile) : ""; !strReason.empty())
        return Fail(strFile + " cannot be updated: " + strReason);
    CLineFile file(strFile);
    if (m_stTest.bUpdate) file.Keep();
    m_mapNewLines.clear();
    m_started = Clock::now();
    const auto Take = [this](const Case& stCase) { Turn(stCase); };
    if (RunFile(file, {FileForm::CONVERSATION, "", false, true}, Take) && !m_mapNewLines.empty()) UpdateFile(file);
}

// Counts, and says how the program ends.
int CTestRun::End()
{
    std::size_t nFailed = 0;
    std::size_t nSkipped = 0;
    for (const TestResult& stResult : m_vResults) {
        nFailed += stResult.vFailures.empty() ? 0 : 1;
        nSkipped += stResult.bSkipped ? 1 : 0;
    }
    const std::size_t nPassed = m_vResults.size() - nFailed - nSkipped;
    Print(std::to_string(nPassed) + " passed, " + std::to_string(nFailed) + " failed" +
          (m_nUpdated > 0 ? ", " + std::to_string(m_nUpdated) + " updated" : "") +
          (nSkipped > 0 ? ", " + std::to_string(nSkipped) + " skipped: without \"expect\"" : "") + '\n');
    if (!m_stTest.strJUnit.empty() && !WriteJUnit(m_stTest.strJUnit, m_vResults))
        Fail(m_stTest.strJUnit + " cannot be written");
    if (HasFailed()) return kExitUnreadable;
    if (nPassed + nFailed + m_nUpdated > 0) return nFailed > 0 ? kExitFailure : kExitOk;
    Complain("nothing is expected: no turn has \"expect\"");
    return kExitFailure;
}

int CTestRun::Run()
{
    for (const std::string& strFile : m_stOptions.vFiles) File(strFile);
    return End();
}

}  // namespace

void AddTest(CCommandLine& line)
{
    const auto pTest = std::make_shared<TestOptions>();
    CCommand command = line.Add(
        "test", "Compare each turn of a conversation with what it expects",
        "  parlo test evening.jsonl\n  parlo test --junit results.xml *.jsonl\n  parlo test --update evening.jsonl",
        [pTest](const Options& stOptions) { return CTestRun(stOptions, *pTest).Run(); });
    command.Replies("a conversation whose lines have \"expect\": OBJECT; - for standard input");
    command.Text("--junit", pTest->strJUnit, "Write the results into this file too, as JUnit XML");
    command.Flag("--update", pTest->bUpdate, "Write what comes out now into the files");
    command.Flag("-q,--quiet", pTest->bFailuresOnly, "Print no turn that passes");
}
