#!/usr/bin/env python3
"""bench/scan_compare.py [HOSTS...] - the detector's scan beside what a person would use instead, on the same network of
namespaces (12, 60 and 200 hosts): the time to the complete list and what is in it. Needs root, what bench/run builds, fping,
nbtscan and nmap."""
import re
import sys
import time

from figures import Figures
from scan_networks import NamedNetwork, expected_hosts, run_scans
from wine import WineSession

RUNS = 5
COUNTS = (12, 60, 200)
SUBNET = "192.168.7.0/24"
TABLE = "scans"


def timed(net, *command):
    started = time.monotonic()
    text = net.run("device", command, timeout=120).stdout
    return time.monotonic() - started, text


def forget_neighbours(net):
    """Each run starts with an empty ARP table, as the first look at a network does."""
    net.ip("device", "neigh flush dev eth0")


def fping_then_nbtscan(net):
    pinging, alive = timed(net, "fping", "-a", "-q", "-r1", "-g", SUBNET)
    asking, named = timed(net, "nbtscan", "-q", "-s", "\t", SUBNET)
    hosts = {line.strip(): ["", ""] for line in alive.splitlines() if re.fullmatch(r"[\d.]+", line.strip())}
    for line in named.splitlines():
        address, name = [part.strip() for part in line.split("\t")[:2]] if "\t" in line else ("", "")
        if address in hosts:
            hosts[address][1] = name
    return pinging + asking, hosts


def nmap(net):
    seconds, text = timed(net, "nmap", "-sn", "-n", SUBNET)
    hosts, address = {}, None
    for line in text.splitlines():
        if found := re.match(r"Nmap scan report for ([\d.]+)", line):
            address = found[1]
            hosts[address] = ["", ""]
        elif found := re.match(r"MAC Address: (\S+)", line):
            hosts[address][0] = found[1].lower()
    return seconds, hosts


def score(hosts, expected):
    """(hosts found and right, hosts not expected, right hardware addresses, right names)."""
    return (len(hosts.keys() & expected.keys()), len(hosts.keys() - expected.keys()),
            sum(mac not in ("", "-") and expected.get(address, ("", ""))[0] == mac for address, (mac, _) in hosts.items()),
            sum(bool(name) and expected.get(address, ("", ""))[1] == name for address, (_, name) in hosts.items()))


def add_runs(figures, count, tool, runs, expected):
    name = f"scan of {count} hosts: {tool}"
    for seconds, _ in runs:
        figures.add(name, seconds)
    columns = [f"{min(column)}" if min(column) == max(column) else f"{min(column)} to {max(column)}"
               for column in zip(*(score(hosts, expected) for _, hosts in runs))]
    figures.add_row(TABLE, f"| {count}", tool, figures.text(name),
                    f"{figures.text(name, min)} to {figures.text(name, max)}", *columns[:3], f"{columns[3]} |")


def compare(figures, count):
    with NamedNetwork(count, {12: 5, 60: 20}.get(count, 25)) as (net, names):
        wine = WineSession(net)
        expected = {address: (hardware, name.decode())
                    for address, (hardware, name) in expected_hosts(net, names).items()}
        known = sum(hardware != "-" for hardware, _ in expected.values())
        if not figures.tables.get(TABLE):
            figures.add_row(TABLE, "| hosts", "", "median", "lowest to highest", "found", "invented", "hardware", "names |")
            figures.add_row(TABLE, *["|---" * 8 + "|"])
        ours, complete = [], []
        for _ in range(RUNS):
            forget_neighbours(net)
            result = run_scans(wine, 1)[0][0]
            hosts = {address: (hardware, name.decode()) for address, (hardware, name, _) in result.hosts.items()}
            ours.append((result.milliseconds / 1000, hosts))
            complete.append((max(when for _, _, when in result.hosts.values()) / 1000, hosts))
        add_runs(figures, count, "Quorvane", ours, expected)
        add_runs(figures, count, "Quorvane, to the last host's row", complete, expected)
        for title, tool in (("fping, then nbtscan", fping_then_nbtscan), ("nmap", nmap)):
            runs = []
            for _ in range(RUNS):
                forget_neighbours(net)
                runs.append(tool(net))
            add_runs(figures, count, title, runs, expected)
        figures.add_row(TABLE, f"| {count}", "*what is there*", "", "", len(expected), 0, known, f"{len(names)} |")


def measure_comparison(figures, counts=COUNTS):
    for count in counts:
        compare(figures, count)


if __name__ == "__main__":
    taken = Figures()
    measure_comparison(taken, list(map(int, sys.argv[1:])) or COUNTS)
    print("\n".join(taken.tables[TABLE]))
