#!/usr/bin/env python3
"""Makes a set of many small engagements, for how `sorvane runs` grows with their number.

usage: make_set.py FOLDER COUNT [SAMPLES]

FOLDER/000/case000000.ETXYZ.OUT.x and on, a thousand to a folder: a threat passes a target at a distance of its own, with
two flares; 20 samples, which are 5 kB, unless SAMPLES says otherwise.
"""

import pathlib
import sys

HEADER = """/nowhere/t.top
/nowhere/t.rad
/nowhere/tgt_b0001.rad
1 2 3
4 5 6
/nowhere/tgt.vnl
/nowhere/tgt.brdf
unused
white
7
somebody
1.5
"""


def engagement(number, samples):
    miss = number * 7919 % 10007 / 100
    lines = []
    for i in range(samples):
        time = 4 * i / (samples - 1)
        lines.append(f"{time:.4f} 2 {250 * time:.3f} {miss:.3f} -1000.000 0.000 0.000 0.000\n"
                     f"{600 * (time - 2) + 500:.3f} 0.000 -1000.000 0.000 0.000 0.000\n"
                     f"0 0 0.000 0.000 {0.4 * time:.4f}\n")
        for flare in (1, 2):
            lines.append(f"{flare} 0 {200 * time:.3f} {miss + 20 * flare:.3f} {-1000 + 5 * time * time:.3f} 20000.000 "
                         "0.000 0.000 0.000 2.000 0.000 0.000 1\n")
    return HEADER + "".join(lines)


def main():
    folder, count = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    samples = int(sys.argv[3]) if len(sys.argv) > 3 else 20
    for number in range(count):
        place = folder / f"{number // 1000:03}"
        if number % 1000 == 0:
            place.mkdir(parents=True, exist_ok=True)
        (place / f"case{number:06}.ETXYZ.OUT.x").write_text(engagement(number, samples))


main()
