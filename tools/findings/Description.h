// The one description of the server's documents: every key that is read, its type, its words, and what it is for.
//
// The checks walk it, and `parlo schema` prints it. Keys that the library reads for an object stand in one table;
// what depends on other parts of a reply is not here but in Effects.h.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Description
{

enum class Type {
    TEXT,
    INTEGER,
    BOOLEAN,
    TEXT_OR_INTEGER,
    SCALAR,    // anything but a list or an object; read as text
    ANYTHING,  // whatever it is, nothing comes of it
    OBJECT,
    TEXTS,     // lists; other elements are skipped
    INTEGERS,  //
    SCALARS,   // a list; its elements are read as texts
    OBJECTS,   // a list; other elements read as empty objects
};

using Words = std::vector<std::string_view> (*)();

struct Object;

struct Key {
    std::string_view szName;
    Type eType;
    const char* szComment;
    const Object* pObject = nullptr;    // of OBJECT and OBJECTS
    Words pWords = nullptr;             // of TEXT: all that it may be, the empty text if it may; null: any text
    const char* szOtherwise = nullptr;  // what becomes of a value of another type; null: as usual in its object
    std::string_view szExact = {};      // the one text that means something; others that look like it are mistakes
    bool bWithin = false;               // that text means the same within others
    bool bNeeded = false;               // it must be there and not be empty
    bool bDecimal = false;              // a text that stands for a decimal number

    // The same key with one more of these fields.
    template <typename Field>
    constexpr Key With(Field Key::*pField, Field value) const
    {
        Key stKey = *this;
        stKey.*pField = value;
        return stKey;
    }
    constexpr Key Of(const Object& stObject) const { return With(&Key::pObject, &stObject); }
    constexpr Key OneOf(Words pAll) const { return With(&Key::pWords, pAll); }
    constexpr Key Otherwise(const char* szOutcome) const { return With(&Key::szOtherwise, szOutcome); }
    constexpr Key Exactly(std::string_view szText) const { return With(&Key::szExact, szText); }
    constexpr Key Holding(std::string_view szText) const { return Exactly(szText).With(&Key::bWithin, true); }
    constexpr Key Needed() const { return With(&Key::bNeeded, true); }
    constexpr Key Decimal() const { return With(&Key::bDecimal, true); }
};

// What the elements of a list are by the text of their key "type".
struct Kind {
    std::string_view szType;
    const Object* pObject;
    bool bOffered;   // whether items of this kind ever reach the list of results
    int nSize = -1;  // the size code of their posters for a screen of 1080 lines; -1: the first on offer
};

// How a field is read when the value's type does not fit: overwritten by nothing, or left alone.
enum class Reading { FILL, TAKE };

struct Object {
    const char* szName;     // its name as a definition: "Command"
    const char* szWhere;    // where its keys belong: "an object of \"tvcontrol\""
    const char* szComment;  //
    Reading eReading;
    const char* szNoObject;  // what becomes of an element that is no object
    const Key* pKeys;
    std::size_t nKeys;
    const Kind* pKinds = nullptr;  // the object's key "type" decides; null: it is always the same
    std::size_t nKinds = 0;

    const Key* begin() const { return pKeys; }
    const Key* end() const { return pKeys + nKeys; }
    const Key* Find(std::string_view szKey) const;
    const Kind* KindOf(std::string_view szType) const;  // null when there is none
};

template <std::size_t N>
constexpr Object Make(const char* szName, const char* szWhere, const char* szComment, const Key (&keys)[N],
                      Reading eReading = Reading::FILL, const char* szNoObject = "reads as an empty object")
{
    return {szName, szWhere, szComment, eReading, szNoObject, keys, N};
}

extern const Object kReply;
extern const Object kSearchSchema;
extern const Object kTurn;  // of a conversation

// An object of "params": which of its keys count, the command's action says.
extern const Object kParam;

// The item tables, which are long enough for a file of their own.
extern const Object kItem;

}  // namespace Description
