// What the library asks of the set, and its helpers for text.
#include "CAUtil.h"
#include "Conversation.h"

using Platform = Conversation;

TEST_F(Platform, LanguageMustFitTheCountry)
{
    const std::string strRows =
        "US:en_US,en_AU,en_GB AU:en_US,en_AU,en_GB GB:en_US,en_AU,en_GB IE:en_US,en_AU,en_GB CA:en_US,en_AU,en_GB "
        "BR:pt_PT,pt_BR PT:pt_PT,pt_BR DE:de_DE CH:de_DE AT:de_DE NL:nl_NL BE:nl_NL NO:nn_NO,nb_NO KR:ko_KR FR:fr_FR "
        "ES:es_ES IT:it_IT CN:zh_CN PL:pl_PL RU:ru_RU DK:da_DK SE:sv_SE FI:fi_FI JP: us: USA: U:";
    const Texts vLanguages = Words(
        "en_US en_AU en_GB pt_PT pt_BR de_DE nl_NL nn_NO nb_NO ko_KR fr_FR es_ES it_IT zh_CN pl_PL ru_RU da_DK sv_SE "
        "fi_FI no_NO EN_US fr_CA");
    for (const std::string& strRow : Words(strRows)) {
        g_Platform.strCountry = strRow.substr(0, strRow.find(':'));
        for (const std::string& strLanguage : vLanguages) {
            g_Platform.strLanguage = strLanguage;
            const bool bFits = strRow.find(strLanguage) != std::string::npos;
            EXPECT_EQ(bFits, CCAUtil::CompareCountryLanguage()) << strRow << " " << strLanguage;
            EXPECT_EQ(strRow.back() == ':' ? 4 : bFits ? 0 : 6, ca_get_conv_status()) << strRow << " " << strLanguage;
        }
    }
}

TEST_F(Platform, WhatTheSetCannotTell)
{
    const struct {
        FakePlatform set;
        int nStatus;
        const char* szReason;
    } kRows[] = {{{std::nullopt, "en_GB", 0, 0, 0, 1, 1}, 0, "vconf get CountryCode error"},
                 {{"", "en_GB", 0, 0, 0, 1, 1}, 0, "vconf get CountryCode is empty"},
                 {{"US", "en_GB", 0, 0, 1, 1, 1}, 0, "vc_setting_deinitialize failed"},
                 {{"US", std::nullopt, 0, 0, 1, 1, 1}, 6, "vc_setting_get_language failed or pLanguage is NULL:0"},
                 {{"US", "en_GB", 0, 5, 0, 1, 1}, 6, "vc_setting_get_language failed or pLanguage is NULL:5"},
                 {{"US", "en_GB", 5, 0, 0, 1, 1}, 6, "vc setting initialize failed. nRet=5"},
                 {{"JP", "en_GB", 0, 0, 0, -1, 256}, 4, "This country [JP] not support conversation"},
                 {{"US", "en_GB", 0, 0, 0, 1, 0}, 4, "not support voice recongition, so not support conversation"},
                 {{"US", "en_GB", 0, 0, 0, 0, 1}, 4, "GetData failed"}};
    for (const auto& [set, nStatus, szReason] : kRows) {
        g_Platform = set;
        EXPECT_EQ(nStatus, ca_get_conv_status()) << szReason;
        EXPECT_TRUE(g_Platform.Count(szReason) > 0 && g_Platform.nSettingOpen == 0) << szReason;
    }
    EXPECT_EQ(0, g_Platform.Count("country[US]")) << "asked although the set cannot recognise voice";
}

TEST_F(Platform, NumbersAsText)
{
    EXPECT_EQ("0, 2147483647, ", CCAUtil::itoa(0) + ", " + CCAUtil::itoa(2147483647) + ", " + CCAUtil::itoa(-1));
    EXPECT_EQ("-2147483648", CCAUtil::ConvertIntToString(-2147483647 - 1));
}

TEST_F(Platform, RawReplyIsLoggedInPieces)
{
    const std::size_t kRows[][3] = {{1, 1, 1}, {500, 1, 500}, {501, 2, 1}, {102400, 205, 400}, {200000, 205, 500}};
    for (const auto& [nLength, nPieces, nLastPiece] : kRows) {
        g_Platform.vLog.clear();
        CCAUtil::PrintRcvData(std::string(nLength, 'x'));
        EXPECT_EQ(2 + nPieces, g_Platform.vLog.size()) << nLength;
        EXPECT_NE(std::string::npos, g_Platform.vLog.back().strText.find("> " + std::string(nLastPiece, 'x') + "\033"));
    }
}
