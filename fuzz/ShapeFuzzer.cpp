// A conversation: replies made of the library's own keys and words, and between them whatever else a caller does.
// Input: bytes, each of which decides something (ReplyShapes.h). PARLO_FUZZ_SHOW in the environment prints the steps.
#include <json/reader.h>

#include <cstdlib>
#include <exception>
#include <sstream>

#include "CADataHandler.h"
#include "CAParseJson.h"
#include "ReplyShapes.h"
#include "Speak.h"

namespace
{

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
    constexpr const char* kCountries[] = {"US", "KR", "BE", "IN", "empty", "none"};
    constexpr const char* kLanguages[] = {"en_US", "ko_KR", "fr_FR", "refused", "stuck", "none"};
    constexpr const char* kFlags[] = {"1", "0", "none"};
    const std::string strCountry = input.OneOf(kCountries);
    const std::string strLanguage = input.OneOf(kLanguages);
    Fuzz::SetPlatform(Shown("status", strCountry + " " + strLanguage + " " + input.OneOf(kFlags)));
    Fuzz::RequireStatus();
}

// The rules stay for the rest of the service's life; they order nothing, since there is but one source of results.
void LoadSchema(const std::string& strSchema)
{
    unsigned nCount = 77;
    CCAParsePacket().ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, strSchema, nCount);
    Fuzz::Require(nCount == 77);
}

void ShowInDetail(const std::string& strContent)
{
    Json::Value content;
    try {
        std::istringstream(strContent) >> content;
    } catch (const std::exception&) {
        return;  // no document
    }
    Fuzz::Require(CCAParsePacket().t_ParseContent(content));
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
        case 6:
            return Fuzz::RequireThatCommandsWork();
        case 7:
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
