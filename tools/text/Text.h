// Text for a person: safe for a terminal, coloured if wanted, aligned in tables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Colours a text, or leaves it alone when colours are off.
class CPaint
{
public:
    explicit CPaint(bool bColoured) : m_bColoured(bColoured) {}
    std::string Title(const std::string& strText) const { return Wrap("1", strText); }
    std::string Label(const std::string& strText) const { return Wrap("36", strText); }
    std::string Faint(const std::string& strText) const { return Wrap("2", strText); }

private:
    std::string Wrap(const char* szCode, const std::string& strText) const;
    bool m_bColoured;
};

// A text of a reply as it may be shown: no control characters, the invisible ones that turn the direction of text
// included, and a very long one cut with its length told.
std::string Shown(std::string_view szText);

// The same between quotation marks, so that an empty text and outer blanks show, and with \xNN for characters that
// would not show; a quotation mark and a backslash within get a backslash before them.
std::string Quoted(std::string_view szText);

// `strJson`, a JSON text, with what JSON allows raw within texts and a terminal would obey written as \uXXXX.
std::string EscapedInJson(const std::string& strJson);

// "one, two, three"
std::string Joined(const std::vector<std::string>& vTexts);

// "1 entry", "2 entries"; `szMany` is the word for any other number than one.
std::string Count(std::size_t nCount, const char* szOne, const char* szMany);

// How many columns of a terminal the text takes; wide characters count two.
std::size_t Columns(const std::string& strText);

// `strText` with blanks up to `nColumns` columns of a terminal.
std::string Padded(std::string strText, std::size_t nColumns);

// Rows of cells as aligned lines of `nIndent` blanks; the first row is the heading. An empty cell shows as "-".
std::string Table(std::vector<std::vector<std::string>> vRows, std::size_t nIndent, const CPaint& paint);
