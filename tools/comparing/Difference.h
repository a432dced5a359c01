// How two outcomes differ, field by field.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

// One value that is not the same on both sides.
struct Difference {
    std::string strPath;   // "vSAContents[1].stItem.szType"
    std::string strOne;    // the value as JSON; empty: there is none
    std::string strOther;  //
    std::string strHint;   // "did you mean ...?" for a key that the other one does not have
};

// Everything in which `other` differs from `one`. With `bPart`, `one` says only what matters: keys that its objects
// do not have are not compared; lists have as many elements in any case.
std::vector<Difference> Differences(const Json::Value& one, const Json::Value& other, bool bPart);

// Of `value` what `part` has too: its keys, and of lists of equal length those of the elements.
Json::Value PartLike(const Json::Value& value, const Json::Value& part);

// "PATH: first ONE, then OTHER; HINT", in the given words and fit for a terminal.
std::string DifferenceText(const Difference& stDifference, const char* szOne, const char* szOther);
