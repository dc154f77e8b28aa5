#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws object.ico, the picture of the groupware's own objects: an address book with a person on it.

    src/resources/draw_object_icon.py [FILE]

Writes FILE (object.ico beside this script unless given), the same bytes every time.
"""
import pathlib
import struct
import sys

SIZES = (16, 20, 24, 32, 40, 48, 64)
GRID = 16.0  # The picture is described on a grid of this many steps each way.
SAMPLES = 8  # Each way, for every pixel.

COVER = (46, 104, 158)
SPINE = (31, 74, 117)
RING = (150, 158, 166)
PAPER = (255, 255, 255)


def rectangle(left, top, right, bottom, radius):
    """Whether a point lies in a rectangle with round corners."""

    def holds(x, y):
        dx = max(left + radius - x, 0.0, x - (right - radius))
        dy = max(top + radius - y, 0.0, y - (bottom - radius))
        return dx * dx + dy * dy <= radius * radius

    return holds


def ellipse(x0, y0, rx, ry, lowest=GRID):
    """Whether a point lies in an ellipse, as far as it stands above a line."""

    def holds(x, y):
        return y <= lowest and ((x - x0) / rx) ** 2 + ((y - y0) / ry) ** 2 <= 1.0

    return holds


# From the ground up.
SHAPES = (
    (rectangle(3.0, 0.8, 14.6, 15.2, 1.4), COVER),
    (rectangle(3.0, 0.8, 5.2, 15.2, 1.0), SPINE),
    (rectangle(1.3, 2.9, 4.3, 4.1, 0.6), RING),
    (rectangle(1.3, 7.4, 4.3, 8.6, 0.6), RING),
    (rectangle(1.3, 11.9, 4.3, 13.1, 0.6), RING),
    (ellipse(9.9, 5.6, 1.95, 2.05), PAPER),
    (ellipse(9.9, 12.2, 3.5, 3.9, lowest=11.9), PAPER),
)


def colour_at(x, y):
    """The uppermost shape's colour; nothing outside every shape."""
    for holds, colour in reversed(SHAPES):
        if holds(x, y):
            return colour
    return None


def pixel(column, row, size):
    """Blue, green, red and opacity of one pixel."""
    found = []
    for j in range(SAMPLES):
        for i in range(SAMPLES):
            x = (column + (i + 0.5) / SAMPLES) * GRID / size
            y = (row + (j + 0.5) / SAMPLES) * GRID / size
            colour = colour_at(x, y)
            if colour is not None:
                found.append(colour)
    if not found:
        return b"\0\0\0\0"
    red, green, blue = (round(sum(c[i] for c in found) / len(found)) for i in range(3))
    return bytes((blue, green, red, round(255 * len(found) / SAMPLES**2)))


def image(size):
    """One picture: header, colours from the lowest row up, and a mask that leaves all to the opacity."""
    rows = [b"".join(pixel(column, row, size) for column in range(size)) for row in range(size)]
    colours = b"".join(reversed(rows))
    mask = bytes((size + 31) // 32 * 4 * size)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(colours), 0, 0, 0, 0)
    return header + colours + mask


def icon():
    images = [image(size) for size in SIZES]
    entries = b""
    offset = 6 + 16 * len(images)
    for size, data in zip(SIZES, images):
        entries += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return struct.pack("<HHH", 0, 1, len(images)) + entries + b"".join(images)


if __name__ == "__main__":
    target = sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).with_name("object.ico")
    pathlib.Path(target).write_bytes(icon())
