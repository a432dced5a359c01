// What the parts of an explanation share: the case, its log, and the section that is being told.
#ifndef PARLO_TELLER_H
#define PARLO_TELLER_H

#include <json/value.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "explaining/CallLog.h"
#include "explaining/Explanation.h"

constexpr const char* kReplyReader = "t_ParseSearchServer";

// The member `szKey`; null when it is missing or `parent` is not an object.
inline const Json::Value& Child(const Json::Value& parent, const char* szKey)
{
    return parent.isObject() ? parent[szKey] : Json::Value::nullSingleton();
}

// The text of a JSON string; empty for anything else.
std::string TextOf(const Json::Value& value);

class CTeller
{
public:
    explicit CTeller(const Case& stCase);

    // Begins a section; the findings whose pointer is `strPointer`, or below and of no nearer section, go into it. It
    // is not kept when it stays empty.
    void Begin(const std::string& strTitle, const std::string& strPointer);
    void Say(const std::string& strText, const LogLine* pLine);

    // Findings that no section took go into one in front.
    std::vector<Section> Sections() &&;

    const Case& m_stCase;
    const CCallLog m_log;
    const Json::Value& Rsp() const { return Child(m_root, "rsp"); }

private:
    Json::Value m_root;
    std::vector<Finding> m_vFindings;
    std::vector<Section> m_vSections;
    std::unordered_map<std::string, std::size_t> m_mapSections;  // by pointer
};

// The parts, in the order in which they are told.
void TellBefore(CTeller& teller);  // what earlier replies left
void TellSentence(CTeller& teller);
void TellCommands(CTeller& teller);
void TellRequests(CTeller& teller);
void TellContents(CTeller& teller);
void TellLeft(CTeller& teller);  // what this one leaves

// How many items of this reply the library kept.
std::size_t KeptItems(const CCallLog& log);

#endif
