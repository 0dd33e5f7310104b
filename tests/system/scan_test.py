"""The intruder detector on LANs of hosts whose names and hardware addresses are known, scanned again and again."""
import time
import unittest

from network import Host, Network, plain_hosts, wait_until
from peers import HOSTILE_REPLIES, HostileNetbios, NetbiosPeers
from tool import DETECTOR, Tool
from wine import WineSession

LIST, EXPORT, DETECT = 1089, 1090, 1085
LONGEST_SCAN = 15.0  # an echo of 5 s, then a name query of 5 s; the dialog looks once a second
ROUNDS = 4


def expected_hosts(net, names):
    """{address: (hardware address, name)} of all that answer an echo within 5 s; the device has no row in its own table."""
    found = {net.address("device"): ("-", b""), net.address("gateway"): (net.gateway_mac, b"")}
    for host in net.hosts.values():
        if host.behaviour == "answers" or (host.behaviour == "late" and host.delay < 5):
            for number in (host.number, *host.also):
                found[net.address(number)] = (host.hardware, names.get(host.number, "").encode())
    return found


class ScanTest(unittest.TestCase):
    maxDiff = None

    def enter(self, hosts):
        self.net = self.enterContext(Network(hosts))
        self.wine = self.enterContext(WineSession(self.net))

    def scan(self, tool, expected):
        """Scans until the list is as expected, which it is in order at the end alone."""
        started = time.monotonic()
        tool.press(DETECT)
        while (rows := tool.rows(LIST)) != expected and time.monotonic() - started < LONGEST_SCAN:
            time.sleep(0.2)
        self.assertEqual(rows, expected)

    def scan_all(self, names, rounds):
        expected = expected_hosts(self.net, names)
        expected[self.net.address("device")] = (self.net.device_mac, b"")
        numbers = sorted(expected, key=lambda address: int(address.rpartition(".")[2]))
        rows = [[expected[address][1].decode(), address, expected[address][0].upper()] for address in numbers]
        with Tool(self.wine, DETECTOR) as tool:
            self.scan(tool, rows)  # what the system itself keeps after a first use is no leak
            before = self.usage(tool)
            for _ in range(rounds):
                self.scan(tool, rows)
            # One a worker would be a thousand; Wine keeps a few for a while.
            wait_until(lambda: all(now - then < 20 for now, then in zip(self.usage(tool), before)), 20,
                       f"about {before} handles, GDI objects and threads", 1)

    def usage(self, tool):
        handles, gdi_objects, _, threads, _ = map(int, tool.probe("usage").split())
        return handles, gdi_objects, threads

    def test_hosts_of_every_kind_are_found_every_time(self):
        self.enter([Host(2), Host(10), Host(11), Host(20), Host(60), Host(254), Host(30, also=(31,)), Host(40, "drops"),
                    Host(41, "blackhole"), Host(50, "late", delay=3), Host(51, "late", delay=8), Host(100)])
        names = {10: "PRINTER", 20: "FILES-AND-MORE1", 30: "TWO-NUMBERS", 100: "X", 40: "SILENT", 50: "LATE"}
        NetbiosPeers(self.net, names)
        self.scan_all(names, ROUNDS)

    def test_sixty_hosts_are_found_every_time(self):
        self.enter(plain_hosts(60))
        names = {number: f"HOST-{number}" for number in list(self.net.hosts)[::6]}
        NetbiosPeers(self.net, names, 60)
        self.scan_all(names, ROUNDS)

    def test_hostile_names_are_refused_or_taken_as_they_are(self):
        self.enter(plain_hosts(len(HOSTILE_REPLIES)))
        for number, kind in zip(self.net.hosts, HOSTILE_REPLIES):
            HostileNetbios(self.net, number, kind)
        taken = {"good": "GOOD", "75 bytes": "LEAST", "1024 bytes": "LARGE", "flood": "FLOOD"}
        names = {number: taken.get(kind, "") for number, kind in zip(self.net.hosts, HOSTILE_REPLIES)}
        self.scan_all(names, 1)


if __name__ == "__main__":
    unittest.main()
