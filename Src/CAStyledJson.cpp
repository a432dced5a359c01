#include "CAStyledJson.h"

#include <json/writer.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <ostream>
#include <streambuf>

#include "CAPlainNumbers.h"

namespace
{

// Collects what is written to it in a text of the caller's, up to a limit; a stream on it goes bad there, which makes
// the rest cheap.
class CCappedText : public std::streambuf
{
public:
    void Begin(std::string& strText, std::size_t nLimit)
    {
        m_pText = &strText;
        m_nLimit = nLimit;
        setp(nullptr, nullptr);
        Grow(std::min<std::size_t>(nLimit, 256));
    }

    void End() { m_pText->resize(Used()); }

protected:
    std::streamsize xsputn(const char* pText, std::streamsize nSize) override
    {
        const auto nWanted = static_cast<std::size_t>(nSize);
        if (nWanted > Room()) Grow(std::min(std::max(Used() + nWanted, 2 * m_pText->size()), m_nLimit));
        const std::size_t nTaken = std::min(nWanted, Room());
        std::memcpy(pptr(), pText, nTaken);
        setp(pptr() + nTaken, epptr());
        return static_cast<std::streamsize>(nTaken);
    }
    int_type overflow(int_type c) override
    {
        const char ch = traits_type::to_char_type(c);
        return xsputn(&ch, 1) == 1 ? c : traits_type::eof();
    }

private:
    std::size_t Room() const { return static_cast<std::size_t>(epptr() - pptr()); }
    std::size_t Used() const { return m_pText->size() - Room(); }
    void Grow(std::size_t nSize)
    {
        const std::size_t nUsed = Used();
        m_pText->resize(nSize);
        setp(m_pText->data() + nUsed, m_pText->data() + m_pText->size());
    }

    std::size_t m_nLimit = 0;
    std::string* m_pText = nullptr;  // what is written, and room for more; between Begin and End
};

// The JSON library's writer with a stream to write to.
class CWriter
{
public:
    CWriter() : m_pWriter(Json::StreamWriterBuilder().newStreamWriter()), m_Stream(&m_Buffer) {}

    // At most `nLimit` bytes.
    std::string Text(const Json::Value& value, std::size_t nLimit)
    {
        const CAPlainNumbers plain;
        std::string strText;  // not the buffer's own: what throws must not leave it there until the next reply
        m_Stream.clear();
        m_Buffer.Begin(strText, nLimit);
        if (value.hasComment(Json::commentBefore)) m_Stream.put('\n');
        m_pWriter->write(value, &m_Stream);
        m_Stream.put('\n');
        m_Buffer.End();
        // A stream swallows what is thrown in its buffer: it is bad where there is no room, or no memory.
        if (m_Stream.bad() && strText.size() < nLimit) throw std::bad_alloc();
        return strText;
    }

private:
    std::unique_ptr<Json::StreamWriter> m_pWriter;
    CCappedText m_Buffer;
    std::ostream m_Stream;
};

std::unique_ptr<CWriter> g_pWriter;

constexpr Json::CommentPlacement kPlacements[] = {Json::commentBefore, Json::commentAfterOnSameLine,
                                                  Json::commentAfter};

bool HasComment(const Json::Value& value)
{
    return std::any_of(std::begin(kPlacements), std::end(kPlacements),
                       [&value](Json::CommentPlacement ePlacement) { return value.hasComment(ePlacement); });
}

std::string_view TextOf(const Json::Value& value)
{
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    if (!value.getString(&pBegin, &pEnd)) return {};
    return {pBegin, static_cast<std::size_t>(pEnd - pBegin)};
}

std::string_view NameOf(const Json::Value::const_iterator& member)
{
    const char* pEnd = nullptr;
    const char* const pBegin = member.memberName(&pEnd);
    return pBegin == nullptr ? std::string_view() : std::string_view(pBegin, static_cast<std::size_t>(pEnd - pBegin));
}

bool HasCommentWithin(const Json::Value& value)
{
    return HasComment(value) || std::any_of(value.begin(), value.end(), HasCommentWithin);
}

// How long the value is in the reply; its names and texts are no longer than that.
std::size_t SourceBytes(const Json::Value& value)
{
    return static_cast<std::size_t>(value.getOffsetLimit() - value.getOffsetStart());
}

std::string_view Cut(std::string_view szText, std::size_t& nRoom)
{
    szText = szText.substr(0, nRoom);
    nRoom -= szText.size();
    return szText;
}

// What of `value` the first `nRoom` bytes of its text can show, and little more. The writer makes up to six bytes of
// one when it quotes a text, and only then finds out that there is no room for them.
Json::Value Pruned(const Json::Value& value, std::size_t& nRoom)
{
    Json::Value pruned(value.type());
    if (value.isString()) {
        const std::string_view szText = Cut(TextOf(value), nRoom);
        pruned = Json::Value(szText.data(), szText.data() + szText.size());
    } else if (!value.isArray() && !value.isObject()) {
        return value;
    }
    const auto end = value.end();
    for (auto member = value.begin(); member != end && nRoom > 0; ++member) {
        const std::string_view szName = Cut(NameOf(member), nRoom);
        if (value.isArray())
            pruned.append(Pruned(*member, nRoom));
        else
            *pruned.demand(szName.data(), szName.data() + szName.size()) = Pruned(*member, nRoom);
    }
    for (const Json::CommentPlacement ePlacement : kPlacements)
        if (value.hasComment(ePlacement)) pruned.setComment(value.getComment(ePlacement), ePlacement);
    return pruned;
}

std::string Written(const Json::Value& value, std::size_t nLimit)
{
    return g_pWriter != nullptr ? g_pWriter->Text(value, nLimit) : CWriter().Text(value, nLimit);
}

}  // namespace

