// "status": whether conversation is available on the set.
#include "catalog/Catalog.h"
#include "commands/Command.h"
#include "parlo-api.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

int RunStatus(const Options& stOptions, bool bAll)
{
    const CSession session;
    if (bAll) {
        Print(stOptions.bJson ? AllStatusesJson() : RenderAllStatuses(stOptions.Paint()));
        return kExitOk;
    }
    const int nStatus = ca_get_conv_status();
    Print(stOptions.bJson ? StatusJson(nStatus) : RenderStatus(nStatus));
    return nStatus == E_CA_CONV_STATUS_AVAILABLE ? kExitOk : kExitUnavailable;
}

}  // namespace

void AddStatus(CCommandLine& line)
{
    const auto pAll = std::make_shared<bool>(false);
    CCommand command = line.Add("status", "Tell whether conversation is available on the set",
                                "  parlo --country DE --language de_DE status\n  parlo status --all",
                                [pAll](const Options& stOptions) { return RunStatus(stOptions, *pAll); });
    command.Flag("--all", *pAll, "Show the answer for every country and voice language");
    command.Json("Print a JSON object; with --all one for each country and voice language");
}
