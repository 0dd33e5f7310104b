"""The icon of the Today host: a handheld whose screen shows bars of traffic."""

from canvas import Picture

SMALL = """
...KKKKKKKKKK...
..KDDDDDDDDDDK..
..KDKKKKKKKKDK..
..KDKCCCCCCKDK..
..KDKWWWWWWKDK..
..KDKWWWWRWKDK..
..KDKWRWWRWKDK..
..KDKWRWBRWKDK..
..KDKWBWBBWKDK..
..KDKWBWBBWKDK..
..KDKKKKKKKKDK..
..KDDDDDDDDDDK..
..KDLLDKKDLLDK..
..KDDDDKKDDDDK..
..KDDDDDDDDDDK..
...KKKKKKKKKK...
"""


def small():
    picture = Picture(16, 16)
    picture.pixels(SMALL.split())
    return picture


def large(size, edge):
    """The same device in units of 1/32 of the side; edge is the contour's width in units."""
    picture = Picture(size, size)
    picture.parts.append(f'<g transform="scale({size / 32:g})">')
    picture.shape("rect", 'x="5" y="1" width="22" height="30" rx="3.5"', "#4f5b68", "#1f2a36", edge)
    picture.shape("rect", 'x="6" y="2" width="20" height="28" rx="2.5"', "none", "#7a8794", edge / 2)
    picture.shape("rect", 'x="8" y="5" width="16" height="17"', "#ffffff", "#1f2a36", edge)
    picture.box(8.5, 5.5, 15, 3.5, "#2f8fe0")
    for x, top, blue in ((10, 15, 18), (13, 11, 16), (16, 14, 17), (19, 10, 13)):
        picture.box(x, top, 2, blue - top, "#ff0000")
        picture.box(x, blue, 2, 21 - blue, "#0000ff")
    picture.shape("circle", 'cx="16" cy="26" r="2.2"', "#d5dce4", "#1f2a36", edge)
    for x in (8, 20):
        picture.shape("rect", f'x="{x}" y="25" width="4" height="2" rx="1"', "#d5dce4", "#1f2a36", edge / 2)
    picture.parts.append("</g>")
    return picture


ICONS = {16: small(), 32: large(32, 2), 48: large(48, 4 / 3), 256: large(256, 0.75)}
