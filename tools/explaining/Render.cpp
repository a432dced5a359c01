// Lines and tables for the fields of an action record.
#include "explaining/Render.h"

#include <utility>
#include <vector>

namespace
{

using namespace CADataRepository;

constexpr std::size_t kLabelColumns = 17;
constexpr std::size_t kTableIndent = 4;
constexpr std::size_t kUsualPage = 1000;  // bytes

const _ConvActionInfo kFresh;  // what a field holds that the library left alone

class CRecordPage
{
public:
    CRecordPage(std::string strHeading, const _ConvActionInfo& info, const CPaint& paint)
        : m_info(info), m_paint(paint), m_strText(std::move(strHeading))
    {
        m_strText.reserve(kUsualPage);
    }

    void Action();
    void Lists();
    void Dialog();
    void Results();
    std::string Text() && { return std::move(m_strText); }

private:
    void Line(const char* szLabel, const std::string& strValue)
    {
        if (strValue.empty()) return;
        m_strText.append("  ").append(m_paint.Label(Padded(szLabel, kLabelColumns))).append(strValue).append("\n");
    }

    template <typename Item, typename Cells>
    void Rows(std::vector<std::string> vHeading, const std::vector<Item>& vItems, const Cells& cells)
    {
        if (vItems.empty()) return;
        std::vector<std::vector<std::string>> vRows = {std::move(vHeading)};
        for (const Item& item : vItems) vRows.push_back(cells(item));
        m_strText += Table(std::move(vRows), kTableIndent, m_paint);
    }

    const _ConvActionInfo& m_info;
    const CPaint& m_paint;
    std::string m_strText;
};

using Cells = std::vector<std::string>;

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

void CRecordPage::Action()
{
    const bool bResolved = m_info.eActionType != kFresh.eActionType;
    std::string strAction = Shown(m_info.strAction);
    if (bResolved) strAction += (strAction.empty() ? "code " : ", code ") + std::to_string(m_info.eSystemAction);
    Line("action", strAction);
    if (bResolved) Line("kind", KindInWords(m_info.eActionType));
    if (m_info.e2ndAction != kFresh.e2ndAction) Line("second action", WordAndCode(kActionWords, m_info.e2ndAction));
    if (m_info.eActionIntent != kFresh.eActionIntent) Line("intent", WordAndCode(kIntentWords, m_info.eActionIntent));
}

// "2 entries"; empty when there are none.
std::string CountUnlessNone(std::size_t nCount, const char* szOne, const char* szMany)
{
    return nCount == 0 ? std::string() : Count(nCount, szOne, szMany);
}

void CRecordPage::Lists()
{
    Line("parameters", JoinedQuoted(m_info.vSystemActionParam));
    Line("candidates", JoinedQuoted(m_info.vCandidates));
    Line("channels", CountUnlessNone(m_info.vChannels.size(), "channel", "channels"));
    Rows({"number", "name", "type", "major", "minor", "source"}, m_info.vChannels, [](const _Channels& stChannel) {
        return Cells{Shown(stChannel.szNumber),         Shown(stChannel.szName),           Shown(stChannel.szType),
                     NumberUnless(stChannel.nMajor, 0), NumberUnless(stChannel.nMinor, 0), Shown(stChannel.szSourceID)};
    });
    const _DisCtrlInfo& stControl = m_info.stDisCtrlInfo;
    if (stControl.nAction == kFresh.stDisCtrlInfo.nAction && stControl.numberOfItem == 0) return;
    Line("display control", WordAndCode(kDisplayActionWords, static_cast<E_CA_DISPLAY_ACTION>(stControl.nAction)) +
                                " on " + Count(static_cast<std::size_t>(stControl.numberOfItem), "entry", "entries"));
    Rows({"index", "title"}, stControl.vItems, [](const ExternalItemData& stItem) {
        return Cells{NumberUnless(stItem.nNumber, -1), Shown(stItem.szText)};
    });
}

void CRecordPage::Dialog()
{
    Line("sentence", Shown(m_info.strSysResponse));
    std::vector<std::string> vParts;
    if (!m_info.strDialogId.empty()) vParts.push_back("id " + Quoted(m_info.strDialogId));
    if (m_info.nDialogSeq != kFresh.nDialogSeq) vParts.push_back("sequence " + std::to_string(m_info.nDialogSeq));
    if (m_info.nDialogType != kFresh.nDialogType) vParts.push_back("type " + std::to_string(m_info.nDialogType));
    Line("dialog", Joined(vParts));
    Line("domains", JoinedQuoted(m_info.vDomain));
}

void CRecordPage::Results()
{
    Line("results", CountUnlessNone(m_info.vSAContents.size(), "result", "results"));
    Rows({"type", "title", "year", "poster"}, m_info.vSAContents, [](const _SAContents& stContents) {
        const _ContentsItem& stItem = stContents.stItem;
        const bool bApp = stItem.szType == "apps" || stItem.szType == "app";
        return Cells{Shown(stItem.szType), Shown(bApp ? stItem.stApp.szTitle : stItem.stMnT.szTitle),
                     bApp ? std::string() : NumberUnless(stItem.stMnT.nYear, 0),
                     Shown(bApp ? stItem.stApp.stPoster.szUrl : stItem.stMnT.stPoster.szUrl)};
    });
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
    CRecordPage page(Heading(stReply, paint), info, paint);
    page.Action();
    page.Lists();
    page.Dialog();
    page.Results();
    return std::move(page).Text();
}
