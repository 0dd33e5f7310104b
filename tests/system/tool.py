"""A tool's dialog in a running Today host, opened by a tap and read and pressed from outside by the probe program."""
import dataclasses
import subprocess

from network import stop
from wine import ROOT

PROBE = f"{ROOT}/build/desktop/tests/probe.exe"


@dataclasses.dataclass(frozen=True)
class Control:
    kind: str
    enabled: bool
    middle: tuple  # on the monitor
    text: str


class Tool:
    """with Tool(wine, 130, 10) as tool: the host, with the tool under that place of its strip open; without a place the
    item's options. `more` are further options of the host."""

    def __init__(self, wine, *place, size="240x320", more=()):
        opened = ("--tap", "{},{}".format(*place)) if place else ("--options",)
        self.wine, self.arguments = wine, ("--size", size, "--seconds", 300, *opened, *more)

    def __enter__(self):
        self.host = self.wine.start_host(*self.arguments)
        self.dialog()
        return self

    def __exit__(self, *_):
        stop(self.host)

    def probe(self, *words, timeout=60):
        done = self.wine.run(PROBE, *map(str, words), timeout=timeout, stderr=subprocess.DEVNULL, encoding="utf-8")
        if done.returncode:
            raise RuntimeError(f"probe {words}: {done.returncode} {done.stdout}")
        return done.stdout

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

    def press(self, number):
        """Presses a button without waiting for what it does; the next reading waits for it."""
        self.probe("press", number)

    def rows(self, number):
        """The rows of a list view, each a list of its columns."""
        return [line.split("\t") for line in self.probe("rows", number).splitlines()]
