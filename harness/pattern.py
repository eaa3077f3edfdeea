"""A picture in which no two pixels are equal, and one that does not compress."""

import random

from PIL import Image
from Xlib import X, Xatom


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


def put(drawable, depth, picture, x=0, y=0):
    """Copies an RGB picture into a window or pixmap, in requests that every server takes."""
    context = drawable.create_gc()
    rows = max(1, 200_000 // (4 * picture.width))
    for top in range(0, picture.height, rows):
        strip = picture.crop((0, top, picture.width, min(top + rows, picture.height)))
        drawable.put_image(context, x, y + top, strip.width, strip.height, X.ZPixmap, depth, 0,
                           strip.tobytes("raw", "BGRX"))
        drawable.display.flush()
    context.free()


def paint_root(display, picture):
    """Makes `picture` the background of the root window, for compositors too: they read it from
    the pixmap, which lives as long as the connection."""
    screen = display.screen()
    pixmap = screen.root.create_pixmap(picture.width, picture.height, screen.root_depth)
    put(pixmap, screen.root_depth, picture)
    screen.root.change_attributes(background_pixmap=pixmap.id)
    screen.root.change_property(display.intern_atom("_XROOTPMAP_ID"), Xatom.PIXMAP, 32, [pixmap.id])
    screen.root.clear_area()
    display.sync()
