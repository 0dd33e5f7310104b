"""All measurements, as bench/run starts them: times of functions, system calls, the host as a whole, networks, and the
handheld's library."""
import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
import time

from figures import Figures
from library_size import artwork_size
from programs import (NATIVE, ROOT, WINDOWS, Display, Helper, memory, output_of, processes_of_prefix, processor_seconds,
                      wine_command)
from summary import summary
from system_calls import measure_ticks

NATIVE_NAMES = {
    "LogTrafficInMonth/1": "tick's file work, month of 1 record, natively",
    "LogTrafficInMonth/372": "tick's file work, month of 372, natively",
    "LogTrafficInMonth/744": "tick's file work, month of 744, natively",
    "ReadMonth/hourly:0": "reading a month as its days, natively",
    "ReadAllFiles": "reading ten full years once, natively",
    "ExportAllFiles": "exporting ten full years, natively",
}
WINDOWS_NAMES = {
    "files 1": "tick's file work, month of 1 record, under Wine",
    "files 372": "tick's file work, month of 372, under Wine",
    "files 744": "tick's file work, month of 744, under Wine",
    "counters": "asking for the adapter's counters, under Wine",
    "whole tick": "whole tick, month of 744, under Wine",
    "read ten years": "reading ten full years once, under Wine",
    "export ten years": "exporting ten full years, under Wine",
    "strip": "painting the strip's graph, 240x320",
    "whole strip": "painting the whole strip, 240x320",
    "usage read": "reading a full month as a usage view",
    "usage chart": "painting the usage chart, 240x320",
    "usage table": "painting the usage table, 240x320",
    "strip doubled": "painting the strip's graph, 480x640",
    "whole strip doubled": "painting the whole strip, 480x640",
    "usage chart doubled": "painting the usage chart, 480x640",
    "usage table doubled": "painting the usage table, 480x640",
}
SETTLED_AFTER = 1.0  # seconds without a change make a screen complete
SEGMENTS = 5


def measure_natively(figures):
    pattern = "|".join(NATIVE_NAMES)
    report = json.loads(output_of([f"{NATIVE}/bench/quorvane_bench", "--benchmark_format=json", "--benchmark_min_time=0.2",
                                   f"--benchmark_filter=^({pattern})$"]))
    for row in report["benchmarks"]:
        # Processor time: the work is all the process's own, and other programs do not count.
        figures.add(NATIVE_NAMES[row["name"]], row["cpu_time"] / 1e9)


def measure_under_wine(figures):
    for program in ("tick", "log", "paint"):
        for line in output_of(wine_command(f"bench/windows_{program}_bench.exe")).splitlines():
            name, value = line.split("\t")
            if name in WINDOWS_NAMES:
                figures.add(WINDOWS_NAMES[name], float(value) / 1e6)


def measure_start(figures, display):
    """From the command to the last change of the screen before the first second in which nothing changes."""
    blank = pixels = display.pixels()
    start = changed = time.monotonic()
    host = subprocess.Popen(wine_command("todayhost.exe", "--seconds", 8), stdin=subprocess.DEVNULL)
    while pixels == blank or time.monotonic() - changed < SETTLED_AFTER:
        if host.poll() is not None:
            raise SystemExit("bench/run: the host ended before its screen was complete")
        time.sleep(0.005)
        latest = display.pixels()
        if latest != pixels:
            pixels, changed = latest, time.monotonic()
    figures.add("start of the host to a complete screen", changed - start)
    host.wait()


def role_of(name):
    if name.startswith("wineserver"):
        return "wineserver"
    return "the host" if name == "todayhost.exe" else "Wine's services"


def used_by_role(helper):
    used = {"the host": 0.0, "wineserver": 0.0, "Wine's services": 0.0,
            "the Linux helper": processor_seconds(helper.process.pid)}
    for process, name in processes_of_prefix().items():
        if name not in ("wine-run", "bash"):
            used[role_of(name)] += processor_seconds(process)
    return used


