// Holds the store's mutex for a scope.
#pragma once

#include <glib.h>

// Waits by polling and without limit: as long as the mutex is held elsewhere, and no longer. Not recursive.
class CCAPollingLock
{
public:
    explicit CCAPollingLock(GMutex& stMutex) : m_stMutex(stMutex)
    {
        while (!g_mutex_trylock(&m_stMutex)) g_usleep(kPollIntervalUs);
    }
    ~CCAPollingLock() { g_mutex_unlock(&m_stMutex); }

    CCAPollingLock(const CCAPollingLock&) = delete;
    CCAPollingLock& operator=(const CCAPollingLock&) = delete;

private:
    static constexpr gulong kPollIntervalUs = 5000;

    GMutex& m_stMutex;
};
