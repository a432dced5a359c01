// A definition for each object of the description, its comments as descriptions. null counts as missing, everywhere.
#include "findings/JsonSchema.h"

#include <json/writer.h>

#include <cctype>
#include <limits>

#include "findings/Actions.h"
#include "findings/Check.h"
#include "findings/Description.h"

namespace
{

using Description::Key;
using Description::Kind;
using Description::Object;
using Description::Type;

// The types of JSON that a plain value may have, by Type.
constexpr const char* kTypes[][3] = {
    {"string"}, {"integer"}, {"boolean"}, {"string", "integer"}, {"string", "number", "boolean"}};

void LimitIntegers(Json::Value& schema)
{
    schema["minimum"] = std::numeric_limits<int>::min();
    schema["maximum"] = std::numeric_limits<int>::max();
}

// The text as it stands, or one that differs in more than case and blanks.
Json::Value Exactly(std::string_view szExact)
{
    std::string strPattern = "^\\s*";
    for (const char c : szExact) {
        const char cOther = static_cast<char>(c ^ 0x20);  // of a letter, that of the other case
        strPattern += std::isalpha(c) != 0 ? std::string{'[', c, cOther, ']'} : std::string{'\\', c};
    }
    Json::Value list(Json::arrayValue);
    list[0]["const"] = std::string(szExact);
    list[1]["not"]["type"] = "string";
    list[1]["not"]["pattern"] = strPattern + "\\s*$";
    return list;
}

// The first command, which alone needs an action, and with some of them parameters: one of those that the action takes,
// unless "params" name another action.
Json::Value FirstCommand(Json::Value command)
{
    using namespace CADataRepository;
    command["required"].append("action");
    for (const ActionRow& stRow : kActionRows) {
        if (!stRow.Has(NEEDS_PARAMS)) continue;
        Json::Value rule;
        rule["if"]["required"].append("action");
        rule["if"]["properties"]["action"]["const"] = std::string(WordOf(kActionWords, stRow.eCode));
        rule["then"]["required"].append("params");
        Json::Value& one = rule["then"]["properties"]["params"]["contains"]["anyOf"];
        for (const char* szKey : {stRow.vKeys[0], stRow.vKeys[1], "action"})
            if (szKey != nullptr) one.append(Json::objectValue)["required"].append(szKey);
        command["allOf"].append(rule);
    }
    return command;
}

// Of a part of the record, with a value of it as example.
Json::Value Expectation(const Json::Value& example)
{
    constexpr const char* kNames[] = {"null", "integer", "integer", "number", "string", "boolean", "array", "object"};
    Json::Value schema;
    schema["type"] = kNames[example.type()];
    if (!example.isObject()) return schema;
    schema["additionalProperties"] = false;
    for (const std::string& strName : example.getMemberNames())
        schema["properties"][strName] = Expectation(example[strName]);
    return schema;
}

// A reference to the object's definition, which is put into `defs` if it is not there.
Json::Value Reference(const Object& stObject, Json::Value& defs);

Json::Value Element(const Key& stKey, Json::Value& defs)
{
    Json::Value schema;
    if (stKey.eType == Type::OBJECTS) {
        schema = Reference(*stKey.pObject, defs);
        schema["type"] = "object";  // an element that is null is none
    } else if (stKey.eType == Type::INTEGERS) {
        schema["type"] = "integer";
        LimitIntegers(schema);
    } else {
        schema["type"] = "string";
    }
    return schema;
}

Json::Value Property(const Key& stKey, Json::Value& defs)
{
    Json::Value schema;
    const bool bPlain = stKey.eType <= Type::SCALAR;
    const bool bList = stKey.eType > Type::OBJECT;
    if (bPlain)
        for (const char* szType : kTypes[static_cast<std::size_t>(stKey.eType)])
            if (szType != nullptr) schema["type"].append(szType);
    if (stKey.eType == Type::INTEGER || stKey.eType == Type::TEXT_OR_INTEGER) LimitIntegers(schema);
    if (stKey.eType == Type::ANYTHING && stKey.pObject != nullptr) schema["deprecated"] = true;
    if (stKey.eType == Type::OBJECT && stKey.pObject != nullptr) schema = Reference(*stKey.pObject, defs);
    if (bList) schema["type"].append("array");
    if (bList) schema["items"] = Element(stKey, defs);
    if (!stKey.bNeeded && (bPlain || bList)) schema["type"].append("null");
    if (stKey.bNeeded && stKey.eType == Type::OBJECT) schema["type"] = "object";
    if (stKey.bNeeded && stKey.eType == Type::TEXT) schema["minLength"] = 1;
    if (stKey.bNeeded && bList) schema["minItems"] = 1;
    if (stKey.bNeeded && bList) schema["prefixItems"].append(FirstCommand(schema["items"]));
    if (stKey.bDecimal) schema["pattern"] = "^[-+]?[0-9]+$";
    if (!stKey.szExact.empty()) schema["anyOf"] = Exactly(stKey.szExact);
    if (stKey.pWords != nullptr) {
        for (const std::string_view szWord : stKey.pWords()) schema["enum"].append(std::string(szWord));
        if (!stKey.bNeeded) schema["enum"].append(Json::nullValue);
    }
    schema["description"] = stKey.szComment;
    return schema;
}

// An object whose key "type" says what else it holds.
void Kinds(const Object& stObject, Json::Value& definition, Json::Value& defs)
{
    definition["required"].append("type");
    for (std::size_t i = 0; i < stObject.nKinds; ++i) {
        const Kind& stKind = stObject.pKinds[i];
        Json::Value rule;
        rule["if"]["required"].append("type");
        rule["if"]["properties"]["type"]["const"] = std::string(stKind.szType);
        rule["then"] = Reference(*stKind.pObject, defs);
        definition["allOf"].append(rule);
    }
}

void Define(const Object& stObject, Json::Value& defs)
{
    Json::Value definition;
    defs[stObject.szName] = definition;  // the place is taken before its parts are defined
    definition["description"] = stObject.szComment;
    for (const char* szType : {"object", "null"}) definition["type"].append(szType);
    Json::Value needed;
    for (const Key& stKey : stObject) {
        definition["properties"][std::string(stKey.szName)] = Property(stKey, defs);
        if (stKey.bNeeded) needed.append(std::string(stKey.szName));
    }
    const bool bMayFail = stObject.Find("stat") != nullptr && !needed.isNull();  // a failure needs nothing
    if (bMayFail) definition["if"]["required"].append("stat");
    if (bMayFail) definition["if"]["properties"]["stat"]["const"] = "fail";
    if (!needed.isNull() && stObject.Find("intent") == nullptr)
        (bMayFail ? definition["else"] : definition)["required"] = needed;
    if (stObject.pKinds == nullptr)
        definition["additionalProperties"] = false;
    else
        Kinds(stObject, definition, defs);
    defs[stObject.szName] = definition;
}

Json::Value Reference(const Object& stObject, Json::Value& defs)
{
    if (!defs.isMember(stObject.szName)) Define(stObject, defs);
    Json::Value reference;
    reference["$ref"] = std::string("#/$defs/") + stObject.szName;
    return reference;
}

// What the description of a conversation's line leaves open.
void CompleteTurn(Json::Value& defs)
{
    Json::Value& members = defs[Description::kTurn.szName]["properties"];
    Json::Value& reply = members["reply"]["anyOf"];
    reply[0]["type"] = "string";
    reply[1] = Reference(Description::kReply, defs);
    reply[1]["type"] = "object";
    members["expect"] = Expectation(OutcomeNames());
}

}  // namespace

std::string JsonSchemaOf(const std::string& strDocument)
{
    const Object& stObject = strDocument == "search"         ? Description::kSearchSchema
                             : strDocument == "conversation" ? Description::kTurn
                                                             : Description::kReply;
    Json::Value root;
    root["$schema"] = "https://json-schema.org/draft/2020-12/schema";
    root["title"] = stObject.szComment;
    root["$defs"] = Json::objectValue;
    root["$ref"] = Reference(stObject, root["$defs"])["$ref"];
    root["type"] = "object";
    if (&stObject == &Description::kTurn) CompleteTurn(root["$defs"]);
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    return Json::writeString(builder, root) + '\n';
}
