// What the program takes for replies and conversations, byte by byte.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "JsonText.h"
#include "reading/Expectation.h"
#include "reading/Files.h"
#include "reading/Input.h"
#include "records/RecordJson.h"

TEST(Input, TurnIsTheReplyByteByByteOrAReason)
{
    const std::string strDeep = "{\"utterance\":\"u\",\"reply\":" + std::string(2000, '[');
    const std::string kRows[][2] = {
        {R"({"utterance":"u","reply":{"a" : [1.0,  "\u0041/"], "a":1e0 } , "x":{}})",
         R"(u|{"a" : [1.0,  "\u0041/"], "a":1e0 })"},
        {R"( { "reply" :{}, "utterance" : "\u00e9\u0000z" } )" + std::string("\r"), std::string("\xC3\xA9\0z|{}", 7)},
        {R"({"utterance":"별","reply":{"별":"별"}})", R"(별|{"별":"별"})"},
        {R"({"utterance":"","reply":{"first":1},"reply":{"second":2}})", R"(|{"second":2})"},
        {R"({"utterance":"u","reply":"no\tJSON \u0000"})", std::string("u|no\tJSON \0", 11)},
        {R"({"utterance":"u","reply":""})", "u|"},
        {"\xEF\xBB\xBF{\"utterance\":\"u\",\"reply\":{}}", "u|{}"},
        {R"({"utterance":"reply","reply":{"reply":"}"},"x":["\\",{"y":2}]})", R"(reply|{"reply":"}"})"},
        {R"({"utterance":"u","reply":{"a":"\""/*}*/}})", R"(u|{"a":"\""/*}*/})"},
        {R"({"utterance":"u","reply":{},"re\u0070ly":{"b":1}})", R"(u|{"b":1})"},
        {R"({"utterance":"u","reply":{oops}})", "the line is not JSON"},
        {R"({"rsp":{}})", "the line is a reply, which \"parlo reply\" takes"},
        {R"({"utterance":"u","reply":{}} x)", "the line is not JSON"},
        {R"({"utterance":"u","reply":{})", "the line is not JSON"},
        {strDeep, "the line is not JSON"},
        {"[]", "the line is not a JSON object"},
        {"null", "the line is not a JSON object"},
        {R"({"reply":{}})", "the line has no text \"utterance\""},
        {R"({"utterance":1,"reply":{}})", "the line has no text \"utterance\""},
        {R"({"utterance":"u"})", "the line has no \"reply\" that is an object or a text"},
        {R"({"utterance":"u","reply":[{}]})", "the line has no \"reply\" that is an object or a text"}};
    for (const auto& [strLine, strWanted] : kRows) {
        ServerReply stReply;
        std::string strOutcome;
        if (ReadTurn(strLine, stReply, strOutcome)) strOutcome = stReply.strUtterance + '|' + stReply.strText;
        EXPECT_EQ(strWanted, strOutcome) << strLine;
    }
}

// What each entry of a file comes to: "PLACE:LINE=UTTERANCE|REPLY" or "PLACE:LINE!REASON", one behind another.
static std::string Entries(const std::string& strText, FileForm eForm)
{
    const std::string strFile = testing::TempDir() + "parlo-entries-" + std::to_string(getpid());
    std::ofstream(strFile) << strText;
    std::string strEntries;
    CLineFile file(strFile);
    ForEachEntry(file, eForm, "u", [&](const Entry& stEntry) {
        const ServerReply& stReply = stEntry.stReply;
        strEntries += stReply.strSource.substr(strFile.size()) + "/" + std::to_string(stReply.nLine);
        strEntries +=
            stEntry.strReason.empty() ? "=" + stReply.strUtterance + "|" + stReply.strText : "!" + stEntry.strReason;
        strEntries += stReply.bMark ? " MARK;" : ";";
    });
    std::remove(strFile.c_str());
    return strEntries;
}

