// The way of a reply from its file through the library to standard output.
#include "session/Session.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "Printable.h"
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

void Print(const std::string& strText)
{
    if (std::fwrite(strText.data(), 1, strText.size(), stdout) != strText.size())
        throw std::system_error(errno, std::generic_category());
}

void FlushOutput()
{
    if (std::fflush(stdout) != 0) throw std::system_error(errno, std::generic_category());
}

void Complain(const std::string& strText)
{
    const std::string strLine = "parlo: " + Host::Printable(strText) + ".\n";
    static_cast<void>(std::fwrite(strLine.data(), 1, strLine.size(), stderr));
}

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
        if (Read(strFile, stReply.strText)) Run(stReply);
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
                Run(stReply);
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

void CSession::Run(ServerReply& stReply)
{
    if (stReply.strUtterance.empty()) return Fail(stReply.strSource + " is refused: the utterance is empty");
    if (stReply.strText.empty()) return Fail(stReply.strSource + " is refused: the reply is empty");
    const Outcome stOutcome = Ask(stReply);
    m_show(stReply, stOutcome);
    FlushOutput();
    if (!stOutcome.bAccepted) Fail(stReply.strSource + " is refused: " + stOutcome.strRefusal);
}

Outcome CSession::Ask(ServerReply& stReply) const
{
    Outcome stOutcome;
    CRefusal refusal;
    const CLogTap tap([&](const LogLine& stLine) {
        refusal.Listen(stLine);
        if (m_bKeepLog) stOutcome.vLog.push_back(stLine);
    });
    stOutcome.bAccepted = ca_get_speech_action(stReply.strUtterance, stReply.strText, stOutcome.info);
    if (!stOutcome.bAccepted) {
        stOutcome.strRefusal = refusal.Reason();
        stOutcome.strRefusalLine = refusal.Line();
    }
    return stOutcome;
}

void CSession::Fail(const std::string& strText)
{
    m_bFailed = true;
    Complain(strText);
}
