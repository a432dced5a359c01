// A search schema document and the ordering by its rules. Input: a schema document, then a line with the lengths of
// two lists (up to 99) and lines "TYPE FROM TO CYCLE", the rules by which the second list is merged into the first.
#include <algorithm>
#include <numeric>
#include <sstream>
#include <vector>

#include "CADataHandler.h"
#include "CADataSortFilter.h"
#include "CAParseJson.h"
#include "FuzzInput.h"

namespace
{

void SortContents(const std::string& strSchema)
{
    unsigned nCount = 0;
    CCAParsePacket parser;
    parser.ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, strSchema, nCount);
    parser.ParseData(CA_PARSE_JSON_SEARCH_SERVER,
                     R"({"rsp":{"tvcontent":[{"type":"movie","id":"1"},{"type":"tvshow","id":"2"}]}})", nCount);
    CADataRepository::_ContentsItem stLast;
    CCADataHandler::GetInstance()->SetSeachServerContentsList(stLast);
    std::vector<CADataRepository::_SAContents> vContents;
    CCADataHandler::GetInstance()->GetSAContentsList(vContents);
    Fuzz::Require(nCount == 2 && vContents.size() == 3 && vContents[0].stItem.stMnT.szId == "1");
    CCADataSortFilter::SchemaSort(vContents, std::vector<CADataRepository::_SAContents>(1), {});
    Fuzz::Require(vContents.size() == 4 && vContents[0].stItem.stMnT.szId == "1");
    delete CCADataHandler::pInstance;
    CCADataHandler::pInstance = nullptr;
}

// Numbers instead of contents, 0 upward through both lists: each list has to keep its order.
void Merge(std::istream&& text)
{
    unsigned nList = 0;
    unsigned nSource = 0;
    text >> nList >> nSource;
    std::vector<CADataRepository::_CASortRule> vSchemaRules;
    for (CADataRepository::_CASortRule rule; text >> rule.nType >> rule.nFrom >> rule.nTo >> rule.nCycle;)
        vSchemaRules.push_back(rule);

    std::vector<unsigned> vList(nList % 100);
    std::vector<unsigned> vSource(nSource % 100);
    std::iota(vList.begin(), vList.end(), 0U);
    std::iota(vSource.begin(), vSource.end(), 100U);
    std::vector<unsigned> vMerged = vList;
    const auto vRules = CCADataSortFilter::t_ConvertToRules(vSchemaRules, static_cast<int>(vList.size()),
                                                            static_cast<int>(vSource.size()));
    Fuzz::Require(vRules.size() == vSchemaRules.size());
    CCADataSortFilter::t_Sort(vRules, vMerged, vSource);
    const auto first = std::stable_partition(vMerged.begin(), vMerged.end(), [](unsigned n) { return n < 100; });
    Fuzz::Require(std::equal(vMerged.begin(), first, vList.begin(), vList.end()));
    Fuzz::Require(std::equal(first, vMerged.end(), vSource.begin(), vSource.end()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    std::string_view szInput = Fuzz::Input(pData, nSize);
    SortContents(Fuzz::TakeDocument(szInput));
    Merge(std::istringstream(std::string(szInput)));
    return 0;
}
