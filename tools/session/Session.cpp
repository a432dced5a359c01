// The way of a reply from its file through the library to standard output.
#include "session/Session.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "parlo-api.h"
#include "rendering/Output.h"
#include "session/Refusal.h"

namespace
{

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

bool IsBlank(std::string_view szLine)
{
    return szLine.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

CSession::CSession(Show show, bool bKeepLog) : m_show(std::move(show)), m_bKeepLog(bKeepLog)
{
    CRefusal refusal;
    const CLogTap tap([&refusal](const LogLine& stLine) { refusal.Listen(stLine); });
    if (!ca_initial_service("parlo")) throw std::runtime_error("the service does not start: " + refusal.Reason());
}

CSession::~CSession()
{
    ca_uninitial();
}

void CSession::RunReplyFile(const std::string& strFile, const std::string& strUtterance)
{
    const auto Handle = [&] {
        ServerReply stReply{strFile, strUtterance, {}};
        if (Read(strFile, stReply.strText)) Run(std::move(stReply));
    };
    WithinMemory(Handle, [&] { Fail(strFile + " is refused: memory ran out"); });
}

void CSession::RunConversationFile(const std::string& strFile)
{
    const auto Handle = [&] {
        std::string strText;
        if (!Read(strFile, strText)) return;
        std::size_t nLine = 0;
        for (std::string_view szRest = strText; !szRest.empty();) {
            const std::string_view szLine = szRest.substr(0, szRest.find('\n'));
            szRest.remove_prefix(std::min(szLine.size() + 1, szRest.size()));
            ++nLine;
            ServerReply stReply{strFile + ':' + std::to_string(nLine), {}, {}};
            std::string strReason;
            if (IsBlank(szLine)) continue;
            if (ReadTurn(szLine, stReply, strReason))
                Run(std::move(stReply));
            else
                Fail(stReply.strSource + " is refused: " + strReason);
        }
    };
    WithinMemory(Handle, [&] { Fail(strFile + " is refused: memory ran out"); });
}

bool CSession::Read(const std::string& strFile, std::string& strText)
{
    std::string strReason;
    if (ReadAll(strFile, strText, strReason)) return true;
    Fail(strFile + " cannot be read: " + strReason);
    return false;
}

void CSession::Run(ServerReply&& stReply)
{
    if (stReply.strUtterance.empty()) return Fail(stReply.strSource + " is refused: the utterance is empty");
    if (stReply.strText.empty()) return Fail(stReply.strSource + " is refused: the reply is empty");
    CADataRepository::_ConvActionInfo info;
    Case stCase;
    stCase.stReply = std::move(stReply);
    stCase.pInfo = &info;
    Ask(stCase, info);
    m_show(stCase);
    FlushOutput();
    if (!stCase.bAccepted) Fail(stCase.stReply.strSource + " is refused: " + stCase.strRefusal);
}

void CSession::Ask(Case& stCase, CADataRepository::_ConvActionInfo& info) const
{
    CRefusal refusal;
    const CLogTap tap([&](const LogLine& stLine) {
        refusal.Listen(stLine);
        if (m_bKeepLog) stCase.vLog.push_back(stLine);
    });
    stCase.bAccepted = ca_get_speech_action(stCase.stReply.strUtterance, stCase.stReply.strText, info);
    if (stCase.bAccepted) return;
    stCase.strRefusal = refusal.Reason();
    stCase.strRefusalLine = refusal.Line();
}

void CSession::Fail(const std::string& strText)
{
    m_bFailed = true;
    Complain(strText);
}
