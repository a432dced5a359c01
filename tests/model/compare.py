"""Runs random service lives through the library and through the model, and compares them.

Prints the first differences in full and exits with 1, or counts what agreed and exits with 0.
"""
from __future__ import annotations

import argparse
import json
import re
import subprocess
import sys
from typing import Any, Iterator

from generate import life
from model import run_life

LINE = re.compile(r"([^:]+): (\S+)\((\d+)\) > (.*)(\x1b\[3[14]m)", re.DOTALL)
COLOURS = {6: "\x1b[31m", 3: "\x1b[34m"}
BATCH = 100


def split_line(entry: Any) -> tuple:
    """(priority, file, function, message), or the entry itself when it has another form."""
    priority, tag, text = entry
    match = LINE.fullmatch(text)
    if tag != "ParloAPI" or not match or match.group(5) != COLOURS.get(priority):
        return ("not a log line of the library", tag, priority, text)
    return (priority, match.group(1), match.group(2), match.group(4))


def differences(path: str, wanted: Any, got: Any) -> Iterator[str]:
    """Where `got` differs from `wanted`; an object of `got` may have further keys."""
    if isinstance(wanted, dict) and isinstance(got, dict):
        for key, value in wanted.items():
            if key in got:
                yield from differences(f"{path}.{key}", value, got[key])
            else:
                yield f"{path}.{key}: the library's report lacks it"
    elif isinstance(wanted, list) and isinstance(got, list) and len(wanted) == len(got):
        for index, (one, other) in enumerate(zip(wanted, got)):
            yield from differences(f"{path}[{index}]", one, other)
    elif type(wanted) is not type(got) or wanted != got:
        yield f"{path}:\n    library: {got!r}\n    model:   {wanted!r}"


def compare_step(wanted: dict, got: dict) -> Iterator[str]:
    lines = [split_line(entry) for entry in got["log"]]
    for index in range(max(len(lines), len(wanted["log"]))):
        line = lines[index] if index < len(lines) else None
        expected = wanted["log"][index] if index < len(wanted["log"]) else None
        if line != expected:
            yield f"log line {index}:\n    library: {line!r}\n    model:   {expected!r}"
            break  # what follows is only shifted
    for key, value in wanted.items():
        if key != "log":
            yield from differences(key, value, got.get(key, "(nothing)"))


def compare_life(name: str, one: dict, output: str) -> list[str]:
    reports, found = json.loads(output), []
    if len(reports) != len(one["steps"]):
        return [f"{name}: {len(one['steps'])} steps, {len(reports)} reports"]
    for index, (wanted, got) in enumerate(zip(run_life(one), reports)):
        step = json.dumps(one["steps"][index])
        step = step if len(step) < 3000 else step[:3000] + " ..."
        found += [f"{name}, step {index} {step}\n  {difference}"
                  for difference in compare_step(wanted, got)]
    return found


def run_driver(driver: str, lives: list[dict]) -> tuple[list[str], str]:
    """The driver's lines, one a life, and what went wrong when they are fewer."""
    text = "".join(json.dumps(one) + "\n" for one in lives)
    done = subprocess.run([driver], input=text, capture_output=True, text=True, check=False,
                          encoding="ascii", errors="surrogateescape")
    lines = done.stdout.splitlines()
    if done.returncode == 0 and len(lines) == len(lives):
        return lines, ""
    return lines, (f"the driver ended with {done.returncode} after {len(lines)} of {len(lives)} "
                   f"lives\n{done.stderr[-4000:]}")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--driver", required=True, help="the driver program")
    parser.add_argument("--lives", type=int, default=1000, help="how many lives to run")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--show", type=int, default=5, help="how many differences to print")
    parser.add_argument("--replay", metavar="FILE", help="run the lives of a JSON Lines file")
    options = parser.parse_args()

    if options.replay:
        with open(options.replay, encoding="utf-8") as file:
            given = [json.loads(line) for line in file if line.strip()]
        lives: Iterator = ((f"line {n}", one) for n, one in enumerate(given, 1))
    else:
        lives = ((f"seed {options.seed}, life {n}", life(options.seed, n))
                 for n in range(options.lives))

    count = replies = found = 0
    more = True
    while more:
        batch = [one for _, one in zip(range(BATCH), lives)]
        more = len(batch) == BATCH
        outputs, failure = run_driver(options.driver, [one for _, one in batch])
        count += len(batch)
        for (name, one), output in zip(batch, outputs):
            replies += sum(step["op"] in ("speech", "parse") for step in one["steps"])
            for difference in compare_life(name, one, output):
                found += 1
                if found <= options.show:
                    print(difference)
        if failure:
            stopped = batch[len(outputs)][0] if len(outputs) < len(batch) else "after the last life"
            print(f"{failure}\nit stopped in: {stopped}")
            found += 1
            break
    print(f"{count} lives, {replies} replies, {found} differences")
    return 1 if found or not count else 0


if __name__ == "__main__":
    sys.exit(main())
