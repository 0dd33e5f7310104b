"""The tools where a network is not as it should be: hostile web servers, no helper or a hung one, several adapters or none,
slow and unknown hosts; and the demonstration, which leaves the user's things alone."""
import calendar
import glob
import signal
import time
import unittest

from network import Host, Network, wait_until
from peers import DhcpClient, DhcpServer, EchoServer, ScriptedWebServer, http_answer
from tool import ADAPTER, DETECTOR, DHCP, PING, SCANNER, Tool
from wine import WineSession, read_log

PRIMARY, FALLBACK, BLACK_HOLE = 10, 11, 12
REAL_ADDRESS, DETECT_ADDRESS = 1083, 1084
LEASE, RELEASE, RENEW = (1001, 1023, 1002, 1003, 1004), 1005, 1006
NO_LEASE = ["DHCP is not enabled.", "", "", "", ""]


class PublicAddressTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.net = cls.enterClassContext(Network([Host(PRIMARY), Host(FALLBACK), Host(BLACK_HOLE, "blackhole")]))
        cls.primary = ScriptedWebServer(cls.net, PRIMARY, [])
        cls.fallback = EchoServer(cls.net, FALLBACK, body=b"198.51.100.9")
        cls.net.set_resolver("device", cls.net.address("gateway"))
        DhcpServer(cls.net, names={"ip1.quorvane.net": cls.net.address(BLACK_HOLE),
                                   "ip2.quorvane.net": cls.net.address(FALLBACK)})
        cls.wine = cls.enterClassContext(WineSession(cls.net))
        cls.tool = cls.enterClassContext(Tool(cls.wine, DHCP))

    def detect(self, *names):
        """What is shown after a press, and how long that took. The names are read at every press."""
        for name, value in zip(("EchoHost", "EchoHost2"), names):
            self.wine.set_value(name, value)
        started = time.monotonic()
        self.tool.press(DETECT_ADDRESS)
        shown = self.tool.texts(REAL_ADDRESS)[0]
        return shown, time.monotonic() - started

    def test_0_without_settings_the_compiled_names_are_asked_in_order(self):
        shown, seconds = self.detect()
        self.assertEqual(shown, "198.51.100.9")
        self.assertGreater(seconds, 2, "the first name is that of a black hole")

    def test_hostile_answers_are_passed_over_and_dead_servers_cost_seconds(self):
        self.net.refuse_by_gateway("10.99.0.0/16")
        address = self.net.address
        found, fallback = "203.0.113.7", "198.51.100.9"
        rows = [  # the primary, the pieces that it serves, what is shown, seconds at most
            (address(PRIMARY), [http_answer(b"203.", length=11), 0.3, b"0.113", 0.3, b".7\r\n"], found, 5),
            (address(PRIMARY), [http_answer(b"203.0.113.7", length=20)], found, 5),  # ends early: what came counts
            (address(PRIMARY), [b"HTTP/1.0 200 OK\r\n\r\n203.0.113.7", 0.5, "reset"], found, 5),
            (address(PRIMARY), [b"HTTP/1.0 200 OK\r\n\r\n203.0.113.7", "hold"], found, 12.5),
            (address(PRIMARY), [http_answer(b"\0" + b"x" * 20000)], "", 5),
            (address(PRIMARY), [http_answer(b"<html>" + b"x" * 20000)], fallback, 5),
            (address(PRIMARY), [b"SSH-2.0-OpenSSH\r\n"], fallback, 5),
            (address(PRIMARY), ["reset"], fallback, 5),
            (address("gateway"), [], fallback, 5),  # refuses
            (address(99), [], fallback, 12.5),      # nobody there
            ("10.99.0.1", [], fallback, 12.5),      # the gateway knows no route
            ("no.such.name.invalid", [], fallback, 12.5),
            (address(PRIMARY), ["hold"], fallback, 12.5),                                        # silent
            (address(PRIMARY), [http_answer(b"", length=11)] + [b"2", 1] * 11, fallback, 12.5),  # an octet a second
        ]
        for primary, pieces, expected, most in rows:
            with self.subTest(primary=primary, pieces=[piece[:60] if isinstance(piece, bytes) else piece for piece in pieces]):
                self.primary.pieces = pieces
                shown, seconds = self.detect(primary, address(FALLBACK))
                self.assertEqual(shown, expected)
                self.assertLess(seconds, most)
        shown, seconds = self.detect(address(BLACK_HOLE), address(BLACK_HOLE))
        self.assertEqual(shown, "")
        self.assertLess(seconds, 25)
        self.assertTrue(self.primary.requests[0].startswith(b"GET /ip/ip.php HTTP/1.1\r\n"))
        self.assertIn(b"User-Agent: Microsoft Internet Explorer\r\n", self.primary.requests[0])


