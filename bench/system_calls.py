"""Counts what programs ask of the kernel, with strace."""
import re
import subprocess
import tempfile
import time

from programs import NATIVE, processor_seconds, wine_command

TICKS = 1000


def _count(command):
    """Calls by name, over the program and all its children."""
    with tempfile.NamedTemporaryFile("r") as file:
        subprocess.run(["strace", "-f", "-c", "-o", file.name, *command], stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=300, check=True)
        rows = re.findall(r"^ *[\d.]+ +[\d.]+ +\d+ +(\d+) +(?:\d+ +)?(\w+)$", file.read(), re.MULTILINE)
    return {name: int(calls) for calls, name in rows if name != "total"}


def calls_of_a_tick(command):
    """The difference that TICKS ticks make, by name, for one tick. What the program's start adds by chance is dropped."""
    idle, busy = _count([*command, "0"]), _count([*command, str(TICKS)])
    each = {name: round((calls - idle.get(name, 0)) / TICKS, 1) for name, calls in busy.items()}
    return {name: calls for name, calls in each.items() if calls >= 0.5}


def measure_ticks(figures, notes):
    programs = {"natively": [f"{NATIVE}/bench/tick_calls"], "under Wine": wine_command("bench/tick_calls.exe")}
    for system, command in programs.items():
        calls = calls_of_a_tick(command)
        figures.add(f"a tick's file work, system calls {system}", sum(calls.values()), "calls")
        notes.append(f"calls of a tick {system}: " + ", ".join(f"{name} {count:g}" for name, count in calls.items()))


class Logger:
    """vnstatd with its customary times, but for a save each minute instead of every five."""

    def __init__(self, folder, *prefix):
        config = f"{folder}/vnstat.conf"
        with open(config, "w", encoding="ascii") as file:
            file.write(f'DatabaseDir "{folder}"\nPollInterval 5\nUpdateInterval 20\nSaveInterval 1\nUseLogging 0\n')
        command = [*prefix, "vnstatd", "--nodaemon", "--config", config]
        self.process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def stop(self):
        if self.process.poll() is not None:
            raise SystemExit("bench/run: vnstatd ended by itself")
        self.process.terminate()
        self.process.wait()


def _turns(trace):
    """What was called between two sleeps."""
    turns = [[]]
    for name in re.findall(r"^(?:\d+ +)?(\w+)\(", trace, re.MULTILINE):
        if name in ("nanosleep", "clock_nanosleep"):
            turns.append([])
        else:
            turns[-1].append(name)
    return turns[1:-1]  # neither the start nor the end


def measure_logger(figures, seconds):
    """The same work done by the customary logger: its polls and its saves."""
    with tempfile.TemporaryDirectory() as free, tempfile.TemporaryDirectory() as traced:
        trace = f"{traced}/trace"
        loggers = [Logger(free), Logger(traced, "strace", "-I2", "-o", trace)]
        time.sleep(8)  # past the start
        before = processor_seconds(loggers[0].process.pid)
        time.sleep(seconds)
        used = processor_seconds(loggers[0].process.pid) - before
        for logger in loggers:
            logger.stop()
        with open(trace, encoding="utf-8", errors="replace") as file:
            turns = _turns(file.read())
    figures.add("vnstatd: processor time in 5 minutes", used / seconds * 300 * 1000, "ms")
    for turn in filter(None, turns):
        kind = "save" if "fdatasync" in turn else "poll"
        figures.add(f"vnstatd: system calls of a {kind}", len(turn), "calls")
