// The first command's parameters, everybody's intents, and the commands behind the first.
#include "findings/CommandEffects.h"

#include <algorithm>

#include "findings/Actions.h"
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

class CCommandEffects
{
public:
    CCommandEffects(const Node& commands, const std::string& strAction, const ActionRow& stRow, CReport& report)
        : m_commands(commands), m_strAction(strAction), m_stRow(stRow), m_report(report)
    {
    }
    void FirstParams();
    void NeededParams();
    bool MayServe(const Node& param) const;
    void Intents();
    void Later();

private:
    void Param(const Node& params, Json::ArrayIndex n);
    void Untaken(const Node& param, const std::string& strKey);
    void Position(const Node& param);
    void Overwritten(const Node& params, Json::ArrayIndex n, const std::string& strKey);
    void Negative(const Node& param, const std::string& strKey);
    void Second(const Node& command);
    bool HasNames() const { return m_stRow.eLookup == ActionLookup::NAMES || m_stRow.eLookup == ActionLookup::CAST; }
    bool HasFollowUps() const { return m_stRow.eLookup == ActionLookup::CHANNEL || HasNames(); }
    bool LooksUpIntents() const { return HasNames() && (m_commands.Size() == 2 || m_commands.Size() == 3); }

    const Node& m_commands;
    const std::string& m_strAction;
    const ActionRow& m_stRow;
    CReport& m_report;
};

void CCommandEffects::FirstParams()
{
    const Node params = m_commands.Element(0).Member("params");
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        if (params.value[i].isObject()) Param(params, i);
}

void CCommandEffects::Param(const Node& params, Json::ArrayIndex n)
{
    const Node param = params.Element(n);
    for (const std::string& strKey : param.value.getMemberNames()) {
        if (!param.Has(strKey) || m_report.IsDoubted(param.Member(strKey))) continue;
        if (!Takes(m_stRow, strKey)) {
            if (strKey != "index" || !param.Has("idx")) Untaken(param, strKey);
        } else {
            Negative(param, strKey);
            Overwritten(params, n, strKey);
        }
    }
    if (Takes(m_stRow, "idx")) Position(param);
}

// Whether the object gives the action what it needs, or has a mistake that may stand for that.
bool CCommandEffects::MayServe(const Node& param) const
{
    bool bServes = m_report.IsDoubted(param);
    for (const std::string& strKey : param.value.isObject() ? param.value.getMemberNames() : Json::Value::Members())
        bServes = bServes || m_report.IsDoubted(param.Member(strKey));
    for (const char* szKey : m_stRow.vKeys) {
        if (szKey == nullptr) continue;
        const Node member = param.Member(szKey);
        bServes = bServes || HoldsSomething(member.value) || m_report.IsDoubted(member);
    }
    return bServes;
}

void CCommandEffects::NeededParams()
{
    const Node command = m_commands.Element(0);
    const Node params = command.Member("params");
    if (!m_stRow.Has(NEEDS_PARAMS) || m_report.IsDoubted(params)) return;
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        if (MayServe(params.Element(i))) return;
    const char* szOutcome = m_stRow.eLookup == ActionLookup::SYSTEM    ? "its parameter is empty"
                            : m_stRow.eLookup == ActionLookup::CHANNEL ? "there is no channel"
                                                                       : "there is nothing to choose from";
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        for (const char* szKey : m_stRow.vKeys)
            if (szKey != nullptr && params.Element(i).Has(szKey))
                return m_report.AtMissing(params.Element(i), szKey, "no-parameter", "", szOutcome);
    m_report.AtMissing(command, m_stRow.vKeys[0], "no-parameter", Quoted(m_strAction), szOutcome);
}

void CCommandEffects::Untaken(const Node& param, const std::string& strKey)
{
    const bool bCast = m_stRow.eCode == E_CA_TVCONTROL_DISPLAY_DETAILINFO || m_stRow.eLookup == ActionLookup::CAST;
    if (strKey == "names" && bCast)
        m_report.KeyHasNoEffect(param, strKey, "the names are the cast of what is shown in detail");
    else if (AnyActionTakes(strKey))
        m_report.KeyHasNoEffect(param, strKey, Quoted(m_strAction) + " does not take it");
    else  // a server may well send it, by its own protocol
        m_report.AtKey(
            param, strKey,
            {Severity::NOTE, "unused", "nothing comes of " + Quoted(strKey) + " on the set: no action takes it"});
}

// The position is "idx", and counts only beside an integer "index".
void CCommandEffects::Position(const Node& param)
{
    const Node index = param.Member("index");
    const Node idx = param.Member("idx");
    if (m_report.IsDoubted(index) || m_report.IsDoubted(idx)) return;
    if (idx.value.isInt() && index.value.isNull())
        m_report.KeyHasNoEffect(param, "idx", "it counts only beside an integer \"index\"");
    if (index.value.isInt() && idx.value.isNull())
        m_report.AtKey(param, "index",
                       {Severity::ERROR, "no-position",
                        "\"index\" only says that \"idx\" counts, which is not there: position 0"});
}

