"""Everything that shows a signal level: the strip's icon, the taskbar's icon and the scanner's images."""

from canvas import BLUE, GREEN, GREY, ORANGE, OUTLINE, RED, SKY, SLATE, WHITE, YELLOW, Picture

LIME = "#62e62e"
# By number of bars that stand for the level. Every colour stays itself in the 16 of a default image list.
LIT = [None, ORANGE, YELLOW, LIME, GREEN]

ANTENNA = ["C.C.C", ".CCC.", "..C..", "..C..", "..C.."]
CROSS = ["RR.RR", ".RRR.", "..R..", ".RRR.", "RR.RR"]
LOCK = [
    "...KKKK...", "..KLLLLK..", ".KLKKKKLK.", ".KLK..KLK.", ".KLK..KLK.", "KKKKKKKKKK", "KYYYYYYYYK", "KYYYKKYYYK",
    "KYYYKKYYYK", "KYYYKKYYYK", "KYYYYYYYYK", "KKKKKKKKKK",
]
SENT = ["..RR..", ".RRRR.", "RRRRRR", "..RR..", "..RR..", "..RR.."]
RECEIVED = ["..BB..", "..BB..", "..BB..", "BBBBBB", ".BBBB.", "..BB.."]


def staircase(picture, x, base, tops, width, level):
    """Four bars that share a one-pixel contour; base is the row below them, width that of one bar's inside."""
    for i, top in enumerate(tops):
        left = x + i * (width + 1)
        picture.box(left, top, width + 2, base - top, OUTLINE)
        picture.box(left + 1, top + 1, width, base - top - 2, LIT[level] if i < level else GREY)


def strip_signal(level, left=2, width=16):
    """Small bars with an antenna above them, or a red cross where there is no signal."""
    picture = Picture(width, 16)
    staircase(picture, left, 16, (11, 8, 4, 0), 2, level)
    picture.pixels(ANTENNA if level else CROSS, left - 1, 1, "CR")
    return picture


def large_strip_signal(level):
    picture = Picture(32, 32)
    staircase(picture, 2, 31, (22, 15, 8, 1), 6, level)
    sign, colour, width = ("M2.5 3L7 9L11.5 3M7 3V15", SKY, 2.4) if level else ("M3 3L11 11M11 3L3 11", RED, 3)
    for line, stroke in ((width + 2, WHITE), (width, colour)):
        picture.path(sign, stroke=stroke, width=line, extra='stroke-linecap="round"')
    return picture


def traffic(level, sending, receiving):
    """Bars with, above them, an arrow up at the left edge for sent data and an arrow down beside it for received. An
    arrow at rest is grey but there: each icon is painted over the one before it and must hide all of that."""
    picture = Picture(16, 16)
    staircase(picture, 3, 16, (12, 10, 7, 1), 2, level)
    for rows, x, active in ((SENT, 0, sending), (RECEIVED, 6, receiving)):
        if not active:
            rows = [row.replace("R", "D").replace("B", "D") for row in rows]
        picture.pixels(rows, x, 0, "RBD", WHITE if active else GREY)
    return picture


def large_traffic(level, sending, receiving):
    picture = Picture(32, 32)
    staircase(picture, 3, 32, (25, 19, 13, 3), 6, level)
    arrows = (("M6 1L11 6.5H8V11H4V6.5H1Z", RED, sending), ("M17 11L22 5.5H19V1H15V5.5H12Z", BLUE, receiving))
    for d, colour, active in arrows:
        halo = WHITE if active else GREY
        picture.path(d, halo, halo, 2, 'stroke-linejoin="round"')
        picture.path(d, colour if active else SLATE)
    return picture


def scanner_row(level, encrypted):
    picture = strip_signal(level, width=32)
    if encrypted:
        picture.pixels(LOCK, 19, 2)
    return picture


def numbered(first, draw, *states, skip=()):
    """One picture per level, lowest first, under rising numbers that leave out those in skip."""
    numbers = [number for number in range(first, first + 6) if number not in skip][:5]
    return {number: draw(level, *states) for level, number in enumerate(numbers)}


ICONS = {
    **numbered(159, strip_signal), **numbered(196, large_strip_signal),
    **numbered(212, large_traffic, True, True, skip=(215,)), **numbered(228, large_traffic, True, False),
    **numbered(223, large_traffic, False, True), **numbered(218, large_traffic, False, False),
    **numbered(233, traffic, True, True), **numbered(248, traffic, True, False),
    **numbered(243, traffic, False, True), **numbered(238, traffic, False, False),
    **{146 + 2 * level + encrypted: scanner_row(level, encrypted) for level in range(5) for encrypted in (0, 1)},
}
