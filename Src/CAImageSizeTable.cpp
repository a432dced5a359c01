#define CA_LOG_FILE "CAImageSizeTable"

#include "CAImageSizeTable.h"

#include "CALog.h"

template class CCASingleton<CCAImageSizeTable>;

namespace
{

// The "720" rows are carried along; the lookup asks for full HD only.
constexpr struct {
    const char* szMode;
    const char* szKind;
    int nSize;
} kSizes[] = {
    {"720", "fitness", 54}, {"1080", "fitness", 55}, {"720", "kids", 56},   {"720", "movie", 56}, {"720", "tvshow", 56},
    {"1080", "kids", 57},   {"1080", "tvshow", 57},  {"1080", "movie", 57}, {"720", "app", 58},   {"1080", "app", 59},
};

}  // namespace

CCAImageSizeTable::CCAImageSizeTable()
{
    for (const auto& row : kSizes) t_AddItem(row.szMode, row.szKind, row.nSize);
}

bool CCAImageSizeTable::GetSize(const std::string& strMode, int& size) const
{
    if (strMode.empty()) {
        CA_LOGE("strMode is empty");
        return false;
    }
    const std::string strKey = "1080" + m_strSeparator + strMode;
    CA_LOGE("CCAImageSizeTable::GetSize, strKey:%s", strKey.c_str());
    const auto it = m_mapSize.find(strKey);
    if (it == m_mapSize.end()) return false;
    size = it->second;
    return true;
}

void CCAImageSizeTable::t_AddItem(const std::string& strMode, const std::string& strKey, int nSize)
{
    if (strMode.empty() || strKey.empty() || nSize <= 0) {
        CA_LOGE("t_AddItem error");
        return;
    }
    m_mapSize[strMode + m_strSeparator + strKey] = nSize;
}
