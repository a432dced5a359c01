// What the program tells without a reply, the vocabulary and where conversation is available, as JSON and as text.
#pragma once

#include <json/value.h>

#include <string>

#include "text/Text.h"

// Every word of the server with its code, and with what the library makes of each action.
Json::Value Vocabulary();
std::string RenderVocabulary(const Json::Value& vocabulary, const CPaint& paint);

// What the library makes of one action word; of another word of the server what it is instead; null when there is none
// such.
Json::Value Word(const std::string& strWord);
std::string RenderWord(const Json::Value& word, const CPaint& paint);

// An answer of ca_get_conv_status in words, with its number.
Json::Value Status(int nStatus);
std::string RenderStatus(int nStatus);

// The answers for all countries and voice languages, a list; sets the substitute's environment for each. Needs a
// service.
Json::Value AllStatuses();
std::string RenderAllStatuses(const Json::Value& statuses, const CPaint& paint);
