// Where things stand in a JSON text: what the JSON library does not keep. Positions only; it reads no values.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "reading/Input.h"

// A key of an object, quotes included.
struct KeyPlace {
    Span stSpan;
    std::string strKey;  // as the JSON library reads it
};

// Which half of a surrogate pair an escape at the start stands for: 1 or 2; 0 when it stands for none.
int SurrogateHalf(std::string_view szText);

// Goes over the text once. A text that is no JSON is followed as far as brackets and quotes make sense.
class CPlaces
{
public:
    explicit CPlaces(std::string_view szText);

    // The keys of the object that begins at `nObject`, in order, repeated ones included.
    const std::vector<KeyPlace>& Keys(std::size_t nObject) const;

    // Its key `szKey`, the last one of that name: the one that counts. The object's own place when it has none.
    Span Key(std::size_t nObject, std::string_view szKey) const;

    const std::vector<Span>& Comments() const { return m_vComments; }

    // What the JSON library takes although it is no JSON, or no character: texts with control characters, escapes of
    // one half of a surrogate pair, odd numbers.
    const std::vector<Span>& Loose() const { return m_vLoose; }

    // What stands behind the document and is neither blank nor a comment; empty at the end of the text.
    Span Rest() const { return m_stRest; }

    // Where the library's limits are passed first; npos when they are not.
    std::size_t TooDeep() const { return m_nTooDeep; }
    std::size_t TooMany() const { return m_nTooMany; }
    static constexpr std::size_t kDeepest = 128;
    static constexpr std::size_t kMostValues = 1 << 19;  // counted by ',', '[' and '{'

    // Where brackets are open at the end of the text.
    const std::vector<std::size_t>& Open() const { return m_vOpen; }

private:
    void Token();
    void Comment();
    void String();
    void Bracket(char c);
    void Separator(char c);
    void CountValue();
    void Scalar();

    std::string_view m_szText;
    std::size_t m_nAt = 0;
    bool m_bKey = false;   // a text that comes next is a key
    bool m_bDone = false;  // the document has ended
    std::map<std::size_t, std::vector<KeyPlace>> m_mapKeys;
    std::vector<Span> m_vComments;
    std::vector<Span> m_vLoose;
    std::vector<std::size_t> m_vOpen;
    Span m_stRest;
    std::size_t m_nValues = 0;
    std::size_t m_nTooDeep = std::string_view::npos;
    std::size_t m_nTooMany = std::string_view::npos;
};
