#!/usr/bin/env python3
"""Draws the toolbar strips, the busy cursors and the icons into assets/; with --check it only compares.

Every picture is a list of layers (colour, shape), painted in order. A shape is a list of polygons, filled as
their union, in a square of 16 units (glyphs) or 32 units (cursors, icons), so one drawing serves every size.
"""
import math
import pathlib
import struct
import sys

from picture_files import bitmap, chunk, cursor_image, icon_file, png

folder = pathlib.Path(__file__).resolve().parent.parent / "assets"
SUBLINES = 8  # per pixel row; along the row the coverage is exact

# Red, green, blue, alpha. CLEAR cuts through to the background: the gap around a badge.
CLEAR = (0, 0, 0, 0)
INK = (72, 88, 106, 255)
STEEL = (138, 152, 166, 255)
PALE = (214, 222, 230, 255)
WHITE = (255, 255, 255, 255)
BLUE = (33, 105, 186, 255)
SKY = (150, 196, 240, 255)
GREEN = (40, 150, 80, 255)
RED = (207, 52, 52, 255)
AMBER = (236, 166, 50, 255)
SAND = (250, 212, 124, 255)


# Shapes


def points(text):
    return [tuple(map(float, pair.split(","))) for pair in text.split()]


def poly(text):
    return [points(text)]


def rect(x, y, width, height):
    return [[(x, y), (x + width, y), (x + width, y + height), (x, y + height)]]


def arc(x, y, radius, start=0.0, end=1.0):
    """Points on a circle, from and to in turns, clockwise from the right."""
    turns = [2 * math.pi * (start + (end - start) * k / 32) for k in range(33)]
    return [(x + radius * math.cos(a), y + radius * math.sin(a)) for a in turns]


def disc(x, y, radius):
    return [arc(x, y, radius)]


def line(width, *paths):
    """Strokes with round ends and joints along paths: each a text of points or a list of them."""
    shape = []
    for path in paths:
        path = points(path) if isinstance(path, str) else path
        for (x, y), (u, v) in zip(path, path[1:]):
            length = math.hypot(u - x, v - y)
            if length:
                a, b = width / 2 * (y - v) / length, width / 2 * (u - x) / length
                shape.append([(x + a, y + b), (u + a, v + b), (u - a, v - b), (x - a, y - b)])
        shape += [arc(x, y, width / 2) for x, y in path]
    return shape


def edge(width, shape):
    return line(width, *(polygon + polygon[:1] for polygon in shape))


def turned(shape, turn, x, y):
    c, s = math.cos(2 * math.pi * turn), math.sin(2 * math.pi * turn)
    return [[(x + (u - x) * c - (v - y) * s, y + (u - x) * s + (v - y) * c) for u, v in p] for p in shape]


def moved(shape, dx, dy):
    return [[(u + dx, v + dy) for u, v in p] for p in shape]


def mirrored(layers):
    return [(colour, [[(16 - x, y) for x, y in p] for p in shape]) for colour, shape in layers]


# Painting


def crossings(polygons, y):
    """Where the horizontal at y meets the edges: (x, +1 or -1), from left to right."""
    found = []
    for polygon in polygons:
        area = sum(x * v - u * y0 for (x, y0), (u, v) in zip(polygon, polygon[1:] + polygon[:1]))
        way = 1 if area > 0 else -1  # all polygons the same way round: overlaps add up, never cancel
        for (x, y0), (u, v) in zip(polygon, polygon[1:] + polygon[:1]):
            if (y0 <= y) != (v <= y):
                found.append((x + (y - y0) * (u - x) / (v - y0), way if v > y0 else -way))
    return sorted(found)


def covered(polygons, size, row):
    """How much of each pixel of the row lies inside, 0 to 1."""
    cover = [0.0] * size
    for k in range(SUBLINES):
        winding = 0
        for x, way in crossings(polygons, row + (k + 0.5) / SUBLINES):
            if winding == 0:
                left = x
            winding += way
            if winding == 0:
                for column in range(max(0, int(left)), min(size, int(x) + 1)):
                    cover[column] += max(0.0, min(x, column + 1) - max(left, column)) / SUBLINES
    return cover


