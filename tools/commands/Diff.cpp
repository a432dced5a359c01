// "diff": what differs between the outcomes of two files.
#include <algorithm>
#include <utility>

#include "commands/Command.h"
#include "comparing/Difference.h"
#include "rendering/CaseJson.h"
#include "rendering/Output.h"
#include "session/Session.h"

namespace
{

struct Told {
    std::string strSource;
    Json::Value outcome;
};

// A service for each file, so that one leaves nothing to the other.
std::vector<Told> Outcomes(const std::string& strFile, const Options& stOptions)
{
    std::vector<Told> vOutcomes;
    CSession session(false);
    const auto Take = [&](const Case& stCase) {
        vOutcomes.push_back({stCase.stReply.strSource, OutcomeJson(stCase, true)});
    };
    session.RunFile(strFile, FileForm::EITHER, stOptions.strUtterance, Take, true);
    return vOutcomes;
}

// Prints how the n-th outcomes differ. False when they do not.
bool TellDifference(const Told* pOne, const Told* pOther, const CPaint& paint)
{
    if (pOne == nullptr || pOther == nullptr) {
        const Told& stTold = pOne == nullptr ? *pOther : *pOne;
        Print(paint.Title(Shown(stTold.strSource)) + "\n    has no counterpart\n");
        return true;
    }
    const std::vector<Difference> vDifferences = Differences(pOne->outcome, pOther->outcome, false);
    if (vDifferences.empty()) return false;
    Print(paint.Title(Shown(pOne->strSource) + " and " + Shown(pOther->strSource)) + '\n');
    for (const Difference& stDifference : vDifferences) Print(DifferenceText(stDifference, "first", "then"));
    return true;
}

int RunDiff(const Options& stOptions)
{
    if (stOptions.vFiles.size() != 2) {
        Complain("diff compares two files; see parlo diff --help");
        return kExitUsage;
    }
    const std::vector<Told> vOne = Outcomes(stOptions.vFiles[0], stOptions);
    const std::vector<Told> vOther = Outcomes(stOptions.vFiles[1], stOptions);
    const CPaint paint = stOptions.Paint();
    bool bDiffer = false;
    for (std::size_t i = 0; i < std::max(vOne.size(), vOther.size()); ++i)
        bDiffer =
            TellDifference(i < vOne.size() ? &vOne[i] : nullptr, i < vOther.size() ? &vOther[i] : nullptr, paint) ||
            bDiffer;
    return bDiffer || HasFailed() ? kExitFailure : kExitOk;
}

}  // namespace

void AddDiff(CCommandLine& line)
{
    CCommand command = line.Add("diff", "Tell how the action records of two replies or conversations differ",
                                "  parlo diff old.json new.json\n  parlo diff monday.jsonl tuesday.jsonl", RunDiff);
    command.Files("two files, each a reply or a conversation");
    command.Utterance(false);
}
