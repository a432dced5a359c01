// What a conversation's line says beside its turn: the members "expect" and "name".
#ifndef PARLO_EXPECTATION_H
#define PARLO_EXPECTATION_H

#include <json/value.h>

#include <string>
#include <string_view>

// The line's members; null when it is no object.
Json::Value MembersOf(std::string_view szLine);

// The line with `expect` as its member "expect", put in at its end when it has none. Every other byte stays.
std::string WithExpectation(std::string_view szLine, const Json::Value& expect);

#endif
