// One service, and the replies that go through it in order.
#ifndef PARLO_SESSION_H
#define PARLO_SESSION_H

#include <functional>
#include <string>

#include "reading/Files.h"
#include "session/Case.h"

// Starts the service and stops it at the end; there is one at a time.
class CSession
{
public:
    // With `bKeepLog`, cases carry their log lines: memory in proportion to the log. Throws
    // std::runtime_error when the service doesn't start.
    explicit CSession(bool bKeepLog);
    ~CSession();
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;

    // Hands every reply of the file to the library and what came of it to `show`; what never reached the library is a
    // refused case without a record. What was refused is complained of behind it, and when
    // nobody reads standard output any more, the rest is left out by an exception: unless `bQuiet`. What cannot be read
    // is always complained of.
    using Show = std::function<void(const Case&)>;
    void RunFile(const std::string& strFile, FileForm eForm, const std::string& strUtterance, const Show& show,
                 bool bQuiet = false);

private:
    void Run(Entry&& stEntry, const Show& show, bool bQuiet) const;
    void Ask(Case& stCase, CADataRepository::_ConvActionInfo& info) const;

    bool m_bKeepLog;
};

#endif
