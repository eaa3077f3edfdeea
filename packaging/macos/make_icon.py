"""make_icon.py SVG ICNS: draws the program's icon in the sizes that macOS shows, with the margin
that its icons have. Needs Chromium and ImageMagick. The result is kept beside this file, since a
Mac has nothing on board that reads SVG."""

import subprocess
import sys
import tempfile
from pathlib import Path

# The entries of an icns file that hold PNG data, by their edge in pixels.
ENTRIES = {b"ic11": 32, b"ic12": 64, b"ic07": 128, b"ic13": 256, b"ic08": 256, b"ic14": 512,
           b"ic09": 512, b"ic10": 1024}
CANVAS, MARGIN = 1024, 100
PAGE = """<body style="margin:{margin}px"><img src="{url}" style="width:100%;display:block">"""


def draw(svg, folder):
    """The icon in its largest size."""
    page, png = folder / "icon.html", folder / "icon.png"
    page.write_text(PAGE.format(margin=MARGIN, url=Path(svg).resolve().as_uri()))
    subprocess.run(
        ["chromium", "--headless", "--no-sandbox", "--hide-scrollbars", f"--screenshot={png}",
         "--default-background-color=00000000", f"--window-size={CANVAS},{CANVAS}", page.as_uri()],
        check=True, stderr=subprocess.DEVNULL)
    return png


def resized(png, edge):
    command = ["convert", png, "-filter", "Lanczos", "-resize", f"{edge}x{edge}", "-strip",
               "-define", "png:exclude-chunks=date,time", "png32:-"]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def chunk(name, data):
    return name + (len(data) + 8).to_bytes(4, "big") + data


def main():
    svg, icns = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        png = draw(svg, Path(folder))
        pictures = {edge: resized(png, edge) for edge in set(ENTRIES.values())}
    entries = b"".join(chunk(name, pictures[edge]) for name, edge in ENTRIES.items())
    with open(icns, "wb") as file:
        file.write(chunk(b"icns", entries))


if __name__ == "__main__":
    main()
