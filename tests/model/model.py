"""A second, independent implementation of the library's behaviour.

Every text is a `str` whose characters are the bytes of the text (code points 0 to 255).
A record is a dict whose keys are the record's field names. A log line is a tuple
(priority, source file, function, message without its colour sequence).
"""
from __future__ import annotations

import re
import struct
from copy import deepcopy
from dataclasses import dataclass, field
from typing import Any, Iterable

from json_text import (Json, JsonError, any_int, elements, int_of, is_int, member, parse_json,
                       scalar_text, size_of, styled, text_of, type_number)

Record = dict[str, Any]


# ---------------------------------------------------------------------------------------------
# Records
# ---------------------------------------------------------------------------------------------

def _texts(names: str) -> Record:
    return dict.fromkeys(names.split(), "")


def new_action_info() -> Record:
    return {"eActionType": 0, "eSystemAction": 0, "e2ndAction": 0, "eActionIntent": 0,
            **_texts("strSysResponse strAction strDialogId strFirstAction strUserInputVoice"),
            "vSystemActionParam": [], "vChannels": [], "vCandidates": [], "vSAContents": [],
            "stDisCtrlInfo": {"numberOfItem": 0, "nAction": -1, "vItems": []},
            "vDomain": [], "nDialogType": -1, "nDialogSeq": -1}


def new_tv_control() -> Record:
    return {"nAmount": -1, "nIndex": -1, "nPlaySpeed": -1, "nListOrder": -1, "nTime": -1,
            **_texts("szDirection szGBFunction szAction szIntent szType szPrevNext szTargetDevice "
                     "szTargetStatus szColorkey szChannelNo szKeyword szWebsite"),
            "vNames": [], "vChannels": []}


UMD_KEYS = {"lineup_id": "szLineupID", "channel_id": "szChannelID",
            "channel_number": "szChannelNumber", "channel_name": "szChannelName",
            "attributes": "szAttributes"}
CHANNEL_KEYS = {"dtv": "szDTV", "number": "szNumber", "name": "szName", "onid": "szONID",
                "tsid": "szTSID", "sid": "szSID", "freq": "szFreq", "source_id": "szSourceID",
                "type": "szType"}


def new_channel() -> Record:
    return {"nMajor": 0, "nMinor": 0, "nPTC": -1, "bUMDChannel": False,
            **dict.fromkeys(CHANNEL_KEYS.values(), ""),
            "stUMDChannel": dict.fromkeys(UMD_KEYS.values(), "")}


def new_poster() -> Record:
    return {"szUrl": "", "szType": "", "vIndex": []}


def new_on_tv() -> Record:
    return {"nYear": -1, **_texts("szId szTitle szCertFlag"), "stPoster": new_poster(),
            "stSchedule": {"nDuration": -1, "szStartTime": "", "szEndTime": ""},
            "stChannelInfo": {"vSourceID": [], "szName": ""},
            "vRatings": [], "vGenres": [], "nKind": 0}


def new_movie() -> Record:
    return {"nYear": -1, "nSeason": -1, "nDuration": -1, **_texts("szId szTitle szCertFlag"),
            "stEpisode": _texts("szTitle szNumber"), "stPoster": new_poster(),
            "vRatings": [], "vGenres": [], "nKind": 2}


def new_app() -> Record:
    return {**_texts("szId szTitle szRunTitle szCategory szCertFlag szPremiumFlag"),
            "stPoster": new_poster()}


def new_video() -> Record:
    return {"nDuration": -1, **_texts("szTitle szAppId szContentId szType szTrainer szCharacter "
                                      "szCategory"), "nKind": 0, "stPoster": new_poster()}


def new_info() -> Record:
    weather = _texts("szCountry szCondition szConditionIcon szLocalTime szCurrentTemp szWeblink "
                     "szLink szCPLogo szLocation")
    stock = _texts("szCode szName szCurrentValue szSymbol szDifference szFluctuation szCurrency "
                   "szCPLogo szCountry szCategory szWeblink szLink")
    sports = _texts("szCountry szRecordType szWeblink szLink")
    return {"szInfoType": "",
            "stWeather": {**weather, "vWInfo": [], "vForeInfo": [], "nInfoKind": 0},
            "stStock": {**stock, "vDetailed": [], "nInfoKind": 0},
            "stSports": {**sports, "vRecords": [], "nInfoKind": 0}}


def new_item() -> Record:
    return {"stOnTV": new_on_tv(), "stMnT": new_movie(), "stApp": new_app(),
            "stVideo": new_video(), "stInfo": new_info(), "szType": ""}


def print_string(item: Record) -> str:
    kind = item["szType"]
    titles = {"epg": ("stOnTV", "szTitle"), "movie": ("stMnT", "szTitle"),
              "tvshow": ("stMnT", "szTitle"), "app": ("stApp", "szTitle"),
              "fitness": ("stVideo", "szTitle"), "kids": ("stVideo", "szTitle"),
              "weather": ("stInfo", "stWeather", "szCondition"),
              "stock": ("stInfo", "stStock", "szName"),
              "sports": ("stInfo", "stSports", "szCountry")}
    if kind not in titles:
        return f"{kind}->unknown type: {kind}"
    found: Any = item
    for name in titles[kind]:
        found = found[name]
    return f"{kind}->{found}"


# ---------------------------------------------------------------------------------------------
# Log and platform utilities
# ---------------------------------------------------------------------------------------------

@dataclass
class Log:
    lines: list[tuple[int, str, str, str]] = field(default_factory=list)

    def red(self, where: str, text: str, *values: Any) -> None:
        self._add(6, where, text, values)

    def blue(self, where: str, text: str, *values: Any) -> None:
        self._add(3, where, text, values)

    def _add(self, priority: int, where: str, text: str, values: tuple) -> None:
        # A text ends at its first NUL byte when it is printed.
        shown = tuple(v.partition("\0")[0] if isinstance(v, str) else v for v in values)
        file, function = where.split(".")
        self.lines.append((priority, file, function, text % shown if shown else text))


