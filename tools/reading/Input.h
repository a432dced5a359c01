// What a reply and a line of a conversation are, as text and as JSON.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>

// A reply, with what the viewer had said and where it comes from.
struct ServerReply {
    std::string strSource;  // for messages: "evening.jsonl:3"
    std::string strUtterance;
    std::string strText;
    std::string strFile = {};
    std::size_t nLine = 1;         // of the file, where the reply or its turn begins
    bool bNoUtterance = false;     // nobody said what the viewer said: strUtterance is a stand-in
    bool bLive = false;            // whoever wrote it may be waiting for what is said of it: it came through a pipe
    bool bMark = false;            // the file began with a byte order mark, which strText is without
    std::size_t nOffset = 0;       // of strText in its line, in bytes
    std::string_view szTurn = {};  // the line of the conversation, while the reply is handled; empty: none
};

// The mark that some editors put before a text, and its length where `szText` begins with it, else 0. The JSON library
// skips it and counts offsets from behind it.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
std::size_t MarkLength(std::string_view szText);

// A piece of a text, in bytes, and where the JSON library read a value.
struct Span {
    std::size_t nStart = 0;
    std::size_t nLength = 0;
};
Span SpanOf(const Json::Value& value);

// Parses `szText`, of two equal keys the last. With `bWhole` nothing may follow the value. When that fails, returns
// false; `root` is then of no use.
bool ParseJson(std::string_view szText, bool bWhole, Json::Value& root);

// The object that the text is; null when it is none.
Json::Value MembersOf(std::string_view szText, bool bWhole = false);

// Takes one line of a conversation, {"utterance": TEXT, "reply": OBJECT or TEXT}, into `stReply`. An object's
// source text becomes the reply, byte by byte; a text is the raw reply itself, which need not be JSON. When the
// line is something else, returns false and says in `strReason` what.
bool ReadTurn(std::string_view szLine, ServerReply& stReply, std::string& strReason);

// Whether it is JSON and a turn, or means to be one: an object without "rsp" that has an utterance or a reply.
bool IsTurn(std::string_view szLine);
