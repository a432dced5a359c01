// Telling replies and conversations apart, and the way through them.
#include "reading/Files.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include "text/Progress.h"

namespace
{

constexpr std::size_t kWhole = std::numeric_limits<std::size_t>::max();

// The first line that is not blank; empty when all are.
std::string_view FirstLine(std::string_view szText)
{
    std::string_view szLine;
    while (TakeLine(szText, szLine))
        if (!IsBlank(szLine)) return szLine.substr(MarkLength(szLine));
    return {};
}

bool HasTurn(std::string_view szText)
{
    std::string_view szLine;
    while (TakeLine(szText, szLine))
        if (IsTurn(szLine.substr(MarkLength(szLine)))) return true;
    return false;
}

void AddFiles(const std::filesystem::path& folder, std::vector<std::string>& vFiles)
{
    std::error_code error;
    const std::filesystem::directory_iterator itFirst(folder, error);
    if (error) vFiles.push_back(folder);  // whoever reads it tells why
    for (const std::filesystem::directory_entry& entry : itFirst) {
        const std::string strEnding = entry.path().extension();
        if (entry.is_directory(error) && !entry.is_symlink(error))
            AddFiles(entry.path(), vFiles);
        else if (entry.is_regular_file(error) && (strEnding == ".json" || strEnding == ".jsonl"))
            vFiles.push_back(entry.path());
    }
}

class CEntries
{
public:
    CEntries(CLineFile& file, const std::string& strUtterance, const std::function<void(Entry&&)>& handle)
        : m_file(file), m_strUtterance(strUtterance), m_handle(handle), m_progress(file.Name(), file.Size())
    {
    }
    void Read(FileForm eForm);

private:
    void ReadAhead();
    bool IsConversation(FileForm eForm);
    void Conversation();
    void Turn(std::string_view szLine);
    Entry Make(std::size_t nLine) const;
    void Refuse(const std::string& strReason, bool bUnreadable);

    CLineFile& m_file;
    const std::string& m_strUtterance;
    const std::function<void(Entry&&)>& m_handle;
    CProgress m_progress;
    std::string m_strHead;  // what was read to see what the file is
    std::size_t m_nLine = 0;
    bool m_bTurn = false;  // there was a line that is not blank
};

void CEntries::Read(FileForm eForm)
{
    ReadAhead();
    const bool bConversation = m_file.Failure().empty() && IsConversation(eForm);
    if (!m_file.Failure().empty()) return Refuse(m_file.Failure(), true);
    if (eForm == FileForm::REPLY && bConversation)
        return Refuse("it is a conversation, which \"parlo conversation\" takes", false);
    if (eForm == FileForm::CONVERSATION && !bConversation)
        return Refuse("it is one reply, which \"parlo reply\" takes, not a conversation", false);
    if (bConversation) return Conversation();
    Entry stEntry = Make(1);
    stEntry.stReply.strUtterance = m_strUtterance;
    stEntry.stReply.strText = m_strHead.substr(MarkLength(m_strHead));
    stEntry.stReply.bMark = stEntry.stReply.strText.size() < m_strHead.size();
    m_handle(std::move(stEntry));
}

// Through the first line that is not blank.
void CEntries::ReadAhead()
{
    std::string_view szLine;
    while (m_file.Next(szLine)) {
        m_strHead += szLine;
        if (!FirstLine(szLine).empty()) return;
    }
}

// A conversation may begin with a broken line, and so does a reply of several lines: that takes a look at the rest.
bool CEntries::IsConversation(FileForm eForm)
{
    const std::string_view szFirst = FirstLine(m_strHead);
    const bool bWanted = eForm == FileForm::CONVERSATION;
    const bool bBegun = !szFirst.empty() && szFirst.front() == '{' && MembersOf(szFirst, true).isNull();
    if (IsTurn(szFirst) || (bWanted && !bBegun)) return true;
    m_file.Rest(kWhole, m_strHead);
    return bWanted ? !MembersOf(m_strHead).isMember("rsp") : LooksLikeConversation(m_file.Name(), m_strHead);
}

void CEntries::Conversation()
{
    std::string_view szRest = m_strHead;
    std::string_view szLine;
    while (TakeLine(szRest, szLine)) Turn(szLine);
    m_strHead = std::string();
    while (m_file.Next(szLine)) {
        if (szLine.back() == '\n') szLine.remove_suffix(1);
        Turn(szLine);
        m_progress.Show(m_file.Position());
    }
    if (!m_file.Failure().empty())
        Refuse(m_file.Failure(), true);
    else if (!m_bTurn)
        Refuse("the conversation is empty", false);
}

void CEntries::Turn(std::string_view szLine)
{
    ++m_nLine;
    if (IsBlank(szLine)) return;
    m_bTurn = true;
    Entry stEntry = Make(m_nLine);
    stEntry.stReply.strSource += ':' + std::to_string(m_nLine);
    stEntry.stReply.szTurn = szLine;
    if (ReadTurn(szLine, stEntry.stReply, stEntry.strReason) && stEntry.stReply.strUtterance.empty())
        stEntry.strReason = "the utterance is empty";
    m_handle(std::move(stEntry));
}

Entry CEntries::Make(std::size_t nLine) const
{
    Entry stEntry;
    stEntry.stReply.strFile = stEntry.stReply.strSource = m_file.Name();
    stEntry.stReply.nLine = nLine;
    stEntry.stReply.bLive = m_file.Size() == 0;
    return stEntry;
}

void CEntries::Refuse(const std::string& strReason, bool bUnreadable)
{
    Entry stEntry = Make(m_nLine + 1);
    stEntry.strReason = strReason;
    stEntry.bUnreadable = bUnreadable;
    m_handle(std::move(stEntry));
}

}  // namespace

bool IsBlank(std::string_view szLine)
{
    return szLine.find_first_not_of(" \t\r") == std::string_view::npos;
}

bool TakeLine(std::string_view& szText, std::string_view& szLine)
{
    if (szText.empty()) return false;
    szLine = szText.substr(0, szText.find('\n'));
    szText.remove_prefix(std::min(szLine.size() + 1, szText.size()));
    return true;
}

bool LooksLikeConversation(const std::string& strName, std::string_view szText)
{
    if (IsTurn(FirstLine(szText))) return true;
    if (!MembersOf(szText, true).isNull()) return false;
    return HasTurn(szText) || std::filesystem::path(strName).extension() == ".jsonl";
}

void ForEachEntry(CLineFile& file, FileForm eForm, const std::string& strUtterance,
                  const std::function<void(Entry&&)>& handle)
{
    CEntries(file, strUtterance, handle).Read(eForm);
}

std::vector<std::string> FilesOf(const std::string& strName)
{
    std::error_code error;
    if (strName == "-" || !std::filesystem::is_directory(strName, error)) return {strName};
    std::vector<std::string> vFiles;
    AddFiles(strName, vFiles);
    std::sort(vFiles.begin(), vFiles.end());
    return vFiles;
}

bool WithinMemory(const std::function<void()>& call)
{
    try {
        call();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

bool ReadAll(const std::string& strFile, std::string& strText, std::string& strReason)
{
    CLineFile file(strFile);
    strText.clear();
    const bool bMemory = WithinMemory([&] { file.Rest(kWhole, strText); });
    if (!bMemory) strText = std::string();
    strReason = bMemory ? file.Failure() : kNoMemory;
    return strReason.empty();
}