ENGLISH, PORTUGUESE = ("en_US", "en_AU", "en_GB"), ("pt_PT", "pt_BR")
LANGUAGES: dict[str, tuple[str, ...]] = {
    "KR": ("ko_KR",), "US": ENGLISH, "AU": ENGLISH, "GB": ENGLISH, "IE": ENGLISH, "CA": ENGLISH,
    "BR": PORTUGUESE, "PT": PORTUGUESE, "DE": ("de_DE",), "CH": ("de_DE",), "AT": ("de_DE",),
    "FR": ("fr_FR",), "ES": ("es_ES",), "IT": ("it_IT",), "NL": ("nl_NL",), "BE": ("nl_NL",),
    "CN": ("zh_CN",), "PL": ("pl_PL",), "RU": ("ru_RU",), "NO": ("nn_NO", "nb_NO"),
    "DK": ("da_DK",), "SE": ("sv_SE",), "FI": ("fi_FI",)}
CONVERSATION_COUNTRIES = ("KR US AU CA BR PT ES CN NO SE AT GB DE IT PL FI BE DK IE FR NL RU "
                          "CH").split()


class Util:
    def __init__(self, log: Log, platform: Record) -> None:
        self.log, self.platform = log, platform

    def itoa(self, number: int) -> str:
        if number < 0:
            self.log.red("CAUtil.itoa", " ERROR - nInput:%d", number)
            return ""
        return str(number)

    def print_received(self, raw: str) -> None:
        where = "CAUtil.PrintRcvData"
        self.log.red(where, "=================print all receive data================")
        self.log.red(where, "###########strRawData############(print max length:50KB; "
                            "actural size:%d)\n", len(raw))
        for at in range(0, min(len(raw), 102400), 500):
            self.log.red(where, "%s", raw[at:at + 500])

    def adult_lock(self) -> bool:
        self.log.red("CAUtil.FlagAdultLock", "need to be intergrated")
        return False

    def game_panel(self) -> bool:
        self.log.red("CAUtil.IsSupportGamePanel", "need to be intergration")
        return True

    def country(self) -> str:
        value, where = self.platform["country"], "CAUtil.GetCountry"
        if value is None:
            self.log.red(where, "vconf get CountryCode error")
        elif value == "":
            self.log.red(where, "vconf get CountryCode is empty")
        else:
            self.log.blue(where, "Countrycode is %s", value)
        return value or "US"

    def language(self) -> str:
        platform, where = self.platform, "CAUtil.GetVCSettingLanguage"
        if platform["init_result"] != 0:
            self.log.red(where, "vc setting initialize failed. nRet=%d", platform["init_result"])
            return ""
        language = platform["language"]
        if platform["language_result"] != 0 or language is None:
            self.log.red(where, "vc_setting_get_language failed or pLanguage is NULL:%d",
                         platform["language_result"])
            language = ""
        if platform["deinit_result"] != 0:
            self.log.red(where, "vc_setting_deinitialize failed")
        return language

    def language_fits_country(self) -> bool:
        country = self.country()
        language = self.language()
        self.log.red("CAUtil.CompareCountryLanguage", "country[%s], voice language[%s]",
                     country, language)
        return language in LANGUAGES.get(country, ())

    def country_supported(self) -> bool:
        country, where = self.country(), "CAUtil.IsCountrySupportConv"
        self.log.red(where, "country[%s]", country)
        if country in CONVERSATION_COUNTRIES:
            return True
        self.log.red(where, "This country [%s] not support conversation", country)
        return False

    def factory_supported(self) -> bool:
        where = "CAUtil.IsConversationFactorySupport"
        result, value = self.platform["factory_result"], self.platform["factory_value"]
        self.log.blue(where, "")
        self.log.red(where, "GetData return:%d, ID_MRT_VOICE_RECOG:%d", result, value)
        if result == 0:
            self.log.red(where, "GetData failed")
        elif value == 0:
            self.log.red(where, "not support voice recongition, so not support conversation")
        return result != 0 and value != 0


# ---------------------------------------------------------------------------------------------
# Poster templates
# ---------------------------------------------------------------------------------------------

_CONVERSION = re.compile(r"%(?:%|([-+ #0]*)([1-9]\d{0,2})?(?:\.(\d{0,3}))?(hh|h)?([diouxX]))")


def _printf_int(match: re.Match, value: int) -> str:
    flags, width, precision, length, kind = match.groups()
    code = {"hh": "b", "h": "h", None: "i"}[length]
    raw = struct.pack("<q", value)[:struct.calcsize("<" + code)]
    number = struct.unpack("<" + (code if kind in "di" else code.upper()), raw)[0]
    digits = format(abs(number), {"o": "o", "x": "x", "X": "X"}.get(kind, "d"))
    sign = ""
    if kind in "di":
        sign = "-" if number < 0 else "+" if "+" in flags else " " if " " in flags else ""
    elif kind in "xX" and "#" in flags and number:
        sign = "0" + kind
    if precision is not None:
        least = int(precision or 0)
        digits = digits.zfill(least) if number or least else ""
    if kind == "o" and "#" in flags and not digits.startswith("0"):
        digits = "0" + digits
    fill = int(width or 0) - len(sign) - len(digits)
    if "-" in flags:
        return sign + digits + " " * fill
    if "0" in flags and precision is None:
        return sign + "0" * fill + digits
    return " " * fill + sign + digits


def format_template(template: str, value: int) -> str | None:
    """The formatted template, or None when it may not be used as a format."""
    out, at, conversions = [], 0, 0
    while (start := template.find("%", at)) >= 0:
        match = _CONVERSION.match(template, start)
        if not match:
            return None
        percent = match.group(5) is None
        conversions += not percent
        out += [template[at:start], "%" if percent else _printf_int(match, value)]
        at = match.end()
    return None if conversions > 1 else "".join(out) + template[at:]


