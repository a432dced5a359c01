// The way of a reply from its file through the library.
#include "session/Session.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "parlo-api.h"
#include "session/Refusal.h"
#include "text/Output.h"

namespace
{

constexpr const char* kNoUtterance = "(utterance)";  // for the library, which takes no reply without one

// Calls `call`; when memory runs out on the way, `recover`.
template <typename Call, typename Recover>
void WithinMemory(const Call& call, const Recover& recover)
{
    try {
        call();
    } catch (const std::bad_alloc&) {
        recover();
    } catch (const std::length_error&) {
        recover();
    }
}

}  // namespace

CSession::CSession(bool bKeepLog) : m_bKeepLog(bKeepLog)
{
    CRefusal refusal;
    const CLogTap tap([&refusal](const LogLine& stLine) { refusal.Listen(stLine); }, CRefusal::Hears);
    if (!ca_initial_service("parlo")) throw std::runtime_error("the service does not start: " + refusal.Reason());
}

CSession::~CSession()
{
    ca_uninitial();
}

void CSession::RunFile(const std::string& strFile, FileForm eForm, const std::string& strUtterance, const Show& show,
                       bool bQuiet)
{
    const auto Read = [&] {
        ForEachEntry(strFile, eForm, strUtterance, [&](Entry&& stEntry) { Run(std::move(stEntry), show, bQuiet); });
    };
    WithinMemory(Read, [&] {
        Entry stEntry;
        stEntry.stReply.strFile = stEntry.stReply.strSource = strFile;
        stEntry.strReason = "memory ran out";
        Run(std::move(stEntry), show, bQuiet);
    });
}

void CSession::Run(Entry&& stEntry, const Show& show, bool bQuiet) const
{
    CADataRepository::_ConvActionInfo info;
    Case stCase;
    stCase.stReply = std::move(stEntry.stReply);
    if (stEntry.strReason.empty() && stCase.stReply.strText.empty()) stEntry.strReason = "the reply is empty";
    if (stEntry.strReason.empty()) {
        stCase.pInfo = &info;
        Ask(stCase, info);
    } else {
        stCase.strRefusal = stEntry.bUnreadable ? "it cannot be read: " + stEntry.strReason : stEntry.strReason;
    }
    show(stCase);
    const std::string& strSource = stCase.stReply.strSource;
    if (stEntry.bUnreadable)
        Fail(strSource + " cannot be read: " + stEntry.strReason);
    else if (!stCase.bAccepted && !bQuiet)
        Fail(strSource + " is refused: " + stCase.strRefusal);
    if (!bQuiet) StopWithoutReader();
}

void CSession::Ask(Case& stCase, CADataRepository::_ConvActionInfo& info) const
{
    ServerReply& stReply = stCase.stReply;
    stReply.bNoUtterance = stReply.strUtterance.empty();
    if (stReply.bNoUtterance) stReply.strUtterance = kNoUtterance;
    CRefusal refusal = CRefusal::OfCall();
    const auto Keep = [&](const LogLine& stLine) {
        refusal.Listen(stLine);
        if (m_bKeepLog) stCase.vLog.push_back(stLine);
    };
    const CLogTap tap(Keep, m_bKeepLog ? nullptr : CRefusal::Hears);
    stCase.bAccepted = ca_get_speech_action(stReply.strUtterance, stReply.strText, info);
    if (stCase.bAccepted) return;
    stCase.strRefusal = refusal.Reason(stReply.strText);
    stCase.strRefusalLine = refusal.Line();
}
