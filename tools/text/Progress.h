// How far a long file has been read, on the terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

// "evening.jsonl: 42 % of 10000 MB", fit for a terminal.
std::string ProgressText(const std::string& strName, std::size_t nDone, std::size_t nAll);

// A line on standard error that is renewed while it lives and gone at its end. There is none where it would disturb:
// standard error is no terminal, or standard output is one, where the results themselves show how far it is.
class CProgress
{
public:
    // `nAll` bytes; 0: not known, so that there is nothing to show.
    CProgress(std::string strName, std::size_t nAll);
    ~CProgress();
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    // Shows that `nDone` bytes are behind us, a few times a second and not in the first second.
    void Show(std::size_t nDone);

private:
    using Clock = std::chrono::steady_clock;
    std::string m_strName;
    std::size_t m_nAll;
    std::size_t m_nLooked = 0;  // when the clock was last looked at
    Clock::time_point m_due;
};

// Takes the line away, so that something else can be written there; it comes back by itself.
void ClearProgress();
