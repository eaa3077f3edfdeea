"""A picture in which no two pixels are equal, and one that does not compress."""

import random

from PIL import Image


def unique_pixels(width, height, salt=0):
    """An RGB picture of at most 4096 by 4096 pixels; every pixel is different from all others."""
    columns_low = bytes(x & 0xFF for x in range(width))
    columns_high = bytes(x >> 8 << 4 for x in range(width))
    data = bytearray()
    for y in range(height):
        row = bytearray(3 * width)
        row[0::3] = bytes(high | y >> 8 for high in columns_high)
        row[1::3] = bytes([(y ^ salt) & 0xFF]) * width
        row[2::3] = columns_low
        data += row
    return Image.frombytes("RGB", (width, height), bytes(data))


def noise(width, height, seed=1):
    """An RGB picture that no encoder makes small."""
    data = random.Random(seed).randbytes(3 * width * height)
    return Image.frombytes("RGB", (width, height), data)
