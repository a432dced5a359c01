// A server's reply, put together again from the pieces that the library logs of it.
#ifndef PARLO_LOGREPLY_H
#define PARLO_LOGREPLY_H

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "log/DumpLine.h"
#include "log/LogReader.h"

// What a log makes of characters that would not show.
enum class Escape {
    NONE,
    BACKSLASH,  // \n, \t, \xNN, and \\ for a backslash, as the television's substitute writes
    LETTERS,    // the same, the backslash alone
    HEX,        // \xNN
    OCTAL       // #ooo
};

// How the size's line shows the line break at its end.
Escape EscapeOf(std::string_view szSizeMessage);

// The message of a record as the library wrote it: escapes taken back if the log has them, the colour at its end cut
// with whatever lines came behind it.
std::string WholeMessage(const LogRecord& stRecord, std::string_view szMessage, Escape eEscape);

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

    // The library's line with the size; then the record of each piece, in a log that is known to escape so.
    void Announce(std::size_t nSize);
    void Add(const LogRecord& stRecord, std::string_view szMessage, Escape eEscape);

    bool HasSize() const { return m_bSize; }
    std::size_t Size() const { return m_nSize; }
    bool IsComplete() const { return m_bSize && m_vLengths.size() >= Wanted(); }

    // What there is, as one text without the gaps; at most 102,500 bytes, which is as much as the library logs.
    const std::string& Text() const { return m_strText; }
    State GetState() const;
    std::vector<Gap> Gaps() const;

    // What the log did to the pieces and was taken back, since then their size is right: "#ooo".
    const std::set<std::string>& Undone() const { return m_vUndone; }

    // How many pieces there are, and how many there must be.
    std::size_t Pieces() const { return m_vLengths.size(); }
    std::size_t Wanted() const;

private:
    std::size_t LengthOf(std::size_t nPiece) const;
    bool AddFitting(const std::string& strPlain);
    bool AddUnindented(std::string_view szText);

    bool m_bSize = false;
    bool m_bTooMany = false;
    bool m_bAltered = false;
    std::size_t m_nSize = 0;
    std::string m_strText;
    std::vector<std::size_t> m_vLengths;
    std::set<std::string> m_vUndone;
};

#endif
