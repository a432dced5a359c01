// "status": whether conversation is available on the set.
#include "commands/Catalog.h"
#include "commands/Command.h"
#include "rendering/Output.h"
#include "session/Session.h"

namespace
{

int RunStatus(const Options& stOptions, bool bAll)
{
    const CSession session(false);
    Print(bAll ? RenderAllStatuses(stOptions.Paint()) : RenderStatus());
    return kExitOk;
}

}  // namespace

void AddStatus(CCommandLine& line)
{
    const auto pAll = std::make_shared<bool>(false);
    CCommand command = line.Add("status", "Tell whether conversation is available on the set",
                                "  parlo --country DE --language de_DE status\n  parlo status --all",
                                [pAll](const Options& stOptions) { return RunStatus(stOptions, *pAll); });
    command.Flag("--all", *pAll, "Show the answer for every country and voice language");
}
