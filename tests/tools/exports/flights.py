"""Trajectories for the tests of what is exported: written, and read a second time with matrices and words alone."""

import math
import os
import pathlib
import subprocess
import tempfile

HALF_TURN = [[1, 0, 0], [0, -1, 0], [0, 0, -1]]  # models are drawn with z up


def transposed(a):
    return [list(row) for row in zip(*a)]


def product(*matrices):
    result = matrices[0]
    for matrix in matrices[1:]:
        result = [[math.fsum(x * y for x, y in zip(row, column)) for column in zip(*matrix)] for row in result]
    return result


def turned(matrix, vector):
    return [math.fsum(x * y for x, y in zip(row, vector)) for row in matrix]


def about(axis, degrees):
    """The right-handed turn about an axis, 0 to 2."""
    cosine, sine = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    matrix = [[float(i == j) for j in range(3)] for i in range(3)]
    i, j = (axis + 1) % 3, (axis + 2) % 3
    matrix[i][i] = matrix[j][j] = cosine
    matrix[i][j], matrix[j][i] = -sine, sine
    return matrix


def attitude(roll, pitch, yaw):
    return product(about(2, yaw), about(1, pitch), about(0, roll))


def of_quaternion(quaternion):
    x, y, z, w = quaternion
    return [[1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)],
            [2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)],
            [2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)]]


def distance(a, b):
    return math.dist([x for row in a for x in row], [x for row in b for x in row]) if isinstance(a[0], list) \
        else math.dist(a, b)


def blend(a, b, part):
    return [x * (1 - part) + y * part for x, y in zip(a, b)]


def finite(word):
    try:
        return float(word) if math.isfinite(float(word)) else 0.0
    except ValueError:
        return 0.0


class Flight:
    """Samples by time: {"target": (position, angles), "threat": …, "flares": {id: (position, half axes)}}."""

    def __init__(self, path):
        lines = [line for line in pathlib.Path(path).read_text().splitlines() if not line.startswith("#")]
        self.header, rows = lines[:12], [[finite(word) for word in line.split()] for line in lines[12:]]
        samples = {}
        while rows:
            head, threat, _ = rows[0], rows[1], rows[2]
            flares = rows[3:3 + int(head[1])]
            rows = rows[3 + int(head[1]):]
            samples[head[0]] = {
                "target": (head[2:5], head[5:8]), "threat": (threat[:3], threat[3:6]),
                "flares": {int(f[0]): (f[2:5], f[9:12] if f[12] >= 3 else [f[9]] * 3) for f in flares}}
        self.times = sorted(samples)
        self.samples = [samples[time] for time in self.times]

    def around(self, time):
        """The samples before and after a time, and the part of the way from one to the other."""
        after = max(1, min(sum(t <= time for t in self.times), len(self.times) - 1)) if len(self.times) > 1 else 0
        before = max(after - 1, 0)
        width = self.times[after] - self.times[before]
        return before, after, (time - self.times[before]) / width if width else 0.0

    def body(self, name, time):
        before, after, part = self.around(time)
        return [blend(self.samples[before][name][i], self.samples[after][name][i], part) for i in (0, 1)]

    def flare(self, identifier, time):
        """Where a flare is that burns, staying where it was last in the interval before it is out."""
        before, after, part = self.around(time)
        places = [self.samples[i]["flares"].get(identifier, (None,))[0] for i in (before - 1, before, after)]
        if places[1] is None:  # just lit on the last sample, or just out
            return places[2] if part == 1 and places[2] else places[0]
        return blend(places[1], places[2] or places[1], part)

    def identifiers(self):
        return list(dict.fromkeys(i for sample in self.samples for i in sample["flares"]))

    def burns(self, identifier):
        """(first time, time at which it is out) of each time that it burns."""
        lit = [identifier in sample["flares"] for sample in self.samples]
        starts = [i for i in range(len(lit)) if lit[i] and (i == 0 or not lit[i - 1])]
        ends = [next((j for j in range(i, len(lit)) if not lit[j]), len(lit) - 1) for i in starts]
        return [(self.times[i], self.times[j]) for i, j in zip(starts, ends)]


