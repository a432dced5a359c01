// A service, and the replies of a file that go through it in order.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "reading/Files.h"
#include "session/Case.h"

// Starts the service and stops it at the end; there is one at a time.
class CSession
{
public:
    CSession();  // throws std::runtime_error when the service doesn't start
    ~CSession();
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;
};

constexpr const char* kNoUtterance = "(utterance)";  // for the library, which takes no reply without one

// How a file is handed to the library.
struct Handling {
    FileForm eForm = FileForm::EITHER;
    std::string strUtterance = {};  // of a reply; empty: not known
    bool bKeepLog = false;          // cases carry their log lines: memory in proportion to the log
    bool bQuiet = false;            // says nothing of what is refused, and goes on when nobody reads standard output
};

// Hands every reply of the file to a service of its own and what came of it to `show`; what never reached the library
// is a refused case without a record. What was refused is complained of behind it, and when nobody reads standard
// output any more, the rest is left out by an exception: unless it is quiet. What cannot be read is always complained
// of: then false.
using CaseSink = std::function<void(const Case&)>;
bool RunFile(CLineFile& file, const Handling& stHandling, const CaseSink& show);

// The same for each of the files in turn.
void RunFiles(const std::vector<std::string>& vFiles, const Handling& stHandling, const CaseSink& show);
