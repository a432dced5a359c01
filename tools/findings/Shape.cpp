// The walk over a document along its description.
#include "findings/Shape.h"

#include <cmath>
#include <limits>
#include <set>

#include "findings/Suggestion.h"
#include "rendering/Text.h"

namespace
{

using Description::Key;
using Description::Object;
using Description::Reading;
using Description::Type;

struct TypeWords {
    Type eType;
    const char* szWords;    // what is wanted
    const char* szFilled;   // what a value of another type reads as
    const char* szSkipped;  // what becomes of an element of another type
};

constexpr TypeWords kTypes[] = {
    {Type::TEXT, "a text", "reads as an empty text", nullptr},
    {Type::INTEGER, "an integer", "reads as 0", nullptr},
    {Type::BOOLEAN, "a boolean", "ignored", nullptr},
    {Type::TEXT_OR_INTEGER, "a text or an integer", "ignored", nullptr},
    {Type::SCALAR, "a text", "reads as an empty text", nullptr},
    {Type::ANYTHING, "anything", "", nullptr},
    {Type::OBJECT, "an object", "reads as an empty object", nullptr},
    {Type::TEXTS, "a list", "reads as an empty list", "skipped"},
    {Type::INTEGERS, "a list", "reads as an empty list", "skipped"},
    {Type::SCALARS, "a list", "reads as an empty list", "reads as an empty text"},
    {Type::OBJECTS, "a list", "reads as an empty list", "reads as an empty object"},
};

const TypeWords& WordsOf(Type eType)
{
    for (const TypeWords& stWords : kTypes)
        if (stWords.eType == eType) return stWords;
    return kTypes[0];
}

// A number without a fraction, however large.
bool IsWhole(const Json::Value& value)
{
    return value.isIntegral() || (value.isDouble() && std::floor(value.asDouble()) == value.asDouble());
}

bool IsScalar(const Json::Value& value)
{
    return value.isString() || value.isNumeric() || value.isBool();
}

bool Fits(const Json::Value& value, Type eType)
{
    switch (eType) {
        case Type::TEXT:
            return value.isString();
        case Type::INTEGER:
            return value.isInt();
        case Type::BOOLEAN:
            return value.isBool();
        case Type::TEXT_OR_INTEGER:
            return value.isString() || value.isInt();
        case Type::SCALAR:
            return value.isString();
        case Type::ANYTHING:
            return true;
        case Type::OBJECT:
            return value.isObject();
        default:
            return value.isArray();
    }
}

const char* KindOf(const Json::Value& value)
{
    if (value.isString()) return "a text";
    if (value.isBool()) return "a boolean";
    if (value.isArray()) return "a list";
    if (value.isObject()) return "an object";
    if (value.isNull()) return "null";
    return IsWhole(value) ? "an integer" : "a number with a fraction";
}

// The key's object further down that has the key `szKey`; null when there is none.
const Object* OwnerBelow(const Object& stObject, std::string_view szKey, int nLevels)
{
    for (const Key& stKey : stObject)
        if (stKey.pObject != nullptr && stKey.pObject->Find(szKey) != nullptr) return stKey.pObject;
    for (const Key& stKey : stObject) {
        const Object* pOwner =
            stKey.pObject == nullptr || nLevels == 0 ? nullptr : OwnerBelow(*stKey.pObject, szKey, nLevels - 1);
        if (pOwner != nullptr) return pOwner;
    }
    return nullptr;
}

class CShapeWalk
{
public:
    explicit CShapeWalk(CReport& report) : m_report(report) {}
    void Members(const Node& object, const Object& stObject, const Object* pOuter);

private:
    void Unknown(const Node& object, const KeyPlace& stPlace, const Object& stObject, const Object* pOuter);
    std::string Meant(const Node& object, const std::string& strKey, const Object& stObject, const Object* pOuter);
    void Value(const Node& node, const Key& stKey, const Object& stObject);
    void WrongType(const Node& node, const std::string& strName, Type eType, const std::string& strOutcome);
    std::string Mended(const Json::Value& value, Type eType) const;
    void Word(const Node& node, const Key& stKey);
    void Elements(const Node& list, const Key& stKey, const Object& stOuter);
    void Element(const Node& node, const Key& stKey, const Object& stOuter);

