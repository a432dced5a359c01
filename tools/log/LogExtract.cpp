// Writing of what a log holds of the replies.
#include "log/LogExtract.h"

#include <json/value.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "records/RecordJson.h"

namespace
{

// "reply-0001.json"; one that is not whole is ".partial", since nobody should take it for the reply.
std::string NameFor(const LogCall& call)
{
    const std::string strNumber = std::to_string(call.nNumber);
    const std::string strZeros(strNumber.size() < 4 ? 4 - strNumber.size() : 0, '0');
    const bool bWhole = call.reply.GetState() == CLogReply::State::WHOLE;
    return "reply-" + strZeros + strNumber + (bWhole ? ".json" : ".partial");
}

}  // namespace

const char* NameOf(CLogReply::State eState)
{
    constexpr const char* kNames[] = {"none", "whole", "cut", "gaps", "altered"};
    return kNames[static_cast<int>(eState)];
}

CLogExtract::CLogExtract(const std::string& strFolder)
    : m_strFolder(strFolder), m_strConversation(strFolder + "/conversation.jsonl")
{
    std::error_code error;
    std::filesystem::create_directories(strFolder, error);
    m_pConversation = Open(m_strConversation);
}

std::string CLogExtract::Add(const LogCall& call)
{
    if (call.reply.Text().empty()) return {};
    std::string strFile = m_strFolder + '/' + NameFor(call);
    File pFile = Open(strFile);
    Write(pFile, call.reply.Text(), strFile);

    Json::Value turn;
    turn["utterance"] = call.strUtterance.empty() ? "(utterance)" : call.strUtterance;
    turn["reply"] = call.reply.Text();
    turn["call"] = static_cast<Json::UInt64>(call.nNumber);
    turn["state"] = NameOf(call.reply.GetState());
    Write(m_pConversation, JsonLine(turn), m_strConversation);
    return strFile;
}

CLogExtract::File CLogExtract::Open(const std::string& strFile)
{
    File pFile(std::fopen(strFile.c_str(), "wb"));
    if (pFile == nullptr)
        throw std::runtime_error(strFile + " cannot be written: " + std::system_category().message(errno));
    return pFile;
}

void CLogExtract::Write(File& pFile, const std::string& strText, const std::string& strFile)
{
    if (std::fwrite(strText.data(), 1, strText.size(), pFile.get()) == strText.size() && std::fflush(pFile.get()) == 0)
        return;
    throw std::runtime_error(strFile + " cannot be written: " + std::system_category().message(errno));
}
