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
    void DisplayControl();
    void Dialog();
    void Results();
    std::string Text() && { return std::move(m_strText); }

private:
    void Line(const char* szLabel, const std::string& strValue);
    void Rows(std::vector<std::vector<std::string>> vRows);

    const _ConvActionInfo& m_info;
    const CPaint& m_paint;
    std::string m_strText;
};

void CRecordPage::Line(const char* szLabel, const std::string& strValue)
{
    if (strValue.empty()) return;
    m_strText.append("  ").append(m_paint.Label(Padded(szLabel, kLabelColumns))).append(strValue).append("\n");
}

void CRecordPage::Rows(std::vector<std::vector<std::string>> vRows)
{
    m_strText += Table(std::move(vRows), kTableIndent, m_paint);
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
    switch (nKind) {
        case E_CA_ACTION_TYPE_SYSTEM:
            return "system action";
        case E_CA_ACTION_TYPE_NO_MATCH:
            return "no match";
        default:
            return "kind " + std::to_string(nKind);
    }
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

void CRecordPage::Lists()
{
    Line("parameters", JoinedQuoted(m_info.vSystemActionParam));
    Line("candidates", JoinedQuoted(m_info.vCandidates));
    if (m_info.vChannels.empty()) return;
    Line("channels", Count(m_info.vChannels.size(), "channel", "channels"));
    std::vector<std::vector<std::string>> vRows = {{"number", "name", "type", "major", "minor", "source"}};
    for (const _Channels& stChannel : m_info.vChannels)
        vRows.push_back({Shown(stChannel.szNumber), Shown(stChannel.szName), Shown(stChannel.szType),
                         NumberUnless(stChannel.nMajor, 0), NumberUnless(stChannel.nMinor, 0),
                         Shown(stChannel.szSourceID)});
    Rows(std::move(vRows));
}

void CRecordPage::DisplayControl()
{
    const _DisCtrlInfo& stControl = m_info.stDisCtrlInfo;
    const bool bSet = stControl.nAction != kFresh.stDisCtrlInfo.nAction || stControl.numberOfItem != 0;
    if (!bSet) return;
    const std::string strAction = WordAndCode(kDisplayActionWords, static_cast<E_CA_DISPLAY_ACTION>(stControl.nAction));
    Line("display control",
         strAction + " on " + Count(static_cast<std::size_t>(stControl.numberOfItem), "entry", "entries"));
    if (stControl.vItems.empty()) return;
    std::vector<std::vector<std::string>> vRows = {{"index", "title"}};
    for (const ExternalItemData& stItem : stControl.vItems)
        vRows.push_back({NumberUnless(stItem.nNumber, -1), Shown(stItem.szText)});
    Rows(std::move(vRows));
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
    if (m_info.vSAContents.empty()) return;
    Line("results", Count(m_info.vSAContents.size(), "result", "results"));
    std::vector<std::vector<std::string>> vRows = {{"type", "title", "year", "poster"}};
    for (const _SAContents& stContents : m_info.vSAContents) {
        const _ContentsItem& stItem = stContents.stItem;
        const bool bApp = stItem.szType == "apps" || stItem.szType == "app";
        const std::string strYear = bApp ? std::string() : NumberUnless(stItem.stMnT.nYear, 0);
        vRows.push_back({Shown(stItem.szType), Shown(bApp ? stItem.stApp.szTitle : stItem.stMnT.szTitle), strYear,
                         Shown(bApp ? stItem.stApp.stPoster.szUrl : stItem.stMnT.stPoster.szUrl)});
    }
    Rows(std::move(vRows));
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
    page.DisplayControl();
    page.Dialog();
    page.Results();
    return std::move(page).Text();
}
