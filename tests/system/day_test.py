"""A day and two hours in the life of the real library: traffic in every hour of a scripted clock, a month that turns,
and all that happens to a network meanwhile. Every tool is opened by taps, and what it shows stands beside what the
kernel, the peers and their own files say."""
import calendar
import ipaddress
import operator
import os
import re
import subprocess
import time
import unittest

from network import GATEWAY, Network, address, hardware, stop, wait_until
from peers import DhcpClient, start_dhcp_server, start_echo_server
from tool import ADAPTER, CARD, DHCP, GRAPH, PING, SCANNER, SCREEN_BOTTOM, SIGNAL, USAGE, Tool
from wine import WineSession

TICK = 2.0
LAST_DAY = calendar.timegm((2027, 2, 28, 0, 10, 0))
ZONE, AHEAD = "Asia/Kolkata", 19800
LEASE_LINES = (1001, 1023, 1002, 1003, 1004)
LEASE_SECONDS = 7200
HOST, SILENT, NOBODY = 10, 40, 99


def as_text(seconds):
    return time.strftime("%a. %b %-d, %Y %H:%M:%S", time.gmtime(seconds + AHEAD))


def minus(octets, others):
    return tuple(map(operator.sub, octets, others))


class DayTest(unittest.TestCase):
    # The bookkeeping

    def at(self, hour):
        """It is so many hours later for the programs of Wine, and for nobody else."""
        self.hour = time.strftime("%Y%m.log %-d %-H", time.gmtime(LAST_DAY + hour * 3600))
        with open(f"{self.clock}.new", "w") as file:
            file.write(f"{int(LAST_DAY + hour * 3600 - AHEAD - time.time()):+}")
        os.replace(f"{self.clock}.new", self.clock)  # it is looked at all the time

    def account(self):
        """The log takes what the kernel counts, and in no other hour than this."""
        wait_until(lambda: minus(self.net.counters(), self.wine.logged()) == self.unlogged, 15, "the log takes it all")
        before, self.records = self.records, self.wine.records()
        self.assertLessEqual({hour for hour in self.records if self.records[hour] != before.get(hour)}, {self.hour})

    def ping_hosts(self, *sizes):
        """More is sent than received: the second one brings no answer."""
        for number, size in zip((HOST, SILENT), sizes):
            self.net.run("device", ["ping", "-q", "-c1", "-W0.1", f"-s{size}", address(number)])

    def start_host(self):
        """From when the adapter rests, all is accounted for; the first tick only looked."""
        self.tool = self.enterContext(Tool(self.wine))

        def rested():
            before = self.net.counters(), self.wine.logged()
            time.sleep(1.5 * TICK)
            return before == (self.net.counters(), self.wine.logged()) and before

        self.unlogged = minus(*wait_until(rested, 60, "the adapter rests"))

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
        return ["DHCP Information", re.search(r"fixed-address (\S+);", last)[1], address(GATEWAY),
                as_text(expires - LEASE_SECONDS), as_text(expires)]

    # What the tools say

    def see_the_graph(self):
        """Heights are cut percentages of the full scale, which is the same for every sample from 10 to 100 KB."""
        self.tool.open(GRAPH)
        before = self.net.counters()
        for size in (10_000, 15_000):
            self.ping_hosts(size, size)
            time.sleep(TICK)
        self.account()
        gain = minus(self.net.counters(), before)
        time.sleep(1.5 * TICK)  # until it has painted itself again
        dialog, monitor = self.tool.top(), self.tool.monitor()
        for colour, octets in zip((0x0000FF, 0xFF0000), gain):
            # The line's round end is a pixel above its last.
            heights = [max((height for height in range(101)
                            if monitor[dialog.y + 16 + 113 - height, dialog.x + 4 + 7 * column] & 0xFFFFFF == colour),
                           default=0) for column in range(5, 25)]
            self.assertIn(octets - 1024 * sum(heights), range(1024 * (1 + sum(map(bool, heights)))), heights)
        self.tool.close()

    def see_adapter(self):
        self.tool.open(ADAPTER)
        self.tool.shows(self.adapter(), *range(1014, 1022))
        self.tool.close()

    def see_lease(self):
        self.tool.open(DHCP)
        self.tool.shows(self.lease(), *LEASE_LINES)

    def see_the_lease_and_the_public_address(self):
        """An octet a second comes from the first of the names that are compiled in: the second one is asked in time."""
        slow = start_echo_server(self.net, HOST, "limit_rate 1;")
        self.see_lease()
        started = time.monotonic()
        self.tool.tap(1084)
        self.tool.shows([self.client.address()], 1083)
        self.assertLess(time.monotonic() - started, 12.5)
        stop(slow)
        self.tool.close()

    def release_and_renew(self):
        self.see_lease()
        self.tool.tap(1005)
        self.tool.shows(["DHCP Information", "", "", "", ""], *LEASE_LINES)
        self.assertEqual(self.client.address(), "")
        self.renew()

    def renew(self):
        self.tool.tap(1006)
        self.assertEqual(self.tool.answer(), (
            "Infomation", "DHCP IP address renewed. Please wait a few seconds to take it effect."))
        self.tool.shows(self.lease(), *LEASE_LINES)
        self.tool.close()

    def renew_at_another_server(self):
        """The first one goes, and nothing can be renewed; the network's addresses are others then."""
        stop(self.server)
        self.see_lease()
        self.tool.tap(1006)
        self.assertEqual(self.tool.answer(), ("Error", "Renew DHCP Address Error!"))
        start_dhcp_server(self.net, 200, 220, lease=str(LEASE_SECONDS))
        self.renew()
        self.net.device = self.client.address()
        self.see_adapter()

    def switch_the_adapter_off_and_on(self):
        self.account()
        self.net.ip("device", "link set eth0 down")
        time.sleep(1.5 * TICK)
        self.net.ip("device", "link set eth0 up", f"route replace default via {address(GATEWAY)}")
        self.net.wait_for_bridge()

    def change_the_adapter(self):
        """It is pulled out and comes back under another index, with counters from 0."""
        self.account()
        stop(self.client.process)  # or it goes on asking on the new adapter
        self.net.ip("lan", "link del pdevice")
        time.sleep(1.5 * TICK)
        self.net.attach_device("index 77")
        self.unlogged = minus((0, 0), self.wine.logged())

    def crash(self):
        """Traffic while no host runs is nobody's."""
        self.account()
        stop(self.tool.host)
        self.ping_hosts(5_000, 20_000)
        self.assertEqual(self.wine.records(), self.records)
        self.start_host()

    def ping(self):
        self.tool.open(PING)
        for host, status in ((address(HOST), f"Host ({address(HOST)}) is alive"),
                             (address(SILENT), "Request timed out."),
                             (address(NOBODY), "Destination host unreachable.")):
            self.tool.fill(1007, host)
            self.tool.tap(1024)
            alive = host == address(HOST)
            self.tool.shows([status, f"MAC Address: {hardware(HOST).upper()}" if alive else ""], 1025, 1038)
            self.assertRegex(self.tool.texts(1026)[0], r"^Round Trip Time: \d{1,3} ms$" if alive else "^$")
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
        rows = dict(*self.tool.texts(1011))
        self.assertEqual([f"Adapter - {rows['Adapter']}", *map(rows.get, ("MAC Address", "Type", "Speed", "IP Address"))],
                         self.adapter()[:5])
        self.tool.tap_screen(80, 36)
        self.tool.shows(["75"], 1081)
        self.tool.tap(1074)
        self.assertEqual(self.tool.texts(1080), [[["2027", "02"]]])
        self.tool.close()
        wait_until(lambda: self.wine.value("TIcon") == "0x0", 20, "the choice is kept")

    def export(self):
        """The day as a person takes it home; the adapter may count a little while the file is written."""
        self.account()
        least = self.wine.logged()
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
        for shown, low, high in zip((received, transmitted), least, self.wine.logged()):
            self.assertTrue(low - 10 < shown * 1024 < high + 10, (low, shown, high))

    def test_a_day_and_two_hours(self):
        self.net = self.enterContext(Network([HOST, SILENT], device=None))
        self.net.set(SILENT, "net.ipv4.icmp_echo_ignore_all=1")
        start_echo_server(self.net)
        self.server = start_dhcp_server(self.net, lease=str(LEASE_SECONDS), names={
            "ip1.quorvane.net": address(HOST), "ip2.quorvane.net": address(GATEWAY)})
        self.client = DhcpClient(self.net)
        self.clock, self.records = f"{self.net.folder}/clock", {}
        self.at(0)
        self.wine = WineSession(self.net, TZ=ZONE, LD_PRELOAD="/usr/$LIB/faketime/libfaketime.so.1",
                                FAKETIME_TIMESTAMP_FILE=self.clock, FAKETIME_NO_CACHE="1",
                                FAKETIME_DONT_FAKE_MONOTONIC="1")
        self.wine.start_helper()
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
        self.assertEqual(len(self.records), 26)
