"""The Today host under Wine inside a Network: a session and a prefix of its own, its registry, its files."""
import glob
import os
import re
import resource
import struct
import subprocess
import time

from network import ROOT

HOST = f"{ROOT}/build/desktop/todayhost.exe"
HELPER = f"{ROOT}/build/release/platform/linux/quorvane-helper"
ITEM_KEY = r"HKLM\Software\Microsoft\Today\Items\Quorvane"
RECORD = struct.Struct("<bbHII")
# 254 threads of a scan need more descriptors than the customary 1024.
resource.setrlimit(resource.RLIMIT_NOFILE, (4096, max(4096, resource.getrlimit(resource.RLIMIT_NOFILE)[1])))


def _prefix_tool(*words, before=()):
    done = subprocess.run([*before, f"{ROOT}/tools/wine-prefix", *words], stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, timeout=120)
    if done.returncode:
        raise RuntimeError(f"wine-prefix {' '.join(words)}: {done.stderr}")
    return done.stdout.strip()


def read_log(path):
    """The records of a monthly log as (day, hour, reserved, received, transmitted)."""
    with open(path, "rb") as file:
        return list(RECORD.iter_unpack(file.read()))


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

    # Programs

    def run(self, *command, timeout=60, **options):
        """Runs a Windows program to its end; the completed process has its text output."""
        return self.net.run("device", ["wine", *command], timeout=timeout, cwd=self.root, env=self.variables,
                            **options)

    def start_host(self, *arguments, **environment):
        """The process returned is the Windows process itself, so killing it is a crash."""
        return self.net.start("device", ["wine", HOST, *map(str, arguments)], cwd=self.root,
                              env={**self.variables, **environment})

    def start_helper(self):
        """Starts the Linux helper in the session's namespace; programs started from now on find it."""
        helper = self.net.start("device", [HELPER], stdout=subprocess.PIPE, text=True)
        for name in ("QUORVANE_HELPER_PORT", "QUORVANE_HELPER_TOKEN"):
            self.variables[name] = helper.stdout.readline().strip().removeprefix(f"export {name}=")

    # Registry of the item

    def set_value(self, name, value):
        kind = "REG_DWORD" if isinstance(value, int) else "REG_SZ"
        self.run("reg", "add", ITEM_KEY, "/v", name, "/t", kind, "/d", str(value), "/f", check=True)

    def value(self, name):
        """A text, a number, or None where there is no such value."""
        shown = self.run("reg", "query", ITEM_KEY, "/v", name).stdout
        found = re.search(rf"^ +{name} +REG_(\w+) +(\S*)", shown, re.M)
        return found and (int(found[2], 16) if found[1] == "DWORD" else found[2])

    # Files of the item

    def logs(self):
        return sorted(glob.glob(f"{self.data}/*.log"))

    def logged(self):
        """Octets (received, transmitted) over all records of all months."""
        records = [record for path in self.logs() for record in read_log(path)]
        return sum(record[3] for record in records), sum(record[4] for record in records)


class Clock:
    """The time of day of programs started with its `environment`; it stands still for nobody else."""

    def __init__(self, net):
        library, self.file = f"{net.folder}/clock_shift.so", f"{net.folder}/clock"
        subprocess.run(["g++", "-O1", "-shared", "-fPIC", "-fno-threadsafe-statics", "-o", library,
                        f"{ROOT}/tests/system/clock_shift.cpp"], check=True)
        self.set(time.time())
        self.environment = {"LD_PRELOAD": library, "QUORVANE_CLOCK": self.file}

    def set(self, seconds):
        """So many since 1970-01-01 UTC. Running programs have it at once."""
        with open(self.file, "r+b" if os.path.exists(self.file) else "wb") as file:
            file.write(struct.pack("<q", int(seconds) - int(time.time())))
