#include "CAStyledJson.h"

#include <json/writer.h>

#include <memory>
#include <new>
#include <ostream>
#include <sstream>

#include "CAPlainNumbers.h"

namespace
{

// The JSON library's writer with a stream to write to.
class CWriter
{
public:
    std::string Text(const Json::Value& value)
    {
        const CAPlainNumbers plain;
        std::stringbuf text;  // of this call: nothing of it stays until the next reply
        m_Stream.rdbuf(&text);
        if (value.hasComment(Json::commentBefore)) m_Stream.put('\n');
        m_pWriter->write(value, &m_Stream);
        m_Stream.put('\n');
        if (m_Stream.bad()) throw std::bad_alloc();  // a stream swallows what is thrown in its buffer
        return text.str();
    }

private:
    std::unique_ptr<Json::StreamWriter> m_pWriter{Json::StreamWriterBuilder().newStreamWriter()};
    std::ostream m_Stream{nullptr};
};

}  // namespace

std::string CAStyledJson::Styled(const Json::Value& value)
{
    static CWriter s_Writer;
    return s_Writer.Text(value);
}
