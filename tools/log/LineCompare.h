// Two logs of the same call, the set's and this library's, line by line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "session/LogTap.h"

struct Comparison {
    enum class Result {
        SAME,
        MISSING,  // the same, but for lines that the log does not have: lost, or not written by the set
        DIFFERS,
        NOT_COMPARED
    };
    Result eResult = Result::NOT_COMPARED;
    std::string strWhy;        // why it was not compared, or what differs when it is no line
    std::string strSet;        // the set's line
    std::string strHere;       // this library's line; of missing ones the first
    std::size_t nMissing = 0;  // how many
};

// Whether the line is not compared, since it says what the television answered.
bool IsAnswer(const LogLine& stLine);

// The numbers of the source lines are not compared, nor is what the television's own functions answered.
class CLineCompare
{
public:
    // `vSet` must live as long as this and have no answers. With `bCut` there were more lines than `vSet` has.
    // With `bDebug` the set is known to log at debug priority; else one of its lines must show it.
    CLineCompare(const std::vector<LogLine>& vSet, bool bCut, bool bDebug)
        : m_vSet(vSet), m_bCut(bCut), m_bDebug(bDebug)
    {
    }

    // The next line of this library.
    void Here(const LogLine& stLine);

    Comparison Result() const;
    bool LogsDebug() const { return m_bDebug; }

private:
    // Lines of this library that the log does not have.
    struct Missing {
        std::size_t nCount = 0;
        std::string strFirst;
        void Add(const Missing& stMore);
    };

    const std::vector<LogLine>& m_vSet;
    bool m_bCut;
    std::size_t m_nNext = 0;  // the set's line whose like is awaited
    bool m_bDebug;
    Missing m_stError;  // before the last line that the log has, by priority
    Missing m_stDebug;
    Missing m_stErrorBehind;  // behind it
    Missing m_stDebugBehind;
    std::string m_strBehind;  // the first behind it, whatever its priority
};
