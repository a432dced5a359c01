// The records as JSON.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "JsonText.h"
#include "records/RecordJson.h"
#include "session/Case.h"

using namespace CADataRepository;

// The fields of every record, with their types, as the headers declare them.
static std::map<std::string, std::map<std::string, std::string>> DeclaredFields()
{
    std::map<std::string, std::map<std::string, std::string>> mapRecords;
    for (const char* szHeader : {"ActionInfo", "Contents", "Information", "SearchList", "TVControl"}) {
        std::ifstream file(PARLO_SOURCES "/include/CADataRepository/" + std::string(szHeader) + ".h");
        std::string strRecord;
        for (std::string strLine, strType, strName; std::getline(file, strLine);) {
            strLine.erase(std::min(strLine.find("//"), strLine.size()));
            std::istringstream words(strLine);
            words >> strType >> strName;
            if (strType == "struct") strRecord = strName;
            if (strLine.find_first_not_of(' ') == 4 && strLine.find(';') != std::string::npos && strName != "=")
                mapRecords[strRecord][strName.substr(0, strName.find_first_of(";{"))] = strType;
        }
    }
    return mapRecords;
}

TEST(RecordJson, EveryFieldUnderItsName)
{
    const auto mapRecords = DeclaredFields();
    std::set<std::string> seen;
    const std::function<void(const std::string&, const Json::Value&)> Compare = [&](const std::string& strType,
                                                                                    const Json::Value& value) {
        const bool bList = strType.rfind("std::vector<", 0) == 0;
        const std::string strRecord = bList ? strType.substr(12, strType.size() - 13) : strType;
        if (mapRecords.count(strRecord) == 0) return;
        ASSERT_TRUE(!bList || value.size() == 1) << strRecord << ": the test fills no list of them";
        const Json::Value& object = bList ? value[0] : value;
        EXPECT_EQ(mapRecords.at(strRecord).size(), object.size()) << strRecord;
        for (const auto& [strName, strFieldType] : mapRecords.at(strRecord)) {
            EXPECT_TRUE(object.isMember(strName)) << strRecord << "::" << strName;
            if (object.isMember(strName)) Compare(strFieldType, object[strName]);
        }
        seen.insert(strRecord);
    };
    _ConvActionInfo info;
    info.vChannels.resize(1);
    info.stDisCtrlInfo.vItems.resize(1);
    info.vSAContents.resize(1);
    _ContentsItem& stItem = info.vSAContents[0].stItem;
    stItem.stMnT.vGenres.resize(1), stItem.stMnT.vRatings.resize(1);
    stItem.stOnTV.vGenres.resize(1), stItem.stOnTV.vRatings.resize(1);
    stItem.stInfo.stWeather.vWInfo.resize(1), stItem.stInfo.stWeather.vForeInfo.resize(1);
    stItem.stInfo.stStock.vDetailed.resize(1);
    stItem.stInfo.stSports.vRecords.resize(1);
    stItem.stInfo.stSports.vRecords[0].vStanding.resize(1);
    Compare("_ConvActionInfo", ToJson(info));
    Compare("_Content", ToJson(_Content{{{"cast"}}, stItem.stOnTV}));
    std::set<std::string> unseen;
    for (const auto& [strRecord, mapFields] : mapRecords)
        if (seen.count(strRecord) == 0) unseen.insert(strRecord);
    EXPECT_EQ((std::set<std::string>{"_CASchema", "_CASortRule", "_DialogOpen", "_DisplayControlInfo",
                                     "_DisplayControlItemData", "_ResponseInfo", "_TVControl"}),
              unseen)
        << "these stay in the library, all others are shown";
}

TEST(RecordJson, TextsKeepTheirBytesOnOneLine)
{
    const std::string strBytes("\"\\\n\0 \x7F\xC2\x85\xC2\xA0 \xC3\xA9\xFF\xC2", 15);
    _ConvActionInfo info;
    info.strAction = strBytes;
    info.vDomain = {strBytes, ""};
    info.vSAContents.resize(3);
    info.vSAContents[2].stItem.stApp.szTitle = strBytes;
    std::string strLine;
    std::size_t nPieces = 0;
    Case stCase;
    stCase.stReply.strFile = "f";
    stCase.bAccepted = true;
    stCase.pInfo = &info;
    const auto Write = [&](bool bCompact) {
        strLine.clear();
        WriteCaseLine(stCase, bCompact, [&](const std::string& strPiece) { strLine += strPiece, ++nPieces; });
        return strLine;
    };
    Write(false);
    EXPECT_LT(30U, nPieces);
    EXPECT_EQ(0U, strLine.find(R"({"file":"f","line":1,"accepted":true,"eActionType":0,"eSystemAction":0,)"));
    EXPECT_NE(std::string::npos, strLine.find(R"("strAction":"\"\\\n\u0000 \u007f\u0085)"
                                              "\xC2\xA0 \xC3\xA9\xFF\xC2\","));
    EXPECT_EQ(strLine.size() - 1, strLine.find('\n'));
    Json::Value record = ParsedJson(strLine);
    for (const char* szName : {"file", "line"}) record.removeMember(szName);
    EXPECT_EQ(OutcomeJson(stCase, false), record);
    info = {};
    info.vSAContents.resize(2);
    info.vSAContents[1].stItem.stMnT.nYear = 0;
    EXPECT_EQ(R"({"file":"f","line":1,"accepted":true,"vSAContents":[{},{"stItem":{"stMnT":{"nYear":0}}}]})"
              "\n",
              Write(true));
    stCase.bAccepted = false;
    stCase.strRefusal = "no \"rsp\"";
    EXPECT_EQ(R"({"file":"f","line":1,"accepted":false,"reason":"no \"rsp\""})"
              "\n",
              Write(false));
    EXPECT_EQ("\"\\u007f\\u009f\xC3\x9F\\u061c\\u202e\\u2069\xE2\x80\xAF\xD8\x9D\xE2\x80\\u007f\xC2\"\n",
              JsonLine("\x7F\xC2\x9F\xC3\x9F\xD8\x9C\xE2\x80\xAE\xE2\x81\xA9\xE2\x80\xAF\xD8\x9D\xE2\x80\x7F\xC2"));
}
