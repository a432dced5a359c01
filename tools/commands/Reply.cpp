// "reply" and "conversation": the action record of each reply.
#include "commands/Command.h"
#include "explaining/Render.h"
#include "session/CaseJson.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

constexpr const char* kJsonHelp = "Print one JSON object a reply, with every field";

int ShowRecords(const Options& stOptions, FileForm eForm)
{
    const auto ShowOne = [&stOptions, paint = stOptions.Paint()](const Case& stCase) {
        if (stOptions.bJson)
            WriteCaseLine(stCase, stOptions.bCompact, Print);
        else if (stCase.bAccepted)
            Print(RenderRecord(stCase.stReply, *stCase.pInfo, paint));
        if (stCase.stReply.bLive) FlushOutput();
    };
    RunFiles(stOptions.vFiles, {eForm, stOptions.strUtterance}, ShowOne);
    return HasFailed() ? kExitFailure : kExitOk;
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
