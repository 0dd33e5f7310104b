"""What the desktop's services answer under Wine, against what these networks are known to be."""
import subprocess
import unittest

from network import Host, Network, plain_hosts
from peers import DhcpClient, DhcpServer, EchoServer, ScriptedWebServer, http_answer, transfer
from wine import ROOT, WineSession

BOUND_SECONDS = 400
PROBE = f"{ROOT}/build/desktop/tests/platform_probe.exe"
INTERNET_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings"
NO_DATA, NOT_SUPPORTED = "232", "50"
UNREACHABLE = "11003"


class PlatformTest(unittest.TestCase):
    def enter(self, *hosts, prepare=None, **options):
        self.net = self.enterContext(Network(hosts, **options))
        self.wine = self.enterContext(WineSession(self.net, prepare=prepare))

    def probe(self, *command, **options):
        """The words of each line that the probe printed."""
        done = self.wine.run(PROBE, *map(str, command), **options)
        self.assertEqual(done.returncode, 0, done.stdout)
        return [line.split() for line in done.stdout.splitlines() if line]

    def adapters(self):
        """[(Linux name, index, address)] in order, with names that agree with the interface list's."""
        lines = self.probe("adapters")
        interfaces = {(line[1], line[2]) for line in lines if line[0] == "interface"}
        adapters = [line for line in lines if line[0] == "adapter"]
        self.assertIn(["count", "0", str(len(adapters))], lines)
        for _, name, _, index, kind, _ in adapters:
            self.assertIn((name, index), interfaces)
            self.assertEqual(kind, "6")
        return [(line[2], int(line[3]), line[5]) for line in adapters]


class AdaptersTest(PlatformTest):
    def test_adapters_that_are_up_are_listed_in_the_order_a_person_expects(self):
        self.net = self.enterContext(Network())
        self.net.detach_device()
        self.net.ip("device", "link add down0 type veth peer name down1",
                    "link add bare type veth peer name bare1", "link set bare up",
                    "link add other type veth peer name other1", "link set other up", "addr add 10.9.9.1/24 dev other")
        self.net.attach_device(index=77)
        self.wine = self.enterContext(WineSession(self.net))
        listed = self.adapters()
        self.assertEqual([(name, address) for name, _, address in listed],
                         [("eth0", "192.168.7.33"), ("other", "10.9.9.1"), ("bare", "0.0.0.0")])
        self.assertEqual(listed[0][1], 77)
        # A released address and its route go; the adapter stays, behind those with an address.
        self.net.ip("device", "addr flush dev eth0")
        self.assertEqual([name for name, _, _ in self.adapters()], ["other", "bare", "eth0"])
        # Of several default routes the one in use counts.
        self.net.ip("device", "route add default dev bare metric 100", "route add default dev eth0 metric 50",
                    "route add default dev other metric 600")
        self.assertEqual([name for name, _, _ in self.adapters()], ["eth0", "bare", "other"])
        self.net.ip("device", *[f"link set {name} down" for name in ("bare", "other", "eth0")])
        self.assertEqual(self.adapters(), [])
        self.assertIn(["error", NO_DATA], self.probe("adapters"))

    def test_an_adapter_that_goes_and_comes_back_is_there_once(self):
        self.enter(Host(10))
        index = self.adapters()[0][1]
        self.net.detach_device()
        self.assertEqual(self.adapters(), [])
        self.assertEqual(self.probe("interface", index)[0][1], "0")
        for new_index in (77, 88):
            self.net.attach_device(index=new_index)
            transfer(self.net, 10, "device", 100_000)
            (name, index, address), = self.adapters()
            self.assertEqual((name, address), ("eth0", "192.168.7.33"))
            self.assertEqual(self.probe("interface", index)[0], ["counters", "6", *map(str, self.net.counters())])
            self.net.detach_device()

    def test_counters_and_name_servers_are_the_system_s(self):
        self.enter(Host(10), resolver=("192.168.7.1", "192.168.7.2"))
        index = self.adapters()[0][1]
        transfer(self.net, 10, "device", 300_000)
        lines = self.probe("interface", index)
        self.assertEqual(lines[0], ["counters", "6", *map(str, self.net.counters())])
        self.assertEqual(lines[1:], [["dns", "192.168.7.1"], ["dns", "192.168.7.2"]])

    def test_leases_come_from_the_helper_and_without_it_there_are_none(self):
        self.enter(device_number=None)
        server = DhcpServer(self.net)
        client = DhcpClient(self.net)
        index = self.adapters()[0][1]

        def lease():
            return next(line[1:] for line in self.probe("adapters") if line[0] == "lease")

        self.assertEqual(lease(), ["0", "0", "0", "[]", "[]", "[]"])
        for change in ("release", "renew"):
            self.assertEqual(self.probe("lease", change, index), [["result", NOT_SUPPORTED]])
        self.assertNotEqual(client.address(), "")
        self.wine.start_helper()
        dhcp, obtained, expires, *addresses = lease()
        self.assertEqual((dhcp, addresses), ("1", ["[192.168.7.1]", "[192.168.7.2]", "[]"]))
        self.assertEqual(int(expires) - int(obtained), 120)
        self.assertLess(abs(int(expires) - server.leases()[0][0]), 3)
        self.assertEqual(self.probe("lease", "release", index), [["result", "0"]])
        self.assertEqual((client.address(), server.leases()), ("", []))
        self.assertEqual(self.adapters(), [("eth0", index, "0.0.0.0")])
        self.assertEqual(self.probe("lease", "renew", index), [["result", "0"]])
        self.assertEqual(self.adapters(), [("eth0", index, client.address())])
        self.assertNotEqual(client.address(), "")