def paint(layers, size, units):
    """Rows, from the top, of (blue, green, red, alpha) with straight alpha."""
    scale = size / units
    picture = [[CLEAR] * size for _ in range(size)]  # premultiplied while painting
    for colour, shape in layers:
        # Rounded, so that another machine's sine cannot move a byte of the result.
        polygons = [[(round(x * scale, 6), round(y * scale, 6)) for x, y in p] for p in shape]
        top = max(0, int(min(y for p in polygons for _, y in p)))
        bottom = min(size, int(max(y for p in polygons for _, y in p)) + 1)
        for row in range(top, bottom):
            for column, part in enumerate(covered(polygons, size, row)):
                if part:
                    old = picture[row][column]
                    picture[row][column] = tuple(o + (c - o) * part for o, c in zip(old, colour))

    def straight(pixel):
        alpha = round(pixel[3])
        red, green, blue = (min(255, round(c * 255 / pixel[3])) if alpha else 0 for c in pixel[:3])
        return blue, green, red, alpha

    return [[straight(pixel) for pixel in row] for row in picture]


# Files


def icon(layers):
    """For every resolution that Windows offers, as a small and as a large icon."""
    return icon_file(1, [paint(layers, size, 32) for size in (16, 20, 24, 32, 40, 48, 64, 256)], png, (1, 32))


def animation(frames, hot_spot, jiffies):
    """The ANI file of the frames' layers; a jiffy is a sixtieth of a second."""
    count = len(frames)
    header = struct.pack("<9I", 36, count, count, 0, 0, 0, 0, jiffies, 1)  # 1: frames are whole cursor files
    files = [icon_file(2, [paint(layers, 32, 32)], cursor_image, hot_spot) for layers in frames]
    body = b"fram" + b"".join(chunk(b"icon", data) for data in files)
    return chunk(b"RIFF", b"ACON" + chunk(b"anih", header) + chunk(b"LIST", body))


# Toolbar glyphs, in 16 units: whole units are whole pixels in the smallest strip


def sheet(x, y, width, height, frame=INK):
    return [(frame, rect(x, y, width, height)), (WHITE, rect(x + 1, y + 1, width - 2, height - 2))]


def badge(colour, width, *paths):
    """A mark over another drawing, set off from it by a gap."""
    return [(CLEAR, line(width + 2, *paths)), (colour, line(width, *paths))]


def letter(name, x, y, size, width, colour):
    strokes = {"A": ["0,1 .5,0 1,1", ".2,.68 .8,.68"], "Z": ["0,0 1,0 0,1 1,1"]}[name]
    return (colour, line(width, *([(x + size * u, y + size * v) for u, v in points(s)] for s in strokes)))


def magnifier(x, y, radius):
    ring = arc(x, y, radius)
    handle = [(x + 0.75 * radius, y + 0.75 * radius), (x + 2 * radius, y + 2 * radius)]
    return [(CLEAR, disc(x, y, radius + 1.8)), (CLEAR, line(3.4, handle)), (SKY, disc(x, y, radius)),
            (INK, line(1.8, handle)), (BLUE, line(1.3, ring))]


DOWN_ARROW = [(INK, line(1.4, "12.5,2 12.5,12")), (INK, poly("9.5,10.5 15.5,10.5 12.5,15"))]
FUNNEL = [(BLUE, poly("1,1 14,1 14,2.6 9.2,8 9.2,14.6 5.8,12.4 5.8,8 1,2.6")),
          (SKY, poly("3.6,2.4 11.4,2.4 7.5,6.6"))]
