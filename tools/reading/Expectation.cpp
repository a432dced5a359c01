// The member is found by the offsets that the JSON library keeps, so that the rest of the line is left alone. A new
// file is complete before it takes the old one's name.
#include "reading/Expectation.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "reading/Input.h"
#include "records/RecordJson.h"

namespace
{

bool IsSame(const struct stat& stOne, const struct stat& stOther)
{
    return stOne.st_dev == stOther.st_dev && stOne.st_ino == stOther.st_ino && stOne.st_size == stOther.st_size &&
           stOne.st_mtim.tv_sec == stOther.st_mtim.tv_sec && stOne.st_mtim.tv_nsec == stOther.st_mtim.tv_nsec;
}

bool WriteAll(int nFile, const std::string& strText)
{
    for (std::size_t nDone = 0; nDone < strText.size();) {
        const ssize_t nWritten = write(nFile, strText.data() + nDone, strText.size() - nDone);
        if (nWritten < 0 && errno != EINTR) return false;
        if (nWritten > 0) nDone += static_cast<std::size_t>(nWritten);
    }
    return fsync(nFile) == 0;
}

}  // namespace

std::string WithExpectation(std::string_view szLine, const Json::Value& expect)
{
    const std::size_t nMark = MarkLength(szLine);
    const Json::Value root = MembersOf(szLine);
    std::string strLine(szLine);
    if (root.isNull()) return strLine;
    const Span stOld = SpanOf(root["expect"]);
    if (root.isMember("expect")) return strLine.replace(nMark + stOld.nStart, stOld.nLength, JsonText(expect));
    const std::size_t nEnd = nMark + static_cast<std::size_t>(root.getOffsetLimit()) - 1;  // the closing brace
    const std::string strMember = "\"expect\": " + JsonText(expect);
    // JSON at once only behind a comma that ends the line's members, or where there are none.
    strLine.insert(nEnd, strMember);
    return MembersOf(strLine).isNull() ? strLine.insert(nEnd, ", ") : strLine;
}

std::string CannotUpdate(const std::string& strFile)
{
    struct stat stStat = {};
    if (strFile == "-") return "standard input is no file";
    if (stat(strFile.c_str(), &stStat) != 0) return {};
    if (!S_ISREG(stStat.st_mode)) return "it is no regular file";
    const bool bWritable = (stStat.st_mode & 0222U) != 0 && access(strFile.c_str(), W_OK) == 0;
    return bWritable ? std::string() : "it is read-only";
}

std::string Update(const CLineFile& file, const std::string& strText)
{
    const std::unique_ptr<char, decltype(&std::free)> pTarget(realpath(file.Name().c_str(), nullptr), &std::free);
    struct stat stStat = {};
    if (pTarget == nullptr || stat(pTarget.get(), &stStat) != 0 || !IsSame(stStat, file.Stat()))
        return "it has changed since it was read";
    std::string strNew = std::string(pTarget.get()) + ".XXXXXX";
    const int nFile = mkstemp(strNew.data());
    if (nFile < 0) return std::strerror(errno);
    // Who may not give files away keeps the new one.
    const bool bOwned = fchown(nFile, stStat.st_uid, stStat.st_gid) == 0 || errno == EPERM;
    const bool bWritten = bOwned && fchmod(nFile, stStat.st_mode & 07777U) == 0 && WriteAll(nFile, strText);
    std::string strReason = bWritten ? std::string() : std::strerror(errno);
    if (close(nFile) != 0 && strReason.empty()) strReason = std::strerror(errno);
    if (strReason.empty() && std::rename(strNew.c_str(), pTarget.get()) != 0) strReason = std::strerror(errno);
    if (!strReason.empty()) static_cast<void>(unlink(strNew.c_str()));
    return strReason;
}
