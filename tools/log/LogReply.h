// A server's reply, put together again from the pieces that the library logs of it.
#ifndef PARLO_LOGREPLY_H
#define PARLO_LOGREPLY_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "log/LogReader.h"
#include "session/LogForm.h"

// The message of a record as the library wrote it: escapes taken back if the log has them, carriage returns of the
// log taken off, the colour at its end cut with whatever unprefixed lines came behind it.
std::string WholeMessage(const LogRecord& stRecord, std::string_view szMessage, bool bEscaped);

class CLogReply
{
public:
    enum class State {
        NONE,   // no piece in the log
        WHOLE,  // every byte
        CUT,    // the first bytes; the log's limit cut off the rest
        GAPS    // bytes are missing in between
    };

    // Bytes that the log lost. Which of several pieces were lost cannot be told: then `bPlace` is false.
    struct Gap {
        bool bPlace;
        std::size_t nOffset;
        std::size_t nBytes;
    };

    // The library's line with the size; then the record of each piece.
    void Announce(std::size_t nSize);
    void Add(const LogRecord& stRecord, std::string_view szMessage, bool bEscaped);

    bool HasSize() const { return m_bSize; }
    std::size_t Size() const { return m_nSize; }
    bool ExpectsPiece() const { return m_bSize && m_vLengths.size() < Wanted(); }

    // What there is, as one text without the gaps; at most 102,500 bytes, which is as much as the library logs.
    const std::string& Text() const { return m_strText; }
    State GetState() const;
    std::vector<Gap> Gaps() const;

    // How many pieces there are, and how many there must be.
    std::size_t Pieces() const { return m_vLengths.size(); }
    std::size_t Wanted() const;

private:
    std::size_t LengthOf(std::size_t nPiece) const;

    bool m_bSize = false;
    bool m_bTooMany = false;
    std::size_t m_nSize = 0;
    std::string m_strText;
    std::vector<std::size_t> m_vLengths;
};

#endif
