// What a reply may cost: memory that is moved and kept, replies that mean to exhaust the
// set. Of its own, as it replaces new.
#include <malloc.h>

#include <algorithm>

#include "Conversation.h"
#include "ReplacedNew.h"

static std::size_t g_nAllocated = 0;    // bytes asked for since the start
static std::size_t g_nOutstanding = 0;  // bytes of blocks that are not released

static void* Allocate(std::size_t nSize, bool /*bThrows*/) noexcept
{
    void* const p = std::malloc(nSize);
    g_nAllocated += nSize;
    g_nOutstanding += malloc_usable_size(p);
    return p;
}

// Not inlined: the compiler would take its free for another's than new's.
__attribute__((noinline)) static void Release(void* p) noexcept
{
    g_nOutstanding -= malloc_usable_size(p);
    std::free(p);
}

static std::string Repeated(std::size_t nTimes, const std::string& strText)
{
    std::string strResult;
    strResult.reserve(nTimes * strText.size());
    for (std::size_t i = 0; i < nTimes; ++i) strResult += strText;
    return strResult;
}

class Regression : public Conversation
{
protected:
    // The bytes that are asked for while a command with so many objects of two channels each becomes a record.
    std::size_t BytesForChannels(int nObjects)
    {
        std::string strParams;
        for (int i = 0; i < nObjects; ++i)
            strParams +=
                ",{'channels':[{'name':'" + std::to_string(2 * i) + "'},{'name':'" + std::to_string(2 * i + 1) + "'}]}";
        std::string strReply = Reply("'tvcontrol':[{'action':'set_channel','params':[" + strParams.substr(1) + "]}]");
        const std::size_t nBefore = g_nAllocated;
        EXPECT_TRUE(SayRaw(std::move(strReply)));
        const std::size_t nBytes = g_nAllocated - nBefore;
        EXPECT_EQ(2U * static_cast<unsigned>(nObjects), m_stInfo.vChannels.size());
        int nChannel = 0;
        for (const _Channels& channel : m_stInfo.vChannels) EXPECT_EQ(std::to_string(nChannel++), channel.szName);
        return nBytes;
    }

    // The bytes that are kept from a reply, its record gone.
    static std::size_t OutstandingAfter(const std::string& strMembers, const std::string& strUtterance = "hi")
    {
        {
            std::string strReply = Reply(strMembers);
            _ConvActionInfo info;
            EXPECT_TRUE(ca_get_speech_action(strUtterance, strReply, info));
        }
        return g_nOutstanding;
    }
};

TEST_F(Regression, ChannelsOfManyParamsKeepTheirOrderAtLinearCost)
{
    g_Platform.bKeepLog = false;
    const std::size_t nBytes = BytesForChannels(300);
    EXPECT_LT(BytesForChannels(600), 3 * nBytes);
}

TEST_F(Regression, LargeReplyGivesItsMemoryBack)
{
    g_Platform.bKeepLog = false;
    const std::string strSmall = Command("muteon");
    constexpr std::size_t kMostKept = 1 << 20;  // of a reply's text, for the next one
    const std::string strLong(kMostKept, 'x');
    const Texts vLarge = {"'system_sentence':'" + strLong + "'," + strSmall,
                          "'domain':['" + strLong + "']," + strSmall,
                          "'dialog':{'dialog_id':'" + strLong + "'}," + strSmall,
                          "'domain':['a','b']," + Command("display_content", "'keyword':'" + strLong + "'"),
                          "'domain':['tvcontrol']," + Command("search_failed", "'keyword':'" + strLong + "'"),
                          "'tvcontrol':[" + Repeated(2000, "{'action':'muteon'},") + "0]",
                          strSmall + ",'tvcontent':[" + Repeated(100, "{'type':'movie'},") + "0]",
                          strSmall + ",'displaycontrol':[{'params':[" + Repeated(5000, "0,") + "0]}]",
                          Command("display_candidates", "'names':['" + strLong + "']")};
    OutstandingAfter(strSmall);  // what is kept for good is made now
    const std::size_t nBefore = OutstandingAfter(strSmall);
    std::size_t nKept = 0;
    for (const std::string& strLarge : vLarge) {
        OutstandingAfter(strLarge, strLong);
        nKept = Reply(strLarge).size() > kMostKept ? 0 : std::max(nKept, Reply(strLarge).size());
        EXPECT_GE(nBefore + nKept + 4096, OutstandingAfter(strSmall)) << strLarge.substr(0, 60);
    }
}

// Nor memory for dropping it.
TEST_F(Regression, WhatWaitsCostsALaterReplyNothing)
{
    g_Platform.bKeepLog = false;
    const auto bytesOf = [](const std::string& strMembers) {
        const std::size_t nBefore = g_nAllocated;
        std::string strReply = Reply(strMembers);
        _ConvActionInfo info;
        EXPECT_FALSE(ca_get_speech_action("hi", strReply, info));
        return g_nAllocated - nBefore;
    };
    const std::string strItem = "'tvcontent':[{'type':'app'}]";
    bytesOf(strItem);
    const std::size_t nAlone = bytesOf(strItem);
    Store().InitializeData();
    bytesOf("'tvcontent':[" + Repeated(4090, "{'type':'app'},") + "0]");
    EXPECT_GE(nAlone, bytesOf(strItem)) << "beside what waits";
    bytesOf("'tvcontent':[" + Repeated(100, "{'type':'app'},") + "0]");
    EXPECT_GE(nAlone + sizeof(_ContentsItem), bytesOf(strItem)) << "dropping it";
}

// Equal keys keep the document small.
TEST_F(Regression, MoreThanHalfAMillionValuesAreRefused)
{
    constexpr std::size_t kMost = 1 << 19;
    const std::string strMute = Command("muteon");
    const std::string strBare = Reply(strMute);
    const auto separates = [](char c) { return c == ',' || c == '[' || c == '{'; };
    const auto nRest = static_cast<std::size_t>(std::count_if(strBare.begin(), strBare.end(), separates));
    for (const std::string strValue : {"'':0,", "'':'a longer text',", "'':[0],", "'':{},"}) {
        const auto nEach = static_cast<std::size_t>(std::count_if(strValue.begin(), strValue.end(), separates));
        const std::size_t nFitting = (kMost - nRest) / nEach;
        EXPECT_EQ("14 []", ActionOf(Repeated(nFitting, strValue) + strMute)) << strValue;
        EXPECT_EQ(0, g_Platform.Count("json parse error")) << strValue;
        EXPECT_EQ("refused", ActionOf(Repeated(nFitting + 1, strValue) + strMute)) << strValue;
        EXPECT_EQ(1, g_Platform.Count("json parse error")) << strValue;
        g_Platform.vLog.clear();
    }
}

TEST_F(Regression, ManyCommentsAreDroppedAndTheRecordIsTheSame)
{
    const std::string strWithout = "jPrm[" + Parsed("[{'amount':7}]").toStyledString() + "]";
    for (const std::string strComment : {"/**/", "//\n", "/*[{,*/"}) {
        for (const std::size_t nComments : {0U, 10U, 25000U}) {
            g_Platform.vLog.clear();
            const std::string strComments = Repeated(nComments, strComment);
            EXPECT_EQ("12 [7]", ActionOf("'tvcontrol':[{'action':'volumeup','params':[{'amount':7" + strComments +
                                         "}]}]" + strComments));
            EXPECT_EQ(nComments != 10U, g_Platform.Count(strWithout)) << nComments << strComment;
        }
    }
}
