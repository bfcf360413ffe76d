#!/usr/bin/env python3
"""Works out where things stand in the reference pictures: points.py DEMONSTRATION-FOLDER [--renew]

Reads the trajectories and the bodies' geometry, places the camera and projects points, all on its own, and compares
points.txt with the result, or writes it. The table has a line a point: picture, x from the left, y from the top
(pixels), how the pixel looks (picturematch.h lists the looks), and what stands there.
"""
import math
import os
import re
import sys

from projection import HEIGHT, WIDTH, Camera, Engagement, add, cross, dot, in_world, rotated, sub

FOLDER = os.path.dirname(os.path.abspath(__file__))


def plates(name):
    """The plates of a body of the small scenes: by name, the grey and the four corners."""
    result = {}
    with open(os.path.join(FOLDER, "scenes", name + ".plates"), encoding="utf-8") as file:
        for words in (line.split() for line in file if not line.startswith("#")):
            numbers = [float(word) for word in words[1:]]
            result[words[0]] = (numbers[0], [tuple(numbers[i:i + 3]) for i in (1, 4, 7, 10)])
    return result


def vertices(path):
    """The points of a geometry file: behind two lines, a line each."""
    with open(path, encoding="utf-8") as file:
        lines = file.read().splitlines()
    count = int(lines[0].split()[0])
    return [tuple(float(word) for word in line.split()[:3]) for line in lines[2:2 + count]]


class Table:
    """Collects the lines of points.txt."""

    def __init__(self):
        self.lines = []
        self.picture = ""

    def add(self, pixel, look, what):
        x, y = (math.floor(value) for value in pixel)
        if not (0 <= x < WIDTH and 0 <= y < HEIGHT):
            sys.exit(f"{self.picture}: {what} lies outside, at {x}, {y}")
        self.lines.append(f"{self.picture:18} {x:4} {y:4}  {look:13} {what}\n")


def grey(value, tolerance=3):
    return f"grey:{max(round(value) - tolerance, 0)}-{min(round(value) + tolerance, 255)}"


def add_extremes(table, camera, points, sides, name):
    """The outermost points of a body on the screen: lit there, black some pixels farther out."""
    pixels = [camera.pixel(point) for point in points]
    for side in sides.split():
        axis, sign = {"left": (0, -1), "right": (0, 1), "top": (1, -1), "bottom": (1, 1)}[side]
        x, y = max(pixels, key=lambda pixel: sign * pixel[axis])
        table.add((x, y), "lit", f"{side} end of the {name}")
        out = (x + 4 * sign, y) if axis == 0 else (x, y + 4 * sign)
        table.add(out, "black", f"beyond the {side} end of the {name}")


def plate_value(camera, sample, body, name):
    """What a plate shows to the camera: its grey, or half of it from behind, where its corners run clockwise."""
    value, corners = plates(body)[name]
    first, second, third = (in_world(corner, sample[body], sample[body + " attitude"]) for corner in corners[:3])
    normal = cross(sub(second, first), sub(third, first))
    return value if dot(normal, sub(camera.eye, first)) > 0.0 else value / 2.0


def plate_grey(camera, sample, body, name):
    return grey(plate_value(camera, sample, body, name))


def add_scaled_plates(table, camera, sample, names, white):
    """The middles of the target's plates on an inverted scale, whose other end is a radiance of `white`, in W/cm²/sr."""
    for name in names.split():
        corners = plates("target")[name][1]
        middle = tuple(sum(corner[axis] for corner in corners) / 4.0 for axis in range(3))
        value = plate_value(camera, sample, "target", name) / 3000.0 / white
        table.add(camera.pixel(in_world(middle, sample["target"], sample["target attitude"])), grey(255.0 - value),
                  f"middle of the target's {name}")


