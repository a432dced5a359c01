// Why the library refused a reply, told from its log lines.
#pragma once

#include <string>
#include <string_view>

#include "session/LogTap.h"

// Listens to the log of one call. Keeps no line but the one that says why.
class CRefusal
{
public:
    // For a call of which all lines are listened to that are worth it: when none comes, "rsp" was missing.
    static CRefusal OfCall();

    void Listen(const LogLine& stLine);

    // Whether a line whose message has this format says something of a call: the others need not be listened to.
    static bool Hears(std::string_view szFormat);

    // The reason as half a sentence, "it has no \"rsp\"". The log has the code 0 for none too: where `szReply`, the
    // reply, is known it tells which.
    std::string Reason(std::string_view szReply = {}) const;

    // The line that the reason rests on. Of a reply without "rsp" it is the line behind which more should come, if that
    // was listened to.
    const std::string& Line() const { return m_strLine; }

private:
    std::string m_strReason;
    std::string m_strLine;
    std::string m_strServerMessage;
    bool m_bCodeZero = false;  // the reason is a failure of the code 0, or of none
};
