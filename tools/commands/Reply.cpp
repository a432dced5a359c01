// "reply", "conversation" and "explain": what came of each reply, as the action record or with the reasons.
#include "commands/Command.h"
#include "explaining/Render.h"
#include "explaining/RenderExplanation.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

constexpr const char* kJsonHelp = "Print one JSON object a reply, with every field";

int ShowFiles(const Options& stOptions, const Handling& stHandling, const CaseSink& showOne)
{
    const auto ShowNow = [&showOne](const Case& stCase) {
        showOne(stCase);
        if (stCase.stReply.bLive) FlushOutput();
    };
    RunFiles(stOptions.vFiles, stHandling, ShowNow);
    return HasFailed() ? kExitFailure : kExitOk;
}

int ShowRecords(const Options& stOptions, FileForm eForm)
{
    return ShowFiles(stOptions, {eForm, stOptions.strUtterance},
                     [&stOptions, paint = stOptions.Paint()](const Case& stCase) {
                         if (stOptions.bJson)
                             WriteCaseLine(stCase, stOptions.bCompact, Print);
                         else if (stCase.bAccepted)
                             Print(RenderRecord(stCase.stReply, *stCase.pInfo, paint));
                     });
}

int RunExplain(const Options& stOptions)
{
    return ShowFiles(stOptions, {FileForm::EITHER, stOptions.strUtterance, true},
                     [&stOptions, paint = stOptions.Paint()](const Case& stCase) {
                         Print(stOptions.bJson ? ExplainJson(stCase) : Explain(stCase, paint));
                     });
}

}  // namespace

void AddReply(CCommandLine& line)
{
    CCommand command = line.Add("reply", "Print the action record of each reply",
                                "  parlo reply --utterance \"turn it up\" volume.json\n"
                                "  parlo reply --utterance \"turn it up\" --json - < volume.json",
                                [](const Options& stOptions) { return ShowRecords(stOptions, FileForm::REPLY); });
    command.Utterance(true);
    command.Replies("a reply of the server; - for standard input");
    command.Json(kJsonHelp);
    command.Compact();
}

void AddConversation(CCommandLine& line)
{
    CCommand command = line.Add(
        "conversation", "Print the action record of each turn of a conversation", "  parlo conversation evening.jsonl",
        [](const Options& stOptions) { return ShowRecords(stOptions, FileForm::CONVERSATION); });
    command.Replies("JSON Lines, each {\"utterance\": TEXT, \"reply\": OBJECT or TEXT}; - for standard input");
    command.Json(kJsonHelp);
    command.Compact();
}

void AddExplain(CCommandLine& line)
{
    CCommand command = line.Add("explain", "Tell what became of each part of a reply, and why",
                                "  parlo explain search.json", RunExplain);
    command.Utterance(false);
    command.Replies("a reply of the server, or a conversation; - for standard input");
    command.Json("Print one JSON object a reply");
}
