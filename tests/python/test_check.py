"""Checking: the findings of the command, as records."""

import json
import os
import subprocess

import pytest

import sorvane
from conftest import record


def test_findings_are_the_commands(write, demonstration, tmp_path):
    path = write(record(0), record("x"), *(record(i, [(1, "?")]) for i in range(1, 30)))
    for checked, options in [(path, []), (path, ["--all"]), (demonstration, []), (demonstration / "data", [])]:
        told = sorvane.check(checked, all=bool(options))
        run = subprocess.run([os.environ["SORVANE_COMMAND"], "check", "--json", checked,
                              *options], stdout=subprocess.PIPE, check=False)
        assert [finding._asdict() for finding in told] == json.loads(run.stdout)["findings"]
    first = next(finding for finding in sorvane.check(path) if finding.severity == "error")
    assert str(first).startswith(f"{path}:16:1: error: ") and first[:3] == (str(path), 16, 1)
    with pytest.raises(sorvane.Error, match="there is no such file") as caught:
        sorvane.check(tmp_path / "nothing")
    assert caught.value.file == str(tmp_path / "nothing")