# ---------------------------------------------------------------------------------------------
# Data handler
# ---------------------------------------------------------------------------------------------

class Store:
    def __init__(self, log: Log) -> None:
        self.log = log
        self.error_code = ""
        self.dialog: Record = {"nDialogSeq": -1, "nDialogType": -1, "strDialogId": ""}
        self.schemas: list[Record] = []
        self.initialize()

    def initialize(self) -> None:
        self.items: list[Record] = []
        self.sorted_list: list[Record] = []
        self.is_sorted = self.schema_requested = False
        self.utterance = self.system_message = ""
        self.commands: list[Record] = []
        self.content: Record = {"vCasting": [], "stOnTV": new_on_tv()}
        self.domains: list[str] = []
        self.display_set = False
        self.display: Record = {"numberOfItem": 0, "nAction": -1, "vItems": []}

    def take_schema_request(self) -> bool:
        requested, self.schema_requested = self.schema_requested, False
        return requested

    def add_schema(self, schema: Record) -> None:
        self.schemas.append(schema)
        self.is_sorted = False

    def add_item(self, item: Record) -> None:
        self.items.append(item)
        self.is_sorted = False

    def set_display(self, request: Record) -> None:
        self.log.blue("CADataHandler.SetDisplayControlResult",
                      "SetDisplayControlResult, item size:%d", len(request["vItems"]))
        self.display_set, self.display = True, request

    def read_display(self, info: Record) -> None:
        self.display_set = False
        info["numberOfItem"], info["nAction"] = (self.display["numberOfItem"],
                                                 self.display["nAction"])
        info["vItems"] += [{"nNumber": item["nIndex"], "szText": item["szTitle"]}
                           for item in self.display["vItems"]]

    def contents_list(self) -> list[Record]:
        where = "CADataHandler.GetSAContentsList"
        if not self.is_sorted:
            self.log.blue(where, " Data has been updated, it will be sorted")
            # No source other than the server has entries, so no schema rule ever moves one,
            # and every stored category and rule type is a known one, so none is complained of.
            self.sorted_list = [{"nSource": 0, "stItem": item} for item in self.items]
            self.is_sorted = True
        self.log.blue(where, " set the contents list data")
        return deepcopy(self.sorted_list)


# ---------------------------------------------------------------------------------------------
# Parser
# ---------------------------------------------------------------------------------------------

PARAM_KEYS: list[tuple[str, str, type]] = [  # read before "keyword"; "index" is apart
    ("prevnext", "szPrevNext", str), ("listorder", "nListOrder", int), ("time", "nTime", int),
    ("direction", "szDirection", str), ("gb_function", "szGBFunction", str),
    ("play_speed", "nPlaySpeed", int), ("target_device", "szTargetDevice", str),
    ("target_status", "szTargetStatus", str), ("colorkey", "szColorkey", str)]
DISPLAY_ACTIONS = {"play_content": 102, "alarm_livecontent": 103, "schedule_livecontent": 104,
                   "record_livecontent": 105}
IMAGE_SIZES = {"fitness": 55, "kids": 57, "tvshow": 57, "movie": 57, "app": 59}
CATEGORIES = {"lintra": 1, "youtube": 2, "social": 3, "others": 6}
RULE_TYPES = {"position_after_turn": 0, "position_range_turn": 1, "result_after": 2,
              "result_before": 3}


def decimal(text: str) -> int:
    match = re.match(r"[ \t\n\v\f\r]*([+-]?\d+)", text)
    return int(match.group(1)) if match else 0


