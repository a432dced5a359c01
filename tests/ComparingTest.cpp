// How two outcomes differ.
#include <gtest/gtest.h>

#include "JsonText.h"
#include "comparing/Difference.h"

TEST(Comparing, DifferencesFieldByField)
{
    // One; another; how they differ, as "PATH ONE OTHER"; the same where one says only what matters.
    const char* const kRows[][4] = {
        {R"({"a":1,"b":[{"c":"x"}]})", R"({"a":1,"b":[{"c":"x"}]})", "", ""},
        {R"({"a":1})", R"({"a":2,"z":0})", "a 1 2;z  0;", "a 1 2;"},
        {R"({"a":{"b":[{"c":"x"},{}]}})", R"({"a":{"b":[{"c":"y","d":1},{}]}})", "a.b[0].c \"x\" \"y\";a.b[0].d  1;",
         "a.b[0].c \"x\" \"y\";"},
        {R"({"a":[1]})", R"({"a":[1,2]})", "a [1] [1,2];", "a [1] [1,2];"},
        {R"({"typo":1})", "{}", "typo 1 ;", "typo 1 ;"},
        {R"({"Typ":1})", R"({"Type":1})", "Typ 1 ;Type  1;", "Typ 1 did you mean \"Type\"?;"},
        {R"({"a":"1"})", R"({"a":1})", "a \"1\" 1;", "a \"1\" 1;"}};
    for (const auto& [szOne, szOther, szAll, szPart] : kRows) {
        for (const bool bPart : {false, true}) {
            std::string strFound;
            for (const auto& [strPath, strOne, strOther, strHint] :
                 Differences(ParsedJson(szOne), ParsedJson(szOther), bPart))
                strFound += strPath + ' ' + strOne + ' ' + strOther + strHint + ';';
            EXPECT_EQ(bPart ? szPart : szAll, strFound) << szOne;
        }
    }
    EXPECT_EQ("a\\n: now nothing, then \"\\u202e\"", DifferenceText({"a\n", "", "\"\\u202e\"", ""}, "now", "then"));
    EXPECT_EQ("a: now 1, then nothing; why?", DifferenceText({"a", "1", "", "why?"}, "now", "then"));
    EXPECT_EQ(ParsedJson(R"({"a":2,"l":[{"c":3}],"m":[1,2]})"),
              PartLike(ParsedJson(R"({"a":2,"b":9,"l":[{"c":3,"d":4}],"m":[1,2]})"),
                       ParsedJson(R"({"a":0,"l":[{"c":0}],"m":[1],"x":0})")));
}
