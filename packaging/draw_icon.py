#!/usr/bin/env python3
"""Draws the icon of the compiler and of the programs that it builds, a window with a ring in it.

    draw_icon.py OUTPUT.ico

The shapes are described on a field of 256 by 256 and sampled 4 by 4 times for each pixel, with plain
arithmetic, so every run gives the same bytes. The small sizes are stored as bitmaps, which every
part of Windows reads; 256 pixels are stored as PNG, a tenth of the size.
"""

import struct
import sys
import zlib

FIELD = 256
SAMPLES = 4
BITMAP_SIZES = (16, 24, 32, 48)
PNG_SIZE = 256

FRAME = (31, 58, 95)
TITLE_BAR = (44, 95, 138)
PAPER = (246, 248, 250)
RING = (224, 122, 48)
BUTTON = (246, 248, 250)


def in_rounded_box(x, y, left, top, right, bottom, radius):
    if not (left <= x <= right and top <= y <= bottom):
        return False
    nearest_x = min(max(x, left + radius), right - radius)
    nearest_y = min(max(y, top + radius), bottom - radius)
    return (x - nearest_x) ** 2 + (y - nearest_y) ** 2 <= radius * radius


def in_circle(x, y, centre_x, centre_y, radius):
    return (x - centre_x) ** 2 + (y - centre_y) ** 2 <= radius * radius


def colour_at(x, y):
    """Red, green and blue at a point of the field; None where nothing is drawn."""
    if not in_rounded_box(x, y, 8, 16, 248, 240, 28):
        return None
    if not in_rounded_box(x, y, 22, 30, 234, 226, 16):
        return FRAME
    if y < 76:
        return BUTTON if in_circle(x, y, 208, 53, 11) else TITLE_BAR
    if in_circle(x, y, 128, 151, 58) and not in_circle(x, y, 128, 151, 30):
        return RING
    return PAPER


def draw(size):
    """Rows from the top of (red, green, blue, alpha)."""
    step = FIELD / (size * SAMPLES)
    rows = []
    for row in range(size):
        pixels = []
        for column in range(size):
            found = []
            for sample in range(SAMPLES * SAMPLES):
                x = (column * SAMPLES + sample % SAMPLES + 0.5) * step
                y = (row * SAMPLES + sample // SAMPLES + 0.5) * step
                colour = colour_at(x, y)
                if colour:
                    found.append(colour)
            pixels.append(mean(found))
        rows.append(pixels)
    return rows


def mean(colours):
    if not colours:
        return (0, 0, 0, 0)
    parts = [sum(colour[part] for colour in colours) // len(colours) for part in range(3)]
    return (*parts, 255 * len(colours) // (SAMPLES * SAMPLES))


def bitmap(size):
    """A bitmap of an icon: header, pixels from the bottom row, a mask of one bit for each pixel."""
    pixels, mask = b"", b""
    for row in reversed(draw(size)):
        pixels += b"".join(bytes((blue, green, red, alpha)) for red, green, blue, alpha in row)
        bits = "".join("0" if alpha else "1" for *_, alpha in row)
        bits = bits.ljust((size + 31) // 32 * 32, "0")
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(pixels), 0, 0, 0, 0)
    return header + pixels + mask


def png(size):
    def chunk(kind, content):
        checked = kind + content
        return struct.pack(">I", len(content)) + checked + struct.pack(">I", zlib.crc32(checked))

    lines = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in draw(size))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(lines, 9)) + chunk(b"IEND", b""))


def icon():
    images = [(size, bitmap(size)) for size in BITMAP_SIZES] + [(PNG_SIZE, png(PNG_SIZE))]
    place = 6 + 16 * len(images)
    entries, contents = b"", b""
    for size, image in images:
        side = size % 256  # 0 stands for 256
        entries += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(image), place)
        contents += image
        place += len(image)
    return struct.pack("<HHH", 0, 1, len(images)) + entries + contents


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], "wb") as output:
        output.write(icon())
