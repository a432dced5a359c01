// The store: what it caches, clears and keeps, and how threads share it.
#include <atomic>
#include <functional>
#include <future>
#include <thread>

#include "Conversation.h"

using DataHandler = Conversation;

TEST_F(DataHandler, ListIsSortedOnceForEachChange)
{
    for (const int nItems : {1, 2}) {
        Store().SetSeachServerContentsList(_ContentsItem());
        for (int i = 0; i < 2; ++i) EXPECT_EQ(nItems, static_cast<int>(Results().size()));
        EXPECT_EQ(nItems, g_Platform.Count(" Data has been updated, it will be sorted"));
    }
}

TEST_F(DataHandler, InitializeDataClearsWhatBelongsToTheReply)
{
    Store().SetCommunicateErrorCode("E1");
    m_Parser.t_ParseContent(Parsed("{'casting':[{}]}"));
    EXPECT_FALSE(Say("'displaycontrol':[{'action':'play_content','params':[{}]}],'tvcontent':[{'type':'movie'}]"));
    Store().SetSystemMessage("s"), Store().SetDomain({"d"}), Store().SetTVControl(_TVControl()),
        Store().RequestSchema();
    Store().InitializeData();
    EXPECT_EQ("E1", Store().GetCommunicateErrorCode() + Store().GetSystemMessage());
    EXPECT_TRUE(Store().GetDomain().empty() && Store().GetTVControl().empty() &&
                Store().GetContent().vCasting.empty() && !Store().GetDisplayControlSetFlag() &&
                !Store().CanRequestSchema() && Results().empty());
    _DisCtrlInfo stInfo{7, 7, {}};
    Store().GetDisplayControlResult(stInfo);
    EXPECT_TRUE(stInfo.numberOfItem == 0 && stInfo.nAction == -1 && stInfo.vItems.empty());
    Store().RequestSchema();
    EXPECT_TRUE(Store().CanRequestSchema() && !Store().CanRequestSchema()) << "answers once";
    Store().SetDisplayControlResult({false, 1, 102, {{5, "t"}}});
    for (int i = 0; i < 2; ++i) Store().GetDisplayControlResult(stInfo);
    EXPECT_TRUE(!Store().GetDisplayControlSetFlag() && stInfo.vItems.size() == 2) << "appends";
}

// For the thread sanitizer: one thread does nothing but the one call, another nothing but the other, so that no lock
// but their own orders them.
TEST_F(DataHandler, ThreadsShareTheGuardedMembers)
{
    static const std::string strText(40, 'x');
    const std::pair<std::function<void()>, std::function<void()>> kPairs[] = {
        {[] { Store().SetSystemMessage(strText); }, [] { Store().GetSystemMessage(); }},
        {[] { Store().SetCommunicateErrorCode(strText); }, [] { Store().GetCommunicateErrorCode(); }},
        {[] { Store().SetDomain({strText}); }, [] { Store().GetDomain(); }},
        {[] { Store().SetContent(_Content()); }, [] { Store().GetContent(); }},
        {[] { Store().SetSchemaList(_CASchema()); }, [] { Results(); }},
        {[] { Store().RequestSchema(); }, [] { Store().CanRequestSchema(); }},
        {[] { Store().InitializeData(); }, [] { Store().SetDomain({strText}); }},
        {[] { Store().SetTVControl(_TVControl()); }, [] { Store().GetTVControl(); }},
        {[] { Store().SetSeachServerContentsList(_ContentsItem()); }, [] { Results(); }}};
    for (const auto& [one, other] : kPairs) {
        const auto repeat = [](const std::function<void()>& call) {
            for (int i = 0; i < 60; ++i) call();
        };
        std::thread thread(repeat, one);
        repeat(other);
        thread.join();
    }
    EXPECT_TRUE(Store().GetTVControl().size() == 60 && Results().size() == 60);
}

// For the thread sanitizer too: whoever takes the lock of the getter sees all that was set before, and nothing else
// orders these threads.
TEST_F(DataHandler, ThreadsShareTheLists)
{
    std::atomic<int> nDone{0};
    const auto fill = [&nDone] {
        for (int i = 0; i < 60; ++i) {
            Store().SetTVControl(_TVControl());
            Store().SetSeachServerContentsList(std::vector<_SAContents>(1));
        }
        nDone.fetch_add(1, std::memory_order_relaxed);
    };
    const auto wait = [&nDone] {
        while (nDone.load(std::memory_order_relaxed) < 2) std::this_thread::yield();
    };
    std::vector<_SAContents> vItems;
    const auto take = [&] {
        wait();
        Store().TakeSAContentsList(vItems);
    };
    std::thread threads[] = {std::thread(fill), std::thread(fill), std::thread(take)};
    wait();
    EXPECT_EQ(120U, Store().GetTVControl().size());
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(120U, vItems.size());
}

// The list is logged under the lock: meanwhile another thread's getter waits, and what is not guarded does not.
TEST_F(DataHandler, HeldLockMakesAGetterWaitAndNothingElse)
{
    Store().SetSystemMessage("kept");
    std::atomic<bool> bStarted{false}, bAnswered{false};
    std::future<std::string> answer;
    g_Platform.onLog = [&](const LogLine& line) {
        if (line.strText.find(">  set the contents list data") == std::string::npos) return;
        answer = std::async(std::launch::async, [&] {
            bStarted = true;
            std::string strMessage = Store().GetSystemMessage();
            bAnswered = true;
            return strMessage;
        });
        for (int i = 0; i < 1000; i += bStarted ? 1 : 0) std::this_thread::yield();
        EXPECT_FALSE(bAnswered);
        Store().SetUserInputVOICE("not guarded");
        EXPECT_FALSE(Store().GetDisplayControlSetFlag());
    };
    Results();
    EXPECT_EQ("kept", answer.get());
}
