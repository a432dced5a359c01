// What the library logs of the set that it runs on.
#pragma once

#include <optional>
#include <string>

#include "session/LogTap.h"

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
