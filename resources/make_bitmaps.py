#!/usr/bin/env python3
"""Generates the gadget bitmaps of the resource library (bitmaps/*.bmp).

  hourcell.bmp      bitmap 1: one hour cell of the TimeTracker and TimeSetter bars,
                    a ruler segment with hour, half-hour and quarter-hour marks.
  busy.bmp          bitmap 3: 8x8 tile for the TimeTracker's pattern brush, a
                    diagonal hatch that marks busy time.
  marker_top.bmp    bitmap 4: TimeSetter marker above the bar, pointing down at
                    the marked time.
  marker_bottom.bmp bitmap 5: TimeSetter marker below the bar, pointing up.

and the bitmaps of qviso32.dll's own resources (resources/qviso32.rc):

  tab.bmp           bitmap 2100: a tab of the dialog tab strip, left and right
                    halves are its two ends; the bottom row is the strip's line.
  tab_current.bmp   bitmap 2101: the current tab, open at the bottom.
  checkglyphs.bmp   bitmap 32759: check-box, three-state and radio glyphs of
                    the bitmap check boxes, 4 x 3 cells of 13 x 13 pixels.
                    Rows: check box, three-state box, radio button; columns:
                    unchecked, checked, indeterminate, disabled.

The library recolours its bitmaps at run time: light grey (192, 192, 192)
becomes the button face, dark grey (128, 128, 128) the button shadow and white
the button highlight; cyan (0, 255, 255) is the tabs' transparent colour.

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
DARK_GREY = (128, 128, 128)   # button shadow after recolouring
CYAN = (0, 255, 255)          # transparent colour of the tab bitmaps

TAB_WIDTH, TAB_HEIGHT = 12, 18   # two 6-pixel ends
GLYPH = 13                       # glyph cell size


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


def tab(current):
    """Both ends of a tab: a rounded highlight corner on the left, a shadow
    and a black outline on the right.  A tab that is not current closes with
    the strip's highlight line along the bottom; the current one stays open."""
    w, h = TAB_WIDTH, TAB_HEIGHT
    rows = [[LIGHT_GREY] * w for _ in range(h)]
    for y in range(h):
        edge = max(0, 3 - y)                 # the left corner's outline column
        for x in range(edge):
            rows[y][x] = CYAN
            rows[y][w - 1 - x] = CYAN
        if y == 0:
            for x in range(edge, w - edge):
                rows[y][x] = WHITE
            continue
        rows[y][edge] = WHITE
        rows[y][w - 1 - edge] = BLACK
        if w - 2 - edge >= w // 2:
            rows[y][w - 2 - edge] = DARK_GREY
    if not current:
        rows[h - 1] = [WHITE] * w
    return rows


def check_glyphs():
    """The 4 x 3 glyph grid.  Boxes have a sunken two-pixel frame and a
    white well; radio buttons a round one.  The indeterminate column shows
    a grey mark in a grey well; the disabled column a grey outline on face."""
    g = GLYPH
    rows = [[LIGHT_GREY] * (4 * g) for _ in range(3 * g)]

    def put(x, y, colour):
        rows[y][x] = colour

    check = [(3, 6), (3, 7), (4, 7), (4, 8), (5, 8), (5, 9), (6, 8), (6, 7), (7, 7),
             (7, 6), (8, 6), (8, 5), (9, 5), (9, 4)]
    for row in range(3):
        for col in range(4):
            ox, oy = col * g, row * g
            disabled = col == 3
            well = LIGHT_GREY if disabled or col == 2 else WHITE
            mark = DARK_GREY if col == 2 else BLACK
            if row < 2:
                for y in range(g):
                    for x in range(g):
                        if x == 0 or y == 0:
                            colour = DARK_GREY
                        elif x == g - 1 or y == g - 1:
                            colour = WHITE
                        elif x == 1 or y == 1:
                            colour = DARK_GREY if disabled else BLACK
                        else:
                            colour = well
                        put(ox + x, oy + y, colour)
                if col == 1 or (col == 2 and row == 1):
                    for x, y in check:
                        put(ox + x, oy + y, mark)
                        put(ox + x, oy + y + 1, mark)
            else:
                c = (g - 1) / 2
                for y in range(g):
                    for x in range(g):
                        d = ((x - c) ** 2 + (y - c) ** 2) ** 0.5
                        if d <= 4.6:
                            put(ox + x, oy + y, well)
                        elif d <= 5.6:
                            put(ox + x, oy + y, DARK_GREY if (x + y < g - 1 or disabled) else WHITE)
                        elif d <= 6.4 and (x + y) < g - 1:
                            put(ox + x, oy + y, DARK_GREY)
                if col in (1, 2):
                    for y in range(g):
                        for x in range(g):
                            if ((x - c) ** 2 + (y - c) ** 2) ** 0.5 <= 1.9:
                                put(ox + x, oy + y, mark)
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
    ("tab.bmp", lambda: tab(False)),
    ("tab_current.bmp", lambda: tab(True)),
    ("checkglyphs.bmp", check_glyphs),
)


def preview(rows):
    glyph = {TEAL: ".", BLACK: "#", WHITE: "o", LIGHT_GREY: "-", DARK_RED: "/", RED: "r",
             DARK_GREY: "+", CYAN: " "}
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
