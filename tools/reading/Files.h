// Files of one reply and files of a conversation, told apart and read with no more memory than they need.
#ifndef PARLO_FILES_H
#define PARLO_FILES_H

#include <functional>
#include <string>

#include "reading/Input.h"

// What a command takes.
enum class FileForm {
    REPLY,         // a file is one reply
    CONVERSATION,  // each line that is not blank is a turn
    EITHER         // what the file looks like
};

// What a file holds in one place. Without a reason it is a reply that the library can be asked about.
struct Entry {
    ServerReply stReply;
    std::string strReason;     // why there is no reply, half a sentence
    bool bUnreadable = false;  // the reason is the system's: the file, or what follows in it, cannot be read
};

// Hands every entry of `strFile` ("-": standard input) to `handle`, in order. A reply gets `strUtterance`; an empty one
// means that it is not known. A conversation is read line by line, with a bar on the terminal when it takes long: its
// memory grows with the longest line, not with the file. A form that the command does not take is an entry with the
// reason which command does.
void ForEachEntry(const std::string& strFile, FileForm eForm, const std::string& strUtterance,
                  const std::function<void(Entry&&)>& handle);

// Reads all bytes of the file ("-": standard input) into `strText`. When that fails, returns false and puts the
// system's reason into `strReason`.
bool ReadAll(const std::string& strFile, std::string& strText, std::string& strReason);

#endif
