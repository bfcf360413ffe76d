"""Loading: the arrays hold what the file says, without copies, and live as long as they are used."""

import gc
import os
import shutil
import subprocess
import sys
import threading
import time

import numpy as np
import pytest

import sorvane
from conftest import HEADER, record


def words_of(path):
    """The samples and the rows of flares as lists of words, read a second time."""
    lines = [line.split() for line in path.read_text().splitlines()[12:]]
    samples, flares = [], []
    while lines:
        first, second, third, *lines = lines
        rows, lines = lines[:int(first[1])], lines[int(first[1]):]
        flares += [[str(len(samples)), first[0], *row] for row in rows]
        samples.append(first + second + third)
    return np.array(samples, dtype=float), np.array(flares, dtype=float)


@pytest.mark.parametrize("name", ["turn", "veer", "flight"])
def test_arrays_hold_the_file(demonstration, flight, name):
    path = flight if name == "flight" else demonstration / f"ETXYZ.OUT.{name}"
    samples, flares = words_of(path)
    flares[:, 12:14] = np.where(flares[:, 14:] < 3, flares[:, 11:12], flares[:, 12:14])  # fewer than three bands
    engagement = sorvane.load(path)
    assert len(engagement) == len(samples) and len(engagement.flares) == len(flares)
    for array, columns in [("time", 0), ("target_position", slice(2, 5)), ("target_attitude", slice(5, 8)),
                           ("threat_position", slice(8, 11)), ("threat_attitude", slice(11, 14)), ("gyro", slice(16, 19))]:
        np.testing.assert_array_equal(getattr(engagement, array), samples[:, columns], strict=True, err_msg=array)
    for array, columns in [("sample", 0), ("time", 1), ("id", 2), ("position", slice(4, 7)), ("brightness", 7),
                           ("bands", slice(11, 14))]:
        np.testing.assert_array_equal(getattr(engagement.flares, array), flares[:, columns], err_msg=array)
    assert engagement.flare_ids.tolist() == list(dict.fromkeys(flares[:, 2]))


def test_the_header_and_what_was_read(flight):
    engagement = sorvane.load(str(flight), unit="m")
    assert list(engagement.header.values()) == [*HEADER[:3], (1, 2, 3), (4, 5, 6.1), *HEADER[5:7], "white", 7, "somebody", 4]
    assert (engagement.path, engagement.unit, sorvane.load(flight).unit) == (str(flight), "m", None)
    assert repr(engagement) == f"<sorvane.Engagement {str(flight)!r}, 21 samples, 0 to 10 s>"


def test_nothing_is_copied_and_nothing_can_be_written(flight):
    engagement = sorvane.load(flight)
    flares = engagement.flares
    for array in [engagement.time, engagement.target_position, engagement.gyro, flares.id, flares.position, flares.bands]:
        assert array.base is engagement
        with pytest.raises(ValueError):
            array[0] = 1
        with pytest.raises(ValueError):
            array.flags.writeable = True
    assert np.shares_memory(engagement.threat_position, engagement.threat_position)
    assert engagement.time.strides == engagement.gyro.strides[:1]


def test_an_array_keeps_its_engagement(flight):
    time_array, x = sorvane.load(flight).time, sorvane.load(flight).flares.position[:, 0]
    gc.collect()
    others = [sorvane.load(flight) for _ in range(50)]
    assert time_array.tolist() == [0.5 * i for i in range(21)] and x.tolist() == [90.1, 90.1, 20, 90.1]
    assert len(others) == 50


def test_compressed_and_oddly_named_files(flight, tmp_path, monkeypatch):
    odd = tmp_path / "ETXYZ.OUT.größer als ich"
    shutil.copy(flight, odd)
    shutil.copy(flight, tmp_path / "-")
    monkeypatch.chdir(tmp_path)
    for path in (odd, os.fsencode(odd), "-"):
        assert len(sorvane.load(path)) == 21
    assert sorvane.load(odd).path == str(odd)
    subprocess.run(["compress", "-f", flight], check=True)
    assert len(sorvane.load(f"{flight}.Z")) == 21


