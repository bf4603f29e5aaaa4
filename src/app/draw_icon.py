#!/usr/bin/env python3
"""Draws nullwright.ico (a sheet of paper whose lower part falls into squares, on a blue tile) and
operation.ico (the same squares on a page of their own, for operation files).

Run it in this folder after a change; its results are kept beside it, and no build needs it. It
needs nothing but Python. Every edge lies between two pixels at every size: scaled down from one
drawing, the small ones would be blurred.
"""
import struct
import zlib

TILE = (38, 98, 184)  # stands out from light and dark taskbars
PAPER = (255, 255, 255)
FOLD = (170, 196, 232)
LINE = (120, 150, 196)
SPARK = (255, 170, 44)

# Per size: side of a square, gap between two, height of the paper above them, side of the squares
# of the last row, thickness of a line of writing.
SIZES = {
    16: (2, 1, 6, 2, 1), 20: (3, 1, 8, 2, 1), 24: (4, 1, 9, 3, 1), 32: (6, 1, 13, 4, 2),
    40: (8, 1, 16, 6, 2), 48: (8, 2, 18, 6, 2), 64: (12, 2, 22, 8, 3), 128: (24, 4, 44, 16, 6),
    256: (48, 8, 88, 32, 12),
}


def box(left, top, width, height, colour):
    return lambda x, y: colour if left <= x < left + width and top <= y < top + height else None


def tile(size):
    radius = size * 3 / 16

    def at(x, y):
        dx = max(radius - x, x - (size - radius), 0)
        dy = max(radius - y, y - (size - radius), 0)
        return TILE if dx * dx + dy * dy <= radius * radius else None
    return at


def folded(left, top, width, height, fold, colour, behind):
    """A sheet whose upper right corner is folded down; `behind` shows where the corner was."""
    def at(x, y):
        if not (left <= x < left + width and top <= y < top + height):
            return None
        dx, dy = x - (left + width - fold), y - top
        if dx > dy:
            return behind
        return FOLD if dx >= 0 and dy < fold else colour
    return at


def squares(size, left, top, first):
    """Two rows of squares; `first` is the colour of those that are no sparks."""
    side, gap, _, last, _ = SIZES[size]
    step = side + gap
    lower = top + step
    return [
        box(left, top, side, side, first), box(left + step, top, side, side, first),
        box(left + 2 * step, top, side, side, SPARK),
        box(left, lower, last, last, SPARK), box(left + step + side - last, lower, last, last, first),
    ]


def writing(left, top, width, height, fold, thick):
    """Lines of writing at the foot of a sheet, as many as fit below the fold."""
    shapes, y = [], top + height - 2 * thick
    for _ in range(2):
        if y >= top + fold:
            shapes.append(box(left + thick, y, width - 2 * thick, thick, LINE))
        y -= 2 * thick
    return shapes


def program(size):
    side, gap, paper, last, thick = SIZES[size]
    width = 3 * side + 2 * gap
    left = (size - width) // 2
    top = (size - (paper + side + last + 2 * gap)) // 2
    fold = side + side % 2
    return [tile(size), folded(left, top, width, paper, fold, PAPER, TILE),
            *writing(left, top, width, paper, fold, thick),
            *squares(size, left, top + paper + gap, PAPER)]


def operation(size):
    side, gap, _, last, thick = SIZES[size]
    width = 3 * side + 2 * gap
    left = (size - width) // 2
    border = max(1, size // 24)
    edge = left - border - max(1, size // 16)
    outer, fold = size - 2 * edge, side + side % 2 + 2 * border
    lower = size - border - max(1, size // 16) - side - gap - last
    return [folded(edge, 0, outer, size, fold, TILE, None),
            folded(edge + border, border, outer - 2 * border, size - 2 * border, fold - border,
                   PAPER, None),
            *writing(left, border, width, lower - border - gap, fold, thick),
            *squares(size, left, lower, TILE)]


def draw(size, shapes):
    """Rows of (red, green, blue, alpha), each pixel the mean of several points."""
    points = 4
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            total = [0, 0, 0, 0]
            for sy in range(points):
                for sx in range(points):
                    colour = None
                    for shape in shapes:
                        colour = shape(px + (sx + .5) / points, py + (sy + .5) / points) or colour
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


def write(name, shapes_of):
    images = []
    for size in SIZES:
        rows = draw(size, shapes_of(size))
        images.append((size, png(rows) if size > 64 else bitmap(rows)))
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, data in images:
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data),
                                 offset)
        offset += len(data)
    with open(name, "wb") as file:
        file.write(directory + b"".join(data for _, data in images))


if __name__ == "__main__":
    write("nullwright.ico", program)
    write("operation.ico", operation)
