#!/usr/bin/env python3
"""Compares what the command tells of sets of a known distribution with plain formulas, and with the distribution.

usage: check_stats.py SORVANE_PROGRAM
"""

import json
import math
import pathlib
import random
import sqlite3
import statistics
import subprocess
import sys
import tempfile

DISTANCES = [2.0, 5.0, 10.0]
Z = statistics.NormalDist().inv_cdf(0.975)


def close(told, expected, tolerance=1e-9):
    assert abs(told - expected) <= tolerance * max(1.0, abs(expected)), (told, expected)


def make(path, count, scale, decoyed, source):
    """Misses of a shot with an error of the same spread to either side: Rayleigh's distribution."""
    database = sqlite3.connect(path)
    database.execute("CREATE TABLE runs (path TEXT PRIMARY KEY, file_bytes INTEGER, file_modified_ns INTEGER, faults, "
                     "closest_approach_ft, decoyed, pattern) WITHOUT ROWID")
    rows = []
    for i in range(count):
        miss = scale * math.hypot(source.gauss(0, 1), source.gauss(0, 1))
        rows.append((f"{i:06}", 1, 1, 0, miss, int(source.random() < decoyed), i % 3))
    database.executemany("INSERT INTO runs VALUES (?, ?, ?, ?, ?, ?, ?)", rows)
    faulty = [(f"x{i}", 1, 1, 1, None if i % 2 else 0.0, 1, 0) for i in range(20)]
    database.executemany("INSERT INTO runs VALUES (?, ?, ?, ?, ?, ?, ?)", faulty)
    database.commit()
    database.close()
    return rows


def tell(program, *arguments):
    run = subprocess.run([program, "stats", *map(str, arguments), "--json", "--miss", "2,5,10"], capture_output=True,
                         text=True, check=True)
    return json.loads(run.stdout)


def wilson(count, of):
    """The two roots of (p̂ - p)² = z² p (1 - p) / n."""
    share = count / of
    a, b, c = 1 + Z * Z / of, -2 * share - Z * Z / of, share * share
    root = math.sqrt(b * b - 4 * a * c)
    return (-b - root) / (2 * a), (-b + root) / (2 * a)


def check_share(told, values):
    count, of = sum(values), len(values)
    assert (told["count"], told["of"]) == (count, of)
    close(told["share"], count / of)
    for end, expected in zip(told["interval"], wilson(count, of)):
        close(end, expected)


def check_rows(told, rows, source):
    misses = sorted(row[4] for row in rows)
    assert told["n"] == len(misses)
    close(told["mean"], statistics.fmean(misses))
    close(told["standard_deviation"], statistics.stdev(misses))
    twentieths = statistics.quantiles(misses, n=20, method="inclusive")
    quantiles = {0: misses[0], 1: misses[-1]} | {i / 20: value for i, value in enumerate(twentieths, 1)}
    for quantile in told["quantiles"]:
        close(quantile["value"], quantiles[quantile["at"]])
    for within, distance in zip(told["within"], DISTANCES):
        check_share(within, [miss <= distance for miss in misses])
    check_share(told["decoyed"], [row[5] for row in rows])
    medians = sorted(statistics.median(source.choices(misses, k=len(misses))) for _ in range(1500))
    width = medians[-38] - medians[37]
    for end, expected in zip(told["median_interval"], (medians[37], medians[-38])):
        close(end, expected, 0.15 * width)


def check_difference(told, a, b):
    for index, distance in enumerate(DISTANCES):
        share = [sum(row[4] <= distance for row in rows) for rows in (a, b)]
        (low_a, high_a), (low_b, high_b) = wilson(share[0], len(a)), wilson(share[1], len(b))
        p, q = share[0] / len(a), share[1] / len(b)
        close(told["within"][index]["difference"], p - q)
        for end, expected in zip(told["within"][index]["interval"],
                                 (p - q - math.hypot(p - low_a, high_b - q), p - q + math.hypot(high_a - p, q - low_b))):
            close(end, expected)
    misses = [[row[4] for row in rows] for rows in (a, b)]
    distance = max(abs(sum(x <= at for x in misses[0]) / len(a) - sum(x <= at for x in misses[1]) / len(b))
                   for at in misses[0] + misses[1])
    close(told["kolmogorov_smirnov"]["distance"], distance)
    scaled = distance * math.sqrt(len(a) * len(b) / (len(a) + len(b)))
    limit = 2 * sum((-1) ** (k - 1) * math.exp(-2 * (k * scaled) ** 2) for k in range(1, 50))
    assert 0.6 * limit < told["kolmogorov_smirnov"]["p"] <= 1.02 * limit, (told["kolmogorov_smirnov"], limit)
    greater = sum(x > y for x in misses[0] for y in misses[1])
    close(told["mann_whitney"]["greater"], greater / len(a) / len(b))
    mean, variance = len(a) * len(b) / 2, len(a) * len(b) * (len(a) + len(b) + 1) / 12
    close(told["mann_whitney"]["p"], math.erfc((abs(greater - mean) - 0.5) / math.sqrt(2 * variance)), 1e-12)


def main():
    program = sys.argv[1]
    source = random.Random(11)
    with tempfile.TemporaryDirectory() as folder:
        night, other = pathlib.Path(folder, "night.sqlite"), pathlib.Path(folder, "other.sqlite")
        rows = make(night, 4000, 5.0, 0.3, source)
        others = make(other, 900, 5.3, 0.4, source)
        told = tell(program, night, "--by", "pattern")["set"]
        assert told["column"] == "closest_approach_ft" and told["with_faults"] == 20
        check_rows(told, rows, source)
        for group in told["groups"]:
            check_rows(group, [row for row in rows if row[6] == group["value"]], source)
        # The distribution's own median, shares and mean.
        low, high = told["median_interval"]
        assert low < 5 * math.sqrt(2 * math.log(2)) < high
        for within, distance in zip(told["within"], DISTANCES):
            low, high = within["interval"]
            assert low < 1 - math.exp(-distance ** 2 / 50) < high
        close(told["mean"], 5 * math.sqrt(math.pi / 2), 0.02)
        half = tell(program, night, "--where", "pattern < 1", "--against", other, "--against-where", "1")
        check_difference(half["difference"], [row for row in rows if row[6] < 1], [row for row in others])
    return 0


sys.exit(main())
