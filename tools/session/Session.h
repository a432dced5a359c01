// One service, the replies that go through it in order, and what the program says when something fails.
#ifndef PARLO_SESSION_H
#define PARLO_SESSION_H

#include <functional>
#include <string>
#include <vector>

#include "parlo-api.h"
#include "reading/Input.h"
#include "session/LogTap.h"

// What the library made of a reply.
struct Outcome {
    bool bAccepted = false;
    CADataRepository::_ConvActionInfo info;
    std::vector<LogLine> vLog;   // the lines of the call, when the session keeps them
    std::string strRefusal;      // why it was refused, half a sentence
    std::string strRefusalLine;  // the log line that says so
};

// Writes to standard output, FlushOutput what is still buffered. Both throw std::system_error when that fails.
void Print(const std::string& strText);
void FlushOutput();

// Writes "parlo: `strText`." to standard error, fit for a terminal.
void Complain(const std::string& strText);

// Starts the service and stops it at the end; there is one at a time.
class CSession
{
public:
    // Prints what there is to show of a reply; a refusal is complained of behind it.
    using Show = std::function<void(const ServerReply&, const Outcome&)>;

    // With `bKeepLog`, outcomes carry their log lines: memory in proportion to the log. Throws
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
    void Run(ServerReply& stReply);
    Outcome Ask(ServerReply& stReply) const;
    void Fail(const std::string& strText);

    Show m_show;
    bool m_bKeepLog;
    bool m_bFailed = false;
};

#endif
