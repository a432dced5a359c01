// A progress bar on standard error while a large file is read; nothing where that is no terminal.
#ifndef PARLO_PROGRESS_H
#define PARLO_PROGRESS_H

#include <cstddef>
#include <cstdio>
#include <string>

class CProgress
{
public:
    // For the open file `pFile`, called `strName`; null: nothing is shown.
    CProgress(const std::string& strName, std::FILE* pFile);
    ~CProgress();  // takes the bar away
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    // So many more bytes were read.
    void Add(std::size_t nBytes);

private:
    std::string m_strName;
    bool m_bShown = false;
    std::size_t m_nAll = 0;  // 0: the size is not known
    std::size_t m_nRead = 0;
    std::size_t m_nStep = 0;  // what is shown
};

#endif
