"""Drawing: sizes, the right way up, as the command draws it; one thread; no display."""

import os
import subprocess
import sys
import textwrap
import threading
import warnings

import numpy as np
import pytest

import sorvane
from conftest import sorvane as command


def read_ppm(path):
    magic, size, most, pixels = path.read_bytes().split(b"\n", 3)
    assert (magic, most) == (b"P6", b"255")
    width, height = map(int, size.split())
    return np.frombuffer(pixels, np.uint8).reshape(height, width, 3)


OPTIONS = [
    ({}, []),
    ({"at": 9, "view": "target", "terrain": True, "antialias": 4}, ["--at", 9, "--view", "target", "--terrain",
                                                                  "--antialias", 4]),
    ({"eye": (-600, -2000, -2300), "look_at": (3000, -3700, -500), "grid": False, "history": False},
     ["--eye", "-600,-2000,-2300", "--look-at", "3000,-3700,-500", "--no-grid", "--no-history"]),
    ({"view": "overview", "line_styles": True, "drop_lines": False}, ["--view", "overview", "--line-styles",
                                                                     "--no-drop-lines"]),
    ({"at": 5, "view": "gyro", "title": "Käse", "labels": True, "readout": True, "unit": "m"},
     ["--at", 5, "--view", "gyro", "--title", "Käse", "--labels", "--readout", "--unit", "m"]),
    ({"at": 9, "view": "target", "scale": "auto", "palette": "viridis", "colour_bar": True},
     ["--at", 9, "--view", "target", "--scale", "auto", "--palette", "viridis", "--colour-bar"]),
    ({"at": 4.2, "view": "gyro", "scale": "auto", "flare_scale": 2e-7, "unit": "m"},
     ["--at", 4.2, "--view", "gyro", "--scale", "auto", "--flare-scale", "2e-7", "--unit", "m"]),
    ({"at": 9, "view": "target", "scale": 5e-5}, ["--at", 9, "--view", "target", "--scale", "5e-5"]),
]


@pytest.mark.parametrize("arguments, options", OPTIONS)
def test_pictures_are_the_commands(demonstration, tmp_path, arguments, options):
    path = demonstration / "ETXYZ.OUT.turn"
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        picture = sorvane.render(path, size=(201, 120), **arguments)
    command("render", path, "-o", tmp_path / "a.ppm", "--size", "201x120", *options)
    assert picture.dtype == np.uint8
    np.testing.assert_array_equal(picture, read_ppm(tmp_path / "a.ppm"))


def lacking(*arguments, **options):
    with pytest.warns(UserWarning):
        return sorvane.render(*arguments, **options)


def test_the_picture_is_not_upside_down(flight):
    # From 1,000 m up, looking level: the ground's grid fills the lower half.
    picture = lacking(flight, eye=(9000, 0, -1000), look_at=(0, 0, -1000), history=False)
    lit = picture.any(axis=2)
    assert picture.shape == (480, 640, 3) and lit[240:].sum() > 5000 and lit[:230].sum() < 1500


def test_times_at_once_and_files_together(demonstration, flight):
    path = demonstration / "ETXYZ.OUT.turn"
    pictures = sorvane.render(path, at=[0, 4], size=(64, 48))
    assert pictures.shape == (2, 48, 64, 3)
    for time, picture in zip([0, 4], pictures):
        np.testing.assert_array_equal(picture, sorvane.render(path, at=time, size=(64, 48)))
    assert sorvane.render(path, at=[], size=(64, 48)).shape == (0, 48, 64, 3)
    both = lacking([flight, path], size=(64, 48), follow=2)
    assert (both != sorvane.render(path, size=(64, 48))).any() or both.any()


def test_what_can_not_be_drawn(flight, tmp_path):
    for arguments, text in [({"view": "side"}, "view is"), ({"view": "gyro", "eye": (1, 2, 3)}, "eye and look_at place"),
                            ({"follow": 2}, "follow counts"), ({"size": (0, 5)}, "size"), ({"antialias": 3}, "antialias"),
                            ({"at": float("nan")}, "finite"), ({"unit": "km"}, "unit"),
                            ({"scale": 0}, "scale: fixed, auto"), ({"palette": "jet"}, "palette is grey")]:
        with pytest.raises(ValueError, match=text):
            sorvane.render(flight, **arguments)
    with pytest.raises(sorvane.Error, match="there is nothing to draw; .*there is no such file") as caught:
        sorvane.render(tmp_path / "nothing")
    assert caught.value.file == str(tmp_path / "nothing")
    with pytest.raises(sorvane.Error, match="pixels a side"):
        sorvane.render(flight, size=(10**6, 10))


def test_another_thread_is_refused(flight):
    lacking(flight, size=(8, 8))
    raised = []

    def draw():
        try:
            sorvane.render(flight, size=(8, 8))
        except RuntimeError as error:
            raised.append(str(error))
    other = threading.Thread(target=draw)
    other.start()
    other.join()
    assert raised == ["sorvane.render draws on one thread: the first that has drawn"]


def test_it_ends_in_order_without_a_display(flight):
    code = f"""
        import sorvane, warnings
        warnings.simplefilter("ignore")
        for _ in range(20):
            assert sorvane.render({str(flight)!r}, size=(16, 16), title="a").shape == (16, 16, 3)
    """
    environment = {name: value for name, value in os.environ.items() if "DISPLAY" not in name and name != "QT_QPA_PLATFORM"}
    run = subprocess.run([sys.executable, "-c", textwrap.dedent(code)], env=environment, stderr=subprocess.PIPE, check=False)
    assert (run.returncode, run.stderr) == (0, b"")
