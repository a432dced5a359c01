// The replies of a log as files, and all of them as a conversation.
#ifndef PARLO_LOGEXTRACT_H
#define PARLO_LOGEXTRACT_H

#include <cstdio>
#include <memory>
#include <string>

#include "log/LogCalls.h"

class CLogExtract
{
public:
    // Makes the folder if it is not there. Throws std::runtime_error when that or a file cannot be written, as Add
    // does.
    explicit CLogExtract(const std::string& strFolder);

    // Writes the call's reply to a file of its own, if there is any of it, and the turn to the conversation. Returns
    // the file's name, empty when there is none.
    std::string Add(const LogCall& call);

private:
    struct Closer {
        void operator()(std::FILE* pFile) const { static_cast<void>(std::fclose(pFile)); }
    };
    using File = std::unique_ptr<std::FILE, Closer>;

    static File Open(const std::string& strFile);
    static void Write(File& pFile, const std::string& strText, const std::string& strFile);

    std::string m_strFolder;
    std::string m_strConversation;
    File m_pConversation;
};

// "whole", "cut", "gaps", "none"
const char* NameOf(CLogReply::State eState);

#endif