class LeaseTest(unittest.TestCase):
    def test_a_helper_that_is_missing_may_nothing_hangs_or_dies_costs_seconds(self):
        net = self.enterContext(Network(device_number=None))
        DhcpServer(net)
        client = DhcpClient(net)
        wine = self.enterContext(WineSession(net, TZ="Asia/Kolkata"))
        with Tool(wine, DHCP) as tool:
            self.assertEqual(tool.texts(*LEASE), NO_LEASE)
            controls = tool.dialog()[1]
            self.assertFalse(controls[RELEASE].enabled or controls[RENEW].enabled)
        rows = [(["setpriv", "--reuid=65534", "--clear-groups"], None), ([], signal.SIGKILL), ([], signal.SIGSTOP)]
        net.run("device", ["chmod", "755", net.folder])
        for command, ending in rows:
            with self.subTest(command=command, ending=ending):
                helper = wine.start_helper(*command)
                with Tool(wine, DHCP) as tool:
                    title, address, _, obtained, expires = tool.texts(*LEASE)
                    self.assertEqual((title, address), ("DHCP Information", client.address()))
                    if ending:
                        # 2 minutes, in a zone that is five and a half hours ahead.
                        times = [calendar.timegm(time.strptime(text, "%a. %b %d, %Y %H:%M:%S")) - 19800
                                 for text in (obtained, expires)]
                        self.assertEqual(times[1] - times[0], 120)
                        self.assertLess(abs(times[0] - time.time()), 200)
                        helper.send_signal(ending)
                    started = time.monotonic()
                    tool.tap(RELEASE)
                    self.assertEqual(tool.answer(), ("Error", "Release DHCP Address Error!"))
                    self.assertLess(time.monotonic() - started, 60)
                self.assertNotEqual(client.address(), "")
                started = time.monotonic()
                if ending:
                    with Tool(wine, DHCP) as tool:
                        self.assertEqual(tool.texts(*LEASE), NO_LEASE)
                        self.assertLess(time.monotonic() - started, 20)


class AdaptersTest(unittest.TestCase):
    TITLE, ADDRESS, MASK = 1014, 1018, 1019

    def test_the_adapter_of_the_default_route_counts_at_every_size_and_none_is_told(self):
        net = self.enterContext(Network())
        net.ip("device", "link add first up type veth peer name other", "addr add 10.9.8.7/13 dev first",
               "link set other up", "link add down type veth peer name lost")
        wine = self.enterContext(WineSession(net))
        rows = [("240x320", ["route replace default via 192.168.7.1"], ["Adapter - eth0", "192.168.7.33", "255.255.255.0"]),
                ("320x240", ["route replace default via 10.9.8.1"], ["Adapter - first", "10.9.8.7", "255.248.0.0"]),
                ("480x640", ["link del first"], ["Adapter - eth0", "192.168.7.33", "255.255.255.0"]),
                ("480x640", ["addr flush dev eth0"], ["Adapter - eth0", "0.0.0.0", "0.0.0.0"]),
                ("240x320", ["link del eth0"], ["", "", ""])]
        for size, commands, expected in rows:
            net.ip("device", *commands)
            with self.subTest(commands=commands), Tool(wine, ADAPTER, size=size) as tool:
                self.assertEqual(tool.texts(self.TITLE, self.ADDRESS, self.MASK), expected)


class PingTest(unittest.TestCase):
    def test_slow_redirected_refused_and_unknown_hosts(self):
        net = self.enterContext(Network([Host(10), Host(50, "late", delay=2)]))
        net.refuse_by_gateway("10.99.0.0/16")
        behind = net.redirect_by_gateway("10.77.0.0/24", 10)
        tool = self.enterContext(Tool(self.enterContext(WineSession(net)), PING))
        rows = [  # host, status, least and most milliseconds; for a second after a redirection a gateway refuses nothing
            ("10.99.1.1", "Destination host unreachable.", None, None),
            (net.address(50), f"Host ({net.address(50)}) is alive", 2000, 2900),
            (net.address("device"), f"Host ({net.address('device')}) is alive", 0, 500),
            (behind, f"Host ({behind}) is alive", 0, 500),
            ("x" * 99, "Unknown host: " + "x" * 99, None, None)]
        for host, status, least, most in rows:
            with self.subTest(host=host):
                tool.probe("set", 1007, host)
                tool.press(1024)
                shown = wait_until(lambda: (lines := tool.texts(1025, 1026))[0] not in ("", "Pinging...") and lines, 15,
                                   "the answer", 0.1)
                self.assertEqual(shown[0], status)
                if least is not None:
                    self.assertTrue(least <= int(shown[1].split()[3]) <= most, shown)


class DemonstrationTest(unittest.TestCase):
    def test_it_shows_its_own_network_and_leaves_the_users_things_alone(self):
        net = self.enterContext(Network())
        wine = self.enterContext(WineSession(net, TZ="UTC"))
        wine.set_value("XLocation", 40)
        with Tool(wine, SCANNER, more=["--demo"]) as tool:
            self.assertIn(["", "Lighthouse"], tool.rows(1059))
            self.assertEqual(tool.texts(1039), ["Harbour Office"])
            logs = sorted(glob.glob(f"{wine.folder}/drive_c/users/*/Temp/Quorvane demonstration/*.log"))
            self.assertEqual(len(logs), 3)
            prefilled = read_log(logs[-1])[0]
            wait_until(lambda: read_log(logs[-1])[0] != prefilled, 20, "the demonstration's log to grow")
            tool.close()
            tool.open(DETECTOR)
            tool.press(1085)
            rows = wait_until(lambda: len(found := tool.rows(1089)) >= 12 and found, 40, "the hosts", 0.5)
            self.assertTrue(any("127.7.7.254" in row for row in rows), rows)
        self.assertEqual(wine.logs(), [])
        self.assertEqual([wine.value(name) for name in ("XLocation", "Adapter", "InstallDir")], [40, None, None])


if __name__ == "__main__":
    unittest.main()
