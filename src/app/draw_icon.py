#!/usr/bin/env python3
"""Draws nullwright.ico: a sheet of paper whose lower part falls into squares, on a dark tile.

Run it in this folder after a change; its result is kept beside it. It needs nothing but Python.
"""
import struct
import zlib

SIZES = (16, 20, 24, 32, 40, 48, 64, 256)
TILE = (27, 42, 65)
PAPER = (244, 247, 251)
FOLD = (176, 190, 210)
LINE = (112, 134, 166)
SPARK = (255, 179, 71)

# Squares of the falling part: left, top, side, colour; the drawing is 64 units wide.
SQUARES = (
    (18, 36, 7, PAPER), (26, 36, 7, PAPER), (34, 36, 7, PAPER), (40, 37, 6, SPARK),
    (18, 44, 6, PAPER), (27, 44, 6, SPARK), (36, 45, 5, PAPER),
    (19, 52, 4, SPARK), (29, 52, 4, PAPER), (40, 51, 3, PAPER),
)


def inside_round(x, y, left, top, right, bottom, radius):
    if not (left <= x <= right and top <= y <= bottom):
        return False
    dx = max(left + radius - x, x - (right - radius), 0)
    dy = max(top + radius - y, y - (bottom - radius), 0)
    return dx * dx + dy * dy <= radius * radius


def colour_at(x, y):
    if not inside_round(x, y, 1, 1, 63, 63, 12):
        return None
    for left, top, side, colour in SQUARES:
        if left <= x <= left + side and top <= y <= top + side:
            return colour
    if 17 <= x <= 47 and 8 <= y <= 34:
        if x - 38 > y - 8:  # the corner that is folded down
            return TILE
        if x >= 38 and y <= 17:
            return FOLD
        if y > 19 and 22 <= x <= 42 and (y - 19) % 6 >= 3:
            return LINE
        return PAPER
    return TILE


def draw(size):
    """Rows of (red, green, blue, alpha), each pixel the mean of several points."""
    points = 8 if size <= 64 else 3
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            total = [0, 0, 0, 0]
            for sy in range(points):
                for sx in range(points):
                    colour = colour_at((px + (sx + .5) / points) * 64 / size,
                                       (py + (sy + .5) / points) * 64 / size)
                    if colour:
                        for i in range(3):
                            total[i] += colour[i]
                        total[3] += 1
            hits = total[3]
            mean = [round(c / hits) if hits else 0 for c in total[:3]]
            row.append((*mean, round(255 * hits / points ** 2)))
        rows.append(row)
    return rows


def png(rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(
            ">I", zlib.crc32(kind + data))
    raw = b"".join(b"\0" + bytes(v for pixel in row for v in pixel) for row in rows)
    size = len(rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def bitmap(rows):
    size = len(rows)
    head = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(bytes((b, g, r, a)) for row in reversed(rows) for r, g, b, a in row)
    mask = b"\0" * ((size + 31) // 32 * 4 * size)
    return head + pixels + mask


def main():
    images = [(size, png(draw(size)) if size == 256 else bitmap(draw(size))) for size in SIZES]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, data in images:
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data),
                                 offset)
        offset += len(data)
    with open("nullwright.ico", "wb") as file:
        file.write(directory + b"".join(data for _, data in images))


if __name__ == "__main__":
    main()
