#!/usr/bin/env python3
"""Reads the glTF that the command exports back, by its public rules, and compares where its nodes are and how they are
turned with the trajectory's own numbers.

usage: check_scenes.py SORVANE_PROGRAM
"""

import json
import math
import struct
import sys

import flights

MILLIMETRE = 1e-3
SIZES = {"SCALAR": 1, "VEC3": 3, "VEC4": 4}
FLOAT, ARRAY_BUFFER = 5126, 34962
# The scene's x, y and z in the trajectory's.
TO_SCENE = [[1, 0, 0], [0, 0, -1], [0, 1, 0]]

# A wedge, nose forwards, with a fin that stands up at the tail, and a facet that is nowhere.
CORNERS = [(2, 0, 0), (-1, 0.5, 0), (-1, -0.5, 0), (-1, 0, 1), ("nan", 0, 0)]
FACETS = [(1, 2, 3), (1, 2, 4), (1, 4, 3), (4, 2, 3), (1, 2, 5)]
RADIANCES = [1e-4, 0.0, 1e-6, 1.0, 1e-4]


def no_number(word):
    raise AssertionError(word)


class Scene:
    """A binary file, held against the rules as it is read."""

    def __init__(self, data):
        magic, version, length, json_length, json_kind = struct.unpack("<4sII I4s", data[:20])
        assert (magic, version, length, json_kind) == (b"glTF", 2, len(data), b"JSON") and json_length % 4 == 0
        bin_length, bin_kind = struct.unpack("<I4s", data[20 + json_length:28 + json_length])
        assert bin_kind == b"BIN\0" and bin_length % 4 == 0 and 28 + json_length + bin_length == length
        self.json = json.loads(data[20:20 + json_length], parse_constant=no_number)
        self.bytes = data[28 + json_length:]
        assert self.json["asset"]["version"] == "2.0" and self.json["buffers"] == [{"byteLength": bin_length}]
        used = sorted((view["byteOffset"], view["byteLength"]) for view in self.json["bufferViews"])
        assert sum(size for _, size in used) == bin_length and all(size > 0 for _, size in used)
        assert all(a + size == b for (a, size), (b, _) in zip(used, used[1:]))
        self.nodes = self.json["nodes"]
        (self.root,) = (self.nodes[i] for i in self.json["scenes"][self.json["scene"]]["nodes"])
        assert sorted(self.root["children"]) == list(range(len(self.nodes) - 1))
        (animation,) = self.json["animations"]
        self.channels = {}
        for channel in animation["channels"]:
            sampler, target = animation["samplers"][channel["sampler"]], channel["target"]
            self.channels[target["node"], target["path"]] = sampler
        assert len(self.channels) == len(animation["channels"]) == len(animation["samplers"])

    def elements(self, accessor, target=None):
        accessor = self.json["accessors"][accessor]
        size, count = SIZES[accessor["type"]], accessor["count"]
        view = self.json["bufferViews"][accessor["bufferView"]]
        begin = accessor.get("byteOffset", 0)
        assert accessor["componentType"] == FLOAT and count > 0 and begin % 4 == 0 and view.get("target") == target
        assert begin + 4 * size * count <= view["byteLength"]
        numbers = struct.unpack_from(f"<{size * count}f", self.bytes, view["byteOffset"] + begin)
        assert all(map(math.isfinite, numbers))
        for place in range(size if "min" in accessor else 0):
            assert accessor["min"][place] == min(numbers[place::size])
            assert accessor["max"][place] == max(numbers[place::size])
        return [numbers[i:i + size] for i in range(0, len(numbers), size)]

    def track(self, node, path):
        """Times and values, as rules and the node's own values have them."""
        sampler = self.channels[node, path]
        assert {"min", "max"} <= set(self.json["accessors"][sampler["input"]])
        times = [time for (time,) in self.elements(sampler["input"])]
        values = self.elements(sampler["output"])
        assert times[0] >= 0 and all(a < b for a, b in zip(times, times[1:])) and len(times) == len(values)
        assert self.nodes[node][path] == list(values[0])
        if path == "rotation":
            assert all(abs(math.hypot(*value) - 1) < 1e-6 for value in values)
        assert sampler["interpolation"] == ("STEP" if path == "scale" else "LINEAR")
        return times, values

    def at(self, node, path, time):
        times, values = self.track(node, path)
        after = next((i for i, t in enumerate(times) if t > time), len(times))
        if after in (0, len(times)) or path == "scale":
            return values[max(after - 1, 0)]
        part = (time - times[after - 1]) / (times[after] - times[after - 1])
        value = flights.blend(values[after - 1], values[after], part)
        return [x / math.hypot(*value) for x in value] if path == "rotation" else value

    def in_scene(self, point, is_direction=False):
        m = self.root["matrix"]
        return [sum(m[4 * k + i] * point[k] for k in range(3)) + (0 if is_direction else m[12 + i]) for i in range(3)]

    def place(self, node, time):
        return self.in_scene(self.at(node, "translation", time))

    def axes(self, node, time):
        """The directions of the model's axes, as columns; longer than 1 by what a unit has of metres."""
        columns = flights.transposed(flights.of_quaternion(self.at(node, "rotation", time)))
        return flights.transposed([self.in_scene(column, is_direction=True) for column in columns])

    def node(self, name):
        (found,) = (i for i, node in enumerate(self.nodes) if node["name"] == name)
        return found

    def mesh(self, node):
        (primitive,) = self.json["meshes"][self.nodes[node]["mesh"]]["primitives"]
        assert "mode" not in primitive and "indices" not in primitive
        found = {name: self.elements(index, ARRAY_BUFFER) for name, index in primitive["attributes"].items()}
        assert {"min", "max"} <= set(self.json["accessors"][primitive["attributes"]["POSITION"]])
        assert len({len(values) for values in found.values()}) == 1 and len(found["POSITION"]) % 3 == 0
        assert "KHR_materials_unlit" in self.json["materials"][primitive["material"]]["extensions"]
        return found


