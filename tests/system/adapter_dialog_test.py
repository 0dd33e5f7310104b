"""The adapter dialog of the real library on a real adapter, field by field beside what the kernel says."""
import json
import re
import unittest

from network import Network
from tool import Tool
from wine import WineSession

BOUND_SECONDS = 200
TITLE, MAC, TYPE, SPEED, ADDRESS, MASK, GATEWAY = range(1014, 1021)
DNS, SECOND_DNS, WINS = 1021, 1036, 1022
FIELDS = (TITLE, MAC, TYPE, SPEED, ADDRESS, MASK, GATEWAY, DNS, SECOND_DNS, WINS)
PAGE_HEADER, PROPERTIES = 1000, 1011
TAP = {"240x320": (130, 10), "320x240": (130, 10), "480x640": (260, 20)}


def as_mask(prefix_length):
    bits = (1 << 32) - (1 << 32 - prefix_length)
    return ".".join(str(bits >> shift & 255) for shift in (24, 16, 8, 0))


class AdapterDialogTest(unittest.TestCase):
    def enter(self, **options):
        self.net = self.enterContext(Network(**options))
        self.wine = self.enterContext(WineSession(self.net, TZ="UTC"))

    def ask_kernel(self, *words):
        return json.loads(self.net.run("device", ["ip", "-j", *words]).stdout)

    def truth(self):
        """The same fields from ip and resolv.conf."""
        route = self.ask_kernel("route", "show", "default")[0]
        link = self.ask_kernel("link", "show", route["dev"])[0]
        address = next(entry for entry in self.ask_kernel("-4", "addr", "show", route["dev"])[0]["addr_info"])
        with open(f"/etc/netns/{self.net.namespace('device')}/resolv.conf") as file:
            servers = re.findall(r"nameserver (\S+)", file.read())
        megabits = int(self.net.run("device", ["cat", f"/sys/class/net/{route['dev']}/speed"]).stdout)
        return [f"Adapter - {route['dev']}", link["address"].upper(), "ethernet", f"{min(megabits, 4294)} Mbps", address["local"],
                as_mask(address["prefixlen"]), route["gateway"], *servers[:2], *[None] * (2 - len(servers)), "N/A"]

    def shown(self, size="240x320"):
        with Tool(self.wine, *TAP[size], size=size) as tool:
            return tool.texts(*FIELDS)

    def test_every_field_is_what_the_kernel_says(self):
        self.enter(resolver=("192.168.7.1", "10.77.0.53", "10.77.0.54"))
        for size in ("240x320", "480x640"):
            self.assertEqual(self.shown(size), self.truth())
        wide = self.truth()
        wide[7:9] = [", ".join(wide[7:9]), None]
        self.assertEqual(self.shown("320x240"), wide)

    def test_the_adapter_of_the_default_route_counts_among_several(self):
        self.enter(resolver=("192.168.7.1",))
        self.net.ip("device", "link add first up type veth peer name other", "addr add 10.9.8.7/13 dev first",
                    "link set other up", "link add down type veth peer name lost")
        shown = self.shown()
        shown[8] = shown[8] or None
        self.assertEqual(shown, self.truth())
        # The route moves: so does the dialog.
        self.net.ip("device", "route del default", "route add default via 10.9.8.1 dev first")
        shown = self.shown()
        shown[8] = shown[8] or None
        self.assertEqual(shown, self.truth())
        self.assertEqual(shown[5], "255.248.0.0")

    def test_an_adapter_without_an_address_is_shown_as_such_and_none_by_the_message(self):
        self.enter(device_number=None)
        self.net.detach_device()
        for state in ("never seen", "gone"):
            with self.subTest(state=state), Tool(self.wine, *TAP["240x320"]) as tool:
                self.assertEqual(tool.texts(TITLE, ADDRESS),
                                 ["No adapter is available." if state == "never seen" else "", ""])
            if state == "never seen":
                self.net.attach_device()
                self.assertEqual(self.shown()[4:7], ["0.0.0.0"] * 3)
                self.net.detach_device()

    def test_the_options_name_the_same_adapter_and_close_both_their_windows(self):
        self.enter()
        with Tool(self.wine) as tool:
            self.assertEqual(tool.texts(PAGE_HEADER), ["Today: Quorvane"])
            rows = dict(tool.rows(PROPERTIES))
            truth = self.truth()
            self.assertEqual([rows[name] for name in ("Adapter", "Type", "Speed", "IP Address", "MAC Address")],
                             [truth[0].removeprefix("Adapter - "), truth[2], truth[3], truth[4], truth[1]])
            tool.press(1)
            tool.probe("gone", 5)
            self.assertIsNone(tool.host.poll(), "the host ended")


if __name__ == "__main__":
    unittest.main()
