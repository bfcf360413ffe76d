#!/usr/bin/env python3
"""Shows a radiance picture as greys: usage radiance_grey.py PICTURE.npy OUT.png TIMES

The grey is a logarithm, from the least radiance to 25 times that; every pixel becomes TIMES pixels to a side.
"""

import array
import ast
import math
import struct
import sys
import zlib

DECADES = math.log10(25.0)


def read(path):
    """Width, height and the values, row by row."""
    with open(path, "rb") as file:
        content = file.read()
    begin = content.index(b"\n") + 1
    height, width = ast.literal_eval(content[10:begin].decode())["shape"]
    return width, height, array.array("f", content[begin:])


def main():
    width, height, radiances = read(sys.argv[1])
    times = int(sys.argv[3])
    least = min(radiances)
    greys = bytes(round(255.0 * min(max(math.log10(value / least), 0.0) / DECADES, 1.0)) for value in radiances)
    rows = b""
    for row in range(height):
        line = bytes(grey for grey in greys[row * width:(row + 1) * width] for _ in range(times))
        rows += (b"\0" + line) * times

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    with open(sys.argv[2], "wb") as file:
        header = struct.pack(">IIBBBBB", times * width, times * height, 8, 0, 0, 0, 0)
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) +
                   chunk(b"IEND", b""))


main()