def write(path, samples, header=None):
    """Samples are (time, target, target's angles, threat, threat's angles, [(flare, position, half axes)])."""
    header = header or ["/nowhere/t"] * 3 + ["1 2 3"] * 2 + ["/nowhere/t.vnl"] * 2 + ["", "white", "7", "x", "2"]
    lines = list(header)
    for time, target, target_angles, threat, threat_angles, flares in samples:
        lines.append(" ".join(map(str, [time, len(flares), *target, *target_angles])))
        lines.append(" ".join(map(str, [*threat, *threat_angles])))
        lines.append("0 0 0 0 0")
        lines += [" ".join(map(str, [i, 0, *position, 1e6, 0, 0, 0, *axes, 3])) for i, position, axes in flares]
    pathlib.Path(path).write_text("\n".join(lines) + "\n")
    return path


def awkward(folder, header=None):
    """What trajectories may hold: one sample; equal times, words that are no numbers and numbers beyond any map; angles
    through a half turn, a vertical climb, and flares that vanish, come back and burn on one sample alone."""
    one = write(f"{folder}/one", [(2.5, (1, 2, -3), (10, 20, 30), (400, 5, -6), (0, 0, 0), [(4, (1, 1, 1), (1, 2, 1))])],
                header)
    flights = []
    for i in range(12):
        flares = [(7, (10 * i, 5, -100), (2, 2, 2))] if i in (0, 1, 2, 5, 6, 11) else []
        flares += [(-3, (20, i, -90), (1, 1 + i, 3))] * (i == 4)
        flights.append((round(0.1 * i, 6), (100 + 7 * i, -50, -500), (170 + 4 * i, 5 * i, 179 - i), (i * i, 40 * i, -400),
                        (i, 90 if i == 3 else 7 * i, -100 + 30 * i), flares))
    flights[8] = (0.7, *flights[8][1:])  # in the place of the one before
    flights[9] = (0.9, (1e30, "nan", -1e35), flights[9][2], flights[9][3], ("inf", 0, 0), flights[9][5])
    return [one, write(f"{folder}/many", flights, header)]


def crowd(path, flares=100000):
    """Each flare burns on two of a hundred samples."""
    samples = [(i / 100, (0, 0, -500), (0, 0, 0), (i, 0, -400), (0, 0, 0), []) for i in range(100)]
    for flare in range(flares):
        for i in (flare % 98, flare % 98 + 1):
            samples[i][5].append((flare, (flare % 1000, i, -100), (2, 2, 2)))
    return write(path, samples)


def spiral(path, header=None):
    """A climbing roll with a chase and four flares, in steps of 7 ms."""
    samples = []
    for i in range(400):
        t = 0.007 * i - 0.5
        flares = [(j, (3000 + 40 * t, 10 * j + 90 * t, -900 + j), (1 + t * t, 0.8, 0.6)) for j in range(1, 5)
                  if 60 * j <= i < 60 * j + 100]
        samples.append((round(t, 3), (2900 + 250 * t, -2300 + 30 * t * t, -700 - 40 * t), (150 * t, 8 * t, -80 + 12 * t),
                        (600 + 900 * t, -600 - 700 * t, -300 - 90 * t), (-20 * t, 22 - 3 * t, -48 + t), flares))
    return write(path, samples, header)


class Command:
    def __init__(self, program):
        self.program = program
        self.kept = tempfile.TemporaryDirectory()  # as long as this
        self.folder = pathlib.Path(self.kept.name)

    def run(self, *arguments, status=0, data="/nowhere/"):
        """What it writes to standard output and to standard error."""
        ran = subprocess.run([self.program, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                             env=os.environ | {"PELSAR_DATA": data}, check=False)
        assert ran.returncode == status, (ran.returncode, ran.stderr)
        return ran.stdout, ran.stderr.decode()
