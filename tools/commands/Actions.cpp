// "actions": the server's words and their codes, or all about one action.
#include "catalog/Catalog.h"
#include "commands/Command.h"
#include "findings/Suggestion.h"
#include "text/Output.h"

namespace
{

int RunActions(const Options& stOptions, const std::string& strWord)
{
    if (strWord.empty()) {
        Print(stOptions.bJson ? VocabularyJson() : RenderVocabulary(stOptions.Paint()));
        return kExitOk;
    }
    const std::string strText = stOptions.bJson ? WordJson(strWord) : RenderWord(strWord, stOptions.Paint());
    Print(strText);
    if (!strText.empty()) return kExitOk;
    const std::string strSuggestion = DidYouMean(MostAlike(strWord, ActionWords()));
    Complain(Quoted(strWord) + " is no action" + (strSuggestion.empty() ? "" : "; " + strSuggestion));
    return kExitFailure;
}

}  // namespace

void AddActions(CCommandLine& line)
{
    const auto pWord = std::make_shared<std::string>();
    CCommand command = line.Add("actions", "List the server's words and their codes, or tell all about an action",
                                "  parlo actions\n  parlo actions volumeup\n  parlo actions --json",
                                [pWord](const Options& stOptions) { return RunActions(stOptions, *pWord); });
    command.Positional("WORD", *pWord, "an action: what it takes and fills, and what it may follow");
    command.Json("Print one JSON object");
}