def add_plates(table, camera, sample, body, names):
    """The middles of plates show their greys."""
    for name in names.split():
        corners = plates(body)[name][1]
        middle = tuple(sum(corner[axis] for corner in corners) / 4.0 for axis in range(3))
        table.add(camera.pixel(in_world(middle, sample[body], sample[body + " attitude"])),
                  plate_grey(camera, sample, body, name), f"middle of the {body}'s {name}")


def add_corner(table, camera, sample, name, corner, inwards):
    """Just inside a corner of a plate of the target its grey, just outside, where nothing else is, black."""
    value = plate_grey(camera, sample, "target", name)
    for factor, look, where in ((1.0, value, "inside"), (-1.0, "black", "outside")):
        point = add(corner, inwards, factor)
        table.add(camera.pixel(in_world(point, sample["target"], sample["target attitude"])), look,
                  f"{where} a corner of the {name}")


def before(engagement, time):
    return [at for at in sorted(engagement.samples) if at <= time]


def drop_times(engagement, time):
    """The samples in a later half second than the ones before them."""
    times = before(engagement, time)
    return [b for a, b in zip(times, times[1:]) if math.fmod(a, 0.5) > math.fmod(b, 0.5)]


def add_path(table, camera, engagement, time, body, colour, fractions):
    """Samples of a path: at fractions of the samples up to now, or, whole numbers, counted as Python counts."""
    times = before(engagement, time)
    for fraction in fractions:
        at = times[fraction if isinstance(fraction, int) else round(fraction * (len(times) - 1))]
        table.add(camera.pixel(engagement.samples[at][body]), colour, f"{body}'s path at {at} s")


def add_drop(table, camera, engagement, time, body, look, number, heights=(0.5, 0.02)):
    at = drop_times(engagement, time)[number]
    x, y, z = engagement.samples[at][body]
    for height in heights:
        table.add(camera.pixel((x, y, height * z)), look, f"{body}'s drop line at {at} s, {height} of its height up")


def add_trail(table, camera, engagement, number, times):
    """A trail shines with 0.4 of red, reflects 0.8 of the ambient 0.1, and of the light beside the eye what its normal,
    straight up, leaves."""
    red = round(255.0 * min(0.4 + 0.8 * 0.1 + 0.8 * max(camera.ahead[2], 0.0), 1.0))
    for time in times:
        flare = engagement.samples[time]["flares"][number]
        table.add(camera.pixel(tuple(flare[2:5])), f"red:{red - 6}-{red + 6}", f"flare {number}'s trail at {time} s")


def add_ground(table, camera, places, look, what):
    for x, y in places:
        table.add(camera.pixel((x, y, 0.0)), look, f"{what} ({x}, {y})")


# The reticle's circle ends at the edge of the field of view, which is as high as the picture.
def add_reticle(table):
    middle, radius = (WIDTH / 2.0, HEIGHT / 2.0), HEIGHT / 2.0
    for degrees in (0, 40, 130, 180, 220, 310):
        turn = math.radians(degrees)
        table.add(add(middle, (math.cos(turn), -math.sin(turn)), radius), "reticle", f"reticle's circle at {degrees}")
    for arm in ((0.9, 0.0), (-0.9, 0.0), (0.0, -0.6)):
        table.add(add(middle, arm, radius), "reticle", "reticle's cross")


