// A poster template. Input: a line with the kind of content, a line with the size codes on offer (an empty line: the
// reply names none), and the template.
#include <json/value.h>

#include <sstream>

#include "CAParseJson.h"
#include "CAUtil.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    std::string_view szInput = Fuzz::Input(pData, nSize);
    const std::string strKind = Fuzz::TakeLine(szInput);
    std::istringstream codes(Fuzz::TakeLine(szInput));
    Json::Value images;
    images["url"] = std::string(szInput);
    for (int nCode = 0; codes >> nCode;) images["index"].append(nCode);

    CADataRepository::_Poster poster;
    Fuzz::Require(CCAParsePacket().t_ParsePoster(strKind, images, poster));
    Fuzz::Require(poster.szUrl.size() <= szInput.size());  // whatever the template asks for
    Fuzz::Require(CCAUtil::VsnPrint(nullptr, 1, "%d", 1) == 0);
    return 0;
}
