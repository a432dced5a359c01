// What became of each part of a reply, and why.
#ifndef PARLO_EXPLANATION_H
#define PARLO_EXPLANATION_H

#include <string>
#include <vector>

#include "findings/Finding.h"
#include "session/Case.h"

// Something that the library did, and the log line that says so. A statement without a line is about something that
// the library passes over in silence.
struct Statement {
    std::string strText;
    std::string strLog;
};

// A part of the reply: what is wrong with it, then what was done with it.
struct Section {
    std::string strTitle;
    std::vector<Finding> vFindings;
    std::vector<Statement> vStatements;
};

// Tells it from the log lines of the call. The reply's text and the record may be missing; what only they know is then
// left out. Findings of a conversation's reply have the place in their line, column 0 where there is none.
std::vector<Section> Explained(const Case& stCase);

#endif
