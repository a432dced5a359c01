#define CA_LOG_FILE "CADataSortFilter"

#include "CADataSortFilter.h"

#include <algorithm>
#include <limits>

#include "CALog.h"

using namespace CADataRepository;

void CCADataSortFilter::SchemaSort(std::vector<_SAContents>& list, const std::vector<_SAContents>& source,
                                   const std::vector<_CASortRule>& rules)
{
    t_Sort(t_ConvertToRules(rules, static_cast<int>(list.size()), static_cast<int>(source.size())), list, source);
}

std::vector<CCADataSortFilter::Rule> CCADataSortFilter::t_ConvertToRules(const std::vector<_CASortRule>& rules, int n,
                                                                         int m)
{
    std::vector<Rule> vRules;
    vRules.reserve(rules.size());
    constexpr int kNever = std::numeric_limits<int>::max();
    Rule stRule{kNever, kNever, 0};
    for (const _CASortRule& rule : rules) {
        switch (rule.nType) {
            case E_CA_SORT_RULE_POSITION_AFTER_TURN:
                stRule = {rule.nFrom, n + m - 1, rule.nCycle};
                break;
            case E_CA_SORT_RULE_POSITION_RANGE_TURN:
                stRule = {rule.nFrom, rule.nTo, rule.nCycle};
                break;
            case E_CA_SORT_RULE_RESULT_AFTER:
                stRule = {n, n + m - 1, 1};
                break;
            case E_CA_SORT_RULE_RESULT_BEFORE:
                stRule = {0, m - 1, 1};
                break;
            default:
                CA_LOGE(" unknown type: %d", rule.nType);
        }
        vRules.push_back(stRule);
    }
    std::stable_sort(vRules.begin(), vRules.end(), [](const Rule& a, const Rule& b) { return a.nFrom < b.nFrom; });
    return vRules;
}
