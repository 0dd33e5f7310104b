#!/usr/bin/env python3
"""bench/scan_soak.py [ROUNDS [HOSTS]] - so many scans (100) of so many hosts (60) in one program under Wine, on a network
of namespaces. Prints what was wrong in any of them and what the scans cost. Needs root and the desktop build with the
benchmarks, which bench/run makes."""
import os
import statistics
import subprocess
import sys
import threading
import time

from scan_networks import NamedNetwork, run_scans
from scan_test import expected_hosts
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
                kind = "program" if name.startswith("scan_probe") else "wine"
                resident[kind] = resident.get(kind, 0) + int(fields[21]) * 4
                seconds[kind] = seconds.get(kind, 0) + (int(fields[11]) + int(fields[12])) / TICKS
            for kind in resident:
                self.memory[kind] = max(self.memory.get(kind, 0), resident[kind])
                self.seconds[kind] = max(self.seconds.get(kind, 0), seconds[kind])


def main(rounds=100, hosts=60):
    with NamedNetwork(hosts, hosts // 3) as (net, names), WineSession(net) as wine, Watch(net.namespace("device")) as watch:
        expected = expected_hosts(net, names)
        started = time.monotonic()
        try:
            results, left = run_scans(wine, rounds)
        except subprocess.TimeoutExpired:
            print("the program hung")
            return 1
        elapsed = time.monotonic() - started
    wrong = {"hangs": rounds - len(results) + sum(result.pending > 0 for result in results),
             "hosts missing": 0, "hosts invented": 0, "hardware addresses missing": 0, "hardware addresses foreign": 0,
             "names missing": 0, "names foreign": 0}
    for result in results:
        wrong["hosts invented"] += len(result.hosts.keys() - expected.keys())
        for address, (hardware, name) in expected.items():
            found = result.hosts.get(address)
            if not found:
                wrong["hosts missing"] += 1
                continue
            for what, seen, right, nothing in (("hardware addresses", found[0], hardware, "-"),
                                               ("names", found[1], name, b"")):
                if seen != right:
                    wrong[f"{what} {'missing' if seen == nothing else 'foreign'}"] += 1
    took = [result.milliseconds / 1000 for result in results]
    print(f"{len(results)} scans of {len(expected)} hosts, {len(names)} of them with names, in {elapsed:.0f} s")
    print(", ".join(f"{what} {count}" for what, count in wrong.items()))
    print(f"seconds a scan: median {statistics.median(took):.2f}, most {max(took):.2f}")
    print(f"threads left {left[0]}, handles left {left[1]}")
    for kind in watch.memory:
        print(f"{kind}: {watch.seconds[kind] / len(results):.2f} s of processor time a scan,"
              f" {watch.memory[kind] / 1024:.0f} MB resident at most")
    return int(any(wrong.values()) or left[:2] != (0, 0))


if __name__ == "__main__":
    sys.exit(main(*map(int, sys.argv[1:])))