BACK_ONE = [(BLUE, poly("12,2 12,14 4,8"))]
BACK_ALL = [(BLUE, poly("14,2 14,14 6,8") + rect(2, 2, 3, 12))]
X_MARK = ("10,10 14.5,14.5", "14.5,10 10,14.5")

GLYPHS = {
    "ID_Aceptar": [(GREEN, line(2.8, "2.5,8.5 6.2,12.4 13.5,4"))],
    "ID_Cancelar": [(RED, line(2.8, "3.3,3.3 12.7,12.7", "12.7,3.3 3.3,12.7"))],
    "ID_Cerrar": [
        (INK, rect(1, 1, 9, 14)), (PALE, rect(2, 2, 7, 12)), (AMBER, poly("2,2 7,3.6 7,15 2,14")),
        (INK, disc(5.6, 9, 0.8)), *badge(RED, 2, "10.2,5 14.2,9", "14.2,5 10.2,9"),
    ],
    "ID_Nuevo": [
        (INK, poly("2,1 9,1 13,5 13,15 2,15")), (WHITE, poly("3,2 8.6,2 12,5.4 12,14 3,14")),
        (STEEL, poly("8.4,2 12,5.8 8.4,5.8")), *badge(GREEN, 2, "11.5,8.5 11.5,14.5", "8.5,11.5 14.5,11.5"),
    ],
    "ID_Modificar": [
        (AMBER, poly("2.5,10 10,2.5 13.5,6 6,13.5")), (SAND, poly("2.5,10 10,2.5 11.2,3.7 3.7,11.2")),
        (RED, poly("10,2.5 11.8,.9 15.1,4.2 13.5,6")), (INK, poly("1,15 2.5,10 6,13.5")),
    ],
    "ID_Eliminar": [
        (INK, rect(2, 3, 12, 2) + rect(6, 1, 4, 2)), (STEEL, poly("3,6 13,6 12.2,15 3.8,15")),
        (WHITE, rect(6, 7, 1, 7) + rect(9, 7, 1, 7)),
    ],
    "ID_MoveFirst": BACK_ALL,
    "ID_MovePre": BACK_ONE,
    "ID_MoveNext": mirrored(BACK_ONE),
    "ID_MoveLast": mirrored(BACK_ALL),
    "ID_Imprimir": [
        *sheet(4, 1, 8, 6), (INK, rect(1, 5, 14, 7)), (STEEL, rect(2, 6, 12, 5)), (GREEN, rect(11, 7, 2, 1)),
        *sheet(4, 9, 8, 6), (STEEL, rect(6, 11, 4, 1) + rect(6, 13, 3, 1)),
    ],
    "ID_Preliminar": [
        *sheet(1, 1, 11, 14), (STEEL, rect(3, 3, 7, 1) + rect(3, 5, 4, 1) + rect(3, 12, 3, 1)),
        *magnifier(9, 9, 3),
    ],
    "ID_Registro": [
        *sheet(1, 2, 14, 12), (BLUE, rect(1, 2, 14, 3)), (SKY, rect(3, 7, 3, 4)),
        (STEEL, rect(8, 7, 5, 1) + rect(8, 9, 5, 1) + rect(8, 11, 3, 1)),
    ],
    "ID_OrdenAsc": [
        letter("A", 1.5, 1.5, 5, 1.5, BLUE), letter("Z", 1.5, 9.5, 5, 1.5, RED), *DOWN_ARROW,
    ],
    "ID_OrdenDesc": [
        letter("Z", 1.5, 1.5, 5, 1.5, RED), letter("A", 1.5, 9.5, 5, 1.5, BLUE), *DOWN_ARROW,
    ],
    "ID_Filtro": [*FUNNEL, *badge(RED, 2, *X_MARK)],
    "ID_Filtrar": [*FUNNEL, *magnifier(10, 10, 2.6)],
    "columns": [
        *sheet(1, 2, 14, 12), (BLUE, rect(1, 2, 14, 3)), (SKY, rect(6, 5, 4, 8)),
        (STEEL, rect(5, 5, 1, 8) + rect(10, 5, 1, 8)),
    ],
    "font": [letter("A", 2.5, 2.5, 11, 2.4, BLUE)],
}


