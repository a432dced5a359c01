// "reply" and "conversation": the action record of each reply.
#include "commands/Command.h"
#include "rendering/Output.h"
#include "rendering/RecordJson.h"
#include "rendering/Render.h"
#include "session/Session.h"

namespace
{

constexpr const char* kJsonHelp = "Print one JSON object a reply, with every field";

CSession::Show ShowRecord(const Options& stOptions)
{
    return [bJson = stOptions.bJson, paint = stOptions.Paint()](const Case& stCase) {
        if (!stCase.bAccepted) return;
        if (bJson)
            WriteJsonLine(*stCase.pInfo, Print);
        else
            Print(RenderRecord(stCase.stReply, *stCase.pInfo, paint));
    };
}

int RunReply(const Options& stOptions)
{
    CSession session(ShowRecord(stOptions), false);
    for (const std::string& strFile : stOptions.vFiles) session.RunReplyFile(strFile, stOptions.strUtterance);
    return session.HasFailed() ? kExitFailure : kExitOk;
}

int RunConversation(const Options& stOptions)
{
    CSession session(ShowRecord(stOptions), false);
    for (const std::string& strFile : stOptions.vFiles) session.RunConversationFile(strFile);
    return session.HasFailed() ? kExitFailure : kExitOk;
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
}

void AddConversation(CCommandLine& line)
{
    CCommand command = line.Add("conversation", "Print the action record of each turn of a conversation",
                                "  parlo conversation evening.jsonl", RunConversation);
    command.Files("JSON Lines, each {\"utterance\": TEXT, \"reply\": OBJECT or TEXT}; - for standard input");
    command.Json(kJsonHelp);
}
