// Files of one reply and files of a conversation, told apart and read with no more memory than they need.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "reading/Input.h"
#include "reading/LineFile.h"

// What a command takes.
enum class FileForm {
    REPLY,         // a file is one reply
    CONVERSATION,  // each line that is not blank is a turn
    EITHER         // what the file looks like
};

// Takes the next line off the front of `szText`, without its line break. False at the end.
bool TakeLine(std::string_view& szText, std::string_view& szLine);
bool IsBlank(std::string_view szLine);

// Whether the file with that text is a conversation: its first line is a turn, or it is no JSON document and another
// line is one or its name ends in ".jsonl". Anything else is one reply.
bool LooksLikeConversation(const std::string& strName, std::string_view szText);

// What a file holds in one place. Without a reason it is a reply that the library can be asked about.
struct Entry {
    ServerReply stReply;
    std::string strReason;     // why there is no reply, half a sentence
    bool bUnreadable = false;  // the file, or what follows in it, cannot be read
};

// Hands every entry of the file, of which nothing was read yet, to `handle`, in order. A reply gets `strUtterance`; an
// empty one means that it is not known. A conversation is read line by line, with a bar on the terminal when it takes
// long: its memory grows with the longest line, not with the file. A form that the command does not take is an entry
// with the reason which command does.
void ForEachEntry(CLineFile& file, FileForm eForm, const std::string& strUtterance,
                  const std::function<void(Entry&&)>& handle);

// The files that the name stands for, in order: of a folder every .json and .jsonl below it, and what of it cannot be
// looked into; else the name itself.
std::vector<std::string> FilesOf(const std::string& strName);

constexpr const char* kNoMemory = "memory ran out";

// Calls `call`; false when memory ran out on the way.
bool WithinMemory(const std::function<void()>& call);

// Reads all bytes of the file ("-": standard input) into `strText`. When that fails, returns false and puts the reason
// into `strReason`: the system's, or that memory ran out.
bool ReadAll(const std::string& strFile, std::string& strText, std::string& strReason);
