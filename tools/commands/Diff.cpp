// "diff": what differs between the outcomes of two files.
#include <algorithm>

#include "commands/Command.h"
#include "comparing/Difference.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

struct Told {
    std::string strSource;
    std::string strUtterance;
    bool bNoUtterance;  // nobody said what the viewer said
    Json::Value outcome;
};

std::vector<Told> Outcomes(const std::string& strFile, const Options& stOptions)
{
    std::vector<Told> vOutcomes;
    const auto Take = [&](const Case& stCase) {
        const ServerReply& stReply = stCase.stReply;
        vOutcomes.push_back({stReply.strSource, stReply.strUtterance, stReply.bNoUtterance, OutcomeJson(stCase, true)});
    };
    CLineFile file(strFile);
    RunFile(file, {FileForm::EITHER, stOptions.strUtterance, false, true}, Take);
    return vOutcomes;
}

// The outcome without what the viewer said: where the record has it as its first parameter, the stand-in takes its
// place.
Json::Value WithoutUtterance(const Told& stTold)
{
    Json::Value outcome = stTold.outcome;
    outcome.removeMember("strUserInputVoice");
    const Json::Value& params = stTold.outcome["vSystemActionParam"];
    if (!params.empty() && params[0] == stTold.strUtterance) outcome["vSystemActionParam"][0] = kNoUtterance;
    return outcome;
}

// How two outcomes differ. What the viewer said counts when it is known of both.
std::vector<Difference> DifferencesOf(const Told& stOne, const Told& stOther)
{
    if (!stOne.bNoUtterance && !stOther.bNoUtterance) return Differences(stOne.outcome, stOther.outcome, false);
    return Differences(WithoutUtterance(stOne), WithoutUtterance(stOther), false);
}

// Prints how the n-th outcomes differ. False when they do not.
bool TellDifference(const Told* pOne, const Told* pOther, const CPaint& paint)
{
    if (pOne == nullptr || pOther == nullptr) {
        const Told* const pAlone = pOne == nullptr ? pOther : pOne;
        Print(paint.Title(Shown(pAlone->strSource)) + "\n    has no counterpart\n");
        return true;
    }
    const std::vector<Difference> vDifferences = DifferencesOf(*pOne, *pOther);
    if (vDifferences.empty()) return false;
    Print(paint.Title(Shown(pOne->strSource) + " and " + Shown(pOther->strSource)) + '\n');
    for (const Difference& stDifference : vDifferences)
        Print("    " + DifferenceText(stDifference, "first", "then") + '\n');
    return true;
}

int RunDiff(const Options& stOptions)
{
    const bool bTwo = stOptions.vFiles.size() == 2;
    if (!bTwo || (stOptions.vFiles[0] == "-" && stOptions.vFiles[1] == "-")) {
        Complain(bTwo ? "standard input can be read once only; see parlo diff --help"
                      : "diff compares two files; see parlo diff --help");
        return kExitUsage;
    }
    const std::vector<Told> vOne = Outcomes(stOptions.vFiles[0], stOptions);
    const std::vector<Told> vOther = Outcomes(stOptions.vFiles[1], stOptions);
    if (HasFailed()) return kExitUnreadable;  // which says nothing of a difference
    const CPaint paint = stOptions.Paint();
    bool bDiffer = false;
    for (std::size_t i = 0; i < std::max(vOne.size(), vOther.size()); ++i)
        if (TellDifference(i < vOne.size() ? &vOne[i] : nullptr, i < vOther.size() ? &vOther[i] : nullptr, paint))
            bDiffer = true;
    return bDiffer ? kExitFailure : kExitOk;
}

}  // namespace

void AddDiff(CCommandLine& line)
{
    CCommand command = line.Add("diff", "Tell how the action records of two replies or conversations differ",
                                "  parlo diff old.json new.json\n  parlo diff monday.jsonl tuesday.jsonl", RunDiff);
    command.Files("two files, each a reply or a conversation");
    command.Utterance(false);
    command.NoSet();
}
