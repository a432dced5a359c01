// "explain": what became of each part of a reply, and why.
#include "explaining/RenderExplanation.h"

#include "commands/Command.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

int RunExplain(const Options& stOptions)
{
    const auto Tell = [bJson = stOptions.bJson, paint = stOptions.Paint()](const Case& stCase) {
        Print(bJson ? ExplainJson(stCase) : Explain(stCase, paint));
    };
    RunFiles(stOptions.vFiles, {FileForm::EITHER, stOptions.strUtterance, true}, Tell);
    return HasFailed() ? kExitFailure : kExitOk;
}

}  // namespace

void AddExplain(CCommandLine& line)
{
    CCommand command = line.Add("explain", "Tell what became of each part of a reply, and why",
                                "  parlo explain search.json", RunExplain);
    command.Utterance(false);
    command.Replies("a reply of the server, or a conversation; - for standard input");
    command.Json("Print one JSON object a reply");
}
