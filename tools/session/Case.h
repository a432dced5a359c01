// A reply's call as it can be told afterwards, to a program as JSON.
#pragma once

#include <json/value.h>

#include <functional>
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

// {"file":TEXT,"line":NUMBER,"accepted":true, and the record's fields} or, of what was refused,
// {"file":TEXT,"line":NUMBER,"accepted":false,"reason":TEXT}, with its line break, handed to `write` piece by piece.
// With `bCompact` without the fields that are not filled.
void WriteCaseLine(const Case& stCase, bool bCompact, const std::function<void(const std::string&)>& write);

// The same as a value, without file and line.
Json::Value OutcomeJson(const Case& stCase, bool bCompact);
