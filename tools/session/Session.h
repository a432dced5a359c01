// One service, the replies that go through it in order, and what the program says when something fails.
#ifndef PARLO_SESSION_H
#define PARLO_SESSION_H

#include <functional>
#include <string>

#include "session/Case.h"

// Starts the service and stops it at the end; there is one at a time.
class CSession
{
public:
    // Prints what there is to show of a reply; a refusal is complained of behind it.
    using Show = std::function<void(const Case&)>;

    // With `bKeepLog`, cases carry their log lines: memory in proportion to the log. Throws
    // std::runtime_error when the service doesn't start.
    CSession(Show show, bool bKeepLog);
    ~CSession();
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;

    // Handles a file of one reply, or every line of a conversation. What fails is complained of, and the next
    // line or file may follow.
    void RunReplyFile(const std::string& strFile, const std::string& strUtterance);
    void RunConversationFile(const std::string& strFile);

    // Whether something failed.
    bool HasFailed() const { return m_bFailed; }

private:
    bool Read(const std::string& strFile, std::string& strText);
    void Run(ServerReply&& stReply);
    void Ask(Case& stCase, CADataRepository::_ConvActionInfo& info) const;
    void Fail(const std::string& strText);

    Show m_show;
    bool m_bKeepLog;
    bool m_bFailed = false;
};

#endif
