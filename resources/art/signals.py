"""Everything that shows a signal level: the strip's icon, the taskbar's icon and the scanner's images."""

from canvas import BLUE, GREEN, GREY, ORANGE, OUTLINE, RED, SKY, WHITE, YELLOW, Picture

LIME = "#93d12f"
LIT = [None, ORANGE, YELLOW, LIME, GREEN]  # by number of bars that stand for the level

ANTENNA = ["C.C.C", ".CCC.", "..C..", "..C..", "..C.."]
CROSS = ["RR.RR", ".RRR.", "..R..", ".RRR.", "RR.RR"]
LOCK = [
    "...KKKK...", "..KLLLLK..", ".KLKKKKLK.", ".KLK..KLK.", ".KLK..KLK.", "KKKKKKKKKK", "KYYYYYYYYK", "KYYYKKYYYK",
    "KYYYKKYYYK", "KYYYKKYYYK", "KYYYYYYYYK", "KKKKKKKKKK",
]
SENT = ["..R..", ".RRR.", "RRRRR", ".RRR.", ".RRR."]
RECEIVED = [".BBB.", ".BBB.", "BBBBB", ".BBB.", "..B.."]


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
    picture.pixels(ANTENNA if level else CROSS, left - 1, 1, halo=None if level else WHITE)
    return picture


def large_strip_signal(level):
    picture = Picture(32, 32)
    staircase(picture, 2, 31, (22, 15, 8, 1), 6, level)
    if level:
        picture.path("M2 3L7 9L12 3M7 2V16", stroke=SKY, width=2.4, extra='stroke-linejoin="round"')
        return picture
    for colour, width in ((WHITE, 5.5), (RED, 3)):
        picture.path("M3 3L11 11M11 3L3 11", stroke=colour, width=width, extra='stroke-linecap="round"')
    return picture


def traffic(level, sending, receiving):
    """Bars with, above them, an arrow up at the left edge for sent data and an arrow down beside it for received."""
    picture = Picture(16, 16)
    staircase(picture, 3, 16, (12, 9, 6, 1), 2, level)
    if sending:
        picture.pixels(SENT, 0, 0, halo=WHITE)
    if receiving:
        picture.pixels(RECEIVED, 6, 0, halo=WHITE)
    return picture


def large_traffic(level, sending, receiving):
    picture = Picture(32, 32)
    staircase(picture, 3, 32, (25, 19, 13, 3), 6, level)
    arrows = []
    if sending:
        arrows.append(("M6 1L11 6.5H8V11H4V6.5H1Z", RED))
    if receiving:
        arrows.append(("M17 11L22 5.5H19V1H15V5.5H12Z", BLUE))
    for d, colour in arrows:
        picture.path(d, WHITE, WHITE, 2, 'stroke-linejoin="round"')
        picture.path(d, colour)
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
