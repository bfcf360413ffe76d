#!/usr/bin/env python3
"""Makes a night's runs for the guide: a missile that steers by proportional navigation at a target that drops flares, over
drawn launches, seekers' errors and patterns of flares. Its physics is a sketch; the files are what a simulation writes.

usage: make_night.py DEMONSTRATION_FOLDER OUTPUT_FOLDER RUNS
"""

import math
import pathlib
import random
import sys

STEP = 0.02
GRAVITY = 9.80665
PATTERNS = {"none": [], "single": [0.9], "salvo": [1.4, 1.3, 1.2, 1.1], "early": [3.2, 2.6, 2.0, 1.4, 0.8]}  # times to go


def add(a, b, factor=1.0):
    return [x + factor * y for x, y in zip(a, b)]


def length(a):
    return math.sqrt(sum(x * x for x in a))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def angles(direction):
    """Pitch and yaw in degrees; z points down."""
    return (math.degrees(math.atan2(-direction[2], math.hypot(direction[0], direction[1]))),
            math.degrees(math.atan2(direction[1], direction[0])))


def between(a, b):
    return math.degrees(math.acos(max(-1.0, min(1.0, sum(x * y for x, y in zip(a, b)) / length(a) / length(b)))))


class Flare:
    def __init__(self, number, time, position, velocity, source):
        self.number, self.time, self.position = number, time, position
        self.velocity = add(velocity, [source.gauss(0, 6), source.choice((-1, 1)) * 25 + source.gauss(0, 6), 12])

    def move(self):
        speed = length(self.velocity)
        drag = [-0.004 * speed * x for x in self.velocity]
        self.velocity = add(self.velocity, add(drag, [0, 0, GRAVITY]), STEP)
        self.position = add(self.position, self.velocity, STEP)


def run(pattern, source):
    """Records of an engagement, one after the other."""
    target, velocity = [0.0, 0.0, -1500.0], [source.gauss(225, 12), 0.0, 0.0]
    turn = source.choice((0.0, 0.0, 2.5, -2.5, 4.0)) * GRAVITY
    bearing = math.radians(source.uniform(-180, 180))
    distance = source.uniform(2200, 4200)
    threat = add(target, [distance * math.cos(bearing), distance * math.sin(bearing), source.uniform(200, 1000)])
    aim = add(add(target, velocity, distance / 800), threat, -1)
    missile = [x * 120 / length(aim) for x in aim]
    lag = source.uniform(0.02, 0.22)
    noise, most = abs(source.gauss(0, 0.0012)), source.uniform(18, 32) * GRAVITY
    seduction = source.uniform(0.25, 0.85)
    flares, waiting, seduced, command, glint = [], list(PATTERNS[pattern]), None, [0.0, 0.0, 0.0], [0.0, 0.0, 0.0]
    line_before, time, after, closest = None, 0.0, 0.0, math.inf
    while time < 14.0 and after < 0.9:
        to_target = add(target, threat, -1)
        apart = length(to_target)
        closing = -sum(x * y for x, y in zip(to_target, add(velocity, missile, -1))) / apart
        while waiting and closing > 0 and apart / closing < waiting[0]:
            waiting.pop(0)
            flares.append(Flare(len(flares) + 1, time, list(target), velocity, source))
            if seduced is None and source.random() < seduction * (0.35 + 0.65 * min(1.0, apart / 900)):
                seduced = flares[-1]
        flares = [flare for flare in flares if time - flare.time < 4.0]
        glint = add([0.8 * x for x in glint], [source.gauss(0, 2.5) for _ in range(3)])
        line = add(seduced.position if seduced else add(target, glint), threat, -1)
        line = [x / length(line) for x in line]
        if line_before is not None and (seduced and seduced not in flares or between(missile, line) > 50):
            line = line_before  # it looks ahead and finds nothing any more
        pitch, yaw = angles(line)
        yield time, target, angles(velocity), threat, angles(missile), (pitch, yaw), flares
        if line_before is not None:
            rate = [x / STEP for x in cross(line_before, line)]
            rate = add(rate, [source.gauss(0, noise) for _ in range(3)])
            wanted = [4.0 * length(missile) * x for x in cross(rate, [x / length(missile) for x in missile])]
            command = add(command, add(wanted, command, -1), STEP / (STEP + lag))
            size = length(command)
            missile = add(missile, command, STEP * min(1.0, most / size) if size > 0 else 0.0)
        line_before = line
        thrust = 260.0 if time < 2.2 else -35.0
        missile = add(missile, missile, STEP * thrust / length(missile))
        velocity = add(velocity, [-velocity[1] * turn / length(velocity), velocity[0] * turn / length(velocity), 0.0], STEP)
        threat, target = add(threat, missile, STEP), add(target, velocity, STEP)
        for flare in flares:
            flare.move()
        time += STEP
        closest = min(closest, apart)
        after = after + STEP if apart > closest + 1.0 and closing < 0 else 0.0


def main():
    demonstration, folder, runs = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), int(sys.argv[3])
    header = [line for line in (demonstration / "ETXYZ.OUT.veer").read_text(encoding="utf-8").splitlines()
              if not line.startswith("#")][:12]
    folder.mkdir(parents=True, exist_ok=True)
    source = random.Random(2)
    for number in range(runs):
        pattern = list(PATTERNS)[number % len(PATTERNS)]
        header[9], header[11] = str(number), "4.0"
        lines = list(header)
        for time, target, facing, threat, heading, seeker, flares in run(pattern, source):
            roll = 0.0
            lines.append(f"{time:.2f} {len(flares)} " + " ".join(f"{x:.3f}" for x in target) +
                         f" {roll} {facing[0]:.2f} {facing[1]:.2f}")
            lines.append(" ".join(f"{x:.3f}" for x in threat) + f" 0 {heading[0]:.2f} {heading[1]:.2f}")
            lines.append(f"0 0 0 {seeker[0]:.3f} {seeker[1]:.3f}")
            for flare in flares:
                lines.append(f"{flare.number} 1 " + " ".join(f"{x:.2f}" for x in flare.position) + " 2.5e7 0 0 0 5 5 5 1")
        name = f"ETXYZ.OUT.case{number:04}_flare{pattern.capitalize()}"
        (folder / name).write_text("\n".join(lines) + "\n", encoding="utf-8")
    return 0


sys.exit(main())
