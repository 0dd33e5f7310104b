"""What the scan benchmarks share: a LAN of plain hosts of which some speak NetBIOS, and the scan in a program of its own."""
import binascii
import dataclasses
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests", "system"))

from network import DEVICE, GATEWAY, Network, address, hardware  # noqa: E402
from peers import start_netbios  # noqa: E402
from wine import ROOT  # noqa: E402

SCAN_PROBE = f"{ROOT}/build/desktop/bench/scan_probe.exe"


NUMBERS = [number for number in range(2, 255) if number != DEVICE]


def expected_hosts(net, names):
    """{address: (hardware address, name)} of all; the device has no row in its own table."""
    return {net.device: ("-", b""),
            **{address(number): (hardware(number), names.get(number, "").encode()) for number in (GATEWAY, *net.hosts)}}


class NamedNetwork:
    """with NamedNetwork(60, 20) as (net, names): so many hosts, real NetBIOS peers on some of them."""

    def __init__(self, hosts, named):
        self.net, self.hosts, self.named = Network(NUMBERS[:hosts]), hosts, named

    def __enter__(self):
        self.net.__enter__()
        numbers = self.net.hosts[::max(1, self.hosts // self.named)][:self.named]
        names = {number: f"HOST-{number}" for number in numbers}
        start_netbios(self.net, names, 120)
        return self.net, names

    def __exit__(self, *_):
        self.net.close()


@dataclasses.dataclass
class Round:
    hosts: dict  # {address: (hardware address, name as bytes, ms after which it was complete)}
    milliseconds: int = 0
    pending: int = 0


def run_scans(wine, rounds, timeout=None):
    """[Round] of so many scans, and (threads, handles, ms of processor time, KB) that they left or took."""
    done = wine.run(SCAN_PROBE, str(rounds), timeout=timeout or 30 + rounds * 40)
    if done.returncode:
        raise RuntimeError(f"scan_probe: {done.returncode} {done.stdout}")
    results, hosts, left = [], {}, None
    for words in map(str.split, done.stdout.splitlines()):
        if words[:1] == ["host"]:
            name = b"" if words[4] == "-" else binascii.unhexlify(words[4])
            hosts[words[2]] = (words[3], name, int(words[1]))
        elif words[:1] == ["round"]:
            results.append(Round(hosts, int(words[1]), int(words[2])))
            hosts = {}
        elif words[:1] == ["left"]:
            left = tuple(map(int, words[1:]))
    return results, left
