"""Pictures in windows and on the background."""

from Xlib import X, Xatom


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