# Busy cursors, in 32 units: dark or strong colours on a white rim, to stand out on any background


def rimmed(layers):
    return [(WHITE, edge(2.6, [polygon for _, shape in layers for polygon in shape])), *layers]


def swing(t):
    """There and back, softly, while t goes from 0 to 1."""
    return (1 - math.cos(2 * math.pi * t)) / 2


def folder_frame(t):
    """A pointer, and a folder whose front opens and closes while its sheet comes out."""
    lift, lean = 5 * swing(t), 5 * swing(t)
    pointer = poly("1,1 1,15 4.2,12 6.4,17 9,15.9 6.8,11 11,10.8")
    return rimmed([
        (INK, poly("9,14 15,14 17,16.5 27,16.5 27,30 9,30")),
        (AMBER, poly("10,15 14.5,15 16.5,17.5 26,17.5 26,29 10,29")),
        (BLUE, moved(rect(12, 17, 12, 10), 0, -lift)), (PALE, moved(rect(13, 18, 10, 9), 0, -lift)),
        (INK, [[(9 + lean, 19 + lean / 3), (27 + 0.8 * lean, 19 + lean / 3), (27, 30), (9, 30)]]),
        (SAND, [[(10 + lean, 20 + lean / 3), (25.8 + 0.8 * lean, 20 + lean / 3), (26, 29), (10, 29)]]),
    ]) + rimmed([(INK, pointer)])


def disk_frame(t):
    """An arrow that sinks into a disk."""
    arrow = moved(poly("13,1 19,1 19,7 23,7 16,14 9,7 13,7"), 0, 7 * t)
    return rimmed([
        (INK, poly("4,8 25,8 28,11 28,31 4,31")), (BLUE, poly("5,9 24.6,9 27,11.4 27,30 5,30")),
        (PALE, rect(9, 9, 13, 7)), (WHITE, rect(8, 20, 16, 10)),
        (STEEL, rect(10, 23, 12, 1) + rect(10, 26, 12, 1)),
    ]) + rimmed([(GREEN, arrow)])


def hourglass_frame(t):
    """Sand runs down for seven tenths, then the glass turns over."""
    run, turn = min(1.0, t / 0.7), max(0.0, (t - 0.65) / 0.35) / 2
    top, bottom = 7 + 8 * run, 26 - 7 * run  # of the sand in either bulb
    half = 6 * (16 - top) / 9
    sand = [[(16 - half, top), (16 + half, top), (16, 16)]]
    heap = 6 * (bottom - 16) / 10
    sand += [[(16 - heap, bottom), (16 + heap, bottom), (22, 26), (10, 26)]]
    if turn == 0:
        sand += rect(15.5, 15, 1, 11)
    layers = rimmed([
        (INK, poly("8,5 24,5 24,8 17.6,16 24,24 24,27 8,27 8,24 14.4,16 8,8")),
        (WHITE, poly("9.5,6 22.5,6 22.5,7.6 16.4,15.6 16.4,16.4 22.5,24.4 22.5,26 "
                     "9.5,26 9.5,24.4 15.6,16.4 15.6,15.6 9.5,7.6")),
        (AMBER, sand), (BLUE, rect(6, 3, 20, 3) + rect(6, 26, 20, 3)),
    ])
    return [(colour, turned(shape, turn, 16, 16)) for colour, shape in layers]


def gear(x, y, radius, teeth, turn, colour):
    shape = disc(x, y, 0.76 * radius)
    for k in range(teeth):
        tooth = [(x + 0.6 * radius, y - 0.24 * radius), (x + radius, y - 0.15 * radius),
                 (x + radius, y + 0.15 * radius), (x + 0.6 * radius, y + 0.24 * radius)]
        shape += turned([tooth], turn + k / teeth, x, y)
    return rimmed([(colour, shape)]) + [(WHITE, disc(x, y, 0.32 * radius))]


