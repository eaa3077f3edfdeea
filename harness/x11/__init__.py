"""An X session: the server, what runs on it, and whoever drives and watches it through X."""

from Xlib import ext

# The library loads every extension that it knows of, and fails on a server that lacks another one
# (python-xlib numbers their events wrongly then). These are all that is used here.
_USED = ("RECORD", "X-Resource", "XFIXES")
ext.__extensions__[:] = [extension for extension in ext.__extensions__ if extension[0] in _USED]
