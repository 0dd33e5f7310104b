"""A day and two hours in the life of the real library: traffic in every hour of a scripted clock, a month that turns,
and all that happens to a network meanwhile. Every tool is opened by taps, and what it shows stands beside what the
kernel, the peers and their own files say."""
import calendar
import collections
import ipaddress
import operator
import os
import re
import subprocess
import time
import unittest

from network import Network, hardware, stop, wait_until
from peers import DhcpClient, DhcpServer, start_echo_server
from tool import ADAPTER, CARD, DHCP, GRAPH, PING, SCANNER, SCREEN_BOTTOM, SIGNAL, USAGE, Tool
from wine import Clock, WineSession

TICK = 2.0
LAST_DAY = calendar.timegm((2027, 2, 28, 0, 10, 0))
ZONE, AHEAD = "Asia/Kolkata", 19800
LEASE_LINES = (1001, 1023, 1002, 1003, 1004)
LEASE_SECONDS = 7200


def as_text(seconds):
    return time.strftime("%a. %b %-d, %Y %H:%M:%S", time.gmtime(seconds + AHEAD))


def plus(octets, more):
    return tuple(map(operator.add, octets, more))


def minus(octets, others):
    return tuple(map(operator.sub, octets, others))


class DayTest(unittest.TestCase):
    maxDiff = None

    # The bookkeeping

    def at(self, hour):
        self.now = time.gmtime(LAST_DAY + hour * 3600)
        self.clock.set(LAST_DAY + hour * 3600 - AHEAD)

    def account(self):
        """Books what the kernel counted since the last time to this hour, once the log has taken it; returns it."""

        def agreed():
            counted = self.net.counters()
            gain = minus(counted, self.counted)
            return self.wine.logged() == plus(self.booked, gain) and (counted, gain)

        self.counted, gain = wait_until(agreed, 15, "the log is what the kernel counted")
        self.book(gain)
        return gain

    def book(self, gain):
        self.booked = plus(self.booked, gain)
        hour = time.strftime("%Y%m.log", self.now), self.now.tm_mday, self.now.tm_hour
        self.hours[hour] = plus(self.hours[hour], gain)

    def ping_hosts(self, *sizes):
        """More is sent than received: the second one brings no answer."""
        for number, size in zip((10, 40), sizes):
            self.net.run("device", ["ping", "-q", "-c1", "-W0.1", f"-s{size}", self.net.address(number)])

    def start_host(self):
        """From when the adapter rests, all is accounted for; the first tick only looked."""
        self.tool = self.enterContext(Tool(self.wine, **self.clock.environment))
        time.sleep(TICK)

        def rested():
            before = self.net.counters(), self.wine.logged()
            time.sleep(1.5 * TICK)
            return before == (self.net.counters(), self.wine.logged()) and before

        self.counted, logged = wait_until(rested, 60, "the adapter rests")
        self.book(minus(logged, self.booked))

    # What other programs say

    def adapter(self):
        """The fields of the adapter dialog: title, MAC, type, speed, address, mask, gateway, DNS."""
        route, = self.net.ask_ip("device", "route", "show", "default")
        link, = self.net.ask_ip("device", "addr", "show", route["dev"])
        inet = ipaddress.ip_interface("{local}/{prefixlen}".format_map(link["addr_info"][0]))
        server = self.net.run("device", ["cat", "/etc/resolv.conf"]).stdout.split()[1]
        megabits = int(self.net.run("device", ["cat", f"/sys/class/net/{route['dev']}/speed"]).stdout)
        return [f"Adapter - {route['dev']}", link["address"].upper(), "ethernet", f"{min(megabits, 4294)} Mbps",
                str(inet.ip), str(inet.netmask), route["gateway"], server]

    def lease(self):
        """The lines of the DHCP dialog as dhclient's own lease file has them."""
        with open(self.client.lease_file) as file:
            last = file.read().rpartition("lease {")[2]
        expires = calendar.timegm(time.strptime(re.search(r"expire \d (\S+ \S+);", last)[1], "%Y/%m/%d %H:%M:%S"))
        return ["DHCP Information", re.search(r"fixed-address (\S+);", last)[1], self.net.address("gateway"),
                as_text(expires - LEASE_SECONDS), as_text(expires)]

    # What the tools say

    def shows(self, expected, *numbers):
        """The controls come to show that."""
        end = time.monotonic() + 20
        while (shown := self.tool.texts(*numbers)) != expected and time.monotonic() < end:
            time.sleep(0.1)
        self.assertEqual(shown, expected)

    def see_the_graph(self):
        """Heights are cut percentages of the full scale, which is the same for every sample from 10 to 100 KB."""
        self.tool.open(GRAPH)
        for size in (10_000, 15_000):
            self.ping_hosts(size, size)
            time.sleep(TICK)
        gain = self.account()
        time.sleep(1.5 * TICK)  # until it has painted itself again
        dialog, monitor = self.tool.top(), self.tool.monitor()
        for colour, octets in zip((0x0000FF, 0xFF0000), gain):
            # The line's round end is a pixel above its last.
            heights = [max((height for height in range(101)
                            if monitor[dialog.y + 16 + 113 - height, dialog.x + 4 + 7 * column] & 0xFFFFFF == colour),
                           default=0) for column in range(5, 25)]
            columns = sum(height > 0 for height in heights)
            self.assertTrue(0 <= octets - 1024 * sum(heights) < 1024 * (columns + 1), (colour, octets, heights))
        self.tool.close()

    def see_adapter(self):
        self.tool.open(ADAPTER)
        self.shows(self.adapter(), *range(1014, 1022))
        self.tool.close()

    def see_lease(self):
        self.tool.open(DHCP)
        self.shows(self.lease(), *LEASE_LINES)
        self.assertEqual(self.tool.texts(1023), [self.client.address()])

    def see_the_lease_and_the_public_address(self):
        self.see_lease()
        self.tool.tap(1084)
        self.shows([self.client.address()], 1083)
        self.tool.close()

    def release_and_renew(self):
        self.see_lease()
        self.tool.tap(1005)
        self.shows(["DHCP Information", "", "", "", ""], *LEASE_LINES)
        self.assertEqual((self.client.address(), self.server.addresses()), ("", []))
        self.renew()
        self.assertEqual(self.server.addresses(), self.tool.texts(1023))
        self.tool.close()

    def renew(self):
        self.tool.tap(1006)
        self.assertEqual(self.tool.answer(), (
            "Infomation", "DHCP IP address renewed. Please wait a few seconds to take it effect."))
        self.shows(self.lease(), *LEASE_LINES)
        self.net.device_number = int(self.client.address().rpartition(".")[2])

    def renew_at_another_server(self):
        """The first one goes, and nothing can be renewed; the network's addresses are others then."""
        stop(self.server.process)
        os.unlink(self.server.lease_file)
        self.see_lease()
        self.tool.tap(1006)
        self.assertEqual(self.tool.answer(), ("Error", "Renew DHCP Address Error!"))
        self.server = DhcpServer(self.net, 200, 220, lease=str(LEASE_SECONDS))
        self.renew()
        self.tool.close()
        self.assertIn(self.net.device_number, range(200, 221))
        self.see_adapter()

    def switch_the_adapter_off_and_on(self):
        self.account()
        self.net.ip("device", "link set eth0 down")
        time.sleep(1.5 * TICK)
        self.net.ip("device", "link set eth0 up", f"route replace default via {self.net.address('gateway')}")
        self.net.wait_for_bridge()

    def change_the_adapter(self):
        """It is pulled out and comes back under another index, with counters from 0."""
        self.account()
        self.net.run("device", self.client.command("-x"))  # or it goes on asking on the new adapter
        self.net.ip("lan", "link del pdevice")
        time.sleep(1.5 * TICK)
        self.net.attach_device("index 77")
        self.counted = (0, 0)

    def crash(self):
        """Traffic while no host runs is nobody's."""
        self.account()
        stop(self.tool.host)
        self.ping_hosts(5_000, 20_000)
        self.assertEqual(self.wine.logged(), self.booked)
        self.start_host()

    def ping(self):
        self.net.ip("gateway", "route add unreachable 10.99.0.0/16")
        self.tool.open(PING)
        host, silent, nobody = map(self.net.address, (10, 40, 99))
        for address, status, mac in ((host, f"Host ({host}) is alive", f"MAC Address: {hardware(10).upper()}"),
                                     (silent, "Request timed out.", ""),
                                     (nobody, "Destination host unreachable.", ""),
                                     ("10.99.0.1", "Destination host unreachable.", "")):
            self.tool.fill(1007, address)
            self.tool.tap(1024)
            self.shows([status, mac], 1025, 1038)
            trip = re.fullmatch(r"Round Trip Time: (\d+) ms", self.tool.texts(1026)[0])
            self.assertTrue(int(trip[1]) < 900 if mac else not trip)
        self.tool.close()

    def look_for_a_radio(self):
        """Where the kernel has one, these tools show more than that they found none."""
        radios = self.net.run("device", ["ls", "/sys/class/ieee80211"], stderr=subprocess.DEVNULL).stdout.split()
        for icon, numbers, nothing in ((SCANNER, (1039, 1040), ["", ""]), (CARD, range(1049, 1054), [""] * 5),
                                       (SIGNAL, (1067, 1068), ["-200dBm", "No Signal"])):
            self.tool.open(icon)
            time.sleep(TICK)
            self.assertEqual(self.tool.texts(*numbers) == nothing, not radios, (icon, radios))
            self.tool.close()

    def change_the_options(self):
        self.tool.open(60, SCREEN_BOTTOM)
        truth = self.adapter()
        rows = dict(self.tool.rows(1011))
        self.assertEqual([rows[name] for name in ("Adapter", "MAC Address", "Type", "Speed", "IP Address")],
                         [truth[0].removeprefix("Adapter - "), *truth[1:5]])
        self.tool.tap_screen(80, 36)
        self.shows(["75"], 1081)
        self.tool.tap(1074)
        self.assertEqual(self.tool.rows(1080), [["2027", "02"]])
        self.tool.close()
        self.tool.wait_for(lambda dialog: not dialog, "both windows close")
        self.assertEqual(self.wine.value("TIcon"), "0x0")

    def export(self):
        """The day as a person takes it home; the adapter may count a little while the file is written."""
        self.account()
        least = self.booked
        self.tool.open(USAGE)
        self.assertEqual(self.tool.texts(1065), ["Daily Traffic for Feb 2027"])
        usage = self.tool.top()
        self.tool.click(usage.x + 169, usage.y + 55)
        self.tool.wait_for(lambda dialog: dialog != usage.number, "the export")
        self.tool.fill(1073, r"C:\day.csv")
        self.tool.close()
        self.tool.close()
        with open(f"{self.wine.root}/day.csv") as file:
            day = next(line for line in file if line.startswith('"Feb 28, 2027"'))
        transmitted, received = [float(text.removesuffix("KB")) for text in re.findall(r'"([\d.]+KB)"', day)[:2]]
        self.account()
        for shown, low, high in zip((received, transmitted), least, self.booked):
            self.assertTrue(low - 10 < shown * 1024 < high + 10, (low, shown, high))

    def test_a_day_and_two_hours(self):
        self.net = self.enterContext(Network([10, 40], device_number=None))
        self.net.set(40, "net.ipv4.icmp_echo_ignore_all=1")
        self.server = DhcpServer(self.net, lease=str(LEASE_SECONDS))
        self.client = DhcpClient(self.net)
        self.net.device_number = int(self.client.address().rpartition(".")[2])
        start_echo_server(self.net)
        self.wine = WineSession(self.net, TZ=ZONE)
        self.clock = Clock(self.net)
        self.wine.start_helper()
        self.wine.set_value("EchoHost", self.net.address("gateway"))
        self.hours, self.booked = collections.defaultdict(lambda: (0, 0)), (0, 0)
        self.at(0)
        self.start_host()
        events = {0: self.see_the_graph, 1: self.see_adapter, 3: self.see_the_lease_and_the_public_address,
                  5: self.look_for_a_radio, 7: self.switch_the_adapter_off_and_on, 9: self.release_and_renew,
                  10: self.ping, 12: self.renew_at_another_server, 16: self.change_the_adapter, 17: self.see_adapter,
                  18: self.crash, 20: self.change_the_options, 23: self.export}
        for hour in range(26):
            self.at(hour)
            if hour in events:
                events[hour]()
            self.ping_hosts(5_000 + 500 * hour, 20_000 + 1_000 * hour)
            self.account()
            self.assertIsNone(self.tool.host.poll(), "the host ended")
        self.assertEqual(self.wine.records(), self.hours)
        self.assertEqual([os.path.basename(path) for path in self.wine.logs()], ["202702.log", "202703.log"])
        self.assertEqual(len(self.hours), 26)


if __name__ == "__main__":
    unittest.main()
