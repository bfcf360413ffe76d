#!/usr/bin/env python3
"""Shows which one-line changes to the program the tests would miss; README.md beside it says how.

usage: mutate.py [ROOM [ROW…]] [--jobs N]
       mutate.py --check
       mutate.py --list [ROOM]
"""

import argparse
import collections
import concurrent.futures
import contextlib
import hashlib
import json
import os
import pathlib
import queue
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from mutanttables import TABLES, Sources, TableError, place_of, read_tables, rooms, switched_files

ROOT = TABLES.parent.parent
WORK = ROOT / "build/mutate"
TREE = WORK / "tree"
BUILD = TREE / "build/mutate"
STATE = WORK / "state.json"
# What the tests of a room run beside their own program.
FURTHER_TARGETS = {"app": ["new_sorvane"], "tools": ["sorvane_manual"]}
ROOMS_OF_PICTURES = ("opengllib", "view")
MOST_SURVIVORS = 0.05
SHORTEST_LIMIT = 60  # seconds, for what a quiet machine does in one


def say(text):
    print(text, flush=True)


def write_if_changed(path, content):
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def copy_tree(sources, texts):
    """Makes the copy that is built, touching only what differs from its last state. Returns its fingerprint."""
    wanted = set()
    fingerprint = hashlib.sha256()
    for path in sources.paths:
        target = TREE / path.relative_to(ROOT)
        wanted.add(target)
        content = texts[path].encode() if path in texts else path.read_bytes()
        write_if_changed(target, content)
        target.chmod(path.stat().st_mode)
        # The tables and their tool decide nothing that the switched texts don't show.
        if TABLES not in path.parents:
            fingerprint.update(f"{target}\0{len(content)}\0".encode() + content)
    for path in sorted(TREE.rglob("*")) if TREE.exists() else []:
        if BUILD not in path.parents and path.is_file() and path not in wanted:
            path.unlink()
    return fingerprint.hexdigest()


class BuildFailed(Exception):
    pass


def build(targets):
    if not (BUILD / "build.ninja").exists():
        subprocess.run(["cmake", "--preset", "mutate"], cwd=TREE, stdout=subprocess.DEVNULL, check=True)
    command = ["cmake", "--build", BUILD, "--target", *targets, "--", "-k", "0"]
    made = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
    if made.returncode != 0:
        raise BuildFailed(made.stdout)


def targets_of(room):
    known = (BUILD / "build.ninja").read_text(errors="replace") if (BUILD / "build.ninja").exists() else ""
    targets = [f"test_{room}", *FURTHER_TARGETS.get(room, [])]
    if room in ROOMS_OF_PICTURES and re.search(r"^build test_pictures\b", known, re.MULTILINE):
        targets.append("test_pictures")
    return targets


def rows_that_do_not_compile(output, rows, sources):
    """The rows whose changed line a compiler complains of."""
    lines = set(re.findall(r"([^\s/]+):(\d+):\d+: (?:fatal )?error", output))
    lines |= {(name, number) for name, number in re.findall(r"([^\s/]+):(\d+):\d+:   required from", output)}
    guilty = []
    for row in rows:
        path = sources.find(row)
        text = path.read_text(errors="replace")
        anchor = row.fields.get("near", row.old)
        if (path.name, str(text[: text.index(anchor)].count("\n") + 1)) in lines:
            guilty.append(row)
    return guilty


