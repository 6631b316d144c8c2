#!/usr/bin/env python3
"""Generates the eight frames of the wait cursor (cursors/frame1.cur .. frame8.cur).

The wait cursor is a small clock whose hand sweeps 45 degrees per frame, so the
eight frames shown in turn make one full turn. Each frame is a classic
monochrome 32x32 cursor: one ICONDIR entry of type 2 with the hotspot at the
centre, a BITMAPINFOHEADER of doubled height, a two-entry colour table, the
1-bpp XOR bitmap and then the 1-bpp AND mask, both bottom-up.

Standard library only and fully deterministic: running it again yields the
same bytes, so the committed .cur files can be rebuilt and compared.
Usage: make_cursors.py [--preview] [output-directory]
"""

import math
import os
import struct
import sys

SIZE = 32
FRAMES = 8
HOTSPOT = (16, 16)
# The clock is centred on the hotspot pixel, measured at pixel centres.
CENTRE = (HOTSPOT[0] + 0.5, HOTSPOT[1] + 0.5)
FACE_RADIUS = 13.6      # outer edge of the clock
RIM_INNER = 11.8        # the rim is drawn black between this and FACE_RADIUS
TICK_FROM, TICK_TO = 8.6, 10.6
HAND_LENGTH = 7.0
HAND_HALF_WIDTH = 0.85
HUB_RADIUS = 1.6

# Pixel kinds: how each maps onto the (AND, XOR) bit pair of a monochrome cursor.
TRANSPARENT, BLACK, WHITE = 0, 1, 2
MASK_BITS = {TRANSPARENT: (1, 0), BLACK: (0, 0), WHITE: (0, 1)}


def _distance_to_segment(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)
    t = max(0.0, min(1.0, t))
    return math.hypot(px - (ax + t * dx), py - (ay + t * dy))


def render_frame(frame):
    """Returns rows (top first) of pixel kinds for one frame."""
    cx, cy = CENTRE
    angle = math.radians(45.0 * frame)  # clockwise from twelve o'clock
    hand_x = cx + HAND_LENGTH * math.sin(angle)
    hand_y = cy - HAND_LENGTH * math.cos(angle)
    rows = []
    for y in range(SIZE):
        row = []
        for x in range(SIZE):
            px, py = x + 0.5, y + 0.5
            r = math.hypot(px - cx, py - cy)
            if r > FACE_RADIUS:
                kind = TRANSPARENT
            elif r > RIM_INNER:
                kind = BLACK
            else:
                kind = WHITE
                # Hour marks at twelve, three, six and nine.
                on_axis = abs(px - cx) < 1.0 or abs(py - cy) < 1.0
                if on_axis and TICK_FROM <= r <= TICK_TO:
                    kind = BLACK
                if r <= HUB_RADIUS:
                    kind = BLACK
                if _distance_to_segment(px, py, cx, cy, hand_x, hand_y) <= HAND_HALF_WIDTH:
                    kind = BLACK
            row.append(kind)
        rows.append(row)
    return rows


def _pack_plane(rows, bit_index):
    """Packs one bit of every pixel into bottom-up rows of 4 bytes."""
    out = bytearray()
    for row in reversed(rows):
        for byte_start in range(0, SIZE, 8):
            value = 0
            for x in range(byte_start, byte_start + 8):
                value = (value << 1) | MASK_BITS[row[x]][bit_index]
            out.append(value)
    return bytes(out)


def encode_cursor(rows):
    xor_plane = _pack_plane(rows, 1)
    and_plane = _pack_plane(rows, 0)
    colours = struct.pack("<4B4B", 0, 0, 0, 0, 255, 255, 255, 0)
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE * 2, 1, 1, 0,
                         len(xor_plane) + len(and_plane), 0, 0, 2, 0)
    image = header + colours + xor_plane + and_plane
    icondir = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", SIZE, SIZE, 2, 0, HOTSPOT[0], HOTSPOT[1],
                        len(image), 6 + 16)
    return icondir + entry + image


def preview(rows):
    glyph = {TRANSPARENT: ".", BLACK: "#", WHITE: "o"}
    return "\n".join("".join(glyph[k] for k in row) for row in rows)


def main(argv):
    show = "--preview" in argv
    args = [a for a in argv if a != "--preview"]
    out_dir = args[0] if args else os.path.join(os.path.dirname(os.path.abspath(__file__)), "cursors")
    os.makedirs(out_dir, exist_ok=True)
    for frame in range(FRAMES):
        rows = render_frame(frame)
        path = os.path.join(out_dir, "frame%d.cur" % (frame + 1))
        with open(path, "wb") as f:
            f.write(encode_cursor(rows))
        if show:
            print("frame%d.cur\n%s\n" % (frame + 1, preview(rows)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
