// The merge of one result list into another by schema rules.
#include <random>

#include "CADataSortFilter.h"
#include "Conversation.h"

using SortFilter = Conversation;
using Rules = std::vector<_CASortRule>;

static std::string Merge(const std::string& strList, const std::string& strSource, const Rules& vRules)
{
    std::vector<char> vList(strList.begin(), strList.end());
    const std::vector<char> vSource(strSource.begin(), strSource.end());
    const auto n = static_cast<int>(vList.size()), m = static_cast<int>(vSource.size());
    CCADataSortFilter::t_Sort(CCADataSortFilter::t_ConvertToRules(vRules, n, m), vList, vSource);
    return {vList.begin(), vList.end()};
}

TEST_F(SortFilter, RulesPlaceTheSource)
{
    // Each rule is its type, from, to and cycle.
    std::istringstream rows(R"(0 1 0 2 axbycd  3 9 9 9 xyabcd  2 0 0 0 abcdxy  1 1 1 2 axbcdy  0 2 0 0 abxcdy
        0 3 0 1 abcxyd  0 4 0 1 abcdxy  1 9 99 1 abcdxy  1 1 1 1 1 1 3 1 axybcd  1 3 3 1 1 0 0 1 xabycd  9 0 9 1 abcdxy
        1 0 9 3 3 0 0 0 xabycd  3 0 0 0 1 0 9 3 xyabcd  1 -2147483648 2147483647 -1 xyabcd  1 -3 -1 1 1 2 2 0 abxcdy)");
    Rules vRules;
    for (_CASortRule rule; rows >> rule.nType >> rule.nFrom >> rule.nTo >> rule.nCycle;) {
        vRules.push_back(rule);
        std::string strMerged;
        if ((rows >> std::ws).peek() < 'a') continue;
        rows >> strMerged;
        EXPECT_EQ(strMerged, Merge("abcd", "xy", vRules));
        EXPECT_EQ("xyab", Merge("", "xy", vRules) + Merge("ab", "", vRules));
        vRules.clear();
    }
}

TEST_F(SortFilter, UnknownRuleRepeatsTheOneBefore)
{
    const auto vRules = CCADataSortFilter::t_ConvertToRules({{1, 2, 5, 3}, {4, 8, 8, 8}, {3, 8, 8, 8}}, 6, 2);
    EXPECT_EQ((std::vector{0, 2, 2, 5, 3}), (std::vector{vRules.at(0).nFrom, vRules.at(1).nFrom, vRules.at(2).nFrom,
                                                         vRules.at(2).nTo, vRules.at(2).nCycle}));
    EXPECT_EQ("E t_ConvertToRules:  unknown type: 4\n", Logged());
    std::vector<_SAContents> vList(2), vSource(1);
    vSource[0].nSource = 1;
    CCADataSortFilter::SchemaSort(vList, vSource, {{1, 1, 1, 0}});
    EXPECT_TRUE(vList.size() == 3 && vList[1].nSource == 1);
}

// No source has entries, but each merge says that the rule is unknown. Each row: the schema's categories, the merges,
// the categories that are not valid.
TEST_F(SortFilter, EachSourceIsMergedOnce)
{
    std::istringstream rows(
        "1 1 0  11 1 0  123 3 0  6 4 0  16 4 0  61 4 0  66 4 0  226 4 0  4 0 1  0 0 1  5461 4 2  7 0 1");
    int nMerges = 0, nInvalid = 0;
    for (std::string strCategories; rows >> strCategories >> nMerges >> nInvalid;) {
        g_Platform.vLog.clear();
        CCADataHandler store;
        for (const char c : strCategories) store.SetSchemaList({c - '0', {{9, 0, 0, 0}}});
        std::vector<_SAContents> vList;
        store.GetSAContentsList(vList);
        EXPECT_EQ(nMerges, g_Platform.Count(" unknown type: 9")) << strCategories;
        int nCount = 0;
        for (const LogLine& line : g_Platform.vLog)
            nCount += Shown(line).find("is not valid category!") != std::string::npos;
        EXPECT_EQ(nInvalid, nCount) << strCategories;
    }
    EXPECT_EQ("D t_Sort:  7 is not valid category!\n", Shown(g_Platform.vLog.at(1)));
}

TEST_F(SortFilter, EveryEntryComesOutOnceInItsOwnOrder)
{
    std::mt19937 random(7);
    const auto any = [&random](unsigned nMost) { return static_cast<int>(random() % (nMost + 3)) - 2; };
    for (int nRound = 0; nRound < 3000; ++nRound) {
        Rules vRules(random() % 5);
        for (_CASortRule& rule : vRules) rule = {any(4), any(9), any(12), any(4)};
        const std::string strList = std::string("abcdefgh").substr(random() % 9);
        const std::string strSource = std::string("STUVWXYZ").substr(random() % 9);
        std::string strLower, strUpper;
        for (const char c : Merge(strList, strSource, vRules)) (c >= 'a' ? strLower : strUpper) += c;
        ASSERT_EQ(strList + strSource, strLower + strUpper) << "round " << nRound;
    }
}