class Parser:
    def __init__(self, log: Log, util: Util, store_of: Any) -> None:
        self.log, self.util, self.store_of = log, util, store_of

    def _red(self, function: str, text: str, *values: Any) -> None:
        self.log.red("CAParseJson." + function, text, *values)

    def _blue(self, function: str, text: str, *values: Any) -> None:
        self.log.blue("CAParseJson." + function, text, *values)

    def parse_data(self, status: int, text: str, count: int) -> tuple[bool, int]:
        self._red("ParseData", "t_eStatus:%d", status)
        if status == 0:
            return self.search_server(text)
        if status == 1:
            return self.search_schema(text), count
        self._red("ParseData", "other t_eStatus")
        return False, count

    # -- the reply ----------------------------------------------------------------------------

    def search_server(self, text: str) -> tuple[bool, int]:
        where = "t_ParseSearchServer"
        self._red(where, "Start to parse search server data.")
        try:
            root = parse_json(text)
        except JsonError:
            self._red(where, "json parse error")
            return False, 0
        rsp = member(root, "rsp")
        if rsp is None:
            return False, 0
        store: Store = self.store_of()
        self._blue(where, "TAG_RSP")
        stat = text_of(rsp, "stat")
        self._red(where, "strCode:%s", stat)
        if stat == "fail":
            code = text_of(rsp, "err", "code")
            self._red(where, "errCode:%s, msg:%s", code, scalar_text(member(rsp, "err", "msg")))
            if code == "":
                self._red(where, "nErrCode:%d", int_of(member(rsp, "err"), "code"))
            return False, 0
        if member(rsp, "domain") is not None:
            self._blue(where, "TAG_DOMAIN")
            store.domains = [d for d in elements(member(rsp, "domain")) if isinstance(d, str)]
        dialog = member(rsp, "dialog")
        store.dialog["strDialogId"] = text_of(dialog, "dialog_id")
        if is_int(member(dialog, "dialog_seq")):
            self._blue(where, "TAG_DIALOG TAG_DIALOG_SEQ")
            store.dialog["nDialogSeq"] = int_of(dialog, "dialog_seq")
        sentence = member(rsp, "system_sentence")
        if isinstance(sentence, str):
            self._blue(where, "TAG_SYSTEM_SENTENCE")
            if sentence != "{Null}" and member(rsp, "displaycontrol") is None:
                self._blue(where, "displaycontrol")
                store.system_message = sentence
        if member(rsp, "tvcontrol") is not None:
            self._blue(where, "TAG_TVCONTROL")
            self.tv_control(member(rsp, "tvcontrol"), store)
        if member(rsp, "response_info") is not None:
            self._blue(where, "TAG_RESPONSE_INFO")
        if member(rsp, "displaycontrol") is not None:
            self.display_control(member(rsp, "displaycontrol"), store)
        count = 0
        if member(rsp, "tvcontent") is not None:
            first = store.commands[0]["szAction"] if store.commands else ""
            if len(store.domains) >= 2 and first == "display_content":
                self._red(where, "domain size >= 2 or action is display_content")
                return True, 0
            for element in elements(member(rsp, "tvcontent")):
                count += self.content_item(element, store)
        if member(rsp, "nlu_info") is not None:
            self._red(where, "TAG_NLU_INFO")
            if is_int(member(rsp, "nlu_info", "dialog_type")):
                self._blue("t_ParseNluInfo", "TAG_DIALOG TAG_DIALOG_TYPE")
                store.dialog["nDialogType"] = int_of(member(rsp, "nlu_info"), "dialog_type")
        return True, count

    def content_item(self, element: Json, store: Store) -> bool:
        """Reads one content item and stores it when it is permitted; tells whether it was."""
        where, item = "t_ParseSearchServer", new_item()
        kind = text_of(element, "type")
        if isinstance(member(element, "type"), str):
            self._blue(where, "Type[%s]", kind)
        if kind in ("movie", "tvshow"):
            self.movie(element, item["stMnT"], kind)
        elif kind in ("apps", "app"):
            if member(element, "app_info") is not None:
                self._blue(where, "TAG_APPINFO")
                self.app(member(element, "app_info"), item["stApp"])
                if item["stApp"]["szId"] == "":
                    return False
        elif kind in ("fitness", "kids"):
            self.video(element, item["stVideo"], kind)
        elif kind in ("weather", "stock", "sports"):
            item["stInfo"]["szInfoType"] = kind
            self.information(element, item["stInfo"], kind)
        else:
            self._red(where, " __FAIL__JSON__READER!!!!!")
            return False
        item["szType"] = kind
        if self.permitted(item):
            store.add_item(item)
            return True
        self._blue(where, " This content can not be permitted to play: %s", print_string(item))
        return False

    def permitted(self, item: Record) -> bool:
        part = {"epg": "stOnTV", "movie": "stMnT", "tvshow": "stMnT", "apps": "stApp",
                "app": "stApp"}.get(item["szType"])
        lock, flag = False, ""
        if part:
            flag = item[part]["szCertFlag"]
            lock = self.util.adult_lock()
            result = not lock or flag != "No"
        else:
            self._red("t_CheckPermit", "Other type")
            result = False
        self._blue("t_CheckPermit", " t_CheckPlay(bAdultLock: %d, strCert: %s) return %d### "
                   "Content:%s", lock, flag, result, print_string(item))
        return result

    # -- commands and display control ---------------------------------------------------------

    def tv_control(self, value: Json, store: Store) -> None:
        where = "t_ParseTVControl"
        for element in elements(value):
            command = new_tv_control()
            command["szAction"], command["szIntent"] = (text_of(element, "action"),
                                                        text_of(element, "intent"))
            self._red(where, "szAction:[%s], szIntent:%s", command["szAction"],
                      command["szIntent"])
            params = member(element, "params")
            if params is not None:
                self._blue(where, "jPrm[%s]", styled(params))
                for index, one in enumerate(elements(params)):
                    self._blue(where, "jPrm[%d][%s]", index, styled(one))
                    self.tv_control_params(one, command)
            self._blue(where, "stTVCtl:website[%s], keyword:[%s]", command["szWebsite"],
                       command["szKeyword"])
            store.commands.append(command)

    def tv_control_params(self, one: Json, command: Record) -> None:
        where = "t_ParseTVControl"

        def take(key: str, name: str, kind: type) -> None:
            found = member(one, key)
            if kind is int and is_int(found):
                command[name] = int_of(one, key)
            elif kind is str and isinstance(found, str):
                command[name] = found

        keyword, website = member(one, "keyword"), member(one, "website")
        self._blue(where, "keyword is string[%d], website is string:[%d]",
                   isinstance(keyword, str), isinstance(website, str))
        take("amount", "nAmount", int)
        if is_int(member(one, "index")):
            command["nIndex"] = int_of(one, "idx")
        for key, name, kind in PARAM_KEYS:
            take(key, name, kind)
        for key, name, tag in (("keyword", "szKeyword", "TAG_KEYWORD"),
                               ("website", "szWebsite", "TAG_WEBSITE")):
            if isinstance(member(one, key), str):
                take(key, name, str)
                self._blue(where, "jPrm[i][" + tag + "].asString():[%s]", command[name])
                self._blue(where, "stTVCtl." + name + ":[%s]", command[name])
        take("type", "szType", str)
        take("channel_no", "szChannelNo", str)
        take("action", "szAction", str)
        if member(one, "names") is not None:
            command["vNames"] = [scalar_text(name) for name in elements(member(one, "names"))]
        for element in elements(member(one, "channels")):
            channel = new_channel()
            channel |= {name: text_of(element, key) for key, name in CHANNEL_KEYS.items()}
            channel |= {"nMajor": int_of(element, "major"), "nMinor": int_of(element, "minor"),
                        "nPTC": int_of(element, "ptc")}
            command["vChannels"].append(channel)
        for element in elements(member(one, "umd_channels")):
            channel = new_channel()
            umd = {name: text_of(element, "umd_channel", key) for key, name in UMD_KEYS.items()}
            channel |= {"bUMDChannel": True, "stUMDChannel": umd,
                        "szNumber": umd["szChannelNumber"], "szName": umd["szChannelName"],
                        "szType": "A" if "Analog" in umd["szAttributes"] else "H"}
            command["vChannels"].append(channel)

    def display_control(self, value: Json, store: Store) -> None:
        where = "t_ParseDisplayControl"
        self._red(where, "jvalue type:%d, size:%d", type_number(value), size_of(value))
        for element in elements(value):
            self._blue(where, "disobj type is %d", type_number(element))
            if not isinstance(element, dict):
                continue
            items = []
            params = member(element, "params")
            if params is not None:
                self._blue(where, " disparam type is %d", type_number(params))
                items = [{"nIndex": int_of(one, "index", -1), "szTitle": text_of(one, "title")}
                         for one in elements(params)]
            store.set_display({"numberOfItem": len(items), "vItems": items,
                               "nAction": DISPLAY_ACTIONS.get(text_of(element, "action"), -1)})

    # -- content ------------------------------------------------------------------------------

    def content(self, value: Json) -> bool:
        store: Store = self.store_of()
        content: Record = {"vCasting": [], "stOnTV": new_on_tv()}
        content["vCasting"] = [{"szName": text_of(one, "name")}
                               for one in elements(member(value, "casting"))]
        self.on_tv(value, content["stOnTV"])
        if not content["stOnTV"]["stChannelInfo"]["vSourceID"]:
            self._red("t_ParseContent", " parse ontv info failed")
        store.content = content
        return True

    def on_tv(self, value: Json, part: Record) -> None:
        part |= {"nKind": 0, "szId": text_of(value, "id"), "szTitle": text_of(value, "title"),
                 "nYear": int_of(value, "year"), "szCertFlag": text_of(value, "cert_flag")}
        self._red("t_ParseOnTVByOne", "title = [%s]", part["szTitle"])
        self.poster("epg", member(value, "poster", "images"), part["stPoster"])
        self.ratings_and_genres(value, part)
        channel, schedule = member(value, "channel"), member(value, "schedule")
        if channel is not None:
            sources = elements(member(channel, "source_id"))
            part["stChannelInfo"]["vSourceID"] += [s for s in sources if isinstance(s, str)]
            part["stChannelInfo"]["szName"] = text_of(channel, "name")
        if schedule is not None:
            part["stSchedule"] = {"nDuration": int_of(schedule, "duration"),
                                  "szStartTime": text_of(schedule, "starttime"),
                                  "szEndTime": text_of(schedule, "endtime")}

    def movie(self, value: Json, part: Record, kind: str) -> None:
        part |= {"nKind": 1 if kind == "movie" else 2, "szId": text_of(value, "id"),
                 "szTitle": text_of(value, "title"), "nYear": int_of(value, "year"),
                 "nDuration": int_of(value, "duration"), "szCertFlag": text_of(value, "cert_flag")}
        if kind == "tvshow":
            # The season itself must be an integer, which then has no member "number".
            part["nSeason"] = 0
            episode = member(value, "episode")
            if episode is not None:
                number = member(episode, "number")
                part["stEpisode"] = {"szTitle": text_of(episode, "title"),
                                     "szNumber": scalar_text(number) if is_int(number) else ""}
        self.poster(kind, member(value, "poster", "images"), part["stPoster"])
        self.ratings_and_genres(value, part)

    def ratings_and_genres(self, value: Json, part: Record) -> None:
        part["vRatings"] += [{"szRatingSystem": text_of(one, "cert-system"),
                              "szRating": text_of(one, "certification")}
                             for one in elements(member(value, "certifications"))]
        part["vGenres"] += [{"szId": text_of(one, "id"), "szName": text_of(one, "name")}
                            for one in elements(member(value, "genres"))]

    def app(self, value: Json, part: Record) -> None:
        flag = text_of(value, "premium_flag")
        part |= {"szId": text_of(value, "id"), "szTitle": text_of(value, "title")}
        self._red("t_ParseAppsByOne", "premiumflag:%s", flag)
        panel = self.util.game_panel()
        if flag == "ps":
            flag = "p" if panel else "s"
        part["szPremiumFlag"] = flag
        if flag == "p" and not panel:
            return
        part |= {"szRunTitle": text_of(value, "runtitle"), "szCategory": text_of(value, "category"),
                 "szCertFlag": text_of(value, "cert_flag")}
        images = {"s": "images", "p": "images4premium"}.get(flag)
        if images:
            self.poster("apps", member(value, "poster", images), part["stPoster"])

    def video(self, value: Json, part: Record, kind: str) -> None:
        keys = {"appid": "szAppId", "contentid": "szContentId", "type": "szType",
                "title": "szTitle"}
        keys |= ({"character": "szCharacter"} if kind == "kids" else
                 {"trainer": "szTrainer", "category": "szCategory"})
        part |= {name: text_of(value, key) for key, name in keys.items()}
        part |= {"nDuration": int_of(value, "duration"), "nKind": 10 if kind == "kids" else 8}
        self.poster(kind, member(value, "poster", "images"), part["stPoster"])

    def information(self, value: Json, info: Record, kind: str) -> None:
        """Information items are always refused: only what the log shows of them is read."""
        if kind == "weather":
            info["stWeather"]["szCondition"] = text_of(value, "condition")
        elif kind == "stock":
            info["stStock"]["szName"] = text_of(value, "name")
        else:
            info["stSports"]["szCountry"] = text_of(value, "country")
            for record in elements(member(value, "records")):
                for standing in elements(member(record, "standing")):
                    for stat in elements(member(standing, "season_stats")):
                        self._blue("t_ParseSportsInfo", " season stat is %s", scalar_text(stat))

    def poster(self, kind: str, images: Json, poster: Record) -> None:
        if images is None:
            return
        where, url = "t_ParsePoster", text_of(images, "url")
        poster["szType"] = text_of(images, "type")
        index = member(images, "index")
        if isinstance(index, list):
            poster["vIndex"] += [int(one) for one in index if is_int(one)]
            chosen = any_int(index[0]) if index else 0
            self.log.red("CAImageSizeTable.GetSize", "CCAImageSizeTable::GetSize, strKey:%s",
                         "1080;" + kind)
            wanted = IMAGE_SIZES.get(kind)
            if wanted is not None:
                self._blue(where, "####t_ParsePoster::nTmpIndex: %d", wanted)
                if wanted in poster["vIndex"]:
                    chosen = wanted
            self._blue(where, "####t_ParsePoster::nIndex: %d", chosen)
            formatted = format_template(url, chosen)
            if formatted is None:
                self._red(where, " the poster template is not usable: %s", url)
                formatted = url
            # The bound is the template's length, and the buffer's text ends at a NUL byte.
            url = formatted[:max(len(url) - 1, 0)].partition("\0")[0]
            if len(url) > 2 and url[-2:] in ("pn", "jp"):
                url += "g"
        slashes = url.rfind("//")
        if slashes > 10:
            self._red(where, " the server's ontv type url is error")
            url = url[:slashes] + url[slashes + 1:]
        poster["szUrl"] = url

    # -- the search schema --------------------------------------------------------------------

    def search_schema(self, text: str) -> bool:
        where = "t_ParseSearchSchema"
        if text == "":
            self._red(where, "t_szRawData is empty")
            return False
        store: Store = self.store_of()
        try:
            rsp = member(parse_json(text), "rsp")
        except JsonError:
            self._red(where, "json parse error")
            return False
        if text_of(rsp, "stat") == "fail":
            code, message = text_of(rsp, "err", "code"), scalar_text(member(rsp, "err", "msg"))
            self._red(where, "errCode:%s, msg:%s", code, message)
            if code == "":
                number = int_of(member(rsp, "err"), "code", -1)
                code = message if number == -1 else str(number)
            store.error_code = code
            return False
        category, rule_type = 1, 0  # what an unknown first word stands for
        for element in elements(member(rsp, "schema")):
            word = text_of(element, "category")
            if word not in CATEGORIES:
                self._red(where, " invalide category: %s", word)
            category = CATEGORIES.get(word, category)
            rules = []
            for one in elements(member(element, "rules")):
                bounds = [decimal(text_of(one, key)) for key in ("from", "to", "cycle")]
                word = text_of(one, "rule")
                self._red(where, "type:%s", word)
                if word not in RULE_TYPES:
                    self._red(where, " invalide type: %s", word)
                rule_type = RULE_TYPES.get(word, rule_type)
                rules.append(dict(zip(("nType", "nFrom", "nTo", "nCycle"), [rule_type, *bounds])))
            store.add_schema({"nCategory": category, "vRules": rules})
        return True

    def time_zone(self, text: str) -> int:
        def pair(at: int) -> int:
            match = re.match(r"[0-9]+", text[:254][at:at + 2])
            return int(match.group()) if match else 0

        minutes = pair(1) * 60 + pair(4)
        minutes = -minutes if text[:1] == "-" else minutes
        self._red("t_GetTimeZoneDifferenceByStr", " t_GetTimeZoneDifferenceByStr time : %s %d",
                  text, minutes)
        return minutes


