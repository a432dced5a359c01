#include "CADataHandler.h"

#include <iterator>
#include <utility>

#include "CADataSortFilter.h"
#include "CALog.h"
#include "CAPollingLock.h"

using namespace CADataRepository;

template class CCASingleton<CCADataHandler>;

namespace
{

constexpr char kGetList[] = "GetSAContentsList";  // both ways to the list log under this name

// A result source besides the voice server, which a schema category merges into the list. No step of the
// library puts entries into one; what is here is what the schema's rules mean for them.
struct Source {
    int nCategory;
    bool bMerged = false;
    std::vector<_SAContents> vEntries = {};
};

void AppendAll(std::vector<_SAContents>& list, std::vector<_SAContents>::const_iterator where,
               const std::vector<_SAContents>& source)
{
    list.insert(where, source.begin(), source.end());
}

// Empties a text or list and gives its memory back: one large reply must not weigh on the set for the rest of its days.
template <typename Container>
void Release(Container& container)
{
    Container().swap(container);
}

// Drops what is behind the first `nCount` elements.
template <typename Element>
void Shorten(std::vector<Element>& list, std::size_t nCount)
{
    if (nCount < list.size()) list.erase(list.begin() + static_cast<std::ptrdiff_t>(nCount), list.end());
}

}  // namespace

// The merges of a sort in their order, the rules of each converted already: what can fail comes before anything moves.
struct CCADataHandler::Plan {
    struct Merge {
        const std::vector<_SAContents>* pSource;
        std::vector<CCADataSortFilter::Rule> vRules;
    };

    std::size_t nList;  // entries that the list has after the merges so far
    std::vector<Merge> vMerges = {};
    Source sources[4] = {{E_CA_SCHEMA_CATEGORY_LINTRA},
                         {E_CA_SCHEMA_CATEGORY_YOUTUBE},
                         {E_CA_SCHEMA_CATEGORY_SOCIAL},
                         {E_CA_SCHEMA_CATEGORY_OTHERS}};
    std::vector<_SAContents> vBeside = {};  // entries that lead or follow the list as a block
    bool bOthersMet = false;
};

CCADataHandler::CCADataHandler()
{
    g_mutex_init(&m_stMutex);
    InitializeData();
}

CCADataHandler::~CCADataHandler()
{
    g_mutex_clear(&m_stMutex);
}

void CCADataHandler::SetSystemMessage(const std::string& strSystemMessage)
{
    CCAPollingLock lock(m_stMutex);
    m_strSystemMessage = strSystemMessage;
}

std::string CCADataHandler::GetSystemMessage()
{
    CCAPollingLock lock(m_stMutex);
    return m_strSystemMessage;
}

void CCADataHandler::SetCommunicateErrorCode(std::string strErrorCode)
{
    CCAPollingLock lock(m_stMutex);
    m_strCommunicateErrorCode = std::move(strErrorCode);
}

std::string CCADataHandler::GetCommunicateErrorCode()
{
    CCAPollingLock lock(m_stMutex);
    return m_strCommunicateErrorCode;
}

void CCADataHandler::SetTVControl(const _TVControl& stTVControl)
{
    SetTVControl(_TVControl(stTVControl));
}

void CCADataHandler::SetTVControl(_TVControl&& stTVControl)
{
    CCAPollingLock lock(m_stMutex);
    m_vTVControl.push_back(std::move(stTVControl));
}

std::vector<_TVControl>& CCADataHandler::GetTVControl()
{
    CCAPollingLock lock(m_stMutex);  // only waits for a writer in progress: the list itself goes out unguarded
    return m_vTVControl;
}

void CCADataHandler::SetDomain(std::vector<std::string> vDomain)
{
    CCAPollingLock lock(m_stMutex);
    m_vDomain = std::move(vDomain);
}

std::vector<std::string> CCADataHandler::GetDomain()
{
    CCAPollingLock lock(m_stMutex);
    return m_vDomain;
}

void CCADataHandler::SetContent(_Content stContent)
{
    CCAPollingLock lock(m_stMutex);
    m_stContent = std::move(stContent);
}

_Content CCADataHandler::GetContent()
{
    CCAPollingLock lock(m_stMutex);
    return m_stContent;
}

