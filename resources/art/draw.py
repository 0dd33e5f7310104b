#!/usr/bin/env python3
"""Writes the vector sources svg/NNN.svg beside this script, NNN being the resource number, and ../artwork.rc."""

from pathlib import Path

import backgrounds
import large_icons
import program_icon
import signals
import small_icons

HERE = Path(__file__).resolve().parent


def write_fragment(icons, bitmaps):
    lines = ["// Icons and bitmaps by resource number; written by art/draw.py, paths relative to this folder.", ""]
    lines += [f'{number} ICON "icons/{number}.ico"' for number in sorted(icons)]
    lines += [""] + [f'{number} BITMAP "bitmaps/{number}.bmp"' for number in sorted(bitmaps)]
    (HERE.parent / "artwork.rc").write_text("\n".join(lines) + "\n")


def main():
    icons = {**small_icons.ICONS, **large_icons.ICONS, **signals.ICONS}
    folder = HERE / "svg"
    for kind, pictures in (("icons", icons), ("bitmaps", backgrounds.BITMAPS), ("program", program_icon.ICONS)):
        (folder / kind).mkdir(parents=True, exist_ok=True)
        for name, picture in pictures.items():
            (folder / kind / f"{name}.svg").write_text(picture.svg())
    write_fragment(icons, backgrounds.BITMAPS)


main()
