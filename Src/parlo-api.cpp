// The four entry points: nothing but the order of the calls, and the wall that no exception passes.
#define CA_LOG_FILE "parlo-api"

#include "parlo-api.h"

#include <cxxabi.h>

#include <exception>
#include <utility>

#include "CALog.h"
#include "CAService.h"

CCAService* m_pCAService = nullptr;

namespace
{

// Says in the log what is being handled. Call it in a `catch (...)`.
void ReportException(const char* szOperation)
{
    try {
        try {
            // cppcheck-suppress rethrowNoCurrentException  // a handler calls this
            throw;
        } catch (const abi::__forced_unwind&) {
            throw;
        } catch (const std::exception& e) {
            CA_LOGE_AS(szOperation, "stopped by an exception: %s", e.what());
        } catch (...) {
            CA_LOGE_AS(szOperation, "stopped by an exception");
        }
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled: the C library ends the process if that is stopped
    } catch (...) {
        return;  // the log itself throws: there is nobody left to tell
    }
}

void ReleaseService()
{
    if (m_pCAService == nullptr) return;
    m_pCAService->UninitService();
    delete std::exchange(CCAService::pInstance, nullptr);
    m_pCAService = nullptr;
}

}  // namespace

bool ca_initial_service(std::string strAppName)
{
    bool bSucceeded = false;
    try {
        if (m_pCAService == nullptr) m_pCAService = CCAService::GetInstance();
        if (m_pCAService == nullptr) {
            CA_LOGE("create CCAService failed");
            return false;
        }
        bSucceeded = m_pCAService->InitService(std::move(strAppName));
        if (bSucceeded)
            CA_LOGE("initial succeed");
        else
            CA_LOGE("InitService failed");
        return bSucceeded;
    } catch (...) {
        if (bSucceeded) m_pCAService->UninitService();  // the caller hears that there is no service, and tries again
        ReportException(__func__);
        return false;
    }
}

void ca_uninitial()
{
    try {
        CA_LOGE("delete the thread");
        if (m_pCAService == nullptr) CA_LOGE("m_pCAService is NULL");
    } catch (...) {
        ReleaseService();  // first: the thread may be being cancelled
        ReportException(__func__);
        return;
    }
    ReleaseService();
}

// cppcheck-suppress passedByValue
// NOLINTNEXTLINE(performance-unnecessary-value-param): callers are built against the text by value
bool ca_get_speech_action(std::string strPreAllResult, std::string& strRawData, CADataRepository::_ConvActionInfo& info)
{
    try {
        CA_LOGE("get action from json package");
        if (m_pCAService == nullptr) {
            CA_LOGE("m_pCAService is NULL");
            return false;
        }
        if (!m_pCAService->ParseDataFlow(strPreAllResult, strRawData)) {
            CA_LOGE("ParseDataFlow failed");
            return false;
        }
        const bool bSucceeded = m_pCAService->GetSpeechActionData(info);
        if (!bSucceeded) CA_LOGE("GetSpeechActionData failed");
        return bSucceeded;
    } catch (...) {
        // Else the next reply would carry out what this one has stored of its commands.
        if (CCADataHandler::pInstance != nullptr) CCADataHandler::pInstance->InitializeData();
        ReportException(__func__);
        return false;
    }
}

// The name alone, for callers that look it up.
extern "C" PARLO_EXPORT decltype(ca_get_speech_action) ca_get_speech_action_by_name __asm__("ca_get_speech_action")
    __attribute__((alias(PARLO_API_SPEECH_ACTION)));

int ca_get_conv_status()
{
    try {
        CA_LOGE("get action from json package");  // the text of ca_get_speech_action, which log filters know
        if (m_pCAService == nullptr) {
            CA_LOGE("m_pCAService is NULL");
            return E_CA_CONV_STATUS_NO_SERVICE;
        }
        return m_pCAService->GetConversationStatus();
    } catch (...) {
        ReportException(__func__);
        return E_CA_CONV_STATUS_NO_SERVICE;
    }
}
