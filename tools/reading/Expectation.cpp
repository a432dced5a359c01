// The member is found by the offsets that the JSON library keeps, so that the rest of the line is left alone.
#include "reading/Expectation.h"

#include "reading/Input.h"
#include "records/RecordJson.h"

namespace
{

constexpr const char* kExpect = "expect";

}  // namespace

Json::Value ExpectationOf(std::string_view szLine)
{
    Json::Value root;
    if (!ParseJson(szLine, false, root) || !root.isObject()) return {};
    return root[kExpect];
}

std::string WithExpectation(std::string_view szLine, const Json::Value& expect)
{
    // The JSON library skips the mark and counts offsets from behind it.
    const std::size_t nMark = szLine.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
    Json::Value root;
    std::string strLine(szLine);
    if (!ParseJson(szLine, false, root) || !root.isObject()) return strLine;
    if (root.isMember(kExpect)) {
        const Json::Value& old = root[kExpect];
        const auto nStart = static_cast<std::size_t>(old.getOffsetStart());
        const auto nLength = static_cast<std::size_t>(old.getOffsetLimit()) - nStart;
        return strLine.replace(nMark + nStart, nLength, JsonText(expect));
    }
    const auto nEnd = static_cast<std::size_t>(root.getOffsetLimit()) - 1;  // the closing brace
    return strLine.insert(nMark + nEnd, (root.empty() ? "\"expect\": " : ", \"expect\": ") + JsonText(expect));
}
