// A platform log of any bytes, as "parlo log" reads it: what it tells does not depend on how the file is cut while it
// is read, no reply is longer than the library logs one, and a whole one has the size announced. Input: the log.
#include <sstream>

#include "FuzzInput.h"
#include "log/LogCalls.h"

namespace
{

constexpr std::size_t kMostBytes = 102500;

std::string Told(std::string_view szLog, std::size_t nPart)
{
    std::ostringstream told;
    CLogCalls calls(
        [&told](const LogCall& call) {
            Fuzz::Require(call.reply.Text().size() <= kMostBytes);
            const bool bWhole = call.reply.GetState() == CLogReply::State::WHOLE;
            Fuzz::Require(!bWhole || call.reply.Text().size() == call.reply.Size());
            told << call.nNumber << ' ' << call.nLine << ' ' << call.digest.Words() << '\n'
                 << call.reply.Text() << '\n';
            for (const std::string& strMissing : call.Missing()) told << strMissing << '\n';
            for (const LogLine& stLine : call.vLines) told << stLine.strLine << '\n';
        },
        true);
    CLogReader reader([&calls](const LogTextLine& stLine) { return calls.Take(stLine); });
    reader.BeginFile("log");
    for (std::size_t n = 0; n < szLog.size(); n += nPart) reader.Feed(szLog.substr(n, nPart));
    reader.EndFile();
    calls.End();
    return told.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string_view szLog = Fuzz::Input(pData, nSize);
    Fuzz::Require(Told(szLog, nSize + 1) == Told(szLog, 1 + nSize % 61));
    return 0;
}