# ---------------------------------------------------------------------------------------------
# Action map
# ---------------------------------------------------------------------------------------------

ACTION_WORDS = """1 poweroff 2 poweron 3 set_sleeptimer 4 delete_sleeptimer 5 set_channel
6 move_channel 7 change_channel 8 display_channel 9 channelup 10 channeldown 11 channelback
12 volumeup 13 volumedown 14 muteon 15 muteoff 16 set_volume 17 change_exsource 18 show_exsource
19 login 20 logout 21 set_remocon 22 play_content 24 control_focus 25 control_page 26 execute_key
27 go_back 28 run_vistar 29 control_gb 30 show_pvr 31 schedule_program_cancelation
31 show_scheduled 32 get_currenttime 33 show_guide 34 record_livecontent 35 quit_record
36 alarm_livecontent 37 schedule_livecontent 38 install_application 39 run_connectguide
40 run_remotesetup 41 run_recording 42 display_detailinfo 43 display_detailinfo_cast
44 display_detailinfo_director 45 display_detailinfo_genre 46 display_cast 47 display_director
48 display_genre 49 show_optlist_for_sleeptimer 50 show_optlist_for_confirm
51 show_optlist_detailinfo_for_confirm 52 show_optlist_for_reservation 53 show_colorkey
54 show_exdevice 55 display_candidates 56 show_colorkeys 57 run_webbrowser 58 delete_item
59 show_alarmedprogram 60 show_scheduledprogram 61 uninstall_application 65 run_youtube
67 show_moreinfo 68 social_talk 69 voice_guide_on 70 voice_guide_off 71 video_description_on
72 video_description_off 73 high_contrast_on 74 high_contrast_off 75 enlarge_on 76 enlarge_off
77 caption_on 78 caption_off 79 run_mycontents 80 run_channellist 81 run_speakerlist
82 run_programguide 83 soccer_mode_on 84 soccer_mode_off 85 sports_mode_on 86 sports_mode_off
87 run_ondra 94 run_guidix""".split()
ACTIONS = {word: int(code) for code, word in zip(ACTION_WORDS[::2], ACTION_WORDS[1::2])}
INTENTS = {"play": 1, **{"search_" + word: code for code, word in enumerate(
    "title genre channel date weekday start_time end_time duration year grade".split(), 5)}}
