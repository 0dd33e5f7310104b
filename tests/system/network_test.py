"""The test network is what it claims to be, seen from the device by tools that are not ours."""
import concurrent.futures
import glob
import os
import re
import socket
import subprocess
import sys
import time
import unittest

from network import Host, Network, plain_hosts, remove_remains
from peers import (DhcpClient, DhcpServer, EchoServer, HOSTILE_REPLIES, HostileNetbios, NetbiosPeers,
                   ScriptedWebServer, ask_node_status, http_answer, transfer)

BOUND_SECONDS = 120


def ping(net, address, seconds=1):
    return net.run("device", ["ping", "-n", "-c1", f"-W{seconds}", address]).stdout


def fetch(net, place, seconds=3):
    """The whole answer to a request for the public address, and the error that ended it, if one did."""
    answer = b""
    with net.socket("device", socket.SOCK_STREAM) as link:
        link.settimeout(seconds)
        try:
            link.connect((net.address(place), 80))
            link.sendall(b"GET /ip/ip.php HTTP/1.1\r\nHost: echo\r\nConnection: close\r\n\r\n")
            while piece := link.recv(65536):
                answer += piece
        except OSError as error:
            return answer, type(error)
    return answer, None


class HostsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.net = Network([Host(10, mac="02:aa:bb:cc:dd:0a"), Host(11, "drops"), Host(12, "blackhole"),
                           Host(13, "late", delay=0.5), Host(14, also=(15,)), Host(16)])
        cls.addClassCleanup(cls.net.close)
        cls.net.__enter__()

    def test_each_host_behaves_as_named(self):
        rows = [  # number, answers echoes, hardware address
            (1, True, "02:51:56:01:00:fe"), (10, True, "02:aa:bb:cc:dd:0a"), (11, False, "02:51:56:00:00:0b"),
            (12, False, "02:51:56:00:00:0c"), (14, True, "02:51:56:00:00:0e"), (15, True, "02:51:56:00:00:0e"),
            (99, False, "")]
        for number, answers, hardware in rows:
            with self.subTest(number=number):
                self.assertEqual("1 received" in ping(self.net, self.net.address(number)), answers)
                self.assertEqual(self.net.neighbour(number), hardware)

    def test_a_late_host_answers_after_its_delay(self):
        shown = ping(self.net, self.net.address(13), 2)
        self.assertTrue(500 <= float(re.search(r"time=([\d.]+) ms", shown)[1]) < 900, shown)

    def test_a_host_that_drops_still_takes_connections_and_a_black_hole_does_not(self):
        for number, error in ((11, ConnectionRefusedError), (12, TimeoutError)):
            self.assertEqual(fetch(self.net, number, 1), (b"", error))

    def test_the_gateway_refuses_and_redirects(self):
        self.net.refuse_by_gateway("10.1.0.0/16")
        for _ in range(3):
            self.assertIn("From 192.168.7.1 icmp_seq=1 Destination Host Unreachable", ping(self.net, "10.1.2.3"))
        redirected = self.net.redirect_by_gateway("10.2.0.0/16", 16)
        shown = ping(self.net, redirected)
        self.assertIn("Redirect Host(New nexthop: 192.168.7.16)", shown)
        self.assertIn("1 received", shown)

    def test_nmbd_owns_the_names_given(self):
        NetbiosPeers(self.net, {10: "TEN", 11: "FIFTEEN-LETTERS"})
        for number, name in ((10, "TEN"), (11, "FIFTEEN-LETTERS")):
            shown = self.net.run("device", ["nmblookup", "-A", self.net.address(number)]).stdout
            self.assertRegex(shown, rf"(?m)^\s+{name}\s+<00> -\s+B <ACTIVE>")

    def test_transfers_move_the_size_they_name(self):
        for protocol in ("udp", "tcp"):
            with self.subTest(protocol=protocol):
                before = self.net.counters()
                self.assertEqual(transfer(self.net, 10, "device", 1_000_000, protocol), 1_000_000)
                received = self.net.counters()[0] - before[0]
                self.assertTrue(1_000_000 < received < 1_060_000, received)

    def test_web_servers_send_what_they_were_given(self):
        server = EchoServer(self.net, body=b"203.0.113.7\r\n")
        answer, error = fetch(self.net, "gateway")
        self.assertEqual((answer.split(b"\r\n\r\n", 1)[1], error), (b"203.0.113.7\r\n", None))
        self.assertIn("GET /ip/ip.php HTTP/1.1\" 200", server.requests()[0])
        server.stop()
        self.assertEqual(fetch(self.net, "gateway"), (b"", ConnectionRefusedError))
        large, cut = http_answer(b"\x00" + b"1" * 12000), http_answer(b"1.2", length=7)
        rows = [  # number, pieces, what arrives, how it ends
            (10, [large], large, None), (14, [cut, 0.3, b".3.4"], cut + b".3.4", None),
            (16, [cut, 0.3, "reset"], cut, ConnectionResetError)]
        for number, pieces, answer, error in rows:
            with self.subTest(number=number):
                ScriptedWebServer(self.net, number, pieces)
                self.assertEqual(fetch(self.net, number), (answer, error))

    def test_the_adapter_comes_back_under_a_chosen_index(self):
        self.net.detach_device()
        self.assertIn("unreachable", ping(self.net, self.net.address(10)))
        self.net.attach_device(index=77)
        self.assertIn("1 received", ping(self.net, self.net.address(10)))
        self.assertIn("77: eth0", self.net.run("device", ["ip", "link", "show", "eth0"]).stdout)


