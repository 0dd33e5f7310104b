"""The Detect button of the DHCP dialog against real and hostile web servers."""
import re
import time
import unittest

from network import Host, Network, stop
from peers import DhcpServer, EchoServer, ScriptedWebServer, http_answer
from tool import Tool
from wine import ROOT, WineSession

BOUND_SECONDS = 300
REAL_ADDRESS, DETECT = 1083, 1084
TAP = (90, 10)
PRIMARY, FALLBACK, BLACK_HOLE, NGINX = 10, 11, 12, 13
# An exchange is given 10 s; two of them and their surroundings stay below this.
LONGEST_SECONDS = 25


class PublicIpTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.net = cls.enterClassContext(Network([Host(PRIMARY), Host(FALLBACK), Host(BLACK_HOLE, "blackhole"),
                                                  Host(NGINX)]))
        cls.primary = ScriptedWebServer(cls.net, PRIMARY, [])
        cls.fallback = EchoServer(cls.net, FALLBACK, body=b"198.51.100.9")
        cls.wine = cls.enterClassContext(WineSession(cls.net))
        cls.tool = cls.enterClassContext(Tool(cls.wine, *TAP))

    @classmethod
    def name_servers(cls, primary, fallback):
        """The names are read at every press."""
        cls.wine.set_value("EchoHost", primary)
        cls.wine.set_value("EchoHost2", fallback)

    def detect(self):
        """What is shown after a press, and how long that took."""
        started = time.monotonic()
        self.tool.press(DETECT)
        shown = self.tool.texts(REAL_ADDRESS)[0]
        return shown, time.monotonic() - started

    def test_answers_of_every_kind(self):
        long_page = b"<html>" + b"x" * 20000
        rows = [  # pieces of the primary's answer, what is shown; the fallback answers 198.51.100.9
            ([http_answer(b"203.0.113.7")], "203.0.113.7"),
            ([http_answer(b"203.0.113.7\r\n")], "203.0.113.7"),
            ([http_answer(b"203.0.113.7\n")], "203.0.113.7"),
            ([http_answer(b"203.0.113.7 ")], "198.51.100.9"),
            ([http_answer(b"203.0.113.7\r\n        ")], "198.51.100.9"),
            ([http_answer(b"1" * 20)], "1" * 20),
            ([http_answer(b"1" * 21)], "198.51.100.9"),
            ([http_answer(b"")], "198.51.100.9"),
            ([http_answer(b"\0")], ""),
            ([http_answer(b"203.0.113.7\0" + b"x" * 9000)], "203.0.113.7"),
            ([http_answer(b"1" * 10000)], "198.51.100.9"),
            ([http_answer(long_page)], "198.51.100.9"),
            ([http_answer(b"\0" + long_page)], ""),
            ([http_answer(b"<html>not found</html>", "404 Not Found")], "198.51.100.9"),
            ([http_answer(b"404", "404 Not Found")], "404"),
            ([http_answer(b"203.", length=11), 0.3, b"0.113", 0.3, b".7"], "203.0.113.7"),
            (["reset"], "198.51.100.9"),
            ([b"SSH-2.0-OpenSSH\r\n"], "198.51.100.9"),
            ([http_answer(b"203.0.113.7", length=20)], "203.0.113.7"),  # ends early: what came counts
        ]
        self.name_servers(self.net.address(PRIMARY), self.net.address(FALLBACK))
        for pieces, expected in rows:
            with self.subTest(pieces=[piece[:60] if isinstance(piece, bytes) else piece for piece in pieces]):
                self.primary.pieces = pieces
                self.primary.requests.clear()
                asked = len(self.fallback.requests())
                shown, seconds = self.detect()
                self.assertEqual(shown, expected)
                self.assertLess(seconds, 5)
                self.assertEqual(len(self.fallback.requests()) - asked, expected == "198.51.100.9")
                self.assertTrue(self.primary.requests[0].startswith(b"GET /ip/ip.php HTTP/1.1\r\n"))
                self.assertIn(b"User-Agent: Microsoft Internet Explorer\r\n", self.primary.requests[0])

    def test_dead_servers_cost_seconds(self):
        self.net.refuse_by_gateway("10.99.0.0/16")
        address = self.net.address
        rows = [  # the primary, the pieces that it serves
            (address("gateway"), []),   # refuses
            (address(BLACK_HOLE), []),
            (address(99), []),          # nobody there
            ("10.99.0.1", []),          # the gateway knows no route
            ("no.such.name.invalid", []),
            (address(PRIMARY), ["hold"]),                                          # silent after the request
            (address(PRIMARY), [http_answer(b"", length=11)] + [b"2", 1] * 11),    # a byte a second
        ]
        for primary, pieces in rows:
            with self.subTest(primary=primary, pieces=len(pieces)):
                self.primary.pieces = pieces
                self.name_servers(primary, address(FALLBACK))
                shown, seconds = self.detect()
                self.assertEqual(shown, "198.51.100.9")
                self.assertLess(seconds, LONGEST_SECONDS / 2)
        self.name_servers(address(BLACK_HOLE), address(BLACK_HOLE))
        shown, seconds = self.detect()
        self.assertEqual(shown, "")
        self.assertLess(seconds, LONGEST_SECONDS)

    def test_the_nginx_server_of_the_documentation_answers_with_the_address_it_sees(self):
        with open(f"{ROOT}/docs/echo-server.md") as file:
            location = re.search(r"(?m)^    location = [^}]*}", file.read())[0]
        server = EchoServer(self.net, NGINX, location=location)
        self.name_servers(self.net.address(NGINX), "")
        self.assertEqual(self.detect()[0], self.net.address("device"))
        self.assertIn("GET /ip/ip.php HTTP/1.1\" 200", server.requests()[0])


class DefaultNamesTest(unittest.TestCase):
    def test_without_settings_the_compiled_names_are_asked_in_order(self):
        with Network([Host(10), Host(11)]) as net:
            net.set_resolver("device", net.address("gateway"))
            DhcpServer(net, names={"ip1.quorvane.net": net.address(10), "ip2.quorvane.net": net.address(11)})
            first, second = EchoServer(net, 10, body=b"192.0.2.1"), EchoServer(net, 11, body=b"192.0.2.2")
            with WineSession(net) as wine, Tool(wine, *TAP) as tool:
                for server, expected in ((first, "192.0.2.1"), (second, "192.0.2.2")):
                    tool.press(DETECT)
                    self.assertEqual(tool.texts(REAL_ADDRESS), [expected])
                    stop(server.process)


if __name__ == "__main__":
    unittest.main()
