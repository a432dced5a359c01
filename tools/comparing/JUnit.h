// Test results in the XML form that build servers read.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct TestResult {
    std::string strName;
    std::string strFile;
    std::size_t nLine = 0;
    double dSeconds = 0;
    bool bSkipped = false;                    // nothing is expected
    std::vector<std::string> vFailures = {};  // a line each, or several; none: passed
};

// False when the file cannot be written.
bool WriteJUnit(const std::string& strFile, const std::vector<TestResult>& vResults);
