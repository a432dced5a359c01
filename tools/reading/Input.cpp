// Reading of conversation lines, and the one place where the program parses JSON.
#include "reading/Input.h"

#include <json/reader.h>

#include <exception>
#include <memory>
#include <utility>

namespace
{

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

// A value's place in a line.
struct Extent {
    std::size_t nStart = 0;
    std::size_t nEnd = 0;
};

// Behind the string that begins at `nStart`; npos when it does not end.
std::size_t EndOfString(std::string_view szText, std::size_t nStart)
{
    for (std::size_t n = szText.find('"', nStart + 1); n != std::string_view::npos; n = szText.find('"', n + 1)) {
        const std::size_t nBackslashes = n - 1 - szText.find_last_not_of('\\', n - 1);
        if (nBackslashes % 2 == 0) return n + 1;
    }
    return std::string_view::npos;
}

// Where the object "reply" stands in a line that is JSON, by its brackets and quotes alone. False when that does not
// say enough: there is none or more than one, or something that is no strict JSON.
bool FindReply(std::string_view szLine, Extent& stReply)
{
    std::size_t nDepth = 0;
    std::size_t nFound = 0;
    bool bKey = false;  // the last text of the line's own object was "reply"
    for (std::size_t n = 0; n < szLine.size(); ++n) {
        const char c = szLine[n];
        if (c == '"') {
            const std::size_t nEnd = EndOfString(szLine, n);
            if (nEnd == std::string_view::npos) return false;
            if (nDepth == 1) bKey = szLine.substr(n, nEnd - n) == "\"reply\"";
            n = nEnd - 1;
        } else if (c == '{' || c == '[') {
            if (++nDepth == 2 && bKey) stReply.nStart = n;
        } else if (c == '}' || c == ']') {
            if (nDepth-- == 0) return false;
            if (nDepth == 1 && std::exchange(bKey, false) && ++nFound == 1) stReply.nEnd = n + 1;
        } else if (c == ',' && nDepth == 1) {
            bKey = false;
        } else if (c == '/' || c == '\'') {
            return false;
        }
    }
    return nFound == 1 && nDepth == 0 && szLine[stReply.nStart] == '{';
}

// Parses the line with the reply's object left out, which the library parses anyway: a reply is most of its line. True
// when the line is a turn whatever that object holds.
bool ReadFrame(std::string_view szLine, ServerReply& stReply)
{
    Extent stExtent;
    if (!FindReply(szLine, stExtent)) return false;
    std::string strFrame(szLine.substr(0, stExtent.nStart));
    strFrame.append("{}").append(szLine.substr(stExtent.nEnd));
    Json::Value root;
    if (!ParseJson(strFrame, true, root) || *NoTurn(root) != '\0') return false;
    const Json::Value& reply = root["reply"];
    if (!reply.isObject() || reply.getOffsetStart() != static_cast<std::ptrdiff_t>(stExtent.nStart)) return false;
    stReply.strUtterance = Bytes(root["utterance"]);
    stReply.strText = szLine.substr(stExtent.nStart, stExtent.nEnd - stExtent.nStart);
    stReply.nOffset = stExtent.nStart;
    return true;
}

// The same from the whole line, or the reason why that fails.
bool ReadWhole(std::string_view szLine, ServerReply& stReply, std::string& strReason)
{
    Json::Value root;
    strReason = ParseJson(szLine, true, root) ? NoTurn(root) : "the line is not JSON";
    if (!strReason.empty()) return false;

    stReply.strUtterance = Bytes(root["utterance"]);
    const Json::Value& reply = root["reply"];
    if (reply.isString()) {
        stReply.strText = Bytes(reply);
        return true;
    }
    stReply.nOffset = static_cast<std::size_t>(reply.getOffsetStart());
    stReply.strText =
        szLine.substr(stReply.nOffset, static_cast<std::size_t>(reply.getOffsetLimit()) - stReply.nOffset);
    return true;
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
    const bool bMark = szLine.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    if (bMark) szLine.remove_prefix(kByteOrderMark.size());
    if (!ReadFrame(szLine, stReply) && !ReadWhole(szLine, stReply, strReason)) return false;
    if (bMark) stReply.nOffset += kByteOrderMark.size();
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
