// What is wrong with a document of the server, found without the service.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>
#include <vector>

#include "findings/Finding.h"

using Texts = std::vector<std::string>;

// All findings of a reply, in the order of the text; `vBefore`: the domains that replies before it left when they were
// refused. A correct reply has none.
std::vector<Finding> CheckReply(std::string_view szReply, const Texts& vBefore = {});

// The domains that the reply leaves when `vBefore` are there before it.
Texts LeftBy(std::string_view szReply, Texts vBefore);

// The same for a search schema document.
std::vector<Finding> CheckSchema(std::string_view szDocument);

// The same for a conversation, a turn a line. What is wrong with a reply that is given as an object stands where it
// is in the conversation; a reply that is given as a text has all its findings at that text. A pointer begins at the
// reply.
std::vector<Finding> CheckConversation(std::string_view szText);

// An outcome with every member that an expectation can name.
Json::Value OutcomeNames();

// The one of them that the text of the file `strName` looks like.
std::vector<Finding> CheckByForm(std::string_view szText, const std::string& strName = "-");
