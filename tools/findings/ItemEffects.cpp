// Items that are dropped, and keys of items that have no effect.
#include "findings/ItemEffects.h"

#include "findings/Description.h"
#include "findings/Poster.h"
#include "findings/Suggestion.h"
#include "text/Text.h"

namespace
{

void NoEffect(const Node& object, std::string_view szKey, const std::string& strWhy, CReport& report)
{
    if (!object.Has(szKey) || report.IsDoubted(object.Member(szKey))) return;
    report.AtKey(object, szKey, {Severity::WARNING, "no-effect", Quoted(szKey) + " has no effect: " + strWhy});
}

// Which picture an application gets depends on its flag.
void CheckAppPoster(const Node& appInfo, CReport& report)
{
    const Node flag = appInfo.Member("premium_flag");
    const Node poster = appInfo.Member("poster");
    const std::string strFlag = flag.Text();
    const bool bBoth = strFlag == "ps";
    if (report.IsDoubted(flag) || !poster.value.isObject()) return;
    if (strFlag.empty()) {
        NoEffect(appInfo, "poster", "it takes a \"premium_flag\" of \"s\", \"p\" or \"ps\"", report);
        return;
    }
    const char* szTaken = strFlag == "s" ? "images" : "images4premium";
    const char* szOther = strFlag == "s" ? "images4premium" : "images";
    if (!poster.Has(szTaken))
        NoEffect(poster, szOther, std::string("the flag is ") + Quoted(strFlag) + ", which takes " + Quoted(szTaken),
                 report);
    if (poster.Member(szTaken).value.isObject()) CheckPoster(poster.Member(szTaken), "apps", report);
    if (bBoth && poster.Member(szOther).value.isObject()) CheckPoster(poster.Member(szOther), "apps", report);
}

void CheckApp(const Node& item, CReport& report)
{
    const Node appInfo = item.Member("app_info");
    if (report.IsDoubted(appInfo)) return;
    if (appInfo.value.isNull())
        return report.AtValue(
            item, {Severity::ERROR, "no-app-info", "the application has no \"app_info\": its entry is empty"});
    if (appInfo.Member("id").Text().empty() && !report.IsDoubted(appInfo.Member("id")))
        return report.AtMissing(appInfo, "id", "no-id", "the application", "the item is dropped");
    CheckAppPoster(appInfo, report);
}

void CheckVideo(const Node& item, const std::string& strType, CReport& report)
{
    if (strType == "tvshow") NoEffect(item, "season", "the record's season is 0 whatever it holds", report);
    const Node images = item.Member("poster").Member("images");
    if (images.value.isObject()) CheckPoster(images, strType.c_str(), report);
}

void CheckItem(const Node& item, CReport& report)
{
    const Node type = item.Member("type");
    const std::string strType = type.Text();
    const Description::Kind* pKind = Description::kItem.KindOf(strType);
    if (report.IsDoubted(type)) return;
    if (pKind == nullptr)
        report.AtMissing(item, "type", "no-type", "the item", "it is dropped");
    else if (!pKind->bOffered)
        report.AtValue(type, {Severity::WARNING, "not-offered",
                              "the item has no effect: " + Quoted(strType) + " items are not offered to the viewer"});
    else if (strType == "apps" || strType == "app")
        CheckApp(item, report);
    else
        CheckVideo(item, strType, report);
}

}  // namespace

void CheckItems(const Node& contents, CReport& report)
{
    for (Json::ArrayIndex i = 0; i < contents.Size(); ++i)
        if (contents.value[i].isObject()) CheckItem(contents.Element(i), report);
}