    CReport& m_report;
};

void CShapeWalk::Members(const Node& object, const Object& stObject, const Object* pOuter)
{
    std::set<std::string_view> setSeen;
    const auto nStart = static_cast<std::size_t>(object.value.getOffsetStart());
    for (const KeyPlace& stPlace : m_report.Places().Keys(nStart)) {
        const Node member = object.Member(stPlace.strKey);
        const Key* pKey = stObject.Find(stPlace.strKey);
        if (!setSeen.insert(stPlace.strKey).second) {
            m_report.At(stPlace.stSpan, member.strPointer,
                        {Severity::ERROR, "duplicate-key",
                         Quoted(stPlace.strKey) + " stands here again: the value before is lost"});
            continue;
        }
        if (pKey == nullptr)
            Unknown(object, stPlace, stObject, pOuter);
        else if (!member.value.isNull())
            Value(member, *pKey, stObject);
    }
}

void CShapeWalk::Unknown(const Node& object, const KeyPlace& stPlace, const Object& stObject, const Object* pOuter)
{
    m_report.At(stPlace.stSpan, object.Member(stPlace.strKey).strPointer,
                {Severity::ERROR, "unknown-key", Quoted(stPlace.strKey) + " is an unknown key: ignored",
                 Meant(object, stPlace.strKey, stObject, pOuter)});
}

// What the author of an unknown key meant: one that is written alike, one of another object, or a slip.
std::string CShapeWalk::Meant(const Node& object, const std::string& strKey, const Object& stObject,
                              const Object* pOuter)
{
    std::vector<std::string_view> vMissing;
    std::string_view szAlike;
    for (const Key& stKey : stObject) {
        if (!object.value.isMember(stKey.szName.data())) vMissing.push_back(stKey.szName);
        if (AreAlike(stKey.szName, strKey)) szAlike = stKey.szName;
    }
    if (szAlike.empty()) szAlike = MostAlike(strKey, vMissing);
    if (szAlike.empty()) szAlike = Abbreviated(strKey, vMissing);
    const Object* pOwner = OwnerBelow(stObject, strKey, 2);
    if (pOwner == nullptr && pOuter != nullptr && pOuter->Find(strKey) != nullptr) pOwner = pOuter;
    if (pOwner != nullptr && (szAlike.empty() || !AreAlike(szAlike, strKey)))
        return std::string("it belongs into ") + pOwner->szWhere;
    if (!szAlike.empty()) m_report.Doubt(object.Member(szAlike).strPointer);
    return DidYouMean(szAlike);
}

void CShapeWalk::Value(const Node& node, const Key& stKey, const Object& stObject)
{
    const TypeWords& stWords = WordsOf(stKey.eType);
    if (stKey.eType == Type::SCALAR && IsScalar(node.value)) return;
    if (!Fits(node.value, stKey.eType)) {
        const bool bTaken = stObject.eReading == Reading::TAKE && stKey.pObject == nullptr;
        const char* szOutcome = stKey.szOtherwise != nullptr ? stKey.szOtherwise
                                : bTaken                     ? "ignored"
                                                             : stWords.szFilled;
        return WrongType(node, Quoted(stKey.szName), stKey.eType, szOutcome);
    }
    if (node.value.isString()) Word(node, stKey);
    if (node.value.isObject() && stKey.pObject != nullptr) Members(node, *stKey.pObject, &stObject);
    if (node.value.isArray() && stKey.eType != Type::ANYTHING) Elements(node, stKey, stObject);
}

void CShapeWalk::WrongType(const Node& node, const std::string& strName, Type eType, const std::string& strOutcome)
{
    const char* szWanted = WordsOf(eType).szWords;
    const bool bRange =
        node.value.isNumeric() && IsWhole(node.value) && (eType == Type::INTEGER || eType == Type::TEXT_OR_INTEGER);
    if (bRange)
        return m_report.AtValue(
            node, {Severity::ERROR, "out-of-range",
                   strName + " is an integer out of range (" + std::to_string(std::numeric_limits<int>::min()) +
                       " to " + std::to_string(std::numeric_limits<int>::max()) + "): " + strOutcome});
    m_report.AtValue(node, {Severity::ERROR, "wrong-type",
                            strName + " is " + KindOf(node.value) + ", not " + szWanted + ": " + strOutcome,
                            Mended(node.value, eType)});
}

// How a value of the wrong type could be written.
std::string CShapeWalk::Mended(const Json::Value& value, Type eType) const
{
    const std::string strSource(m_report.Source(value));
    if (eType == Type::TEXT && (value.isNumeric() || value.isBool())) return DidYouMean(strSource);
    if (eType == Type::INTEGER && value.isString()) {
        const std::string strInner = value.asString();
        const bool bNumber =
            !strInner.empty() && strInner.size() < 10 &&
            strInner.find_first_not_of("0123456789", strInner[0] == '-' ? 1 : 0) == std::string::npos &&
            strInner != "-";
        if (bNumber) return "did you mean " + strInner + " without quotation marks?";
    }
    const bool bList = WordsOf(eType).szSkipped != nullptr;
    if (bList && (value.isObject() ? eType == Type::OBJECTS : eType != Type::OBJECTS)) return "put it into a list";
    return {};
}

void CShapeWalk::Word(const Node& node, const Key& stKey)
{
    const std::string strWord = node.Text();
    if (strWord.empty()) return;
    if (!stKey.szExact.empty() && strWord != stKey.szExact && !MostAlike(strWord, {stKey.szExact}).empty())
        m_report.AtValue(node, {Severity::ERROR, "unknown-word",
                                Quoted(stKey.szName) + " is " + Quoted(strWord) + ", which is not " +
                                    Quoted(stKey.szExact) + ": taken like any other text",
                                DidYouMean(stKey.szExact)});
    if (stKey.pWords == nullptr) return;
    const std::vector<std::string_view> vWords = stKey.pWords();
    for (const std::string_view szWord : vWords)
        if (szWord == strWord) return;
    m_report.AtValue(node, {Severity::ERROR, "unknown-word",
                            Quoted(stKey.szName) + " is " + Quoted(strWord) + ", an unknown word" +
                                (stKey.szOtherwise == nullptr ? "" : std::string(": ") + stKey.szOtherwise),
                            DidYouMean(MostAlike(strWord, vWords))});
}

void CShapeWalk::Elements(const Node& list, const Key& stKey, const Object& stOuter)
{
    for (Json::ArrayIndex i = 0; i < list.Size(); ++i) Element(list.Element(i), stKey, stOuter);
}

void CShapeWalk::Element(const Node& node, const Key& stKey, const Object& stOuter)
{
    const std::string strName = "an element of " + Quoted(stKey.szName);
    switch (stKey.eType) {
        case Type::OBJECTS:
            if (!node.value.isObject()) return WrongType(node, strName, Type::OBJECT, stKey.pObject->szNoObject);
            if (const Description::Kind* pKind = stKey.pObject->KindOf(node.Member("type").Text()))
                return Members(node, *pKind->pObject, &stOuter);
            if (stKey.pObject->pKinds == nullptr) return Members(node, *stKey.pObject, &stOuter);
            if (node.Has("type")) Value(node.Member("type"), *stKey.pObject->pKeys, *stKey.pObject);
            return;
        case Type::TEXTS:
            if (!node.value.isString()) WrongType(node, strName, Type::TEXT, "skipped");
            return;
        case Type::INTEGERS:
            if (!node.value.isInt()) WrongType(node, strName, Type::INTEGER, "skipped");
            return;
        default:
            if (!IsScalar(node.value)) return WrongType(node, strName, Type::TEXT, "reads as an empty text");
            if (!node.value.isString())
                m_report.AtValue(node, {Severity::NOTE, "converted",
                                        strName + " is " + KindOf(node.value) + ", not a text: reads as " +
                                            Quoted(node.value.asString())});
    }
}

}  // namespace

void CheckShape(const Node& document, const Object& stObject, CReport& report)
{
    CShapeWalk(report).Members(document, stObject, nullptr);
}
