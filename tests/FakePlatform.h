// The television that the tests run on: settings go in, log lines come out, and what is opened is counted.
#pragma once

#include <functional>
#include <locale>
#include <optional>
#include <string>
#include <vector>

struct LogLine {
    int nPriority;
    std::string strTag;
    std::string strText;  // "CAService: InitService(41) > m_strAppName:tv" and a colour sequence
};

// What a line says: E (error priority, red) or D (debug priority, blue), the file, the operation and the message.
// "?" and the whole text for what is no line of the library's.
struct ReadLine {
    char cKind = '?';
    std::string strFile{}, strOperation{}, strMessage{};
};
ReadLine Read(const LogLine& line);

struct FakePlatform {
    std::optional<std::string> strCountry = "US";  // without value: the store has no such key
    std::optional<std::string> strLanguage = "en_US";
    int nInitResult = 0, nLanguageResult = 0, nDeinitResult = 0;
    int nFactoryResult = 1, nFactoryValue = 1;

    int nSettingOpen = 0;  // voice settings opened less closed; 0 when a test ends
    bool bKeepLog = true;
    std::vector<LogLine> vLog = {};
    std::function<void(const LogLine&)> onLog = {};  // runs inside the library's log call; may throw
    void (*onCall)() = nullptr;                      // runs inside every call of the platform; may throw or cancel

    void Called() const
    {
        if (onCall != nullptr) onCall();
    }

    // How many lines carry exactly this message.
    int Count(const std::string& strMessage) const;
};

extern FakePlatform g_Platform;

// A locale in which 1.500 is read as 1500, and 5.0 as no number.
std::locale OddLocale();

// GLib's mutex, as the tests have it: nothing sleeps, and what is done with it is counted.
struct FakeMutex {
    int nMade = 0;           // mutexes made less destroyed; 0 when a test ends
    int nRefusals = 0;       // how many of the next tries find the mutex held elsewhere
    bool bRecord = false;    // whether strCalls is written
    std::string strCalls{};  // in order: "l" locked, "w" waited 5 ms, "W" waited another time, "u" unlocked
};

extern FakeMutex g_Mutex;
