"""The 16-pixel icons of the strip and of the detector, set pixel by pixel."""

from canvas import DEEP_GREEN, GREEN, OUTLINE, PALE_GREEN, WHITE, Picture

USAGE = """
.KKKKKKKKKKKKKK.
KWWWWWWWWWWWWWWK
KWWWWWWWWWWWRRWK
KWWWWWRRWWWWRRWK
KWWWWWRRWWWWRRWK
KWWWWWRRWWWWBBWK
KWWWWWRRWRRWBBWK
KWWRRWBBWRRWBBWK
KWWRRWBBWBBWBBWK
KWWBBWBBWBBWBBWK
KWWBBWBBWBBWBBWK
KWWBBWBBWBBWBBWK
KWWBBWBBWBBWBBWK
KWDDDDDDDDDDDDWK
KWWWWWWWWWWWWWWK
.KKKKKKKKKKKKKK.
"""

LEASE = """
.KKKKKKKKKKK....
.KWWWWWWWWWK....
.KWCCWCCCCWK....
.KWCCWCCWCCK....
.KWCCWCCWCCK....
.KWCCWCCCCWK....
.KWCCWCCWKKKK...
.KWWWWWWKYYYYK..
.KWWWWWKYYKYYYK.
.KWLLLKYYYKYYYYK
.KWWWWKYYYKYYYYK
.KWLLLKYYYKKKYYK
.KWWWWKYYYYYYYYK
.KWWWWWKYYYYYYK.
.KKKKKKKKYYYYK..
.........KKKK...
"""

PING = """
..........KKKKKK
.....R....KLLLLK
.....RR...KDDDLK
.RRRRRRR..KLLLLK
.RRRRRRR..KDDDLK
.....RR...KLLLLK
.....R....KLLLLK
..........KLLLLK
..........KLLLLK
...B......KLLLLK
..BB......KLLLLK
.BBBBBBB..KLLLLK
.BBBBBBB..KLEELK
..BB......KLEELK
...B......KLLLLK
..........KKKKKK
"""

ADAPTER = """
................
KKKK............
KLLKKKKKKKKKKKKK
.KLKEEEEEEEEEEEK
.KLKEKKKKKEEKKEK
.KLKEKDDDKEEKKEK
.KLKEKDDDKEEEEEK
.KLKEKDDDKElllEK
.KLKEKKKKKEEEEEK
.KLKEEEEEEEEEEEK
.KLKKKKKKKKKKKKK
.KLK.KYKYKYKYK..
.KLK.KYKYKYKYK..
.KLK.KKKKKKKKK..
.KKK............
................
"""

SCANNER = """
....KKKKK.......
..KKWWWWWKK.....
.KWWCCCCCWWK....
.KWCCWWWCCWK....
KWCCWWWWWCCWK...
KWWWWCCCWWWWK...
KWWWCCWCCWWWK...
KWWWWWWWWWWWK...
KWWWWWWWWWWWK...
.KWWWCCCWWWK....
.KWWWCCCWWWK....
..KKWWWWWKKOK...
....KKKKKKOOOK..
...........KOOOK
............KOOK
.............KK.
"""

WIRELESS_CARD = """
....CCCCCCCC....
..CCCCCCCCCCCC..
.CCC........CCC.
.....CCCCCC.....
....CC....CC....
.......CC.......
.KKKKKKKKKKKKKK.
.KDDDDDDDDDDEDK.
.KKKKKKKKKKKKKK.
..KLLLLLLLLLLK..
..KLWWWWWWWWLK..
..KLWCCCCCWWLK..
..KLWWWWWWWWLK..
..KLLLLLLLLLLK..
..KYKYKYKYKYKK..
..KKKKKKKKKKKK..
"""

CONNECTIONS = """
KKKKKKKKKK......
KCCCCCCCCK......
KCWWCCCCCK......
KCWCCCCCCK......
KCCCCKKKKKKKKKKK
KCCCCKCCCCCCCCCK
KKKKKKCWWCCCCCCK
..KLKKCWCCCCCCCK
KKKLKKCCCCCCCCCK
KLLLLKCCCCCCCCCK
KKKKKKKKKKKKKKKK
.KOK....KLLLK...
.KOKKKKKKLLLKKK.
.KOOOOOKLLLLLLK.
.KKKKKKKKKKKKKK.
................
"""

WIRELESS_SETTINGS = """
....CCCCCCC.....
..CCCCCCCCCCC...
.CCC.......CCC..
.C...CCCCC...C..
...CCCCCCCCC....
...CC.....CC....
......KKK.......
....KKKLKKK.....
....KLLLLLK.....
...KKLKKKLKK....
...KLLKWKLLK....
...KKLKKKLKK....
....KLLLLLK.....
....KKKLKKK.....
......KKK.......
................
"""

INTRUDER = """
....KKKKKKKK....
...KccccccccK...
..KccccccccccK..
..KccccccccccK..
.KKKKKKKKKKKKKK.
.KLLLLLLLLLLLLK.
.KKKKKKKKKKKKKK.
..KKWWKKKKWWKK..
..KKWWKKKKWWKK..
..KKKKKKKKKKKK..
..KPPPPPPPPPPK..
..KPPPPPPPPPPK..
..KPPPKKKKPPPK..
...KPPPPPPPPK...
....KKPPPPKK....
......KKKK......
"""

SAFE = """
.......KK.......
.....KKEEKK.....
.KKKKEEEEEEKKKK.
.KEEEEEEEEEEEEK.
.KEEEEEEEEEEWEK.
.KEEEEEEEEEWWWK.
.KEEWEEEEEWWWEK.
.KEWWWEEEWWWEEK.
.KEEWWWEWWWEEEK.
..KEEWWWWWEEEK..
..KEEEWWWEEEEK..
...KEEEWEEEEK...
...KEEEEEEEEK...
....KKEEEEKK....
......KKKK......
................
"""


def from_rows(rows, haloed=""):
    picture = Picture(16, 16)
    picture.pixels(rows.split(), haloed=haloed)
    return picture


def detector():
    """A radar dish: rings, a sweep to the upper right and one red stranger."""
    cells = {}
    for y in range(16):
        for x in range(16):
            dx, dy = x - 7.5, 7.5 - y
            distance = (dx * dx + dy * dy) ** 0.5
            if distance > 8.0:
                continue
            ring = 3.6 < distance < 4.6
            sweep = dx > 0 and 0.35 * dx < dy < 2.2 * dx
            inside = (GREEN if ring else DEEP_GREEN) if not sweep else PALE_GREEN if ring else GREEN
            cells[x, y] = OUTLINE if distance > 7.0 else inside
    picture = Picture(16, 16)
    picture.runs(cells)
    picture.box(7, 7, 2, 2, WHITE)
    picture.pixels([".RR.", "RRRR", "RRRR", ".RR."], 3, 8)
    return picture


ICONS = {
    103: from_rows(USAGE), 101: from_rows(LEASE), 104: from_rows(PING, "RB"), 102: from_rows(ADAPTER), 125: from_rows(SCANNER),
    126: from_rows(WIRELESS_CARD, "C"), 188: detector(), 106: from_rows(CONNECTIONS), 105: from_rows(WIRELESS_SETTINGS, "C"),
    186: from_rows(INTRUDER), 187: from_rows(SAFE),
}
