// What the library asks of the set, and small helpers for text. Static functions without state.
#pragma once

#include <string>

// Callable from any thread that may call the platform. A platform failure becomes a default and a log line.
class __attribute__((visibility("default"))) CCAUtil
{
public:
    // The set's country code, unchanged; "US" when the platform has none.
    static std::string GetCountry();

    // The voice control language as a locale name ("en_US"); empty when the service does not say.
    static std::string GetVCSettingLanguage();

    static bool IsEnLanguage(const std::string& strLanguage);
    static bool IsPTLanguage(const std::string& strLanguage);

    // Whether the voice language is one that the server understands for the set's country.
    static bool CompareCountryLanguage();

    // Whether the set's country is one where conversation is offered.
    static bool IsCountrySupportConv();

    // Whether the factory data says that the set recognises voice.
    static bool IsConversationFactorySupport();

    // Formats into `pStr`, at most `nSize` bytes with the terminating zero; 0 or less writes nothing. Returns the
    // length that the whole text needs. `pStr` null: writes nothing, the result means nothing.
    static int VsnPrint(char* pStr, int nSize, const char* format, ...) __attribute__((format(printf, 3, 4)));

    // Decimal text. A negative number means absent and gives an empty text; see ConvertIntToString.
    static std::string itoa(int nInput);

    // Decimal text of any number.
    static std::string ConvertIntToString(int n);

    // Logs a text in pieces that the platform log takes; stops after the first 102500 bytes.
    static void PrintRcvData(const std::string& strRawData);

    // Whether the adult lock is set, for broadcast programmes or for everything else. Always false: this version
    // does not ask the set.
    static bool FlagAdultLock(bool bBroadcast);

    // Whether the set has a game panel. Always true: this version does not ask the set.
    static bool IsSupportGamePanel();
};
