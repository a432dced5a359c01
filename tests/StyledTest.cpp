// How a command's parameters are shown in the log: as the JSON library styles them, the whole and each element.
#include "CAPlainNumbers.h"
#include "Conversation.h"

using StyledParams = Conversation;

static std::string AsStyled(const Json::Value& value)
{
    const CAPlainNumbers plain;
    return value.toStyledString();
}

TEST_F(StyledParams, WholeAndElementsAreTheJsonLibrarysText)
{
    for (const char* szParams :
         {"[]", "[{}]", "[1,'a',null,true,2.5,[],{}]", "[{'a':{}},{'b':[]},[[]],[[1,[2]],{'c':{'d':[3]}}]]",
          "[{'website':'http://x/\\n\\t},'},'\\n\\t]','}',']','\\t','/*','//']", "{'a':1}", "7",
          "[[[[[[[1]]]]]],{'':''}]", "[ /* b\n\t} */ {'a': 1 // x\n}, // y\n\t 2 /* z */ ]", "[1,/*c*/2]",
          "['/'] // end\n", "[{'amount':5},{'\\u0001\\u00e9\\ud83d\\ude00':'\\u007f'},'\\u0000']"}) {
        g_Platform.vLog.clear();
        const Json::Value reply = Parsed("{'params':" + std::string(szParams) + "}");
        Json::Value commands;
        commands.append(reply);
        m_Parser.t_ParseTVControl(commands);
        const Json::Value& params = commands[0]["params"];
        EXPECT_EQ(1, g_Platform.Count("jPrm[" + AsStyled(params) + "]")) << szParams;
        for (Json::ArrayIndex i = 0; params.isArray() && i < params.size(); ++i)
            EXPECT_EQ(1, g_Platform.Count("jPrm[" + std::to_string(i) + "][" + AsStyled(params[i]) + "]"))
                << szParams << i;
    }
}