def flares(table, camera, sample):
    # A flare's irradiance at the eye is 4 pi I / d^2; a sphere spreads it over the pixels that it covers.
    for number, flare in sample["flares"].items():
        position, brightness, radius = tuple(flare[2:5]), flare[5], flare[9]
        arm = sub(position, camera.eye)
        irradiance = 4.0 * math.pi * brightness / dot(arm, arm)
        pixels = camera.scale * radius / camera.depth(position)
        area = math.pi * pixels * pixels
        middle = camera.pixel(position)
        if flare[12] == 3.0:  # an ellipsoid: lit along its long axis only
            for along, look in ((0.6, "grey:255-255"), (-0.6, "grey:255-255"), (1.3, "black"), (-1.3, "black")):
                axis = rotated((0.0, flare[10], 0.0), flare[6:9])
                table.add(camera.pixel(add(position, axis, along)), look, f"flare {number}, {along} of its long radius")
        elif area > 1.0:
            table.add(middle, grey(255.0 * min(irradiance / area, 1.0)), f"flare {number}, a sphere")
            table.add(add(middle, (1.35 * pixels, 0.0)), "black", f"beside flare {number}")
        else:
            value = round(255.0 * min(irradiance, 1.0) * area)
            table.add(middle, f"point:{value - 3}-{value + 3}", f"flare {number}, a point")
            table.add(add(middle, (4.0, 0.0)), "black", f"beside flare {number}")


def rotor_points(table, camera, tree):
    """The main rotor's blades are lit out to their tips, and between them there is nothing."""
    with open(os.path.join(tree, "tgt4005/tgt4005.rotor"), encoding="utf-8") as file:
        rotor = [float(word) for word in [line for line in file if not line.startswith("#")][0].split()]
    hub, rate, radius = tuple(rotor[2:5]), rotor[8], 6.0
    geometry = os.path.join(tree, "tgt4005/tgt4005.vnl")
    with open(geometry, encoding="utf-8") as file:
        facets = [line.split() for line in file.read().splitlines()[2 + len(vertices(geometry)):]]
    corners = {int(word) - 1 for facet in facets[int(rotor[0]) - 1:int(rotor[1])] for word in facet[1:4]}
    points = [sub(vertex, hub) for number, vertex in enumerate(vertices(geometry)) if number in corners]
    tips = [math.degrees(math.atan2(y, x)) for x, y, _ in points if math.hypot(x, y) > 6.4]
    first = min(angle % 90.0 for angle in tips)
    middle = (first + max(angle % 90.0 for angle in tips)) / 2.0
    for quarter in range(4):
        for offset, look in ((0.0, "lit"), (45.0, "black")):
            angle = middle + 90.0 * quarter + offset + 360.0 * rate * 0.02
            at = rotated((radius, 0.0, 0.08), (0.0, 0.0, angle))
            x, y = camera.pixel(in_world(add(at, hub), (0.0, 0.0, -100.0), (0.0, 0.0, 0.0)))
            if look == "lit" or quarter in (0, 1):
                table.add((x, y), look, f"{'on' if look == 'lit' else 'behind'} blade {quarter + 1} of the rotor")


