"""The Today host under Wine inside a Network: a session and a prefix of its own, its registry, its files."""
import glob
import os
import re
import resource
import struct
import subprocess

from network import ROOT

HOST = f"{ROOT}/build/desktop/todayhost.exe"
HELPER = f"{ROOT}/build/release/platform/linux/quorvane-helper"
ITEM_KEY = r"HKLM\Software\Microsoft\Today\Items\Quorvane"
# 254 threads of a scan need more descriptors than the customary 1024.
resource.setrlimit(resource.RLIMIT_NOFILE, (4096, max(4096, resource.getrlimit(resource.RLIMIT_NOFILE)[1])))


def _prefix_tool(*words, before=()):
    return subprocess.run([*before, f"{ROOT}/tools/wine-prefix", *words], stdin=subprocess.DEVNULL, check=True,
                          stdout=subprocess.PIPE, text=True, timeout=120).stdout.strip()


class WineSession:
    """The processes of this session see the network of the device and nothing else. It ends with that network."""

    def __init__(self, net, **environment):
        self.net, self.folder = net, f"{net.folder}/wine"
        self.root = f"{self.folder}/drive_c"
        self.data = f"{self.root}/Program Files/Ostrik/Quorvane"
        display = _prefix_tool("start", self.folder, before=["ip", "netns", "exec", net.namespace("device")])
        net.callback(_prefix_tool, "stop", self.folder)
        self.variables = {**os.environ, "WINEPREFIX": self.folder, "HOME": f"{self.folder}/home", "DISPLAY": display,
                          "WINEARCH": "win64", "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml=", **environment}

    def run(self, *command, **options):
        """Runs a Windows program to its end; the completed process has its text output."""
        return self.net.run("device", ["wine", *command], cwd=self.root, env=self.variables, **options)

    def start_host(self, *arguments):
        """The process returned is the Windows process itself, so killing it is a crash."""
        return self.net.start("device", ["wine", HOST, *map(str, arguments)], cwd=self.root, env=self.variables)

    def start_helper(self):
        """Starts the Linux helper in the session's namespace; programs started from now on find it."""
        helper = self.net.start("device", [HELPER], stdout=subprocess.PIPE, text=True)
        for _ in range(2):
            name, value = helper.stdout.readline().strip().removeprefix("export ").split("=")
            self.variables[name] = value

    def set_value(self, name, value):
        """A setting of the item."""
        self.run("reg", "add", ITEM_KEY, "/v", name, "/d", value, "/f", check=True)

    def value(self, name):
        """As `reg` shows it, or None where there is no such value."""
        found = re.search(rf"^ +{name} +REG_\w+ +(\S*)", self.run("reg", "query", ITEM_KEY, "/v", name).stdout, re.M)
        return found and found[1]

    def logs(self):
        return sorted(glob.glob(f"{self.data}/*.log"))

    def records(self):
        """Of all months: octets (received, transmitted) by month's file, day and hour, as in "202702.log 28 0"."""
        records = {}
        for path in self.logs():
            with open(path, "rb") as file:
                for day, hour, _, *octets in struct.iter_unpack("<bbHII", file.read()):
                    records[f"{os.path.basename(path)} {day} {hour}"] = tuple(octets)
        return records

    def logged(self):
        """The sums over all records."""
        return tuple(map(sum, zip((0, 0), *self.records().values())))
