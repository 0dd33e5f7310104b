"""The intruder detector on a LAN of hosts whose names and hardware addresses are known, scanned again and again; and
the library unloaded, while a scan runs and a thousand times."""
import contextlib
import os
import time
import unittest

from network import Host, Network, wait_until
from peers import start_netbios
from tool import DETECTOR, Tool
from wine import WineSession

LIST, DETECT, YES = 1089, 1085, 6
LONGEST_SCAN = 15.0  # an echo of 5 s, then a name query of 5 s; the dialog looks once a second


def held(tool):
    """Handles, GDI objects and threads of the host."""
    return *map(int, tool.probe("usage").split()[:2]), len(os.listdir(f"/proc/{tool.host.pid}/task"))


class ScanTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.net = self.enterContext(Network([Host(2), Host(10), Host(20), Host(254), Host(40, "drops"),
                                              Host(41, "blackhole")]))
        self.wine = WineSession(self.net)

    def test_hosts_of_every_kind_are_found_every_time(self):
        names = {10: "PRINTER", 20: "FILES-AND-MORE1", 254: "X", 40: "SILENT"}
        start_netbios(self.net, names)
        found = {1: self.net.gateway_mac, 33: self.net.device_mac,
                 **{number: host.hardware for number, host in self.net.hosts.items() if number not in (40, 41)}}
        rows = [[names.get(number, ""), self.net.address(number), found[number].upper()] for number in sorted(found)]
        with Tool(self.wine, DETECTOR) as tool:
            self.scan(tool, rows)  # what the system itself keeps after a first use is no leak
            before = held(tool)
            for _ in range(3):
                self.scan(tool, rows)
            # One a worker would be a thousand; Wine keeps a few for a while.
            wait_until(lambda: all(now - then < 20 for now, then in zip(held(tool), before)), 20,
                       f"about {before} handles, GDI objects and threads", 1)
            # A tap on the second row and a yes: that host is safe.
            hosts, dialog = tool.dialog().controls[LIST], tool.top()[0]
            tool.click(hosts.x - 60, hosts.y - 17)
            tool.wait_for(lambda shown: shown != dialog, "the question")
            tool.tap_away(YES)
            with open(f"{self.wine.data}/slist.dat", "rb") as file:
                self.assertEqual(file.read().hex(":"), found[2])
            tool.close()
            self.assertEqual(self.end(tool), 0, "the last worker has let go of the library")

    def scan(self, tool, expected):
        """Scans until the list is as expected, which it is in order at the end alone."""
        started = time.monotonic()
        tool.tap(DETECT)
        while (rows := tool.rows(LIST)) != expected and time.monotonic() - started < LONGEST_SCAN:
            time.sleep(0.2)
        self.assertEqual(rows, expected)

    def end(self, tool):
        """Closes the host, which ends with 1 if the library is still loaded then."""
        self.wine.run("taskkill", "/im", "todayhost.exe")
        return tool.host.wait(20)

    def test_unloaded_during_a_scan_the_library_stays_for_its_workers(self):
        with Tool(self.wine, DETECTOR) as tool:
            tool.tap(DETECT)
            tool.close()
            self.assertEqual(self.end(tool), 1)

    def test_a_thousand_loads_leave_nothing(self):
        tool, samples = Tool(self.wine), []
        tool.host = self.wine.start_host("--reload", 1000)
        while tool.host.poll() is None:
            time.sleep(2)
            with contextlib.suppress(RuntimeError), open(f"/proc/{tool.host.pid}/statm") as file:
                samples.append((held(tool)[1], int(file.read().split()[1])))
        self.assertEqual(tool.host.returncode, 0)  # the host counts handles itself
        # GDI objects and pages while it is loaded, in the second half beside the first.
        half = len(samples) // 2
        for earlier, later, few in zip(zip(*samples[:half]), zip(*samples[half:]), (10, 100)):
            self.assertLess(max(later) - max(earlier), few, samples)


if __name__ == "__main__":
    unittest.main()
