// Drawing and clearing of the progress line.
#include "text/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "text/Text.h"

namespace
{

constexpr std::size_t kLook = 1 << 16;  // bytes from one look at the clock to the next
constexpr std::size_t kNameColumns = 30;
constexpr std::size_t kMegabyte = 1000000;
constexpr std::chrono::milliseconds kFirst(1000);
constexpr std::chrono::milliseconds kNext(200);

bool g_bDrawn = false;

}  // namespace

std::string ProgressText(const std::string& strName, std::size_t nDone, std::size_t nAll)
{
    const std::size_t nShare = std::min<std::size_t>(nDone / std::max<std::size_t>(nAll / 100, 1), 100);
    return Shown(strName).substr(0, kNameColumns) + ": " + std::to_string(nShare) + " % of " +
           std::to_string(nAll / kMegabyte) + " MB";
}

CProgress::CProgress(std::string strName, std::size_t nAll) : m_strName(std::move(strName)), m_nAll(nAll)
{
    if (isatty(STDERR_FILENO) == 0 || isatty(STDOUT_FILENO) != 0) m_nAll = 0;
    if (m_nAll > 0) m_due = Clock::now() + kFirst;
}

CProgress::~CProgress()
{
    ClearProgress();
}

void CProgress::Show(std::size_t nDone)
{
    if (m_nAll == 0 || nDone - m_nLooked < kLook) return;
    m_nLooked = nDone;
    const Clock::time_point now = Clock::now();
    if (now < m_due) return;
    m_due = now + kNext;
    g_bDrawn = true;
    static_cast<void>(std::fprintf(stderr, "\r\033[K%s", ProgressText(m_strName, nDone, m_nAll).c_str()));
}

void ClearProgress()
{
    if (std::exchange(g_bDrawn, false)) static_cast<void>(std::fputs("\r\033[K", stderr));
}
