#!/usr/bin/env python3
"""bench/scan_compare.py [HOSTS...] - the detector's scan beside what a person would use instead, on the same network of
namespaces (12, 60 and 200 hosts): the time to the complete list and what is in it. Needs root, what bench/run builds, fping,
nbtscan and nmap."""
import re
import statistics
import sys
import time

from scan_networks import NamedNetwork, run_scans
from scan_test import expected_hosts
from wine import WineSession

RUNS = 5
SUBNET = "192.168.7.0/24"


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


def show(title, runs, expected):
    scores = [score(hosts, expected) for _, hosts in runs]
    seconds = [taken for taken, _ in runs]
    columns = [f"{min(column)}" if min(column) == max(column) else f"{min(column)}-{max(column)}"
               for column in zip(*scores)]
    print(f"{title:34} {statistics.median(seconds):5.2f} ({min(seconds):.2f}-{max(seconds):.2f})"
          f"  {columns[0]:>7} {columns[1]:>8} {columns[2]:>9} {columns[3]:>6}", flush=True)


def compare(count):
    with NamedNetwork(count, {12: 5, 60: 20}.get(count, 25)) as (net, names), WineSession(net) as wine:
        expected = {address: (hardware, name.decode())
                    for address, (hardware, name) in expected_hosts(net, names).items()}
        known = sum(hardware != "-" for hardware, _ in expected.values())
        print(f"\n{count} hosts, the gateway and the device: {len(expected)} answer, {known} have a foreign hardware"
              f" address, {len(names)} speak NetBIOS")
        print(f"{'':34} {'seconds (of ' + str(RUNS) + ')':19}  {'hosts':>7} {'invented':>8} {'hardware':>9} {'names':>6}")
        ours, complete = [], []
        for _ in range(RUNS):
            forget_neighbours(net)
            result = run_scans(wine, 1)[0][0]
            hosts = {address: (hardware, name.decode()) for address, (hardware, name, _) in result.hosts.items()}
            ours.append((result.milliseconds / 1000, hosts))
            complete.append((max(when for _, _, when in result.hosts.values()) / 1000, hosts))
        show("Quorvane, whole scan", ours, expected)
        show("Quorvane, last host listed", complete, expected)
        for title, tool in (("fping -g -r1, then nbtscan", fping_then_nbtscan), ("nmap -sn -n (as root)", nmap)):
            runs = []
            for _ in range(RUNS):
                forget_neighbours(net)
                runs.append(tool(net))
            show(title, runs, expected)


if __name__ == "__main__":
    for hosts in map(int, sys.argv[1:] or (12, 60, 200)):
        compare(hosts)