namespace CAStyledJson
{

void PrepareWriter() noexcept
{
    try {
        g_pWriter = std::make_unique<CWriter>();
    } catch (const std::exception&) {
        g_pWriter = nullptr;  // no memory now; each text makes its own, if there is memory then
    }
}

void ReleaseWriter() noexcept
{
    g_pWriter = nullptr;
}

std::string Styled(const Json::Value& value, std::size_t& nBudget)
{
    std::size_t nRoom = nBudget;
    const bool bFits = SourceBytes(value) <= nBudget;
    std::string strText = bFits ? Written(value, nBudget) : Written(Pruned(value, nRoom), nBudget);
    nBudget -= strText.size();
    return strText;
}

CElementTexts::CElementTexts(const Json::Value& list, const std::string& strList)
{
    // A comment may stand anywhere and take several lines. Without a slash there is none.
    if (strList.find('/') != std::string::npos && HasCommentWithin(list)) return;
    constexpr std::size_t kOpening = 2;  // the bracket and its line's end
    m_szRest = std::string_view(strList).substr(std::min(strList.size(), kOpening));
}

std::string CElementTexts::Next(const Json::Value& element, std::size_t& nBudget)
{
    if (nBudget == 0) return {};
    if (m_szRest.empty()) return Styled(element, nBudget);
    std::string strText;
    bool bGoesOn = true;
    while (bGoesOn) {
        const std::size_t nEnd = std::min(m_szRest.find('\n'), m_szRest.size() - 1) + 1;
        strText += m_szRest.substr(1, nEnd - 1);  // less the list's own indentation
        m_szRest.remove_prefix(nEnd);
        // A line that is indented further, or closes what was opened. The next element can begin with neither.
        bGoesOn = m_szRest.size() > 1 && (m_szRest[1] == '\t' || m_szRest[1] == '}' || m_szRest[1] == ']');
    }
    const std::size_t nComma = strText.size() - 2;
    if (strText[nComma] == ',') strText.erase(nComma, 1);
    strText.resize(std::min(strText.size(), nBudget));
    nBudget -= strText.size();
    return strText;
}

}  // namespace CAStyledJson
