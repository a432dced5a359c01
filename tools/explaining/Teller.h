// What the parts of an explanation share: the case, its log, and the section that is being told.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "findings/Report.h"
#include "session/Case.h"

constexpr const char* kReplyReader = "t_ParseSearchServer";

// Whether it is a line of `szFunction` whose message begins with `szStart`.
bool Is(const LogLine& stLine, std::string_view szFunction, std::string_view szStart);

// The number at the end of a line such as "eControl = 12".
int NumberOf(const LogLine& stLine);

// What stands behind `szStart`, with which the message begins, without a "]" at its end.
std::string Behind(const LogLine& stLine, std::string_view szStart);

// Something that the library did, and the log line that says so. A statement without a line is about something that
// the library passes over in silence.
struct Statement {
    std::string strText;
    std::string strLog;
};

// A part of the reply: what is wrong with it, then what was done with it.
struct Section {
    std::string strTitle;
    std::vector<Finding> vFindings;
    std::vector<Statement> vStatements;
};

class CTeller
{
public:
    explicit CTeller(const Case& stCase);

    // Begins a section; the findings whose pointer is `strPointer`, or below and of no nearer section, go into it. It
    // is not kept when it stays empty.
    void Begin(const std::string& strTitle, const std::string& strPointer);
    void Say(const std::string& strText, const LogLine* pLine);
    void SayIf(const LogLine* pLine, const std::string& strText);  // if there is the line

    // The first and the last such line of the call; null when there is none. All of them, in order.
    const LogLine* Find(std::string_view szFunction, std::string_view szStart) const;
    const LogLine* FindLast(std::string_view szFunction, std::string_view szStart) const;
    std::vector<const LogLine*> FindAll(std::string_view szFunction, std::string_view szStart) const;

    // Findings that no section took go into one in front.
    std::vector<Section> Sections() &&;

    const Case& m_stCase;
    Node Rsp() const { return Node{m_root, ""}.Member("rsp"); }

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
std::size_t KeptItems(const CTeller& teller);

// All of them. The reply's text and the record may be missing; what only they know is then left out. Findings of a
// conversation's reply have the place in their line, column 0 where there is none.
std::vector<Section> Explained(const Case& stCase);
