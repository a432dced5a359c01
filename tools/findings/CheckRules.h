// Which findings a team does not want to see: options of "check", on the command line and in files .parlo-check.
#pragma once

#include <string>
#include <vector>

#include "findings/Finding.h"

struct CheckRules {
    std::vector<std::string> vIgnored;  // codes
    std::vector<std::string> vAllowed;  // keys that others read
    bool bStrict = false;               // warnings fail too

    bool Wants(const Finding& stFinding) const;
};

// Why a code cannot be ignored: there is none of that name. Empty when it can.
std::string WrongCode(const std::string& strCode);

// Adds what the file ".parlo-check" beside `strFile` says, or the first one in the folders above: an option a line as
// on the command line; blank lines and those that begin with '#' say nothing. Returns what is wrong with it; empty when
// nothing is.
std::string AddRulesBeside(const std::string& strFile, CheckRules& stRules);
