#!/usr/bin/env python3
"""Compares what the command measures of the demonstration with the same formulas written down a second time.

usage: transcription.py SORVANE_PROGRAM

Shares nothing with the program but the trajectory files: reads them word by word, turns by matrices and tells angles by
Kahan's formula.
"""

import bisect
import csv
import io
import json
import math
import pathlib
import subprocess
import sys
import tempfile

SORVANE = sys.argv[1]
RELATIVE = 1e-9
FINE = 1e-12
# Of straight flight nothing but rounding is left; closing speeds are written without the digits of rounding.
ROUGH = 1e-9
ROUNDED = ("lateral_acceleration", "load_factor", "closing_speed")
NAN = math.nan


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def minus(a, b):
    return [x - y for x, y in zip(a, b)]


def dot(a, b):
    return math.fsum(x * y for x, y in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def norm(a):
    return math.hypot(*a)


def angle(a, b):
    """Degrees between two directions."""
    if norm(a) == 0 or norm(b) == 0:
        return NAN
    a, b = ([x / norm(v) for x in v] for v in (a, b))
    return math.degrees(2 * math.atan2(norm(minus(a, b)), norm([x + y for x, y in zip(a, b)])))


def axes(angles):
    """The world's directions of a body's x, y and z axis: the columns of Rz(yaw) Ry(pitch) Rx(roll)."""
    def product(a, b):
        return [[sum(a[i][k] * b[k][j] for k in range(3)) for j in range(3)] for i in range(3)]

    (cr, sr), (cp, sp), (cy, sy) = ((math.cos(math.radians(x)), math.sin(math.radians(x))) for x in angles)
    matrix = product(
        [[cy, -sy, 0], [sy, cy, 0], [0, 0, 1]],
        product([[cp, 0, sp], [0, 1, 0], [-sp, 0, cp]], [[1, 0, 0], [0, cr, -sr], [0, sr, cr]]))
    return list(zip(*matrix))


class Sample:
    def __init__(self, lines):
        a, b, c = [[float(word) for word in line.split()] for line in (next(lines), next(lines), next(lines))]
        self.time, self.target, self.attitude = a[0], a[2:5], a[5:8]
        self.threat, self.gyro = b[0:3], c[2:5]
        self.r = minus(self.threat, self.target)
        self.axis = axes(self.gyro)[0]
        self.flares = {}
        for _ in range(int(a[1])):
            words = next(lines).split()
            bands = [float(words[i]) for i in ((9, 10, 11) if int(words[12]) >= 3 else (9, 9, 9))]
            self.flares[int(words[0])] = [float(x) for x in words[2:5]], float(words[5]), bands

    def off(self, position):
        return angle(self.axis, minus(position, self.threat))


def read(path):
    text = output("uncompress", "-c", path) if path.endswith(".Z") else pathlib.Path(path).read_text(encoding="latin-1")
    lines = [line for line in text.splitlines() if not line.startswith("#")]
    records, samples = iter(lines[12:]), []
    try:
        while True:
            samples.append(Sample(records))
    except StopIteration:
        pass
    try:
        return float(lines[11]) / 2, samples
    except ValueError:
        return 0.75, samples  # of the field of 1.5 degrees that a word stands for


def speed(samples, i, body):
    """The size of the derivative of Lagrange's parabola."""
    if i in (0, len(samples) - 1):
        a, b = (samples[0], samples[1]) if i == 0 else (samples[-2], samples[-1])
        return norm(minus(getattr(b, body), getattr(a, body))) / (b.time - a.time)
    t0, t1, t2 = (s.time for s in samples[i - 1:i + 2])
    weights = ((t1 - t2) / ((t0 - t1) * (t0 - t2)), 1 / (t1 - t0) + 1 / (t1 - t2), (t1 - t0) / ((t2 - t0) * (t2 - t1)))
    here = getattr(samples[i], body)
    return norm([sum(w * (getattr(s, body)[k] - here[k]) for w, s in zip(weights, samples[i - 1:i + 2]))
                 for k in range(3)])


def lateral(samples, times, i, body):
    before = bisect.bisect_right(times, times[i] - 0.1 + 1e-9) - 1
    after = bisect.bisect_left(times, times[i] + 0.1 - 1e-9)
    if before < 0 or after == len(samples):
        return NAN
    a, b, c = (getattr(samples[k], body) for k in (before, i, after))
    sides = norm(minus(b, a)), norm(minus(c, b)), norm(minus(c, a))
    twice_area = norm(cross(minus(b, a), minus(c, b)))
    if twice_area == 0:
        return 0.0
    radius = math.prod(sides) / (2 * twice_area)
    arc = sum(2 * radius * math.asin(side / (2 * radius)) for side in sides[:2])
    return (arc / (times[after] - times[before])) ** 2 / radius


def nearest(sample, half):
    """By name, the target first, with its angle."""
    objects = [("target", sample.off(sample.target))]
    objects += [(f"flare {id}", sample.off(flare[0])) for id, flare in sample.flares.items()]
    within = [o for o in objects if o[1] <= half]
    return min(within, key=lambda o: o[1], default=("", NAN))


def moments(half, samples):
    times = [s.time for s in samples]
    for i, s in enumerate(samples):
        a, b = (s, samples[i + 1]) if i + 1 < len(samples) else (samples[i - 1], s)
        v = [x / (b.time - a.time) for x in minus(b.r, a.r)]
        u = minus(b.threat, a.threat)
        x, y, z = (dot(axis, s.r) for axis in axes(s.attitude))
        name, least = nearest(s, half)
        row = {
            "line_of_sight_rate_deg_per_s": math.degrees(norm(cross(s.r, v)) / dot(s.r, s.r)),
            "threat_azimuth_deg": math.degrees(math.atan2(y, x)),
            "threat_elevation_deg": math.degrees(math.asin(-z / norm(s.r))),
            "lead_angle_deg": angle(u, minus(s.target, s.threat)),
            "zero_effort_miss_m": norm(cross(s.r, v)) / norm(v),
            "time_to_go_s": -dot(s.r, v) / dot(v, v),
            "off_boresight_deg": s.off(s.target),
            "half_field_deg": half,
            "flares_burning": len(s.flares),
            "nearest": name,
            "nearest_off_boresight_deg": least,
            "range_m": norm(s.r),
            "closing_speed_m_per_s": -dot(s.r, v) / norm(s.r),
            "aspect_deg": angle(axes(s.attitude)[0], s.r),
        }
        for body in ("target", "threat"):
            acceleration = lateral(samples, times, i, body)
            row |= {f"{body}_speed_m_per_s": speed(samples, i, body), f"{body}_altitude_m": -getattr(s, body)[2],
                    f"{body}_lateral_acceleration_m_per_s2": acceleration,
                    f"{body}_load_factor_g": acceleration / 9.80665}
        yield row


def flares(samples):
    lit = {}
    for s in samples:
        lit = {id: lit.get(id, s.time) for id in s.flares}
        for id, (position, brightness, bands) in s.flares.items():
            yield {
                "time_s": s.time, "flare": id, "flare_x_m": position[0], "flare_z_m": position[2],
                "flare_age_s": s.time - lit[id], "flare_range_m": math.dist(position, s.threat),
                "flare_distance_m": math.dist(position, s.target), "flare_off_boresight_deg": s.off(position),
                "flare_brightness": brightness, "flare_band_1": bands[0], "flare_band_2": bands[1],
                "flare_band_3": bands[2], "off_boresight_deg": s.off(s.target)}


def share(start, end, half):
    if (start <= half) == (end <= half):
        return float(start <= half)
    crossing = (half - start) / (end - start)
    return crossing if start <= half else 1 - crossing


def totals(half, samples):
    """Of the engagement, and the time in the field of each flare."""
    target, of_flares = 0.0, {}
    for a, b in zip(samples, samples[1:]):
        target += (b.time - a.time) * share(a.off(a.target), b.off(b.target), half)
        for id, flare in a.flares.items():
            end = b.off(b.flares.get(id, flare)[0])
            of_flares[id] = of_flares.get(id, 0.0) + (b.time - a.time) * share(a.off(flare[0]), end, half)
    names = [(s.time, nearest(s, half)[0]) for s in samples if nearest(s, half)[0]]
    closest = min((norm(s.r), s.time) for s in samples)
    for a, b in zip(samples, samples[1:]):
        along = minus(b.r, a.r)
        part = -dot(a.r, along) / dot(along, along)
        if 0 < part < 1:
            passing = norm([x + part * y for x, y in zip(a.r, along)])
            closest = min(closest, (passing, a.time + part * (b.time - a.time)))
    return {
        "closest_approach_m": closest[0], "closest_approach_time_s": closest[1],
        "first_flare_time_s": next((s.time for s in samples if s.flares), None), "target_time_in_field_s": target,
        "target_last_nearest_s": max((t for t, name in names if name == "target"), default=None),
        "decoyed": names[-1][1] != "target" if names else None}, of_flares


def main():
    failures = 0

    def compare(where, expected, actual):
        nonlocal failures
        for name, value in expected.items():
            given = actual[name]
            if isinstance(value, str) or value is None or isinstance(value, bool):
                is_same = given == value
            elif math.isnan(value):
                is_same = given == ""
            else:
                least = ROUGH if any(part in name for part in ROUNDED) else FINE
                is_same = given not in ("", None) and abs(float(given) - value) <= RELATIVE * abs(value) + least
            if not is_same:
                failures += 1
                if failures < 20:
                    print(f"{where}: {name} is {given}, not {value}")

    def compare_table(path, expected, *options):
        table = list(csv.DictReader(io.StringIO(output(SORVANE, "export", path, "--unit", "m", *options))))
        if len(table) != len(expected):
            sys.exit(f"{path} {options}: {len(table)} rows instead of {len(expected)}")
        for i, (row, values) in enumerate(zip(table, expected)):
            compare(f"{path} {options} {i}", values, row)
        return len(table)

    rows = 0
    with tempfile.TemporaryDirectory() as folder:
        output(SORVANE, "demo", folder)
        for path in sorted(str(p) for p in pathlib.Path(folder).glob("ETXYZ.OUT.*")):
            half, samples = read(path)
            rows += compare_table(path, list(moments(half, samples)), "--measures", "all")
            rows += compare_table(path, list(flares(samples)), "--flares", "--measures", "all")
            measures = json.loads(output(SORVANE, "info", "--json", "--unit", "m", path))["files"][0]["measures"]
            of_engagement, of_flares = totals(half, samples)
            compare(path, of_engagement, measures)
            times = {str(f["flare"]): f["flare_time_in_field_s"] for f in measures["flares"]}
            compare(path, {str(id): seconds for id, seconds in of_flares.items()}, times)
    if rows < 1000:
        sys.exit(f"compared {rows} rows only")
    print(f"{rows} rows compared, {failures} differences")
    return 1 if failures else 0


sys.exit(main())
