#!/usr/bin/env python3
"""Prints how many lines of each room the last run of an instrumented build has reached.

usage: linecoverage.py BUILD_DIRECTORY
"""

import collections
import concurrent.futures
import gzip
import json
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(sys.argv[1]).resolve()
ROOMS = ("analysis", "app", "demo", "engagement", "opengllib", "plots", "runtable", "sensor", "tools", "video", "view")


def counts_of(record):
    """(file, line) -> how often it was reached, of one object."""
    with tempfile.TemporaryDirectory() as directory:
        subprocess.run(["gcov", "--json-format", str(record)], cwd=directory, capture_output=True, check=True)
        counts = {}
        for made in pathlib.Path(directory).iterdir():
            for file in json.loads(gzip.decompress(made.read_bytes()))["files"]:
                path = pathlib.Path(file["file"])
                path = (path if path.is_absolute() else BUILD / path).resolve()
                if path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] in ROOMS:
                    for line in file["lines"]:
                        key = (path.relative_to(ROOT), line["line_number"])
                        counts[key] = max(counts.get(key, 0), line["count"])
        return counts


def main():
    # What was never run has notes and no data.
    notes = [note.with_suffix(".gcda") for note in BUILD.rglob("*.gcno")]
    records = [data if data.exists() else data.with_suffix(".gcno") for data in notes]
    records = [record for record in records if record.relative_to(BUILD).parts[0] in (*ROOMS, "tests")]
    lines = collections.Counter()
    with concurrent.futures.ThreadPoolExecutor() as pool:
        for counts in pool.map(counts_of, records):
            for key, count in counts.items():
                lines[key] += count
    print(f"{'room':<12}{'lines':>8}{'reached':>9}{'share':>8}")
    for room in (*ROOMS, "all"):
        of_room = [count for (path, _), count in lines.items() if room in ("all", path.parts[0])]
        reached = sum(count > 0 for count in of_room)
        if of_room:
            print(f"{room:<12}{len(of_room):>8}{reached:>9}{reached / len(of_room):>8.1%}")


main()
