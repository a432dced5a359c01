// What the server's documents look like, and a builder that makes them of arbitrary bytes: mostly the keys and words
// that the library knows, each with a value of its type, now and then anything else in any place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Fuzz
{

struct Shape {
    enum Kind { TEXT, NUMBER, WORD, LIST, OBJECT, ONE_OF };
    Kind eKind = TEXT;
    std::vector<std::string_view> vNames = {};  // the words, or an object's keys
    std::vector<Shape> vParts = {};             // what stands under each key, a list's element, the alternatives
};

// Reads an input from its front. Behind its end everything is 0, which stands for the plainest choice everywhere, so
// that a finding becomes shorter and plainer as bytes are cut off or set to 0.
class CInput
{
public:
    explicit CInput(std::string_view szInput) : m_szInput(szInput) {}

    bool IsAtEnd() const { return m_szInput.empty(); }
    std::size_t Byte();
    std::string_view Bytes(std::size_t nMost);

    template <typename Table>
    const auto& OneOf(const Table& table)
    {
        return table[Byte() % std::size(table)];
    }

private:
    std::string_view m_szInput;
};

// A reply, a search schema document, or a programme that is shown in detail.
std::string MakeReply(CInput& input);
std::string MakeSchema(CInput& input);
std::string MakeContent(CInput& input);

}  // namespace Fuzz
