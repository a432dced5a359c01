// Where replies come from: files of one reply each, and the lines of a conversation.
#ifndef PARLO_INPUT_H
#define PARLO_INPUT_H

#include <json/value.h>

#include <string>
#include <string_view>

// A reply, with what the viewer had said and a name for messages.
struct ServerReply {
    std::string strSource;
    std::string strUtterance;
    std::string strText;
};

// Parses `szText`, of two equal keys the last. With `bWhole` nothing may follow the value. When that fails, returns
// false; `root` is then of no use.
bool ParseJson(std::string_view szText, bool bWhole, Json::Value& root);

// Reads all bytes of the file `strFile` ("-": standard input) into `strText`. When that fails, returns false and
// puts the system's reason into `strReason`.
bool ReadAll(const std::string& strFile, std::string& strText, std::string& strReason);

// Takes one line of a conversation, {"utterance": TEXT, "reply": OBJECT or TEXT}, into `stReply`. An object's
// source text becomes the reply, byte by byte; a text is the raw reply itself, which need not be JSON. When the
// line is something else, returns false and says in `strReason` what.
bool ReadTurn(std::string_view szLine, ServerReply& stReply, std::string& strReason);

#endif