def gears_frame(t):
    """Two wheels in mesh: one tooth further makes the animation whole."""
    return gear(12, 12, 10.5, 8, t / 8, INK) + gear(23.5, 23.5, 7.5, 6, 0.04 - t / 6, BLUE)


def bars_frame(t):
    """Bars in disorder that grow and shrink into order and back; an arrow each way."""
    done = swing(t)
    layers = []
    for k, (mixed, ordered) in enumerate(zip((15, 24, 6, 20), (6, 12, 18, 24))):
        height = mixed + (ordered - mixed) * done
        layers += [(INK, rect(2 + 5 * k, 29 - height, 4, height)),
                   (SKY if k % 2 else BLUE, rect(3 + 5 * k, 30 - height, 2, height - 2))]
    arrow = poly("25.5,3 30,9 27.5,9 27.5,23 30,23 25.5,29 21,23 23.5,23 23.5,9 21,9")
    return rimmed(layers) + rimmed([(GREEN, arrow)])


# Icons, in 32 units

ORDER_SHEET = [  # the demo's: a sheet on a clipboard, ticked
    (BLUE, rect(4, 4, 20, 26) + edge(4, rect(4, 4, 20, 26))), (WHITE, rect(6, 6, 16, 22)),
    (INK, rect(10, 0, 8, 2) + rect(8, 2, 12, 6)), (PALE, rect(10, 4, 8, 2)),
    (STEEL, rect(8, 12, 12, 2) + rect(8, 16, 12, 2) + rect(8, 20, 6, 2)),
    (CLEAR, line(7, "15.5,22.5 20,27 28,17")), (GREEN, line(4, "15.5,22.5 20,27 28,17")),
]
DIALOG = [  # the library's: a list in a window, one of its rows chosen, and a glass over it
    (INK, rect(2, 2, 28, 24)), (BLUE, rect(2, 2, 28, 6)), (WHITE, rect(4, 8, 24, 16)),
    (AMBER, rect(4, 12, 24, 4)), (STEEL, rect(6, 9, 16, 2) + rect(6, 17, 12, 2) + rect(6, 21, 8, 2)),
    (INK, rect(6, 13, 18, 2)), (CLEAR, disc(20.5, 20.5, 8.4) + line(7, "25,25 30,30")), (SKY, disc(20.5, 20.5, 5.2)),
    (INK, line(4, "25,25 29.5,29.5")), (BLUE, line(2.6, arc(20.5, 20.5, 5.2))),
]


def assets():
    for size in (16, 24, 32):
        pictures = [paint(layers, size, 16) for layers in GLYPHS.values()]
        yield f"toolbar{size}.bmp", bitmap([sum(rows, []) for rows in zip(*pictures)])
    for name, frame, count, hot_spot, jiffies in (
        ("KvCur", folder_frame, 8, (1, 1), 7),
        ("Save", disk_frame, 8, (16, 16), 6),
        ("KvCur1", hourglass_frame, 10, (16, 16), 9),
        ("working", gears_frame, 8, (16, 16), 4),
        ("sort", bars_frame, 10, (16, 16), 6),
    ):
        yield f"Image/{name}.ani", animation([frame(k / count) for k in range(count)], hot_spot, jiffies)
    yield "demo.ico", icon(ORDER_SHEET)
    yield "Tamvelo.ico", icon(DIALOG)


def main():
    check = sys.argv[1:] == ["--check"]
    if sys.argv[1:] and not check:
        sys.exit("usage: make-assets.py [--check]")
    stale = []
    for name, data in assets():
        path = folder / name
        if check:
            if not path.exists() or path.read_bytes() != data:
                stale.append(name)
        else:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data)
    if stale:
        sys.exit(f"assets out of date, run tools/make-assets.py: {', '.join(stale)}")


if __name__ == "__main__":
    main()
