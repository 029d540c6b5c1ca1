#!/usr/bin/env python3
"""Draws HushpaneDefaultWallpaper.png: hills at dusk, in layers of mist. Run it without arguments; needs nothing else."""

import math
import pathlib
import struct
import zlib

WIDTH, HEIGHT = 2560, 1440

SKY = [(0.00, (40, 44, 82)), (0.12, (56, 55, 97)), (0.24, (79, 69, 116)), (0.35, (114, 86, 132)),
       (0.44, (156, 108, 140)), (0.52, (203, 138, 142)), (0.60, (240, 184, 156)), (1.00, (246, 206, 170))]
SUN = (0.64, 0.475, 0.040)  # x and y as parts of the width and height, radius as part of the width
SUN_COLOR, HALO_COLOR = (255, 232, 200), (255, 196, 150)

# From far to near: height of the crest as part of the picture, swing, length of the waves, shift, colour of the crest,
# colour of the mist at the foot, depth of the mist as part of the height.
HILLS = [
    (0.575, 0.018, 0.34, 0.4, (196, 142, 156), (236, 186, 166), 0.10),
    (0.615, 0.028, 0.46, 2.1, (162, 118, 148), (216, 164, 162), 0.13),
    (0.675, 0.034, 0.58, 4.4, (124, 96, 138), (184, 136, 154), 0.15),
    (0.745, 0.040, 0.70, 1.2, (90, 76, 122), (142, 108, 142), 0.17),
    (0.825, 0.046, 0.85, 3.3, (60, 56, 100), (98, 82, 122), 0.18),
    (0.915, 0.042, 1.05, 5.6, (36, 38, 74), (52, 50, 90), 0.16),
]


def mix(first, second, part):
    return tuple(a + (b - a) * part for a, b in zip(first, second))


def smooth(part):
    part = min(max(part, 0.0), 1.0)
    return part * part * (3 - 2 * part)


def sky(part):
    for (low, first), (high, second) in zip(SKY, SKY[1:]):
        if part <= high:
            return mix(first, second, (part - low) / (high - low))
    return SKY[-1][1]


def crest(hill, x):
    """The height of a hill's crest in pixels from the top."""
    height, swing, length, shift = hill[:4]
    turn = 2 * math.pi * x / (length * WIDTH)
    wave = 0.60 * math.sin(turn + shift) + 0.28 * math.sin(2.3 * turn + 1.7 * shift) + 0.12 * math.sin(4.9 * turn + shift)
    return (height - swing * wave) * HEIGHT


def with_sun(color, x, y):
    across, down, radius = SUN[0] * WIDTH, SUN[1] * HEIGHT, SUN[2] * WIDTH
    distance = math.hypot(x - across, y - down)
    halo = math.exp(-distance / (4.2 * radius)) * 0.66
    color = mix(color, HALO_COLOR, halo)
    disc = min(max(radius - distance + 0.5, 0.0), 1.0)
    return mix(color, SUN_COLOR, 0.92 * disc) if disc > 0 else color


def hill_color(hill, depth, warmth):
    color = mix(hill[4], hill[5], smooth(depth / (hill[6] * HEIGHT)))
    return mix(color, HALO_COLOR, warmth)


def draw_row(y, crests, warmths):
    row = bytearray()
    behind = sky(y / HEIGHT)
    last = len(HILLS) - 1
    for x in range(WIDTH):
        front = last
        while front >= 0 and y + 1 <= crests[front][x]:
            front -= 1
        if front < 0:
            color = with_sun(behind, x, y)
        else:
            depth = y + 1 - crests[front][x]
            color = hill_color(HILLS[front], depth, warmths[x] * (1 - front / last) * 0.5)
            if depth < 1:  # the crest runs through this pixel
                below = front - 1
                while below >= 0 and y + 1 <= crests[below][x]:
                    below -= 1
                if below < 0:
                    under = with_sun(behind, x, y)
                else:
                    under = hill_color(HILLS[below], y + 1 - crests[below][x], warmths[x] * (1 - below / last) * 0.5)
                color = mix(under, color, depth)
        row += bytes(int(channel + 0.5) for channel in color)
    return row


def filtered(row, above):
    """A PNG row that tells the difference to the row above."""
    return b"\x02" + bytes((a - b) & 255 for a, b in zip(row, above))


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def main():
    crests = [[crest(hill, x) for x in range(WIDTH)] for hill in HILLS]
    warmths = [math.exp(-((x / WIDTH - SUN[0]) / 0.22) ** 2) for x in range(WIDTH)]
    packed = zlib.compressobj(9)
    data = b""
    above = bytes(3 * WIDTH)
    for y in range(HEIGHT):
        row = draw_row(y, crests, warmths)
        data += packed.compress(filtered(row, above))
        above = row
    data += packed.flush()
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    file = pathlib.Path(__file__).with_name("HushpaneDefaultWallpaper.png")
    file.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", data) + chunk(b"IEND", b""))


if __name__ == "__main__":
    main()
