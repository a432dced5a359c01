// Reading of files and of conversation lines.
#include "reading/Input.h"

#include <json/reader.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>

namespace
{

struct FileCloser {
    void operator()(std::FILE* pFile) const
    {
        if (pFile != stdin) static_cast<void>(std::fclose(pFile));
    }
};

// The text of the JSON string `value`, NUL bytes included.
std::string Bytes(const Json::Value& value)
{
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    return value.getString(&pBegin, &pEnd) ? std::string(pBegin, pEnd) : std::string();
}

// Why `root` is not a turn; empty when it is one.
const char* NoTurn(const Json::Value& root)
{
    if (!root.isObject()) return "the line is not a JSON object";
    if (!root["utterance"].isString()) return "the line has no text \"utterance\"";
    const Json::Value& reply = root["reply"];
    return reply.isObject() || reply.isString() ? "" : "the line has no \"reply\" that is an object or a text";
}

}  // namespace

bool ParseJson(std::string_view szText, bool bWhole, Json::Value& root)
{
    Json::CharReaderBuilder builder;
    builder["failIfExtra"] = bWhole;
    builder["collectComments"] = false;  // keeping many of them takes the reader long
    const std::unique_ptr<Json::CharReader> pReader(builder.newCharReader());
    try {
        return pReader->parse(szText.data(), szText.data() + szText.size(), &root, nullptr);
    } catch (const Json::Exception&) {  // nested deeper than the JSON library follows
        return false;
    }
}

bool ReadAll(const std::string& strFile, std::string& strText, std::string& strReason)
{
    const std::unique_ptr<std::FILE, FileCloser> pFile(strFile == "-" ? stdin : std::fopen(strFile.c_str(), "rb"));
    strText.clear();
    std::size_t nRead = 0;
    char buffer[1 << 16];
    while (pFile != nullptr && (nRead = std::fread(buffer, 1, sizeof buffer, pFile.get())) > 0)
        strText.append(buffer, nRead);
    if (pFile != nullptr && std::ferror(pFile.get()) == 0) return true;
    strReason = std::strerror(errno);
    return false;
}

bool ReadTurn(std::string_view szLine, ServerReply& stReply, std::string& strReason)
{
    constexpr std::string_view kMark = "\xEF\xBB\xBF";  // the reader skips it and counts offsets from behind it
    if (szLine.substr(0, kMark.size()) == kMark) szLine.remove_prefix(kMark.size());
    Json::Value root;
    strReason = ParseJson(szLine, true, root) ? NoTurn(root) : "the line is not JSON";
    if (!strReason.empty()) return false;

    stReply.strUtterance = Bytes(root["utterance"]);
    const Json::Value& reply = root["reply"];
    if (reply.isString()) {
        stReply.strText = Bytes(reply);
        return true;
    }
    const auto nStart = static_cast<std::size_t>(reply.getOffsetStart());
    stReply.strText = szLine.substr(nStart, static_cast<std::size_t>(reply.getOffsetLimit()) - nStart);
    return true;
}
