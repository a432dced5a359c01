// Wording of calls.
#include "log/LogReport.h"

#include <cctype>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "catalog/Catalog.h"
#include "records/RecordJson.h"

namespace
{

// The columns before the last two, of which the place has a width by the files' names and the outcome none. A log is
// listed while it is read, so that they cannot fit its contents.
constexpr std::size_t kWidths[] = {5, 20, 8, 7};
constexpr std::size_t kLineDigits = 8;

std::string Row(const std::vector<std::string>& vCells, std::size_t nPlace)
{
    std::string strRow;
    for (std::size_t i = 0; i + 1 < vCells.size(); ++i)
        strRow += Padded(vCells[i].empty() ? "-" : vCells[i], i < std::size(kWidths) ? kWidths[i] : nPlace) + ' ';
    return strRow + vCells.back();
}

std::string OutcomeOf(const LogCall& call, const CallReport& stReport)
{
    if (call.digest.Kind() != CallKind::STATUS || !stReport.nStatus) return call.digest.Words(call.reply.Text());
    const std::string strOptions = call.stSet.Options();
    std::string strStatus = RenderStatus(*stReport.nStatus);
    strStatus.pop_back();  // its line break
    return strStatus + (strOptions.empty() ? "" : ": " + strOptions);
}

std::string ReplyText(const CLogReply& reply)
{
    std::string strText = std::string("reply ") + NameOf(reply.GetState()) + ": " + std::to_string(reply.Text().size());
    if (reply.Size()) strText += " of " + std::to_string(*reply.Size());
    strText += " bytes";
    for (const std::string& strUndone : reply.Undone()) strText += ", with " + strUndone + " taken back";
    return strText;
}

// The result of a replay, each line of it.
std::vector<std::string> Lines(const Comparison& stComparison)
{
    const Comparison::Result eResult = stComparison.eResult;
    if (eResult == Comparison::Result::SAME) return {};
    if (eResult == Comparison::Result::MISSING)
        return {"replay: the same but for " + Count(stComparison.nMissing, "line", "lines") +
                    " that the log does not have, the first being",
                "  here: " + Shown(stComparison.strHere)};
    if (eResult == Comparison::Result::NOT_COMPARED) return {"replay: not compared, since " + stComparison.strWhy};
    if (!stComparison.strWhy.empty()) return {"replay: differs", "  " + Shown(stComparison.strWhy)};
    const std::string strHere = stComparison.strHere.empty() ? "no more lines" : Shown(stComparison.strHere);
    return {"replay: differs", "  set:  " + Shown(stComparison.strSet), "  here: " + strHere};
}

// In JSON, and for a person.
constexpr const char* kResults[][2] = {{"same", "the same"},
                                       {"lines_missing", "the same but for lost lines"},
                                       {"differs", "different"},
                                       {"not_compared", "not compared"}};

Json::Value List(const std::vector<std::string>& vTexts)
{
    Json::Value list(Json::arrayValue);
    for (const std::string& strText : vTexts) list.append(strText);
    return list;
}

Json::Value ReplyJson(const CLogReply& reply, const std::string& strFile)
{
    Json::Value value;
    value["state"] = NameOf(reply.GetState());
    if (reply.Size()) value["size"] = Json::UInt64{*reply.Size()};
    value["bytes"] = Json::UInt64{reply.Text().size()};
    value["pieces"] = Json::UInt64{reply.Pieces()};
    value["gaps"] = Json::arrayValue;
    for (const CLogReply::Gap& stGap : reply.Pieces() == 0 ? std::vector<CLogReply::Gap>() : reply.Gaps()) {
        Json::Value& gap = value["gaps"].append(Json::objectValue);
        gap["offset"] = stGap.bPlace ? Json::Value(Json::UInt64{stGap.nOffset}) : Json::Value();
        gap["bytes"] = stGap.nBytes > 0 ? Json::Value(Json::UInt64{stGap.nBytes}) : Json::Value();
    }
    if (!reply.Undone().empty()) value["undone"] = List({reply.Undone().begin(), reply.Undone().end()});
    if (!strFile.empty()) value["file"] = strFile;
    return value;
}

Json::Value ReplayJson(const Comparison& stComparison)
{
    Json::Value value;
    value["result"] = kResults[static_cast<int>(stComparison.eResult)][0];
    if (!stComparison.strWhy.empty()) value["why"] = stComparison.strWhy;
    if (!stComparison.strSet.empty()) value["set"] = stComparison.strSet;
    if (!stComparison.strHere.empty()) value["here"] = stComparison.strHere;
    if (stComparison.nMissing > 0) value["missing"] = Json::UInt64{stComparison.nMissing};
    return value;
}

// "reply-0001.json"; one that is not whole is ".partial", since nobody should take it for the reply.
std::string NameFor(const LogCall& call)
{
    const std::string strNumber = std::to_string(call.nNumber);
    const std::string strZeros(strNumber.size() < 4 ? 4 - strNumber.size() : 0, '0');
    const bool bWhole = call.reply.GetState() == CLogReply::State::WHOLE;
    return "reply-" + strZeros + strNumber + (bWhole ? ".json" : ".partial");
}

// "conversation-1480.jsonl". A process is what the log says it is, which may be no number, and long.
std::string ConversationOf(const LogCall& call)
{
    std::string strProcess = call.stPrefix.strProcess.substr(0, 32);
    for (char& c : strProcess)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    return "conversation" + (strProcess.empty() ? "" : '-' + strProcess) + ".jsonl";
}

void Write(const std::string& strFile, std::ios::openmode eMode, const std::string& strText)
{
    std::ofstream out(strFile, std::ios::binary | eMode);
    out << strText;
    out.close();
    if (!out) throw std::runtime_error(strFile + " cannot be written: " + std::system_category().message(errno));
}

}  // namespace