void CCADataHandler::SetSchemaList(_CASchema stSchema)
{
    CCAPollingLock lock(m_stMutex);
    m_vSchemaList.push_back(std::move(stSchema));
    m_bSorted = false;
}

void CCADataHandler::SetSeachServerContentsList(const _ContentsItem& stItem)
{
    CCAPollingLock lock(m_stMutex);
    m_vContentsItem.emplace_back(stItem);
    m_bSorted = false;
}

void CCADataHandler::SetSeachServerContentsList(std::vector<_SAContents>&& vEntries)
{
    CCAPollingLock lock(m_stMutex);
    vEntries.insert(vEntries.begin(), std::make_move_iterator(m_vContentsItem.begin()),
                    std::make_move_iterator(m_vContentsItem.end()));
    m_vContentsItem.swap(vEntries);
    m_bSorted = false;
}

std::size_t CCADataHandler::GetContentsCount()
{
    CCAPollingLock lock(m_stMutex);
    return m_vContentsItem.size();
}

void CCADataHandler::SetDisplayControlResult(_DisplayControlInfo stInfo)
{
    CA_LOGD("SetDisplayControlResult, item size:%d", static_cast<int>(stInfo.vItems.size()));
    m_bDisplayControlSet = true;
    m_nNumberOfItem = stInfo.numberOfItem;
    m_nDisplayAction = stInfo.nAction;
    m_vDisplayItems = std::move(stInfo.vItems);
}

void CCADataHandler::GetDisplayControlResult(_DisCtrlInfo& stInfo)
{
    m_bDisplayControlSet = false;
    stInfo.numberOfItem = m_nNumberOfItem;
    stInfo.nAction = m_nDisplayAction;
    for (const auto& [nIndex, szTitle] : m_vDisplayItems) stInfo.vItems.push_back({nIndex, szTitle});
}

void CCADataHandler::RequestSchema()
{
    CCAPollingLock lock(m_stMutex);
    m_bRequestSchema = true;
}

bool CCADataHandler::CanRequestSchema()
{
    CCAPollingLock lock(m_stMutex);
    return std::exchange(m_bRequestSchema, false);
}

void CCADataHandler::GetSAContentsList(std::vector<_SAContents>& vOut)
{
    CCAPollingLock lock(m_stMutex);
    t_Refresh(Items::KEEP);
    vOut = m_vSAContents;
}

void CCADataHandler::TakeSAContentsList(std::vector<_SAContents>& vOut)
{
    CCAPollingLock lock(m_stMutex);
    t_Refresh(Items::MOVE);
    vOut = std::move(m_vSAContents);
}

void CCADataHandler::InitializeData()
{
    CCAPollingLock lock(m_stMutex);
    t_ClearContents();
    m_bRequestSchema = false;
    Release(m_strUserInputVoice);
    Release(m_strSystemMessage);
    Release(m_vTVControl);
    m_stContent = _Content();
    Release(m_vDomain);
    m_bDisplayControlSet = false;
    m_nNumberOfItem = _DisplayControlInfo().numberOfItem;
    m_nDisplayAction = _DisplayControlInfo().nAction;
    Release(m_vDisplayItems);
}

CCADataHandler::Before CCADataHandler::BeginReply(std::size_t nLength)
{
    if (const std::size_t nDropped = t_DropOldContents(); nDropped > 0)
        CA_LOGE("too much content waits for a command, the oldest is dropped: %u items",
                static_cast<unsigned>(nDropped));
    CCAPollingLock lock(m_stMutex);
    if (m_vContentsItem.empty()) m_nWaitingText = 0;
    Before stBefore{m_vTVControl.size(), m_vContentsItem.size(),
                    m_nWaitingText,      m_strSystemMessage,
                    m_vDomain,           {m_bDisplayControlSet, m_nNumberOfItem, m_nDisplayAction, m_vDisplayItems}};
    m_nWaitingText += nLength;
    return stBefore;
}

