// What a conversation's line expects of its reply's outcome: its member "expect".
#ifndef PARLO_EXPECTATION_H
#define PARLO_EXPECTATION_H

#include <json/value.h>

#include <string>
#include <string_view>

// The member of the line; null when there is none.
Json::Value ExpectationOf(std::string_view szLine);

// The line with `expect` as its member "expect", put in at its end when it has none. Every other byte stays.
std::string WithExpectation(std::string_view szLine, const Json::Value& expect);

#endif
