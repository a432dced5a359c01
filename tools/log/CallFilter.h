// Which calls of a log are wanted.
#pragma once

#include <cstddef>
#include <limits>
#include <string>

#include "log/LogCalls.h"

struct CallFilter {
    std::string strCalls;  // "3" or "3-5"; empty: all, as with the others
    std::string strSince;  // a time as the log writes them, or its beginning, or a time of day
    std::string strUntil;
    std::string strProcess;
    std::string strKind;
    bool bRefused = false;

    std::size_t nFirst = 1;
    std::size_t nLast = std::numeric_limits<std::size_t>::max();

    // Reads `strCalls`; false when it is no range.
    bool ReadCalls();

    bool Wants(const LogCall& call) const;
};
