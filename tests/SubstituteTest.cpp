// The substitute for the television's functions: what the environment sets, and how the log is written.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "ca_platform.h"

using Setting = std::optional<const char*>;  // without value: the variable is not set

// Every byte but the blanks as \xNN.
static std::string Hexadecimal(const std::string& strText)
{
    std::string strResult;
    for (const char c : strText) {
        char buffer[8] = " ";
        if (c != ' ') std::snprintf(buffer, sizeof buffer, "\\x%02X", static_cast<unsigned char>(c));
        strResult += buffer;
    }
    return strResult;
}

class Substitute : public testing::Test
{
protected:
    Substitute()
    {
        static const std::string s_strFirst = Written("first");
        m_strFirst = s_strFirst;
        for (const char* szName : {"PARLO_COUNTRY", "PARLO_LANGUAGE", "PARLO_VOICE_RECOG", "PARLO_LOG", "NO_COLOR"})
            unsetenv(szName);
    }

    static void Set(const char* szName, const Setting& szValue)
    {
        if (szValue)
            setenv(szName, *szValue, 1);
        else
            unsetenv(szName);
    }

    // What the platform's caller owns, as a text; "null" for none.
    static std::string Taken(char* pText)
    {
        const std::string strText = pText == nullptr ? "null" : pText;
        std::free(pText);
        return strText;
    }

    // What a record at error priority writes.
    static std::string Written(const std::string& strText)
    {
        setenv("PARLO_LOG", "error", 1);
        testing::internal::CaptureStderr();
        __dlog_print(6, "Tag", "%s", strText.c_str());
        return testing::internal::GetCapturedStderr();
    }

    std::string m_strFirst;  // what the process's first record wrote
};

// Stands in for the substitute's, as a program's own function does.
int vc_setting_deinitialize()
{
    return 0;
}

TEST_F(Substitute, SaysOnceWhatItAnswers)
{
    EXPECT_EQ(
        "E parlo-platform-host: no television: the substitute answers __dlog_print vconf_get_str "
        "vc_setting_initialize vc_setting_get_language GetData\nE Tag: first\n",
        m_strFirst);
    EXPECT_EQ("E Tag: second\n", Written("second"));
}

TEST_F(Substitute, CountryAndLanguage)
{
    const std::pair<Setting, std::string> kRows[] = {
        {std::nullopt, "US en_US"}, {"", " "}, {"none", "null null"}, {"None", "None None"}, {"ru_RU", "ru_RU ru_RU"}};
    for (const auto& [szValue, strTaken] : kRows) {
        Set("PARLO_COUNTRY", szValue);
        Set("PARLO_LANGUAGE", szValue);
        const int nWanted = strTaken == "null null" ? -1 : 0;
        char* pLanguage = nullptr;
        EXPECT_EQ(nWanted, vc_setting_initialize()) << strTaken;
        EXPECT_EQ(nWanted, vc_setting_get_language(&pLanguage)) << strTaken;
        EXPECT_EQ(strTaken, Taken(vconf_get_str("db/comss/countrycode")) + ' ' + Taken(pLanguage));
        EXPECT_EQ(0, vc_setting_deinitialize());
        for (const char* szKey : {"db/comss/countrycod", "db/comss/countrycode/", static_cast<const char*>(nullptr)})
            EXPECT_EQ("null", Taken(vconf_get_str(szKey)));
    }
    EXPECT_EQ(-1, vc_setting_get_language(nullptr));
}

TEST_F(Substitute, FactoryData)
{
    const std::tuple<Setting, int, int, std::int32_t> kRows[] = {
        {std::nullopt, 830, 1, 1}, {"0", 830, 1, 0},     {"7", 830, 1, 7},  {"", 830, 1, 0},
        {"x", 830, 1, 0},          {"none", 830, 0, 55}, {"1", 829, 0, 55}, {"1", 0, 0, 55}};
    for (const auto& [szFlag, nItem, nResult, nValue] : kRows) {
        Set("PARLO_VOICE_RECOG", szFlag);
        std::int32_t vBuffer[2] = {55, 55};
        EXPECT_EQ(nResult, GetData(nItem, vBuffer)) << szFlag.value_or("unset") << nItem;
        EXPECT_EQ(nValue, vBuffer[0]) << szFlag.value_or("unset") << nItem;
        EXPECT_EQ(55, vBuffer[1]) << "no more than the flag is written";
    }
    EXPECT_EQ(0, GetData(830, nullptr));
}

