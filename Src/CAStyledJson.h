// JSON values as indented text for the log.
#ifndef PARLO_CASTYLEDJSON_H
#define PARLO_CASTYLEDJSON_H

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace CAStyledJson
{

// Makes the JSON library's writer and a stream for it ahead of the replies, and releases them: to make them costs more
// than to write an ordinary command with them. Without them, or without memory for them, each text makes its own. Not
// thread-safe, like the writing of a text.
void PrepareWriter() noexcept;
void ReleaseWriter() noexcept;

// The text of `value` over several lines, indented by tabs. At most `nBudget` bytes, which it takes from it: deep
// nesting makes the text hundreds of times as long as the reply.
std::string Styled(const Json::Value& value, std::size_t& nBudget);

// The same for each element of a list whose text is there already: cut out of it, where it can be, which costs a
// fraction of writing it again.
class CElementTexts
{
public:
    // `strList` is the text of `list`; both stay as they are while this lives.
    CElementTexts(const Json::Value& list, const std::string& strList);

    // The text of the next element, which is `element`.
    std::string Next(const Json::Value& element, std::size_t& nBudget);

private:
    std::string_view m_szRest;  // from the next element's line on; empty when nothing can be cut out
};

}  // namespace CAStyledJson

#endif
