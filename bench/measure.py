"""All measurements, as bench/run starts them: times of functions, system calls, and the host as a whole."""
import argparse
import json
import os
import subprocess
import time

from figures import Figures
from library_size import artwork_size
from programs import (NATIVE, WINDOWS, Display, Helper, memory, output_of, processes_of_prefix, processor_seconds,
                      wine_command)
from system_calls import measure_logger, measure_ticks

NATIVE_NAMES = {
    "LogTrafficInMonth/1": "a tick's file work, month of 1 record, natively",
    "LogTrafficInMonth/372": "a tick's file work, month of 372, natively",
    "LogTrafficInMonth/744": "a tick's file work, month of 744, natively",
    "ReadAllFiles": "reading ten full years once, natively",
    "ExportAllFiles": "exporting them, natively",
}
WINDOWS_NAMES = {
    "files 1": "a tick's file work, month of 1 record, under Wine",
    "files 372": "a tick's file work, month of 372, under Wine",
    "files 744": "a tick's file work, month of 744, under Wine",
    "counters": "asking for the adapter's counters, under Wine",
    "whole tick": "a whole tick, month of 744, under Wine",
    "read ten years": "reading ten full years once, under Wine",
    "export ten years": "exporting them, under Wine",
    "strip": "painting the strip's graph, 240x320",
    "whole strip": "painting the whole strip, 240x320",
    "usage read": "reading a full month as a usage view",
    "usage chart": "painting its chart, 240x320",
    "usage table": "painting its table, 240x320",
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
        figures.add(NATIVE_NAMES[row["name"]], row["cpu_time"] / 1000, "µs")


def measure_under_wine(figures):
    for program in ("tick", "log", "paint"):
        for line in output_of(wine_command(f"bench/windows_{program}_bench.exe")).splitlines():
            name, value = line.split("\t")
            if name in WINDOWS_NAMES:
                figures.add(WINDOWS_NAMES[name], float(value), "µs")


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
    figures.add("start of the host to the first strip", (changed - start) * 1000, "ms")
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
            for role, used in after.items():
                share = (used - before[role]) / (time.monotonic() - began)
                figures.add(f"idle: processor time in 5 minutes, {role}", share * 300, "s")
            resident, private = memory(process)
            figures.add("idle: resident memory of the host", resident, "MB")
            figures.add("idle: of it shared with no other process", private, "MB")
            before = after
        host.wait()


def measure_library(figures):
    library = f"{WINDOWS}/quorvane.dll"
    size = os.path.getsize(library)
    figures.add("quorvane.dll", size, "bytes")
    figures.add("quorvane.dll without icons and bitmaps", size - artwork_size(library), "bytes")


def main():
    parser = argparse.ArgumentParser(prog="bench/run")
    parser.add_argument("--seconds", type=int, default=60)
    parser.add_argument("--rounds", type=int, default=5)
    options = parser.parse_args()
    figures, notes = Figures(), []
    with Display() as display:
        print(f"== Times of functions, {options.rounds} rounds", flush=True)
        output_of(wine_command("bench/tick_calls.exe", 0))  # the session's start is not measured
        for _ in range(options.rounds):
            measure_natively(figures)
            measure_under_wine(figures)
        print("== System calls", flush=True)
        measure_ticks(figures, notes)
        print("== Start of the host", flush=True)
        for _ in range(options.rounds):
            measure_start(figures, display)
        print(f"== The idle host, {options.seconds} s", flush=True)
        measure_idle_host(figures, options.seconds)
    print(f"== A customary logger, {options.seconds} s", flush=True)
    measure_logger(figures, options.seconds)
    measure_library(figures)
    figures.print_table()
    print("\n".join(notes))


if __name__ == "__main__":
    main()
