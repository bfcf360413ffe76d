#!/usr/bin/env python3
"""Runs clang-tidy over the sources named on standard input, leaving out those that it has found clean before.

usage: tidy.py [--all] [--record] BUILD_DIRECTORY

What counts as the same: the source, every header that it includes, the compile command, the checks and clang-tidy
itself. Clean states are remembered in the user's cache directory, for every checkout of the project, and those of the
last --record in cmake/tidy.clean, for a machine that has never seen the project. --all leaves nothing out.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / sys.argv[-1]
MEMORY = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "sorvane" / "tidy"
DAYS_REMEMBERED = 30
RECORD = ROOT / "cmake" / "tidy.clean"


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True, cwd=ROOT).stdout


def compile_commands():
    entries = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
    return {entry["file"]: entry for entry in entries}


def dependencies():
    """What each object was made from, as the last build has seen it."""
    found, current = {}, None
    for line in output_of("ninja", "-C", str(BUILD), "-t", "deps").splitlines():
        if line.startswith("    "):
            current.append((BUILD / line.strip()).resolve())
        elif ": #deps" in line:
            current = found.setdefault(line.split(": #deps")[0], [])
    return found


class Keys:
    """A key for each source that changes when anything changes that clang-tidy would see of it."""

    def __init__(self):
        self.commands = compile_commands()
        self.dependencies = dependencies()
        # Not the processor that it runs on, which it tells, too.
        version = [line for line in output_of("clang-tidy", "--version").splitlines() if "Host CPU" not in line]
        self.common = "\n".join([*version, (ROOT / ".clang-tidy").read_text(encoding="utf-8")])
        self.marks = {}

    def mark(self, path):
        """Contents of what is ours, size and time of what a package has brought."""
        if path not in self.marks:
            if path.is_relative_to(ROOT):
                self.marks[path] = hashlib.sha256(path.read_bytes()).hexdigest()
            else:
                status = path.stat()
                self.marks[path] = f"{status.st_size} {status.st_mtime_ns}"
        return self.marks[path]

    def of(self, source):
        """Nothing where it is not known what the source includes."""
        entry = self.commands.get(str(ROOT / source))
        words = entry["command"].split() if entry else ["-o", ""]
        includes = self.dependencies.get(words[words.index("-o") + 1])
        if not includes or not all(path.exists() for path in includes):
            return None
        lines = [self.common, entry["command"], *(f"{path} {self.mark(path)}" for path in includes)]
        return hashlib.sha256("\n".join(lines).replace(str(ROOT), "").encode()).hexdigest()[:32]


def forget_old():
    oldest = time.time() - DAYS_REMEMBERED * 86400
    for record in MEMORY.iterdir():
        if record.stat().st_mtime < oldest:
            record.unlink(missing_ok=True)


def recorded():
    if not RECORD.exists():
        return set()
    return {line.split()[0] for line in RECORD.read_text(encoding="utf-8").splitlines()}


def main():
    MEMORY.mkdir(parents=True, exist_ok=True)
    forget_old()
    keys = Keys()
    sources = {source: keys.of(source) for source in sys.stdin.read().split()}
    known = recorded()
    asked = []
    for source, key in sources.items():
        if "--all" not in sys.argv and key and (key in known or (MEMORY / key).exists()):
            (MEMORY / key).touch()
        else:
            asked.append(source)
    print(f"  {len(asked)} of {len(sources)} files", file=sys.stderr)

    def tidy(source):
        return source, subprocess.run(
            ["clang-tidy", "--quiet", "-p", str(BUILD), source], capture_output=True, text=True, cwd=ROOT, check=False)

    is_clean = True
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for source, result in pool.map(tidy, asked):
            if result.returncode == 0 and sources[source]:
                (MEMORY / sources[source]).touch()
            if result.returncode != 0:
                is_clean = False
                print(result.stdout or result.stderr, end="", flush=True)
    if is_clean and "--record" in sys.argv:
        RECORD.write_text("".join(f"{key} {source}\n" for source, key in sources.items() if key), encoding="utf-8")
    return 0 if is_clean else 1


sys.exit(main())
