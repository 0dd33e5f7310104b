"""The DHCP dialog on a lease that dhclient has from dnsmasq: what it shows, release, renewal, and all that may be gone."""
import re
import signal
import time
import unittest

from network import Network, wait_until
from peers import DhcpClient, DhcpServer
from tool import Tool
from wine import WineSession

BOUND_SECONDS = 300
TITLE, SERVER, OBTAINED, EXPIRES, RELEASE, RENEW, ADDRESS = 1001, 1002, 1003, 1004, 1005, 1006, 1023
LEASE = (TITLE, ADDRESS, SERVER, OBTAINED, EXPIRES)
NO_LEASE = ["DHCP is not enabled.", "", "", "", ""]
TAP = (90, 10)
LEASE_SECONDS = 120


def as_text(seconds):
    """A lease time in UTC, moved to the zone by the caller."""
    parts = time.gmtime(seconds)
    return time.strftime("%a. %b ", parts) + str(parts.tm_mday) + time.strftime(", %Y %H:%M:%S", parts)


class DhcpDialogTest(unittest.TestCase):
    def enter(self, zone="UTC", helper=True):
        self.net = self.enterContext(Network(device_number=None))
        self.server = DhcpServer(self.net, lease=f"{LEASE_SECONDS}s")
        self.client = DhcpClient(self.net)
        self.wine = self.enterContext(WineSession(self.net, TZ=zone))
        self.helper = self.wine.start_helper() if helper else None

    def open(self):
        return self.enterContext(Tool(self.wine, *TAP))

    def buttons(self, tool):
        controls = tool.dialog()[1]
        return [controls[number].enabled for number in (RELEASE, RENEW)]

    def lease(self, zone_seconds=0):
        """The lines as dhclient's own lease file has them."""
        with open(self.client.lease_file) as file:
            last = file.read().rpartition("lease {")[2]
        expires = time.mktime(time.strptime(re.search(r"expire \d (\S+ \S+);", last)[1], "%Y/%m/%d %H:%M:%S"))
        expires -= time.timezone
        return ["DHCP Information", re.search(r"fixed-address (\S+);", last)[1], self.net.address("gateway"),
                as_text(expires - LEASE_SECONDS + zone_seconds), as_text(expires + zone_seconds)]

    def answer_message(self, tool):
        """Closes the message box that comes and returns its caption and text. Only a message box has a caption."""
        caption, controls = wait_until(lambda: (shown := tool.dialog(60))[0] and shown, 60, "a message box", 0.1)
        tool.press(1)
        return caption, "".join(control.text for control in controls.values() if control.kind == "Static")

    def test_the_lease_is_shown_released_and_renewed(self):
        self.enter()
        tool = self.open()
        self.assertEqual(tool.texts(*LEASE), self.lease())
        self.assertEqual(tool.texts(ADDRESS), [self.client.address()])
        tool.press(RELEASE)
        self.assertEqual(tool.texts(*LEASE), ["DHCP Information", "", "", "", ""])
        self.assertEqual(self.client.address(), "")
        self.assertEqual(self.server.leases(), [])
        tool.press(RENEW)
        self.assertEqual(self.answer_message(tool), (
            "Infomation", "DHCP IP address renewed. Please wait a few seconds to take it effect."))
        self.assertEqual(tool.texts(*LEASE), self.lease())
        self.assertEqual([lease[2] for lease in self.server.leases()], tool.texts(ADDRESS))
        # Renewed once more, the lease ends later.
        before = tool.texts(EXPIRES)
        time.sleep(2)
        tool.press(RENEW)
        self.answer_message(tool)
        self.assertEqual(tool.texts(*LEASE), self.lease())
        self.assertNotEqual(tool.texts(EXPIRES), before)

    def test_times_are_those_of_the_zone(self):
        self.enter(zone="Asia/Kolkata")
        self.assertEqual(self.open().texts(*LEASE), self.lease(5 * 3600 + 1800))

    def test_a_server_that_is_gone_fails_the_renewal_and_changes_nothing(self):
        self.enter()
        tool = self.open()
        shown = tool.texts(*LEASE)
        self.server.stop()
        started = time.monotonic()
        tool.press(RENEW)
        self.assertEqual(self.answer_message(tool), ("Error", "Renew DHCP Address Error!"))
        self.assertLess(time.monotonic() - started, 60)
        self.assertEqual(tool.texts(*LEASE), shown)
        self.assertEqual(self.buttons(tool), [True, True])

    def test_without_the_helper_there_is_no_lease(self):
        self.enter(helper=False)
        tool = self.open()
        self.assertEqual(tool.texts(*LEASE), NO_LEASE)
        self.assertEqual(self.buttons(tool), [False, False])

    def test_a_helper_that_falls_silent_or_dies_costs_seconds(self):
        self.enter(helper=False)
        for ending in (signal.SIGKILL, signal.SIGSTOP):
            with self.subTest(ending=ending):
                self.helper = self.wine.start_helper()
                with Tool(self.wine, *TAP) as tool:
                    self.helper.send_signal(ending)
                    started = time.monotonic()
                    tool.press(RELEASE)
                    self.assertEqual(self.answer_message(tool), ("Error", "Release DHCP Address Error!"))
                    self.assertLess(time.monotonic() - started, 60)
                started = time.monotonic()
                with Tool(self.wine, *TAP) as tool:
                    self.assertEqual(tool.texts(*LEASE), NO_LEASE)
                    self.assertLess(time.monotonic() - started, 20)


if __name__ == "__main__":
    unittest.main()
