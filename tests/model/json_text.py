"""The JSON library's classic reader and styled writer, and typed reads of its values.

Every text is a `str` whose characters are the bytes of the text (code points 0 to 255).
"""
from __future__ import annotations

import re
import sys
from typing import Any

sys.setrecursionlimit(20000)

Json = None | bool | int | float | str | list | dict
INT_MIN, INT_MAX = -2**31, 2**31 - 1


class JsonError(Exception):
    """The text is not accepted (syntax, or nested too deep)."""


_ESCAPES = {'"': '"', "/": "/", "\\": "\\", "b": "\b", "f": "\f", "n": "\n", "r": "\r", "t": "\t"}
_WORDS = {"t": ("rue", True), "f": ("alse", False), "n": ("ull", None)}
_DOUBLE = re.compile(r"-?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?")
_HEX4 = re.compile(r"[0-9a-fA-F]{4}")
_NUMBER = re.compile(r"\d*(\.\d*)?([eE][+-]?\d*)?")
STACK_LIMIT = 1000


class JsonReader:
    """Reads one document as the JSON library does: comments are allowed, anything may follow
    the root value, the last of equal keys wins, and a NUL byte ends the text."""

    def __init__(self, text: str) -> None:
        self.text, self.at, self.comments = text, 0, 0

    def parse(self) -> Json:
        return self._value(1)

    def _token(self) -> tuple[str, Any]:
        """One token as (kind, payload); the kind of a bad one is "bad"."""
        text = self.text
        while self.at < len(text) and text[self.at] in " \t\r\n":
            self.at += 1
        start = self.at
        char = text[start] if start < len(text) else "\0"
        self.at += 1 if start < len(text) else 0
        if char in "{}[],:":
            return char, None
        if char == '"':
            return self._string_token(start)
        if char == "/":
            return ("comment" if self._comment() else "bad"), None
        if char == "-" or char in "0123456789":
            self.at = _NUMBER.match(text, self.at).end()  # type: ignore[union-attr]
            return "number", text[start:self.at]
        if char in _WORDS:
            rest, value = _WORDS[char]
            if text.startswith(rest, self.at):
                self.at += len(rest)
                return "word", value
            return "bad", None
        return ("end" if char == "\0" else "bad"), None

    def _string_token(self, start: int) -> tuple[str, Any]:
        text = self.text
        while self.at < len(text):
            char = text[self.at]
            self.at += 1
            if char == "\\":
                self.at = min(self.at + 1, len(text))
            elif char == '"':
                return "string", text[start + 1:self.at - 1]
        return "bad", None

    def _comment(self) -> bool:
        text, self.comments = self.text, self.comments + 1
        kind = text[self.at:self.at + 1]
        self.at = min(self.at + 1, len(text))
        if kind == "*":
            end = text.find("*/", self.at)
            self.at = len(text) if end < 0 else end + 2
            return end >= 0
        if kind == "/":
            ends = [i for i in (text.find("\n", self.at), text.find("\r", self.at)) if i >= 0]
            self.at = min(ends) + 1 if ends else len(text)
            if text[self.at - 1:self.at + 1] == "\r\n":
                self.at += 1
            return True
        return False

    def _token_after_comments(self) -> tuple[str, Any]:
        kind, payload = self._token()
        while kind == "comment":
            kind, payload = self._token()
        return kind, payload

    def _value(self, depth: int) -> Json:
        if depth > STACK_LIMIT:
            raise JsonError("nested too deep")
        kind, payload = self._token_after_comments()
        if kind == "{":
            return self._object(depth)
        if kind == "[":
            return self._array(depth)
        if kind == "number":
            return self._number(payload)
        if kind == "string":
            return self._string(payload)
        if kind == "word":
            return payload
        raise JsonError("a value is missing")

    def _object(self, depth: int) -> dict:
        result: dict[str, Json] = {}
        name = ""
        while True:
            kind, payload = self._token_after_comments()
            if kind == "}" and name == "":
                return result
            if kind != "string":
                raise JsonError("a member name is missing")
            name = self._string(payload)
            if self._token()[0] != ":":
                raise JsonError("a colon is missing")
            result[name] = self._value(depth + 1)
            kind, payload = self._token()
            if kind not in ("}", ",", "comment"):
                raise JsonError("a comma is missing")
            # Behind a comment any one token stands for the comma.
            while kind == "comment":
                kind, payload = self._token()
            if kind == "}":
                return result

    def _array(self, depth: int) -> list:
        result: list[Json] = []
        while self.text[self.at:self.at + 1] in (" ", "\t", "\r", "\n"):
            self.at += 1
        if self.text[self.at:self.at + 1] == "]":
            self.at += 1
            return result
        while True:
            result.append(self._value(depth + 1))
            kind, _ = self._token_after_comments()
            if kind == "]":
                return result
            if kind != ",":
                raise JsonError("a comma is missing")

    @staticmethod
    def _number(token: str) -> int | float:
        digits = token.removeprefix("-")
        if all(c in "0123456789" for c in digits):
            value = int(digits or "0")
            if token[0] == "-" and value <= 2**63:
                return -value
            if token[0] != "-" and value < 2**64:
                return value
        if not _DOUBLE.fullmatch(token):
            raise JsonError("not a number")
        real = float(token)
        if real in (float("inf"), float("-inf")):
            raise JsonError("the number is too large")
        return real

    @staticmethod
    def _string(raw: str) -> str:
        if "\\" not in raw:
            return raw
        out: list[str] = []
        at = 0

        def hex4() -> int:
            nonlocal at
            if not _HEX4.fullmatch(raw, at, at + 4):
                raise JsonError("bad unicode escape")
            at += 4
            return int(raw[at - 4:at], 16)

        while at < len(raw):
            char = raw[at]
            at += 1
            if char != "\\":
                out.append(char)
                continue
            escape = raw[at:at + 1]
            at += 1
            if escape == "u":
                point = hex4()
                if 0xD800 <= point <= 0xDBFF:
                    if len(raw) - at < 6 or raw[at:at + 2] != "\\u":
                        raise JsonError("half a surrogate pair")
                    at += 2
                    point = 0x10000 + ((point & 0x3FF) << 10) + (hex4() & 0x3FF)
                out.append(chr(point).encode("utf-8", "surrogatepass").decode("latin-1"))
            elif escape in _ESCAPES:
                out.append(_ESCAPES[escape])
            else:
                raise JsonError("bad escape")
        return "".join(out)


