#!/usr/bin/env python3
"""Reads the CZML and the KML that the command exports back, by their public rules, and compares what they say with the
trajectory's own numbers, put on the ellipsoid by another route.

usage: check_maps.py SORVANE_PROGRAM
"""

import datetime
import json
import math
import re
import sys
import xml.etree.ElementTree as ElementTree

import flights

ORIGIN = (47.5, 8.5, 450.0)
EPOCH = datetime.datetime(2026, 11, 22, 6, tzinfo=datetime.timezone.utc)
MILLIMETRE = 1e-3


# The Earth: from geodetic to centred coordinates, the one direction that has a closed form.

def horizon(latitude, longitude):
    """Columns: the directions of east, north and up."""
    return flights.product(flights.about(2, 90 + longitude), flights.about(0, 90 - latitude))


def centred(longitude, latitude, height):
    semi_major, flattening = 6378137.0, 1 / 298.257223563
    sine = math.sin(math.radians(latitude))
    squeeze = (1 - flattening) ** 2
    radius = semi_major ** 2 / math.sqrt(semi_major ** 2 * (1 - sine ** 2) + squeeze * (semi_major * sine) ** 2)
    around = (radius + height) * math.cos(math.radians(latitude))
    return [around * math.cos(math.radians(longitude)), around * math.sin(math.radians(longitude)),
            (radius * squeeze + height) * sine]


class Place:
    def __init__(self, bearing, metres):
        east_north_up = horizon(*ORIGIN[:2])
        # x to the bearing, y to the right of it, z down.
        self.axes = flights.product(east_north_up, flights.about(2, 90 - bearing), flights.HALF_TURN)
        self.origin = centred(ORIGIN[1], ORIGIN[0], ORIGIN[2])
        self.metres = metres

    def position(self, units):
        return [o + self.metres * x for o, x in zip(self.origin, flights.turned(self.axes, units))]

    def model(self, angles):
        return flights.product(self.axes, flights.attitude(*angles), flights.HALF_TURN)


# CZML's rules, as far as the properties go that are written.

def number(value):
    assert isinstance(value, (int, float)) and not isinstance(value, bool) and math.isfinite(value), value


def text(value):
    assert isinstance(value, str) and value, value


def one_of(*values):
    def check(value):
        assert value in values, value
    return check


def moment(value):
    assert re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{6}Z", value), value
    return (datetime.datetime.fromisoformat(value[:-1] + "+00:00") - EPOCH).total_seconds()


def interval(value):
    begin, end = map(moment, value.split("/"))
    assert begin <= end, value
    return begin, end


def intervals(value):
    found = [interval(v) for v in ([value] if isinstance(value, str) else value)]
    assert found and all(a[1] < b[0] for a, b in zip(found, found[1:])), value
    return found


def sampled(size, is_unit=False):
    def check(value):
        rows = [value[i:i + size + 1] for i in range(0, len(value), size + 1)]
        assert rows and len(rows[-1]) == size + 1
        for entry in value:
            number(entry)
        assert all(a[0] < b[0] for a, b in zip(rows, rows[1:])), "times do not ascend"
        if is_unit:
            assert all(abs(math.hypot(*row[1:]) - 1) < 1e-9 for row in rows), "no unit quaternion"
            assert all(sum(map(math.prod, zip(a[1:], b[1:]))) > 0 for a, b in zip(rows, rows[1:])), "the long way round"
        return rows
    return check


def constant(size, least, most):
    def check(value):
        assert len(value) == size and all(least <= entry <= most for entry in value), value
    return check


COLOUR = {"rgba": constant(4, 0, 255)}
INTERPOLATION = {"epoch": moment, "interpolationAlgorithm": one_of("LINEAR"), "interpolationDegree": one_of(1)}
LABEL = {"text": text, "font": text, "pixelOffset": {"cartesian2": constant(2, -100, 100)}}
DOCUMENT = {"id": one_of("document"), "name": text, "version": one_of("1.0"), "clock": {
    "interval": interval, "currentTime": moment, "multiplier": number,
    "range": one_of("UNBOUNDED", "CLAMPED", "LOOP_STOP"),
    "step": one_of("SYSTEM_CLOCK", "SYSTEM_CLOCK_MULTIPLIER", "TICK_DEPENDENT")}}
