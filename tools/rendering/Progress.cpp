// Drawing of the progress bar.
#include "rendering/Progress.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "rendering/Text.h"

namespace
{

constexpr std::size_t kSmall = 4 << 20;     // bytes; less is read in no time
constexpr std::size_t kUnknown = 16 << 20;  // bytes between two signs of life when the size is not known
constexpr std::size_t kSteps = 50;

void Draw(const std::string& strText)
{
    const std::string strLine = "\r\033[K" + strText;
    static_cast<void>(std::fwrite(strLine.data(), 1, strLine.size(), stderr));
    static_cast<void>(std::fflush(stderr));
}

}  // namespace

CProgress::CProgress(const std::string& strName, std::FILE* pFile) : m_strName(Shown(strName))
{
    struct stat stStat = {};
    if (pFile == nullptr || isatty(STDERR_FILENO) == 0 || fstat(fileno(pFile), &stStat) != 0) return;
    m_nAll = S_ISREG(stStat.st_mode) ? static_cast<std::size_t>(stStat.st_size) : 0;
    m_bShown = !S_ISREG(stStat.st_mode) || m_nAll >= kSmall;
}

CProgress::~CProgress()
{
    if (m_bShown && m_nStep > 0) Draw("");
}

void CProgress::Add(std::size_t nBytes)
{
    m_nRead += nBytes;
    if (!m_bShown) return;
    const std::size_t nStep = m_nAll > 0 ? std::min(m_nRead, m_nAll) / (m_nAll / kSteps) : m_nRead / kUnknown;
    if (nStep == m_nStep) return;
    m_nStep = nStep;
    if (m_nAll == 0) return Draw(m_strName + "  " + std::to_string(m_nRead >> 20U) + " MiB");
    const std::size_t nDone = std::min(nStep, kSteps);
    Draw(m_strName + "  [" + std::string(nDone, '#') + std::string(kSteps - nDone, ' ') + "] " +
         std::to_string(nDone * 100 / kSteps) + " %");
}
