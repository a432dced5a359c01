// The frame around the record's fields.
#include "session/Case.h"

#include "records/RecordJson.h"

void WriteCaseLine(const Case& stCase, bool bCompact, const std::function<void(const std::string&)>& write)
{
    write("{\"file\":" + JsonText(stCase.stReply.strFile) + ",\"line\":" + std::to_string(stCase.stReply.nLine) +
          ",\"accepted\":" + (stCase.bAccepted ? "true" : "false"));
    if (!stCase.bAccepted)
        write(",\"reason\":" + JsonText(stCase.strRefusal));
    else if (stCase.pInfo != nullptr)
        WriteMembers(*stCase.pInfo, bCompact, write);
    write("}\n");
}

Json::Value OutcomeJson(const Case& stCase, bool bCompact)
{
    Json::Value outcome(Json::objectValue);
    if (stCase.bAccepted && stCase.pInfo != nullptr) outcome = ToJson(*stCase.pInfo, bCompact);
    outcome["accepted"] = stCase.bAccepted;
    if (!stCase.bAccepted) outcome["reason"] = stCase.strRefusal;
    return outcome;
}
