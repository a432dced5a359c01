// Reading on the C library's streams.
#include "reading/LineFile.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

CLineFile::CLineFile(const std::string& strFile)
    : m_strName(strFile), m_pFile(strFile == "-" ? stdin : std::fopen(strFile.c_str(), "rb"))
{
    if (m_pFile == nullptr || fstat(fileno(m_pFile), &m_stStat) != 0) m_nError = errno;
}

CLineFile::~CLineFile()
{
    std::free(m_pLine);
    if (m_pFile != nullptr && m_pFile != stdin) static_cast<void>(std::fclose(m_pFile));
}

void CLineFile::HandOut(std::string_view szText)
{
    m_nPosition += szText.size();
    if (m_bKeep) m_strKept += szText;
}

bool CLineFile::Next(std::string_view& szLine)
{
    if (m_pFile == nullptr) return false;
    errno = 0;
    const ssize_t nRead = getline(&m_pLine, &m_nRoom, m_pFile);
    if (nRead < 0) {
        if (errno == ENOMEM) throw std::bad_alloc();
        if (std::ferror(m_pFile) != 0) m_nError = errno;
        return false;
    }
    szLine = {m_pLine, static_cast<std::size_t>(nRead)};
    HandOut(szLine);
    return true;
}

void CLineFile::Rest(std::size_t nMost, std::string& strText)
{
    char buffer[1 << 16];
    std::size_t nRead = sizeof buffer;
    for (; m_pFile != nullptr && nRead > 0 && nMost > 0; nMost -= nRead) {
        nRead = std::fread(buffer, 1, std::min(sizeof buffer, nMost), m_pFile);
        strText.append(buffer, nRead);
        HandOut({buffer, nRead});
    }
    if (m_pFile != nullptr && std::ferror(m_pFile) != 0) m_nError = errno;
}

void CLineFile::Some(std::string& strText)
{
    if (m_pFile == nullptr) return;
    constexpr std::size_t kMost = 1 << 18;
    const std::size_t nBefore = strText.size();
    strText.resize(nBefore + kMost);
    const ssize_t nRead = read(fileno(m_pFile), &strText[nBefore], kMost);
    if (nRead < 0) m_nError = errno;
    strText.resize(nBefore + static_cast<std::size_t>(std::max<ssize_t>(nRead, 0)));
    m_nPosition += strText.size() - nBefore;
}

bool CLineFile::IsPausing() const
{
    constexpr int kPause = 300;  // milliseconds
    if (m_pFile == nullptr) return false;
    pollfd stPoll = {fileno(m_pFile), POLLIN, 0};
    return poll(&stPoll, 1, kPause) == 0;
}

std::string CLineFile::Failure() const
{
    return m_nError == 0 ? std::string() : std::strerror(m_nError);
}
