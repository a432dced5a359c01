// What a call to the library came to and on what set, told from its log lines; and which lines the log must have lost,
// since the library writes them in a fixed order.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "session/LogTap.h"
#include "session/Refusal.h"

enum class CallKind { START, REPLY, STATUS, STOP };

// What a line says of its call.
enum CallEffect : unsigned {
    NOTHING = 0,
    ENDS = 1,     // nothing that matters comes behind it
    ACCEPTS = 2,  // the reply is used, the service started
    REFUSES = 4,
    DEBUG = 8,          // of debug priority: a set may not log it, so that nobody misses it
    NO_SERVICE = 16,    // the call found none
    HANDS_OVER = 32,    // a search that the voice application makes
    SEARCHES = 64,      // a failed search
    TWICE = 128,        // a start that found the service there already
    UNSUPPORTED = 256,  // a set, or its country, without conversation
    BRANCH = 512,       // not every call that comes so far writes it
};

// "start", "reply", "status", "stop"
const char* NameOf(CallKind eKind);

// Whether a line, told without its prefix, is written once in a call, and never twice in a row.
bool IsStep(std::string_view szLine);

// Which kind of call writes such a line.
CallKind KindOf(const LogLine& stLine);

class CCallDigest
{
public:
    enum class Result { UNKNOWN, DONE, REFUSED };

    explicit CCallDigest(CallKind eKind) : m_eKind(eKind) {}

    // Takes the next line. Not for the pieces of the reply.
    void Listen(const LogLine& stLine);
    void ListenToPiece();

    // Whether `stLine` cannot be of this call, but begins another one or stands in the middle of it.
    bool IsOfNext(const LogLine& stLine) const;

    CallKind Kind() const { return m_eKind; }
    Result GetResult() const { return m_eResult; }
    bool Has(CallEffect eEffect) const { return (m_nEffects & eEffect) != 0; }
    bool HasRecord() const { return m_nStep > kCode; }  // the reply was read, and its record begun
    int GetStep() const { return m_nStep; }             // the last one of the fixed order that was seen

    // Of a reply: its action word and code as far as the log has them; -1 when not, as before it is decided.
    const std::string& Action() const { return m_strAction; }
    int Code() const { return m_eResult == Result::DONE ? m_nCode : -1; }

    // Why it was refused, half a sentence, with the reply as far as it is known; and the line that says so.
    std::string Reason(std::string_view szReply = {}) const;
    const std::string& ReasonLine() const { return m_refusal.Line(); }

    // "unknown", "done", "refused"; of a stop without a service "no_service"
    const char* Outcome() const;

    // What the log had to hold, up to the last line that it does: "FUNCTION: MESSAGE". Of a call that has not ended
    // the last one is "the end".
    std::vector<std::string> Missing() const;

    // What that means for the call, for a person.
    std::vector<std::string> MissingWords() const;

    // Whether the log has lost lines between those that were taken and `stLine`.
    bool LacksBefore(const LogLine& stLine) const;

    // Says the result in words, "volumeup, code 12", with the reply in the same way.
    std::string Words(std::string_view szReply = {}) const;

    static constexpr int kPieces = 3;  // the step of a reply's pieces
    static constexpr int kCode = 7;    // the one behind which it is known to be no error

private:
    std::vector<std::string> MissingBelow(int nStep) const;
    void TakeValues(const LogLine& stLine);

    CallKind m_eKind;
    Result m_eResult = Result::UNKNOWN;
    int m_nStep = -1;   // the last step of the fixed order that was seen
    int m_nNeeded = 0;  // the steps below it must have been written
    std::set<int> m_vSeen;
    std::string m_strNamed;  // by the last line that names the action
    std::string m_strAction;
    int m_nCode = -1;
    bool m_bChannel = false;
    unsigned m_nEffects = NOTHING;
    CRefusal m_refusal;
};

// What the library logs of the set that it runs on.
// Values as the options --country, --language and --voice-recog take them; "none" where the set had none.
struct SetValues {
    std::optional<std::string> strCountry;
    std::optional<std::string> strLanguage;
    std::optional<std::string> strVoiceRecog;

    void Listen(const LogLine& stLine);

    // Makes the television's substitute answer so, as far as the values are known.
    void Apply() const;

    // "--country US --language en_US"; empty when nothing is known.
    std::string Options() const;
};

// Whether the line says what the television answered, and not what the library made of it.
bool IsAnswer(const LogLine& stLine);