SECOND_ACTIONS = (5, 22, 34, 36, 37, 67)
CHANNEL_ACTIONS = (5, 6, 8, 36, 37)
CANDIDATE_ACTIONS = (*range(44, 53), 55)
PLAIN_ACTIONS = {4, 11, 14, 15, 18, 19, 20, 24, 25, 27, 28, *range(30, 36), *range(38, 42), 53, 54,
                 *range(59, 64), 66, *range(68, 88), 94}
FIELD_ACTIONS: dict[int, list[str]] = {
    **dict.fromkeys((1, 2, 17, 21), ["szTargetDevice"]), 3: ["nTime"], 7: ["szChannelNo"],
    **dict.fromkeys((9, 10, 12, 13, 16), ["nAmount"]), 22: ["nIndex"], 26: ["szColorkey"],
    29: ["szGBFunction"], 42: ["nIndex"], 57: ["szKeyword", "szWebsite"], 65: ["szKeyword"],
    67: ["nIndex"]}


class ActionMap:
    def __init__(self, log: Log, util: Util, store_of: Any) -> None:
        self.log, self.util, self.store_of = log, util, store_of
        log.blue("CASystemActionMap.InitializeMap", "")

    def _look_up(self, where: str, command: Record) -> int:
        self.log.blue(where, "")
        self.log.red(where, "strAction = %s", command["szAction"])
        code = ACTIONS.get(command["szAction"], 0)
        self.log.red(where, "eControl = %d", code)
        return code

    def intent(self, command: Record) -> int:
        where = "CASystemActionMap.GetActionIntent"
        self.log.blue(where, "")
        self.log.red(where, "strActionIntent = %s", command["szIntent"])
        code = INTENTS.get(command["szIntent"], 0)
        self.log.red(where, "eControl = %d", code)
        return code

    def second_action(self, command: Record) -> int:
        where = "CASystemActionMap.Get2ndAction"
        code = self._look_up(where, command)
        code = code if code in SECOND_ACTIONS else 0
        self.log.red(where, "eControl = %d", code)
        return code

    def system_action(self, command: Record, params: list[str]) -> int:
        where = "CASystemActionMap.GetSystemAction"
        code = self._look_up(where, command)
        fields = FIELD_ACTIONS.get(code, [])
        if code in (22, 42) and command["nIndex"] < 0:
            fields, code = [], 23 if code == 22 else 42
        elif code not in FIELD_ACTIONS and code not in PLAIN_ACTIONS:
            code = 0
        for name in fields:
            value = command[name]
            if name == "szColorkey":
                self.log.blue(where, "szColorkey:%s", value)
            elif name != "szGBFunction":
                mark = " = %d" if isinstance(value, int) else " = %s"
                self.log.blue(where, "stTVControl." + name + mark, value)
            params.append(self.util.itoa(value) if isinstance(value, int) else value)
        self.log.red(where, "eControl:%d", code)
        return code

    def candidate_action(self, command: Record, candidates: list[str]) -> int:
        where = "CASystemActionMap.GetSystemActionCandidate"
        code = self._look_up(where, command)
        if code in CANDIDATE_ACTIONS:
            candidates[:] = command["vNames"]
        elif code in (42, 43):
            candidates[:] = [one["szName"] for one in self.store_of().content["vCasting"]]
        else:
            code = 0
        self.log.red(where, "eControl:%d", code)
        return code

    def channel_action(self, command: Record, channels: list[Record]) -> int:
        where = "CASystemActionMap.GetSystemActionChannel"
        code = self._look_up(where, command)
        if code in CHANNEL_ACTIONS:
            channels[:] = deepcopy(command["vChannels"])
        else:
            code = 0
        self.log.red(where, "eControl:%d", code)
        return code


