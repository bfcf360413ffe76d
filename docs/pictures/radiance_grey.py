#!/usr/bin/env python3
"""Shows radiance pictures of one height as greys, beside each other.

usage: radiance_grey.py OUT.png TIMES SPAN PICTURE.npy ...

The grey is a logarithm, from the least radiance of all to SPAN times that; every pixel becomes TIMES pixels to a side.
"""

import array
import ast
import math
import struct
import sys
import zlib

def read(path):
    """Width, height and the values, row by row."""
    with open(path, "rb") as file:
        content = file.read()
    begin = content.index(b"\n") + 1
    height, width = ast.literal_eval(content[10:begin].decode())["shape"]
    return width, height, array.array("f", content[begin:])


def grey(ratio, decades):
    return round(255.0 * min(max(math.log10(ratio), 0.0) / decades, 1.0))


def main():
    times = int(sys.argv[2])
    pictures = [read(path) for path in sys.argv[4:]]
    decades = math.log10(float(sys.argv[3]))
    least = min(min(radiances) for _, _, radiances in pictures)
    rows = b""
    for row in range(pictures[0][1]):
        line = b"\xff".join(  # a white line between two
            bytes(grey(value / least, decades) for value in radiances[row * width:(row + 1) * width] for _ in range(times))
            for width, _, radiances in pictures)
        rows += (b"\0" + line) * times

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    with open(sys.argv[1], "wb") as file:
        header = struct.pack(">IIBBBBB", len(line), times * pictures[0][1], 8, 0, 0, 0, 0)
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) +
                   chunk(b"IEND", b""))


main()
