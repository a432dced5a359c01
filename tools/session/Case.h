// A reply's call as it can be told afterwards.
#ifndef PARLO_CASE_H
#define PARLO_CASE_H

#include <string>
#include <vector>

#include "CADataRepository.h"
#include "reading/Input.h"
#include "session/LogTap.h"

// Of a call that is known from a log only, there is no record, and the reply's text is empty or cut.
struct Case {
    ServerReply stReply;
    std::vector<LogLine> vLog;  // the lines of the call, when they were kept
    bool bAccepted = false;
    std::string strRefusal;                                    // why it was refused, half a sentence
    std::string strRefusalLine;                                // the log line that says so
    const CADataRepository::_ConvActionInfo* pInfo = nullptr;  // what the call filled; null: not known
};

#endif
