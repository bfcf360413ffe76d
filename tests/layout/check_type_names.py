#!/usr/bin/env python3
"""Checks that no two rooms define a type of the same name: no room has a namespace, and programs link several rooms.

usage: check_type_names.py SOURCE_DIRECTORY

Two such types in one program would share constructors and destructors, which shows as memory corruption.
"""

import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1])
ROOMS = "opengllib engagement analysis view video app tools demo".split()
DEFINITION = r"^(?:template <[^>]*>\s*)?(?:class|struct|enum class|enum|union) (\w+)(?: final)?(?: : [^{;]*)?\s*\{"

places = collections.defaultdict(set)
for room in ROOMS:
    for path in [*(ROOT / room).rglob("*.h"), *(ROOT / room).rglob("*.cpp")]:
        text = re.sub(r"^namespace \{\n.*?^\}", "", path.read_text(encoding="utf-8"), flags=re.DOTALL | re.MULTILINE)
        for name in re.findall(DEFINITION, text, re.MULTILINE):
            places[name].add(str(path.relative_to(ROOT)))

clashes = {name: sorted(files) for name, files in places.items() if len(files) > 1}
for name, files in clashes.items():
    print(f"{name} is defined in {' and in '.join(files)}")
sys.exit(1 if clashes else 0)
