#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws the console's icon, the picture of src/resources/draw_object_icon.py, in the sizes of a desktop.

    packages/icons/draw_icons.py                  writes SIZE.png beside this script, for every size
    packages/icons/draw_icons.py --check SIZE...  says whether those files are what would be written
"""
import pathlib
import struct
import sys
import zlib

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "src" / "resources"))
import draw_object_icon  # noqa: E402

SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
# A large picture has fewer pixels on an edge: fewer samples show no steps there.
FINE, COARSE, LARGE = 8, 3, 128


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(size):
    draw_object_icon.SAMPLES = COARSE if size >= LARGE else FINE
    rows = bytearray()
    for row in range(size):
        rows.append(0)
        for column in range(size):
            blue, green, red, opacity = draw_object_icon.pixel(column, row, size)
            rows += bytes((red, green, blue, opacity))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) +
            chunk(b"IEND", b""))


def pixels_of(data):
    """The rows of a picture that this script has written, whatever packed them."""
    length = struct.unpack(">I", data[33:37])[0]
    return data[:33], zlib.decompress(data[41:41 + length])


def is_current(path, size):
    try:
        return pixels_of(path.read_bytes()) == pixels_of(png(size))
    except (OSError, struct.error, zlib.error):
        return False


def main(arguments):
    folder = pathlib.Path(__file__).resolve().parent
    if arguments[:1] == ["--check"]:
        old = [size for size in arguments[1:] if not is_current(folder / f"{size}.png", int(size))]
        for size in old:
            print(f"{size}.png is not what is drawn")
        return 1 if old or len(arguments) == 1 else 0
    for size in SIZES:
        (folder / f"{size}.png").write_bytes(png(size))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
