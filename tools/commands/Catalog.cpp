// "status", "actions" and "schema": what there is to tell without a reply.
#include <stdexcept>

#include "catalog/Catalog.h"
#include "commands/Command.h"
#include "findings/Actions.h"
#include "findings/JsonSchema.h"
#include "findings/Suggestion.h"
#include "parlo-api.h"
#include "records/RecordJson.h"
#include "session/LogTap.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

int RunStatus(const Options& stOptions, bool bAll)
{
    const CSession session;
    const bool bSubstitute = SubstituteAnswers();
    if (bAll && !bSubstitute) throw std::runtime_error("this set answers by itself");
    const int nStatus = ca_get_conv_status();
    Json::Value value = bAll ? AllStatuses() : Status(nStatus);
    if (!bAll) value["substitute"] = bSubstitute;
    const char* szWho = bSubstitute ? "asked of the substitute: this is no television\n" : "";
    if (!stOptions.bJson)
        Print(bAll ? RenderAllStatuses(value, stOptions.Paint()) : RenderStatus(nStatus) + szWho);
    else if (!bAll)
        Print(JsonLine(value));
    else
        for (const Json::Value& status : value) Print(JsonLine(status));
    return bAll || nStatus == E_CA_CONV_STATUS_AVAILABLE ? kExitOk : kExitUnavailable;
}

int RunActions(const Options& stOptions, const std::string& strWord)
{
    const Json::Value value = strWord.empty() ? Vocabulary() : Word(strWord);
    if (value.isNull()) {
        Complain(Quoted(strWord) + " is no action" + DidYouMean(MostAlike(strWord, ActionWords()), "; "));
        return kExitFailure;
    }
    const auto pRender = strWord.empty() ? &RenderVocabulary : &RenderWord;
    Print(stOptions.bJson ? JsonLine(value) : pRender(value, stOptions.Paint()));
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
    command.Json("Print a JSON object; with --all one for each country and voice language");
}

void AddActions(CCommandLine& line)
{
    const auto pWord = std::make_shared<std::string>();
    CCommand command = line.Add("actions", "List the server's words and their codes, or tell all about an action",
                                "  parlo actions\n  parlo actions volumeup\n  parlo actions --json",
                                [pWord](const Options& stOptions) { return RunActions(stOptions, *pWord); });
    command.NoSet();
    command.Text("WORD", *pWord, "an action: what it takes and fills, and what it may follow");
    command.Json("Print one JSON object");
}

void AddSchema(CCommandLine& line)
{
    const auto pDocument = std::make_shared<std::string>("reply");
    CCommand command =
        line.Add("schema", "Print the JSON Schema of a reply, for editors",
                 "  parlo schema > reply.schema.json\n  parlo schema conversation", [pDocument](const Options&) {
                     Print(JsonSchemaOf(*pDocument));
                     return kExitOk;
                 });
    command.NoSet();
    command.Text("DOCUMENT", *pDocument, "of which document: reply, search (a search schema) or conversation (a line)",
                 {"reply", "search", "conversation"});
}
