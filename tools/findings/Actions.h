// What becomes of an action word and its parameters, by the rows of the vocabulary.
#pragma once

#include <string_view>

#include "CADataRepository/Vocabulary.h"

// The row of the word's code. Of a word that is no action: of code 0, which no lookup answers.
CADataRepository::ActionRow RowOf(std::string_view szWord);

// Whether an action takes a key of "params".
bool Takes(const CADataRepository::ActionRow& stRow, std::string_view szKey);
bool AnyActionTakes(std::string_view szKey);
