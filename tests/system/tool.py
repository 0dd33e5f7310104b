"""The Today host as a person uses it: taps of a mouse on its screen, and its dialogs read by the probe program."""
import collections
import subprocess

from network import stop, wait_until
from wine import ROOT

PROBE = f"{ROOT}/build/desktop/tests/probe.exe"
OK, CANCEL = 1, 2
STRIP_MIDDLE, SCREEN_BOTTOM = 62, 307
USAGE, DHCP, PING, ADAPTER, SCANNER, CARD, DETECTOR = 77, 96, 115, 134, 153, 172, 191
GRAPH, SIGNAL = 25, 58
PATIENCE = 60


# `middle` is a place on the monitor.
Control = collections.namedtuple("Control", "kind enabled middle text")


class Tool:
    """with Tool(wine) as tool: the running host. With the x of an icon of the strip that tool is open. `more` are further
    options of the host and `environment` of its process."""

    def __init__(self, wine, icon=None, size="240x320", seconds=400, more=(), **environment):
        self.wine, self.icon, self.scale = wine, icon, 2 if max(map(int, size.split("x"))) > 320 else 1
        self.arguments, self.environment = ("--size", size, "--seconds", seconds, *more), environment

    def __enter__(self):
        self.host = self.wine.start_host(*self.arguments, env={**self.wine.variables, **self.environment})
        wait_until(lambda: self.run("top", check=False).returncode == 0, PATIENCE, "the host's screen", 0.1)
        self.corner = self.top()[1:]
        if self.icon:
            self.open(self.icon)
        return self

    def __exit__(self, *_):
        stop(self.host)

    # Looking

    def run(self, *words, check=True):
        # Once in some thousand starts Wine ends a program with 1 before its first line; the probe itself never does.
        for _ in range(3):
            done = self.wine.run(PROBE, *map(str, words), timeout=90, stderr=subprocess.PIPE, encoding="utf-8")
            if done.returncode != 1:
                break
        if check and done.returncode:
            raise RuntimeError(f"probe {words}: {done.returncode} {done.stdout} {done.stderr}; host: {self.host.poll()}")
        return done

    def probe(self, *words):
        return self.run(*words).stdout

    def top(self):
        """The dialog that takes input (0: none), and where it, or else the host's screen, begins on the monitor."""
        return tuple(map(int, self.probe("top").split()))

    def dialog(self, seconds=20):
        """(title, {id: Control}) of the dialog that takes input, be it a message box; a repeated id keeps its first."""
        title, *lines = self.probe("dump", seconds).splitlines()
        controls = {}
        for line in lines:
            number, kind, enabled, x, y, text = line.split("\t", 5)
            controls.setdefault(int(number), Control(kind, enabled == "enabled", (int(x), int(y)), text))
        return title, controls

    def texts(self, *numbers):
        controls = self.dialog()[1]
        return [controls[number].text if number in controls else None for number in numbers]

    def rows(self, number):
        """The rows of a list view, each a list of its columns."""
        return [line.split("\t") for line in self.probe("rows", number).splitlines()]

    def wait_for(self, condition, what):
        """Waits for a condition on the dialog that takes input."""
        return wait_until(lambda: condition(self.top()[0]), PATIENCE, what, 0.1)

    # Acting

    def press(self, number):
        """Presses a button without waiting for what it does; the next reading waits for it."""
        self.probe("press", number)

    def click(self, x, y):
        # Inside the namespace: displays of several namespaces may have the same number.
        self.wine.net.run("device", ["xdotool", "mousemove", str(x), str(y), "click", "1"],
                          env=self.wine.variables, check=True)

    def tap_screen(self, x, y):
        self.click(self.corner[0] + x * self.scale, self.corner[1] + y * self.scale)

    def tap(self, number):
        self.click(*self.dialog(PATIENCE)[1][number].middle)

    def open(self, x, y=STRIP_MIDDLE):
        self.wait_for(lambda dialog: not dialog, "the screen is free")
        self.tap_screen(x, y)
        self.wait_for(lambda dialog: dialog, f"a dialog opens at {x}, {y}")

    def close(self, number=OK):
        """Taps the button and waits until that dialog is not the topmost one."""
        self.tap_away(number, "it closes")

    def tap_away(self, number, what):
        before = self.top()[0]
        self.tap(number)
        self.wait_for(lambda dialog: dialog != before, f"{number}: {what}")

    def answer(self, number=OK):
        """Closes the message box that has come up: its caption and text. Only a message box has a caption."""
        caption, controls = wait_until(lambda: (shown := self.dialog(PATIENCE))[0] and shown, PATIENCE, "a message", 0.1)
        self.close(number)
        return caption, "".join(control.text for control in controls.values() if control.kind == "Static")
