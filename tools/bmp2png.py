#!/usr/bin/env python3
"""Turns the sample program's 24-bit bottom-up .bmp screenshots into PNG
files: bmp2png.py <in.bmp> <out.png>. Only the form the sample writes."""
import struct
import sys
import zlib


def main(src, dst):
    data = open(src, "rb").read()
    offset, = struct.unpack_from("<I", data, 10)
    width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
    if bits != 24 or width <= 0 or height <= 0:
        sys.exit(f"{src}: not a bottom-up 24-bit bitmap")
    stride = (width * 3 + 3) & ~3
    rows = []
    for y in range(height - 1, -1, -1):
        row = data[offset + y * stride: offset + y * stride + width * 3]
        rgb = bytearray(row)
        rgb[0::3], rgb[2::3] = row[2::3], row[0::3]  # stored blue, green, red
        rows.append(b"\0" + bytes(rgb))

    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body +
                struct.pack(">I", zlib.crc32(kind + body) & 0xFFFFFFFF))

    png = (b"\x89PNG\r\n\x1a\n" +
           chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
           chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))
    open(dst, "wb").write(png)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
