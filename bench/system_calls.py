"""Counts what programs ask of the kernel, with strace."""
import re
import subprocess
import tempfile

from programs import NATIVE, wine_command

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


def measure_ticks(figures):
    programs = {"natively": [f"{NATIVE}/bench/tick_calls"], "under Wine": wine_command("bench/tick_calls.exe")}
    for system, command in programs.items():
        calls = calls_of_a_tick(command)
        figures.add(f"tick's file work, {system}: system calls", sum(calls.values()), "calls")
        for name, count in sorted(calls.items(), key=lambda item: -item[1]):
            figures.add(f"tick's file work, {system}: `{name}`", count, "")
