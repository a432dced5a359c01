// The replies of a log as files, and all of them as a conversation.
#pragma once

#include <string>

#include "log/LogCalls.h"

class CLogExtract
{
public:
    // Makes the folder if it is not there. Throws std::runtime_error when that or a file cannot be written, as Add
    // does, and when there is an extraction in it: two would look like one.
    explicit CLogExtract(const std::string& strFolder);

    // Writes the call's reply to a file of its own, if there is any of it, and the turn to its process's conversation.
    // Returns the file's name, empty when there is none.
    std::string Add(const LogCall& call);

private:
    static void Write(const std::string& strFile, const char* szMode, const std::string& strText);

    std::string m_strFolder;
};

// "none", "whole", "cut", "gaps", "altered"
const char* NameOf(CLogReply::State eState);