@contextlib.contextmanager
def display():
    """An X server for one run at a time: windows on one display compete for the focus."""
    reading, writing = os.pipe()
    command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1600x1200x24", "-nolisten", "tcp"]
    server = subprocess.Popen(command, pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    try:
        with os.fdopen(reading) as answer:
            yield ":" + answer.readline().strip()
    finally:
        server.terminate()
        server.wait()


# passed, what failed first (a test's name, or why the run ended), seconds
Outcome = collections.namedtuple("Outcome", "passed failure seconds")


def run_program(command, folder, environment, limit):
    """Runs a program of tests in a process group of its own, which ends with it."""
    begin = time.monotonic()
    with tempfile.TemporaryFile() as output:
        process = subprocess.Popen(command, cwd=folder, env=environment, stdout=output, stderr=subprocess.STDOUT,
                                   stdin=subprocess.DEVNULL, start_new_session=True)
        try:
            status = process.wait(limit)
        except subprocess.TimeoutExpired:
            status = None
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        output.seek(0)
        text = output.read().decode(errors="replace")
    seconds = time.monotonic() - begin
    if status == 0:
        return Outcome(True, "", seconds)
    failed = re.findall(r"\[  FAILED  \] (\w[\w./]*)", text) or re.findall(r"\[ RUN      \] (\S+)", text)[-1:]
    failed = failed or re.findall(r"Test\s+#\d+: (\S+) \.*\s*\**(?:Failed|Timeout|Exception)", text)
    name = failed[0] if failed else pathlib.Path(command[0]).name
    return Outcome(False, name if status is not None else f"{name} (no end within {limit:.0f} s)", seconds)


class Room:
    """The tests of a room: its program, that of the pictures where it draws, and the further entries of ctest."""

    def __init__(self, name):
        self.name = name
        self.programs = [p for p in (BUILD / f"tests/{name}/test_{name}", BUILD / "tests/pictures/test_pictures")
                         if p.exists() and (p.parent.name == name or name in ROOMS_OF_PICTURES)]
        self.entries = self.further_entries()
        self.limit = 600.0

    def further_entries(self):
        folder = BUILD / f"tests/{self.name}"
        answer = subprocess.run(["ctest", "--show-only=json-v1"], cwd=folder, capture_output=True, check=True)
        entries = json.loads(answer.stdout)["tests"]
        return [entry["name"] for entry in entries
                if "--gtest_also_run_disabled_tests" not in entry.get("command", [])
                and not entry["name"].endswith("_NOT_BUILT")]

    def run(self, environment, chosen=None):
        """Runs all tests, or those that a filter of googletest or the name of an entry chooses, to the first failure."""
        seconds = 0.0
        if chosen not in self.entries:
            for program in self.programs:
                command = [program, "--gtest_fail_fast", "--gtest_color=no"]
                command += [f"--gtest_filter={chosen}"] if chosen else []
                outcome = run_program(command, program.parent, environment, self.limit)
                seconds += outcome.seconds
                if not outcome.passed:
                    return outcome
            if chosen:
                return Outcome(True, "", seconds)
        entries = [chosen] if chosen else self.entries
        if entries:
            names = "|".join(re.escape(entry) for entry in entries)
            command = ["ctest", "--stop-on-failure", "-R", f"^({names})$"]
            outcome = run_program(command, BUILD / f"tests/{self.name}", environment, self.limit)
            return outcome._replace(seconds=seconds + outcome.seconds)
        return Outcome(True, "", seconds)


class State:
    """What earlier runs found: trees that are green without a change, and the test that caught each change."""

    def __init__(self):
        try:
            self.values = json.loads(STATE.read_text())
        except (OSError, json.JSONDecodeError):
            self.values = {}  # the first run, or one that was cut off while it saved

    def section(self, name):
        return self.values.setdefault(name, {})

    def save(self):
        write_if_changed(STATE, json.dumps(self.values, indent=1).encode())


def environment_for(screen, **more):
    return {**os.environ, "DISPLAY": screen, "QT_QPA_PLATFORM": "xcb", "LIBGL_ALWAYS_SOFTWARE": "1", **more}


def run_unchanged(room, fingerprint, state, screen):
    """Without a change all must be green. Returns the switches that the tests come by; sets the time limit."""
    known = state.section("green").get(room.name)
    if known is None or known["tree"] != fingerprint:
        reached = WORK / "reached.txt"
        reached.write_text("")
        reached.chmod(0o666)  # some tests give up their rights on the way
        outcome = room.run(environment_for(screen, SORVANE_MUTANTS_REACHED=str(reached)))
        if not outcome.passed:
            raise SystemExit(f"mutate: {room.name}: without any change {outcome.failure} fails")
        switches = sorted(set(map(int, reached.read_text().split()))) if reached.exists() else []
        known = {"tree": fingerprint, "seconds": outcome.seconds, "reached": switches}
        state.section("green")[room.name] = known
        state.save()
    room.limit = max(SHORTEST_LIMIT, 5 * known["seconds"])
    say(f"{room.name}: green without a change, {known['seconds']:.0f} s")
    return set(known["reached"])


def catch(row, room, screen, earlier):
    """What catches a change; nothing when it survives. A test that fails once and then passes doesn't count."""
    environment = environment_for(screen, SORVANE_MUTANT=str(row.switch))
    hints = dict.fromkeys(hint for hint in (earlier, row.fields.get("by")) if hint)
    for chosen in [*hints, None]:
        outcome = room.run(environment, chosen)
        if not outcome.passed and not room.run(environment, chosen).passed:
            return outcome.failure
    return None


def rebuilt(row, sources, targets):
    """A context in which the copy is built with the row's change."""
    path = sources.find(row)
    copy = TREE / path.relative_to(ROOT)

    @contextlib.contextmanager
    def changed():
        text = path.read_text()
        begin = place_of(row, text)
        before = copy.read_text()
        try:
            copy.write_text(text[:begin] + row.new + text[begin + len(row.old):])
            build(targets)
            yield
        finally:
            copy.write_text(before)

    return changed()


def report(row, caught_by):
    if caught_by is None:
        reason = row.fields.get("stays")
        say(f"SURVIVED  {row.room} {row.number}: {row.sentence}" + (f" ({reason})" if reason else ""))
    else:
        late = ", though a reason is given why nothing catches it" if "stays" in row.fields else ""
        say(f"caught    {row.room} {row.number}: {row.sentence} [{caught_by}{late}]")


def run_room(room, rows, sources, state, fingerprint, jobs):
    """Runs the rows of a room. Returns those that survive."""
    earlier = state.section("caught")
    survivors = []

    def finish(row, caught_by):
        report(row, caught_by)
        if caught_by is None:
            survivors.append(row)
            earlier.pop(str(row.switch), None)
        elif "no end within" not in caught_by:
            earlier[str(row.switch)] = caught_by
        state.save()

    with contextlib.ExitStack() as stack:
        screens = queue.SimpleQueue()
        for _ in range(jobs):
            screens.put(stack.enter_context(display()))
        first = screens.get()
        reached = run_unchanged(room, fingerprint, state, first)
        screens.put(first)

        def try_row(row):
            if row.switch not in reached:
                return None
            screen = screens.get()
            try:
                return catch(row, room, screen, earlier.get(str(row.switch)))
            finally:
                screens.put(screen)

        switched_rows = [row for row in rows if not row.is_rebuilt()]
        with concurrent.futures.ThreadPoolExecutor(jobs) as workers:
            for row, caught_by in zip(switched_rows, workers.map(try_row, switched_rows)):
                finish(row, caught_by)
        rebuilt_rows = [row for row in rows if row.is_rebuilt()]
        for row in rebuilt_rows:
            try:
                with rebuilt(row, sources, targets_of(room.name)):
                    finish(row, catch(row, room, first, earlier.get(str(row.switch))))
            except BuildFailed as failure:
                raise SystemExit(f"mutate: {row.place}: the change does not build\n{failure}") from failure
        if rebuilt_rows:
            build(targets_of(room.name))
    return survivors


def summary(room, rows, survivors):
    """Prints a room's figures. Returns whether its bar is held."""
    unexplained = [row for row in survivors if "stays" not in row.fields]
    say(f"{room}: {len(rows) - len(survivors)} of {len(rows)} caught, {len(survivors) - len(unexplained)} survive for "
        f"a reason, {len(unexplained)} without one")
    return not unexplained and len(survivors) <= MOST_SURVIVORS * len(rows)


def chosen_rows(arguments):
    rows = read_tables(arguments.room)
    unknown = [number for number in arguments.rows if number not in [row.number for row in rows]]
    if unknown:
        raise TableError(f"{arguments.room}.txt has no row {unknown[0]}")
    return [row for row in rows if not arguments.rows or row.number in arguments.rows]


def mutate(rows, jobs):
    sources = Sources(ROOT)
    texts, faults = switched_files(rows, sources)
    if faults:
        raise TableError("\n".join(faults))
    fingerprint = copy_tree(sources, texts)
    state = State()
    held = True
    for name in dict.fromkeys(row.room for row in rows):
        of_room = [row for row in rows if row.room == name]
        say(f"{name}: building {len(of_room)} changes")
        try:
            build(targets_of(name))
            build(targets_of(name))  # by now the pictures' target is known
        except BuildFailed as failure:
            text = str(failure)
            say(text[max(text.find("FAILED:"), 0):][:6000])
            for row in rows_that_do_not_compile(str(failure), of_room, sources):
                say(f"{row.place}: can't be switched; add `how rebuild`")
            return 1
        survivors = run_room(Room(name), of_room, sources, state, fingerprint, jobs)
        held = summary(name, of_room, survivors) and held
    return 0 if held else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("room", nargs="?", choices=rooms(), metavar="ROOM")
    parser.add_argument("rows", nargs="*", type=int, metavar="ROW", help="numbers of rows, as the run prints them")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="runs beside each other")
    parser.add_argument("--check", action="store_true", help="only see that every row's old text stands where it says")
    parser.add_argument("--list", action="store_true", help="only list the rows")
    arguments = parser.parse_args()
    try:
        rows = chosen_rows(arguments)
        if arguments.list:
            for row in rows:
                say(f"{row.room} {row.number}: {row.sentence}")
        elif arguments.check:
            faults = switched_files(rows, Sources(ROOT))[1]
            if faults:
                raise TableError("\n".join(faults))
            say(f"{len(rows)} rows in {len({row.room for row in rows})} tables")
        else:
            for program in ("Xvfb", "cmake", "ctest"):
                if shutil.which(program) is None:
                    raise SystemExit(f"mutate: {program} is missing")
            return mutate(rows, arguments.jobs)
    except TableError as error:
        print(f"mutate: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
