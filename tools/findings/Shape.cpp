// The walk over a document along its description.
#include "findings/Effects.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

#include "findings/Actions.h"
#include "findings/Suggestion.h"
#include "text/Text.h"

namespace
{

using Description::Key;
using Description::Object;
using Description::Reading;
using Description::Type;

struct TypeWords {
    const char* szWords;   // what is wanted
    const char* szFilled;  // what a value of another type reads as
    bool (Json::Value::*fits)() const;
    const char* szSkipped = nullptr;  // what becomes of an element of another type
};

// By Type.
constexpr TypeWords kTypes[] = {
    {"a text", "reads as an empty text", &Json::Value::isString},
    {"an integer", "reads as 0", &Json::Value::isInt},
    {"a boolean", "ignored", &Json::Value::isBool},
    {"a text or an integer", "ignored", &Json::Value::isInt},
    {"a text", "reads as an empty text", &Json::Value::isString},
    {"anything", "", nullptr},
    {"an object", "reads as an empty object", &Json::Value::isObject},
    {"a list", "reads as an empty list", &Json::Value::isArray, "skipped"},
    {"a list", "reads as an empty list", &Json::Value::isArray, "skipped"},
    {"a list", "reads as an empty list", &Json::Value::isArray, "reads as an empty text"},
    {"a list", "reads as an empty list", &Json::Value::isArray, "reads as an empty object"},
};

const TypeWords& WordsOf(Type eType)
{
    return kTypes[static_cast<std::size_t>(eType)];
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
    return eType == Type::ANYTHING || (eType == Type::TEXT_OR_INTEGER && value.isString()) ||
           (value.*WordsOf(eType).fits)();
}

struct Owner {
    const Object* pObject;
    std::string_view szAt;  // the key that leads there
};

// The object and what is below it, the nearest first.
std::vector<Owner> WithParts(const Object& stObject)
{
    std::vector<Owner> vOwners = {{&stObject, ""}};
    for (std::size_t i = 0; i < vOwners.size(); ++i) {
        for (const Key& stKey : *vOwners[i].pObject) {
            if (stKey.pObject == nullptr) continue;
            vOwners.push_back({stKey.pObject, stKey.szName});
            for (std::size_t n = 0; n < stKey.pObject->nKinds; ++n)
                vOwners.push_back({stKey.pObject->pKinds[n].pObject, stKey.szName});
        }
    }
    return vOwners;
}

// How a value of the wrong type could be written.
std::string Mended(const Json::Value& value, Type eType, bool bAnyText, const CReport& report)
{
    if (eType == Type::TEXT && value.isNumeric() && bAnyText) return DidYouMean(report.Source(value));
    Json::Value inner;
    if (eType == Type::INTEGER && value.isString() && ParseJson(value.asString(), true, inner) && inner.isInt())
        return "did you mean " + std::to_string(inner.asInt()) + " without quotation marks?";
    const bool bList = WordsOf(eType).szSkipped != nullptr;
    if (bList && (value.isObject() ? eType == Type::OBJECTS : eType != Type::OBJECTS)) return "put it into a list";
    return {};
}

void WrongType(const Node& node, const std::string& strName, Type eType, const std::string& strOutcome, CReport& report,
               bool bAnyText = false)
{
    const char* szWanted = WordsOf(eType).szWords;
    const bool bInteger = eType == Type::INTEGER || eType == Type::TEXT_OR_INTEGER;
    if (bInteger && node.value.isNumeric() && IsWhole(node.value))
        return report.AtValue(node,
                              {Severity::ERROR, "out-of-range",
                               strName + " is an integer out of range (-2147483648 to 2147483647): " + strOutcome});
    report.AtValue(node, {Severity::ERROR, "wrong-type",
                          strName + " is " + KindOf(node.value) + ", not " + szWanted + ": " + strOutcome,
                          Mended(node.value, eType, bAnyText, report)});
}

// A scalar that is read as a text though it is none.
void Converted(const Node& node, const std::string& strName, CReport& report)
{
    if (node.value.isString()) return;
    report.AtValue(node,
                   {Severity::NOTE, "converted",
                    strName + " is " + KindOf(node.value) + ", not a text: reads as " + Quoted(node.value.asString())});
}

void CheckWord(const Node& node, const Key& stKey, CReport& report)
{
    const std::string strWord = node.Text();
    if (strWord.empty()) return;
    const bool bHeld = stKey.bWithin && strWord.find(stKey.szExact) != std::string::npos;
    const bool bAlike = stKey.bWithin ? strcasestr(strWord.c_str(), stKey.szExact.data()) != nullptr
                                      : !MostAlike(strWord, {stKey.szExact}).empty();
    if (!stKey.szExact.empty() && strWord != stKey.szExact && bAlike && !bHeld)
        report.AtValue(node, {Severity::ERROR, "unknown-word",
                              Quoted(stKey.szName) + " is " + Quoted(strWord) + ", which is not " +
                                  Quoted(stKey.szExact) + ": taken like any other text",
                              DidYouMean(stKey.szExact)});
    if (stKey.pWords == nullptr) return;
    const std::vector<std::string_view> vWords = stKey.pWords();
    for (const std::string_view szWord : vWords)
        if (szWord == strWord) return;
    report.AtValue(node, {Severity::ERROR, "unknown-word",
                          Quoted(stKey.szName) + " is " + Quoted(strWord) + ", an unknown word" +
                              (stKey.szOtherwise == nullptr ? "" : std::string(": ") + stKey.szOtherwise),
                          DidYouMean(Nearest(strWord, vWords))});
}

class CShapeWalk
{
public:
    explicit CShapeWalk(CReport& report) : m_report(report) {}
    void Members(const Node& object, const Object& stObject);

private:
    void Unknown(const Node& object, const KeyPlace& stPlace);
    std::string Meant(const Node& object, const std::string& strKey);
    std::string Elsewhere(std::string_view szKey, bool bNear);
    void Value(const Node& node, const Key& stKey, const Object& stObject);
    void Element(const Node& node, const Key& stKey, bool bFirst);
    void ObjectElement(const Node& node, const std::string& strName, const Object& stObject);

