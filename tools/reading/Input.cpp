// Reading of conversation lines, and the one place where the program parses JSON.
#include "reading/Input.h"

#include <json/reader.h>

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

std::size_t MarkLength(std::string_view szText)
{
    return szText.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

Span SpanOf(const Json::Value& value)
{
    const auto nStart = static_cast<std::size_t>(value.getOffsetStart());
    return {nStart, static_cast<std::size_t>(value.getOffsetLimit()) - nStart};
}

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

Json::Value MembersOf(std::string_view szText, bool bWhole)
{
    Json::Value root;
    if (!ParseJson(szText, bWhole, root) || !root.isObject()) root = Json::Value();
    return root;
}

bool ReadTurn(std::string_view szLine, ServerReply& stReply, std::string& strReason)
{
    Json::Value root;
    strReason = ParseJson(szLine, true, root) ? NoTurn(root) : "the line is not JSON";
    if (!strReason.empty()) return false;
    const Json::Value& reply = root["reply"];
    stReply.strUtterance = root["utterance"].asString();
    if (reply.isString()) {
        stReply.strText = reply.asString();
        return true;
    }
    stReply.nOffset = MarkLength(szLine) + SpanOf(reply).nStart;
    stReply.strText = szLine.substr(stReply.nOffset, SpanOf(reply).nLength);
    return true;
}

bool IsTurn(std::string_view szLine)
{
    const Json::Value root = MembersOf(szLine, true);
    return !root.isMember("rsp") && (root.isMember("utterance") || root.isMember("reply"));
}