class EchoTest(PlatformTest):
    def echo(self, *addresses, timeout=5000):
        """{address: (replies, replier, status, ms waited)}"""
        lines = self.probe("echo", timeout, *addresses)
        self.assertEqual(len(lines), len(addresses))
        return {line[1]: (int(line[2]), line[3], line[4], int(line[6])) for line in lines}

    def test_an_echo_tells_live_from_dead(self):
        self.enter(Host(10), Host(11, "drops"), Host(13, "late", delay=0.7))
        self.net.refuse_by_gateway("10.1.0.0/16")
        redirected = self.net.redirect_by_gateway("10.2.0.0/16", 10)
        self.net.ip("gateway", "addr add 10.3.0.1/32 dev lo")
        silent, own = (0, "0.0.0.0", "0"), "192.168.7.33"
        rows = [  # target, timeout, (replies, replier, status), the least and most milliseconds
            ("192.168.7.10", 5000, (1, "192.168.7.10", "0"), 0, 1000),
            ("192.168.7.13", 5000, (1, "192.168.7.13", "0"), 690, 2000),
            (own, 5000, (1, own, "0"), 0, 1000),
            (redirected, 5000, (1, redirected, "0"), 0, 1000),
            ("10.3.0.1", 5000, (1, "10.3.0.1", "0"), 0, 1000),
            ("192.168.7.11", 1500, silent, 1400, 3000),
            ("192.168.7.99", 5000, (1, own, UNREACHABLE), 2500, 4500),
            ("10.1.2.3", 5000, (1, "192.168.7.1", UNREACHABLE), 0, 1000)]
        for target, timeout, expected, least, most in rows:
            with self.subTest(target=target):
                *answer, waited = self.echo(target, timeout=timeout)[target]
                self.assertEqual(tuple(answer), expected)
                self.assertTrue(least <= waited <= most, waited)
        self.net.ip("device", "route del default")
        *answer, waited = self.echo("198.51.100.1")["198.51.100.1"]
        self.assertEqual(tuple(answer), silent)
        self.assertLess(waited, 1000)

    def test_echoes_that_wine_has_no_room_for_are_tried_again(self):
        self.enter(*plain_hosts(60))
        self.net.ip("device", "route add 10.7.0.0/16 dev eth0")
        dead = [f"10.7.0.{number}" for number in range(1, 255)]
        live = [self.net.address(number) for number in self.net.hosts]
        replies = self.echo(*dead, *live)
        self.assertEqual([address for address in live if replies[address][:3] != (1, address, "0")], [])
        self.assertEqual([address for address in dead if replies[address][1] == address], [])

    def test_without_the_right_to_send_echoes_nothing_waits(self):
        def start_without_right(session):
            subprocess.run(["ip", "netns", "exec", self.net.namespace("device"), "setpriv", "--bounding-set=-net_raw",
                            f"{ROOT}/tools/wine-prefix", "start", session.name], check=True, stdout=subprocess.DEVNULL)

        self.enter(Host(10), prepare=start_without_right)
        *answer, waited = self.echo("192.168.7.10")["192.168.7.10"]
        self.assertEqual(answer, [0, "0.0.0.0", "0"])
        self.assertLess(waited, 1000)


