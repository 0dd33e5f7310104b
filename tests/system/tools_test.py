"""The tools where a network is not as it should be: hostile web servers, several adapters or none; and the demonstration,
which leaves the user's things alone."""
import glob
import time
import unittest

from network import Host, Network, wait_until
from peers import DhcpServer, ScriptedWebServer, http_answer
from tool import ADAPTER, DETECTOR, DHCP, SCANNER, Tool
from wine import WineSession, read_log

PRIMARY, FALLBACK, BLACK_HOLE = 10, 11, 12
RELEASE, RENEW, REAL_ADDRESS, DETECT_ADDRESS = 1005, 1006, 1083, 1084


class PublicAddressTest(unittest.TestCase):
    def test_hostile_answers_are_passed_over_and_dead_servers_cost_seconds(self):
        net = self.enterContext(Network([Host(PRIMARY), Host(FALLBACK), Host(BLACK_HOLE, "blackhole")]))
        net.ip("gateway", "route add unreachable 10.99.0.0/16")
        net.set_resolver(net.address("gateway"))
        DhcpServer(net, names={"ip1.quorvane.net": net.address(BLACK_HOLE), "ip2.quorvane.net": net.address(FALLBACK)})
        primary = ScriptedWebServer(net, PRIMARY)
        found, fallback = "203.0.113.7", "198.51.100.9"
        ScriptedWebServer(net, FALLBACK, http_answer(fallback.encode()))
        wine = WineSession(net)
        rows = [  # the primary, the pieces that it serves, what is shown, seconds at least and at most
            (None, [], fallback, 2, 12.5),  # without settings the compiled names are asked in order
            (PRIMARY, [http_answer(b"203.", 11), 0.3, b"0.113", 0.3, b".7\r\n"], found, 0, 5),
            (PRIMARY, [http_answer(b"203.0.113.7", 20)], found, 0, 5),  # ends early: what came counts
            (PRIMARY, [b"HTTP/1.0 200 OK\r\n\r\n203.0.113.7", 0.5, "reset"], found, 0, 5),
            (PRIMARY, [b"HTTP/1.0 200 OK\r\n\r\n203.0.113.7", "hold"], found, 0, 12.5),
            (PRIMARY, [http_answer(b"\0" + b"x" * 20000)], "", 0, 5),
            (PRIMARY, [http_answer(b"<html>" + b"x" * 20000)], fallback, 0, 5),
            (PRIMARY, [b"SSH-2.0-OpenSSH\r\n"], fallback, 0, 5),
            (PRIMARY, ["reset"], fallback, 0, 5),
            ("gateway", [], fallback, 0, 5),          # refuses
            (99, [], fallback, 0, 12.5),              # nobody there
            ("10.99.0.1", [], fallback, 0, 12.5),     # the gateway knows no route
            ("no.such.invalid", [], fallback, 0, 12.5),
            (PRIMARY, ["hold"], fallback, 0, 12.5),                                        # silent
            (PRIMARY, [http_answer(b"", 11)] + [b"2", 1] * 11, fallback, 0, 12.5)]         # an octet a second
        with Tool(wine, DHCP) as tool:
            self.assertEqual(tool.texts(1001, 1002), ["DHCP is not enabled.", ""])  # there is no helper
            controls = tool.dialog()[1]
            self.assertFalse(controls[RELEASE].enabled or controls[RENEW].enabled)
            for server, primary.pieces, expected, least, most in rows:
                with self.subTest(server=server, pieces=str(primary.pieces)[:80]):
                    if server:
                        wine.set_value("EchoHost", server if "." in str(server) else net.address(server))
                        wine.set_value("EchoHost2", net.address(FALLBACK))
                    started = time.monotonic()
                    tool.press(DETECT_ADDRESS)
                    self.assertEqual(tool.texts(REAL_ADDRESS), [expected])
                    self.assertTrue(least <= time.monotonic() - started <= most, time.monotonic() - started)
        self.assertRegex(primary.requests[0], b"^GET /ip/ip.php HTTP/1.1\r\n")
        self.assertIn(b"User-Agent: Microsoft Internet Explorer\r\n", primary.requests[0])


class AdaptersTest(unittest.TestCase):
    def test_the_adapter_of_the_default_route_counts_at_every_size_and_none_is_told(self):
        net = self.enterContext(Network())
        net.ip("device", "link add first up type veth peer name other", "addr add 10.9.8.7/13 dev first",
               "link set other up", "link add down type veth peer name lost")
        wine = WineSession(net)
        rows = [("240x320", "route replace default via 192.168.7.1", ["Adapter - eth0", "192.168.7.33", "255.255.255.0"]),
                ("320x240", "route replace default via 10.9.8.1", ["Adapter - first", "10.9.8.7", "255.248.0.0"]),
                ("480x640", "link del first", ["Adapter - eth0", "192.168.7.33", "255.255.255.0"]),
                ("480x640", "addr flush dev eth0", ["Adapter - eth0", "0.0.0.0", "0.0.0.0"]),
                ("240x320", "link del eth0", ["", "", ""])]
        for size, command, expected in rows:
            net.ip("device", command)
            with self.subTest(command=command), Tool(wine, ADAPTER, size=size) as tool:
                self.assertEqual(tool.texts(1014, 1018, 1019), expected)


class DemonstrationTest(unittest.TestCase):
    def test_it_shows_its_own_network_and_leaves_the_users_things_alone(self):
        wine = WineSession(self.enterContext(Network()), TZ="UTC")
        wine.set_value("XLocation", 40)
        with Tool(wine, SCANNER, more=["--demo"]) as tool:
            self.assertIn(["", "Lighthouse"], tool.rows(1059))
            self.assertEqual(tool.texts(1039), ["Harbour Office"])
            logs = sorted(glob.glob(f"{wine.folder}/drive_c/users/*/Temp/Quorvane demonstration/*.log"))
            self.assertEqual(len(logs), 3)
            prefilled = read_log(logs[-1])
            wait_until(lambda: read_log(logs[-1]) != prefilled, 20, "the demonstration's log to grow")
            tool.close()
            tool.open(DETECTOR)
            tool.press(1085)
            wait_until(lambda: any("127.7.7.254" in row for row in tool.rows(1089)), 40, "its last host", 0.5)
        self.assertEqual(wine.logs(), [])
        self.assertEqual([wine.value(name) for name in ("XLocation", "Adapter", "InstallDir")], [40, None, None])


if __name__ == "__main__":
    unittest.main()
