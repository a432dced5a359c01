// Posters: which size code is chosen, and what becomes of the server's template.
#include "Conversation.h"

class Posters : public Conversation
{
protected:
    _Poster Poster(const std::string& strKind, const std::string& strTemplate, const std::string& strIndex)
    {
        _Poster stPoster;
        m_Parser.t_ParsePoster(strKind, Parsed("{'url':'" + strTemplate + "','index':" + strIndex + "}"), stPoster);
        return stPoster;
    }
};

TEST_F(Posters, SizeCodeSuitsTheSetOrIsTheFirst)
{
    const Texts vRows = Words(R"(movie [55,57] 57 movie [55,56] 55 tvshow [1,57] 57 kids [1,57] 57 fitness [1,55] 55
        app [1,59] 59 apps [1,59] 01 epg [3] 03 apps [true,57] 01 apps [2.7] 02 apps ["4"] 00 apps [3000000000] 00 apps [] 00)");
    for (std::size_t i = 0; i < vRows.size(); i += 3)
        EXPECT_EQ(vRows[i + 2], Poster(vRows[i], "%02d.x", vRows[i + 1]).szUrl.substr(0, 2))
            << vRows[i] << vRows[i + 1];
    EXPECT_EQ((std::vector{55, 7}), Poster("movie", "%d", "[55,'x',7,null,1.5]").vIndex);
}

TEST_F(Posters, TemplateIsFilledWithinItsLengthAndRepaired)
{
    const Texts vRows = Words(R"(
        http://h/%d.jpg http://h/57.jpg   http://h/%d.png http://h/57.png   http://h/%d.gif http://h/57.gi
        http://h/no.jpg http://h/no.jpg   %05d.jpg 00057.j   %02d%%|.jpg 57%|.jpg   %%.jpg %.jpg   %hhx.jpg 39.jpg
        http://host/a//%d.jpg http://host/a/57.jpg   http://h//%d.jpg http://h//57.jpg   0123456789//%d.x 0123456789//57.)");
    for (std::size_t i = 0; i < vRows.size(); i += 2) EXPECT_EQ(vRows[i + 1], Poster("movie", vRows[i], "[57]").szUrl);
    EXPECT_EQ("http://host/a/%d.gif", Poster("movie", "http://host/a//%d.gif", "'none'").szUrl) << "not formatted";
    EXPECT_EQ(std::string(3000, 'x') + "57.jpg", Poster("movie", std::string(3000, 'x') + "%d.jpg", "[57]").szUrl);
}

TEST_F(Posters, UnusableTemplateIsPlainText)
{
    for (std::string strTemplate :
         Words("%s %n %ld %lld %*d %.*d %1$d %c %p %f %zd %d%d %1000d %.1000d %hhhd % %%% %d%")) {
        strTemplate += "|.jpg";
        EXPECT_EQ(strTemplate, Poster("movie", strTemplate, "[57]").szUrl);
        EXPECT_EQ(1, g_Platform.Count(" the poster template is not usable: " + strTemplate)) << strTemplate;
    }
}
