"""The 32-pixel icons of the strip, drawn on their own grid, and the three buttons of the usage dialog."""

from math import cos, radians, sin

from canvas import (BLUE, DEEP_GREEN, GREEN, GREY, LIGHT, ORANGE, OUTLINE, PALE_GREEN, RED, SKY, SLATE, WHITE,
                    YELLOW, Picture)


def bars(picture, base, columns, width):
    """Chart bars as (x, height, height of the blue part); red is the part that rises above it."""
    for x, height, received in columns:
        picture.box(x, base - height, width, height - received, RED)
        picture.box(x, base - received, width, received, BLUE)


def waves(picture, x, y, radii, width):
    """Radio waves going up from (x, y), a quarter circle for each radius, with a white contour."""
    for line, stroke in ((width + 2, WHITE), (width, SKY)):
        for radius in radii:
            reach = radius * 0.7071
            arc = f"M{x - reach:.2f} {y - reach:.2f}A{radius} {radius} 0 0 1 {x + reach:.2f} {y - reach:.2f}"
            picture.path(arc, stroke=stroke, width=line)


def usage():
    picture = Picture(32, 32)
    picture.frame(0, 0, 32, 32, OUTLINE, WHITE, corner=3)
    bars(picture, 26, [(5, 12, 8), (11, 18, 11), (17, 14, 10), (23, 21, 16)], 4)
    picture.box(4, 26, 24, 2, SLATE)
    return picture


def lease():
    picture = Picture(32, 32)
    picture.frame(2, 0, 22, 30, OUTLINE, WHITE, corner=1)
    picture.box(6, 4, 3, 10, SKY)
    picture.path("M11 4H16A3.5 3.5 0 0 1 16 11H14V14H11ZM14 6.5V8.5H15.5A1 1 0 0 0 15.5 6.5Z", SKY)
    for y in (17, 21, 25):
        picture.box(6, y, 8, 2, LIGHT)
    picture.disc(22, 22, 9, YELLOW, OUTLINE)
    picture.path("M22 16V22H26", stroke=OUTLINE)
    return picture


def ping():
    picture = Picture(32, 32)
    for d, fill in (("M2 6H10V2L18 8L10 14V10H2Z", RED), ("M18 22H10V18L2 24L10 30V26H18Z", BLUE)):
        picture.path(d, WHITE, WHITE, 3, 'stroke-linejoin="round"')
        picture.path(d, fill)
    picture.frame(20, 1, 12, 30, OUTLINE, LIGHT, corner=1)
    picture.box(23, 5, 6, 2, SLATE)
    picture.box(23, 9, 6, 2, SLATE)
    picture.box(23, 24, 3, 3, GREEN)
    return picture


def adapter():
    picture = Picture(32, 32)
    picture.frame(5, 4, 27, 18, OUTLINE, GREEN)
    picture.frame(9, 8, 11, 10, OUTLINE, SLATE)
    picture.frame(23, 8, 6, 5, OUTLINE, SLATE)
    picture.box(23, 15, 6, 1, PALE_GREEN)
    picture.box(23, 17, 6, 1, PALE_GREEN)
    picture.frame(10, 20, 18, 8, OUTLINE, YELLOW)
    for x in (14, 18, 22):
        picture.box(x, 22, 2, 6, OUTLINE)
    picture.path("M1 3H7V29H3V7H1Z", LIGHT, OUTLINE)
    return picture


def scanner():
    picture = Picture(32, 32)
    picture.path("M20 20L29 29", stroke=OUTLINE, width=7, extra='stroke-linecap="round"')
    picture.path("M21 21L29 29", stroke=ORANGE, width=3.4, extra='stroke-linecap="round"')
    picture.disc(12.5, 12.5, 11.5, WHITE, OUTLINE)
    waves(picture, 12.5, 18, (6, 11), 2.6)
    picture.disc(12.5, 17.5, 2, SKY)
    return picture


def wireless_card():
    picture = Picture(32, 32)
    waves(picture, 16, 14, (6, 11.5), 3)
    picture.frame(4, 18, 24, 14, OUTLINE, LIGHT)
    picture.box(8, 21, 16, 5, WHITE)
    picture.box(8, 22, 10, 2, SKY)
    for x in range(7, 26, 3):
        picture.box(x, 28, 2, 2, YELLOW)
    picture.frame(1, 12, 30, 8, OUTLINE, SLATE, corner=2)
    picture.box(25, 15, 2, 2, GREEN)
    return picture


def detector():
    picture = Picture(32, 32)
    picture.disc(16, 16, 15, DEEP_GREEN, OUTLINE)
    picture.path("M16 16L21 3A14 14 0 0 1 29 11Z", GREEN)
    picture.disc(16, 16, 9.5, "none", GREEN, 1.5)
    picture.disc(16, 16, 4.5, "none", GREEN, 1.5)
    picture.path("M16 16L21 3A14 14 0 0 1 29 11Z", PALE_GREEN, extra='opacity="0.45"')
    picture.box(15, 15, 2, 2, WHITE)
    picture.disc(9.5, 20.5, 3.5, RED, WHITE, 1)
    return picture


