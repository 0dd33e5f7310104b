#!/usr/bin/env python3
"""bench/scan_soak.py [ROUNDS [HOSTS]] - so many scans (100) of so many hosts (60) in one program under Wine, on a network
of namespaces. Prints how often something was wrong in them and what the scans cost. Needs root and what bench/run
builds."""
import os
import subprocess
import sys
import threading

from figures import Figures
from scan_networks import NamedNetwork, expected_hosts, run_scans
from wine import WineSession

TICKS = os.sysconf("SC_CLK_TCK")


class Watch:
    """Resident memory (KB, the largest seen) and processor seconds of the programs in a namespace, the scanning program
    apart from Wine's own."""

    def __init__(self, namespace):
        self.inode = os.stat(f"/run/netns/{namespace}").st_ino
        self.memory, self.seconds, self.ended = {}, {}, threading.Event()

    def __enter__(self):
        self.thread = threading.Thread(target=self._watch)
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.ended.set()
        self.thread.join()

    def _watch(self):
        while not self.ended.wait(0.25):
            resident, seconds = {}, {}
            for process in filter(str.isdigit, os.listdir("/proc")):
                try:
                    if os.stat(f"/proc/{process}/ns/net").st_ino != self.inode:
                        continue
                    with open(f"/proc/{process}/stat") as file:
                        name, _, rest = file.read().partition("(")[2].rpartition(")")
                    fields = rest.split()
                except OSError:
                    continue
                kind = "program" if name.startswith("scan_probe") else "rest of Wine"
                resident[kind] = resident.get(kind, 0) + int(fields[21]) * 4
                seconds[kind] = seconds.get(kind, 0) + (int(fields[11]) + int(fields[12])) / TICKS
            for kind in resident:
                self.memory[kind] = max(self.memory.get(kind, 0), resident[kind])
                self.seconds[kind] = max(self.seconds.get(kind, 0), seconds[kind])


def faults_of(results, expected, rounds):
    """How often each kind of fault was seen."""
    faults = {"hangs": rounds - len(results) + sum(result.pending > 0 for result in results),
              "hosts missing": 0, "hosts invented": 0, "hardware addresses missing": 0, "hardware addresses foreign": 0,
              "names missing": 0, "names foreign": 0}
    for result in results:
        faults["hosts invented"] += len(result.hosts.keys() - expected.keys())
        for address, (hardware, name) in expected.items():
            found = result.hosts.get(address)
            if not found:
                faults["hosts missing"] += 1
                continue
            for what, seen, right, nothing in (("hardware addresses", found[0], hardware, "-"),
                                               ("names", found[1], name, b"")):
                if seen != right:
                    faults[f"{what} {'missing' if seen == nothing else 'foreign'}"] += 1
    return faults


def measure_soak(figures, rounds=100, hosts=60):
    with NamedNetwork(hosts, hosts // 3) as (net, names), Watch(net.namespace("device")) as watch:
        wine = WineSession(net)
        expected = expected_hosts(net, names)
        try:
            results, left = run_scans(wine, rounds)
        except subprocess.TimeoutExpired:
            results, left = [], (0, 0)
    faults = faults_of(results, expected, rounds)
    figures.add("repeated scans: faults", sum(faults.values()), f"in {rounds} scans of {len(expected)} hosts")
    for what, count in faults.items():
        if count:
            figures.add(f"repeated scans: {what}", count, "")
    for result in results:
        figures.add("repeated scans: time of one", result.milliseconds / 1000)
    figures.add("repeated scans: threads left", left[0], "")
    figures.add("repeated scans: handles left", left[1], "")
    for kind in watch.memory:
        figures.add(f"scan of {hosts} hosts: processor time of the {kind}", watch.seconds[kind] / max(len(results), 1))
        figures.add(f"scan of {hosts} hosts: resident memory of the {kind} at most", watch.memory[kind] / 1024, "MB")
    figures.add(f"scan of {hosts} hosts: processor time", sum(watch.seconds.values()) / max(len(results), 1))
    return sum(faults.values()) + any(left[:2])


def main(*words):
    figures = Figures()
    wrong = measure_soak(figures, *map(int, words))
    print("\n".join(figures.details()))
    return int(wrong > 0)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
