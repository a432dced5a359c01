// The four entry points: nothing but the order of the calls, and the wall that no exception passes.

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
        throw;
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled: the C library ends the process if that is stopped
    } catch (const std::exception& e) {
        CA_LOGE_AS(szOperation, "stopped by an exception: %s", e.what());
    } catch (...) {
        CA_LOGE_AS(szOperation, "stopped by an exception");
    }
}

}  // namespace

bool ca_initial_service(std::string strAppName)
{
    try {
        if (m_pCAService == nullptr) m_pCAService = CCAService::GetInstance();
        if (m_pCAService == nullptr) {
            CA_LOGE("create CCAService failed");
            return false;
        }
        const bool bSucceeded = m_pCAService->InitService(std::move(strAppName));
        if (bSucceeded)
            CA_LOGE("initial succeed");
        else
            CA_LOGE("InitService failed");
        return bSucceeded;
    } catch (...) {
        ReportException(__func__);
        return false;
    }
}

void ca_uninitial()
{
    try {
        CA_LOGE("delete the thread");
        if (m_pCAService == nullptr) {
            CA_LOGE("m_pCAService is NULL");
            return;
        }
        m_pCAService->UninitService();
        delete std::exchange(CCAService::pInstance, nullptr);
        m_pCAService = nullptr;
    } catch (...) {
        ReportException(__func__);
    }
}

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
        ReportException(__func__);
        return false;
    }
}

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
