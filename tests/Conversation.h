// A service on a fake television, and the verbs of the tests.
#pragma once

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "CADataHandler.h"
#include "CAParseJson.h"
#include "FakePlatform.h"
#include "JsonText.h"
#include "parlo-api.h"
#include "records/RecordJson.h"

using namespace CADataRepository;
using Texts = std::vector<std::string>;

// The texts between the blanks and line breaks of `strText`.
inline Texts Words(const std::string& strText)
{
    std::istringstream stream(strText);
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

// The search schema in the store goes in and has no way out; this reads it past the access check.
std::vector<_CASchema>& SchemaList(CCADataHandler& store);
template <auto pMember>
struct Opened {
    friend std::vector<_CASchema>& SchemaList(CCADataHandler& store) { return store.*pMember; }
};
template struct Opened<&CCADataHandler::m_vSchemaList>;

// The schema as text: "category[type from to cycle][...] category...".
inline std::string SchemaText(const std::vector<_CASchema>& vSchema)
{
    std::string strSchema;
    for (const auto& [nCategory, vRules] : vSchema) {
        strSchema += (strSchema.empty() ? "" : " ") + std::to_string(nCategory);
        for (const auto& [nType, nFrom, nTo, nCycle] : vRules) {
            strSchema += "[" + std::to_string(nType);
            for (const int n : {nFrom, nTo, nCycle}) strSchema += " " + std::to_string(n);
            strSchema += "]";
        }
    }
    return strSchema;
}

// What an element of "tvcontent" fills, also of a kind that is refused in a reply.
inline Json::Value ItemOf(const Json::Value& element)
{
    _ContentsItem stItem;
    CCAParsePacket().t_ParseItem(element, stItem);
    return Filled(ToJson(stItem), ToJson(_ContentsItem()));
}

// The same of a programme with its cast; null when it is refused.
inline Json::Value ContentOf(const Json::Value& content)
{
    if (!CCAParsePacket().t_ParseContent(content)) return {};
    return Filled(ToJson(CCADataHandler::GetInstance()->GetContent()), ToJson(_Content()));
}

// The service goes on and off with the test. Each test starts with an empty log.
class Conversation : public testing::Test
{
protected:
    Conversation()
    {
        g_Platform = FakePlatform();
        g_Mutex = FakeMutex();
        EXPECT_TRUE(ca_initial_service("test"));
        g_Platform.vLog.clear();
    }
    ~Conversation() override
    {
        ca_uninitial();
        delete std::exchange(CCADataHandler::pInstance, nullptr);
        EXPECT_EQ(0, g_Platform.nSettingOpen);
        EXPECT_EQ(0, g_Mutex.nMade);
    }

    // Hands the service a reply, given by the members of its "rsp" or raw; fills a fresh m_stInfo.
    bool Say(const std::string& strMembers) { return SayRaw(Reply(strMembers)); }
    bool SayRaw(std::string strReply)
    {
        m_stInfo = _ConvActionInfo();
        return ca_get_speech_action("turn it up", strReply, m_stInfo);
    }

    // The same, and the action that came of it: "57 [news,x.org]" is its code and its parameters.
    std::string ActionOf(const std::string& strMembers)
    {
        if (!Say(strMembers)) return "refused";
        std::string strAction = std::to_string(m_stInfo.eSystemAction) + " [";
        for (const std::string& strParam : m_stInfo.vSystemActionParam) strAction += strParam + ",";
        return (m_stInfo.vSystemActionParam.empty() ? strAction : strAction.substr(0, strAction.size() - 1)) + "]";
    }

    // The log, and its last line: "E itoa:  ERROR - nInput:-1".
    static std::string Shown(const LogLine& line)
    {
        const auto [cKind, strFile, strOperation, strMessage] = Read(line);
        return cKind + (" " + strOperation) + ": " + strMessage + "\n";
    }
    static std::string Logged()
    {
        std::string strLog;
        for (const LogLine& line : g_Platform.vLog) strLog += Shown(line);
        return strLog;
    }

    static CCADataHandler& Store() { return *CCADataHandler::GetInstance(); }
    static std::vector<_SAContents> Results()
    {
        std::vector<_SAContents> vList(1);
        Store().GetSAContentsList(vList);
        return vList;
    }

    _ConvActionInfo m_stInfo;
    CCAParsePacket m_Parser;
    unsigned m_nCount = 77;
};