TEST(Files, TellRepliesFromConversations)
{
    const std::string strMark = "\xEF\xBB\xBF", strTurn = R"({"utterance":"a","reply":{"b":1}})";
    const std::string strReply = "{\n \"rsp\": {}\n}\n",
                      strNoReply = "/1!it is a conversation, which \"parlo conversation\" takes;";
    const struct {
        FileForm eForm;
        std::string strText, strWanted;
    } kRows[] = {{FileForm::CONVERSATION, "\n \t\r\n" + strTurn + "\n\noops\r\n" + strTurn,
                  ":3/3=a|{\"b\":1};:5/5!the line is not JSON;:6/6=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, strMark + strTurn + "\n", ":1/1=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, R"({"utterance":"","reply":{}})", ":1/1!the utterance is empty;"},
                 {FileForm::CONVERSATION, "{\"utterance\n" + strTurn, ":1/1!the line is not JSON;:2/2=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, "", "/1!the conversation is empty;"},
                 {FileForm::CONVERSATION, " \n\r\n", "/3!the conversation is empty;"},
                 {FileForm::CONVERSATION, "{\"rsp\":{}}\n" + strTurn,
                  ":1/1!the line is a reply, which \"parlo reply\" takes;:2/2=a|{\"b\":1};"},
                 {FileForm::CONVERSATION, strMark + strReply,
                  "/1!it is one reply, which \"parlo reply\" takes, not a conversation;"},
                 {FileForm::REPLY, strReply, "/1=u|" + strReply + ";"},
                 {FileForm::REPLY, strMark + "x", "/1=u|x MARK;"},
                 {FileForm::REPLY, "", "/1=u|;"},
                 {FileForm::REPLY, "\n" + strTurn + "\n" + strTurn, strNoReply},
                 {FileForm::EITHER, "\n" + strTurn + "\n[]", ":2/2=a|{\"b\":1};:3/3!the line is not a JSON object;"},
                 {FileForm::EITHER, "oops\n" + strTurn, ":1/1!the line is not JSON;:2/2=a|{\"b\":1};"},
                 {FileForm::EITHER, "oops\noops\n", "/1=u|oops\noops\n;"},
                 {FileForm::EITHER, "{\"rsp\":{}}\n" + strTurn,
                  ":1/1!the line is a reply, which \"parlo reply\" takes;:2/2=a|{\"b\":1};"},
                 {FileForm::EITHER, " \n" + strReply, "/1=u| \n" + strReply + ";"}};
    for (const auto& [eForm, strText, strWanted] : kRows) EXPECT_EQ(strWanted, Entries(strText, eForm)) << strText;
}

TEST(FileUpdate, TakesThePlaceOfWhatWasReadOnly)
{
    const std::string strFile = testing::TempDir() + "parlo-update-" + std::to_string(getpid());
    const auto Text = [&] {
        std::ifstream in(strFile);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    std::ofstream(strFile) << "first";
    EXPECT_EQ("", Update(CLineFile(strFile), "second"));
    EXPECT_EQ("second", Text());
    const CLineFile file(strFile);
    std::ofstream(strFile, std::ios::app) << " and more";
    EXPECT_EQ("it has changed since it was read", Update(file, "third"));
    EXPECT_EQ("second and more", Text());
    std::remove(strFile.c_str());
    EXPECT_EQ("it has changed since it was read", Update(file, "third"));
}

TEST(Expectation, ChangesNoOtherByteOfItsLine)
{
    const std::string kRows[][2] = {
        {R"( {"utterance" : "é\u0041", "reply":{}} )", R"( {"utterance" : "é\u0041", "reply":{}, "expect": {"a":1}} )"},
        {R"({"expect":  {"old":[1]} ,"utterance":"u"})", R"({"expect":  {"a":1} ,"utterance":"u"})"},
        {"\xEF\xBB\xBF{\"expect\":null}\r", "\xEF\xBB\xBF{\"expect\":{\"a\":1}}\r"},
        {"\xEF\xBB\xBF{}", "\xEF\xBB\xBF{\"expect\": {\"a\":1}}"},
        {R"({"a":1 , })", R"({"a":1 , "expect": {"a":1}})"},
        {R"({"a":1 /*,*/})", R"({"a":1 /*,*/, "expect": {"a":1}})"},
        {R"({"a":1/**/,/**/})", R"({"a":1/**/,/**/"expect": {"a":1}})"},
        {"oops", "oops"}};
    for (const auto& [strLine, strWanted] : kRows) {
        EXPECT_EQ(strWanted, WithExpectation(strLine, ParsedJson("{\"a\":1}")));
        EXPECT_EQ(strLine == "oops" ? "null" : "{\"a\":1}", JsonText(MembersOf(strWanted)["expect"]));
    }
}