OBJECT = {"id": text, "name": text, "availability": intervals, "label": LABEL,
          "point": {"pixelSize": number, "color": COLOUR},
          "path": {"width": number, "leadTime": number, "material": {"solidColor": {"color": COLOUR}}},
          "position": INTERPOLATION | {"cartographicDegrees": sampled(3)},
          "orientation": INTERPOLATION | {"unitQuaternion": sampled(4, is_unit=True)}}


def checked(value, rule):
    if callable(rule):
        found = rule(value)
        return value if found is None else found
    assert isinstance(value, dict) and not set(value) - set(rule), set(value) - set(rule)
    return {name: checked(entry, rule[name]) for name, entry in value.items()}


def no_number(word):
    raise AssertionError(word)


def read_czml(data, step=1):
    """The document and the objects by their identifiers; of many every `step`-th."""
    packets = json.loads(data, parse_constant=no_number)
    assert len({packet["id"] for packet in packets}) == len(packets)
    return checked(packets[0], DOCUMENT), {packet["id"]: checked(packet, OBJECT) for packet in packets[1::step]}


def at(rows, time):
    after = next((i for i, row in enumerate(rows) if row[0] >= time), None)
    assert after is not None and (after or rows[0][0] == time), time
    a, b = rows[max(after - 1, 0)], rows[after]
    return flights.blend(a[1:], b[1:], (time - a[0]) / (b[0] - a[0]) if b is not a else 0.0)


