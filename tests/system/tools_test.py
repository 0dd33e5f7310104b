"""The intruder detector on a LAN of hosts whose names and hardware addresses are known; the library unloaded, while a
scan runs and a thousand times; a machine with several adapters or none; and the demonstration."""
import unittest

from network import DEVICE, GATEWAY, Network, address, hardware, wait_until
from peers import start_netbios
from tool import ADAPTER, DETECTOR, SCANNER, Tool
from wine import WineSession

LIST, DETECT, YES = 1089, 1085, 6
SILENT, BLACK_HOLE = 40, 41  # answers all but echoes; answers ARP alone


class ToolsTest(unittest.TestCase):
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
            for _ in range(2):
                tool.tap(DETECT)
                wait_until(lambda: tool.texts(LIST) != [rows], 5, "it begins anew")
                # An echo takes 5 s at most, then a name query 5 s; the list is in order at the end alone.
                tool.shows([rows], LIST, seconds=15)
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

    def test_the_adapter_of_the_default_route_counts_at_every_size_and_none_is_told(self):
        self.net.ip("device", "link add first up type veth peer name other", "addr add 10.9.8.7/13 dev first",
                    "link set other up", "link add down type veth peer name lost")
        own, other = ["Adapter - eth0", "192.168.7.33", "255.255.255.0"], ["Adapter - first", "10.9.8.7", "255.248.0.0"]
        for size, command, expected in (("240x320", "route replace default via 192.168.7.1", own),
                                        ("320x240", "route replace default via 10.9.8.1", other),
                                        ("480x640", "link del first", own),
                                        ("640x480", "addr flush dev eth0", ["Adapter - eth0", "0.0.0.0", "0.0.0.0"]),
                                        ("240x320", "link del eth0", ["", "", ""])):
            self.net.ip("device", command)
            with self.subTest(command=command), Tool(self.wine, ADAPTER, size=size) as tool:
                self.assertEqual(tool.texts(1014, 1018, 1019), expected)

    def test_the_demonstration_shows_its_own_network_and_leaves_the_users_things_alone(self):
        self.wine.set_value("XLocation", "40")
        with Tool(self.wine, SCANNER, more=["--demo"]) as tool:
            self.assertIn(["", "Lighthouse"], tool.texts(1059)[0])
            self.assertEqual(tool.texts(1039), ["Harbour Office"])
        self.assertEqual(self.wine.logs(), [])
        self.assertEqual([self.wine.value(name) for name in ("XLocation", "Adapter", "InstallDir")], ["40", None, None])
