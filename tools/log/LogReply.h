// A server's reply, put together again from the lines in which the library logs it: a bar, its size, its pieces.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "session/LogForm.h"

// What a record is of these; the bar is none. The size is what it is wherever it stands.
enum class DumpLine { NONE, SIZE, PIECE };
DumpLine DumpLineOf(const LogForm& stForm, std::size_t& nSize);

// What a log makes of characters that would not show.
enum class Escape {
    NONE,
    BACKSLASH,  // \n, \t, \xNN, and \\ for a backslash, as the television's substitute writes
    HEX,        // \xNN
    OCTAL       // #ooo
};

// How the size's line shows the line break at its end, where `szBehind` begins.
Escape EscapeOf(std::string_view szBehind);

// The message of a record as the library wrote it: escapes taken back if the log has them, the colour at its end cut
// off. With `bTorn` that colour is lost, and only the first line is sure.
std::string WholeMessage(std::string_view szMessage, Escape eEscape, bool bTorn);

class CLogReply
{
public:
    enum class State {
        NONE,    // no piece in the log
        WHOLE,   // every byte
        CUT,     // the first bytes; the log's limit cut off the rest
        GAPS,    // bytes are missing in between
        ALTERED  // a piece has more bytes than the library logged
    };

    // Bytes that the log lost. Which of several pieces were lost cannot be told: then `bPlace` is false.
    struct Gap {
        bool bPlace;
        std::size_t nOffset;
        std::size_t nBytes;
    };

    // The library's line with the size, and how many blanks the log sets before its second line; then each piece, in a
    // log that is known to escape so. `bSure`: all of the text is the piece's; else lines behind it may be others'.
    void Announce(std::size_t nSize, std::size_t nIndent)
    {
        m_nSize = nSize;
        m_nIndent = nIndent;
    }
    void Add(std::string_view szMessage, Escape eEscape, bool bSure);

    bool IsThere() const { return m_nSize || !m_vLengths.empty(); }
    const std::optional<std::size_t>& Size() const { return m_nSize; }
    bool IsComplete() const { return m_vLengths.size() >= Wanted(); }

    // Whether the next piece, or the last one, has so many bytes; and how many the next one has at the most.
    bool MayHave(std::size_t nLength) const { return nLength == Next() || nLength == LengthOf(Wanted() - 1); }
    std::size_t Next() const { return LengthOf(m_vLengths.size()); }

    // What there is, as one text without the gaps; at most 102,500 bytes, which is as much as the library logs.
    const std::string& Text() const { return m_strText; }
    std::string FirstPiece() const { return m_strText.substr(0, m_vLengths.empty() ? 0 : m_vLengths.front()); }
    State GetState() const;
    std::vector<Gap> Gaps() const;

    // The gaps in words; none of a reply that is not there at all.
    std::vector<std::string> Missing() const;

    // What the log did to the pieces and was taken back, since then their size is right: "#ooo".
    const std::set<std::string>& Undone() const { return m_vUndone; }

    // How many pieces there are, and how many there must be.
    std::size_t Pieces() const { return m_vLengths.size(); }
    std::size_t Wanted() const;

private:
    std::size_t LengthOf(std::size_t nPiece) const;
    void Append(std::string_view szPiece);
    bool AddFitting(const std::string& strPlain, Escape eEscape);
    bool AddUnindented(const std::string& strText);

    bool m_bAltered = false;
    bool m_bMore = false;  // a piece of the right length has more behind it that is surely ours
    std::optional<std::size_t> m_nSize;
    std::size_t m_nIndent = 0;  // before further lines; 0: there may be one all the same
    std::string m_strText;
    std::vector<std::size_t> m_vLengths;
    std::set<std::string> m_vUndone;
};

// "none", "whole", "cut", "gaps", "altered"
const char* NameOf(CLogReply::State eState);
