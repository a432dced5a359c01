// The member is found by the offsets that the JSON library keeps, so that the rest of the line is left alone.
#include "reading/Expectation.h"

#include "reading/Input.h"
#include "records/RecordJson.h"

Json::Value MembersOf(std::string_view szLine)
{
    Json::Value root;
    return ParseJson(szLine, false, root) && root.isObject() ? root : Json::Value();
}

std::string WithExpectation(std::string_view szLine, const Json::Value& expect)
{
    // The JSON library skips the mark and counts offsets from behind it.
    const std::size_t nMark = szLine.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
    const Json::Value root = MembersOf(szLine);
    std::string strLine(szLine);
    if (root.isNull()) return strLine;
    if (root.isMember("expect")) {
        const Json::Value& old = root["expect"];
        const auto nStart = static_cast<std::size_t>(old.getOffsetStart());
        const auto nLength = static_cast<std::size_t>(old.getOffsetLimit()) - nStart;
        return strLine.replace(nMark + nStart, nLength, JsonText(expect));
    }
    const std::size_t nEnd = nMark + static_cast<std::size_t>(root.getOffsetLimit()) - 1;  // the closing brace
    const std::string strMember = "\"expect\": " + JsonText(expect);
    // JSON at once only behind a comma that ends the line's members, or where there are none.
    strLine.insert(nEnd, strMember);
    return MembersOf(strLine).isNull() ? strLine.insert(nEnd, ", ") : strLine;
}