CCallList::CCallList(const std::vector<std::string>& vFiles, const CPaint& paint)
    : m_nFolder(vFiles.front().rfind('/') + 1), m_nPlace(kLineDigits), m_paint(paint)
{
    const std::string strFolder = vFiles.front().substr(0, m_nFolder);
    for (const std::string& strFile : vFiles)
        if (strFile.rfind('/') + 1 != m_nFolder || strFile.substr(0, m_nFolder) != strFolder) m_nFolder = 0;
    for (const std::string& strFile : vFiles) m_nPlace = std::max(m_nPlace, strFile.size() - m_nFolder + kLineDigits);
}

std::string CCallList::Heading() const
{
    return m_paint.Faint(Row({"call", "time", "process", "kind", "place", "outcome"}, m_nPlace)) + '\n';
}

std::string CCallList::Call(const LogCall& call, const CallReport& stReport)
{
    ++m_nCalls;
    m_nRefused += call.digest.GetResult() == CCallDigest::Result::REFUSED ? 1 : 0;
    m_nNotWhole += call.reply.IsThere() && call.reply.GetState() != CLogReply::State::WHOLE ? 1 : 0;
    m_bMixed = m_bMixed || call.nNumber < m_nLast;
    m_nLast = call.nNumber;
    if (stReport.stReplayed) ++m_mapReplayed[stReport.stReplayed->eResult];
    std::string strText =
        Row({std::to_string(call.nNumber), Shown(call.stPrefix.strTime), Shown(call.stPrefix.strProcess),
             NameOf(call.digest.Kind()), Shown(call.Place().substr(m_nFolder)), Shown(OutcomeOf(call, stReport))},
            m_nPlace);
    strText += '\n';
    std::vector<std::string> vLines;
    const bool bWhole = call.reply.GetState() == CLogReply::State::WHOLE && call.reply.Undone().empty();
    if (call.reply.IsThere() && (!stReport.strFile.empty() || !bWhole))
        vLines.push_back(ReplyText(call.reply) + (stReport.strFile.empty() ? "" : ", in " + Shown(stReport.strFile)));
    std::vector<std::string> vMissing = call.digest.MissingWords();
    for (std::string& strMissing : call.reply.Missing()) vMissing.push_back(std::move(strMissing));
    if (!vMissing.empty()) vLines.push_back("missing: " + Shown(Joined(vMissing)));
    if (!vMissing.empty() && !call.strDropped.empty()) vLines.push_back("the log says: " + Shown(call.strDropped));
    if (call.bTwice) vLines.emplace_back("the log has lines twice; one of each two counts");
    if (stReport.stReplayed)
        for (std::string& strLine : Lines(*stReport.stReplayed)) vLines.push_back(std::move(strLine));
    for (const std::string& strLine : vLines) strText += "      " + m_paint.Faint(strLine) + '\n';
    return strText + stReport.strExplanation;
}