def monitor(picture, x, y, width, height):
    picture.frame(x, y, width, height, OUTLINE, SKY, corner=1)
    picture.path(f"M{x + 4.5} {y + 8}V{y + 4.5}H{x + 9}", stroke=WHITE, width=1.5)


def connections():
    picture = Picture(32, 32)
    picture.frame(3, 14, 14, 6, OUTLINE, LIGHT)
    picture.path("M5 19V26H16", stroke=OUTLINE, width=5)
    picture.path("M5 19V26H16", stroke=ORANGE, width=2)
    monitor(picture, 0, 1, 20, 14)
    picture.frame(14, 24, 16, 6, OUTLINE, LIGHT, corner=1)
    picture.frame(18, 20, 8, 7, OUTLINE, LIGHT)
    picture.box(20, 23, 4, 5, LIGHT)
    monitor(picture, 11, 8, 21, 15)
    return picture


def gear(picture, x, y, radius, teeth=8):
    """A cogwheel of the given outer radius with a round hole."""
    points = []
    for tooth in range(teeth):
        middle = 360 / teeth * tooth
        for offset, reach in ((-15, 0.74), (-10, 1.0), (10, 1.0), (15, 0.74)):
            angle = radians(middle + offset)
            points.append(f"{x + radius * reach * sin(angle):.2f} {y - radius * reach * cos(angle):.2f}")
    picture.path("M" + "L".join(points) + "Z", LIGHT, OUTLINE, 2, 'stroke-linejoin="round"')
    picture.disc(x, y, radius * 0.3, WHITE, OUTLINE)


def wireless_settings():
    picture = Picture(32, 32)
    waves(picture, 16, 20.5, (11.5, 17.5), 3.4)
    gear(picture, 16, 21.5, 9.5)
    return picture


def button(picture, scale):
    """The face of a button of the usage dialog, 26 pixels times the scale, as large as its tap region. The uppermost
    row stays free: the date picker above reaches into it."""
    side = 26 * scale
    line = 'x="{0}" y="{1}" width="{2}" height="{3}" rx="{4}"'
    picture.shape("rect", line.format(0.5 * scale, 1.5 * scale, side - scale, side - 2 * scale, 3 * scale), "#eef2f7",
                  GREY, scale)


def sheet(picture, scale, x, y, width, height):
    at = f'x="{(x + 0.5) * scale}" y="{(y + 0.5) * scale}" width="{(width - 1) * scale}" height="{(height - 1) * scale}"'
    picture.shape("rect", at, WHITE, OUTLINE, scale)


def table_button(scale):
    picture = Picture(26 * scale, 26 * scale)
    button(picture, scale)
    sheet(picture, scale, 4, 5, 18, 16)
    picture.box(5 * scale, 6 * scale, 16 * scale, 3 * scale, SKY)
    for y in (9, 13, 17):
        picture.box(5 * scale, y * scale, 16 * scale, scale, GREY)
    for x in (9, 15):
        picture.box(x * scale, 9 * scale, scale, 11 * scale, GREY)
    return picture


def chart_button(scale):
    picture = Picture(26 * scale, 26 * scale)
    button(picture, scale)
    sheet(picture, scale, 4, 4, 18, 18)
    columns = [(6, 7, 4), (10, 11, 7), (14, 8, 6), (18, 13, 9)]
    bars(picture, 20 * scale, [[scale * value for value in column] for column in columns], 2 * scale)
    picture.box(5 * scale, 20 * scale, 16 * scale, scale, SLATE)
    return picture


def export_button(scale):
    picture = Picture(26 * scale, 26 * scale)
    button(picture, scale)
    sheet(picture, scale, 4, 4, 13, 18)
    for y in (7, 10, 16, 19):
        picture.box(6 * scale, y * scale, 6 * scale, scale, GREY)
    arrow = [(9, 12), (16, 12), (16, 9), (22, 13.5), (16, 18), (16, 15), (9, 15)]
    d = "M" + "L".join(f"{x * scale} {y * scale}" for x, y in arrow) + "Z"
    picture.path(d, GREEN, OUTLINE, scale, 'stroke-linejoin="round"')
    return picture


ICONS = {
    192: usage(), 189: lease(), 193: ping(), 191: adapter(), 201: scanner(), 202: wireless_card(), 190: detector(),
    195: connections(), 194: wireless_settings(),
    122: table_button(1), 120: chart_button(1), 158: export_button(1),
    206: table_button(2), 204: chart_button(2), 205: export_button(2),
}
