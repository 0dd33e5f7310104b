"""Starts the measured programs, natively and under Wine, on a display whose pixels can be read."""
import glob
import os
import subprocess
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
WINDOWS = f"{ROOT}/build/desktop"
NATIVE = f"{ROOT}/build/release"
PREFIX = "bench"


class Display:
    """A virtual display. Its frame buffer is a file, so that looking at it costs the watched programs nothing."""

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        reader, writer = os.pipe()
        command = ["Xvfb", "-displayfd", str(writer), "-screen", "0", "800x800x24", "-nolisten", "tcp", "-noreset", "-fbdir",
                   self.folder.name]
        self.process = subprocess.Popen(command, pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as pipe:
            self.name = ":" + pipe.readline().strip()
        os.environ.update(QUORVANE_DISPLAY=self.name, QUORVANE_PREFIX=PREFIX)
        return self

    def __exit__(self, *_):
        subprocess.run([f"{ROOT}/tools/wine-prefix", "stop", PREFIX], check=False)
        self.process.terminate()
        self.process.wait()
        self.folder.cleanup()

    def pixels(self):
        with open(f"{self.folder.name}/Xvfb_screen0", "rb") as file:
            return file.read()


def wine_command(program, *arguments):
    return [f"{ROOT}/tools/wine-run", f"{WINDOWS}/{program}", *map(str, arguments)]


def output_of(command):
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True, timeout=600, check=True).stdout


class Helper:
    """The Linux helper, as ./run starts it."""

    def __enter__(self):
        self.process = subprocess.Popen([f"{NATIVE}/platform/linux/quorvane-helper"], stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)
        for name in ("QUORVANE_HELPER_PORT", "QUORVANE_HELPER_TOKEN"):
            os.environ[name] = self.process.stdout.readline().strip().removeprefix(f"export {name}=")
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()


def _read(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError:  # the process has just ended, or is another user's
        return b""


def processes_of_prefix():
    """Name by process id of everything that runs in the measurements' prefix, the server included."""
    mark = f"WINEPREFIX={ROOT}/build/wine/{PREFIX}".encode()
    found = {}
    for folder in glob.glob("/proc/[0-9]*"):
        if mark in _read(f"{folder}/environ").split(b"\0"):
            found[int(folder[6:])] = _read(f"{folder}/comm").decode().strip()
    return found


def processor_seconds(process):
    """User and system time so far, of all threads, those that have ended included; 0 once the process has ended."""
    clock = ~process << 3 | 2  # Linux's number of a process's own clock, to the nanosecond
    try:
        return time.clock_gettime(clock)
    except OSError:
        return 0.0


def memory(process):
    """Resident memory in MB: all of it, and the part that no other process shares."""
    values = {}
    for line in _read(f"/proc/{process}/smaps_rollup").decode().splitlines()[1:]:
        name, amount = line.split(":")
        values[name] = int(amount.split()[0]) / 1024
    return values["Rss"], values["Private_Clean"] + values["Private_Dirty"]
