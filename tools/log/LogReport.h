// The calls of a log as a person or a program reads them, and their replies as files.
#pragma once

#include <json/value.h>

#include "log/LogReplay.h"
#include "text/Text.h"

// What there is to tell of a call beside the call itself.
struct CallReport {
    std::optional<int> nStatus;  // of a status call
    std::string strFile;         // where its reply was written
    std::optional<Comparison> stReplayed;
    std::string strExplanation;  // for a person: lines, each with its break
    Json::Value explanation;     // for a program
};

// Calls as a table that is printed while they end.
class CCallList
{
public:
    // For calls of the given logs.
    CCallList(const std::vector<std::string>& vFiles, const CPaint& paint);

    std::string Heading() const;

    // A line with the columns, and indented lines for what the table has no columns for.
    std::string Call(const LogCall& call, const CallReport& stReport);

    // What the calls came to together; of the log's lines with the tag `nStrays` are none of theirs.
    std::string Closing(std::size_t nStrays) const;

private:
    std::size_t m_nFolder;  // how many bytes of each place are the folder that all logs are in
    std::size_t m_nPlace;   // the width of a place
    CPaint m_paint;
    std::size_t m_nCalls = 0;
    std::size_t m_nRefused = 0;
    std::size_t m_nNotWhole = 0;
    std::size_t m_nLast = 0;
    bool m_bMixed = false;  // a call ended behind one that begins later
    std::map<Comparison::Result, std::size_t> m_mapReplayed;
};

Json::Value CallJson(const LogCall& call, const CallReport& stReport);

// Makes the folder if it is not there. Throws std::runtime_error when that or a file cannot be written, as Extract
// does, and when there is an extraction in it: two would look like one.
void BeginExtraction(const std::string& strFolder);

// Writes the call's reply to a file of its own, if there is any of it, and the turn to its process's conversation.
// Returns the file's name, empty when there is none.
std::string Extract(const LogCall& call, const std::string& strFolder);
