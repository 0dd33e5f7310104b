#!/usr/bin/env python3
"""sheet.py FOLDER: contact-sheet.png from the pictures that render left in FOLDER, every one with its number, on a light
and on a dark ground, at its own size and three times as large."""

import subprocess
import sys
from base64 import b64encode
from pathlib import Path

from canvas import SMALL_FIGURES, Picture
from large_icons import ICONS as LARGE
from signals import ICONS as SIGNALS
from small_icons import ICONS as SMALL

WIDTH = 1180
GROUNDS = (("#ffffff", "#333333"), ("#1d2430", "#cccccc"))


def cells(icons, zoom):
    """Icons arranged in rows: (number, picture, x, y); and the height that they take."""
    x, y, row, placed = 8, 10, 0, []
    for number, picture in icons:
        width = max(picture.width * zoom, 13) + 8
        if x + width > WIDTH // 2:
            x, y, row = 8, y + row + 14, 0
        placed.append((number, picture, x, y))
        x, row = x + width, max(row, picture.height * zoom)
    return placed, y + row + 10


def main(folder):
    icons = sorted({**SMALL, **LARGE, **SIGNALS}.items(), key=lambda item: (item[1].height, item[1].width, item[0]))
    blocks = [(zoom, *cells(icons, zoom)) for zoom in (1, 3)]
    sheet = Picture(WIDTH, sum(height for _, _, height in blocks))
    for side, (ground, ink) in enumerate(GROUNDS):
        left, top = side * WIDTH // 2, 0
        sheet.box(left, 0, WIDTH // 2, sheet.height, ground)
        for zoom, placed, height in blocks:
            for number, picture, x, y in placed:
                data = b64encode((folder / f"{number}.png").read_bytes()).decode()
                size = f'width="{picture.width * zoom}" height="{picture.height * zoom}"'
                sheet.parts.append(f'<image x="{left + x}" y="{top + y}" {size} image-rendering="pixelated" '
                                   f'href="data:image/png;base64,{data}"/>')
                sheet.text(left + x, top + y - 7, str(number), ink, SMALL_FIGURES)
            top += height
    (folder / "sheet.svg").write_text(sheet.svg())
    subprocess.run(["rsvg-convert", folder / "sheet.svg", "-o", folder / "sheet.png"], check=True)
    subprocess.run(["convert", folder / "sheet.png", "-dither", "None", "-colors", "255", "-strip",
                    "-define", "png:exclude-chunks=date,time", "PNG8:contact-sheet.png"], check=True)


main(Path(sys.argv[1]))
