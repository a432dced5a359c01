// What the program tells without a reply: the vocabulary, and where conversation is available.
#ifndef PARLO_CATALOG_H
#define PARLO_CATALOG_H

#include <string>
#include <string_view>
#include <vector>

#include "text/Text.h"

// Every word of the server with its code, as tables; as one line of JSON with what the library makes of each action.
std::string RenderVocabulary(const CPaint& paint);
std::string VocabularyJson();

// What the library makes of one action word; of another word of the server what it is instead; empty when there is none
// such.
std::string RenderWord(const std::string& strWord, const CPaint& paint);
std::string WordJson(const std::string& strWord);
std::vector<std::string_view> ActionWords();  // all that an "action" may be

// An answer of ca_get_conv_status in words, with its number.
std::string RenderStatus(int nStatus);
std::string StatusJson(int nStatus);

// The answers for all countries and voice languages as a table, and as a line of JSON each; sets the substitute's
// environment for each. Needs a service.
std::string RenderAllStatuses(const CPaint& paint);
std::string AllStatusesJson();

#endif
