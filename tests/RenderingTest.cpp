// How the program words and aligns what it shows.
#include <gtest/gtest.h>

#include <clocale>
#include <functional>
#include <sstream>

#include "explaining/Render.h"
#include "text/Progress.h"
#include "text/Text.h"

using namespace CADataRepository;

static const CPaint kPlain(false);

TEST(Text, IsQuotedCutAndCounted)
{
    const std::string strX(237, 'x');
    for (const std::string strRow :
         {"xxx|xxx", "xxxx|xxx... (241 bytes)", "별|별", "별x|별... (241 bytes)", "x별|x... (241 bytes)",
          "xx별|xx... (242 bytes)", "😀|... (241 bytes)", "xxé|xx... (241 bytes)"})
        EXPECT_EQ(strX + strRow.substr(strRow.find('|') + 1), Shown(strX + strRow.substr(0, strRow.find('|'))));
    EXPECT_EQ(R"(" a\"\\\n\x1B \xE2\x80\xAEb""" \"\n)", Quoted(" a\"\\\n\033 \u202Eb") + Quoted("") + Shown(" \\\"\n"));
    const std::size_t nNoText = Shown(std::string(1000, '\x80')).size();
    EXPECT_EQ(237 * 4 + std::string("... (1000 bytes)").size(), nNoText) << "a cut looks back over three bytes at most";
    EXPECT_EQ("a, , b|", Joined({"a", "", "b"}) + "|" + Joined({}));
    EXPECT_EQ("0 men, 1 man, 2 men",
              Count(0, "man", "men") + ", " + Count(1, "man", "men") + ", " + Count(2, "man", "men"));
}

TEST(Text, TablesAreAlignedByColumns)
{
    ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8"));
    EXPECT_EQ("별 |é  |abc|abcd|",
              Padded("별", 3) + "|" + Padded("é", 3) + "|" + Padded("abc", 3) + "|" + Padded("abcd", 3) + "|");
    const std::vector<std::vector<std::string>> vRows = {{"name", "n", "end"}, {"별별별", "", "x"}, {"é", "10", ""}};
    EXPECT_EQ("  name    n   end\n  별별별  -   x\n  é       10  -\n", Table(vRows, 2, kPlain));
    EXPECT_EQ("\033[2ma\033[0m\nbc\n", Table({{"a"}, {"bc"}}, 0, CPaint(true)));
    std::setlocale(LC_CTYPE, "C");
}

TEST(Render, WhatTheLibraryFilledIsShownAndNothingElse)
{
    using Fill = std::function<void(_ConvActionInfo&)>;
    const std::pair<Fill, const char*> kRows[] = {
        {[](auto& r) { r.nReserved1 = r.nReserved2 = 1, r.strFirstAction = r.strUserInputVoice = "x"; }, ""},
        {[](auto& r) { r.strAction = "display\ncontent"; }, "action           display\\ncontent"},
        {[](auto& r) { r.eActionType = 1, r.eSystemAction = E_CA_TVCONTROL_VOLUMEUP, r.strAction = "volumeup"; },
         "action           volumeup, code 12/kind             system action"},
        {[](auto& r) { r.eActionType = 3; }, "action           code 0/kind             no match"},
        {[](auto& r) { r.e2ndAction = E_CA_TVCONTROL_SHOW_MOREINFO; }, "second action    show_moreinfo (67)"},
        {[](auto& r) { r.eActionIntent = E_CA_TVCONTROL_INTENT_SEARCH_TITLE; }, "intent           search_title (5)"},
        {[](auto& r) { r.vSystemActionParam.resize(2); }, "parameters       \"\", \"\""},
        {[](auto& r) { r.vCandidates.resize(1); }, "candidates       \"\""},
        {[](auto& r) {
             r.vChannels.resize(1);
             r.vChannels[0].nMajor = 11, r.vChannels[0].szNumber = "11-1", r.vChannels[0].szSourceID = "S";
         },
         "channels         1 channel/  number  name  type  major  minor  source/  11-1    -     -     11     -      S"},
        {[](auto& r) { r.stDisCtrlInfo.numberOfItem = 2; }, "display control  none (-1) on 2 entries"},
        {[](auto& r) {
             r.stDisCtrlInfo.nAction = 105, r.stDisCtrlInfo.vItems.assign(2, {-1, "t"}),
             r.stDisCtrlInfo.vItems[1].nNumber = 0;
         },
         "display control  record_livecontent (105) on 0 entries/  index  title/  -      t/  0      t"},
        {[](auto& r) { r.strSysResponse = "hi"; }, "sentence         hi"},
        {[](auto& r) { r.strDialogId = "d", r.nDialogSeq = 0; }, "dialog           id \"d\", sequence 0"},
        {[](auto& r) { r.nDialogType = 0; }, "dialog           type 0"},
        {[](auto& r) { r.vDomain.resize(1); }, "domains          \"\""},
        {[](auto& r) {
             r.vSAContents.resize(2);
             for (_SAContents& stContents : r.vSAContents) {
                 stContents.stItem.stMnT.szTitle = "film";
                 stContents.stItem.stMnT.nYear = 2013;
                 stContents.stItem.stApp.szTitle = "app";
                 stContents.stItem.stApp.stPoster.szUrl = "u";
             }
             r.vSAContents[0].stItem.szType = "movie", r.vSAContents[1].stItem.szType = "apps";
         },
         "results          2 results/  type   title  year  poster/  movie  film   2013  -/  apps   app    -     u"}};
    for (const auto& [fill, szWanted] : kRows) {
        _ConvActionInfo info;
        fill(info);
        std::string strWanted = "f\\n: \"u\\x1B\"\n";
        std::istringstream lines(szWanted);
        for (std::string strLine; std::getline(lines, strLine, '/');) strWanted += "  " + strLine + '\n';
        EXPECT_EQ(strWanted, RenderRecord({"f\n", "u\033", ""}, info, kPlain));
    }
    _ConvActionInfo info;
    info.strSysResponse = "hi";
    EXPECT_EQ("\033[1mf: \"u\"\033[0m\n  \033[36msentence         \033[0mhi\n",
              RenderRecord({"f", "u", ""}, info, CPaint(true)));
}

TEST(Progress, IsSharesOfTheWhole)
{
    EXPECT_EQ("a\\n: 0 % of 0 MB", ProgressText("a\n", 0, 1));
    EXPECT_EQ("f: 42 % of 10000 MB", ProgressText("f", 4200000000, 10000000000));
    EXPECT_EQ("f: 100 % of 1 MB", ProgressText("f", 1234567, 1234567));
}
