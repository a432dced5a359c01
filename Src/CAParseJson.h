// Reads the server's reply and the search schema document into records and into the store.
#pragma once

#include <json/value.h>

#include <string>
#include <utility>
#include <vector>

#include "CADataRepository.h"

class CCADataHandler;

// Keeps no state: what it reads goes into the CCADataHandler singleton, which it creates when there is none.
// Nothing in a document makes an operation throw. A missing key, or one of the wrong type, leaves a text empty
// and a number 0 or at its default. An operation that returns bool says false, with the reason in the log, when
// the document is refused or there is no store; the others do not fail.
//
// ParseData is the way in; the parsers of a document's parts can be asked by themselves. They stand in units by the
// reply's keys: CAParseJson.cpp the envelope, CAParseJsonCommands.cpp, ...Contents.cpp, ...Poster.cpp,
// ...Information.cpp and ...Schema.cpp.
class __attribute__((visibility("default"))) CCAParsePacket
{
public:
    virtual ~CCAParsePacket() = default;

    // Parses a reply or a search schema document, by `t_eStatus`. For a reply `nCount` becomes the number of content
    // items that were stored; else it is left alone.
    bool ParseData(E_CA_PARSE_JSON_STATUS t_eStatus, const std::string& t_szRawData, unsigned& nCount);

    bool t_ParseSearchServer(const std::string& t_szRawData, unsigned& nCount);
    bool t_ParseSearchSchema(const std::string& t_szRawData);

    // The reply's small parts.
    bool t_ParseDomian(const Json::Value& domain);
    bool t_ParseNluInfo(const Json::Value& nlu);
    void t_ParseResponseInfo(const Json::Value& info);

    // Commands. The list parsers append one record an element.
    bool t_ParseTVControl(const Json::Value& tvcontrol);
    void t_ParseChannelTVControl(const Json::Value& channels, std::vector<CADataRepository::_Channels>& list);
    void t_ParseUSChannelTVControl(const Json::Value& umdChannels, std::vector<CADataRepository::_Channels>& list);
    void t_ParseUSChannelUMDChannel(const Json::Value& umdChannel, CADataRepository::_UMD_Channel& channel);
    bool t_ParseDisplayControl(const Json::Value& displaycontrol);

    // Reads an element of "tvcontent" into the fresh `stItem`. False when it is of no known type or has nothing to
    // identify it.
    bool t_ParseItem(const Json::Value& element, CADataRepository::_ContentsItem& stItem);

    // Content items. Each fills the part of an item that its kind uses.
    void t_ParseOnTVByOne(const Json::Value& element, CADataRepository::_OnTVContents& contents);
    void t_ParseMovieByOne(const Json::Value& element, CADataRepository::_MnTContents& contents);
    void t_ParseTVShowByOne(const Json::Value& element, CADataRepository::_MnTContents& contents);
    void t_ParseAppsByOne(const Json::Value& appInfo, CADataRepository::_AppContents& contents);
    void t_ParseKidsBook(const Json::Value& element, CADataRepository::_VideoContents& contents);
    void t_ParseFitnessVOD(const Json::Value& element, CADataRepository::_VideoContents& contents);

    // A programme that is shown in detail, with its cast: stored as the handler's content.
    bool t_ParseContent(const Json::Value& content);

    // What content items share.
    void t_ParseChannel(const Json::Value& channel, CADataRepository::_ChannelInfo& info);
    void t_ParseGenres(const Json::Value& genres, std::vector<CADataRepository::_Genres>& list);
    void t_ParseCertifications(const Json::Value& certifications, std::vector<CADataRepository::_Certification>& list);
    void t_ParseEpisode(const Json::Value& episode, CADataRepository::_Episode& stEpisode);
    void t_ParseSchedule(const Json::Value& schedule, CADataRepository::_ScheduleInfo& stSchedule);

    // Fills the poster from "images": picks the size code for the kind of content and finishes the URL. False only
    // when there is no image size table.
    bool t_ParsePoster(const std::string& strKind, const Json::Value& images, CADataRepository::_Poster& poster);

    // Information items.
    void t_ParseWeatherInfo(const Json::Value& element, CADataRepository::_WeatherInfo& weather);
    void t_ParseStockInfo(const Json::Value& element, CADataRepository::_Stock& stock);
    void t_ParseStockValue(const Json::Value& detailed, std::vector<CADataRepository::_StockValue>& list);
    void t_ParseSportsInfo(const Json::Value& element, CADataRepository::_Sports& sports);

    // Whether the item may be offered to the viewer under the set's adult lock.
    bool t_CheckPermit(const CADataRepository::_ContentsItem& item);

    // Time zone offset text ("+09:00") to signed minutes. The positions are fixed, whatever the text.
    int t_GetTimeZoneDifferenceByStr(const std::string& strOffset);

private:
    // The store, made when there is none; null, logged under the operation's name, when memory runs out.
    static CCADataHandler* t_GetStore(const char* szOperation);

    // Logs the error of a document that says that the server failed, under the operation's name. Gives the code if it
    // is a text, and the message.
    static std::pair<std::string, std::string> t_LogError(const char* szOperation, const Json::Value& err);

    // The parts of "rsp", each handed to its parser.
    bool t_ParseReply(const Json::Value& rsp, CCADataHandler& dataHandler, unsigned& nCount);
    void t_ParseContents(const Json::Value& tvcontent, CCADataHandler& dataHandler, unsigned& nCount);
    void t_ParseMnT(const Json::Value& element, bool bTVShow, CADataRepository::_MnTContents& contents);
};
