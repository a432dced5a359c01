// What becomes of an action word and its parameters, by the rows of the vocabulary.
#pragma once

#include <string_view>
#include <vector>

#include "CADataRepository/Vocabulary.h"

// All words of a vocabulary.
template <const auto& kWords>
std::vector<std::string_view> AllOf()
{
    std::vector<std::string_view> vWords;
    for (const auto& stWord : kWords) vWords.push_back(stWord.szWord);
    return vWords;
}

// All that an "action" may be: the actions, and two words that stand for a way of handling the reply and have no code.
std::vector<std::string_view> ActionWords();

// The row of the word's code. Of a word that is no action: of code 0, which no lookup answers.
CADataRepository::ActionRow RowOf(std::string_view szWord);

// Whether an action takes a key of "params".
bool Takes(const CADataRepository::ActionRow& stRow, std::string_view szKey);
bool AnyActionTakes(std::string_view szKey);

// Whether a second command may follow: one to carry out on the channel or name that is chosen.
inline bool AsksForSecond(const CADataRepository::ActionRow& stRow)
{
    return stRow.eLookup > CADataRepository::ActionLookup::SYSTEM;
}
