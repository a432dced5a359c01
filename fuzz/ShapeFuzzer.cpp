// A conversation: replies made of the library's own keys and words, and between them whatever else a caller does.
// Input: bytes, each of which decides something (ReplyShapes.h). PARLO_FUZZ_SHOW in the environment prints the steps.
#include <json/reader.h>

#include <cstdlib>
#include <exception>
#include <sstream>

#include "CADataHandler.h"
#include "CAParseJson.h"
#include "CAUtil.h"
#include "ReplyShapes.h"
#include "Speak.h"

namespace
{

const CADataRepository::_TVControl kCommand;  // of a caller who fills the store by hand
const bool kShow = std::getenv("PARLO_FUZZ_SHOW") != nullptr;

const std::string& Shown(const char* szStep, const std::string& strText)
{
    if (kShow) std::fprintf(stderr, "%s: %s\n", szStep, strText.c_str());
    return strText;
}

void Restart()
{
    ca_uninitial();
    CADataRepository::_ConvActionInfo info;
    Fuzz::Require(!Fuzz::Speak("{}", info) && ca_get_conv_status() == E_CA_CONV_STATUS_NO_SERVICE);
    ca_uninitial();
    Fuzz::Require(ca_initial_service("again") && !ca_initial_service("twice"));
}

void AskStatus(Fuzz::CInput& input)
{
    constexpr const char* kCountries[] = {"US", "KR", "PT", "IN", "empty", "none"};
    constexpr const char* kLanguages[] = {"en_US", "ko_KR", "pt_BR", "refused", "stuck", "throws", "none"};
    constexpr const char* kFlags[] = {"1", "0", "none"};
    const std::string strCountry = input.OneOf(kCountries);
    const std::string strLanguage = input.OneOf(kLanguages);
    Fuzz::SetPlatform(Shown("status", strCountry + " " + strLanguage + " " + input.OneOf(kFlags)));
    if (strLanguage == "throws") {
        ca_get_conv_status();
        return Fuzz::SetPlatform("US en_US 1");
    }
    Fuzz::RequireStatus();
    const bool bSpoken = strCountry == "KR"   ? strLanguage == "ko_KR"
                         : strCountry == "PT" ? CCAUtil::IsPTLanguage(strLanguage)
                                              : strCountry != "IN" && CCAUtil::IsEnLanguage(strLanguage);
    Fuzz::Require(CCAUtil::CompareCountryLanguage() == bSpoken);
}

// The platform's log fails somewhere within a call. What that left behind must not show in a later one.
void CallWithFailingLog(Fuzz::CInput& input, std::string& strReply)
{
    CADataRepository::_ConvActionInfo info;
    const std::size_t nCall = input.Byte();
    Fuzz::FailLog(nCall % 4 == 0 ? input.Byte() : nCall / 4 % 8, nCall >= 128);
    if (nCall % 4 == 0) ca_get_speech_action("find a film", strReply, info);
    if (nCall % 4 == 1) ca_get_conv_status();
    if (nCall % 4 == 2) ca_initial_service("twice");
    if (nCall % 4 == 3) ca_uninitial();
    Fuzz::FailLog(0);
    if (nCall % 4 == 3) Restart();
}

// The rules stay for the rest of the service's life; they order nothing, since there is but one source of results.
void LoadSchema(const std::string& strSchema)
{
    unsigned nCount = 77;
    CCAParsePacket parser;
    parser.ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, strSchema, nCount);
    CCADataHandler::GetInstance()->GetCommunicateErrorCode();
    Fuzz::Require(nCount == 77 && !parser.ParseData(static_cast<E_CA_PARSE_JSON_STATUS>(-1), strSchema, nCount));
}

void ShowInDetail(const std::string& strContent)
{
    CCAParsePacket parser;
    const int nMinutes = parser.t_GetTimeZoneDifferenceByStr(strContent.substr(0, 6));
    Fuzz::Require(std::abs(nMinutes) <= 99 * 60 + 99);
    Json::Value content;
    try {
        std::istringstream(strContent) >> content;
    } catch (const std::exception&) {
        return;  // no document
    }
    Fuzz::Require(parser.t_ParseContent(content));
}

void Step(Fuzz::CInput& input, std::string& strReply)
{
    CADataRepository::_ConvActionInfo info;
    switch (input.Byte() % 16) {
        case 1:
            return Restart();
        case 2:
            return AskStatus(input);
        case 3:
            return LoadSchema(Shown("schema", Fuzz::MakeSchema(input)));
        case 4:
            return ShowInDetail(Shown("content", Fuzz::MakeContent(input)));
        case 5:
            return CCADataHandler::GetInstance()->RequestSchema();
        case 9:
            return CCADataHandler::GetInstance()->SetTVControl(kCommand);
        case 6:
            return Fuzz::RequireThatCommandsWork();
        case 7:
            return CallWithFailingLog(input, strReply);
        case 8:
            break;  // the same reply again
        default:
            strReply = Fuzz::MakeReply(input);
    }
    Fuzz::Speak(Shown("reply", strReply), info);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    Fuzz::CInput input(Fuzz::Input(pData, nSize));
    Fuzz::SetPlatform("US en_US 1");
    Fuzz::Require(ca_initial_service("fuzz"));
    std::string strReply;
    while (!input.IsAtEnd()) Step(input, strReply);
    Fuzz::RequireThatCommandsWork();
    ca_uninitial();
    return 0;
}