# ---------------------------------------------------------------------------------------------
# Service and entry points
# ---------------------------------------------------------------------------------------------

CONTENT_ACTIONS = (22, 23, 34, 35, 36, 37, 38, 55, 61)


class Service:
    def __init__(self, life: "Life") -> None:
        self.life, self.log = life, life.log
        self.map = ActionMap(life.log, life.util, life.store_of)
        self.has_store = False
        self.raw_packet = ""

    def _red(self, function: str, text: str, *values: Any) -> None:
        self.log.red("CAService." + function, text, *values)

    def init(self, name: str) -> bool:
        if self.has_store:
            self._red("InitService", "init service again, please check it!!")
            return False
        self._red("InitService", "m_strAppName:%s", name)
        self.life.store_of()
        self.has_store = True
        return True

    def status(self) -> int:
        self.log.blue("CAService.GetConversationStatus", "Get conversation status")
        util = self.life.util
        if not util.factory_supported() or not util.country_supported():
            return 4
        return 0 if util.language_fits_country() else 6

    def parse(self, utterance: str, raw: str) -> bool:
        where = "ParseDataFlow"
        if utterance == "" or raw == "":
            self._red(where, "strPreAllResult is empty() or strRawData is empty(%u) or m_pDataMgr "
                             "is NULL", len(utterance))
            return False
        store = self.life.store_of()
        store.utterance = utterance
        self.life.util.print_received(raw)
        parser = self.life.parser()
        if store.take_schema_request() and not parser.parse_data(1, "", 0)[0]:
            self._red(where, "parse schema file failed, need to check it, strFileSchema:%s", "")
        if not parser.parse_data(0, raw, 0)[0]:
            self._red(where, "parse speech data failed")
            return False
        self.raw_packet = raw
        return True

    def fill(self, info: Record) -> bool:
        where, store = "GetSpeechActionData", self.life.store_of()
        info["strSysResponse"] = store.system_message
        self._red(where, "strSysResponse:[%s]", info["strSysResponse"])
        if not store.commands:
            self._red(where, "vTVControl is empty")
            return False
        info["strAction"] = store.commands[0]["szAction"]
        if not self.is_search(store):
            self.set_speech_info(info, store)
        elif info["strAction"] != "search_failed":
            self.log.blue("CAService." + where, "content list for search")
            self._red("t_UpdateSearchResult", "strSearchKeywords:%s", store.utterance)
            info["vSystemActionParam"] += [store.utterance, self.raw_packet]
            info["strSysResponse"] = ""
        store.initialize()
        self.raw_packet = ""
        return True

    def is_search(self, store: Store) -> bool:
        where, domains = "t_IsContentsSearchAction", store.domains
        if not domains:
            self._red(where, "vDomain is empty")
            return False
        for index, domain in enumerate(domains):
            self._red(where, "domain[%d]:%s", index, domain)
        for index, command in enumerate(store.commands):
            self._red(where, "szAction[%d]:%s", index, command["szAction"])
        first = store.commands[0]["szAction"]
        if domains == ["tvcontrol"] and first == "search_failed":
            self._red(where, "search_failed will goto search")
            return True
        if len(domains) >= 2 and first == "display_content":
            self._red(where, "Show search result")
            return True
        return False

    def set_speech_info(self, info: Record, store: Store) -> None:
        where, params = "t_SetSpeechInfo", []  # type: tuple[str, list[str]]
        first = store.commands[0]
        code = self.map.system_action(first, params)
        if code == 0:
            self._red(where, "it is not tv control command")
            params = []
            code = self.map.channel_action(first, info["vChannels"])
            if code != 0:
                info["e2ndAction"] = self.second_action(store.commands)
                params += [channel["szSourceID"] for channel in info["vChannels"]]
            else:
                code = self.map.candidate_action(first, info["vCandidates"])
                self._red(where, "eSysAction:%d", code)
                if code != 0:
                    info["e2ndAction"] = self.second_action(store.commands)
                    info["eActionIntent"] = self.action_intent(store.commands)
                    params += [store.utterance, ""]
        info["vSystemActionParam"] = params
        if store.display_set:
            display = info["stDisCtrlInfo"]
            store.read_display(display)
            self._red(where, "nAction:%d, numberOfItem:%d, size:%d", display["nAction"],
                      display["numberOfItem"], len(display["vItems"]))
        info["eActionType"], info["eSystemAction"] = (1, code) if code else (3, 0)
        if code == 0:
            self._red(where, "No one match, error ouccured:%d", code)
        if code in CONTENT_ACTIONS:
            info["vSAContents"] = store.contents_list()
        info |= {**store.dialog, "vDomain": store.domains, "strUserInputVoice": store.utterance,
                 "strFirstAction": first["szAction"]}

    def second_action(self, commands: list[Record]) -> int:
        code = self.map.second_action(commands[1]) if len(commands) >= 2 else 0
        self._red("t_Get2ndAction", "2ndeAction is %d", code)
        return code

    def action_intent(self, commands: list[Record]) -> int:
        where = "t_GetActionIntent"
        self._red(where, "nSize is %d", len(commands))
        if len(commands) not in (2, 3):
            self._red(where, "tv control error")
            return 0
        code = self.map.intent(commands[-1])
        self._red(where, "eActionIntent is %d", code)
        return code


