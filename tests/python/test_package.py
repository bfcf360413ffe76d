"""The package: what its type hints say is there, with these arguments, and documented."""

import ast
import inspect
import pathlib
import re

import sorvane

HINTS = ast.parse(pathlib.Path(sorvane.__file__).with_name("__init__.pyi").read_text(encoding="utf-8"))


def arguments_of(function):
    """The names of arguments in order, from Python's code or the first line of a compiled function's description."""
    try:
        return list(inspect.signature(function).parameters)
    except ValueError:
        return re.findall(r"(\w+): [^,]*", re.search(r"\((.*)\) ->", function.__doc__)[1])


def hinted(function):
    return [argument.arg for argument in (*function.args.args, *function.args.kwonlyargs)]


def test_the_hints_fit_the_module():
    names = {"__version__", *(name for node in HINTS.body if isinstance(node, ast.ImportFrom) and node.level
                              for name in [alias.name for alias in node.names])}
    for node in HINTS.body:
        if isinstance(node, (ast.FunctionDef, ast.ClassDef)):
            names.add(node.name)
            assert inspect.getdoc(getattr(sorvane, node.name)), node.name
        if isinstance(node, ast.FunctionDef):
            assert hinted(node) == arguments_of(getattr(sorvane, node.name)), node.name
        if isinstance(node, ast.ClassDef):
            members = {member.name: member for member in node.body}
            own = vars(getattr(sorvane, node.name))
            assert {name for name in own if not name.startswith("_")} == members.keys() - {"__len__"}
            for name, member in members.items():
                assert own[name].__doc__ or name == "__len__", name
                if not member.decorator_list and name != "__len__":
                    assert hinted(member) == arguments_of(own[name]), name
    assert names == set(sorvane.__all__)
    assert (pathlib.Path(sorvane.__file__).parent / "py.typed").exists()
