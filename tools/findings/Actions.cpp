// Questions to the vocabulary.
#include "findings/Actions.h"

#include <algorithm>

using namespace CADataRepository;

std::vector<std::string_view> ActionWords()
{
    std::vector<std::string_view> vWords = AllOf<kActionWords>();
    vWords.insert(vWords.end(), {"display_content", "search_failed"});
    return vWords;
}

ActionRow RowOf(std::string_view szWord)
{
    int nCode = 0;
    LookUp(kActionWords, szWord, nCode);
    return ActionOf(nCode);
}

bool Takes(const ActionRow& stRow, std::string_view szKey)
{
    const std::string_view szAsked = szKey == "index" ? "idx" : szKey;  // the one says that the other counts
    const auto IsAsked = [szAsked](const char* szTaken) { return szTaken != nullptr && szTaken == szAsked; };
    return szKey == "action" || std::any_of(stRow.vKeys.begin(), stRow.vKeys.end(), IsAsked);
}

bool AnyActionTakes(std::string_view szKey)
{
    return std::any_of(std::begin(kActionRows), std::end(kActionRows),
                       [szKey](const ActionRow& stRow) { return Takes(stRow, szKey); });
}
