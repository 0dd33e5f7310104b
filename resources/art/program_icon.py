"""The icon of the Today host: a handheld whose screen shows bars of traffic."""

from canvas import BLUE, GREY, LIGHT, OUTLINE, RED, SKY, SLATE, WHITE, Picture

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


def large(side, edge):
    """The same device laid out in 32nds of the side, on whole pixels; edge is the contour's width in pixels."""
    picture = Picture(side, side)

    def plate(left, top, right, bottom, corner, fill, inset=0):
        x, y, right, bottom = (round(at * side / 32) + sign * inset
                               for at, sign in ((left, 1), (top, 1), (right, -1), (bottom, -1)))
        at = f'x="{x}" y="{y}" width="{right - x}" height="{bottom - y}" rx="{max(0, corner * side / 32 - inset):g}"'
        picture.shape("rect", at, fill)

    def edged(left, top, right, bottom, corner, fill):
        plate(left, top, right, bottom, corner, OUTLINE)
        plate(left, top, right, bottom, corner, fill, edge)

    edged(4, 0, 28, 32, 4, GREY)
    plate(4, 0, 28, 32, 4, SLATE, edge + max(1, edge // 2))
    edged(7, 4, 25, 23, 0, WHITE)
    plate(8, 5, 24, 8, 0, SKY)
    for x, top, received in ((10, 15, 18), (13, 11, 16), (17, 14, 17), (20, 10, 13)):
        plate(x, top, x + 2, received, 0, RED)
        plate(x, received, x + 2, 22, 0, BLUE)
    edged(14, 25, 18, 29, 2, LIGHT)
    for x in (8, 21):
        plate(x, 26, x + 3, 28, 1, LIGHT)
    return picture


ICONS = {16: small(), 32: large(32, 1), 48: large(48, 2), 256: large(256, 8)}
