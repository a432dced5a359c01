// Several replies in one service life, through the entry points. Input: a line of settings (SetPlatform), then the
// replies.
#include "Speak.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    std::string_view szInput = Fuzz::Input(pData, nSize);
    Fuzz::SetPlatform(Fuzz::TakeLine(szInput));
    Fuzz::Require(ca_initial_service("fuzz"));
    Fuzz::RequireStatus();
    while (!szInput.empty()) {
        CADataRepository::_ConvActionInfo info;
        Fuzz::Speak(Fuzz::TakeDocument(szInput), info);
    }
    Fuzz::RequireThatCommandsWork();
    ca_uninitial();
    return 0;
}