def work_out(demonstration):
    table = Table()
    tree = os.path.join(demonstration, "data")
    jet = vertices(os.path.join(tree, "tgt4004/tgt4004.vnl"))
    missile = vertices(os.path.join(tree, "tgt0450/tgt0450.vnl"))

    def placed(points, body):
        return [in_world(point, sample[body], sample[body + " attitude"]) for point in points]

    with open(os.path.join(FOLDER, "pictures.txt"), encoding="utf-8") as file:
        rows = [line.split(None, 2) for line in file if line.strip() and not line.startswith("#")]
    rows.append(["hidden", "ETXYZ.OUT.turn", "--eye -500,-2500,-2500 --look-at 4000,-2500,-900 --at 6"])
    rows.append(["rotors", "scenes/paths.etxyz", "--eye 22,-14,-122 --look-at 0,0,-101"])
    for name, trajectory, text in rows:
        folder = FOLDER if trajectory.startswith("scenes/") else demonstration
        engagement = Engagement(os.path.join(folder, trajectory.removeprefix("single/")))
        options = dict(re.findall(r"(--[a-z-]+) ([^-\s]\S*|-[\d.]\S*)", text))
        camera = Camera(options, engagement)
        time = float(options.get("--at", "0"))
        sample = engagement.samples[time]
        table.picture = name
        if name == "threat_view":
            add_extremes(table, camera, placed(missile, "threat"), "right top", "missile")
            add_path(table, camera, engagement, time, "threat", "yellow", (-2,))
            add_drop(table, camera, engagement, time, "threat", "yellow", -1, (0.995,))
            add_ground(table, camera, ((-2000, 0), (-3000, -2000), (-3000, 0)), "grid", "grid's crossing at")
        elif name == "target_view":
            add_extremes(table, camera, placed(jet, "target"), "top right", "jet")
            add_path(table, camera, engagement, time, "target", "green", (0.985,))
            add_ground(table, camera, ((-1000, -4000), (-2000, -6000), (-3000, -3000)), "grid", "grid's crossing at")
        elif name == "gyro_view":
            add_reticle(table)
            add_extremes(table, camera, placed(jet, "target"), "right top left", "jet")
        elif name in ("free_view", "no_terrain", "no_grid", "no_drop_lines", "no_history"):
            lines = "!green" if name == "no_history" else "green"
            drops = "!green" if name in ("no_history", "no_drop_lines") else "green"
            grid = "!grid" if name == "no_grid" else "grid"
            add_path(table, camera, engagement, time, "target", lines, (0.0, 0.5, 1.0))
            add_path(table, camera, engagement, time, "threat", lines.replace("green", "yellow"), (0.8, 1.0))
            if name != "free_view":
                add_drop(table, camera, engagement, time, "target", drops, 3)
                if name in ("no_grid", "no_drop_lines"):
                    add_trail(table, camera, engagement, 3, (6.6, 6.8))
                add_drop(table, camera, engagement, time, "threat", drops.replace("green", "yellow"), -2, (0.5,))
                add_ground(table, camera, ((3000, -3000), (5000, -3000)), grid, "grid's crossing at")
            beyond = ((8000, -3000), (7000, -7000))
            if name == "free_view":
                add_ground(table, camera, beyond + ((11000, -6500),), "lit", "ground beyond the finer tiles at")
            else:
                add_ground(table, camera, beyond, grid, "grid's crossing at")
        elif name == "cyan_described":
            add_path(table, camera, engagement, time, "threat", "cyan", (0.0, 0.6, 1.0))
            add_path(table, camera, engagement, time, "target", "green", (0.8, 1.0))
            add_drop(table, camera, engagement, time, "threat", "cyan", -1, (0.5, 0.2))
        elif name == "hidden":
            other = Engagement(os.path.join(demonstration, "ETXYZ.OUT.weave.Z"))
            add_path(table, camera, engagement, time, "target", "green", (0.2, 0.6, 1.0))
            add_path(table, camera, other, time, "threat", "!cyan", (0.6, 1.0))
            add_path(table, camera, other, time, "target", "!green", (0.9, 1.0))
        elif name.startswith("tops_"):
            # The threats start three metres above the tops, north being -y here.
            x, y, z = sample["threat"]
            for height, look in ((12.0, "black"), (60.0, "black"), (-20.0, "lit"), (-60.0, "lit")):
                table.add(camera.pixel((x, y, z - height)), look, f"{height} m above the threat's start on the top")
        elif name == "grid_from_afar":
            add_ground(table, camera, ((10000, 3000), (10000, -4000), (6000, 1000)), "grid",
                       "grid's crossing at")
            add_ground(table, camera, ((9500, 2500), (9500, -2500), (10400, 0)), "black", "between the lines")
            table.add(camera.pixel((0, 0, -4950)), "grid", "just below the axis's top")
            table.add(camera.pixel((0, 0, -5150)), "black", "above the axis's top")
        elif name == "altitude_marks":
            for x, y in ((0.95, 0.95), (-0.95, 0.95), (0.95, -0.95), (-0.95, -0.95)):
                table.add(camera.pixel((x, y, -5 * 304.8)), "grid", f"end of the mark at 5000 ft, {x} {y}")
            table.add(camera.pixel((0.0, 0.75, -5 * 304.8)), "black", "between the mark's arms")
            table.add(camera.pixel((0.0, 0.0, -5 * 304.8 + 2.0)), "grid", "axis")
        elif name in ("paths", "line_styles"):
            add_path(table, camera, engagement, time, "target", "green", (0.02, 0.6, 1.0))
            add_path(table, camera, engagement, time, "threat", "yellow", (-2,))
            for number in range(len(drop_times(engagement, time))):
                add_drop(table, camera, engagement, time, "target", "green", number, (0.7, 0.02))
            if name == "paths":
                add_trail(table, camera, engagement, 1, (0.25, 0.75))
            for body in ("target", "threat"):
                x, y, z = sample[body]
                table.add(camera.pixel((x, y + 12.0, z)), "black", f"beyond the end of the {body}'s path")
            table.add(camera.pixel((0.0, -110.0, -50.0)), "black", "before the paths' starts")
        elif name in ("level_bodies", "turned_bodies", "far_bodies"):
            add_plates(table, camera, sample, "target", "nose left fin" if name == "level_bodies" else
                       "nose left right")
            add_plates(table, camera, sample, "threat", "upper")
            add_corner(table, camera, sample, "nose", (9.0, 1.0, 0.0), (-0.9, -0.6, 0.0))
            add_corner(table, camera, sample, "left", (2.0, 8.0, 0.0), (-0.8, -0.8, 0.0))
            add_corner(table, camera, sample, "right", (2.0, -8.0, 0.0), (-0.8, 0.8, 0.0))
        elif name == "scaled_bodies":
            add_scaled_plates(table, camera, sample, "nose left right fin", float(options["--scale"]))
        elif name == "threat_beneath":
            table.add(camera.pixel(sample["threat"]), plate_grey(camera, sample, "target", "left"),
                      "threat's middle, hidden by the target's left wing")
            add_plates(table, camera, sample, "target", "nose left right")
            add_corner(table, camera, sample, "left", (2.0, 8.0, 0.0), (-0.8, -0.8, 0.0))
        elif name == "close_up":
            add_corner(table, camera, sample, "left", (2.0, 8.0, 0.0), (-0.06, -0.06, 0.0))
            for x, y in ((1.9, 7.9), (1.95, 7.8)):
                point = in_world((x, y, 0.0), sample["target"], sample["target attitude"])
                table.add(camera.pixel(point), plate_grey(camera, sample, "target", "left"), f"left wing at {x} {y}")
        elif name == "reflecting_body":
            add_plates(table, camera, sample, "threat", "upper tail")
            # Nine tenths of what comes from the upper plate's two facets, by their form factors.
            middle = in_world((0.0, -0.6, 0.0), sample["threat"], sample["threat attitude"])
            table.add(camera.pixel(middle), grey(0.9 * (0.3 + 0.3) * plates("threat")["upper"][0]), "the matt plate")
        elif name == "distant_body":
            add_plates(table, camera, sample, "target", "nose right")
            add_corner(table, camera, sample, "nose", (9.0, -1.0, 0.0), (-0.9, 0.6, 0.0))
            add_reticle(table)
        elif name == "jet_from_behind":
            add_extremes(table, camera, placed(jet, "target"), "left top bottom", "jet")
        elif name == "flares":
            flares(table, camera, sample)
        elif name == "rotors":
            rotor_points(table, camera, tree)
        else:
            sys.exit(f"no points are worked out for {name}")
    return table.lines


def main():
    lines = work_out(sys.argv[1])
    path = os.path.join(FOLDER, "points.txt")
    if "--renew" in sys.argv:
        with open(path, "w", encoding="utf-8") as file:
            file.writelines(lines)
    elif open(path, encoding="utf-8").readlines() != lines:
        sys.exit("tests/pictures/points.txt is not what tests/pictures/points.py works out: run ./dev pictures")


if __name__ == "__main__":
    main()