def near(found, expected, tolerance, *what):
    assert flights.distance(found, expected) <= tolerance, (*what, found, expected)


def moments(times):
    """The first, the last, two between samples and one on one, from the first."""
    last = len(times) - 1
    chosen = [times[0], 0.3 * times[last // 3] + 0.7 * times[min(last // 3 + 1, last)], times[last // 2],
              0.6 * times[last * 2 // 3] + 0.4 * times[min(last * 2 // 3 + 1, last)], times[last]]
    return [(time, time - times[0]) for time in chosen]


def check_motion(scene, flight, metres, gap=(1, 0), tolerance=MILLIMETRE):
    extras = scene.json["asset"]["extras"]
    assert extras["metres_per_unit"] == metres and extras["first_time_s"] == flight.times[0]
    assert [node["name"] for node in scene.nodes[:-1]] == \
        ["Target", "Threat"] + [f"Flare {i}" for i in flight.identifiers()]
    to_scene = [[metres * x for x in row] for row in TO_SCENE]
    for node, body in enumerate(("target", "threat")):
        for time, seconds in moments(flight.times):
            if body == "target" and gap[0] <= time <= gap[1]:
                continue
            position, angles = flight.body(body, time)
            near(scene.place(node, seconds), flights.turned(to_scene, position), tolerance, body, time)
            if time in flight.times:
                model = flights.product(to_scene, flights.attitude(*angles), flights.HALF_TURN)
                near(scene.axes(node, seconds), model, 2e-6, body, time)
    for identifier in flight.identifiers():
        node = scene.node(f"Flare {identifier}")
        steps = zip(flight.times, flight.times[1:] + [flight.times[-1]], flight.samples)
        for time, later, sample in steps:
            between = (time + later) / 2
            flare = sample["flares"].get(identifier)
            size = max(map(abs, flare[1])) if flare else 0.0
            near(scene.at(node, "scale", between - flight.times[0] + 1e-6), [size] * 3, 1e-6 * size, identifier, time)
            if flare:
                expected = flights.turned(to_scene, flight.flare(identifier, between))
                near(scene.place(node, between - flight.times[0]), expected, tolerance, identifier, time)


def write_body(base, signature):
    facets = len(FACETS)
    corners = "".join(f"{x} {y} {z} 0 0 1 v\n" for x, y, z in CORNERS)
    named = "".join(f"{i} {a} {b} {c} f\n" for i, (a, b, c) in enumerate(FACETS, 1))
    files = {f"{base}.vnl": f"{len(CORNERS)} {facets}\n-1 2 -0.5 0.5 0 1\n{corners}{named}",
             f"{signature}.brdf": f"BRDF\n1\n0.1 0.9 0 0.1 1 c\n1 {facets} 1 r\n", f"{signature}.atm": ""}
    for path, contents in files.items():
        path_of = flights.pathlib.Path(path)
        path_of.parent.mkdir(parents=True, exist_ok=True)
        path_of.write_text(contents)
    numbers = struct.pack(f"<{facets}f", *(1e6 * r for r in RADIANCES))
    flights.pathlib.Path(f"{signature}.rad").write_bytes(struct.pack("<19i", *[0] * 10, facets, *[0] * 8) + numbers +
                                                         bytes(8) + numbers)


def check_mesh(scene, body):
    mesh = scene.mesh(scene.node(body))
    expected = [CORNERS[corner - 1] for facet in FACETS[:-1] for corner in facet]
    assert [tuple(position) for position in mesh["POSITION"]] == [tuple(map(float, corner)) for corner in expected]
    for i, (colour, (radiance,)) in enumerate(zip(mesh["COLOR_0"], mesh["_RADIANCE"])):
        assert math.isclose(radiance, RADIANCES[i // 3], rel_tol=1e-6)
        grey = min(3000 * RADIANCES[i // 3], 1)
        shown = colour[0] * 12.92 if colour[0] <= 0.0031308 else 1.055 * colour[0] ** (1 / 2.4) - 0.055
        assert colour[0] == colour[1] == colour[2] and math.isclose(shown, grey, abs_tol=1e-6), (colour, grey)


def check_ball(scene, flare):
    corners = scene.mesh(scene.node(flare))["POSITION"]
    volume = 0.0
    for a, b, c in zip(*[iter(corners)] * 3):
        volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
                   a[2] * (b[0] * c[1] - b[1] * c[0])) / 6
    assert all(abs(math.hypot(*corner) - 1) < 1e-6 for corner in corners) and 3.7 < volume < 4 / 3 * math.pi, volume


def main():
    command = flights.Command(sys.argv[1])
    data = command.folder / "data"
    target = command.folder / "models/tgt"
    write_body(target, f"{target}_b0004")
    write_body(data / "tgt0450/tgt0450", data / "tgt0450/tgt0450_b0004")
    header = ["/nowhere/t", "/nowhere/t", f"{target}_b0004.rad", "1 2 3", "1 2 3", f"{target}.vnl",
              f"{target}_b0004.brdf", "", "white", "7", "x", "2"]

    def export(path, *options, **answer):
        out, messages = command.run("export", path, "--format", "glb", *options, data=f"{data}/", **answer)
        return Scene(out), messages

    flight = flights.spiral(command.folder / "spiral", header)
    scene, messages = export(flight, "--unit", "ft")
    assert messages == "" and scene.json["asset"]["extras"]["unit"] == "ft"
    check_motion(scene, flights.Flight(flight), 0.3048)
    check_mesh(scene, "Target")
    check_mesh(scene, "Threat")
    check_ball(scene, "Flare 1")

    # A target that climbs straight up from 10, 20, 30 units high: its fin's tip, a unit behind the middle and one above
    # it, hangs a unit lower and lies a unit back.
    climb = flights.write(command.folder / "climb", [(t, (10, 20, -30), (0, 90, 0), (0, 0, 0), (0, 0, 0), [])
                                                    for t in (5, 6)], header)
    scene, _ = export(climb, "--unit", "m")
    tip = flights.turned(scene.axes(0, 0.5), scene.mesh(0)["POSITION"][5])
    near([a + b for a, b in zip(tip, scene.place(0, 0.5))], [9, 29, 20], 1e-5)

    # Without models everything moves; one in single precision has both times of a pair.
    one, many = flights.awkward(command.folder)
    for path, gap in ((one, (1, 0)), (many, (0.7, 1.0))):
        scene, messages = export(path, status=1)
        assert messages.count("stock target takes its place") == 1 and messages.count("without a mesh") == 2, messages
        check_motion(scene, flights.Flight(path), 1.0, gap)
    late = flights.write(command.folder / "late", [(t, (t, 0, 0), (0, 0, 0), (0, t, 0), (0, 0, 0), []) for t in
                                                   (0, 1e5, 1e5 + 1e-4, 1e5 + 1)], header)
    times, values = export(late)[0].track(0, "translation")
    assert times == [0, 1e5, 1e5 + 1] and abs(values[1][0] - 1e5) < 0.01
    # Far from the origin, to the millimetre.
    far = flights.write(command.folder / "far", [(t, (4321012.345 + t, 5e5, -1), (0, 0, 0), (4321000.5, 5e5, 0),
                                                  (0, 0, 0), []) for t in (0, 0.25)], header)
    check_motion(export(far)[0], flights.Flight(far), 1.0, tolerance=1e-6)
    gone = flights.write(command.folder / "gone", [(0, (1e30, 0, 0), (0, 0, 0), (1e30, 0, 0), (0, 0, 0), [])], header)
    out, messages = command.run("export", gone, "--format", "glb", status=2, data=f"{data}/")
    assert out == b"" and messages.endswith(f"sorvane export: {gone}: has nothing nearer than 10^12 units\n"), messages
    crowd, _ = export(flights.crowd(command.folder / "crowd"), status=1)
    assert len(crowd.nodes) == 100003
    for node in range(2, 100000, 9999):
        crowd.track(node, "translation")
        crowd.track(node, "scale")


main()
