// Something fails at every point of a service's life in turn, once or from there on: an allocation of whatever kind, or
// a call of the platform, which throws or in which the thread is cancelled. Of its own, as it replaces the allocator.
#include <pthread.h>

#include <new>
#include <stdexcept>
#include <thread>

#include "CAImageSizeTable.h"
#include "CAService.h"
#include "CAUtil.h"
#include "Conversation.h"

enum class Fault { MEMORY, THROW, CANCEL };

static Fault g_eFault = Fault::MEMORY;
static bool g_bForGood = false;
static long g_nUntilFault = -1;    // events of the kind that are still good; negative: all are
static bool g_bInLibrary = false;  // events now are the library's
static bool g_bFailed = false;
static long g_nOutstanding = 0;  // blocks that are allocated and not released

static bool IsFault(Fault eFault)
{
    if (!g_bInLibrary || eFault != g_eFault || g_nUntilFault < 0 || g_nUntilFault-- != 0) return false;
    if (g_bForGood) g_nUntilFault = 0;
    return g_bFailed = true;
}

static void* Counted(void* p)
{
    g_nOutstanding += p != nullptr;
    return p;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#include "ReplacedNew.h"  // the sanitizer keeps the C library's allocator to itself

static void* Allocate(std::size_t nSize, bool /*bThrows*/) noexcept
{
    return IsFault(Fault::MEMORY) ? nullptr : Counted(std::malloc(nSize));
}

static void Release(void* p) noexcept
{
    g_nOutstanding -= p != nullptr;
    std::free(p);
}
#else
// In place of the C library's, which new and everything else in the process stand on.
#pragma GCC visibility push(default)
extern "C" {
void* __libc_malloc(std::size_t nSize);
void* __libc_calloc(std::size_t nCount, std::size_t nSize);
void* __libc_realloc(void* p, std::size_t nSize);
void __libc_free(void* p);

// clang-format off
void* malloc(std::size_t nSize) { return IsFault(Fault::MEMORY) ? nullptr : Counted(__libc_malloc(nSize)); }
void* calloc(std::size_t n, std::size_t nSize) { return IsFault(Fault::MEMORY) ? nullptr : Counted(__libc_calloc(n, nSize)); }
void* realloc(void* p, std::size_t nSize)
{
    if (IsFault(Fault::MEMORY)) return nullptr;
    return p == nullptr ? Counted(__libc_realloc(p, nSize)) : __libc_realloc(p, nSize);
}
void free(void* p) { g_nOutstanding -= p != nullptr; __libc_free(p); }
// clang-format on
}
#pragma GCC visibility pop
#endif

static void OnPlatformCall()
{
    if (IsFault(Fault::THROW)) throw std::runtime_error("the platform throws");
    if (!IsFault(Fault::CANCEL)) return;
    pthread_cancel(pthread_self());
    pthread_testcancel();
}

// Makes the call here or in a thread of its own. False also when that is cancelled.
static bool Succeeds(bool bThread, bool (*pCall)())
{
    bool bResult = false;
    const auto run = [&bResult, pCall] {
        g_bInLibrary = true;
        const bool bCalled = pCall();
        g_bInLibrary = false;
        bResult = bCalled;
    };
    if (bThread)
        std::thread(run).join();
    else
        run();
    g_bInLibrary = false;
    return bResult;
}

static std::string g_strReply;
static _ConvActionInfo* g_pInfo = nullptr;

constexpr std::size_t kNone = 99;
constexpr std::size_t kWithoutCommand = 2;  // this reply's call says false in any case
static const std::string kUnseen = "before the fault";

// The outcome of each reply in a service's life without the replies from `nFirstOut` to `nLastOut`. `nFailed` becomes
// the reply that failed.
static Texts Live(bool bThread, std::size_t nFirstOut, std::size_t nLastOut, std::size_t& nFailed)
{
    static const std::string strDialog = "'dialog':{'dialog_seq':1},'nlu_info':{'dialog_type':2},";
    static const std::string vReplies[] = {
        DataFile("every-key.json"),
        Reply(strDialog + "'domain':['a','b']," + Command("display_content") + ",'displaycontrol':[{}]"),
        Reply(strDialog + "'system_sentence':'without a command','tvcontent':[{'type':'movie','title':'left'}]"),
        Reply(strDialog + "'tvcontent':[{'type':'app'}]," +
              Command("display_candidates", "'names':['a name of some length',1.5]")),
        Reply(strDialog + Command("play_content"))};
    g_bFailed = false;
    nFailed = kNone;
    delete std::exchange(CCASingleton<CCAImageSizeTable>::pInstance, nullptr);
    const bool bStarted = Succeeds(bThread, [] { return ca_initial_service("fault"); }) ||
                          Succeeds(bThread, [] { return ca_initial_service("again"); });
    EXPECT_TRUE(bStarted || g_bForGood);
    Texts vOutcomes;
    for (std::size_t i = 0; i < std::size(vReplies); ++i) {
        if (nFirstOut <= i && i <= nLastOut) continue;
        const bool bFailedBefore = g_bFailed;
        _ConvActionInfo info;
        g_strReply = vReplies[i];
        g_pInfo = &info;
        const bool bResult = Succeeds(bThread, [] { return ca_get_speech_action("turn it up", g_strReply, *g_pInfo); });
        const bool bMatters = g_nUntilFault < 0;  // the fault is past, or there is none
        vOutcomes.push_back(!bMatters ? kUnseen : bResult ? JsonLine(ToJson(info)) : "failed");
        if (g_bFailed && !bFailedBefore) nFailed = i;
    }
    Succeeds(bThread, [] { return ca_get_conv_status() == 0; });
    Succeeds(bThread, [] {
        ca_uninitial();
        return true;
    });
    EXPECT_TRUE(m_pCAService == nullptr && CCADataHandler::pInstance == nullptr);
    EXPECT_EQ(0, g_Platform.nSettingOpen);
    return vOutcomes;
}

static Texts Live(bool bThread, std::size_t nFirstOut = kNone, std::size_t nLastOut = kNone)
{
    std::size_t nFailed = kNone;
    return Live(bThread, nFirstOut, nLastOut, nFailed);
}

// The life with a fault at event `n`. False when that event is never reached.
static bool Inject(long n, bool bThread, const Texts& vWanted, const std::vector<Texts>& vWithout)
{
    std::size_t nFailed = kNone;
    g_nUntilFault = n;
    Texts vOutcomes = Live(bThread, kNone, kNone, nFailed);
    g_nUntilFault = -1;
    const bool bFailed = g_bFailed;
    if (!bFailed) return false;
    if (g_bForGood) {
        EXPECT_EQ(vWanted, Live(bThread));
        return true;
    }
    if (nFailed == kNone) {
        EXPECT_TRUE(vOutcomes.back() == kUnseen || vOutcomes == vWanted);
        return true;
    }
    // What the reply gave is whole or nothing; without a size table its posters lack their address.
    EXPECT_TRUE(vOutcomes[nFailed] == "failed" || vOutcomes[nFailed] == vWanted[nFailed] ||
                CCASingleton<CCAImageSizeTable>::pInstance == nullptr);
    const auto failed = static_cast<std::ptrdiff_t>(nFailed);
    const Texts vAfter(vOutcomes.begin() + failed + 1, vOutcomes.end());
    const Texts vKept(vWanted.begin() + failed + 1, vWanted.end());
    // An exception drops what older replies left, too; a parse that runs out of memory does not.
    const auto cleared = [&] {
        const Texts vEmptied = Live(bThread, std::min(nFailed, kWithoutCommand), nFailed);
        return Texts(vEmptied.end() - (vAfter.end() - vAfter.begin()), vEmptied.end());
    };
    const Texts vForgotten(vWithout[nFailed].begin() + failed, vWithout[nFailed].end());
    EXPECT_TRUE(vAfter == vForgotten || vAfter == cleared() ||
                (vAfter == vKept && (vOutcomes[nFailed] != "failed" || nFailed == kWithoutCommand)))
        << "reply " << nFailed << " leaves something: " << testing::PrintToString(vAfter);
    return true;
}

class EveryPoint : public testing::TestWithParam<std::tuple<Fault, bool, bool>>
{
};

TEST_P(EveryPoint, MayFail)
{
    const auto [eFault, bForGood, bThread] = GetParam();
    if (eFault == Fault::CANCEL && !bThread) GTEST_SKIP() << "would end the test";
#ifdef __SANITIZE_ADDRESS__
    if (eFault == Fault::CANCEL) GTEST_SKIP() << "the sanitizer takes the unwinding of a cancelled thread for an error";
#endif
    g_Platform = FakePlatform();
    g_Platform.bKeepLog = false;  // the fake's own memory is not the subject
    g_Platform.onCall = OnPlatformCall;
    g_eFault = eFault;
    g_bForGood = bForGood;
    Live(bThread);  // what is kept for good is made now
    const Texts vWanted = Live(bThread);
    std::vector<Texts> vWithout;
    for (std::size_t i = 0; i < vWanted.size(); ++i) vWithout.push_back(Live(bThread, i, i));
    bool bReached = true;
    for (long n = 0; bReached && !HasFailure(); ++n) {
        const long nOutstanding = g_nOutstanding;
        bReached = Inject(n, bThread, vWanted, vWithout);
        delete std::exchange(CCASingleton<CCAImageSizeTable>::pInstance, nullptr);
        EXPECT_TRUE(n == 0 || nOutstanding == g_nOutstanding) << n << ": " << g_nOutstanding - nOutstanding;
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, EveryPoint,
                         testing::Combine(testing::Values(Fault::MEMORY, Fault::THROW, Fault::CANCEL), testing::Bool(),
                                          testing::Bool()));

TEST(Faults, ConstructorThatRunsOutOfMemoryGivesNull)
{
    g_Platform = FakePlatform();
    g_Platform.bKeepLog = false;
    g_bForGood = false;
    g_eFault = Fault::MEMORY;
    g_nUntilFault = 1;
    EXPECT_FALSE(Succeeds(false, [] { return CCAService::GetInstance() != nullptr; }));
    g_nUntilFault = -1;
}