class Life:
    """One service life: the process-wide objects, and the steps that drive them."""

    def __init__(self, platform: Record) -> None:
        self.log = Log()
        self.util = Util(self.log, platform)
        self.service: Service | None = None
        self.store: Store | None = None

    def store_of(self) -> Store:
        self.store = self.store or Store(self.log)
        return self.store

    def parser(self) -> Parser:
        return Parser(self.log, self.util, self.store_of)

    def _entry(self, function: str, text: str) -> None:
        self.log.red("parlo-api." + function, text)

    def init(self, name: str) -> bool:
        self.service = self.service or Service(self)
        result = self.service.init(name)
        self._entry("ca_initial_service", "initial succeed" if result else "InitService failed")
        return result

    def uninit(self) -> None:
        self._entry("ca_uninitial", "delete the thread")
        if self.service is None:
            self._entry("ca_uninitial", "m_pCAService is NULL")
            return
        self.service = self.store = None

    def speech(self, utterance: str, reply: str, info: Record) -> bool:
        self._entry("ca_get_speech_action", "get action from json package")
        if self.service is None:
            self._entry("ca_get_speech_action", "m_pCAService is NULL")
            return False
        if not self.service.parse(utterance, reply):
            self._entry("ca_get_speech_action", "ParseDataFlow failed")
            return False
        result = self.service.fill(info)
        if not result:
            self._entry("ca_get_speech_action", "GetSpeechActionData failed")
        return result

    def status(self) -> int:
        self._entry("ca_get_conv_status", "get action from json package")
        if self.service is None:
            self._entry("ca_get_conv_status", "m_pCAService is NULL")
            return -1
        return self.service.status()

    def step(self, step: Record) -> Record:
        self.log.lines = []
        report: Record = {"result": None}
        op, text = step["op"], step.get("text", "")
        if op == "init":
            report["result"] = self.init(step["name"])
        elif op == "speech":
            report["record"] = new_action_info()
            report["result"] = self.speech(step["utterance"], step["reply"], report["record"])
        elif op == "status":
            report["result"] = self.status()
        elif op == "uninit":
            self.uninit()
        elif op == "schema":
            report["result"] = self.parser().parse_data(1, text, 0)[0]
        elif op == "parse":
            report["result"], report["count"] = self.parser().parse_data(step["status"], text, 77)
        elif op == "content":
            report["result"] = self.parser().content(parse_json(text))
        elif op == "request_schema":
            if self.store:
                self.store.schema_requested = True
        elif op == "contents":
            report["list"] = self.store_of().contents_list()
        elif op == "store":
            report |= {"error_code": self.store_of().error_code, "content": self.store_of().content}
        elif op == "timezone":
            report["result"] = self.parser().time_zone(text)
        else:
            raise ValueError(f"unknown step {op}")
        report["log"] = self.log.lines
        return deepcopy(report)


def run_life(life: Record) -> Iterable[Record]:
    """The reports of a service life's steps, in order."""
    running = Life(life)
    for step in life["steps"]:
        yield running.step(step)
