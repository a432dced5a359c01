// A definition for each object of the description, its comments as descriptions. null counts as missing, everywhere.
#include "findings/JsonSchema.h"

#include <json/writer.h>

#include <cctype>
#include <limits>

namespace
{

using Description::Key;
using Description::Kind;
using Description::Object;
using Description::Type;

Json::Value Types(std::initializer_list<const char*> vTypes)
{
    Json::Value list(Json::arrayValue);
    for (const char* szType : vTypes) list.append(szType);
    return list;
}

void LimitIntegers(Json::Value& schema)
{
    schema["minimum"] = std::numeric_limits<int>::min();
    schema["maximum"] = std::numeric_limits<int>::max();
}

// An object that is one, or a text that holds something.
void Need(Json::Value& schema)
{
    const bool bText = schema.isMember("type");  // else it is a reference to an object
    if (!bText) schema["type"] = "object";
    if (bText) schema["minLength"] = 1;
}

// The text as it stands, or one that differs in more than case and blanks.
Json::Value Exactly(std::string_view szExact)
{
    std::string strPattern = "^\\s*";
    for (const char c : szExact) {
        const bool bLetter = std::isalpha(static_cast<unsigned char>(c)) != 0;
        const auto nLetter = static_cast<unsigned char>(c);
        if (bLetter)
            strPattern +=
                {'[', static_cast<char>(std::toupper(nLetter)), static_cast<char>(std::tolower(nLetter)), ']'};
        else
            strPattern += {'\\', c};
    }
    Json::Value list(Json::arrayValue);
    list[0]["const"] = std::string(szExact);
    list[1]["not"]["type"] = "string";
    list[1]["not"]["pattern"] = strPattern + "\\s*$";
    return list;
}

class CJsonSchema
{
public:
    explicit CJsonSchema(const Object& stObject);
    std::string Text() const;

private:
    void Define(const Object& stObject);
    Json::Value Reference(const Object& stObject);
    Json::Value Property(const Key& stKey);
    Json::Value Element(const Key& stKey);
    void Kinds(const Object& stObject, Json::Value& definition);

    Json::Value m_root;
};

CJsonSchema::CJsonSchema(const Object& stObject)
{
    m_root["$schema"] = "https://json-schema.org/draft/2020-12/schema";
    m_root["title"] = stObject.szComment;
    m_root["$defs"] = Json::objectValue;
    m_root["$ref"] = Reference(stObject)["$ref"];
    m_root["type"] = "object";
}

std::string CJsonSchema::Text() const
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    return Json::writeString(builder, m_root) + '\n';
}

Json::Value CJsonSchema::Reference(const Object& stObject)
{
    if (!m_root["$defs"].isMember(stObject.szName)) Define(stObject);
    Json::Value reference;
    reference["$ref"] = std::string("#/$defs/") + stObject.szName;
    return reference;
}

void CJsonSchema::Define(const Object& stObject)
{
    Json::Value definition;
    m_root["$defs"][stObject.szName] = definition;  // the place is taken before its parts are defined
    definition["description"] = stObject.szComment;
    definition["type"] = Types({"object", "null"});
    for (const Key& stKey : stObject) {
        definition["properties"][std::string(stKey.szName)] = Property(stKey);
        if (stKey.bNeeded && stKey.eType == Type::OBJECT) definition["required"].append(std::string(stKey.szName));
    }
    if (stObject.pKinds == nullptr)
        definition["additionalProperties"] = false;
    else
        Kinds(stObject, definition);
    m_root["$defs"][stObject.szName] = definition;
}

// An object whose key "type" says what else it holds.
void CJsonSchema::Kinds(const Object& stObject, Json::Value& definition)
{
    definition["required"].append("type");
    for (std::size_t i = 0; i < stObject.nKinds; ++i) {
        const Kind& stKind = stObject.pKinds[i];
        Json::Value rule;
        rule["if"]["required"].append("type");
        rule["if"]["properties"]["type"]["const"] = std::string(stKind.szType);
        rule["then"] = Reference(*stKind.pObject);
        definition["allOf"].append(rule);
    }
}

Json::Value CJsonSchema::Property(const Key& stKey)
{
    Json::Value schema;
    switch (stKey.eType) {
        case Type::TEXT:
            schema["type"] = Types({"string", "null"});
            break;
        case Type::INTEGER:
            schema["type"] = Types({"integer", "null"});
            LimitIntegers(schema);
            break;
        case Type::BOOLEAN:
            schema["type"] = Types({"boolean", "null"});
            break;
        case Type::TEXT_OR_INTEGER:
            schema["type"] = Types({"string", "integer", "null"});
            LimitIntegers(schema);
            break;
        case Type::SCALAR:
            schema["type"] = Types({"string", "number", "boolean", "null"});
            break;
        case Type::ANYTHING:
            schema["deprecated"] = true;
            break;
        case Type::OBJECT:
            schema = Reference(*stKey.pObject);
            break;
        default:
            schema["type"] = Types({"array", "null"});
            schema["items"] = Element(stKey);
    }
    if (stKey.bNeeded) Need(schema);
    if (!stKey.szExact.empty()) schema["anyOf"] = Exactly(stKey.szExact);
    if (stKey.pWords != nullptr) {
        for (const std::string_view szWord : stKey.pWords()) schema["enum"].append(std::string(szWord));
        schema["enum"].append(Json::nullValue);
    }
    schema["description"] = stKey.szComment;
    return schema;
}

Json::Value CJsonSchema::Element(const Key& stKey)
{
    Json::Value schema;
    if (stKey.eType == Type::OBJECTS) {
        schema = Reference(*stKey.pObject);
        schema["type"] = "object";  // an element that is null is none
    } else if (stKey.eType == Type::INTEGERS) {
        schema["type"] = "integer";
        LimitIntegers(schema);
    } else {
        schema["type"] = "string";
    }
    return schema;
}

}  // namespace

std::string JsonSchemaOf(const Object& stObject)
{
    return CJsonSchema(stObject).Text();
}