def five(times):
    """The first and the last time, one between samples, and two more."""
    last = len(times) - 1
    return sorted({times[0], times[last // 4], (times[last // 2] + times[last - last // 2]) / 2,
                   0.7 * times[last * 3 // 4] + 0.3 * times[min(last * 3 // 4 + 1, last)], times[last]})


def near(found, expected, tolerance, *what):
    assert flights.distance(found, expected) <= tolerance, (*what, found, expected)


def check_czml(flight, place, data, skipped=()):
    document, objects = read_czml(data)
    assert document["clock"]["interval"] == (flight.times[0], flight.times[-1])
    assert document["clock"]["range"] == "LOOP_STOP" and document["clock"]["currentTime"] == flight.times[0]
    assert list(objects) == ["target", "threat"] + [f"flare-{i}" for i in flight.identifiers()]
    for body in ("target", "threat"):
        packet = objects[body]
        assert packet["label"]["text"] == packet["name"] == body.title()
        rows = packet["position"]["cartographicDegrees"]
        assert [row[0] for row in rows] == [t for t in flight.times if t not in skipped or body == "threat"]
        for time in five([row[0] for row in rows]):
            position, angles = flight.body(body, time)
            near(centred(*at(rows, time)), place.position(position), 2 * MILLIMETRE, body, time)
        for row in packet["orientation"]["unitQuaternion"]:
            near(flights.of_quaternion(row[1:]), place.model(flight.body(body, row[0])[1]), 1e-8, body, row[0])
    for identifier in flight.identifiers():
        packet = objects[f"flare-{identifier}"]
        assert packet["name"] == packet["label"]["text"] == f"Flare {identifier}"
        assert packet["availability"] == flight.burns(identifier)
        for begin, end in packet["availability"]:
            for time in five([begin, end]):
                found = centred(*at(packet["position"]["cartographicDegrees"], time))
                near(found, place.position(flight.flare(identifier, time)), 2 * MILLIMETRE, identifier, time)


# KML

KML = "{http://www.opengis.net/kml/2.2}"
GOOGLE = "{http://www.google.com/kml/ext/2.2}"


def tracks(root):
    """(name, time span, times, coordinates, angles) of each."""
    for mark in root.iter(KML + "Placemark"):
        track = mark.find(GOOGLE + "Track")
        if track is None:
            continue
        assert track.find(KML + "altitudeMode").text == "absolute"
        order = [child.tag for child in mark]
        assert order == [tag for tag in (KML + "name", KML + "TimeSpan", KML + "styleUrl", GOOGLE + "Track") if tag in order]
        span = mark.find(KML + "TimeSpan")
        numbers = [[[float(word) for word in e.text.split()] for e in track.iter(GOOGLE + tag)] for tag in ("coord", "angles")]
        yield (mark.find(KML + "name").text, [moment(e.text) for e in span] if span is not None else None,
               [moment(e.text) for e in track.iter(KML + "when")], *numbers)


def kml_model(longitude, latitude, heading, tilt, roll):
    """Right, forwards, up of a model that looks north: clockwise as seen against y, x and z."""
    return flights.product(horizon(latitude, longitude), flights.about(2, -heading), flights.about(0, -tilt),
                           flights.about(1, -roll))


def check_kml(flight, place, data):
    root = ElementTree.fromstring(data)
    document = root.find(KML + "Document")
    assert [moment(e.text) for e in document.find(KML + "TimeSpan")] == [flight.times[0], flight.times[-1]]
    styles = {"#" + style.get("id") for style in root.iter(KML + "Style")}
    assert {url.text for url in root.iter(KML + "styleUrl")} == styles
    found = list(tracks(root))
    expected = [(i, *burn) for i in flight.identifiers() for burn in flight.burns(i)]
    assert [(f"Flare {i}", [begin, end]) for i, begin, end in expected] == [f[:2] for f in found[2:]]
    for (identifier, begin, end), (_, _, times, coordinates, angles) in zip(expected, found[2:]):
        assert len(times) == len(coordinates) and not angles and times[0] == begin and times[-1] == end
        near(centred(*coordinates[-1]), place.position(flight.flare(identifier, end)), 2 * MILLIMETRE)
    for body, (name, _, times, coordinates, angles) in zip(("target", "threat"), found):
        assert name == f"{body.title()} over time" and len(times) == len(coordinates) == len(angles)
        assert all(a < b for a, b in zip(times, times[1:]))
        for time, coordinate, (heading, tilt, roll) in zip(times, coordinates, angles):
            position, turn = flight.body(body, time)
            near(centred(*coordinate), place.position(position), 2 * MILLIMETRE, body, time)
            assert 0 <= heading <= 360 and abs(tilt) <= 90 and abs(roll) <= 180
            forwards, left, up = flights.transposed(place.model(turn))
            axes = flights.transposed([[-x for x in left], forwards, up])
            near(kml_model(*coordinate[:2], heading, tilt, roll), axes, 1e-7, body, time)


def main():
    command = flights.Command(sys.argv[1])
    one, many = flights.awkward(command.folder)
    spiral = flights.spiral(command.folder / "spiral")
    for path, bearing, unit, metres in ((spiral, 90, "m", 1.0), (one, 0, "ft", 0.3048), (many, 30, "ft", 0.3048)):
        place, flight = Place(bearing, metres), flights.Flight(path)
        options = ("export", path, "--unit", unit, "--x-bearing", bearing, "--epoch", EPOCH.isoformat(), "--origin",
                   ",".join(map(str, ORIGIN)), "--format")
        check_czml(flight, place, command.run(*options, "czml")[0], skipped=[0.9] if path == many else [])
        check_kml(flight, place, command.run(*options, "kml")[0])
    crowded = flights.crowd(command.folder / "crowd")
    data = command.run("export", crowded, "--unit", "m", "--origin", "1,2", "--epoch", EPOCH.isoformat(), "--format", "czml")[0]
    assert len(read_czml(data, 1000)[1]) == 101 and data.count(b'"flare-') == 100000 and len(data) < 50e6, len(data)


main()
