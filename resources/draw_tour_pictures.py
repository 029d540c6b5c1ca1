#!/usr/bin/env python3
"""Draws the pictures that the tour uses: tour-meadow.png, a desktop picture with a green hue, and tour-dunes.png, a
wallpaper that somebody picked. Run it without arguments; needs nothing else."""

import math
import pathlib
import struct
import zlib

from draw_wallpaper import chunk, filtered, mix, smooth

WIDTH, HEIGHT = 960, 600

# Sky from top to horizon, then waves of land from far to near: height, swing and length of the crest as parts of the
# picture, colour of the crest, colour further down.
MEADOW = [((126, 190, 176), (214, 232, 190)),
          (0.46, 0.020, 0.60, (128, 176, 128), (150, 190, 122)), (0.56, 0.035, 0.85, (96, 158, 92), (120, 172, 84)),
          (0.69, 0.045, 1.10, (66, 134, 66), (92, 150, 58)), (0.84, 0.050, 1.45, (40, 104, 50), (60, 122, 44))]
DUNES = [((84, 120, 156), (244, 206, 160)),
         (0.50, 0.018, 0.70, (226, 176, 126), (206, 148, 100)), (0.60, 0.040, 0.95, (232, 166, 104), (188, 118, 74)),
         (0.73, 0.055, 1.25, (222, 142, 78), (160, 90, 58)), (0.88, 0.060, 1.60, (188, 104, 62), (112, 60, 48))]


def crest(land, x):
    height, swing, length = land[:3]
    turn = 2 * math.pi * x / (length * WIDTH) + 9 * height
    return (height - swing * (0.7 * math.sin(turn) + 0.3 * math.sin(2.1 * turn))) * HEIGHT


def color_at(scene, crests, x, y):
    sky, *lands = scene
    color = mix(*sky, smooth(y / (lands[0][0] * HEIGHT)))
    for land, heights in zip(lands, crests):
        depth = y + 1 - heights[x]
        if depth > 0:
            color = mix(color, mix(*land[3:], smooth(depth / (0.2 * HEIGHT))), min(depth, 1))
    return color


def draw(scene, name):
    crests = [[crest(land, x) for x in range(WIDTH)] for land in scene[1:]]
    data, above = b"", bytes(3 * WIDTH)
    for y in range(HEIGHT):
        row = b"".join(bytes(int(c + 0.5) for c in color_at(scene, crests, x, y)) for x in range(WIDTH))
        data += filtered(row, above)
        above = row
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    pathlib.Path(__file__).with_name(name).write_bytes(
        b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(data, 9)) + chunk(b"IEND", b""))


if __name__ == "__main__":
    draw(MEADOW, "tour-meadow.png")
    draw(DUNES, "tour-dunes.png")