std::string CCallList::Closing(std::size_t nStrays) const
{
    std::string strText = Count(m_nCalls, "call", "calls") + ", " + std::to_string(m_nRefused) + " refused, " +
                          Count(m_nNotWhole, "reply", "replies") + " not whole";
    if (nStrays > 0) strText += ", " + Count(nStrays, "line", "lines") + " of the library not understood";
    if (m_bMixed) strText += "\ncalls of several threads overlap: each is listed when it ends";
    std::string strReplayed;
    for (const auto& [eResult, nCount] : m_mapReplayed)
        strReplayed += (strReplayed.empty() ? "\nreplay: " : ", ") + std::to_string(nCount) + ' ' +
                       kResults[static_cast<int>(eResult)][1];
    return m_paint.Faint(strText + strReplayed) + '\n';
}

Json::Value CallJson(const LogCall& call, const CallReport& stReport)
{
    Json::Value value;
    value["call"] = Json::UInt64{call.nNumber};
    value["log"] = *call.pFile;
    value["line"] = Json::UInt64{call.nLine};
    if (!call.stPrefix.strTime.empty()) value["time"] = call.stPrefix.strTime;
    if (!call.stPrefix.strProcess.empty()) value["process"] = call.stPrefix.strProcess;
    if (!call.stPrefix.strThread.empty()) value["thread"] = call.stPrefix.strThread;
    value["kind"] = NameOf(call.digest.Kind());
    value["outcome"] = call.digest.Outcome();
    if (call.digest.GetResult() == CCallDigest::Result::REFUSED)
        value["reason"] = call.digest.Reason(call.reply.Text());
    if (!call.digest.Action().empty()) value["action"] = call.digest.Action();
    if (call.digest.Code() >= 0) value["code"] = call.digest.Code();
    if (stReport.nStatus) value["status"] = *stReport.nStatus;
    if (const std::string strSet = call.stSet.Options(); !strSet.empty()) value["set"] = strSet;
    if (!call.strUtterance.empty()) value["utterance"] = call.strUtterance;
    if (call.reply.IsThere()) value["reply"] = ReplyJson(call.reply, stReport.strFile);
    value["missing"] = List(call.Missing());
    if (!call.strDropped.empty()) value["dropped"] = call.strDropped;
    if (call.bTwice) value["lines_twice"] = true;
    if (stReport.stReplayed) value["replay"] = ReplayJson(*stReport.stReplayed);
    if (!stReport.explanation.isNull()) value["explanation"] = stReport.explanation;
    return value;
}

void BeginExtraction(const std::string& strFolder)
{
    std::error_code error;
    std::filesystem::create_directories(strFolder, error);
    if (error) throw std::runtime_error(strFolder + " cannot be made: " + error.message());
    for (const auto& entry : std::filesystem::directory_iterator(strFolder, error)) {
        const std::string strName = entry.path().filename().string();
        if (strName.rfind("reply-", 0) == 0 || strName.rfind("conversation", 0) == 0)
            throw std::runtime_error(strFolder + " holds an extraction already");
    }
}

std::string Extract(const LogCall& call, const std::string& strFolder)
{
    if (call.reply.Text().empty()) return {};
    std::string strFile = strFolder + '/' + NameFor(call);
    Write(strFile, std::ios::out, call.reply.Text());

    Json::Value turn;
    turn["utterance"] = call.strUtterance.empty() ? "(utterance)" : call.strUtterance;
    if (call.strUtterance.empty()) turn["utterance_known"] = false;
    turn["reply"] = call.reply.Text();
    turn["call"] = Json::UInt64{call.nNumber};
    turn["state"] = NameOf(call.reply.GetState());
    Write(strFolder + '/' + ConversationOf(call), std::ios::app, JsonLine(turn));
    return strFile;
}
