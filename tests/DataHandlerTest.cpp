// The store: what it caches, clears and keeps, and how threads share it.
#include <algorithm>
#include <atomic>
#include <functional>
#include <new>
#include <thread>

#include "Conversation.h"

using DataHandler = Conversation;

// In what no later reply shows.
TEST_F(DataHandler, InitializeDataClearsWhatBelongsToTheReply)
{
    Store().RequestSchema();
    Store().SetCommunicateErrorCode("E1");
    Store().SetDisplayControlResult({false, 1, 102, {{5, "t"}}});
    Store().InitializeData();
    EXPECT_FALSE(Store().CanRequestSchema() || Store().GetDisplayControlSetFlag());
    EXPECT_EQ("E1", Store().GetCommunicateErrorCode());
    _DisCtrlInfo stInfo{7, 7, {}};
    Store().GetDisplayControlResult(stInfo);
    EXPECT_TRUE(stInfo.numberOfItem == 0 && stInfo.nAction == -1 && stInfo.vItems.empty());

    Store().SetDisplayControlResult({false, 1, 102, {{5, "t"}}});
    Store().GetDisplayControlResult(stInfo);
    EXPECT_FALSE(Store().GetDisplayControlSetFlag()) << "read once";
}

// The operations that take the store's lock: a writer and a reader each.
static CCADataHandler& Store()
{
    return *CCADataHandler::GetInstance();
}
static const std::string kText(40, 'x');
static std::vector<_SAContents> g_vList;
using Call = std::function<void()>;
static const std::pair<Call, Call> kGuarded[] = {
    {[] { Store().SetSystemMessage(kText); }, [] { Store().GetSystemMessage(); }},
    {[] { Store().SetCommunicateErrorCode(kText); }, [] { Store().GetCommunicateErrorCode(); }},
    {[] { Store().SetDomain({kText}); }, [] { Store().GetDomain(); }},
    {[] { Store().SetContent(_Content()); }, [] { Store().GetContent(); }},
    {[] { Store().SetSchemaList(_CASchema()); }, [] { Store().GetSAContentsList(g_vList); }},
    {[] { Store().RequestSchema(); }, [] { Store().CanRequestSchema(); }},
    {[] { Store().InitializeData(); }, [] { Store().SetDomain({kText}); }},
    {[] { Store().SetTVControl(_TVControl()); }, [] { Store().GetTVControl(); }},
    {[] { Store().SetSeachServerContentsList(_ContentsItem()); }, [] { Store().GetSAContentsList(g_vList); }},
    {[] { Store().SetSeachServerContentsList(_ContentsItem()); }, [] { Store().ExpectContents(1); }}};

// Each waits as long as the lock is held elsewhere, takes it once and lets it go; the others do not wait.
TEST_F(DataHandler, GuardedOperationsWaitForTheLock)
{
    const auto calls = [](const Call& call) {
        g_Mutex = {g_Mutex.nMade, 2, true};
        call();
        const std::string strCalls = std::exchange(g_Mutex.strCalls, "");
        g_Mutex = {g_Mutex.nMade};
        return strCalls;
    };
    int nRow = 0;
    for (const auto& [one, other] : kGuarded) EXPECT_EQ("wwlu wwlu", calls(one) + " " + calls(other)) << nRow++;
    EXPECT_EQ("", calls([] {
                  _DisCtrlInfo stInfo;
                  Store().SetUserInputVOICE(Store().GetUserInputVoice());
                  Store().SetDisplayControlResult({});
                  Store().GetDisplayControlResult(stInfo);
              }));
}

// For the thread sanitizer: one thread does nothing but the one call, another nothing but the other, so that no lock
// but their own orders them.
TEST_F(DataHandler, ThreadsShareTheGuardedMembers)
{
    for (const auto& [one, other] : kGuarded) {
        const auto repeat = [](const Call& call) {
            for (int i = 0; i < 60; ++i) call();
        };
        std::thread thread(repeat, one);
        repeat(other);
        thread.join();
    }
    EXPECT_EQ(60U, Store().GetTVControl().size());
    EXPECT_EQ(120U, Results().size());
}

// The same for what hands the lists out or clears them: whoever takes the lock sees all that was set before, and
// nothing else orders these threads.
TEST_F(DataHandler, ThreadsShareTheLists)
{
    const Call calls[] = {[] { EXPECT_EQ(120U, Store().GetTVControl().size()); },
                          [] { EXPECT_EQ(120U, Results().size()); }, [] { Store().InitializeData(); }};
    for (const Call& call : calls) {
        std::atomic<int> nDone{0};
        const auto fill = [&nDone] {
            for (int i = 0; i < 60; ++i) Store().SetTVControl(_TVControl());
            for (int i = 0; i < 60; ++i) Store().SetSeachServerContentsList(_ContentsItem());
            nDone.fetch_add(1, std::memory_order_relaxed);
        };
        std::thread one(fill), other(fill);
        while (nDone.load(std::memory_order_relaxed) < 2) std::this_thread::yield();
        call();
        one.join();
        other.join();
        Store().InitializeData();
    }
}

// Whatever the memory that it is made in held.
TEST_F(DataHandler, StoreBeginsWithAFreeLock)
{
    alignas(CCADataHandler) char vMemory[sizeof(CCADataHandler)];
    std::fill(std::begin(vMemory), std::end(vMemory), '\xFF');
    CCADataHandler* const pStore = new (vMemory) CCADataHandler;
    EXPECT_EQ("", pStore->GetSystemMessage());
    pStore->~CCADataHandler();
}
