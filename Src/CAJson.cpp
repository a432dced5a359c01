#include "CAJson.h"

#include <json/reader.h>
#include <json/writer.h>
#include <locale.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <ostream>
#include <streambuf>

#include "CAJsonScan.h"

namespace
{

// Collects what is written to it, up to a limit; a stream on it goes bad there, which makes the rest cheap.
class CCappedText : public std::streambuf
{
public:
    explicit CCappedText(std::size_t nLimit) : m_nLimit(nLimit) {}

    std::string m_strText;

protected:
    std::streamsize xsputn(const char* pText, std::streamsize nSize) override
    {
        const auto nRoom = static_cast<std::streamsize>(m_nLimit - m_strText.size());
        const std::streamsize nTaken = std::min(nSize, nRoom);
        m_strText.append(pText, static_cast<std::size_t>(nTaken));
        return nTaken;
    }
    int_type overflow(int_type c) override
    {
        const char ch = traits_type::to_char_type(c);
        return xsputn(&ch, 1) == 1 ? c : traits_type::eof();
    }

private:
    std::size_t m_nLimit;
};

// Whether keeping so many comments costs little: for each of them the JSON library looks back over the text to the
// value before it.
bool CanKeepComments(std::size_t nComments, std::size_t nSize)
{
    constexpr std::size_t kMostWork = std::size_t{1} << 28;
    return nComments <= kMostWork / std::max<std::size_t>(nSize, 1);
}

// While it lives, this thread writes and reads numbers as in the C locale, whatever locale the process has set.
class CPlainNumbers
{
public:
    CPlainNumbers() : m_Before(uselocale(newlocale(LC_ALL_MASK, "C", nullptr))) {}  // that one is no allocation
    ~CPlainNumbers() { uselocale(m_Before); }
    CPlainNumbers(const CPlainNumbers&) = delete;
    CPlainNumbers& operator=(const CPlainNumbers&) = delete;

private:
    locale_t m_Before;
};

}  // namespace

namespace CAJson
{

bool Parse(const std::string& strText, Json::Value& root)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // the reader whose leniency the servers count on
    try {
        const CAJsonScan scan(strText);
        if (!scan.IsAcceptable()) return false;
        const std::string& strPlain = scan.Text();
        const char* pBegin = strPlain.data();
        return Json::Reader().parse(pBegin, pBegin + strPlain.size(), root,
                                    CanKeepComments(scan.CommentCount(), strPlain.size()));
    } catch (const std::exception&) {  // out of memory
        return false;
    }
#pragma GCC diagnostic pop
}

std::string Styled(const Json::Value& value, std::size_t& nBudget)
{
    // Making a writer costs more than writing an ordinary command with it.
    static thread_local const std::unique_ptr<Json::StreamWriter> pWriter(
        Json::StreamWriterBuilder().newStreamWriter());
    CCappedText buffer(nBudget);
    std::ostream stream(&buffer);
    if (value.hasComment(Json::commentBefore)) stream.put('\n');
    pWriter->write(value, &stream);
    stream.put('\n');
    nBudget -= buffer.m_strText.size();
    return std::move(buffer.m_strText);
}

std::string Text(const Json::Value& value)
{
    std::string strText;
    Take(value, strText);
    return strText;
}

std::string AnyText(const Json::Value& value)
{
    if (value.isArray() || value.isObject()) return std::string();
    const CPlainNumbers plain;
    return value.asString();
}

int AnyInt(const Json::Value& value)
{
    return value.isConvertibleTo(Json::intValue) ? value.asInt() : 0;
}

bool Take(const Json::Value& value, std::string& field)
{
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    if (!value.getString(&pBegin, &pEnd)) return false;
    field.assign(pBegin, pEnd);
    return true;
}

bool Take(const Json::Value& value, int& field)
{
    if (!value.isInt()) return false;
    field = value.asInt();
    return true;
}

void AppendTexts(const Json::Value& list, std::vector<std::string>& vTexts)
{
    for (const Json::Value& element : Elements(list))
        if (element.isString()) vTexts.push_back(Text(element));
}

void AppendAnyTexts(const Json::Value& list, std::vector<std::string>& vTexts)
{
    for (const Json::Value& element : Elements(list)) vTexts.push_back(AnyText(element));
}

}  // namespace CAJson