def measure_idle_host(figures, seconds):
    """Processor time in five parts of the run, each stated for five minutes; memory at the end of each."""
    with Helper() as helper:
        host = subprocess.Popen(wine_command("todayhost.exe", "--seconds", seconds + 15), stdin=subprocess.DEVNULL)
        time.sleep(8)  # past the start
        process = next(process for process, name in processes_of_prefix().items() if name == "todayhost.exe")
        before = used_by_role(helper)
        for _ in range(SEGMENTS):
            began = time.monotonic()
            time.sleep(seconds / SEGMENTS)
            after = used_by_role(helper)
            took = time.monotonic() - began
            for role, used in after.items():
                figures.add(f"idle: processor time in 5 minutes, {role}", (used - before[role]) / took * 300)
            figures.add("idle: processor time in 5 minutes, all",
                        (sum(after.values()) - sum(before.values())) / took * 300)
            resident, private = memory(process)
            figures.add("idle: resident memory of the host", resident, "MB")
            figures.add("idle: of it shared with no other process", private, "MB")
            before = after
        host.wait()


def measure_library(figures, library, place=""):
    size = os.path.getsize(library)
    figures.add(f"{place}quorvane.dll", size, "bytes")
    figures.add(f"{place}quorvane.dll without icons and bitmaps", size - artwork_size(library), "bytes")


def measure_networks(figures, options):
    """In a process of its own, because making networks takes root."""
    with tempfile.NamedTemporaryFile("r") as file:
        as_root = [] if os.geteuid() == 0 else ["sudo", "env", "PYTHONDONTWRITEBYTECODE=1", f"PATH={os.environ['PATH']}"]
        command = [*as_root, sys.executable, f"{ROOT}/bench/network_figures.py", file.name, options.scans, *options.hosts]
        subprocess.run(list(map(str, command)), stdin=subprocess.DEVNULL, check=True)
        figures.load(file.name)


def measure_handheld(figures):
    """The handheld's library in the model of its processor, which prints a name and a number on a line."""
    library = f"{ROOT}/build/device/quorvane.dll"
    measure_library(figures, library, "handheld: ")
    os.environ["QUORVANE_DEVICE_LIBRARY"] = library
    printed = output_of([f"{NATIVE}/bench/handheld_figures"])
    for name, number in re.findall(r"^([a-z]+(?:_[a-z]+)+) (\d+)$", printed, re.MULTILINE):
        figures.add(f"handheld: {name.replace('_', ' ')}", int(number), "bytes" if "stack" in name else "")


def write_document(figures, path):
    """Replaces what stands between <!-- NAME --> and <!-- end --> by that table."""
    tables = {"summary": summary(figures), "scans": figures.tables.get("scans", []), "figures": figures.details()}
    with open(path, encoding="utf-8") as file:
        text = file.read()
    for name, lines in tables.items():
        table = "\n".join(lines)
        text = re.sub(rf"(<!-- {name} -->\n).*?(<!-- end -->)", lambda found: f"{found[1]}{table}\n{found[2]}", text,
                      flags=re.DOTALL)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def take(figures, options):
    with Display() as display:
        print(f"== Times of functions, {options.rounds} rounds", flush=True)
        output_of(wine_command("bench/tick_calls.exe", 0))  # the session's start is not measured
        for _ in range(options.rounds):
            measure_natively(figures)
            measure_under_wine(figures)
        print("== System calls", flush=True)
        measure_ticks(figures)
        print("== Start of the host", flush=True)
        for _ in range(options.rounds):
            measure_start(figures, display)
        print(f"== The idle host, {options.seconds} s", flush=True)
        measure_idle_host(figures, options.seconds)
    measure_library(figures, f"{WINDOWS}/quorvane.dll")
    print("== Scans, and vnStat, on networks of namespaces", flush=True)
    measure_networks(figures, options)
    print("== The handheld's library", flush=True)
    measure_handheld(figures)


def main():
    parser = argparse.ArgumentParser(prog="bench/run")
    parser.add_argument("--seconds", type=int, default=60)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--scans", type=int, default=20)
    parser.add_argument("--hosts", type=int, nargs="+", default=[12, 60, 200])
    parser.add_argument("--record", action="store_true")
    options = parser.parse_args()
    figures = Figures()
    take(figures, options)
    for table in (summary(figures), figures.tables["scans"], figures.details()):
        print("", *table, sep="\n")
    if options.record:
        write_document(figures, f"{ROOT}/docs/measurements.md")


if __name__ == "__main__":
    main()
