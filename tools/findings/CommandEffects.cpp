// The first command's parameters, everybody's intents, and the commands behind the first.
#include <algorithm>

#include "findings/Actions.h"
#include "findings/Effects.h"
#include "text/Text.h"

namespace
{

using namespace CADataRepository;

// Whether it is more than an empty text and lists and objects of such. A null in a list is told of by itself.
bool HoldsSomething(const Json::Value& value)
{
    const auto IsMore = [&value](const Json::Value& part) {
        return (value.isArray() && part.isNull()) || HoldsSomething(part);
    };
    if (value.isArray() || value.isObject()) return std::any_of(value.begin(), value.end(), IsMore);
    return !value.isNull() && value != "";
}

// The first command's action, on which everything else of the commands depends.
struct FirstAction : ActionRow {
    std::string strWord;

    bool HasNames() const { return eLookup == ActionLookup::NAMES || eLookup == ActionLookup::CAST; }
    bool LooksUpIntents(const Node& commands) const
    {
        return HasNames() && (commands.Size() == 2 || commands.Size() == 3);
    }
};

void CheckUntaken(const Node& param, const std::string& strKey, const FirstAction& stAction, CReport& report)
{
    if (strKey == "names" && stAction.eLookup == ActionLookup::CAST)
        report.KeyHasNoEffect(param, strKey, "the names are the cast of what is shown in detail");
    else if (AnyActionTakes(strKey))
        report.KeyHasNoEffect(param, strKey, Quoted(stAction.strWord) + " does not take it");
    else  // a server may well send it, by its own protocol
        report.AtKey(
            param, strKey,
            {Severity::NOTE, "unused", "nothing comes of " + Quoted(strKey) + " on the set: no action takes it"});
}

// The position is "idx", and counts only beside an integer "index".
void CheckPosition(const Node& param, CReport& report)
{
    const Node index = param.Member("index");
    const Node idx = param.Member("idx");
    if (report.IsDoubted(index) || report.IsDoubted(idx)) return;
    if (idx.value.isInt() && index.value.isNull())
        report.KeyHasNoEffect(param, "idx", "it counts only beside an integer \"index\"");
    if (index.value.isInt() && idx.value.isNull())
        report.AtKey(param, "index",
                     {Severity::ERROR, "no-position",
                      "\"index\" only says that \"idx\" counts, which is not there: position 0"});
}

void CheckOverwritten(const Node& params, Json::ArrayIndex n, const std::string& strKey, CReport& report)
{
    const Json::Value& value = params.Element(n).Member(strKey).value;
    if (value.isArray() && strKey != "names") return;  // channels add up
    if (strKey == "index" || (strKey == "idx" && !params.Element(n).IsInt("index"))) return;
    const std::string strDecider = strKey == "idx" ? "index" : strKey;
    for (Json::ArrayIndex i = n + 1; i < params.Size(); ++i) {
        const Json::Value& later = params.Element(i).Member(strDecider).value;
        const bool bFits = value.isString() ? later.isString() : value.isInt() ? later.isInt() : !later.isNull();
        if (bFits)
            return report.KeyHasNoEffect(params.Element(n), strKey, "a later object of \"params\" overwrites it");
    }
}

// Below 0 a number counts as absent.
void CheckNegative(const Node& param, const std::string& strKey, const FirstAction& stAction, CReport& report)
{
    const Node member = param.Member(strKey);
    if (!member.value.isInt() || member.value.asInt() >= 0 || strKey == "index") return;
    const bool bMoreInfo = stAction.eCode == E_CA_TVCONTROL_SHOW_MOREINFO;
    report.AtValue(member, {Severity::ERROR, "negative",
                            Quoted(strKey) + " is negative: " +
                                (strKey == "idx" && !bMoreInfo ? "there is no position" : "its parameter is empty")});
}

void CheckParam(const Node& params, Json::ArrayIndex n, const FirstAction& stAction, CReport& report)
{
    const Node param = params.Element(n);
    for (const std::string& strKey : param.value.getMemberNames()) {
        if (!param.Has(strKey) || report.IsDoubted(param.Member(strKey))) continue;
        if (Takes(stAction, strKey)) {
            CheckNegative(param, strKey, stAction, report);
            CheckOverwritten(params, n, strKey, report);
        } else if (strKey != "index" || !param.Has("idx")) {
            CheckUntaken(param, strKey, stAction, report);
        }
    }
    if (Takes(stAction, "idx")) CheckPosition(param, report);
}

// Whether the object gives the action what it needs, or has a mistake that may stand for that.
bool MayServe(const Node& param, const FirstAction& stAction, const CReport& report)
{
    const auto Serves = [&](const char* szKey) {
        return szKey != nullptr && (HoldsSomething(param.Member(szKey).value) || report.IsDoubted(param.Member(szKey)));
    };
    return report.IsDoubtedWithin(param) || std::any_of(stAction.vKeys.begin(), stAction.vKeys.end(), Serves);
}

void CheckNeeded(const Node& command, const FirstAction& stAction, CReport& report)
{
    const Node params = command.Member("params");
    if (!stAction.Has(NEEDS_PARAMS) || report.IsDoubted(params)) return;
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        if (MayServe(params.Element(i), stAction, report)) return;
    const char* szOutcome = stAction.eLookup == ActionLookup::SYSTEM    ? "its parameter is empty"
                            : stAction.eLookup == ActionLookup::CHANNEL ? "there is no channel"
                                                                        : "there is nothing to choose from";
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        for (const char* szKey : stAction.vKeys)
            if (szKey != nullptr && params.Element(i).Has(szKey))
                return report.AtMissing(params.Element(i), szKey, "no-parameter", "", szOutcome);
    report.AtMissing(command, stAction.vKeys[0], "no-parameter", Quoted(stAction.strWord), szOutcome);
}

void CheckIntents(const Node& commands, const FirstAction& stAction, CReport& report)
{
    const Json::ArrayIndex nCount = commands.Size();
    for (Json::ArrayIndex i = 0; i < nCount; ++i) {
        const Node command = commands.Element(i);
        if (command.Member("intent").Text().empty()) continue;
        if (stAction.LooksUpIntents(commands) && i + 1 == nCount) continue;
        if (i > (AsksForSecond(stAction) ? 1U : 0U)) continue;  // the command is told of as a whole
        if (stAction.HasNames())
            report.KeyHasNoEffect(command, "intent", "one is looked up of the last of two or three commands only");
        else
            report.KeyHasNoEffect(command, "intent", "no intent is looked up beside " + Quoted(stAction.strWord));
    }
}

// `bIntent`: its intent counts.
void CheckSecond(const Node& command, bool bIntent, CReport& report)
{
    const Node action = ActionIn(command, &report);
    if (report.IsDoubted(action) || RowOf(action.Text()).Has(MAY_FOLLOW)) return;
    if (bIntent && action.Text().empty()) return;  // it is there for that alone
    if (action.value.isNull())
        report.AtValue(command, {Severity::WARNING, "not-looked-at", "the second command has no \"action\""});
    else
        report.AtValue(action, {Severity::WARNING, "no-follow-up",
                                Quoted(action.Text()) + " cannot be a second command: ignored"});
}

void CheckLater(const Node& commands, const FirstAction& stAction, CReport& report)
{
    const Json::ArrayIndex nCount = commands.Size();
    const bool bFollowUps = AsksForSecond(stAction);
    for (Json::ArrayIndex i = 1; i < nCount; ++i) {
        const Node command = commands.Element(i);
        if (report.IsDoubted(command)) continue;
        const bool bGiven = command.Has("intent") || report.IsDoubted(command.Member("intent"));
        const bool bIntent = stAction.LooksUpIntents(commands) && i + 1 == nCount && bGiven;
        if (i == 1 && bFollowUps)
            CheckSecond(command, bIntent, report);
        else if (!bIntent)
            report.AtValue(command, {Severity::WARNING, "not-looked-at",
                                     std::string("the command is not looked at: ") +
                                         (bFollowUps ? "only the second one is, and of two or three the last intent"
                                                     : "only channels or names to choose from have a second one")});
        if ((bIntent || (i == 1 && bFollowUps)) && command.Member("params").Size() > 0)
            report.KeyHasNoEffect(command, "params", "only those of the first command count");
    }
}

}  // namespace