TEST_F(Substitute, LevelsThatAreLogged)
{
    const std::pair<Setting, const char*> kRows[] = {
        {std::nullopt, ""}, {"", ""},      {"off", ""},         {"none", ""},
        {"errors", ""},     {"DEBUG", ""}, {"error", "E F ? "}, {"debug", "D I W E F ? "}};
    for (const auto& [szLevel, szLetters] : kRows) {
        Set("PARLO_LOG", szLevel);
        std::string strWanted;
        for (const char* p = szLetters; *p != '\0'; p += 2) strWanted += *p + std::string(" Tag: line 7\n");
        testing::internal::CaptureStderr();
        for (int nPriority = -1; nPriority <= 8; ++nPriority)
            EXPECT_EQ(0, __dlog_print(nPriority, "Tag", "%s %d", "line", 7));
        EXPECT_EQ(strWanted, testing::internal::GetCapturedStderr()) << szLevel.value_or("unset");
    }
}

TEST_F(Substitute, RecordIsOneLineFitForATerminal)
{
    const std::string strKept =
        "m \" \xC2\xA0 \xC3\xA9 \xD8\x9B \xE2\x80\x8D \xE2\x80\xA7 \xE2\x80\xAF \xE2\x81\xA5 \xE2\x81\xAA \xDF\xBF "
        "\xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF";
    EXPECT_EQ("E Tag: " + strKept + "\n", Written(strKept));
    // Controls; C1; what turns the direction of text, at the ends of its ranges; cut characters; overlong ones;
    // surrogates and what is beyond the last character; no UTF-8.
    const std::string strEscaped =
        "\x1B \r \a \x7F \xC2\x80 \xC2\x9B \xC2\x9F \xD8\x9C \xE2\x80\x8E \xE2\x80\x8F \xE2\x80\xA8 \xE2\x80\xAE "
        "\xE2\x81\xA6 \xE2\x81\xA9 \x80 \xBF \xC3 \xE2\x82 \xF0\x9F\x98 \xC0\xAF \xC1\xBF "
        "\xE0\x9F\xBF "
        "\xF0\x8F\xBF\xBF \xED\xA0\x80 \xED\xBF\xBF \xF4\x90\x80\x80 \xF5\x80\x80\x80 \xFE \xFF \xC3\xC3";
    EXPECT_EQ("E Tag: " + Hexadecimal(strEscaped) + "\n", Written(strEscaped));
    EXPECT_EQ("E Tag: one\\ntwo\\t\\xC3\xC3\xA9\\n \\\\n\n", Written("one\ntwo\t\xC3\xC3\xA9\n \\n")) << "reversible";

    testing::internal::CaptureStderr();
    __dlog_print(6, "T\nag", "a%cb", 0);
    __dlog_print(6, nullptr, "%s", "no tag");
    EXPECT_EQ("E T\\nag: a\\x00b\nE : no tag\n", testing::internal::GetCapturedStderr());
    const std::string strLong = Written(std::string(3 << 20, 'x') + '\n');
    EXPECT_EQ((3U << 20) + 10, strLong.size());
    EXPECT_EQ(1, std::count(strLong.begin(), strLong.end(), '\n'));
}

TEST_F(Substitute, ColourIsTakenOffWhereThereIsNoTerminal)
{
    for (const std::string strRow :
         {"text\033[31m|text", "\033[31m|", "text\033[m|text", "\033[34mtext\033[31m|\\x1B[34mtext",
          "text\033[31m |text\\x1B[31m ", "text\033[31;1m|text\\x1B[31;1m", "text\033[31|text\\x1B[31",
          "text\033[2J am|text\\x1B[2J am", "|"}) {
        const std::size_t nBar = strRow.find('|');
        EXPECT_EQ("E Tag: " + strRow.substr(nBar + 1) + "\n", Written(strRow.substr(0, nBar)));
    }
}
