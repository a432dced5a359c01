"""Seeded generator of random service lives: what a set answers, and the steps that drive it.

A life depends on its seed and number alone. All texts are `str` with one character a byte.
Run as a program it prints lives as JSON Lines: generate.py SEED FIRST COUNT
"""
from __future__ import annotations

import json
import random
import sys
from typing import Any, Callable

from json_text import JsonError, JsonReader, parse_json
from model import (ACTIONS, CANDIDATE_ACTIONS, CATEGORIES, CHANNEL_ACTIONS, CHANNEL_KEYS,
                   CONTENT_ACTIONS, CONVERSATION_COUNTRIES, DISPLAY_ACTIONS, INTENTS, LANGUAGES,
                   RULE_TYPES, UMD_KEYS)

Value = Any


class Raw(str):
    """A JSON token that is written as it stands."""


class Members(list):
    """An object's members as (key, value) pairs, in the order written; keys may repeat."""


def utf8(text: str) -> str:
    return text.encode("utf-8").decode("latin-1")


NUMBERS = [Raw(n) for n in (
    "0 1 2 7 -1 -5 55 57 404 2147483647 -2147483648 500.0 3e2 -0.0 2147483647.0 -2147483648.0 "
    "2147483648 -2147483649 4294967295 4294967296 9223372036854775807 18446744073709551615 "
    "18446744073709551616 123456789012345678901234567890 2.7 -2.7 0.1 1e300 1e-400 2147483647.5 "
    "1. -.5 007 -").split()]
WORDS = ["news", "x", "No", "no", "p", "s", "ps", "Analog", "Digital", "{Null}", "fail", "ok",
         "tvcontrol", "E100", "404", "7", "3", "Game", "a b", "", "", "percent %d %s %n", "c:\\d",
         'quo"te', "tab\tline\nend\r", "\x01\x1b[31m", "\x7f", "/* no comment */ // x",
         utf8("\u00e9\u20ac"), utf8("\ud55c\uad6d\uc5b4"), utf8("\U0001f600 tv"), "\xff\xc3",
         "\xe2\x82", "\xed\xa0\x80", "\xc0\x80z", "\xf8\x88\x80\x80"]
NEAR_MISSES = ["", "Volumeup", "volume_up", "volumeup ", " volumeup", "volume", "play", "poweroff2",
               "display_contents", "Search_failed", "SET_CHANNEL", "show_schedule"]
SEARCH_WORDS = ["display_content", "search_failed"]
DOMAINS = ["tvcontrol", "tvcontrol", "search", "movie", "TVCONTROL", "tvcontrol ", ""]
TEMPLATES = [
    "http://img.example/%d.jpg", "https://img.example.com/poster/%d.png",
    "http://img.example/%d.gif",
    "http://img.example/a//b/%d.jpg", "http://img.example//a//%04d.png", "%d.jpg", "%d", "", "x",
    "jp", "xjp", "%", "%%", "100%% of %d.jpg", "%s.jpg", "%d-%d.jpg", "%n.jpg", "%*d.jpg",
    "%1$d.jpg", "%ld.jpg", "%lld.jpg", "%hd.png", "%hhd.png", "%5d.jpg", "%-5d.png", "%+d.jpg",
    "%#x.jpg", "% d.png", "%.3d.png", "%.d.jpg", "%999d.jpg", "%1000d.jpg", "%.999d.png",
    "%.1000d.png", "%0999d", "%0-5d|.jpg", "%i.jpg", "%u.png", "%o.png", "%#o.png", "%X.jpg",
    "%c.jpg", "%lc.jpg", "%f.jpg", "%zd.jpg", "%jd", "%p", "%5%.jpg", "tail%", "tail.jpg%",
    "no.jpg", "no.png", "no.gif", "//", "0123456789//x", "01234567890//x", "a//b//////c%d.jpg",
    "http://h.example//", "http://h.example/" + "a" * 1100 + "/%d.jpg", "b" * 1023 + "%d.png",
    "c" * 1500 + ".jpg", "%900d" + "d" * 2000 + "//.png", "e" * 1100 + "%s//x.jpg", "f" * 1024,
    "\xc3\xa9/%d.jpg"]


