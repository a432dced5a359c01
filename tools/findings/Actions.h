// What becomes of an action word, asked of the library itself.
#ifndef PARLO_ACTIONS_H
#define PARLO_ACTIONS_H

#include <string>
#include <string_view>
#include <vector>

// The lookups that may answer for a command's action.
enum class Lookup { NONE, SYSTEM, CHANNEL, CANDIDATE };

struct ActionUse {
    int nCode = 0;                          // of the lookup that answers; 0 when none does
    Lookup eLookup = Lookup::NONE;          // with a position in the command, where that matters
    std::vector<std::string_view> vParams;  // the keys of "params" that it takes
    bool bFollowUp = false;                 // whether it may stand as second command
    bool bShowsContents = false;            // whether the record gets the list of results

    bool Takes(std::string_view szKey) const;
};

// Of a word that is no action nothing is true. Writes nothing to the log.
ActionUse UseOf(const std::string& strWord);

// Whether there is an action at all that takes the key of "params".
bool AnyActionTakes(std::string_view szKey);

#endif