class ArpTest(PlatformTest):
    ROUNDS = 10

    def test_254_threads_at_once_get_every_hardware_address_and_no_foreign_one(self):
        self.enter(*plain_hosts(60))
        known = {self.net.address(host.number): host.hardware for host in self.net.hosts.values()}
        known[self.net.address("gateway")] = self.net.gateway_mac
        own = {self.net.address("device"): "-"}  # answers, and is never in its own table
        for name, targets in (("a /24", [f"192.168.7.{number}" for number in range(1, 255)]),
                              ("live hosts", list(self.net.hosts) * 5)):
            with self.subTest(name):
                addresses = [target if isinstance(target, str) else self.net.address(target) for target in targets]
                lines = self.probe("scan", self.ROUNDS, 500, *addresses[:254], timeout=150)
                seen = {line[1]: line[2] for line in lines if line[0] == "host"}
                counts = [int(line[3]) for line in lines if line[0] == "host"]
                expected = {address: {**known, **own}[address] for address in addresses if address in {**known, **own}}
                self.assertEqual(seen, expected)
                self.assertEqual(sum(counts), self.ROUNDS * sum(address in expected for address in addresses[:254]))
                self.assertIn(["ticks", "without", "counters", "0"], lines)


class InternetTest(PlatformTest):
    def fetch(self, host, port=80, proxy="-"):
        """(answered, octets, text, milliseconds)"""
        line = self.probe("fetch", host, port, proxy)[0]
        return int(line[1]), int(line[2]), "".join(line[4:]), int(line[3])

    def test_every_exchange_ends_within_seconds(self):
        self.enter(*[Host(number) for number in (10, 11, 13, 14, 15)], Host(12, "blackhole"),
                   resolver=("192.168.7.1",))
        EchoServer(self.net)
        DhcpServer(self.net, names={"echo.test": "192.168.7.1"})
        answer = http_answer(b"203.0.113.7", length=60)
        ScriptedWebServer(self.net, 10, [answer, *[piece for _ in range(60) for piece in (1, b"1")]])
        ScriptedWebServer(self.net, 11, [piece for octet in answer for piece in (bytes([octet]), 1)])
        ScriptedWebServer(self.net, 13, ["hold"])
        ScriptedWebServer(self.net, 14, [http_answer(b"1" * 30000)])
        ScriptedWebServer(self.net, 15, [http_answer(b"", status="204 No Content"), "reset"])
        found, nothing = (1, 13, "203.0.113.7"), (0, 0, "")
        rows = [  # host, port, proxy, (answered, octets, text), at most this many seconds
            ("192.168.7.1", 80, "-", found, 2),
            ("echo.test", 80, "-", found, 2),
            ("echo.test", 80, "192.168.7.1:80", found, 2),
            ("192.168.7.14", 80, "-", (1, 10000, "1" * 20), 2),
            ("192.168.7.15", 80, "-", (1, 0, ""), 2),
            ("none.test", 80, "-", nothing, 2),
            ("192.168.7.1", 81, "-", nothing, 2),
            ("192.168.7.12", 80, "-", nothing, 4.5),
            ("echo.test", 80, "192.168.7.12:80", nothing, 4.5),
            ("192.168.7.99", 80, "-", nothing, 4.5),
            ("192.168.7.13", 80, "-", nothing, 6.5),
            ("192.168.7.10", 80, "-", nothing, 11),
            ("192.168.7.11", 80, "-", nothing, 11)]
        for host, port, proxy, expected, seconds in rows:
            with self.subTest(host=host, port=port, proxy=proxy):
                *seen, waited = self.fetch(host, port, proxy)
                self.assertEqual(tuple(seen), expected)
                self.assertLess(waited, 1000 * seconds)
        self.net.set_resolver("device", "192.168.7.12")
        *seen, waited = self.fetch("echo.test")
        self.assertEqual(tuple(seen), nothing)
        self.assertLess(waited, 5500)

    def test_a_desktop_is_connected_and_has_the_proxy_of_its_settings(self):
        self.enter()
        connected, no_interface = ["connection", "0", "0", "16"], "80004002"
        rows = [  # enabled, list, result and name
            ("0", "", [no_interface]), ("1", "web:8080", ["0", "web:8080"]), ("0", "web:8080", [no_interface]),
            ("1", "https=other:1;http=web", ["0", "web:80"]), ("1", "https=other:1", [no_interface])]
        for enabled, servers, answer in rows:
            with self.subTest(servers=servers, enabled=enabled):
                for name, kind, value in (("ProxyEnable", "REG_DWORD", enabled), ("ProxyServer", "REG_SZ", servers)):
                    self.wine.run("reg", "add", INTERNET_KEY, "/v", name, "/t", kind, "/d", value, "/f")
                self.assertEqual(self.probe("connection"), [[*connected, *answer]])


class WineDifferencesTest(PlatformTest):
    def test_the_corrections_are_still_needed(self):
        """Fails where Wine has become right: the correction of that line may then go."""
        self.enter(Host(12, "blackhole"))
        self.assertEqual(self.probe("differences", "192.168.7.12"),
                         [["dhcp", "claimed", "1"], ["release", "unsupported", "1"],
                          ["echoes", "refused", "1"], ["connect", "unbounded", "1"]])


if __name__ == "__main__":
    unittest.main()