    CReport& m_report;
    std::vector<const Object*> m_vWithin;         // from the document to the object whose members are looked at
    CADataRepository::ActionRow m_stAction = {};  // of the last command
};

void CShapeWalk::Members(const Node& object, const Object& stObject)
{
    std::map<std::string_view, std::size_t> mapSeen;
    m_vWithin.push_back(&stObject);
    if (stObject.Find("intent") != nullptr) m_stAction = RowOf(ActionIn(object, &m_report).Text());
    for (const KeyPlace& stPlace : m_report.Places().Keys(SpanOf(object.value).nStart)) {
        const Node member = object.Member(stPlace.strKey);
        const Key* pKey = stObject.Find(stPlace.strKey);
        const auto [itFirst, bFirst] = mapSeen.emplace(stPlace.strKey, stPlace.stSpan.nStart);
        if (!bFirst)
            m_report.At(stPlace.stSpan, member.strPointer,
                        {Severity::ERROR, "duplicate-key",
                         Quoted(stPlace.strKey) + " stands here again: the value before is lost", "", itFirst->second});
        else if (pKey == nullptr)
            Unknown(object, stPlace);
        else if (!member.value.isNull())
            Value(member, *pKey, stObject);
    }
    m_vWithin.pop_back();
}

void CShapeWalk::Unknown(const Node& object, const KeyPlace& stPlace)
{
    m_report.At(stPlace.stSpan, object.Member(stPlace.strKey).strPointer,
                {Severity::ERROR, "unknown-key",
                 m_report.Outcome(object, Quoted(stPlace.strKey) + " is an unknown key: ignored"),
                 Meant(object, stPlace.strKey)});
}

// What the author of an unknown key meant: one that the action takes, a slip of one that belongs there, one of another
// object, or a word for one.
std::string CShapeWalk::Meant(const Node& object, const std::string& strKey)
{
    const Object& stObject = *m_vWithin.back();
    std::vector<std::string_view> vTaken;
    std::vector<std::string_view> vAll;
    for (const Key& stKey : stObject) {
        vAll.push_back(stKey.szName);
        if (&stObject == &Description::kParam && Takes(m_stAction, stKey.szName)) vTaken.push_back(stKey.szName);
    }
    const auto IsMissing = [&object](std::string_view szKey) { return !object.Has(szKey); };
    const std::vector<std::string_view> vMissing(vAll.begin(),
                                                 std::stable_partition(vAll.begin(), vAll.end(), IsMissing));

    std::string_view szMeant = Nearest(strKey, vTaken);
    if (szMeant.empty()) szMeant = MostAlike(strKey, vAll, 1);
    if (szMeant.empty()) szMeant = SameMeaning(strKey, vMissing);
    std::string strElsewhere = szMeant.empty() ? Elsewhere(strKey, true) : "";
    if (!strElsewhere.empty()) return strElsewhere;
    if (szMeant.empty()) szMeant = MostAlike(strKey, vAll, 2);
    if (szMeant.empty()) szMeant = Nearest(strKey, vMissing);
    if (szMeant.empty()) return Elsewhere(strKey, false);
    if (object.Has(szMeant)) return "did you mean " + Quoted(szMeant) + ", which is there already?";
    m_report.Doubt(object.Member(szMeant).strPointer);
    return DidYouMean(szMeant);
}

// Which object the key belongs to: the one around, or one within; else the nearest of the document. Empty when none
// has it.
std::string CShapeWalk::Elsewhere(std::string_view szKey, bool bNear)
{
    for (std::size_t n = m_vWithin.size(); n > 0 && (!bNear || n + 1 >= m_vWithin.size()); --n) {
        std::vector<Owner> vOwners = WithParts(*m_vWithin[n - 1]);
        if (bNear && n < m_vWithin.size()) vOwners.resize(1);
        for (const auto& [pOwner, szAt] : vOwners) {
            if (pOwner->Find(szKey) == nullptr) continue;
            m_report.DoubtMissing(szKey);
            m_report.DoubtMissing(szAt);
            return std::string("it belongs into ") + pOwner->szWhere;
        }
    }
    return {};
}

void CShapeWalk::Value(const Node& node, const Key& stKey, const Object& stObject)
{
    const TypeWords& stWords = WordsOf(stKey.eType);
    if (stKey.eType == Type::SCALAR && IsScalar(node.value)) return Converted(node, Quoted(stKey.szName), m_report);
    if (!Fits(node.value, stKey.eType)) {
        const bool bTaken = stObject.eReading == Reading::TAKE && stKey.pObject == nullptr;
        const char* szOutcome = stKey.szOtherwise != nullptr ? stKey.szOtherwise
                                : bTaken                     ? "ignored"
                                                             : stWords.szFilled;
        const bool bAnyText = stKey.pWords == nullptr && stKey.szExact.empty();
        return WrongType(node, Quoted(stKey.szName), stKey.eType, szOutcome, m_report, bAnyText);
    }
    if (node.value.isString()) CheckWord(node, stKey, m_report);
    if (node.value.isObject() && stKey.pObject != nullptr) Members(node, *stKey.pObject);
    for (Json::ArrayIndex i = 0; i < node.Size() && stKey.eType != Type::ANYTHING; ++i)
        Element(node.Element(i), stKey, i == 0);
}

void CShapeWalk::ObjectElement(const Node& node, const std::string& strName, const Object& stObject)
{
    if (!node.value.isObject()) return WrongType(node, strName, Type::OBJECT, stObject.szNoObject, m_report);
    if (stObject.pKinds == nullptr) return Members(node, stObject);
    // The key that tells the kind, or the one that is meant to.
    const Json::Value::Members vKeys = node.value.getMemberNames();
    const auto IsMeant = [](const std::string& strKey) { return !MostAlike(strKey, {"type"}).empty(); };
    const auto itMeant = node.Has("type") ? vKeys.end() : std::find_if(vKeys.begin(), vKeys.end(), IsMeant);
    const std::string strKey = itMeant == vKeys.end() ? "type" : *itMeant;
    if (const Description::Kind* pKind = stObject.KindOf(node.Member(strKey).Text()))
        return Members(node, *pKind->pObject);
    if (node.Has("type")) Value(node.Member("type"), *stObject.pKeys, stObject);
    if (itMeant == vKeys.end()) return m_report.AtMissing(node, "type", "no-type", "the item", "it is dropped");
    m_vWithin.push_back(&stObject);
    Unknown(node, {m_report.Places().Key(SpanOf(node.value).nStart, strKey), strKey});
    m_vWithin.pop_back();
}

void CShapeWalk::Element(const Node& node, const Key& stKey, bool bFirst)
{
    const std::string strName = "an element of " + Quoted(stKey.szName);
    if (stKey.pObject != nullptr) return ObjectElement(node, strName, *stKey.pObject);
    if (stKey.eType == Type::SCALARS && IsScalar(node.value)) return Converted(node, strName, m_report);
    const bool bIntegers = stKey.eType == Type::INTEGERS;
    const Type eElement = bIntegers ? Type::INTEGER : Type::TEXT;
    if (!Fits(node.value, eElement))
        WrongType(node, strName, eElement,
                  bIntegers && bFirst ? "as the first one it counts as " + std::to_string(node.Number())
                                      : WordsOf(stKey.eType).szSkipped,
                  m_report);
}

}  // namespace

const char* KindOf(const Json::Value& value)
{
    constexpr const char* kKinds[] = {"null",   "an integer", "an integer", "a number with a fraction",
                                      "a text", "a boolean",  "a list",     "an object"};
    return IsWhole(value) ? "an integer" : kKinds[value.type()];
}

void CheckShape(const Node& document, const Object& stObject, CReport& report)
{
    CShapeWalk(report).Members(document, stObject);
}
