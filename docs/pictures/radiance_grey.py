#!/usr/bin/env python3
"""Shows a radiance picture as greys: usage radiance_grey.py PICTURE.npy OUT.png TIMES

The grey is a logarithm, from the least radiance to a thousand times that; every pixel becomes TIMES pixels to a side.
"""

import struct
import sys
import zlib

import numpy

DECADES = 3.0


def main():
    radiance = numpy.load(sys.argv[1])
    times = int(sys.argv[3])
    decades = numpy.log10(numpy.maximum(radiance / radiance.min(), 1.0)) / DECADES
    greys = numpy.rint(255.0 * numpy.minimum(decades, 1.0)).astype(numpy.uint8)
    greys = greys.repeat(times, axis=0).repeat(times, axis=1)
    rows = b"".join(b"\0" + row.tobytes() for row in greys)

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    height, width = greys.shape
    with open(sys.argv[2], "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)) +
                   chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


main()
