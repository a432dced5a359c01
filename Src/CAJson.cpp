#include "CAJson.h"

#include <json/reader.h>
#include <json/writer.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <ostream>
#include <streambuf>

namespace
{

// Collects what is written to it, up to a limit; a stream on it goes bad there, which makes the rest cheap.
class CCappedText : public std::streambuf
{
public:
    std::string m_strText;

protected:
    std::streamsize xsputn(const char* pText, std::streamsize nSize) override
    {
        const auto nRoom = static_cast<std::streamsize>(kLimit - m_strText.size());
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
    static constexpr std::size_t kLimit = std::size_t{16} << 20;
};

}  // namespace

namespace CAJson
{

bool Parse(const std::string& strText, Json::Value& root)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // the reader whose leniency the servers count on
    try {
        return Json::Reader().parse(strText.data(), strText.data() + strText.size(), root, true);
    } catch (const std::exception&) {  // nested too deeply, or out of memory
        return false;
    }
#pragma GCC diagnostic pop
}

std::string Styled(const Json::Value& value)
{
    // Making a writer costs more than writing an ordinary command with it.
    static thread_local const std::unique_ptr<Json::StreamWriter> pWriter(
        Json::StreamWriterBuilder().newStreamWriter());
    CCappedText buffer;
    std::ostream stream(&buffer);
    pWriter->write(value, &stream);
    stream.put('\n');
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
    return value.isArray() || value.isObject() ? std::string() : value.asString();
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
