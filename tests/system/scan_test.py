"""The intruder detector on a LAN of hosts whose names and hardware addresses are known, scanned again and again."""
import os
import time
import unittest

from network import Host, Network, wait_until
from peers import HOSTILE_REPLIES, start_hostile_netbios, start_netbios
from tool import DETECTOR, Tool
from wine import WineSession

LIST, DETECT = 1089, 1085
LONGEST_SCAN = 15.0  # an echo of 5 s, then a name query of 5 s; the dialog looks once a second
ROUNDS = 3


class ScanTest(unittest.TestCase):
    maxDiff = None

    def test_hosts_of_every_kind_are_found_every_time_and_hostile_names_are_refused_or_taken_as_they_are(self):
        hostile = dict(zip(range(60, 70), HOSTILE_REPLIES))
        hosts = [Host(2), Host(10), Host(20), Host(254), Host(40, "drops"), Host(41, "blackhole"), Host(51, "late", 8),
                 Host(50, "late", 3), *map(Host, hostile)]
        net = self.enterContext(Network(hosts))
        wine = WineSession(net)
        names = {10: "PRINTER", 20: "FILES-AND-MORE1", 254: "X", 40: "SILENT", 50: "LATE"}
        start_netbios(net, names)
        for number, kind in hostile.items():
            start_hostile_netbios(net, number, kind)
            names[number] = {"75 bytes": "LEAST", "1024 bytes": "LARGE", "flood": "FLOOD"}.get(kind, "")
        found = {1: net.gateway_mac, 33: net.device_mac,
                 **{number: host.hardware for number, host in net.hosts.items() if number not in (40, 41, 51)}}
        rows = [[names.get(number, ""), net.address(number), found[number].upper()] for number in sorted(found)]
        with Tool(wine, DETECTOR) as tool:
            self.scan(tool, rows)  # what the system itself keeps after a first use is no leak
            before = self.usage(tool)
            for _ in range(ROUNDS):
                self.scan(tool, rows)
            # One a worker would be a thousand; Wine keeps a few for a while.
            wait_until(lambda: all(now - then < 20 for now, then in zip(self.usage(tool), before)), 20,
                       f"about {before} handles, GDI objects and threads", 1)

    def scan(self, tool, expected):
        """Scans until the list is as expected, which it is in order at the end alone."""
        started = time.monotonic()
        tool.press(DETECT)
        while (rows := tool.rows(LIST)) != expected and time.monotonic() - started < LONGEST_SCAN:
            time.sleep(0.2)
        self.assertEqual(rows, expected)

    def usage(self, tool):
        return *map(int, tool.probe("usage").split()[:2]), len(os.listdir(f"/proc/{tool.host.pid}/task"))


if __name__ == "__main__":
    unittest.main()
