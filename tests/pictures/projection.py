"""Trajectories, cameras and where points of the world fall in their pictures, for points.py: written without looking at
the viewer's code.
"""
import math
import subprocess

WIDTH, HEIGHT = 240, 180  # of every picture, in pixels


# Vectors are tuples of three.
def add(a, b, factor=1.0):
    return tuple(p + factor * q for p, q in zip(a, b))


def sub(a, b):
    return add(a, b, -1.0)


def dot(a, b):
    return sum(p * q for p, q in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    return tuple(p / math.sqrt(dot(a, a)) for p in a)


def rotated(point, angles):
    """Turned about x, then about y, then about z, right-handed, by degrees."""
    x, y, z = point
    roll, pitch, yaw = (math.radians(angle) for angle in angles)
    y, z = y * math.cos(roll) - z * math.sin(roll), y * math.sin(roll) + z * math.cos(roll)
    x, z = x * math.cos(pitch) + z * math.sin(pitch), -x * math.sin(pitch) + z * math.cos(pitch)
    x, y = x * math.cos(yaw) - y * math.sin(yaw), x * math.sin(yaw) + y * math.cos(yaw)
    return (x, y, z)


class Engagement:
    """A trajectory file: twelve lines of header, then the samples."""

    def __init__(self, path):
        if path.endswith(".Z"):
            text = subprocess.run(["uncompress", "-c", path], check=True, capture_output=True, text=True).stdout
        else:
            with open(path, encoding="utf-8") as file:
                text = file.read()
        lines = [line.split() for line in text.splitlines() if not line.startswith("#")]
        try:
            self.field_of_view = float(" ".join(lines[11]))
        except ValueError:
            self.field_of_view = 1.5
        self.samples = {}
        at = 12
        while at < len(lines) and lines[at]:
            head = [float(word) for word in lines[at]]
            threat = [float(word) for word in lines[at + 1]]
            flares = [[float(word) for word in line] for line in lines[at + 3:at + 3 + int(head[1])]]
            self.samples[head[0]] = {
                "target": tuple(head[2:5]), "target attitude": tuple(head[5:8]),
                "threat": tuple(threat[0:3]), "threat attitude": tuple(threat[3:6]),
                "gyro": tuple(float(word) for word in lines[at + 2][2:5]),
                "flares": {int(flare[0]): flare for flare in flares},
            }
            at += 3 + int(head[1])


class Camera:
    """World z points down. What a view is attached to is looked at from +x."""

    def __init__(self, options, engagement):
        def triple(name, default):
            return tuple(float(word) for word in options.get(name, default).split(","))

        self.field_of_view = 30.0
        view = options.get("--view", "free" if "--eye" in options else "threat")
        sample = engagement.samples[float(options.get("--at", "0"))]
        if view == "free":
            self.eye, centre = triple("--eye", "100,0,0"), triple("--look-at", "0,0,0")
        elif view == "gyro":
            self.eye, self.field_of_view = sample["threat"], engagement.field_of_view
            centre = add(self.eye, rotated((100.0, 0.0, 0.0), sample["gyro"]))
        else:
            centre = sample[view]
            self.eye = add(centre, ({"threat": 10.0, "target": 50.0}[view], 0.0, 0.0))
        self.ahead = unit(sub(centre, self.eye))
        self.right = unit(cross(self.ahead, (0.0, 0.0, -1.0)))
        self.up = cross(self.right, self.ahead)
        # Pixels of a length of 1 at a distance of 1.
        self.scale = HEIGHT / 2.0 / math.tan(math.radians(self.field_of_view) / 2.0)

    def depth(self, point):
        return dot(sub(point, self.eye), self.ahead)

    def pixel(self, point):
        arm = sub(point, self.eye)
        factor = self.scale / dot(arm, self.ahead)
        return (WIDTH / 2.0 + factor * dot(arm, self.right), HEIGHT / 2.0 - factor * dot(arm, self.up))


def in_world(point, position, attitude):
    """A point of a body: models have z up, the world has it down."""
    return add(rotated(point, (attitude[0] + 180.0, attitude[1], attitude[2])), position)
