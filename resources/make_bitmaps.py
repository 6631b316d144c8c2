#!/usr/bin/env python3
"""Generates the gadget bitmaps of the resource library (bitmaps/*.bmp).

  hourcell.bmp      bitmap 1: one hour cell of the TimeTracker and TimeSetter bars,
                    a ruler segment with hour, half-hour and quarter-hour marks.
  busy.bmp          bitmap 3: 8x8 tile for the TimeTracker's pattern brush, a
                    diagonal hatch that marks busy time.
  marker_top.bmp    bitmap 4: TimeSetter marker above the bar, pointing down at
                    the marked time.
  marker_bottom.bmp bitmap 5: TimeSetter marker below the bar, pointing up.

The gadgets build their masks against the teal of their background,
RGB (0, 129, 129): every teal pixel of bitmaps 1, 4 and 5 is transparent, so
teal is used for nothing else. All files are 24-bit uncompressed BMPs, which
keep that colour exact.

Standard library only and fully deterministic.
Usage: make_bitmaps.py [--preview] [output-directory]
"""

import os
import struct
import sys

TEAL = (0, 129, 129)          # transparent colour of the time gadgets
BLACK = (0, 0, 0)
WHITE = (255, 255, 255)
LIGHT_GREY = (192, 192, 192)
DARK_RED = (128, 0, 0)
RED = (255, 0, 0)


def hour_cell():
    """24x8 ruler segment: baseline along the bottom, a full-height mark at the
    hour (with a white highlight beside it), a half-hour mark and two
    quarter-hour marks; everything else shows the gadget's background."""
    width, height = 24, 8
    rows = [[TEAL] * width for _ in range(height)]
    for x in range(width):
        rows[height - 1][x] = BLACK
    marks = {0: height, 12: 5, 6: 3, 18: 3}  # column -> mark height in pixels
    for column, length in marks.items():
        for y in range(height - length, height):
            rows[y][column] = BLACK
    for y in range(0, height - 1):
        rows[y][1] = WHITE
    return rows


def busy_pattern():
    """8x8 diagonal hatch; the period of 4 divides 8 so the tile repeats seamlessly."""
    return [[DARK_RED if (x + y) % 4 == 3 else LIGHT_GREY for x in range(8)]
            for y in range(8)]


def marker_down():
    """9x5 triangle pointing down: red inside a black outline, teal around it."""
    width, height = 9, 5
    rows = []
    for y in range(height):
        row = []
        for x in range(width):
            if x < y or x > width - 1 - y:
                row.append(TEAL)
            elif y == 0 or x == y or x == width - 1 - y:
                row.append(BLACK)
            else:
                row.append(RED)
        rows.append(row)
    return rows


def encode_bmp(rows):
    """24-bit bottom-up BMP with rows padded to 4 bytes."""
    height, width = len(rows), len(rows[0])
    stride = (width * 3 + 3) & ~3
    pixels = bytearray()
    for row in reversed(rows):
        line = bytearray()
        for r, g, b in row:
            line += bytes((b, g, r))
        line += bytes(stride - len(line))
        pixels += line
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 0, 0, 0, 0)
    offset = 14 + len(info)
    file_header = struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset)
    return file_header + info + bytes(pixels)


BITMAPS = (
    ("hourcell.bmp", hour_cell),
    ("busy.bmp", busy_pattern),
    ("marker_top.bmp", marker_down),
    ("marker_bottom.bmp", lambda: list(reversed(marker_down()))),
)


def preview(rows):
    glyph = {TEAL: ".", BLACK: "#", WHITE: "o", LIGHT_GREY: "-", DARK_RED: "/", RED: "r"}
    return "\n".join("".join(glyph[p] for p in row) for row in rows)


def main(argv):
    show = "--preview" in argv
    args = [a for a in argv if a != "--preview"]
    out_dir = args[0] if args else os.path.join(os.path.dirname(os.path.abspath(__file__)), "bitmaps")
    os.makedirs(out_dir, exist_ok=True)
    for name, make in BITMAPS:
        rows = make()
        with open(os.path.join(out_dir, name), "wb") as f:
            f.write(encode_bmp(rows))
        if show:
            print("%s\n%s\n" % (name, preview(rows)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