void CCommandEffects::Overwritten(const Node& params, Json::ArrayIndex n, const std::string& strKey)
{
    const Json::Value& value = params.Element(n).Member(strKey).value;
    if (value.isArray() && strKey != "names") return;  // channels add up
    if (strKey == "index" || (strKey == "idx" && !params.Element(n).IsInt("index"))) return;
    const std::string strDecider = strKey == "idx" ? "index" : strKey;
    for (Json::ArrayIndex i = n + 1; i < params.Size(); ++i) {
        const Json::Value& later = params.Element(i).Member(strDecider).value;
        const bool bFits = value.isString() ? later.isString() : value.isInt() ? later.isInt() : !later.isNull();
        if (bFits)
            return m_report.KeyHasNoEffect(params.Element(n), strKey, "a later object of \"params\" overwrites it");
    }
}

// Below 0 a number counts as absent.
void CCommandEffects::Negative(const Node& param, const std::string& strKey)
{
    const Node member = param.Member(strKey);
    if (!member.value.isInt() || member.value.asInt() >= 0 || strKey == "index") return;
    const bool bMoreInfo = m_stRow.eCode == E_CA_TVCONTROL_SHOW_MOREINFO;
    m_report.AtValue(member, {Severity::ERROR, "negative",
                              Quoted(strKey) + " is negative: " +
                                  (strKey == "idx" && !bMoreInfo ? "there is no position" : "its parameter is empty")});
}

void CCommandEffects::Intents()
{
    const Json::ArrayIndex nCount = m_commands.Size();
    for (Json::ArrayIndex i = 0; i < nCount; ++i) {
        const Node command = m_commands.Element(i);
        if (command.Member("intent").Text().empty()) continue;
        if (LooksUpIntents() && i + 1 == nCount) continue;
        if (i > (HasFollowUps() ? 1U : 0U)) continue;  // the command is told of as a whole
        if (LooksUpIntents())
            m_report.KeyHasNoEffect(command, "intent", "only the last command's intent is looked up");
        else if (HasNames())
            m_report.KeyHasNoEffect(command, "intent", "an intent is looked up of two or three commands only");
        else
            m_report.KeyHasNoEffect(command, "intent", "no intent is looked up beside " + Quoted(m_strAction));
    }
}

void CCommandEffects::Later()
{
    const Json::ArrayIndex nCount = m_commands.Size();
    const bool bFollowUps = HasFollowUps();
    for (Json::ArrayIndex i = 1; i < nCount; ++i) {
        const Node command = m_commands.Element(i);
        if (m_report.IsDoubted(command)) continue;
        const bool bGiven = command.Has("intent") || m_report.IsDoubted(command.Member("intent"));
        const bool bIntent = LooksUpIntents() && i + 1 == nCount && bGiven;
        if (i == 1 && bFollowUps)
            Second(command);
        else if (!bIntent)
            m_report.AtValue(command, {Severity::WARNING, "not-looked-at",
                                       std::string("the command is not looked at: ") +
                                           (bFollowUps ? "only the second one is, and of two or three the last intent"
                                                       : "only channels or names to choose from have a second one")});
        if ((bIntent || (i == 1 && bFollowUps)) && command.Member("params").Size() > 0)
            m_report.KeyHasNoEffect(command, "params", "only those of the first command count");
    }
}

void CCommandEffects::Second(const Node& command)
{
    const Node action = ActionIn(command, m_report);
    if (m_report.IsDoubted(action) || RowOf(action.Text()).Has(MAY_FOLLOW)) return;
    const bool bIntent = LooksUpIntents() && m_commands.Size() == 2 && command.Has("intent");
    if (bIntent && action.Text().empty()) return;  // it is there for that alone
    if (action.value.isNull())
        m_report.AtValue(command, {Severity::WARNING, "not-looked-at", "the second command has no \"action\""});
    else
        m_report.AtValue(action, {Severity::WARNING, "no-follow-up",
                                  Quoted(action.Text()) + " cannot be a second command: ignored"});
}

}  // namespace

Node ActionIn(const Node& command, const CReport& report)
{
    const Node params = command.Member("params");
    for (Json::ArrayIndex i = params.Size(); i > 0; --i) {
        Node action = params.Element(i - 1).Member("action");
        if (action.value.isString() || report.IsDoubted(action)) return action;
    }
    return command.Member("action");
}

bool CheckCommands(const Node& commands, bool bFailedSearch, CReport& report)
{
    const Node first = commands.Element(0);
    const Node action = ActionIn(first, report);
    const std::string strAction = action.Text();
    const Node own = first.Member("action");
    if (own.strPointer != action.strPointer && !own.Text().empty() && own.Text() != strAction)
        report.KeyHasNoEffect(first, "action", "\"params\" replace it by " + Quoted(strAction));
    if (report.IsDoubted(action) || report.IsDoubted(first)) {
        report.Doubt(action.strPointer);
        return false;
    }
    const ActionRow stRow = RowOf(bFailedSearch ? "" : strAction);
    if (strAction.empty()) {
        const char* szWhy = action.value.isNull() ? "the first command has no \"action\"" : "\"action\" is empty";
        report.AtValue(action.value.isNull() ? first : action,
                       {Severity::ERROR, "no-action", std::string(szWhy) + ": no match, code 0"});
        report.Doubt(action.strPointer);
    } else if (stRow.eLookup == ActionLookup::NONE && !bFailedSearch) {
        report.AtValue(action, {Severity::ERROR, "no-lookup",
                                Quoted(strAction) + " is known, but no lookup answers for it: no match, code 0"});
    }
    if (report.IsDoubted(action)) return false;
    CCommandEffects effects(commands, strAction, stRow, report);
    effects.FirstParams();
    effects.NeededParams();
    effects.Intents();
    effects.Later();
    return stRow.Has(SHOWS_CONTENTS);
}
