// The content items of a reply's "tvcontent" and their parts.
// A number of -1 belongs to a part that the item's type does not fill; in the part that it fills a missing key is 0.
// The library passes texts and numbers on as they come; what it looks at is said at the field.
#ifndef PARLO_CADATAREPOSITORY_CONTENTS_H
#define PARLO_CADATAREPOSITORY_CONTENTS_H

#include <string>
#include <vector>

#include "Enumerations.h"
#include "Information.h"
#include "TVControl.h"

namespace CADataRepository
{

// A picture: "images" (or "images4premium") of an item's "poster".
struct _Poster {
    std::string szUrl;        // finished from the template "url" and the size code that suits the set
    std::string szType;       // from "type"
    std::vector<int> vIndex;  // the integers of "index": the size codes that the server can serve
};

// An element of "genres".
struct _Genres {
    std::string szId;    // from "id"
    std::string szName;  // from "name"
};

// An element of "certifications".
struct _Certification {
    std::string szRatingSystem;  // from "cert-system"
    std::string szRating;        // from "certification"
};

// An element of "casting".
struct _Casting {
    std::string szName;  // from "name"
};

// The episode of a TV show: "episode".
struct _Episode {
    std::string szTitle;   // from "title"
    std::string szNumber;  // from the integer "number", as text; empty when it is not an integer
};

// When a programme is broadcast: "schedule".
struct _ScheduleInfo {
    int nDuration = -1;       // from "duration", in the server's unit; 0 when absent, -1 without a schedule
    std::string szStartTime;  // from "starttime"
    std::string szEndTime;    // from "endtime"
};

// A broadcast programme ("epg").
struct _OnTVContents {
    int nYear = -1;                        // from "year"; 0 when absent
    std::string szId;                      // from "id"
    std::string szTitle;                   // from "title"
    std::string szSubtitle;                // unfilled
    std::string szSynopsis;                // unfilled
    std::string szProvider;                // unfilled
    std::string szCertFlag;                // from "cert_flag"; "No" would be refused under an adult lock
    _Poster stPoster;                      // from "poster" / "images"
    _ScheduleInfo stSchedule;              // from "schedule"
    _ChannelInfo stChannelInfo;            // from "channel"
    std::vector<_Certification> vRatings;  // from "certifications"
    std::vector<_Genres> vGenres;          // from "genres"
    int nKind = E_CA_CONTENT_KIND_PROGRAMME;
};

// A movie or a TV show ("movie", "tvshow").
struct _MnTContents {
    int nYear = -1;                        // from "year"; 0 when absent
    int nSeason = -1;                      // TV show: 0, whatever "season" holds; movie: -1
    int nDuration = -1;                    // from "duration", in the server's unit; 0 when absent
    std::string szId;                      // from "id"
    std::string szTitle;                   // from "title"
    std::string szCertFlag;                // from "cert_flag"; "No" would be refused under an adult lock
    _Episode stEpisode;                    // TV show: from "episode"
    _Poster stPoster;                      // from "poster" / "images"
    std::vector<_Certification> vRatings;  // from "certifications"
    std::vector<_Genres> vGenres;          // from "genres"
    int nKind = E_CA_CONTENT_KIND_TVSHOW;
};

// An application ("apps", "app"): the item's "app_info".
struct _AppContents {
    std::string szId;           // from "id"; an item whose "app_info" lacks it is dropped
    std::string szTitle;        // from "title"
    std::string szRunTitle;     // from "runtitle"
    std::string szCategory;     // from "category"
    std::string szCertFlag;     // from "cert_flag"; "No" would be refused under an adult lock
    std::string szPremiumFlag;  // from "premium_flag"; "ps" becomes "p" on a set with a game panel, else "s"
    _Poster stPoster;           // from "poster" / "images" (flag "s") or "images4premium" (flag "p")
};

// A video on demand ("fitness", "kids").
struct _VideoContents {
    int nDuration = -1;         // from "duration", in the server's unit; 0 when absent
    int nViews = -1;            // unfilled
    int nLikes = -1;            // unfilled
    int nPosition = -1;         // unfilled
    std::string szTitle;        // from "title"
    std::string szSubtitle;     // unfilled
    std::string szDescription;  // unfilled
    std::string szAppId;        // from "appid"
    std::string szContentId;    // from "contentid"
    std::string szType;         // from "type"
    std::string szTrainer;      // fitness: from "trainer"
    std::string szCharacter;    // kids: from "character"
    std::string szCategory;     // fitness: from "category"
    std::string szUrl;          // unfilled
    std::string szThumbnail;    // unfilled
    std::string szUploader;     // unfilled
    std::string szUploadTime;   // unfilled
    std::string szLanguage;     // unfilled
    std::string szQuality;      // unfilled
    std::string szLevel;        // unfilled
    std::string szPrice;        // unfilled
    int nKind = 0;              // E_CA_CONTENT_KIND_FITNESS or _KIDS once parsed
    _Poster stPoster;           // from "poster" / "images"
};

// One search result of any kind: an element of "tvcontent". Only the part that szType names is filled.
struct _ContentsItem {
    _OnTVContents stOnTV;    // "epg"
    _MnTContents stMnT;      // "movie", "tvshow"
    _AppContents stApp;      // "apps", "app"
    _VideoContents stVideo;  // "fitness", "kids"
    _Info stInfo;            // "weather", "stock", "sports"
    std::string szType;      // from "type"

    // One line about the item for a log: its type, "->" and its title or what stands for one.
    // "apps" counts as an unknown type here, although it is an application everywhere else.
    std::string GetPrintString() const
    {
        const std::string strLine = szType + "->";
        if (szType == "epg") return strLine + stOnTV.szTitle;
        if (szType == "movie" || szType == "tvshow") return strLine + stMnT.szTitle;
        if (szType == "app") return strLine + stApp.szTitle;
        if (szType == "fitness" || szType == "kids") return strLine + stVideo.szTitle;
        if (szType == "weather") return strLine + stInfo.stWeather.szCondition;
        if (szType == "stock") return strLine + stInfo.stStock.szName;
        if (szType == "sports") return strLine + stInfo.stSports.szCountry;
        return strLine + "unknown type: " + szType;
    }
};

// The programme that is shown in detail, with its cast. The list holds records: a list of plain texts has been
// described too, but what fills it and what reads it work on a cast with names.
struct _Content {
    std::vector<_Casting> vCasting;  // from "casting"; an element without a name is an empty entry
    _OnTVContents stOnTV;
};

}  // namespace CADataRepository

#endif
