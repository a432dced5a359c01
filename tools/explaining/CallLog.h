// The log lines of one call, searched.
#ifndef PARLO_CALLLOG_H
#define PARLO_CALLLOG_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "session/LogTap.h"

// Whether it is a line of `szFunction` whose message begins with `szStart`.
bool Is(const LogLine& stLine, std::string_view szFunction, std::string_view szStart);

// The number at the end of a line such as "eControl = 12".
int NumberOf(const LogLine& stLine);

// What stands behind `szStart`, with which the message begins.
std::string Behind(const LogLine& stLine, std::string_view szStart);

class CCallLog
{
public:
    explicit CCallLog(const std::vector<LogLine>& vLines) : m_vLines(vLines) {}

    // The first and the last such line; null when there is none. All of them, in order.
    const LogLine* Find(std::string_view szFunction, std::string_view szStart) const;
    const LogLine* FindLast(std::string_view szFunction, std::string_view szStart) const;
    std::vector<const LogLine*> FindAll(std::string_view szFunction, std::string_view szStart) const;

    const std::vector<LogLine>& Lines() const { return m_vLines; }

private:
    const std::vector<LogLine>& m_vLines;
};

#endif
