#define CA_LOG_FILE "CADataHandler"

#include "CADataHandler.h"

#include <algorithm>
#include <utility>

#include "CADataSortFilter.h"
#include "CALog.h"
#include "CAPollingLock.h"

using namespace CADataRepository;

template class CCASingleton<CCADataHandler>;

namespace
{

// Empties a text or list and gives its memory back: one large reply must not weigh on the set for the rest of its days.
template <typename Container>
void Release(Container& container)
{
    Container().swap(container);
}

}  // namespace

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

void CCADataHandler::SetTVControl(_TVControl stTVControl)
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
    SetSeachServerContentsList(_ContentsItem(stItem));
}

void CCADataHandler::SetSeachServerContentsList(_ContentsItem&& stItem)
{
    CCAPollingLock lock(m_stMutex);
    m_vContentsItem.push_back(std::move(stItem));
    m_bSorted = false;
}

void CCADataHandler::ExpectContents(std::size_t nComing)
{
    constexpr std::size_t kMostRoom = 1024;  // not all that come may be stored
    CCAPollingLock lock(m_stMutex);
    if (m_vContentsItem.size() > kMostWaiting) {
        CA_LOGE("too much content waits for a command, the oldest is dropped: %u items",
                static_cast<unsigned>(m_vContentsItem.size()));
        Release(m_vContentsItem);
        m_bSorted = false;
    }
    if (m_vContentsItem.empty()) m_vContentsItem.reserve(std::min(nComing, kMostRoom));
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
    if (!m_bSorted) {
        CA_LOGD(" Data has been updated, it will be sorted");
        t_Sort();
        m_bSorted = true;
    }
    CA_LOGD(" set the contents list data");
    vOut = m_vSAContents;
}

void CCADataHandler::InitializeData()
{
    CCAPollingLock lock(m_stMutex);
    Release(m_vContentsItem);
    Release(m_vSAContents);
    m_bSorted = false;
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

void CCADataHandler::t_ServerToSAContentsList(const std::vector<_ContentsItem>& items, std::vector<_SAContents>& list)
{
    list.reserve(list.size() + items.size());
    for (const _ContentsItem& item : items) list.emplace_back(item);
}

// No step of the library puts entries into the sources; what is here is what the schema's rules mean for them.
void CCADataHandler::t_Sort()
{
    m_vSAContents.clear();
    t_ServerToSAContentsList(m_vContentsItem, m_vSAContents);

    struct Source {
        int nCategory;
        bool bMerged = false;
        std::vector<_SAContents> vEntries = {};
    } sources[] = {{E_CA_SCHEMA_CATEGORY_LINTRA},
                   {E_CA_SCHEMA_CATEGORY_YOUTUBE},
                   {E_CA_SCHEMA_CATEGORY_SOCIAL},
                   {E_CA_SCHEMA_CATEGORY_OTHERS}};
    const std::vector<_SAContents> vBeside;  // entries that lead or follow the list as a block

    bool bOthersMet = false;
    for (const _CASchema& schema : m_vSchemaList) {
        const bool bOthers = schema.nCategory == E_CA_SCHEMA_CATEGORY_OTHERS;
        if (bOthers && std::exchange(bOthersMet, true)) continue;  // only the first one counts
        bool bValid = false;
        for (Source& source : sources) {
            if (!bOthers && source.nCategory != schema.nCategory) continue;
            t_SortByFlag(source.bMerged, m_vSAContents, source.vEntries, schema.vRules);
            bValid = true;
        }
        if (!bValid) CA_LOGD(" %d is not valid category!", schema.nCategory);
    }

    for (const Source& source : sources)
        if (!bOthersMet && !source.bMerged)
            m_vSAContents.insert(m_vSAContents.end(), source.vEntries.begin(), source.vEntries.end());
    const bool bLead = !vBeside.empty() && !vBeside.front().szPlacement.empty();
    m_vSAContents.insert(bLead ? m_vSAContents.begin() : m_vSAContents.end(), vBeside.begin(), vBeside.end());
}

void CCADataHandler::t_SortByFlag(bool& flag, std::vector<_SAContents>& list, const std::vector<_SAContents>& source,
                                  const std::vector<_CASortRule>& rules)
{
    if (std::exchange(flag, true)) return;
    CCADataSortFilter::SchemaSort(list, source, rules);
}