Node ActionIn(const Node& command, const CReport* pReport)
{
    const Node params = command.Member("params");
    for (Json::ArrayIndex i = params.Size(); i > 0; --i) {
        Node action = params.Element(i - 1).Member("action");
        if (action.value.isString() || (pReport != nullptr && pReport->IsDoubted(action))) return action;
    }
    return command.Member("action");
}

bool CheckCommands(const Node& commands, bool bFailedSearch, CReport& report)
{
    const Node first = commands.Element(0);
    const Node action = ActionIn(first, &report);
    const std::string strAction = action.Text();
    const Node own = first.Member("action");
    if (own.strPointer != action.strPointer && !own.Text().empty() && own.Text() != strAction)
        report.KeyHasNoEffect(first, "action", "\"params\" replace it by " + Quoted(strAction));
    if (report.IsDoubted(action) || report.IsDoubted(first)) {
        report.Doubt(action.strPointer);
        return false;
    }
    const FirstAction stAction{RowOf(bFailedSearch ? "" : strAction), strAction};
    if (strAction.empty()) {
        const char* szWhy = action.value.isNull() ? "the first command has no \"action\"" : "\"action\" is empty";
        report.AtValue(action.value.isNull() ? first : action,
                       {Severity::ERROR, "no-action", std::string(szWhy) + ": no match, code 0"});
        report.Doubt(action.strPointer);
    } else if (stAction.eLookup == ActionLookup::NONE && !bFailedSearch) {
        report.AtValue(action, {Severity::ERROR, "no-lookup",
                                Quoted(strAction) + " is known, but no lookup answers for it: no match, code 0"});
    }
    if (report.IsDoubted(action)) return false;
    const Node params = first.Member("params");
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        if (params.value[i].isObject()) CheckParam(params, i, stAction, report);
    CheckNeeded(first, stAction, report);
    CheckIntents(commands, stAction, report);
    CheckLater(commands, stAction, report);
    return stAction.Has(SHOWS_CONTENTS);
}
