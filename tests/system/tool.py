"""The Today host as a person uses it: taps of a mouse on its screen, and its dialogs read by the probe program."""
import collections
import subprocess
import time

from network import ROOT, stop, wait_until

PROBE = f"{ROOT}/build/desktop/tests/probe.exe"
OK, CANCEL = 1, 2
UNNUMBERED = 65535  # as the text of a message box is
STRIP_MIDDLE, SCREEN_BOTTOM = 62, 307
GRAPH, SIGNAL, USAGE, DHCP, PING, ADAPTER, SCANNER, CARD, DETECTOR = 25, 58, 77, 96, 115, 134, 153, 172, 191
PATIENCE = 60

# A dialog, or the host's own screen, whose number is 0: x and y are where it begins on the monitor. Or a control: x and y
# are its middle; `rows` are those of a list view, each a list of its columns.
Window = collections.namedtuple("Window", "number x y text rows")


class Tool:
    """with Tool(wine) as tool: the running host, with so many more options. With the x of an icon of the strip that tool
    is open."""

    def __init__(self, wine, icon=None, size="240x320", seconds=400, more=()):
        self.wine, self.icon, self.scale = wine, icon, 2 if max(map(int, size.split("x"))) > 320 else 1
        self.arguments = "--size", size, "--seconds", seconds, *more

    def __enter__(self):
        self.host = self.wine.start_host(*self.arguments)
        wait_until(lambda: self._probe().returncode == 0, PATIENCE, "the host's screen")
        self.corner = self.top()
        if self.icon:
            self.open(self.icon)
        return self

    def __exit__(self, *_):
        stop(self.host)

    def _probe(self):
        return self.wine.run(PROBE, timeout=90, stderr=subprocess.PIPE, encoding="utf-8")

    def dialog(self):
        """The one that takes input, be it a message box, and its controls by number; of a repeated one the first."""
        # Once in some thousand starts Wine ends a program before its first line.
        text = wait_until(lambda: (done := self._probe()).returncode == 0 and done.stdout, 2, "the probe's answer")
        windows = []
        for line in text.splitlines():
            number, *fields = line.split("\t")
            if number:
                windows.append(Window(int(number), *map(int, fields[:2]), fields[2], []))
            else:
                windows[-1].rows.append(fields)
        return windows[0], {window.number: window for window in windows[:0:-1]}

    def top(self):
        return self.dialog()[0]

    def texts(self, *numbers):
        """Of a list view with rows these."""
        controls = self.dialog()[1]
        return [controls[number].rows or controls[number].text for number in numbers]

    def shows(self, expected, *numbers, seconds=20):
        """The controls come to show that."""
        end = time.monotonic() + seconds
        while (shown := self.texts(*numbers)) != expected:
            assert time.monotonic() < end, f"{shown} is not {expected}"

    def wait_for(self, condition, what):
        """Waits for a condition on the number of the dialog that takes input."""
        return wait_until(lambda: condition(self.top().number), PATIENCE, what)

    def monitor(self):
        """Its pixels: [y, x] is 0xRRGGBB. It is the virtual display that tools/wine-prefix starts."""
        with open(f"{self.wine.folder}/Xvfb_screen0", "rb") as file:
            return memoryview(file.read()[-1280 * 1024 * 4:]).cast("I", (1024, 1280))

    def _act(self, *words):
        # Inside the namespace: displays of several namespaces may have the same number.
        self.wine.net.run("device", ["xdotool", *map(str, words)], env=self.wine.variables, check=True)

    def click(self, x, y):
        self._act("mousemove", x, y, "click", 1)

    def tap_screen(self, x, y):
        self.click(self.corner.x + x * self.scale, self.corner.y + y * self.scale)

    def tap(self, number):
        control = self.dialog()[1][number]
        self.click(control.x, control.y)

    def fill(self, number, text):
        """Types over what is in a field."""
        self.tap(number)
        self._act("key", "End", "shift+Home", "type", text)
        wait_until(lambda: self.texts(number) == [text], PATIENCE, f"{text} in {number}")

    def open(self, x, y=STRIP_MIDDLE):
        self.wait_for(lambda dialog: not dialog, "the screen is free")
        self.tap_screen(x, y)
        self.wait_for(lambda dialog: dialog, f"a dialog opens at {x}, {y}")

    def close(self, number=OK):
        """Taps the button and waits until that dialog is not the topmost one."""
        before = self.top().number
        self.tap(number)
        self.wait_for(lambda dialog: dialog != before, f"{number} closes the dialog")

    def answer(self):
        """Closes the message box that has come up: its caption and text. Only a message box has a caption."""
        box, controls = wait_until(lambda: (shown := self.dialog())[0].number and shown[0].text and shown, PATIENCE,
                                   "a message")
        self.close()
        return box.text, controls[UNNUMBERED].text
