"""A machine with several adapters or none; and the demonstration, which leaves the user's things alone."""
import unittest

from network import Network
from tool import ADAPTER, SCANNER, Tool
from wine import WineSession


class ToolsTest(unittest.TestCase):
    def setUp(self):
        self.net = self.enterContext(Network())
        self.wine = WineSession(self.net)

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


if __name__ == "__main__":
    unittest.main()
