// Writing of what a log holds of the replies.
#include "log/LogExtract.h"

#include <json/value.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
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

// "conversation-1480.jsonl". A process is what the log says it is, which may be no number.
std::string ConversationOf(const LogCall& call)
{
    constexpr std::size_t kLongest = 32;
    const auto IsPlain = [](unsigned char c) { return std::isalnum(c) != 0; };
    std::string strProcess = call.stPrefix.strProcess.substr(0, kLongest);
    for (char& c : strProcess)
        if (!IsPlain(static_cast<unsigned char>(c))) c = '_';
    return "conversation" + (strProcess.empty() ? "" : '-' + strProcess) + ".jsonl";
}

}  // namespace

const char* NameOf(CLogReply::State eState)
{
    constexpr const char* kNames[] = {"none", "whole", "cut", "gaps", "altered"};
    return kNames[static_cast<int>(eState)];
}

CLogExtract::CLogExtract(const std::string& strFolder) : m_strFolder(strFolder)
{
    std::error_code error;
    std::filesystem::create_directories(strFolder, error);
    if (error) throw std::runtime_error(strFolder + " cannot be made: " + error.message());
    for (const auto& entry : std::filesystem::directory_iterator(strFolder, error)) {
        const std::string strName = entry.path().filename().string();
        if (strName.rfind("reply-", 0) == 0 || strName.rfind("conversation", 0) == 0)
            throw std::runtime_error(strFolder + " holds an extraction already");
    }
}

std::string CLogExtract::Add(const LogCall& call)
{
    if (call.reply.Text().empty()) return {};
    std::string strFile = m_strFolder + '/' + NameFor(call);
    Write(strFile, "wb", call.reply.Text());

    Json::Value turn;
    turn["utterance"] = call.strUtterance.empty() ? "(utterance)" : call.strUtterance;
    if (call.strUtterance.empty()) turn["utterance_known"] = false;
    turn["reply"] = call.reply.Text();
    turn["call"] = static_cast<Json::UInt64>(call.nNumber);
    turn["state"] = NameOf(call.reply.GetState());
    Write(m_strFolder + '/' + ConversationOf(call), "ab", JsonLine(turn));
    return strFile;
}

void CLogExtract::Write(const std::string& strFile, const char* szMode, const std::string& strText)
{
    std::FILE* pFile = std::fopen(strFile.c_str(), szMode);
    const bool bWritten = pFile != nullptr && std::fwrite(strText.data(), 1, strText.size(), pFile) == strText.size();
    const bool bClosed = pFile != nullptr && std::fclose(pFile) == 0;
    if (bWritten && bClosed) return;
    throw std::runtime_error(strFile + " cannot be written: " + std::system_category().message(errno));
}
