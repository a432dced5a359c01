// The one way into the platform log.
//
// A line is the source file, the operation, the line number, the message and a colour:
// "CAService: InitService(41) > m_strAppName:tv". Failures, and the informational lines that must be seen on a
// set in the field, are red at error priority; the rest is blue at debug priority. The platform filters.
//
// A log line is one statement. Do not log inside a lambda: `__func__` is `operator()` there; use CA_LOGE_AS.
#pragma once

#include "ca_platform.h"

namespace CALog
{

constexpr int kErrorPriority = 6;
constexpr int kDebugPriority = 3;
constexpr const char* kTag = "ParloAPI";

}  // namespace CALog

// Each unit that logs defines CA_LOG_FILE before it includes this header: its own name, or that of its class's unit.
#define CA_FORMAT(szFormat, szColour) "%s: %s(%d) > " szFormat szColour
#define CA_LOGE_FORMAT(szFormat) CA_FORMAT(szFormat, "\033[31m")
#define CA_LOGD_FORMAT(szFormat) CA_FORMAT(szFormat, "\033[34m")

// For a format that is in a table already, as one of the two above.
#define CA_LOG_FORMATTED(nPriority, szOperation, szFormat, ...) \
    static_cast<void>(__dlog_print(nPriority, CALog::kTag, szFormat, CA_LOG_FILE, szOperation, __LINE__, ##__VA_ARGS__))

// For a helper that does a part of an operation: the line carries the operation's name, not the helper's, so
// that what people search their logs for stays the same however the code is cut.
#define CA_LOGE_AS(szOperation, szFormat, ...) \
    CA_LOG_FORMATTED(CALog::kErrorPriority, szOperation, CA_LOGE_FORMAT(szFormat), ##__VA_ARGS__)
#define CA_LOGD_AS(szOperation, szFormat, ...) \
    CA_LOG_FORMATTED(CALog::kDebugPriority, szOperation, CA_LOGD_FORMAT(szFormat), ##__VA_ARGS__)

#define CA_LOGE(szFormat, ...) CA_LOGE_AS(__func__, szFormat, ##__VA_ARGS__)
#define CA_LOGD(szFormat, ...) CA_LOGD_AS(__func__, szFormat, ##__VA_ARGS__)
