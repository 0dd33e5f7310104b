"""The drawing board: one SVG picture built from pixel-aligned shapes, the shared palette and the pixel lettering."""

RED = "#ff0000"  # transmitted, everywhere in the program
BLUE = "#0000ff"  # received, everywhere in the program
OUTLINE = "#1f2a36"
SKY = "#2f8fe0"
WHITE = "#ffffff"
LIGHT = "#d5dce4"
GREY = "#8a95a0"
SLATE = "#4f5b68"
GREEN = "#22a832"
DEEP_GREEN = "#125c2a"
PALE_GREEN = "#8fe3a0"
YELLOW = "#f5c518"
ORANGE = "#ff7000"
CRIMSON = "#d92b2b"
SKIN = "#f3c9a0"

# One letter per colour, for pictures written as rows of pixels; a dot is transparent.
INKS = {
    "K": OUTLINE, "W": WHITE, "L": LIGHT, "G": GREY, "D": SLATE, "R": RED, "B": BLUE, "C": SKY, "E": GREEN,
    "e": DEEP_GREEN, "l": PALE_GREEN, "Y": YELLOW, "O": ORANGE, "c": CRIMSON, "P": SKIN,
}

# Capitals and figures stand 7 rows high on the base line; "y" alone reaches below it. Rows are separated by "/".
LETTERS = {
    "B": "####./#...#/#...#/####./#...#/#...#/####.",
    "D": "####./#...#/#...#/#...#/#...#/#...#/####.",
    "H": "#...#/#...#/#...#/#####/#...#/#...#/#...#",
    "R": "####./#...#/#...#/####./#.#../#..#./#...#",
    "T": "#####/..#../..#../..#../..#../..#../..#..",
    "X": "#...#/#...#/.#.#./..#../.#.#./#...#/#...#",
    "a": "..../..../.##./...#/.###/#..#/.###",
    "c": "..../..../.##./#..#/#.../#..#/.##.",
    "d": "...#/...#/.###/#..#/#..#/#..#/.###",
    "i": "#/./#/#/#/#/#",
    "l": "#/#/#/#/#/#/#",
    "m": "...../...../####./#.#.#/#.#.#/#.#.#/#.#.#",
    "o": "..../..../.##./#..#/#..#/#..#/.##.",
    "r": ".../.../#.#/##./#../#../#..",
    "t": ".#./.#./###/.#./.#./.#./..#",
    "u": "..../..../#..#/#..#/#..#/#..#/.###",
    "v": "...../...../#...#/#...#/.#.#./.#.#./..#..",
    "y": "..../..../#..#/#..#/#..#/#..#/.###/...#/.##.",
    "-": ".../.../.../###/.../.../...",
    "0": ".##./#..#/#..#/#..#/#..#/#..#/.##.",
    "6": ".##./#..#/#.../###./#..#/#..#/.##.",
    "7": "####/...#/...#/..#./.#../.#../.#..",
    "8": ".##./#..#/#..#/.##./#..#/#..#/.##.",
    "9": ".##./#..#/#..#/.###/...#/#..#/.##.",
}

# Figures 3 wide and 5 high, for the numbers under a chart's axis.
SMALL_FIGURES = {
    "0": "###/#.#/#.#/#.#/###", "1": ".#./##./.#./.#./###", "2": "###/..#/###/#../###", "3": "###/..#/###/..#/###",
    "4": "#.#/#.#/###/..#/..#", "5": "###/#../###/..#/###", "6": "###/#../###/#.#/###", "7": "###/..#/..#/..#/..#",
    "8": "###/#.#/###/#.#/###", "9": "###/#.#/###/..#/###",
}


def text_width(text, font):
    """Pixels that the text takes, with one column between letters."""
    return sum(len(font[letter].split("/")[0]) + 1 for letter in text) - 1


class Picture:
    """An SVG picture of width x height pixels."""

    def __init__(self, width, height, ground=None):
        self.width, self.height, self.parts = width, height, []
        if ground:
            self.box(0, 0, width, height, ground)

    def box(self, x, y, width, height, fill):
        self.parts.append(f'<rect x="{x}" y="{y}" width="{width}" height="{height}" fill="{fill}"/>')

    def frame(self, x, y, width, height, edge, fill, corner=0):
        """A box with a two-pixel edge inside its bounds."""
        self.shape("rect", f'x="{x + 1}" y="{y + 1}" width="{width - 2}" height="{height - 2}" rx="{corner}"', fill, edge)

    def shape(self, element, geometry, fill="none", stroke=None, width=2, extra=""):
        line = f' stroke="{stroke}" stroke-width="{width}"' if stroke else ""
        self.parts.append(f'<{element} {geometry} fill="{fill}"{line}{" " + extra if extra else ""}/>')

    def path(self, d, fill="none", stroke=None, width=2, extra=""):
        self.shape("path", f'd="{d}"', fill, stroke, width, extra)

    def disc(self, x, y, radius, fill="none", stroke=None, width=2):
        self.shape("circle", f'cx="{x}" cy="{y}" r="{radius}"', fill, stroke, width)

    def pixels(self, rows, x=0, y=0, haloed="", halo=WHITE):
        """Rows of ink letters, top first. Pixels of the inks in haloed get a contour wherever nothing else is drawn:
        it keeps them visible on a ground of their own colour."""
        cells = {(x + i, y + j): ink for j, row in enumerate(rows) for i, ink in enumerate(row) if ink != "."}
        thin = [at for at, ink in cells.items() if ink in haloed]
        around = {(i + dx, j + dy) for i, j in thin for dx, dy in ((1, 0), (-1, 0), (0, 1), (0, -1))}
        self.runs({at: halo for at in around if at not in cells})
        self.runs({at: INKS[ink] for at, ink in cells.items()})

    def runs(self, cells):
        """Single pixels, joined to one box wherever neighbours in a row have the same colour."""
        done = set()
        for i, j in sorted(cells, key=lambda at: (at[1], at[0])):
            if (i, j) in done or not (0 <= i < self.width and 0 <= j < self.height):
                continue
            end = i
            while cells.get((end, j)) == cells[i, j] and end < self.width:
                done.add((end, j))
                end += 1
            self.box(i, j, end - i, 1, cells[i, j])

    def text(self, x, y, text, fill, font):
        """Pixel lettering with its upper left corner at (x, y)."""
        for letter in text:
            rows = font[letter].split("/")
            self.runs({(x + i, y + j): fill for j, row in enumerate(rows) for i, dot in enumerate(row) if dot == "#"})
            x += len(rows[0]) + 1

    def svg(self):
        head = f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.width}" height="{self.height}"'
        return "\n".join([f'{head} viewBox="0 0 {self.width} {self.height}">', *self.parts, "</svg>", ""])
