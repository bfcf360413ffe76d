#!/usr/bin/env python3
"""Runs the console examples of a document, in order in one shell, and compares what they print with what it says.

usage: run_examples.py DOCUMENT SORVANE_PROGRAM [--renew]

A block "```text FILE" becomes that file. In a block "```console" a line "$ …" is a command; what follows up to the next
one is its output, both streams together. A line "…" of the document stands for any lines, "…" within a line for anything.
The folder in which the examples run is called /home/me in the document. With --renew, outputs that hold no "…" are
written anew, and an output that is "…" alone is written for the first time.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

DOCUMENT = pathlib.Path(sys.argv[1])
SORVANE = pathlib.Path(sys.argv[2]).resolve()
HOME = "/home/me"
MARK = "=== end of output ==="


class Shell:
    def __init__(self, folder):
        environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY", "PELSAR_DATA")}
        environment["PATH"] = f"{SORVANE.parent}:{environment['PATH']}"
        self.folder = folder
        self.process = subprocess.Popen(
            ["bash"], cwd=folder, env=environment, text=True, bufsize=1,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def run(self, command):
        self.process.stdin.write(f"{command}\nstatus=$?; echo; echo '{MARK}'; (exit $status)\n")
        self.process.stdin.flush()
        output = ""
        for line in self.process.stdout:
            if line.rstrip("\n") == MARK:
                break
            output += line
        output = output[:-1].replace(str(self.folder), HOME)  # less the line feed before the mark
        return output.splitlines()


def matches(expected, actual):
    """Whether the lines agree, with "…" for any lines and trailing blanks aside."""
    def pattern_of(line):
        return r"(?:.*\n)*?" if line == "…" else re.escape(line.rstrip()).replace("…", ".*") + r"\n"

    pattern = "".join(map(pattern_of, expected))
    return re.fullmatch(pattern, "".join(line.rstrip() + "\n" for line in actual)) is not None


def main():
    is_renewing = "--renew" in sys.argv
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        shell = Shell(pathlib.Path(folder).resolve())

        def write_file(block):
            pathlib.Path(folder, block["file"]).write_text(block["contents"], encoding="utf-8")
            return block[0]

        def run_block(block):
            nonlocal failures
            if block["file"]:
                return write_file(block)
            lines = []
            for part in re.split(r"^(?=\$ )", block["contents"], flags=re.MULTILINE):
                if not part:
                    continue
                command, *expected = part.splitlines()
                actual = shell.run(command[2:])
                if is_renewing and (expected == ["…"] or not any("…" in line for line in expected)):
                    expected = [line.rstrip() for line in actual]
                if not matches(expected, actual):
                    failures += 1
                    print(f"{DOCUMENT.name}: {command}\n  says:   {expected}\n  prints: {actual}")
                lines += [command, *expected]
            return "```console\n" + "".join(line + "\n" for line in lines) + "```"

        text = DOCUMENT.read_text(encoding="utf-8")
        blocks = r"^```(?:console|text (?P<file>\S+))\n(?P<contents>.*?)^```"
        renewed = re.sub(blocks, run_block, text, flags=re.MULTILINE | re.DOTALL)
        if is_renewing:
            DOCUMENT.write_text(renewed, encoding="utf-8")
    return 1 if failures else 0


sys.exit(main())
