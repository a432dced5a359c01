// The ordered result list that a caller receives, and the schema rules that order it.
#ifndef PARLO_CADATAREPOSITORY_SEARCHLIST_H
#define PARLO_CADATAREPOSITORY_SEARCHLIST_H

#include <string>
#include <vector>

#include "Contents.h"
#include "Enumerations.h"

namespace CADataRepository
{

// Results of other sources than the voice server. The library carries them in a list entry and fills none.
struct _MusicContents {
    int nKind = 0;
};
struct _PhotoContents {
    int nKind = 0;
};
struct _TuneInContents {
    int nKind = 0;
};
struct _GameContents {
    int nKind = 0;
};
struct _WebBrowser {
    std::string szUrl;
};
struct _LintraContents {
    int nKind = 0;
};
struct _SocialContents {
    int nKind = 0;
};
struct _CastContents {
    int nKind = 0;
};

// A number with its text, such as an entry of a display control result.
struct ExternalItemData {
    int nNumber = 0;
    std::string szText;
};

// One entry of the result list. The library fills nSource and stItem; all other members are unfilled.
struct _SAContents {
    int nSource = 0;       // 0: a result of the voice server
    _ContentsItem stItem;  // the result
    std::string szYouTubeQuery;
    _VideoContents stYouTube;
    _MusicContents stMusic{E_CA_CONTENT_KIND_MUSIC};
    _PhotoContents stPhoto{E_CA_CONTENT_KIND_PHOTO};
    _VideoContents stVideo;
    std::string szPlacement;  // entries beside the schema: empty, they follow the list; else they lead it
    _VideoContents stSocialVideo;
    _PhotoContents stSocialPhoto{E_CA_CONTENT_KIND_PHOTO};
    std::string szSocialId;
    std::string szSocialUser;
    std::string szSocialText;
    _TuneInContents stTuneIn{E_CA_CONTENT_KIND_TUNEIN};
    _GameContents stGame;
    _WebBrowser stWebBrowser;
    _LintraContents stLintra;
    _SocialContents stSocial;
    _CastContents stCast;

    _SAContents() = default;
    explicit _SAContents(const _ContentsItem& stResult) : stItem(stResult) {}
};

// One ordering rule: an element of a schema entry's "rules". Positions count from 0 in the merged list.
struct _CASortRule {
    int nType = 0;   // from "rule"; see E_CA_SORT_RULE
    int nFrom = 0;   // from the decimal text "from": first position at which the rule takes an entry
    int nTo = 0;     // from the decimal text "to": last such position
    int nCycle = 0;  // from the decimal text "cycle": distance between two such positions; 0: only nFrom
};

// The rules for one source of results: an element of "schema".
struct _CASchema {
    int nCategory = 0;                // from "category"; see E_CA_SCHEMA_CATEGORY
    std::vector<_CASortRule> vRules;  // from "rules"
};

}  // namespace CADataRepository

#endif
