"""The intruder detector on a LAN of hosts whose names and hardware addresses are known; and the library unloaded, while
a scan runs and a thousand times."""
import unittest

from network import DEVICE, GATEWAY, Network, address, hardware
from peers import start_netbios
from tool import DETECTOR, Tool
from wine import WineSession

LIST, DETECT, YES = 1089, 1085, 6
SILENT, BLACK_HOLE = 40, 41  # answers all but echoes; answers ARP alone
LONGEST_SCAN = 15.0  # an echo of 5 s, then a name query of 5 s; the dialog looks once a second


class ScanTest(unittest.TestCase):
    def setUp(self):
        self.net = self.enterContext(Network([2, 10, 20, 254, SILENT, BLACK_HOLE]))
        self.net.set(SILENT, "net.ipv4.icmp_echo_ignore_all=1")
        self.net.ip(BLACK_HOLE, f"route add blackhole {self.net.device}/32")
        self.wine = WineSession(self.net)

    def end(self, tool):
        """Closes the host, which ends with 1 if the library is still loaded then."""
        self.wine.run("taskkill", "/im", "todayhost.exe")
        return tool.host.wait(20)

    def test_hosts_of_every_kind_are_found_every_time(self):
        names = {10: "PRINTER", 20: "FILES-AND-MORE1", 254: "X", SILENT: "SILENT"}
        start_netbios(self.net, names)
        rows = [[names.get(number, ""), address(number), hardware(number).upper()]
                for number in (GATEWAY, 2, 10, 20, DEVICE, 254)]
        with Tool(self.wine, DETECTOR) as tool:
            for _ in range(2):  # the list is in order at the end alone
                tool.tap(DETECT)
                tool.shows([rows], LIST, seconds=LONGEST_SCAN)
            # A tap on the second row and a yes: that host is safe.
            dialog, controls = tool.dialog()
            tool.click(controls[LIST].x - 60, controls[LIST].y - 17)
            tool.wait_for(lambda shown: shown != dialog.number, "the question")
            tool.close(YES)
            with open(f"{self.wine.data}/slist.dat", "rb") as file:
                self.assertEqual(file.read().hex(":"), hardware(2))
            tool.close()
            self.assertEqual(self.end(tool), 0, "the last worker has let go of the library")

    def test_unloaded_during_a_scan_the_library_stays_for_its_workers(self):
        with Tool(self.wine, DETECTOR) as tool:
            tool.tap(DETECT)
            tool.close()
            self.assertEqual(self.end(tool), 1)

    def test_a_thousand_loads_leave_nothing(self):
        self.assertEqual(self.wine.start_host("--reload", 1000).wait(300), 0)  # the host counts handles itself


if __name__ == "__main__":
    unittest.main()
