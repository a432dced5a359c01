// What the program tells without a reply: the vocabulary, and where conversation is available.
#ifndef PARLO_CATALOG_H
#define PARLO_CATALOG_H

#include <string>

#include "rendering/Text.h"

// Every word of the server with its code, as tables or as one line of JSON.
std::string RenderVocabulary(const CPaint& paint);
std::string VocabularyJson();

// What an answer of ca_get_conv_status means, with its number.
std::string StatusText(int nStatus);

// The answer of ca_get_conv_status in words, with its number. Needs a service.
std::string RenderStatus();

// The answers for all countries and voice languages as a table; sets the substitute's environment for each.
std::string RenderAllStatuses(const CPaint& paint);

#endif
