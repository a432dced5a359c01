// The way of a reply from its file through the library.
#include "session/Session.h"

#include <stdexcept>
#include <utility>

#include "parlo-api.h"
#include "session/Refusal.h"
#include "text/Output.h"

namespace
{

void Ask(Case& stCase, CADataRepository::_ConvActionInfo& info, bool bKeepLog)
{
    ServerReply& stReply = stCase.stReply;
    stReply.bNoUtterance = stReply.strUtterance.empty();
    if (stReply.bNoUtterance) stReply.strUtterance = kNoUtterance;
    CRefusal refusal = CRefusal::OfCall();
    const auto Keep = [&](const LogLine& stLine) {
        refusal.Listen(stLine);
        if (bKeepLog) stCase.vLog.push_back(stLine);
    };
    const CLogTap tap(Keep, bKeepLog ? nullptr : CRefusal::Hears);
    stCase.bAccepted = ca_get_speech_action(stReply.strUtterance, stReply.strText, info);
    if (stCase.bAccepted) return;
    stCase.strRefusal = refusal.Reason(stReply.strText);
    stCase.strRefusalLine = refusal.Line();
}

void Run(Entry&& stEntry, const Handling& stHandling, const CaseSink& show)
{
    CADataRepository::_ConvActionInfo info;
    Case stCase;
    stCase.stReply = std::move(stEntry.stReply);
    if (stEntry.strReason.empty() && stCase.stReply.strText.empty()) stEntry.strReason = "the reply is empty";
    if (stEntry.strReason.empty()) {
        stCase.pInfo = &info;
        Ask(stCase, info, stHandling.bKeepLog);
    } else {
        stCase.strRefusal = (stEntry.bUnreadable ? "it cannot be read: " : "") + stEntry.strReason;
    }
    show(stCase);
    const std::string& strSource = stCase.stReply.strSource;
    if (stEntry.bUnreadable)
        Fail(strSource + " cannot be read: " + stEntry.strReason);
    else if (!stCase.bAccepted && !stHandling.bQuiet)
        Fail(strSource + " is refused: " + stCase.strRefusal);
    if (!stHandling.bQuiet) StopWithoutReader();
}

}  // namespace

CSession::CSession()
{
    CRefusal refusal;
    const CLogTap tap([&refusal](const LogLine& stLine) { refusal.Listen(stLine); }, CRefusal::Hears);
    if (!ca_initial_service("parlo")) throw std::runtime_error("the service does not start: " + refusal.Reason());
}

CSession::~CSession()
{
    ca_uninitial();
}

bool RunFile(CLineFile& file, const Handling& stHandling, const CaseSink& show)
{
    const CSession session;
    bool bRead = true;
    const auto Handle = [&](Entry&& stEntry) {
        bRead = bRead && !stEntry.bUnreadable;
        Run(std::move(stEntry), stHandling, show);
    };
    if (WithinMemory([&] { ForEachEntry(file, stHandling.eForm, stHandling.strUtterance, Handle); })) return bRead;
    Entry stEntry;
    stEntry.stReply.strFile = stEntry.stReply.strSource = file.Name();
    stEntry.strReason = kNoMemory;
    stEntry.bUnreadable = true;
    Handle(std::move(stEntry));
    return false;
}

void RunFiles(const std::vector<std::string>& vFiles, const Handling& stHandling, const CaseSink& show)
{
    for (const std::string& strFile : vFiles) {
        CLineFile file(strFile);
        RunFile(file, stHandling, show);
    }
}