class NetworkTest(unittest.TestCase):
    def test_sizes_from_12_to_200_hosts_are_ready_within_seconds(self):
        for count in (12, 60, 200):
            with self.subTest(count=count):
                started = time.monotonic()
                with Network(plain_hosts(count)) as net:
                    self.assertLess(time.monotonic() - started, 10)
                    with concurrent.futures.ThreadPoolExecutor(8) as pool:
                        shown = list(pool.map(lambda number: ping(net, net.address(number)), net.hosts))
                    self.assertEqual(sum("1 received" in text for text in shown), count)
                    self.assertEqual([net.neighbour(host.number) for host in net.hosts.values()],
                                     [host.hardware for host in net.hosts.values()])

    def test_hostile_responders_send_their_datagrams(self):
        kinds = list(HOSTILE_REPLIES)
        with Network(plain_hosts(len(kinds))) as net:
            sizes = {}
            for number, kind in zip(net.hosts, kinds):
                responder = HostileNetbios(net, number, kind)
                with net.socket("device") as link:
                    link.settimeout(0.3)
                    link.sendto(b"any question", (net.address(number), 137))
                    try:
                        sizes[kind] = len(link.recv(65536))
                    except socket.timeout:
                        sizes[kind] = None
                self.assertEqual(len(responder.requests), 1)
            exact = {"empty": 0, "one byte": 1, "74 bytes": 74, "75 bytes": 75, "count 3 of 100 bytes": 100,
                     "1024 bytes": 1024, "9000 bytes": 9000, "silence": None}
            self.assertEqual({kind: sizes[kind] for kind in exact}, exact)
            self.assertEqual(ask_node_status(net, "device", net.address(list(net.hosts)[0])), [b"GOOD"])

    def test_a_lease_is_obtained_and_released(self):
        with Network(device_number=None) as net:
            server = DhcpServer(net, names={"echo.test": "203.0.113.9"})
            client = DhcpClient(net)
            self.assertEqual([row[1:] for row in server.leases()], [(net.device_mac, client.address())])
            self.assertIn("203.0.113.9", net.run("device", ["getent", "hosts", "echo.test"]).stdout)
            with open(client.lease_file) as file:
                lease = file.read()
            self.assertIn("option netbios-name-servers 192.168.7.2;", lease)
            net.run("device", client.command("-r"))
            self.assertEqual((client.address(), server.leases()), ("", []))

    def test_a_killed_owner_leaves_nothing_that_stays(self):
        script = ("import os, signal, network\n"
                  "net = network.Network([network.Host(2)]).__enter__()\n"
                  "net.start(2, ['sleep', '300'], stdout=-3, stderr=-3)\n"
                  "print(net.prefix, flush=True)\nos.kill(os.getpid(), signal.SIGKILL)")
        prefix = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True,
                                cwd=os.path.dirname(os.path.abspath(__file__))).stdout.strip()
        self.assertEqual(len(glob.glob(f"/run/netns/{prefix}*")), 4)
        with Network() as living:
            remove_remains()
            self.assertEqual(glob.glob(f"/run/netns/{prefix}*"), [])
            self.assertEqual(len(glob.glob(f"/run/netns/{living.prefix}*")), 3)


if __name__ == "__main__":
    unittest.main()
