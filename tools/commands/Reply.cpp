// "reply" and "conversation": the action record of each reply.
#include "commands/Command.h"
#include "explaining/Render.h"
#include "session/CaseJson.h"
#include "session/Session.h"
#include "text/Output.h"

namespace
{

constexpr const char* kJsonHelp = "Print one JSON object a reply, with every field";

CSession::Show ShowRecord(const Options& stOptions)
{
    return [stOptions, paint = stOptions.Paint()](const Case& stCase) {
        if (stOptions.bJson)
            WriteCaseLine(stCase, stOptions.bCompact, Print);
        else if (stCase.bAccepted)
            Print(RenderRecord(stCase.stReply, *stCase.pInfo, paint));
        if (stCase.stReply.bLive) FlushOutput();
    };
}

int RunFiles(const Options& stOptions, FileForm eForm)
{
    CSession session(false);
    const CSession::Show show = ShowRecord(stOptions);
    for (const std::string& strFile : stOptions.vFiles) session.RunFile(strFile, eForm, stOptions.strUtterance, show);
    return HasFailed() ? kExitFailure : kExitOk;
}

int RunReply(const Options& stOptions)
{
    return RunFiles(stOptions, FileForm::REPLY);
}

int RunConversation(const Options& stOptions)
{
    return RunFiles(stOptions, FileForm::CONVERSATION);
}

}  // namespace

void AddReply(CCommandLine& line)
{
    CCommand command = line.Add("reply", "Print the action record of each reply",
                                "  parlo reply --utterance \"turn it up\" volume.json\n"
                                "  parlo reply --utterance \"turn it up\" --json - < volume.json",
                                RunReply);
    command.Utterance(true);
    command.Files("a reply of the server; - for standard input");
    command.Json(kJsonHelp);
    command.Compact();
}

void AddConversation(CCommandLine& line)
{
    CCommand command = line.Add("conversation", "Print the action record of each turn of a conversation",
                                "  parlo conversation evening.jsonl", RunConversation);
    command.Files("JSON Lines, each {\"utterance\": TEXT, \"reply\": OBJECT or TEXT}; - for standard input");
    command.Json(kJsonHelp);
    command.Compact();
}
