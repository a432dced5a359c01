// Merges one result list into another by the rules of a search schema.
#pragma once

#include <utility>
#include <vector>

#include "CADataRepository/SearchList.h"

// Static functions without state.
class __attribute__((visibility("default"))) CCADataSortFilter
{
public:
    // Where an entry of the source may go; positions count from 0 in the merged list.
    struct Rule {
        int nFrom;   // first such position
        int nTo;     // last such position
        int nCycle;  // distance between two such positions; 0: only at nFrom
    };

    // Merges `source` into `list` by the schema's rules. An entry that no rule places follows at the end.
    static void SchemaSort(std::vector<CADataRepository::_SAContents>& list,
                           const std::vector<CADataRepository::_SAContents>& source,
                           const std::vector<CADataRepository::_CASortRule>& rules);

    // Turns schema rules into position rules for a list of `n` and a source of `m` entries, ordered by nFrom.
    // A rule of unknown type repeats the one before it; the first rule of all, then, never applies.
    static std::vector<Rule> t_ConvertToRules(const std::vector<CADataRepository::_CASortRule>& rules, int n, int m);

    // The merge: one pass over both lists; each keeps its own order. `rules` are ordered by nFrom.
    template <typename Entry>
    static void t_Sort(const std::vector<Rule>& rules, std::vector<Entry>& list, const std::vector<Entry>& source);
};

template <typename Entry>
void CCADataSortFilter::t_Sort(const std::vector<Rule>& rules, std::vector<Entry>& list,
                               const std::vector<Entry>& source)
{
    std::vector<Entry> result;
    result.reserve(list.size() + source.size());
    auto rule = rules.begin();
    auto next = source.begin();
    for (auto entry = list.begin(); entry != list.end();) {
        const auto nPosition = static_cast<long long>(result.size());  // wide: a rule may begin at the least int
        const bool bReached = next != source.end() && rule != rules.end() && nPosition >= rule->nFrom;
        if (bReached && nPosition > rule->nTo)
            ++rule;
        else if (bReached &&
                 (rule->nCycle != 0 ? (nPosition - rule->nFrom) % rule->nCycle == 0 : nPosition == rule->nFrom))
            result.push_back(*next++);
        else
            result.push_back(std::move(*entry++));
    }
    result.insert(result.end(), next, source.end());
    list = std::move(result);
}
