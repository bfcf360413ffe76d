"""The guide's examples, run in order, print what the page says."""

import doctest
import os
import pathlib
import re

PAGE = pathlib.Path(__file__).parents[2] / "docs/guide/14-python.md"


def test_the_examples_of_the_guide(demonstration, tmp_path, monkeypatch):
    (tmp_path / "demonstration").symlink_to(demonstration)
    monkeypatch.chdir(tmp_path)
    text = re.sub(r"^```.*$", "", PAGE.read_text(encoding="utf-8"), flags=re.MULTILINE)
    examples = doctest.DocTestParser().get_doctest(text, {}, PAGE.name, str(PAGE), 0)
    assert len(examples.examples) > 20 and os.environ["PELSAR_DATA"]
    said = []
    assert doctest.DocTestRunner().run(examples, out=said.append).failed == 0, "".join(said)
