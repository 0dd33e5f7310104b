"""The opaque bitmaps behind graphs, charts and tables. Each is laid out on the coordinates that its painter uses."""

from canvas import BLUE, GREY, LETTERS, LIGHT, OUTLINE, RED, SLATE, SMALL_FIGURES, WHITE, Picture, text_width

GRID = "#dde3ea"
BAND = "#f3f6fa"
INK = "#3b4754"
EDGE = "#a9b4c0"


def mini_graph(width, height, base, highest):
    """The strip's graph: lines at the quarters of the way from the base line to the highest value."""
    picture = Picture(width, height, WHITE)
    for quarter in range(1, 4):
        picture.box(1, base - round(highest * quarter / 4), width - 2, 1, GRID)
    for x, y, w, h in ((0, 0, width, 1), (0, height - 1, width, 1), (0, 0, 1, height), (width - 1, 0, 1, height)):
        picture.box(x, y, w, h, GREY)
    return picture


def legend(picture, places):
    """Red and blue samples with the words that the tables use."""
    for (x, y), word, colour in zip(places, ("Xmit", "Rcv"), (RED, BLUE)):
        picture.box(x, y + 1, 5, 5, colour)
        picture.text(x + 7, y, word, INK, LETTERS)


def axis_number(picture, middle, number):
    text = str(number)
    picture.text(middle - text_width(text, SMALL_FIGURES) // 2, 127, text, INK, SMALL_FIGURES)


def usage_chart(slots, bar_x, numbered):
    """174 x 134, bars three pixels wide standing on row 121, 100 % at row 21. The axis is two rows thick, so that
    a bar stands on it on both screens: the base line of the high-resolution chart is one unit lower."""
    picture = Picture(174, 134, WHITE)
    legend(picture, ((113, 5), (146, 5)))
    for level in range(1, 6):
        picture.box(0, 121 - 20 * level, 174, 1, GRID)
    for x in (0, 173):
        picture.box(x, 21, 1, 101, GRID)
    picture.box(0, 121, 174, 2, SLATE)
    for slot in slots:
        middle = bar_x(slot) + 1
        picture.box(middle, 123, 1, 3 if slot in numbered else 1, SLATE)
        if slot in numbered:
            axis_number(picture, middle, slot)
    return picture


def hourly_chart():
    return usage_chart(range(24), lambda hour: (hour + 1) * 7, range(0, 24, 3))


def daily_chart():
    return usage_chart(range(1, 32), lambda day: day * 5, [1, *range(5, 32, 5)])


def usage_table(slot_title):
    """200 x 148: a title row, eight rows of 14 from row 16, and the footer for the page number and the arrows. The
    ground of the rows stays white because texts may be drawn with an opaque white ground."""
    picture = Picture(200, 148, WHITE)
    picture.box(0, 0, 200, 16, "#dfe8f3")
    for x, title in ((5, slot_title), (41, "Xmit"), (89, "Rcv"), (137, "Total")):
        picture.text(x, 5, title, INK, LETTERS)
    picture.box(42 + text_width("Xmit", LETTERS) + 2, 6, 5, 5, RED)
    picture.box(90 + text_width("Rcv", LETTERS) + 2, 6, 5, 5, BLUE)
    for row in range(1, 8):
        picture.box(1, 16 + 14 * row, 198, 1, GRID)
    for x in (38, 86, 134):
        picture.box(x, 1, 1, 128, GRID)
    for y in (0, 15, 128, 147):
        picture.box(0, y, 200, 1, EDGE)
    for x in (0, 199):
        picture.box(x, 0, 1, 148, EDGE)
    return picture


def page_arrows():
    """47 x 13: next (down) within columns 0-22, previous (up) within 23-46, as both tap layouts have them."""
    picture = Picture(47, 13, WHITE)
    for left, rows in ((1, range(4)), (27, range(3, -1, -1))):
        picture.box(left + 1, 0, 18, 13, EDGE)
        picture.box(left, 1, 20, 11, EDGE)
        picture.box(left + 1, 1, 18, 11, BAND)
        for y, row in enumerate(rows):
            picture.box(left + 6 + row, 5 + y - (left > 20), 8 - 2 * row, 1, INK)
    return picture


def live_graph():
    """180 x 108 at (30, 10) of the painter's surface: base line on row 104, 100 % on row 4, columns 5, 12 ... 138."""
    picture = Picture(180, 108, WHITE)
    for level in range(1, 6):
        picture.box(0, 104 - 20 * level, 144, 1, GRID)
    for x in (0, 143):
        picture.box(x, 4, 1, 101, GRID)
    picture.box(0, 104, 144, 2, SLATE)
    for x in range(5, 139, 7):
        picture.box(x, 106, 1, 2 if (x - 138) % 35 == 0 else 1, SLATE)
    legend(picture, ((149, 5), (149, 17)))
    return picture


def signal_view():
    """168 x 72: -90 dBm on row 68, two rows per dBm, readings three pixels apart from x = 45."""
    picture = Picture(168, 72, WHITE)
    picture.box(42, 4, 123, 64, BAND)
    for dbm in (-60, -70, -80):
        picture.box(42, (34 - (dbm + 90)) * 2, 123, 1, LIGHT)
    for dbm in (-60, -70, -80, -90):
        row = (34 - (dbm + 90)) * 2
        picture.text(24, min(row - 3, 64), str(dbm), INK, LETTERS)
        picture.box(39, row, 3, 1, SLATE)
    picture.text(4, 5, "dBm", INK, LETTERS)
    picture.box(41, 4, 1, 66, SLATE)
    picture.box(41, 69, 124, 1, SLATE)
    for x, y, w, h in ((0, 0, 168, 1), (0, 71, 168, 1), (0, 0, 1, 72), (167, 0, 1, 72)):
        picture.box(x, y, w, h, EDGE)
    return picture


BITMAPS = {
    113: mini_graph(44, 22, 20, 18), 203: mini_graph(88, 33, 31, 27), 157: hourly_chart(), 156: daily_chart(),
    183: usage_table("Hour"), 182: usage_table("Day"), 184: page_arrows(), 177: live_graph(), 178: signal_view(),
}
