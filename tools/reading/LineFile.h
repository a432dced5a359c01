// A file that is read line by line, or from some line on as a whole.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

class CLineFile
{
public:
    // Opens `strFile`; "-" is standard input.
    explicit CLineFile(const std::string& strFile);
    ~CLineFile();
    CLineFile(const CLineFile&) = delete;
    CLineFile& operator=(const CLineFile&) = delete;

    // The next line with its line break, valid until the next call. False at the end, and when it cannot be read.
    bool Next(std::string_view& szLine);

    // Appends what Next has not handed out yet, up to `nMost` bytes.
    void Rest(std::size_t nMost, std::string& strText);

    // Keeps what is handed out from now on: all bytes of the file, once it is read to its end.
    void Keep() { m_bKeep = true; }
    const std::string& Kept() const { return m_strKept; }

    // Of a file of which neither was asked: appends what is there of it, after waiting for more if there is nothing;
    // nothing at its end. And whether nothing comes for a while.
    void Some(std::string& strText);
    bool IsPausing() const;

    // The system's reason when the file could not be opened or read; empty when all went well.
    std::string Failure() const;

    // Bytes handed out so far, and bytes of all, 0 when that is not known, as of a pipe.
    std::size_t Position() const { return m_nPosition; }
    std::size_t Size() const { return S_ISREG(m_stStat.st_mode) ? static_cast<std::size_t>(m_stStat.st_size) : 0; }

    const std::string& Name() const { return m_strName; }
    const struct stat& Stat() const { return m_stStat; }  // as it was opened

private:
    void HandOut(std::string_view szText);

    std::string m_strName;
    std::FILE* m_pFile;
    struct stat m_stStat = {};
    bool m_bKeep = false;
    std::string m_strKept;
    int m_nError = 0;
    char* m_pLine = nullptr;
    std::size_t m_nRoom = 0;
    std::size_t m_nPosition = 0;
};
