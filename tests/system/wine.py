"""The Today host under Wine inside a Network: a session and a prefix of its own, its registry, its files."""
import glob
import os
import re
import resource
import struct
import subprocess
import time

from network import wait_until

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
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
        self.net, self.name = net, f"system-{net.prefix}device"
        _remove_remains()
        self.folder = _prefix_tool("make", self.name)
        self.data = f"{self.folder}/drive_c/Program Files/Ostrik/Quorvane"
        net.at_close(self._close)
        display = _prefix_tool("start", self.name, before=["ip", "netns", "exec", net.namespace("device")])
        self.variables = {**os.environ, "WINEPREFIX": self.folder, "HOME": f"{self.folder}/home", "DISPLAY": display,
                          "WINEARCH": "win64", "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml=", **environment}

    def _close(self):
        def removed():
            # Server and programs still write a little while they end.
            _prefix_tool("stop", self.name)
            subprocess.run(["rm", "-rf", self.folder, f"{self.folder}.lock"], stderr=subprocess.DEVNULL)
            return not os.path.isdir(self.folder)

        wait_until(removed, 20, f"{self.folder} is gone", 0.1)

    # Programs

    def _options(self, options):
        return {"env": self.variables, "cwd": f"{self.folder}/drive_c", **options}

    def run(self, *command, timeout=60, **options):
        """Runs a Windows program to its end; the completed process has its text output."""
        return self.net.run("device", ["wine", *command], timeout=timeout, **self._options(options))

    def start(self, *command, **options):
        """Starts a Windows program; the process returned is the Windows process itself, so killing it is a crash."""
        return self.net.start("device", ["wine", *map(str, command)], **self._options(options))

    def start_host(self, *arguments, **options):
        return self.start(HOST, *arguments, **options)

    def start_helper(self):
        """Starts the Linux helper in the session's namespace; programs started from now on find it."""
        helper = self.net.start("device", [HELPER], stdout=subprocess.PIPE, text=True)
        for name in ("QUORVANE_HELPER_PORT", "QUORVANE_HELPER_TOKEN"):
            self.variables[name] = helper.stdout.readline().strip().removeprefix(f"export {name}=")
        return helper

    # Registry of the item

    def set_value(self, name, value):
        kind = "REG_DWORD" if isinstance(value, int) else "REG_SZ"
        done = self.run("reg", "add", ITEM_KEY, "/v", name, "/t", kind, "/d", str(value), "/f")
        if done.returncode:
            raise RuntimeError(done.stdout)

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


def _remove_remains():
    """Deletes the prefixes of networks that are gone."""
    for path in glob.glob(f"{ROOT}/build/wine*/system-qn*"):
        owner = re.search(r"system-qn(\d+)n", path)[1]
        if not os.path.exists(f"/proc/{owner}"):
            subprocess.run(["rm", "-rf", path])
