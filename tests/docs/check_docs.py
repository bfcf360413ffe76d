#!/usr/bin/env python3
"""Checks that what the documents name exists: files, pictures, commands of ./dev, sub-commands and options of sorvane,
and that the guide's table of keys is the program's.

usage: check_docs.py SOURCE_DIRECTORY SORVANE_PROGRAM KEY_TABLE_PROGRAM [--renew]

With --renew the table of keys is written anew.
"""

import pathlib
import re
import subprocess
import sys
import textwrap

ROOT = pathlib.Path(sys.argv[1]).resolve()
SORVANE = sys.argv[2]
KEY_TABLE = sys.argv[3]
problems = []


def documents():
    top = [ROOT / name for name in ("README.md", "CONTRIBUTING.md", "CHANGELOG.md")]
    return [path for path in top if path.exists()] + sorted((ROOT / "docs").rglob("*.md"))


def help_of(*arguments):
    return subprocess.run([SORVANE, *arguments, "--help"], capture_output=True, text=True, check=True).stdout


def options_in(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z0-9-]*", text))


def sub_commands():
    names = re.findall(r"^  ([a-z]+) ", help_of().split("ubcommands:")[1], re.MULTILINE)
    return {name: options_in(help_of(name)) for name in names}


def dev_commands():
    usage = subprocess.run([ROOT / "dev", "help"], capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"^  ([a-z]+)", usage, re.MULTILINE))


def problem(document, text):
    problems.append(f"{document.relative_to(ROOT)}: {text}")


def check_links(document, text):
    for target in re.findall(r"\]\(([^)#]+)[^)]*\)", text):
        if not re.match(r"[a-z]+:", target) and not (document.parent / target).exists():
            problem(document, f"links to {target}, which is not there")


def check_paths(document, text):
    """A code span that begins with one of our folders names a file, or files by a pattern."""
    rooms = {path.name for path in ROOT.iterdir() if path.is_dir() and path.name != "build"}
    for span in re.findall(r"`([^`\s]+/[^`\s]*)`", text):
        if "<" in span or "%" in span or span.split("/")[0] not in rooms:
            continue
        pattern = re.sub(r":\d+$", "", span).rstrip("/")
        if not any(ROOT.glob(pattern)):
            problem(document, f"names {span}, which is not there")


def code_lines(text):
    for block in re.findall(r"^```[a-z]*\n(.*?)^```", text, re.MULTILINE | re.DOTALL):
        yield from block.replace("\\\n", " ").splitlines()
    yield from re.findall(r"`([^`\n]+)`", text)


def check_commands(document, text, subs, devs):
    every_option = set().union(*subs.values(), {"--help", "--version"})
    for line in code_lines(text):
        for name in re.findall(r"\./dev ([a-z]+)", line):
            if name not in devs:
                problem(document, f"names ./dev {name}, which does not exist")
        for call in re.findall(r"(?:^|[\s/'\"])sorvane ([^|;>&]*)", line):
            words = call.split()
            if not words or not re.fullmatch(r"[a-z]+", words[0]):
                continue
            if words[0] not in subs:
                problem(document, f"names sorvane {words[0]}, which does not exist")
                continue
            for option in options_in(call) - subs[words[0]]:
                problem(document, f"names sorvane {words[0]} {option}, which does not exist")
    for span in re.findall(r"`(--[a-z][a-z0-9-]*)[^`]*`", text):
        if span not in every_option:
            problem(document, f"names the option {span}, which no sub-command has")


def as_manual(table):
    """The rows of the Markdown table as roff."""
    rows = re.findall(r"^\| (`.+`) \| (.+) \|$", table, re.MULTILINE)
    return "".join(f".TP\n.B {keys.replace('`', '')}\n{textwrap.fill(effect, 76)}\n" for keys, effect in rows).replace("\\", "\\e")


def check_keys():
    table = subprocess.run([KEY_TABLE], capture_output=True, text=True, check=True).stdout.strip()
    places = [
        ("docs/guide/2-window.md", r"(<!-- keys[^\n]*-->\n).*?(<!-- end of keys -->)", f"\n{table}\n\n"),
        ("docs/man/new_sorvane.1", r"(\.\\\" keys[^\n]*\n).*?(\.\\\" end of keys)", as_manual(table)),
    ]
    for name, pattern, keys in places:
        document = ROOT / name
        text = document.read_text(encoding="utf-8")
        renewed = re.sub(pattern, lambda m, keys=keys: m[1] + keys + m[2], text, flags=re.DOTALL)
        if "--renew" in sys.argv:
            document.write_text(renewed, encoding="utf-8")
        elif renewed != text or re.search(pattern, text, re.DOTALL) is None:
            problem(document, "has another table of keys than the program; ./dev pictures renews it")
    keys = set(re.findall(r"`([^`]+)`", table))
    for document in documents():
        for key in re.findall(r"\bF\d{1,2}\b|\b(?:(?:Alt|Ctrl|Shift)\+)+\w+", document.read_text(encoding="utf-8")):
            if key not in keys:
                problem(document, f"names the key {key}, which does nothing")


def main():
    check_keys()
    subs = sub_commands()
    devs = dev_commands()
    for document in documents():
        text = document.read_text(encoding="utf-8")
        check_links(document, text)
        check_paths(document, text)
        check_commands(document, text, subs, devs)
    for line in problems:
        print(line)
    return 1 if problems else 0


sys.exit(main())
