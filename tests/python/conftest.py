"""What the tests of the Python module share: files to read, and the command to compare with."""

import os
import subprocess

import pytest

HEADER = ["/nowhere/t.top", "/nowhere/t.rad", "/nowhere/tgt_b0001.rad", "1 2 3", "4 5 6.1", "/nowhere/tgt.vnl",
          "/nowhere/tgt.brdf", "unused", "white", "7", "somebody", "4"]


def record(time, flares=(), target=(0, 0, -1000), threat=(0, 0, -500), gyro=(0, 0, 0)):
    """The lines of a sample; a flare is its identifier and its x."""
    def words(*values):
        return " ".join(str(value) for value in values)
    return [words(time, len(flares), *target, 0, 0, 10), words(*threat, 0, 5, 20), words(0, 0, *gyro),
            *(words(number, 0, x, 0, -900, 1e7, 0, 0, 0, 5, 6, 7, 3) for number, x in flares)]


@pytest.fixture
def write(tmp_path):
    """Writes lines as a trajectory of its own and returns its path."""
    def write_lines(*records, name="ETXYZ.OUT.1"):
        path = tmp_path / name
        path.write_text("".join(line + "\n" for lines in (HEADER, *records) for line in lines))
        return path
    return write_lines


@pytest.fixture
def flight(write):
    """Ten seconds past each other, off the axes; flare 7 burns twice, flare 3 once."""
    return write(*(record(0.5 * i, [(7, 90.1)] * (i in (2, 3, 9)) + [(3, 20)] * (i == 3), (30.1 * i, 0.3 * i * i, -1000),
                          (600 - 20.7 * i, 400, -990 - i), (0, 1, 0.1 * i)) for i in range(21)))


def sorvane(*arguments):
    """What the command prints."""
    return subprocess.run([os.environ["SORVANE_COMMAND"], *map(str, arguments)], check=True, stdout=subprocess.PIPE,
                          text=True).stdout


@pytest.fixture(scope="session")
def demonstration(tmp_path_factory):
    """The folder of the demonstration, whose files name its data."""
    folder = tmp_path_factory.mktemp("demonstration")
    sorvane("demo", folder)
    os.environ["PELSAR_DATA"] = f"{folder}/data/"
    return folder
