// Memory runs out, once or for good, at every allocation of a conversation in turn, those included that are made once
// in a thread. Of its own, as it replaces new; what the JSON library asks of malloc always succeeds.
#include <thread>

#include "CAService.h"
#include "Conversation.h"
#include "ReplacedNew.h"

static long g_nOutstanding = 0;    // blocks that are allocated and not released
static long g_nUntilFailure = -1;  // allocations of the library that still succeed; negative: all do
static bool g_bForGood = false;
static bool g_bInLibrary = false;
static bool g_bFailed = false;

static void* Allocate(std::size_t nSize, bool /*bThrows*/) noexcept
{
    if (g_bInLibrary && g_nUntilFailure >= 0 && g_nUntilFailure-- == 0) {
        if (g_bForGood) g_nUntilFailure = 0;
        g_bFailed = true;
        return nullptr;
    }
    ++g_nOutstanding;
    return std::malloc(nSize);
}

static void Release(void* p) noexcept
{
    g_nOutstanding -= p != nullptr;
    std::free(p);
}

// What the call gives; allocations in it are the library's.
template <typename Call>
static auto InLibrary(Call call)
{
    g_bInLibrary = true;
    const auto result = call();
    g_bInLibrary = false;
    return result;
}

// A whole service life; what each of its calls gave, up to the one in which memory ran out.
static Texts LiveOnce()
{
    static std::string vReplies[] = {DataFile("every-key.json"),
                                     Reply("'domain':['a','b']," + Command("display_content")),
                                     Reply("'system_sentence':'a sentence of some length'," +
                                           Command("display_cast", "'names':['a name of some length']"))};
    g_bFailed = false;
    Texts vOutcomes = {InLibrary([] { return ca_initial_service("oom"); }) ? "true" : "failed"};
    for (std::string& strReply : vReplies) {
        const bool bCompare = !g_bFailed;
        _ConvActionInfo info;
        const bool bResult = InLibrary([&] { return ca_get_speech_action("turn it up", strReply, info); });
        if (bCompare) vOutcomes.push_back(bResult ? JsonLine(ToJson(info)) : "failed");
    }
    InLibrary([] { return ca_get_conv_status(); });
    InLibrary([] { return ca_uninitial(), true; });
    return vOutcomes;
}

// The same in a thread of its own, whose objects are yet to be made.
static Texts Converse()
{
    Texts vOutcomes;
    std::thread([&] { vOutcomes = LiveOnce(); }).join();
    return vOutcomes;
}

TEST(Oom, EveryAllocationMayFail)
{
    g_Platform.bKeepLog = false;  // the fake's own memory is not the subject
    Converse();                   // what the test, the JSON library and the size table keep for good
    const Texts vWanted = Converse();
    ASSERT_FALSE(vWanted.at(1) == "failed" || vWanted.at(2) == "failed" || vWanted.at(3) == "failed");
    for (const bool bForGood : {false, true}) {
        bool bFailed = true;
        for (long nAllocation = 0; bFailed; ++nAllocation) {
            const long nOutstanding = g_nOutstanding;
            g_bForGood = bForGood;
            g_nUntilFailure = nAllocation;
            Texts vOutcomes = Converse();
            bFailed = g_bFailed;
            g_nUntilFailure = -1;
            if (vOutcomes.back() == "failed") vOutcomes.back() = vWanted[vOutcomes.size() - 1];
            for (std::size_t i = 0; i < vOutcomes.size(); ++i) EXPECT_EQ(vWanted[i], vOutcomes[i]) << nAllocation;
            EXPECT_EQ(vWanted, Converse()) << nAllocation;
            vOutcomes = Texts();
            EXPECT_EQ(nOutstanding, g_nOutstanding) << nAllocation;
        }
    }
    g_nUntilFailure = 1;
    EXPECT_EQ(nullptr, InLibrary([] { return CCAService::GetInstance(); })) << "a constructor that runs out of memory";
}
