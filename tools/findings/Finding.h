// One thing that is wrong, without effect or worth knowing about a document, and where it stands in the text.
#pragma once

#include <cstddef>
#include <string>

enum class Severity {
    NOTE,     // harmless, but worth knowing
    WARNING,  // what its author wrote has no effect, or is legal and surely not meant so: other readers may refuse it
    ERROR,    // the document is refused, or what its author wrote is lost or misread
};

// "note", "warning", "error"
inline const char* SeverityWord(Severity eSeverity)
{
    constexpr const char* kWords[] = {"note", "warning", "error"};
    return kWords[static_cast<std::size_t>(eSeverity)];
}

struct Finding {
    Severity eSeverity = Severity::NOTE;
    std::string strCode;            // what kind of finding: "unknown-key"
    std::string strPointer;         // JSON pointer of the value, "/rsp/tvcontrol/0/params/0/amount"; keys as they stand
    std::size_t nOffset = 0;        // where it stands, in bytes of the text
    std::size_t nLength = 0;        // how many bytes are meant; 0 at the end of the text
    std::size_t nLine = 1;          // the same as a line and a column, both from 1; the column in characters
    std::size_t nColumn = 1;        //
    std::string strText;            // half a sentence without full stop, fit for a terminal
    std::string strSuggestion;      // "did you mean \"volumeup\"?"; empty when there is none
    std::size_t nOther = kNoOther;  // where another value stands that the text speaks of; kNoOther: of none
    std::size_t nOtherLine = 0;
    std::size_t nOtherColumn = 0;
    bool bOneLine = false;  // the whole text is a line, of which the line's number says nothing

    // So many bytes stand before the text that was looked at.
    void Shift(std::size_t nBefore)
    {
        nOffset += nBefore;
        if (nOther != kNoOther) nOther += nBefore;
    }

    static constexpr std::size_t kNoOther = static_cast<std::size_t>(-1);
};
