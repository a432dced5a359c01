// The driver of the comparison with the model (model/compare.py): runs service lives and reports what happened.
//
// Standard input: JSON Lines, one service life a line: the set's settings and "steps". Standard output: one line a
// life, a list with one report a step. Every text is a list of bytes, written as the code points 0 to 255.
#include <json/writer.h>

#include <cstdio>
#include <iostream>
#include <utility>

#include "CADataHandler.h"
#include "CAParseJson.h"
#include "FakePlatform.h"
#include "JsonText.h"
#include "parlo-api.h"
#include "rendering/RecordJson.h"

static std::string Bytes(const Json::Value& text)
{
    std::string strBytes;
    const std::string strUtf8 = text.asString();
    for (std::size_t i = 0; i < strUtf8.size(); ++i) {
        const auto nByte = static_cast<unsigned char>(strUtf8[i]);
        strBytes += nByte < 0x80 ? strUtf8[i] : static_cast<char>((nByte << 6) | (strUtf8[++i] & 0x3F));
    }
    return strBytes;
}

static Json::Value Run(const Json::Value& step)
{
    const std::string strOp = step["op"].asString();
    const std::string strText = Bytes(step["text"]);
    CCAParsePacket parser;
    Json::Value report;
    Json::Value& result = report["result"];
    if (strOp == "init") result = ca_initial_service(Bytes(step["name"]));
    if (strOp == "status") result = ca_get_conv_status();
    if (strOp == "uninit") ca_uninitial();
    if (strOp == "content") result = parser.t_ParseContent(ParsedJson(strText));
    if (strOp == "timezone") result = parser.t_GetTimeZoneDifferenceByStr(strText);
    if (strOp == "request_schema" && CCADataHandler::pInstance != nullptr) CCADataHandler::pInstance->RequestSchema();
    if (strOp == "speech") {
        CADataRepository::_ConvActionInfo info;
        std::string strReply = Bytes(step["reply"]);
        result = ca_get_speech_action(Bytes(step["utterance"]), strReply, info);
        report["record"] = ToJson(info);
    }
    if (strOp == "parse" || strOp == "schema") {
        const int nStatus = strOp == "schema" ? CA_PARSE_JSON_SEARCH_SCHEMA : step["status"].asInt();
        unsigned nCount = 77;
        result = parser.ParseData(static_cast<E_CA_PARSE_JSON_STATUS>(nStatus), strText, nCount);
        report["count"] = nCount;
    }
    if (strOp == "contents") {
        std::vector<CADataRepository::_SAContents> vList;
        CCADataHandler::GetInstance()->GetSAContentsList(vList);
        report["list"] = Json::Value(Json::arrayValue);
        for (const auto& stEntry : vList) report["list"].append(ToJson(stEntry));
    }
    if (strOp == "store") {
        report["error_code"] = CCADataHandler::GetInstance()->GetCommunicateErrorCode();
        report["content"] = ToJson(CCADataHandler::GetInstance()->GetContent());
    }
    return report;
}

static Json::Value RunLife(const Json::Value& life)
{
    g_Platform = FakePlatform{std::nullopt,
                              std::nullopt,
                              life["init_result"].asInt(),
                              life["language_result"].asInt(),
                              life["deinit_result"].asInt(),
                              life["factory_result"].asInt(),
                              life["factory_value"].asInt()};
    if (!life["country"].isNull()) g_Platform.strCountry = Bytes(life["country"]);
    if (!life["language"].isNull()) g_Platform.strLanguage = Bytes(life["language"]);

    Json::Value reports(Json::arrayValue);
    for (const Json::Value& step : life["steps"]) {
        g_Platform.vLog.clear();
        Json::Value& report = reports.append(Run(step));
        report["log"] = Json::Value(Json::arrayValue);
        for (const auto& [nPriority, strTag, strText] : g_Platform.vLog) {
            Json::Value& entry = report["log"].append(Json::Value(Json::arrayValue));
            for (const Json::Value& part : {Json::Value(nPriority), Json::Value(strTag), Json::Value(strText)})
                entry.append(part);
        }
    }
    ca_uninitial();
    delete std::exchange(CCADataHandler::pInstance, nullptr);
    return reports;
}

int main()
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;  // bytes as they are
    for (std::string strLine; std::getline(std::cin, strLine); std::puts("")) {
        for (const char c : Json::writeString(builder, RunLife(ParsedJson(strLine))))
            std::printf((c & 0x80) != 0 ? "\\u%04x" : "%c", static_cast<unsigned char>(c));
    }
    return 0;
}