def test_a_cut_compressed_file_names_where_it_ends(flight):
    subprocess.run(["compress", "-f", flight], check=True)
    packed = flight.with_name(flight.name + ".Z")
    packed.write_bytes(packed.read_bytes()[:-200])
    with pytest.raises(sorvane.Error, match="the data end within the record") as caught:
        sorvane.load(packed)
    assert caught.value.line == 56


@pytest.mark.parametrize("lines, place, text", [
    (record("0.5x"), (17, 1), "0.5x"),
    (record(0.5, target=("nan", 0, 0)), (17, 7), "nan"),
    (record(0.5)[:2], (17, 1), "record"),
    (record(0.5, [(1, "1e999")]), (20, 5), "1e999"),
])
def test_a_faulty_word_is_an_error_with_its_place(write, tmp_path, monkeypatch, lines, place, text):
    monkeypatch.setenv("PELSAR_DATA", f"{tmp_path}/")  # without the stock files, whose lack is none of the data's
    path = write(record(0), ["# a comment"], lines)
    with pytest.raises(sorvane.Error) as caught:
        sorvane.load(path)
    assert (caught.value.file, (caught.value.line, caught.value.column)) == (str(path), place)
    assert str(caught.value).startswith(f"{path}:{place[0]}:{place[1]}: ") and text in str(caught.value)
    assert len(sorvane.load(path, strict=False)) >= 1


def test_a_faulty_header_is_an_error_with_its_place(flight):
    lines = flight.read_text().splitlines()
    flight.write_text("\n".join([*lines[:11], "wide", *lines[12:]]))
    with pytest.raises(sorvane.Error, match=":12:1: .*wide"):
        sorvane.load(flight)
    assert sorvane.load(flight, strict=False).header["field_of_view_deg"] == 1.5


def test_files_without_samples_are_errors(write, tmp_path):
    (tmp_path / "ETXYZ.OUT.empty").write_text("")
    (tmp_path / "notes.txt").write_text("Dear all,\n")
    for path, text in [(tmp_path / "nothing", "there is no such file"), (tmp_path, "is not a regular file"),
                       (tmp_path / "ETXYZ.OUT.empty", ""), (tmp_path / "notes.txt", "is no trajectory"),
                       (write(), "holds no samples")]:
        with pytest.raises(sorvane.Error, match=text) as caught:
            sorvane.load(path)
        assert (caught.value.file, caught.value.line) == (str(path), None)
    for wrong, error in [(5, TypeError), ("a\0b", ValueError)]:
        with pytest.raises(error):
            sorvane.load(wrong)
    with pytest.raises(ValueError, match="unit"):
        sorvane.load(write(record(0)), unit="km")


def test_samples_are_in_order_and_the_last_of_a_time_counts(write):
    engagement = sorvane.load(write(record(2, target=(1, 0, 0)), record(1), record(2, [(4, 8)], (9, 0, 0))))
    assert engagement.time.tolist() == [1, 2] and engagement.target_position[1, 0] == 9
    assert engagement.flares.sample.tolist() == [1]
    alone = sorvane.load(write(record(3)))
    assert alone.time.shape == (1,) and alone.flares.position.shape == (0, 3) and alone.flare_ids.shape == (0,)


def resident_bytes():
    with open("/proc/self/statm", encoding="ascii") as statm:
        return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def test_ten_thousand_loads_do_not_grow(flight):
    def load(count):
        for _ in range(count):
            engagement = sorvane.load(flight)
            assert engagement.measure("range", engagement.flares.time).shape == (4,)
            assert engagement.header and engagement.closest_approach
    load(1000)
    before = resident_bytes()
    load(10000)
    assert resident_bytes() - before < 1 << 20


def test_other_threads_run_on_while_a_file_is_read(write):
    path = write(*(record(i) for i in range(100000)))
    ticks, has_ended = [], threading.Event()

    def tick():
        while not has_ended.is_set():
            ticks.append(time.monotonic())
            time.sleep(0.001)
    interval = sys.getswitchinterval()
    other = threading.Thread(target=tick)
    other.start()
    begin = time.monotonic()
    loaded = sorvane.load(path)
    end = time.monotonic()
    has_ended.set()
    other.join()
    assert len(loaded) == 100000 and interval < end - begin
    assert sum(begin < tick < end for tick in ticks) > 5
