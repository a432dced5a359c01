// Lines and tables for the fields of an action record.
#include "explaining/Render.h"

#include <utility>
#include <vector>

namespace
{

using namespace CADataRepository;

constexpr std::size_t kLabelColumns = 17;
constexpr std::size_t kTableIndent = 4;

const _ConvActionInfo kFresh;  // what a field holds that the library left alone

using Cells = std::vector<std::string>;

std::string Line(const char* szLabel, const std::string& strValue, const CPaint& paint)
{
    return strValue.empty() ? std::string() : "  " + paint.Label(Padded(szLabel, kLabelColumns)) + strValue + '\n';
}

template <typename Item>
std::string Rows(Cells vHeading, const std::vector<Item>& vItems, Cells (*cells)(const Item&), const CPaint& paint)
{
    if (vItems.empty()) return {};
    std::vector<Cells> vRows = {std::move(vHeading)};
    for (const Item& item : vItems) vRows.push_back(cells(item));
    return Table(std::move(vRows), kTableIndent, paint);
}

// "volumeup (12)"
template <typename Code, std::size_t N>
std::string WordAndCode(const CodedWord<Code> (&vWords)[N], Code eCode)
{
    const std::string strWord(WordOf(vWords, eCode));
    return (strWord.empty() ? "none" : strWord) + " (" + std::to_string(eCode) + ')';
}

std::string KindInWords(int nKind)
{
    return nKind == E_CA_ACTION_TYPE_SYSTEM     ? "system action"
           : nKind == E_CA_ACTION_TYPE_NO_MATCH ? "no match"
                                                : "kind " + std::to_string(nKind);
}

// As Joined, without a list of the quoted texts, none of which is empty.
std::string JoinedQuoted(const std::vector<std::string>& vTexts)
{
    std::string strResult;
    for (const std::string& strText : vTexts) strResult.append(strResult.empty() ? "" : ", ").append(Quoted(strText));
    return strResult;
}

std::string NumberUnless(int nNumber, int nAbsent)
{
    return nNumber == nAbsent ? std::string() : std::to_string(nNumber);
}

std::string Action(const _ConvActionInfo& info, const CPaint& paint)
{
    const bool bResolved = info.eActionType != kFresh.eActionType;
    const bool bSecond = info.e2ndAction != kFresh.e2ndAction;
    const bool bIntent = info.eActionIntent != kFresh.eActionIntent;
    std::string strAction = Shown(info.strAction);
    if (bResolved) strAction += (strAction.empty() ? "code " : ", code ") + std::to_string(info.eSystemAction);
    return Line("action", strAction, paint) + Line("kind", bResolved ? KindInWords(info.eActionType) : "", paint) +
           Line("second action", bSecond ? WordAndCode(kActionWords, info.e2ndAction) : "", paint) +
           Line("intent", bIntent ? WordAndCode(kIntentWords, info.eActionIntent) : "", paint);
}

std::string Lists(const _ConvActionInfo& info, const CPaint& paint)
{
    const auto Channel = [](const _Channels& stChannel) {
        return Cells{Shown(stChannel.szNumber),         Shown(stChannel.szName),           Shown(stChannel.szType),
                     NumberUnless(stChannel.nMajor, 0), NumberUnless(stChannel.nMinor, 0), Shown(stChannel.szSourceID)};
    };
    return Line("parameters", JoinedQuoted(info.vSystemActionParam), paint) +
           Line("candidates", JoinedQuoted(info.vCandidates), paint) +
           Line("channels", info.vChannels.empty() ? "" : Count(info.vChannels.size(), "channel", "channels"), paint) +
           Rows<_Channels>({"number", "name", "type", "major", "minor", "source"}, info.vChannels, Channel, paint);
}

std::string Display(const _DisCtrlInfo& stControl, const CPaint& paint)
{
    if (stControl.nAction == kFresh.stDisCtrlInfo.nAction && stControl.numberOfItem == 0) return {};
    const auto Entry = [](const ExternalItemData& stItem) {
        return Cells{NumberUnless(stItem.nNumber, -1), Shown(stItem.szText)};
    };
    const std::string strAction = WordAndCode(kDisplayActionWords, static_cast<E_CA_DISPLAY_ACTION>(stControl.nAction));
    const std::string strCount = Count(static_cast<std::size_t>(stControl.numberOfItem), "entry", "entries");
    return Line("display control", strAction + " on " + strCount, paint) +
           Rows<ExternalItemData>({"index", "title"}, stControl.vItems, Entry, paint);
}

std::string Dialog(const _ConvActionInfo& info, const CPaint& paint)
{
    std::vector<std::string> vParts;
    if (!info.strDialogId.empty()) vParts.push_back("id " + Quoted(info.strDialogId));
    if (info.nDialogSeq != kFresh.nDialogSeq) vParts.push_back("sequence " + std::to_string(info.nDialogSeq));
    if (info.nDialogType != kFresh.nDialogType) vParts.push_back("type " + std::to_string(info.nDialogType));
    return Line("sentence", Shown(info.strSysResponse), paint) + Line("dialog", Joined(vParts), paint) +
           Line("domains", JoinedQuoted(info.vDomain), paint);
}

std::string Results(const std::vector<_SAContents>& vContents, const CPaint& paint)
{
    const auto Result = [](const _SAContents& stContents) {
        const _ContentsItem& stItem = stContents.stItem;
        const bool bApp = stItem.szType == "apps" || stItem.szType == "app";
        return Cells{Shown(stItem.szType), Shown(bApp ? stItem.stApp.szTitle : stItem.stMnT.szTitle),
                     bApp ? std::string() : NumberUnless(stItem.stMnT.nYear, 0),
                     Shown(bApp ? stItem.stApp.stPoster.szUrl : stItem.stMnT.stPoster.szUrl)};
    };
    return Line("results", vContents.empty() ? "" : Count(vContents.size(), "result", "results"), paint) +
           Rows<_SAContents>({"type", "title", "year", "poster"}, vContents, Result, paint);
}

}  // namespace

std::string Heading(const ServerReply& stReply, const CPaint& paint)
{
    const std::string strSaid =
        stReply.bNoUtterance || stReply.strUtterance.empty() ? std::string() : ": " + Quoted(stReply.strUtterance);
    return paint.Title(Shown(stReply.strSource) + strSaid) + '\n';
}

std::string RenderRecord(const ServerReply& stReply, const _ConvActionInfo& info, const CPaint& paint)
{
    return Heading(stReply, paint) + Action(info, paint) + Lists(info, paint) + Display(info.stDisCtrlInfo, paint) +
           Dialog(info, paint) + Results(info.vSAContents, paint);
}
