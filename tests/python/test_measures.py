"""Measures: the same digits as the command's, on samples, at any times, and NaN where they are undefined."""

import csv
import io
import json
import math

import numpy as np
import pytest

import sorvane
from conftest import record
from conftest import sorvane as command

RUNS = ["turn", "veer", "flight"]


def path_of(name, demonstration, flight):
    return flight if name == "flight" else demonstration / f"ETXYZ.OUT.{name}"


def numbers(engagement, column):
    """A column of a table; objects by the numbers that stand for them."""
    objects = {"": math.nan, "target": 0.0, **{f"flare {id}": i + 1.0 for i, id in enumerate(engagement.flare_ids)}}
    return [objects[text] if text in objects else float(text) for text in column]


def columns_of(text):
    names, *rows = csv.reader(io.StringIO(text))
    return dict(zip(names, zip(*rows)))


def plain_measures(unit=None):
    """Those of the trajectory alone."""
    return [measure for measure in sorvane.measures(unit) if not measure.needs]


def test_the_table_is_the_commands():
    for unit in (None, "ft"):
        listed = json.loads(command("measures", "--json", *(["--unit", unit] if unit else [])))["measures"]
        assert [measure._asdict() for measure in sorvane.measures(unit)] == listed


@pytest.mark.parametrize("name", RUNS)
def test_the_digits_are_those_of_the_tables(demonstration, flight, name):
    path = path_of(name, demonstration, flight)
    engagement = sorvane.load(path, unit="m")
    of_samples = columns_of(command("export", path, "--measures", "all", "--unit", "m"))
    of_flares = columns_of(command("export", path, "--flares", "--unit", "m"))
    for measure in plain_measures("m"):
        if measure.of in ("moment", "flare moment"):
            column = (of_samples if measure.of == "moment" else of_flares)[measure.column]
            np.testing.assert_array_equal(engagement.measure(measure.name), numbers(engagement, column), measure.name)


@pytest.mark.parametrize("name", RUNS)
def test_the_results_are_those_of_info(demonstration, flight, name):
    path = path_of(name, demonstration, flight)
    engagement = sorvane.load(path, unit="ft")
    described = json.loads(command("info", "--json", "--unit", "ft", path))
    described = described.get("files", [described])[0]
    for measure in plain_measures("ft"):
        if measure.of == "engagement":
            told = described["measures"][measure.column]
            np.testing.assert_equal(engagement.measure(measure.name), math.nan if told is None else told, measure.name)
        elif measure.of == "flare":
            told = [flare[measure.column] for flare in described["measures"]["flares"]]
            np.testing.assert_equal(engagement.measure(measure.name), np.array(told, float), measure.name)
    assert engagement.closest_approach == tuple(described["closest_approach"].values())


def test_radiation_is_that_of_the_tables(demonstration):
    path = demonstration / "ETXYZ.OUT.veer"
    engagement = sorvane.load(path, unit="m", signature_step=0.5, background=1e-5, flare_scale=2e-7)
    options = ("--unit", "m", "--signature-step", "0.5", "--background", "1e-5", "--flare-scale", "2e-7")
    measures = [measure for measure in sorvane.measures("m") if measure.needs and measure.of.endswith("moment")]
    names = ",".join(measure.name for measure in measures if measure.of == "moment")
    of_samples = columns_of(command("export", path, *options, "--measures", names))
    of_flares = columns_of(command("export", path, *options, "--flares", "--measures", "flare-jam-to-signal"))
    for measure in measures:
        column = (of_samples if measure.of == "moment" else of_flares)[measure.column]
        values = engagement.measure(measure.name)
        np.testing.assert_array_equal(values, numbers(engagement, column), measure.name)
        assert np.isfinite(values).all() == (measure.name not in ("target-intensity-band-4", "target-intensity-band-6"))
    ratio = engagement.measure("jam-to-signal")
    assert engagement.measure("greatest-jam-to-signal") == ratio.max() > 1
    assert engagement.measure("target-outshone-time") == engagement.time[ratio > 1][0]
    assert engagement.measure("target-intensity", 3.0) == engagement.measure("target-intensity")[300]
    assert engagement.measure("range").shape == ratio.shape


def test_radiation_that_nobody_can_work_out_is_nan(flight):
    with pytest.warns(UserWarning, match="a file of it that the trajectory names does not exist"):
        assert np.isnan(sorvane.load(flight).measure("target-irradiance")).all()
    with pytest.raises(ValueError, match="above 0"):
        sorvane.load(flight, signature_step=0)


def test_times_are_of_any_shape_and_between_samples_all_is_linear(flight):
    engagement = sorvane.load(flight)
    times = np.array([[0.25, 3, 10], [10.1, -0.1, math.nan]])
    values = engagement.measure("range", times)
    assert values.shape == (2, 3) and np.isnan(values[1]).all()
    assert values[0, 1:].tolist() == engagement.measure("range")[[6, 20]].tolist()
    middle = [(array[0] + array[1]) / 2 for array in (engagement.threat_position, engagement.target_position)]
    assert values[0, 0] == pytest.approx(np.linalg.norm(middle[0] - middle[1]), rel=1e-14)
    assert engagement.measure("range", 0.25) == values[0, 0] and isinstance(engagement.measure("range", 1), float)
    assert engagement.measure("range", [3, 10][::-1]).tolist() == values[0, :0:-1].tolist()
    for measure in plain_measures():
        if measure.of == "moment":
            np.testing.assert_array_equal(engagement.measure(measure.name, engagement.time),
                                          engagement.measure(measure.name), measure.name)


def test_flares_have_their_times(flight):
    engagement = sorvane.load(flight)
    assert engagement.flare_ids.tolist() == [7, 3]
    ages = engagement.measure("flare-age", [[1, 1.75], [2.1, 4.5]])
    np.testing.assert_array_equal(ages, [[[0, 0.75], [math.nan, 0]], [[math.nan, 0.25], [math.nan] * 2]])
    assert engagement.measure("flare-age").tolist() == [0, 0.5, 0, 0]
    assert engagement.measure("flare-age", 1.5).tolist() == [0.5, 0]
    assert [engagement.object_name(n) for n in (0, 1, 2, 3, -1, math.nan)] == ["target", "flare 7", "flare 3", *[None] * 3]


def test_arithmetic_makes_no_digits_up(write):
    steps = sorvane.load(write(*(record(f"{0.1 * i:.1f}", target=(f"{0.3 * i:.1f}", 0, -1000)) for i in range(6))))
    assert set(steps.measure("target-speed").tolist()) == {3.0}


def test_what_is_undefined_is_nan(write):
    alone = sorvane.load(write(record(1)))
    assert alone.measure("range").tolist() == [500] and alone.closest_approach == (1, 500)
    for name in ("closing-speed", "target-speed", "time-to-go", "threat-load-factor"):
        assert np.isnan(alone.measure(name)).all(), name
    assert math.isnan(alone.measure("first-flare-time")) and alone.measure("flare-time-in-field").shape == (0,)
    assert alone.measure("flare-age", [1.0, 2.0]).shape == (0, 2)
    assert sorvane.load(write(record(1), record(1, [(5, 1), (5, 2)]))).measure("flare-age")[1:].tolist() == [0]


def test_wrong_questions(flight):
    engagement = sorvane.load(flight)
    for arguments, error, text in [(("speed",), ValueError, "there is no measure speed"),
                                   (("decoyed", [1]), ValueError, "takes no times"),
                                   (("range", "soon"), ValueError, "could not convert"),
                                   (("range", object()), TypeError, "")]:
        with pytest.raises(error, match=text):
            engagement.measure(*arguments)
