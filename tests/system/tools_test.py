"""The tools where a network is not as it should be: hostile web servers, several adapters or none; and the demonstration,
which leaves the user's things alone."""
import contextlib
import sys
import time
import unittest

from network import Host, Network, stop
from peers import QUIET, DhcpServer, EchoServer, wait_for_listener
from tool import ADAPTER, DHCP, SCANNER, Tool
from wine import WineSession

PRIMARY, REFUSING, BLACK_HOLE = 10, 11, 12
DETECT_ADDRESS, REAL_ADDRESS = 1084, 1083


# A web server that answers its requests with pieces: bytes, or seconds to wait.
SERVER = """
import socketserver, sys, time
class Answer(socketserver.BaseRequestHandler):
    def handle(self):
        for piece in self.request.recv(4096) and eval(sys.argv[1]):
            self.request.sendall(piece) if isinstance(piece, bytes) else time.sleep(piece)
socketserver.ThreadingTCPServer.allow_reuse_address = True
socketserver.ThreadingTCPServer(("", 80), Answer).serve_forever()
"""


class PublicAddressTest(unittest.TestCase):
    def test_hostile_answers_are_passed_over_and_dead_servers_cost_seconds(self):
        net = self.enterContext(Network([Host(PRIMARY), Host(REFUSING), Host(BLACK_HOLE, "blackhole")]))
        net.set_resolver(net.address("gateway"))
        DhcpServer(net, names={"ip1.quorvane.net": net.address(BLACK_HOLE), "ip2.quorvane.net": net.address("gateway")})
        EchoServer(net)
        wine = WineSession(net)
        found, fallback = "203.0.113.7", net.address("device")
        head = b"HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 11\r\n\r\n"
        rows = [  # the primary, the pieces that it serves, what is shown
            (None, [], fallback),  # without settings the compiled names are asked in order
            (PRIMARY, [head + b"203.", 0.3, b"0.113", 0.3, b".7\r\n"], found),
            (PRIMARY, [b"HTTP/1.0 200 OK\r\n\r\n203.0.113.7", 20], found),  # what came counts
            (PRIMARY, [b"HTTP/1.0 200 OK\r\n\r\n\0" + b"x" * 20000], ""),
            (PRIMARY, [b"SSH-2.0-OpenSSH\r\n"], fallback),
            (REFUSING, [], fallback),
            (99, [], fallback),  # nobody there
            (PRIMARY, [20], fallback),  # silent
            (PRIMARY, [head] + [b"2", 1] * 11, fallback)]  # an octet a second
        with Tool(wine, DHCP) as tool:
            self.assertEqual(tool.texts(1001, 1002), ["DHCP is not enabled.", ""])  # there is no helper
            for primary, pieces, expected in rows:
                with self.subTest(primary=primary, pieces=str(pieces)[:80]), contextlib.ExitStack() as stack:
                    if pieces:
                        server = net.start(PRIMARY, [sys.executable, "-c", SERVER, str(pieces)], **QUIET)
                        stack.callback(stop, server)
                        wait_for_listener(net, "-t", 80, PRIMARY)
                    if primary:
                        wine.set_value("EchoHost", net.address(primary))
                        wine.set_value("EchoHost2", net.address("gateway"))
                    started = time.monotonic()
                    tool.probe("press", DETECT_ADDRESS)
                    self.assertEqual(tool.texts(REAL_ADDRESS), [expected])
                    self.assertLess(time.monotonic() - started, 12.5)


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
        self.assertEqual(wine.logs(), [])
        self.assertEqual([wine.value(name) for name in ("XLocation", "Adapter", "InstallDir")], [40, None, None])


if __name__ == "__main__":
    unittest.main()
