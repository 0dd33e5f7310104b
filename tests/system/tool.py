"""The Today host as a person uses it: taps of a mouse on its screen, and its dialogs read by the probe program."""
import collections
import subprocess

from network import ROOT, stop, wait_until

PROBE = f"{ROOT}/build/desktop/tests/probe.exe"
OK, CANCEL = 1, 2
STRIP_MIDDLE, SCREEN_BOTTOM = 62, 307
GRAPH, SIGNAL, USAGE, DHCP, PING, ADAPTER, SCANNER, CARD, DETECTOR = 25, 58, 77, 96, 115, 134, 153, 172, 191
PATIENCE = 60


# A number of 0 stands for the host's own screen; x and y are where it begins on the monitor.
Dialog = collections.namedtuple("Dialog", "number x y title controls")
# x and y are its middle on the monitor; `rows` are those of a list view, each a list of its columns.
Control = collections.namedtuple("Control", "kind enabled x y text rows")


class Tool:
    """with Tool(wine) as tool: the running host. With the x of an icon of the strip that tool is open. `more` are further
    options of the host and `environment` of its process."""

    def __init__(self, wine, icon=None, size="240x320", seconds=400, more=(), **environment):
        self.wine, self.icon, self.scale = wine, icon, 2 if max(map(int, size.split("x"))) > 320 else 1
        self.arguments, self.environment = ("--size", size, "--seconds", seconds, *more), environment

    def __enter__(self):
        self.host = self.wine.start_host(*self.arguments, **self.environment)
        wait_until(lambda: self._run_probe("dump").returncode == 0, PATIENCE, "the host's screen", 0.1)
        self.corner = self.top()[1:]
        if self.icon:
            self.open(self.icon)
        return self

    def __exit__(self, *_):
        stop(self.host)

    # Looking

    def _run_probe(self, *words):
        # Once in some thousand starts Wine ends a program with 1 before its first line; the probe itself never does.
        for _ in range(3):
            done = self.wine.run(PROBE, *map(str, words), timeout=90, stderr=subprocess.PIPE, encoding="utf-8")
            if done.returncode != 1:
                break
        return done

    def probe(self, *words):
        done = self._run_probe(*words)
        if done.returncode:
            raise RuntimeError(f"probe {words}: {done.returncode} {done.stdout} {done.stderr}; host: {self.host.poll()}")
        return done.stdout

    def dialog(self):
        """The one that takes input, be it a message box; of a repeated number its first control."""
        head, *lines = self.probe("dump").splitlines()
        number, x, y, title = head.split("\t")
        controls = {}
        for line in lines:
            if line[0] == "\t":
                control.rows.append(line[1:].split("\t"))
                continue
            name, kind, enabled, left, top, text = line.split("\t")
            control = Control(kind, enabled == "1", int(left), int(top), text, [])
            controls.setdefault(int(name), control)
        return Dialog(int(number), int(x), int(y), title, controls)

    def top(self):
        """Number and place of the dialog that takes input."""
        return self.dialog()[:3]

    def texts(self, *numbers):
        controls = self.dialog().controls
        return [controls[number].text if number in controls else None for number in numbers]

    def rows(self, number):
        return self.dialog().controls[number].rows

    def wait_for(self, condition, what):
        """Waits for a condition on the number of the dialog that takes input."""
        return wait_until(lambda: condition(self.top()[0]), PATIENCE, what, 0.1)

    # Acting

    def click(self, x, y):
        # Inside the namespace: displays of several namespaces may have the same number.
        self.wine.net.run("device", ["xdotool", "mousemove", str(x), str(y), "click", "1"],
                          env=self.wine.variables, check=True)

    def tap_screen(self, x, y):
        self.click(self.corner[0] + x * self.scale, self.corner[1] + y * self.scale)

    def tap(self, number):
        control = self.dialog().controls[number]
        self.click(control.x, control.y)

    def open(self, x, y=STRIP_MIDDLE):
        self.wait_for(lambda dialog: not dialog, "the screen is free")
        self.tap_screen(x, y)
        self.wait_for(lambda dialog: dialog, f"a dialog opens at {x}, {y}")

    def tap_away(self, number, what="it closes"):
        """Taps the button and waits until that dialog is not the topmost one."""
        before = self.top()[0]
        self.tap(number)
        self.wait_for(lambda dialog: dialog != before, f"{number}: {what}")

    def close(self, number=OK):
        self.tap_away(number)

    def answer(self, number=OK):
        """Closes the message box that has come up: its caption and text. Only a message box has a caption."""
        box = wait_until(lambda: (shown := self.dialog()).number and shown.title and shown, PATIENCE, "a message", 0.1)
        self.close(number)
        return box.title, "".join(control.text for control in box.controls.values() if control.kind == "Static")
