// Searching from the front.
#include "explaining/CallLog.h"

#include <cstdlib>

bool Is(const LogLine& stLine, std::string_view szFunction, std::string_view szStart)
{
    return stLine.strFunction == szFunction && stLine.strMessage.compare(0, szStart.size(), szStart) == 0;
}

int NumberOf(const LogLine& stLine)
{
    const std::size_t nStart = stLine.strMessage.find_last_not_of("-0123456789") + 1;
    return static_cast<int>(std::strtol(stLine.strMessage.c_str() + nStart, nullptr, 10));
}

std::string Behind(const LogLine& stLine, std::string_view szStart)
{
    return stLine.strMessage.substr(szStart.size());
}

std::vector<const LogLine*> CCallLog::FindAll(std::string_view szFunction, std::string_view szStart) const
{
    std::vector<const LogLine*> vFound;
    for (const LogLine& stLine : m_vLines)
        if (Is(stLine, szFunction, szStart)) vFound.push_back(&stLine);
    return vFound;
}

const LogLine* CCallLog::Find(std::string_view szFunction, std::string_view szStart) const
{
    for (const LogLine& stLine : m_vLines)
        if (Is(stLine, szFunction, szStart)) return &stLine;
    return nullptr;
}

const LogLine* CCallLog::FindLast(std::string_view szFunction, std::string_view szStart) const
{
    const std::vector<const LogLine*> vFound = FindAll(szFunction, szStart);
    return vFound.empty() ? nullptr : vFound.back();
}
