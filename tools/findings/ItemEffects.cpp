// Items that are dropped, and keys of items that have no effect.
#include "findings/Description.h"
#include "findings/Effects.h"
#include "text/Text.h"

namespace
{

// Which picture an application gets depends on its flag; the set prefers no size of it.
void CheckAppPoster(const Node& appInfo, CReport& report)
{
    const Node flag = appInfo.Member("premium_flag");
    const Node poster = appInfo.Member("poster");
    const std::string strFlag = flag.Text();
    if (report.IsDoubted(flag) || !poster.value.isObject()) return;
    if (strFlag.empty())
        return report.KeyHasNoEffect(appInfo, "poster", "it takes a \"premium_flag\" of \"s\", \"p\" or \"ps\"");
    const char* szTaken = strFlag == "s" ? "images" : "images4premium";
    const char* szOther = strFlag == "s" ? "images4premium" : "images";
    if (!poster.Has(szTaken))
        report.KeyHasNoEffect(poster, szOther, "the flag is " + Quoted(strFlag) + ", which takes " + Quoted(szTaken));
    CheckPoster(poster.Member(szTaken), -1, report);
    if (strFlag == "ps") CheckPoster(poster.Member(szOther), -1, report);
}

void CheckApp(const Node& item, CReport& report)
{
    const Node appInfo = item.Member("app_info");
    if (report.IsDoubted(appInfo)) return;
    if (appInfo.value.isNull())
        return report.AtMissing(item, "app_info", "no-app-info", "the application", "its entry is empty");
    report.AtMissing(appInfo, "id", "no-id", "the application", "the item is dropped");
    CheckAppPoster(appInfo, report);
}

void CheckItem(const Node& item, CReport& report)
{
    const Node type = item.Member("type");
    const std::string strType = type.Text();
    const Description::Kind* pKind = Description::kItem.KindOf(strType);
    if (report.IsDoubted(type) || pKind == nullptr) return;  // told of with the item's shape
    if (!pKind->bOffered)
        return report.AtValue(
            type, NoEffect("the item", Quoted(strType) + " items are not offered to the viewer", "not-offered"));
    if (strType == "apps" || strType == "app") return CheckApp(item, report);
    if (strType == "tvshow") report.KeyHasNoEffect(item, "season", "the record's season is 0 whatever it holds");
    CheckPoster(item.Member("poster").Member("images"), pKind->nSize, report);
}

}  // namespace

void CheckItems(const Node& contents, CReport& report)
{
    for (Json::ArrayIndex i = 0; i < contents.Size(); ++i) CheckItem(contents.Element(i), report);
}
