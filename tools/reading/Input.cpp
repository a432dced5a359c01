// Reading of conversation lines, and the one place where the program parses JSON.
#include "reading/Input.h"

#include <json/reader.h>

#include <exception>
#include <memory>

namespace
{

// Why `root` is not a turn; empty when it is one.
const char* NoTurn(const Json::Value& root)
{
    if (!root.isObject()) return "the line is not a JSON object";
    if (root.isMember("rsp") && !root.isMember("reply")) return "the line is a reply, which \"parlo reply\" takes";
    if (!root["utterance"].isString()) return "the line has no text \"utterance\"";
    const Json::Value& reply = root["reply"];
    return reply.isObject() || reply.isString() ? "" : "the line has no \"reply\" that is an object or a text";
}

// Making a reader costs as much as parsing a small reply, so each kind is made once.
std::unique_ptr<Json::CharReader> MakeReader(bool bWhole)
{
    Json::CharReaderBuilder builder;
    builder["failIfExtra"] = bWhole;
    builder["collectComments"] = false;  // keeping many of them takes the reader long
    return std::unique_ptr<Json::CharReader>(builder.newCharReader());
}

}  // namespace

bool ParseJson(std::string_view szText, bool bWhole, Json::Value& root)
{
    static const std::unique_ptr<Json::CharReader> pReaders[] = {MakeReader(false), MakeReader(true)};
    try {
        // cppcheck-suppress invalidLifetime ; a reader does not look at an earlier text again
        return pReaders[bWhole ? 1 : 0]->parse(szText.data(), szText.data() + szText.size(), &root, nullptr);
    } catch (const Json::Exception&) {  // nested deeper than the JSON library follows
        return false;
    }
}

bool ReadTurn(std::string_view szLine, ServerReply& stReply, std::string& strReason)
{
    // The JSON library skips the mark and counts offsets from behind it.
    const std::size_t nMark = szLine.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
    Json::Value root;
    strReason = ParseJson(szLine, true, root) ? NoTurn(root) : "the line is not JSON";
    if (!strReason.empty()) return false;
    const Json::Value& reply = root["reply"];
    stReply.strUtterance = root["utterance"].asString();
    if (reply.isString()) {
        stReply.strText = reply.asString();
        return true;
    }
    const auto nStart = static_cast<std::size_t>(reply.getOffsetStart());
    stReply.nOffset = nMark + nStart;
    stReply.strText = szLine.substr(stReply.nOffset, static_cast<std::size_t>(reply.getOffsetLimit()) - nStart);
    return true;
}

bool IsTurn(std::string_view szLine)
{
    Json::Value root;
    if (!ParseJson(szLine, true, root) || !root.isObject() || root.isMember("rsp")) return false;
    return root.isMember("utterance") || root.isMember("reply");
}

bool IsReply(std::string_view szText)
{
    Json::Value root;
    return ParseJson(szText, false, root) && root.isObject() && root.isMember("rsp");
}
