// The steps of a recorded conversation. RecordedTest.cpp says what they are and how they are written.
#pragma once

#include <string>
#include <vector>

struct Step {
    std::string strVerb, strArgument, strText;
};

// A fresh set, without whatever a conversation before has left.
void BeginConversation();

// Runs the step. A result, or "FIELD JSON" for what it filled of a record, a line each.
std::vector<std::string> RunStep(const Step& step);

// Nothing is left of the service, the store and what they opened.
void EndConversation();
