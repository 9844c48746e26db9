#!/usr/bin/env python3
"""Draws Fernhop.icns anew, after a change of the icon's drawing. It is kept as a file, as not every machine that builds
Fernhop can draw. Needs rsvg-convert (librsvg2-bin).

    draw-icon.py DRAWING.svg Fernhop.icns
"""

import struct
import subprocess
import sys
from pathlib import Path

# The container holds PNG files, each preceded by a code for its size in points and its scale.
PIXELS = {b"ic07": 128, b"ic08": 256, b"ic09": 512,
          b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512, b"ic10": 1024}
# The system's icons leave a margin: they use 824 of 1024 pixels.
SHARE = 824 / 1024


def drawn(drawing, pixels):
    side, margin = f"{pixels * SHARE:.2f}px", f"{pixels * (1 - SHARE) / 2:.2f}px"
    whole = f"{pixels}px"
    command = ["rsvg-convert", "--format", "png", "--width", side, "--height", side, "--left", margin, "--top", margin,
               "--page-width", whole, "--page-height", whole, str(drawing)]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def chunk(code, content):
    return code + struct.pack(">I", len(content) + 8) + content


def main(arguments):
    if len(arguments) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    drawing, target = map(Path, arguments[1:])
    images = {pixels: drawn(drawing, pixels) for pixels in set(PIXELS.values())}
    target.write_bytes(chunk(b"icns", b"".join(chunk(code, images[pixels]) for code, pixels in PIXELS.items())))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
