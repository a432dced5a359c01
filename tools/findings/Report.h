// Collects findings about a parsed document and finds their places in its text.
#pragma once

#include <json/value.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "findings/Finding.h"
#include "findings/Places.h"

// A value of the document with its JSON pointer.
struct Node {
    const Json::Value& value;
    std::string strPointer;

    Node Member(std::string_view szKey) const;  // null when there is none
    Node Element(Json::ArrayIndex n) const;     // the same
    bool Has(std::string_view szKey) const { return !Member(szKey).value.isNull(); }
    Json::ArrayIndex Size() const { return value.isArray() ? value.size() : 0; }
    std::string Text() const;  // empty when it is no text
    int Number() const;        // as the library reads anything where the type does not count
    bool IsInt(std::string_view szKey) const { return Member(szKey).value.isInt(); }
};

// A key as a step of a JSON pointer.
std::string PointerStep(std::string_view szKey);

// What a finding says, without its place.
struct Remark {
    Severity eSeverity;
    const char* szCode;
    std::string strText;
    std::string strSuggestion = {};
    std::size_t nOther = Finding::kNoOther;  // another place that it speaks of, in bytes of the text
};

// That `strWhat` has no effect.
Remark NoEffect(const std::string& strWhat, const std::string& strWhy, const char* szCode = "no-effect");

class CReport
{
public:
    // `szText` is what offsets of values count in. The report ends when it has more findings than anybody reads.
    CReport(std::string_view szText, const CPlaces& places) : m_szText(szText), m_places(places) {}

    void AtKey(const Node& object, std::string_view szKey, Remark stRemark);
    void AtValue(const Node& node, Remark stRemark);
    void At(Span stSpan, const std::string& strPointer, Remark stRemark);

    // That a key has no effect, when it is there and not doubted.
    void KeyHasNoEffect(const Node& object, std::string_view szKey, const std::string& strWhy);

    // Remembers that the value at the pointer is not what its author meant: what follows from that is no finding
    // of its own. A value with an error is remembered by itself.
    void Doubt(const std::string& strPointer) { m_setDoubted.insert(strPointer); }
    // The same of every value that is missing under this key: it was written elsewhere.
    void DoubtMissing(std::string_view szKey) { m_setElsewhere.emplace(szKey); }
    bool IsDoubted(const Node& node) const;
    bool IsDoubtedWithin(const Node& node) const;  // the value itself, or one below it

    // What is wrong with the word that decides there, unless it holds something or is doubted: at it when it is empty,
    // else at the object without it.
    void AtMissing(const Node& object, std::string_view szKey, const char* szCode, const std::string& strObject,
                   const std::string& strOutcome);

    // Remembers that the library leaves what is at the pointer and below to the application: Outcome is what a
    // finding's text says then, as nobody knows what comes of it.
    void LeaveToApplication(const std::string& strPointer) { m_vForApplication.push_back(strPointer + '/'); }
    std::string Outcome(const Node& node, const std::string& strText) const;

    const CPlaces& Places() const { return m_places; }
    std::string_view Source(const Json::Value& value) const;  // the value's text as it stands

    // In the order of the text, with lines and columns; the report is empty afterwards.
    std::vector<Finding> Take();

private:
    std::string_view m_szText;
    const CPlaces& m_places;
    std::vector<Finding> m_vFindings;
    std::set<std::string> m_setDoubted;
    std::set<std::string> m_setElsewhere;
    std::vector<std::string> m_vForApplication;
};

// Puts findings into the order of the text, and gives them the lines and columns of their offsets in it. Both count
// from 1, a column in characters.
void Locate(std::string_view szText, std::vector<Finding>& vFindings);
