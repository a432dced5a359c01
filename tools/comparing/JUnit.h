// Test results in the XML form that build servers read.
#ifndef PARLO_JUNIT_H
#define PARLO_JUNIT_H

#include <string>
#include <vector>

struct TestResult {
    std::string strName;     // "evening.jsonl:3"
    std::string strSuite;    // its file
    std::string strFailure;  // lines; empty: passed
};

// False when the file cannot be written.
bool WriteJUnit(const std::string& strFile, const std::vector<TestResult>& vResults);

#endif
