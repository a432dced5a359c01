// What a log's reader prints before a message: time, process and thread, priority letter, tag.
#ifndef PARLO_LOGPREFIX_H
#define PARLO_LOGPREFIX_H

#include <cstddef>
#include <string>
#include <string_view>

struct LogPrefix {
    std::string strTime;  // as it stands in the log
    std::string strProcess;
    std::string strThread;
    char cPriority = '\0';    // 'E'; NUL when it is not shown
    std::size_t nLength = 0;  // bytes of the line before the message
};

enum class LineKind {
    OURS,     // begins a record of the library
    TAGGED,   // has the library's tag but not its form: perhaps more of a record whose prefix is repeated
    BARE,     // begins with the library's form and has no tag
    FOREIGN,  // begins a record of somebody else
    UNKNOWN,  // has no prefix: more of the record before it, whoever's that is
};

// Says what kind of line `szLine` is. Fills `stPrefix` when it is ours or tagged.
LineKind RecognisePrefix(std::string_view szLine, LogPrefix& stPrefix);

#endif
