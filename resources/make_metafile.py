#!/usr/bin/env python3
"""Generates the placeable metafile of the resource library (metafiles/sample.wmf).

  sample.wmf   RCDATA 6: a dark red rectangle on a 2000 x 1000 window,
               bounding box 0,0 - 2000,1000 at 1000 units per inch, so a
               picture 2 inches wide and 1 inch high.

Standard library only and fully deterministic.
Usage: make_metafile.py [output-directory]
"""

import os
import struct
import sys

WIDTH, HEIGHT, UNITS_PER_INCH = 2000, 1000, 1000


def record(function, *params):
    return struct.pack("<IH", 3 + len(params), function) + struct.pack("<%dh" % len(params), *params)


def metafile():
    records = [
        record(0x020B, 0, 0),                    # SetWindowOrg(y, x)
        record(0x020C, HEIGHT, WIDTH),           # SetWindowExt(y, x)
        # CreateBrushIndirect: solid, RGB(128, 0, 0), no hatch
        struct.pack("<IHHIH", 7, 0x02FC, 0, 0x000080, 0),
        record(0x012D, 0),                       # SelectObject(0)
        record(0x041B, 900, 1900, 100, 100),     # Rectangle(bottom, right, top, left)
        record(0x01F0, 0),                       # DeleteObject(0)
        record(0x0000),                          # end of file
    ]
    body = b"".join(records)
    words = (18 + len(body)) // 2
    largest = max(len(r) for r in records) // 2
    header = struct.pack("<HHHIHIH", 1, 9, 0x0300, words, 1, largest, 0)
    placeable = struct.pack("<IHhhhhHI", 0x9AC6CDD7, 0, 0, 0, WIDTH, HEIGHT, UNITS_PER_INCH, 0)
    checksum = 0
    for (word,) in struct.iter_unpack("<H", placeable):
        checksum ^= word
    return placeable + struct.pack("<H", checksum) + header + body


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "metafiles")
    os.makedirs(out, exist_ok=True)
    with open(os.path.join(out, "sample.wmf"), "wb") as f:
        f.write(metafile())


if __name__ == "__main__":
    main()
