// A look over a JSON text before the JSON library sees it.
#pragma once

#include <cstddef>
#include <string>

// One pass over the text as far as the JSON library would read it: to the end of its first value and of the comments
// behind that. It cuts the text into the same tokens as that library, and leaves to it all mistakes but those after
// which the library would go on at another place.
class CAJsonScan
{
public:
    explicit CAJsonScan(const std::string& strText);

    // Whether the text may be parsed. Not when it is nested so deeply that the parse, which goes down with it, takes
    // more stack than a small thread has; nor when it has so many values that it means to exhaust memory, since a value
    // of two bytes becomes a hundred in the document and more in a record; nor with a mistake in a bracket, a number
    // with a point or around a comment.
    bool IsAcceptable() const { return m_bAcceptable; }

    // The comments that the JSON library meets, or more when text is behind the value.
    std::size_t CommentCount() const { return m_nComments; }

    // The text in which each number with a decimal point is written without one: 15e-1 for 1.5. It is the same number
    // to the last bit, and cannot be read otherwise: the JSON library takes the decimal point and the separator of
    // thousands from the process's locale.
    const std::string& Text() const { return m_strRewritten.empty() ? m_strText : m_strRewritten; }

private:
    bool t_Scan();
    bool t_SkipToken();
    bool t_SkipNumber();
    bool t_SkipComments();
    void t_SkipString();
    void t_SkipBlanks();

    static constexpr int kMostLevels = 128;
    static constexpr std::size_t kMostValues = std::size_t{1} << 19;

    const std::string& m_strText;
    const char* m_pNext;  // a text ends with a zero, so one byte behind m_pEnd may be looked at
    const char* m_pEnd;
    bool m_bAcceptable;
    int m_nDepth = 0;
    char m_Opened[kMostLevels] = {};  // the bracket that opened each level
    std::size_t m_nValues = 0;
    std::size_t m_nComments = 0;
    const char* m_pCopied;  // the text up to here is in m_strRewritten, when that is in use
    std::string m_strRewritten;
};
