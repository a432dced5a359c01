// What the tests of findings share.
#pragma once

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "findings/Finding.h"

// "code@pointer" of each, in order; pointers without what is usual before them.
inline std::string Codes(const std::vector<Finding>& vFindings)
{
    std::string strCodes;
    for (const Finding& stFinding : vFindings)
        strCodes += (strCodes.empty() ? "" : " ") + stFinding.strCode + '@' +
                    std::regex_replace(stFinding.strPointer, std::regex("^/rsp/(tvcontrol/)?|/params(?=/)"), "");
    return strCodes;
}

// The one finding of a text.
inline Finding Only(const std::vector<Finding>& vFindings)
{
    EXPECT_EQ(1U, vFindings.size()) << Codes(vFindings);
    return vFindings.empty() ? Finding() : vFindings.front();
}