void CCADataHandler::ForgetReply(Before&& stBefore)
{
    CCAPollingLock lock(m_stMutex);
    Shorten(m_vTVControl, stBefore.nCommands);
    Shorten(m_vContentsItem, stBefore.nContents);
    m_nWaitingText = stBefore.nWaitingText;
    Release(m_vSAContents);
    m_bSorted = false;
    m_strSystemMessage.swap(stBefore.strSystemMessage);
    m_vDomain.swap(stBefore.vDomain);
    m_bDisplayControlSet = stBefore.stDisplayControl.bSet;
    m_nNumberOfItem = stBefore.stDisplayControl.numberOfItem;
    m_nDisplayAction = stBefore.stDisplayControl.nAction;
    m_vDisplayItems.swap(stBefore.stDisplayControl.vItems);
}

void CCADataHandler::t_ClearContents()
{
    Release(m_vContentsItem);
    Release(m_vSAContents);
    m_bSorted = false;
}

// Says how many. The oldest go: a viewer waits for the results of the last reply.
std::size_t CCADataHandler::t_DropOldContents()
{
    CCAPollingLock lock(m_stMutex);
    const std::size_t nMost = m_nWaitingText > kMostWaitingText ? 0 : kMostWaiting;
    if (m_vContentsItem.size() <= nMost) return 0;
    const std::size_t nDropped = m_vContentsItem.size() - nMost;
    std::vector<_SAContents> vKept(
        std::make_move_iterator(m_vContentsItem.begin() + static_cast<std::ptrdiff_t>(nDropped)),
        std::make_move_iterator(m_vContentsItem.end()));
    m_vContentsItem.swap(vKept);
    m_bSorted = false;
    return nDropped;
}

void CCADataHandler::t_Refresh(Items eItems)
{
    Plan plan{m_vContentsItem.size()};
    if (!m_bSorted) {
        CA_LOGD_AS(kGetList, " Data has been updated, it will be sorted");
        t_PlanSort(plan);
    }
    CA_LOGD_AS(kGetList, " set the contents list data");
    if (!m_bSorted) t_Sort(plan, eItems);
    m_bSorted = true;
}

void CCADataHandler::t_ServerToSAContentsList(const std::vector<_SAContents>& items, std::vector<_SAContents>& list)
{
    AppendAll(list, list.end(), items);
}

void CCADataHandler::t_PlanSort(Plan& plan) const
{
    for (const _CASchema& schema : m_vSchemaList) {
        const bool bOthers = schema.nCategory == E_CA_SCHEMA_CATEGORY_OTHERS;
        if (bOthers && std::exchange(plan.bOthersMet, true)) continue;  // only the first one counts
        bool bValid = bOthers;
        for (Source& source : plan.sources) {
            if (!bOthers && source.nCategory != schema.nCategory) continue;
            t_SortByFlag(source.bMerged, plan, source.vEntries, schema.vRules);
            bValid = true;
        }
        if (!bValid) CA_LOGD_AS("t_Sort", " %d is not valid category!", schema.nCategory);
    }
}

void CCADataHandler::t_SortByFlag(bool& flag, Plan& plan, const std::vector<_SAContents>& source,
                                  const std::vector<_CASortRule>& rules)
{
    if (std::exchange(flag, true)) return;
    const auto nSource = static_cast<int>(source.size());
    plan.vMerges.push_back(
        {&source, CCADataSortFilter::t_ConvertToRules(rules, static_cast<int>(plan.nList), nSource)});
    plan.nList += source.size();
}

void CCADataHandler::t_Sort(const Plan& plan, Items eItems)
{
    m_vSAContents.clear();
    if (eItems == Items::MOVE)
        m_vSAContents.swap(m_vContentsItem);
    else
        t_ServerToSAContentsList(m_vContentsItem, m_vSAContents);

    for (const auto& [pSource, vRules] : plan.vMerges) CCADataSortFilter::t_Sort(vRules, m_vSAContents, *pSource);
    for (const Source& source : plan.sources)
        if (!plan.bOthersMet && !source.bMerged) AppendAll(m_vSAContents, m_vSAContents.end(), source.vEntries);
    const std::vector<_SAContents>& vBeside = plan.vBeside;
    if (!vBeside.empty())
        AppendAll(m_vSAContents, vBeside.front().szPlacement.empty() ? m_vSAContents.end() : m_vSAContents.begin(),
                  vBeside);
}