class Generator:
    def __init__(self, seed: int, number: int) -> None:
        self.rng = random.Random(f"{seed}/{number}")
        # How often a value is not what its key asks for.
        self.wild = self.rng.choice([0, 0, 0.02, 0.08, 0.3])
        # Whether the reply in the making shows content.
        self.showing = False

    # -- values ---------------------------------------------------------------------------------

    def chance(self, probability: float) -> bool:
        return self.rng.random() < probability

    def word(self) -> str:
        if self.chance(0.03):
            return "cut\0here"
        if self.chance(0.02):
            return "".join(chr(self.rng.randrange(1, 256)) for _ in range(self.rng.randrange(9)))
        return self.rng.choice(WORDS)

    def odd(self, depth: int = 2) -> Value:
        """A value of any type."""
        kind = self.rng.randrange(8)
        if kind < 3:
            return (None, True, False)[kind]
        if kind < 5:
            return self.rng.choice(NUMBERS)
        if kind == 5 or depth == 0:
            return self.word()
        values = [self.odd(depth - 1) for _ in range(self.rng.choice([0, 1, 1, 2]))]
        if kind == 6:
            return values
        keys = ["number", "name", "action", "id", "type", "index", "params", "0", ""]
        return Members((self.rng.choice(keys), value) for value in values)

    def but(self, value: Value) -> Value:
        return self.odd() if self.chance(self.wild) else value

    def text(self, *choices: str) -> Value:
        return self.but(self.rng.choice(choices) if choices else self.word())

    def number(self, *choices: int) -> Value:
        return self.but(self.rng.choice(choices or (-1, 0, 1, 3, 7, 120)))

    def array(self, one: Callable[[], Value], sizes: tuple[int, ...] = (0, 1, 1, 2, 3)) -> Value:
        return self.but([self.but(one()) for _ in range(self.rng.choice(sizes))])

    def object(self, keep: float, **parts: Callable[[], Value]) -> Members:
        """An object with most of the given keys; a key's "_" stands for "-"."""
        members = [(key.replace("__", "-"), self.but(make())) for key, make in parts.items()
                   if self.chance(keep)]
        if self.chance(0.2):
            self.rng.shuffle(members)
        if members and self.chance(0.04):
            members.insert(self.rng.randrange(len(members)),
                           (self.rng.choice(members)[0], self.odd()))
        if self.chance(0.03):
            members.append((self.rng.choice(["unknown", "", "rsp", "Type"]), self.odd()))
        return Members(members)

    # -- the parts of a reply -------------------------------------------------------------------

    def action(self) -> str:
        kind = self.rng.randrange(20)
        if kind < 2:
            return self.rng.choice(NEAR_MISSES)
        if kind < 4:
            return self.rng.choice(SEARCH_WORDS)
        if kind < 9 or self.showing and kind < 16:
            wanted = CONTENT_ACTIONS if self.showing else self.rng.choice(
                [CHANNEL_ACTIONS, (*CANDIDATE_ACTIONS, 43), CONTENT_ACTIONS,
                 (22, 42, 67, 57, 65, 3, 7, 26, 29)])
            return self.rng.choice([word for word, code in ACTIONS.items() if code in wanted])
        return self.rng.choice(list(ACTIONS))

    def intent(self) -> str:
        return self.rng.choice([*INTENTS, *INTENTS, "", "Play", "search_", "search_title "])

    def channel(self) -> Members:
        texts = {key: self.text for key in CHANNEL_KEYS}
        return self.object(0.6, **texts, major=self.number, minor=self.number, ptc=self.number)

    def umd_channel(self) -> Members:
        attributes = lambda: self.text("Digital Analog", "Digital", "analog", "Analog")
        texts = {key: self.text for key in UMD_KEYS} | {"attributes": attributes}
        return self.object(0.9, umd_channel=lambda: self.object(0.7, **texts))

    def params(self) -> Members:
        texts = dict.fromkeys("prevnext direction gb_function target_device target_status colorkey "
                              "type channel_no keyword website".split(), self.text)
        numbers = dict.fromkeys("amount index idx listorder time play_speed".split(), self.number)
        lists = {"names": lambda: self.array(self.word),
                 "channels": lambda: self.array(self.channel),
                 "umd_channels": lambda: self.array(self.umd_channel)}
        parts: dict[str, Callable] = {**texts, **numbers, **lists}
        if self.chance(0.1):
            parts["action"] = lambda: self.text(self.action())
        return self.object(self.rng.choice([0.1, 0.3, 0.6]), **parts)

    def command(self) -> Members:
        return self.object(0.9, action=lambda: self.text(self.action()),
                           intent=lambda: self.text(self.intent()),
                           params=lambda: self.array(self.params, (0, 1, 1, 1, 2, 3)))

    def display_control(self) -> Members:
        item = lambda: self.object(0.8, title=self.text, index=self.number)
        return self.object(0.9, action=lambda: self.text(*DISPLAY_ACTIONS, "play", ""),
                           params=lambda: self.array(item))

    def template(self) -> str:
        if self.chance(0.8):
            return self.rng.choice(TEMPLATES)
        parts = ["%d", "%%", "%3d", "%", "//", "/", ".jpg", ".png", "http://h.example", "poster",
                 "%02x", "%s", "-"]
        return "".join(self.rng.choice(parts) for _ in range(self.rng.randrange(9)))

    def images(self) -> Members:
        size = lambda: self.number(54, 55, 56, 57, 57, 58, 59, 0, -3, 1000, 2147483647)
        return self.object(0.9, url=lambda: self.text(self.template()), type=self.text,
                           index=lambda: self.array(size, (0, 1, 2, 3)))

    def poster(self) -> Members:
        return self.object(0.8, images=self.images, images4premium=self.images)

    def content_parts(self) -> dict[str, Callable]:
        rating = {"cert__system": self.text, "certification": self.text}
        return {"id": self.text, "title": self.text, "year": lambda: self.number(1999, 2016),
                "duration": self.number, "cert_flag": lambda: self.text("No", "Yes", "no", ""),
                "poster": self.poster,
                "certifications": lambda: self.array(lambda: self.object(0.8, **rating)),
                "genres": lambda: self.array(lambda: self.object(0.8, id=self.text,
                                                                 name=self.text))}

    def programme(self) -> Members:
        channel = lambda: self.object(0.8, name=self.text,
                                      source_id=lambda: self.array(self.text))
        schedule = lambda: self.object(0.8, starttime=self.text, endtime=self.text,
                                       duration=self.number)
        casting = lambda: self.array(lambda: self.object(0.8, name=self.text))
        return self.object(0.8, casting=casting, channel=channel, schedule=schedule,
                           **self.content_parts())

    def content_item(self) -> Members:
        kind = self.rng.choice("movie movie movie tvshow tvshow apps apps app app fitness kids "
                               "weather stock sports epg Movie unknown".split())
        parts: dict[str, Callable] = {"type": lambda: kind}
        if kind in ("apps", "app"):
            app = {"premium_flag": lambda: self.text("p", "s", "ps", "x", ""),
                   "runtitle": self.text, "category": self.text, **self.content_parts(),
                   "id": lambda: self.text("app1", "app1", self.word())}
            parts["app_info"] = lambda: self.object(0.85, **app)
        elif kind in ("fitness", "kids"):
            texts = dict.fromkeys("appid contentid title trainer character category".split(),
                                  self.text)
            parts |= {**texts, "duration": self.number, "poster": self.poster}
        elif kind in ("weather", "stock", "sports"):
            parts |= self.information_parts()
        else:
            season = lambda: self.rng.choice([3, Members([("number", 3)])])
            episode = lambda: self.object(0.8, title=self.text,
                                          number=lambda: self.number(7, 0, -2))
            parts |= {**self.content_parts(), "season": season, "episode": episode}
        return self.object(0.9, **parts)

    def information_parts(self) -> dict[str, Callable]:
        texts = dict.fromkeys(
            "weblink link country current_temp condition condition_icon local_time cplogo location "
            "code name currentvalue symbol difference fluctuation currency category "
            "record_type".split(), self.text)
        pair = lambda: self.object(0.8, name=self.text, value=self.text)
        day = lambda: self.object(0.8, date=self.text, tmin=self.text, tmax=self.text,
                                  condition_icon=lambda: self.array(self.text))
        standing = lambda: self.object(
            0.8, ranking=self.text, name=self.text, mascot=self.text, logo=self.text,
            text_color=lambda: self.rng.choice([True, False]),
            season_stats=lambda: self.array(self.text))
        record = lambda: self.object(0.8, league_name=self.text, home_team_score=self.text,
                                     standing=lambda: self.array(standing))
        return {**texts, "weather_info": lambda: self.array(pair),
                "forecast_info": lambda: self.array(day), "detailed": lambda: self.array(pair),
                "records": lambda: self.array(record)}

    def rsp(self) -> Members:
        members: list[tuple[str, Value]] = []
        self.showing = self.chance(0.3)

        def add(probability: float, key: str, make: Callable[[], Value]) -> None:
            if self.chance(probability):
                members.append((key, self.but(make())))

        add(0.6, "stat", lambda: self.rng.choice(["ok", "ok", "OK", "Fail", ""]))
        domain = lambda: self.rng.choice(DOMAINS)
        add(0.75, "domain", lambda: self.array(domain, (0, 1, 1, 1, 2, 3)))
        add(0.6, "dialog", lambda: self.object(0.8, dialog_id=self.text, dialog_seq=self.number))
        add(0.6, "system_sentence", lambda: self.rng.choice(["Turning it up", "{Null}",
                                                            self.word()]))
        add(0.94, "tvcontrol",
            lambda: self.array(self.command, (0, 1, 1, 1, 1, 1, 1, 2, 2, 2, 3, 3, 4)))
        add(0.3, "response_info", lambda: self.object(0.5, engine_time=self.text,
                                                      query=self.text))
        add(0.25, "displaycontrol", lambda: self.array(self.display_control, (0, 1, 1, 2)))
        add(0.9 if self.showing else 0.15, "tvcontent",
            lambda: self.array(self.content_item, (0, 1, 2, 3, 4)))
        add(0.4, "nlu_info", lambda: self.object(0.8, dialog_type=self.number))
        if self.chance(0.03):
            deep = self.rng.choice([500, 990, 996, 997, 998, 999, 1000, 1200, 3000])
            members.append(("deep", Raw("[" * deep + "]" * deep)))
        if self.chance(0.02):
            levels = self.rng.choice([30, 400])
            params = Raw('{"params":[' + "[" * levels + "]" * levels + "]}")
            members.append(("tvcontrol", [params]))
        if self.chance(0.03):
            members.append(("pad", "\xe2\x82\xac" * self.rng.choice([10, 160, 400])))
        if self.chance(0.002):
            members.append(("pad", "0123456789" * 10250))
        if self.chance(0.15):
            self.rng.shuffle(members)
        return Members(members)

    def error_rsp(self) -> Members:
        code = lambda: self.rng.choice(["E100", "", 404, -1, 0, -7, self.odd()])
        error = lambda: self.object(0.85, code=code,
                                    msg=lambda: self.rng.choice(["x", "", self.odd()]))
        return self.object(0.95, stat=lambda: "fail", err=error, domain=lambda: ["tvcontrol"],
                           system_sentence=self.text)

    # -- writing --------------------------------------------------------------------------------

    def string(self, text: str) -> str:
        out = []
        for char in text:
            if char in '"\\':
                out.append("\\" + char)
            elif char < "\x80" and self.chance(0.01):
                out.append(f"\\u{ord(char):04{self.rng.choice('xX')}}")
            elif char in "\n\t\r" and self.chance(0.7):
                out.append({"\n": "\\n", "\t": "\\t", "\r": "\\r"}[char])
            elif char == "\0" and self.chance(0.9):
                out.append("\\u0000")
            elif char == "/" and self.chance(0.02):
                out.append("\\/")
            else:
                out.append(char)
        return '"' + "".join(out) + '"'

    def write(self, value: Value) -> str:
        space = " " if self.chance(0.1) else "\r\n\t" if self.chance(0.02) else ""
        if isinstance(value, Raw):
            return value
        if isinstance(value, str):
            return self.string(value)
        if value is None or isinstance(value, bool):
            return json.dumps(value)
        if isinstance(value, Members):
            rows = (self.string(key) + space + ":" + self.write(one) for key, one in value)
            return "{" + space + ("," + space).join(rows) + space + "}"
        if isinstance(value, list):
            return "[" + space + ("," + space).join(map(self.write, value)) + space + "]"
        return str(value)

    def comment(self) -> str:
        return self.rng.choice(["/* a */", "// b\n", "/**/", "/* c\n d */", "// e\r\n"])

    def envelope(self, rsp: Value) -> str:
        """The document around "rsp". Comments stand between the members of "rsp" and outside
        of it only, so that none becomes part of a command's parameters."""
        if isinstance(rsp, Members) and self.chance(0.06):
            rows = []
            for key, value in rsp:
                before, after = (self.comment() if self.chance(0.3) else "" for _ in range(2))
                if self.chance(0.02):
                    after += self.rng.choice(["true", "null", "1"])
                rows.append(before + self.string(key) + ":" + self.write(value) + after)
            body = "{" + ",".join(rows) + "}"
        else:
            body = self.write(rsp)
        members = ['"rsp":' + body]
        if self.chance(0.05):
            members.insert(self.rng.randrange(2), self.rng.choice(
                ['"rsp":{"stat":"ok"}', '"other":[1]', '"rsp":7', '"stat":"fail"']))
        document = "{" + ",".join(members) + "}"
        if self.chance(0.04):
            document = self.comment() + document
        if self.chance(0.06):
            document += self.rng.choice(["garbage", "}", "\0", " // end", "\n{}", "/*", "\xff"])
        return document

    def mutated(self, text: str) -> str:
        """The text with a few bytes changed; kept only while no comment comes into it."""
        changed = text
        for _ in range(self.rng.choice([1, 1, 2, 3])):
            at = self.rng.randrange(len(changed) + 1)
            kind = self.rng.randrange(4)
            if kind == 0:
                changed = changed[:at] + changed[at + 1:]
            elif kind == 1:
                changed = changed[:at]
            else:
                changed = changed[:at] + self.rng.choice('{}[]",:\\0-. \n\0\xffe') + changed[at:]
        readers = [JsonReader(text), JsonReader(changed)]
        for reader in readers:
            try:
                reader.parse()
            except JsonError:
                pass
        return text if any(reader.comments for reader in readers) else changed

    def reply(self) -> str:
        kind = self.rng.random()
        if kind < 0.02:
            return ""
        if kind < 0.06:
            return self.rng.choice(["not json", "{", "[]", "[1,{}]", "7", "null", "true", '"rsp"',
                                    "{}", '{"rsp":null}', '{"rsp":{}}', '{"rsp":[]}', '{"rsp":5}',
                                    '{"rsp":"x"}', '{"RSP":{}}', "\xef\xbb\xbf{}", "// only",
                                    " ", "\0", "[" * 1100, "{\"rsp\":{\"a\" /*c*/ :1}}"])
        if kind < 0.12:
            return self.envelope(self.error_rsp())
        text = self.envelope(self.rsp())
        return self.mutated(text) if kind < 0.17 else text

    def schema(self) -> str:
        if self.chance(0.1):
            return self.rng.choice(["", "{}", '{"rsp":{}}', '{"rsp":{"schema":[]}}', "not json",
                                    '{"rsp":{"schema":[{"category":"social"}]}', "[]"])
        if self.chance(0.25):
            return self.envelope(self.error_rsp())
        bound = lambda: self.text("0", "1", "2", "7up", "", "x", "12")
        rule = lambda: self.object(0.9, **{"from": bound, "to": bound, "cycle": bound}, rule=lambda:
                                   self.text(*RULE_TYPES, "position", ""))
        entry = lambda: self.object(0.9, category=lambda: self.text(*CATEGORIES, "other", ""),
                                    rules=lambda: self.array(rule))
        return self.envelope(self.object(0.95, stat=lambda: "ok",
                                         schema=lambda: self.array(entry)))

    # -- steps ----------------------------------------------------------------------------------

    def content_text(self) -> str:
        text = self.write(self.programme() if self.chance(0.9) else self.odd())
        try:
            parse_json(text)
        except JsonError:
            return "{}"
        return text

    def time_zone(self) -> str:
        return self.rng.choice(["+09:00", "-05:30", "09:00", "", "-", "+1", "-12:3", "+0x:45",
                                " 1:23", "-00:00", "+99:99", "+ 9:-5", "-03.30junk",
                                "+\xb2\xb3:1\xb9",
                                "-08:15" + "z" * 300])

    def step(self) -> dict[str, Any]:
        ops = {"speech": 60, "status": 5, "init": 3, "uninit": 2, "schema": 5, "parse": 6,
               "content": 7, "request_schema": 3, "contents": 4, "store": 4, "timezone": 1}
        op = self.rng.choices(list(ops), list(ops.values()))[0]
        if op == "init":
            return {"op": op, "name": self.rng.choice(["voice", "", "app%d", utf8("\u00e9")])}
        if op == "speech":
            utterance = "" if self.chance(0.03) else self.word() or "turn it up"
            return {"op": op, "utterance": utterance, "reply": self.reply()}
        if op == "schema":
            return {"op": op, "text": self.schema()}
        if op == "parse":
            status = self.rng.choice([0, 0, 0, 1, 2, -1, 2147483647])
            return {"op": op, "status": status,
                    "text": self.schema() if status == 1 else self.reply()}
        if op == "content":
            return {"op": op, "text": self.content_text()}
        if op == "timezone":
            return {"op": op, "text": self.time_zone()}
        return {"op": op}

    def platform(self) -> dict[str, Any]:
        country = self.rng.choice([*CONVERSATION_COUNTRIES, "JP", "us", "", None, "US", "MX"])
        fitting = LANGUAGES.get(country or "US", ("en_US",))
        others = ["en_US", "en_GB", "fr_FR", "no_NO", "", "EN_US", None, *LANGUAGES["NO"]]
        every = [language for row in LANGUAGES.values() for language in row]
        failing = lambda: self.rng.choice([-1, 1, 5]) if self.chance(0.08) else 0
        return {"country": country,
                "language": self.rng.choice(self.rng.choice([fitting, fitting, others, every])),
                "init_result": failing(), "language_result": failing(),
                "deinit_result": failing(),
                "factory_result": self.rng.choice([1, 1, 1, 1, 1, 1, 0, -1]),
                "factory_value": self.rng.choice([1, 1, 1, 1, 1, 1, 0, -1, 256])}

    def life(self) -> dict[str, Any]:
        steps = [self.step() for _ in range(self.rng.choice([1, 2, 4, 6, 9]))]
        if self.chance(0.93):
            steps.insert(0, {"op": "init", "name": "voice"})
        return {**self.platform(), "steps": steps}


def life(seed: int, number: int) -> dict[str, Any]:
    return Generator(seed, number).life()


if __name__ == "__main__":
    chosen, first, count = map(int, sys.argv[1:4])
    for one in range(first, first + count):
        print(json.dumps(life(chosen, one)))
