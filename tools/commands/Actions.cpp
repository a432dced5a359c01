// "actions": the server's words and their codes.
#include "commands/Catalog.h"
#include "commands/Command.h"
#include "rendering/Output.h"

namespace
{

int RunActions(const Options& stOptions)
{
    Print(stOptions.bJson ? VocabularyJson() : RenderVocabulary(stOptions.Paint()));
    return kExitOk;
}

}  // namespace

void AddActions(CCommandLine& line)
{
    CCommand command = line.Add("actions", "List the server's words and their codes",
                                "  parlo actions\n  parlo actions --json", RunActions);
    command.Json("Print one JSON object");
}