def parse_json(text: str) -> Json:
    return JsonReader(text).parse()


def _code_point(text: str, at: int) -> tuple[int, int]:
    """The code point that starts at a byte, and the number of bytes it takes."""
    first = ord(text[at])
    if first < 0x80:
        return first, 1
    for limit, size, mask, least in ((0xE0, 2, 0x1F, 0x80), (0xF0, 3, 0x0F, 0x800),
                                     (0xF8, 4, 0x07, 0x10000)):
        if first < limit:
            if len(text) - at < size:
                return 0xFFFD, 1
            point = first & mask
            for char in text[at + 1:at + size]:
                point = point << 6 | ord(char) & 0x3F
            bad = point < least or size == 3 and 0xD800 <= point <= 0xDFFF
            return (0xFFFD if bad else point), size
    return 0xFFFD, 1


_QUOTED = {'"': '\\"', "\\": "\\\\", "\b": "\\b", "\f": "\\f", "\n": "\\n", "\r": "\\r",
           "\t": "\\t"}


def quoted(text: str) -> str:
    out, at = ['"'], 0
    while at < len(text):
        if text[at] in _QUOTED:
            out.append(_QUOTED[text[at]])
            at += 1
            continue
        point, size = _code_point(text, at)
        at += size
        if 0x20 <= point < 0x80:
            out.append(chr(point))
        elif point < 0x10000:
            out.append(f"\\u{point:04x}")
        else:
            point -= 0x10000
            out.append(f"\\u{0xD800 + (point >> 10 & 0x3FF):04x}\\u{0xDC00 + (point & 0x3FF):04x}")
    return "".join(out) + '"'


def real_text(value: float) -> str:
    text = "%.17g" % value
    return text if "." in text or "e" in text else text + ".0"


def scalar_text(value: Json) -> str:
    """A value read as text without a type test; an array or an object has none."""
    if value is None or isinstance(value, (list, dict)):
        return ""
    if isinstance(value, bool):
        return "true" if value else "false"
    return real_text(value) if isinstance(value, float) else str(value)


def styled(value: Json) -> str:
    """The text that the JSON library's styled writer gives, its last line break included."""
    return _styled(value, "") + "\n"


def _styled(value: Json, indent: str) -> str:
    inner = indent + "\t"
    if isinstance(value, list) and value:
        rows = (inner + _styled(item, inner) for item in value)
        return "[\n" + ",\n".join(rows) + "\n" + indent + "]"
    if isinstance(value, dict) and value:
        rows = []
        for key in sorted(value):
            item = value[key]
            line_break = "\n" + inner if isinstance(item, (list, dict)) and item else ""
            rows.append(inner + quoted(key) + " : " + line_break + _styled(item, inner))
        return "{\n" + ",\n".join(rows) + "\n" + indent + "}"
    if isinstance(value, (list, dict)):
        return "[]" if isinstance(value, list) else "{}"
    if isinstance(value, str):
        return quoted(value)
    return "null" if value is None else scalar_text(value)


# ---------------------------------------------------------------------------------------------
# Typed reads of JSON values
# ---------------------------------------------------------------------------------------------

def member(value: Json, *path: str) -> Json:
    for key in path:
        value = value.get(key) if isinstance(value, dict) else None
    return value


def elements(value: Json) -> list:
    return value if isinstance(value, list) else []


def is_int(value: Json) -> bool:
    if isinstance(value, bool) or not isinstance(value, (int, float)):
        return False
    return INT_MIN <= value <= INT_MAX and value == int(value)


def any_int(value: Json) -> int:
    """An integer read whatever the value is."""
    if isinstance(value, (bool, int, float)) and INT_MIN <= value <= INT_MAX:
        return int(value)
    return 0


def text_of(value: Json, *path: str) -> str:
    found = member(value, *path)
    return found if isinstance(found, str) else ""


def int_of(value: Json, key: str, default: int = 0) -> int:
    found = member(value, key)
    return int(found) if is_int(found) else default  # type: ignore[arg-type]


def type_number(value: Json) -> int:
    if isinstance(value, bool):
        return 5
    if isinstance(value, int):
        return 2 if value > INT_MAX else 1
    return {type(None): 0, float: 3, str: 4, list: 6, dict: 7}[type(value)]


def size_of(value: Json) -> int:
    return len(value) if isinstance(value, (list, dict)) else 0
