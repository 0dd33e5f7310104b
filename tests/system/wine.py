"""The Today host under Wine inside a Network: a session and a prefix of its own, its registry, its files."""
import calendar
import contextlib
import glob
import os
import resource
import shutil
import struct
import subprocess
import time

import network

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
HOST = f"{ROOT}/build/desktop/todayhost.exe"
HELPER = f"{ROOT}/build/release/platform/linux/quorvane-helper"
ITEM_KEY = r"HKLM\Software\Microsoft\Today\Items\Quorvane"
DATA_FOLDER = "drive_c/Program Files/Ostrik/Quorvane"
RECORD = struct.Struct("<bbHII")
# 254 threads of a scan need more descriptors than the customary 1024.
resource.setrlimit(resource.RLIMIT_NOFILE, (4096, max(4096, resource.getrlimit(resource.RLIMIT_NOFILE)[1])))


def _tool(command, name, prefix=()):
    done = subprocess.run([*prefix, f"{ROOT}/tools/wine-prefix", command, name], stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, timeout=120)
    if done.returncode:
        raise RuntimeError(f"wine-prefix {command} {name}: {done.stderr}")
    return done.stdout.strip()


def read_log(path):
    """The whole records of a monthly log as (day, hour, reserved, received, transmitted), and the bytes left over."""
    with open(path, "rb") as file:
        data = file.read()
    whole = len(data) // RECORD.size * RECORD.size
    return list(RECORD.iter_unpack(data[:whole])), data[whole:]


class WineSession:
    """with WineSession(net) as wine: the processes of this session see the network of that place and nothing else."""

    def __init__(self, net, place="device", **environment):
        self.net, self.place = net, place
        self.name = f"system-{net.prefix}{place}"
        self.environment = environment

    def __enter__(self):
        _remove_remains()
        self.folder = _tool("make", self.name)
        self.net.at_close(self.close)
        self.data = f"{self.folder}/{DATA_FOLDER}"
        self.start_session()
        return self

    def __exit__(self, *_):
        self.close()

    def start_session(self):
        display = _tool("start", self.name, ["ip", "netns", "exec", self.net.namespace(self.place)])
        self.variables = {**os.environ, "WINEPREFIX": self.folder, "HOME": f"{self.folder}/home", "DISPLAY": display,
                          "WINEARCH": "win64", "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml=",
                          **self.environment}

    def close(self):
        if not os.path.isdir(self.folder):
            return
        _tool("stop", self.name)

        def removed():
            # Server and programs still write a little while they end.
            shutil.rmtree(self.folder, ignore_errors=True)
            return not os.path.isdir(self.folder)

        network.wait_until(removed, 20, f"{self.folder} is gone", 0.1)
        os.unlink(f"{self.folder}.lock")

    # Programs

    def _options(self, options):
        return {"env": self.variables, "cwd": f"{self.folder}/drive_c", **options}

    def run(self, *command, timeout=60, **options):
        """Runs a Windows program to its end; the completed process has its text output."""
        return self.net.run(self.place, ["wine", *command], timeout=timeout, **self._options(options))

    def start_host(self, *arguments, **options):
        """Starts the Today host; the process returned is the Windows process itself, so killing it is a crash."""
        return self.net.start(self.place, ["wine", HOST, *map(str, arguments)], **self._options(options))

    def start_helper(self, *before):
        """Starts the Linux helper in the session's namespace; programs started from now on find it. `before` are words
        of a command that starts it."""
        helper = self.net.start(self.place, [*before, HELPER], stdout=subprocess.PIPE, text=True)
        for name in ("QUORVANE_HELPER_PORT", "QUORVANE_HELPER_TOKEN"):
            self.variables[name] = helper.stdout.readline().strip().removeprefix(f"export {name}=")
        return helper

    # Registry of the item

    def set_value(self, name, value):
        kind, text = ("REG_DWORD", str(value)) if isinstance(value, int) else ("REG_SZ", value)
        done = self.run("reg", "add", ITEM_KEY, "/v", name, "/t", kind, "/d", text, "/f")
        if done.returncode:
            raise RuntimeError(done.stdout)

    def value(self, name):
        """A text, a number, or None where there is no such value."""
        for line in self.run("reg", "query", ITEM_KEY, "/v", name).stdout.splitlines():
            parts = line.strip().split(None, 2)
            if parts[:1] == [name]:
                text = parts[2] if len(parts) > 2 else ""
                return int(text, 16) if parts[1] == "REG_DWORD" else text
        return None

    # Files of the item

    def logs(self):
        return sorted(glob.glob(f"{self.data}/*.log"))

    def logged(self):
        """Octets (received, transmitted) over all whole records of all months."""
        records = [record for path in self.logs() for record in read_log(path)[0]]
        return sum(record[3] for record in records), sum(record[4] for record in records)


class Clock:
    """The time of day of programs started with its `environment`; it stands still for nobody else."""

    def __init__(self, net):
        library, self.file = f"{net.folder}/clock_shift.so", f"{net.folder}/clock"
        subprocess.run(["g++", "-O1", "-shared", "-fPIC", "-fno-threadsafe-statics", "-o", library,
                        f"{ROOT}/tests/system/clock_shift.cpp"], check=True)
        self.set(time.gmtime())
        self.environment = {"LD_PRELOAD": library, "QUORVANE_CLOCK": self.file}

    def set(self, moment):
        """A moment as time.gmtime gives it, in UTC. Running programs have it at once."""
        self.moment = moment
        with open(self.file, "r+b" if os.path.exists(self.file) else "wb") as file:
            file.write(struct.pack("<q", calendar.timegm(moment) - int(time.time())))


def _remove_remains():
    """Deletes the prefixes of networks that are gone."""
    for path in glob.glob(f"{ROOT}/build/wine*/system-*"):
        prefix = os.path.basename(path).removeprefix("system-").rsplit("-", 1)[0] + "-"
        if network.owner_lives(prefix):
            continue
        if os.path.isdir(path):
            shutil.rmtree(path, ignore_errors=True)
        else:
            with contextlib.suppress(FileNotFoundError):  # another test's clearing
                os.unlink(path)
