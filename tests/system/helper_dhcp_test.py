"""The Linux helper with a real DHCP client and server: lease, release, renewal, asked natively and from under Wine."""
import os
import re
import signal
import socket
import struct
import subprocess
import time
import unittest

from network import Network, stop, wait_until
from peers import DhcpClient, DhcpServer
from wine import HELPER, ROOT, WineSession

PROBE = f"{ROOT}/build/desktop/tests/unit/helper/helper_probe.exe"
LEASE_STATE, RELEASE, RENEW, BINDING = 1, 2, 3, 4
OK, ACCESS_DENIED, GENERAL_FAILURE, NOT_SUPPORTED, BUSY, TIMEOUT = 0, 5, 31, 50, 170, 1460
LEASE_SECONDS = 120
NO_LEASE = {"dhcp": 1, "server": "0.0.0.0", "obtained": 0, "expires": 0, "wins": ("0.0.0.0", "0.0.0.0")}


def dotted(number):
    return socket.inet_ntoa(struct.pack(">I", number))


class Connection:
    """One connection to a helper, made inside the device's namespace; speaks the helper's protocol."""

    def __init__(self, net, port, token):
        self.socket = net.socket("device", socket.SOCK_STREAM)
        self.socket.settimeout(40)
        self.socket.connect(("127.0.0.1", port))
        self.socket.sendall(b"QVHP" + struct.pack("<HH", 1, 0) + token.encode())
        self.sequence = 0

    def send(self, kind, name):
        body = bytes([len(name)]) + name.encode() if name else b""
        self.sequence += 1
        self.socket.sendall(struct.pack("<IHHI", len(body), 1, kind, self.sequence) + body)

    def ask(self, kind, name):
        """The result and what follows it."""
        self.send(kind, name)
        length, version, answered, sequence = struct.unpack("<IHHI", self.take(12))
        assert (version, answered, sequence) == (1, kind | 0x8000, self.sequence)
        body = self.take(length)
        return struct.unpack("<I", body[:4])[0], body[4:]

    def take(self, count):
        data = self.socket.recv(count, socket.MSG_WAITALL)
        if len(data) < count:
            raise EOFError
        return data

    def lease(self, name="eth0"):
        result, rest = self.ask(LEASE_STATE, name)
        assert result == OK
        dhcp, server, obtained, expires, first, second = struct.unpack("<BIIIII", rest)
        return {"dhcp": dhcp, "server": dotted(server), "obtained": obtained, "expires": expires,
                "wins": (dotted(first), dotted(second))}


class DhcpTest(unittest.TestCase):
    def setUp(self):
        self.net = self.enterContext(Network(device_number=None))
        self.server = DhcpServer(self.net, lease=str(LEASE_SECONDS))
        self.client = DhcpClient(self.net)

    def dhclient_runs(self):
        with open(self.client.pid_file) as file:
            number = file.read().strip()
        try:
            with open(f"/proc/{number}/cmdline", "rb") as file:
                return self.client.pid_file.encode() in file.read().split(b"\0")
        except FileNotFoundError:
            return False


class HelperDhcpTest(DhcpTest):
    def setUp(self):
        super().setUp()
        self.start_helper()

    def start_helper(self, *prefix):
        helper = self.net.start("device", [*prefix, HELPER], stdout=subprocess.PIPE, text=True)
        text = helper.stdout.readline() + helper.stdout.readline()
        self.address = int(re.search(r"PORT=(\d+)", text)[1]), re.search(r"TOKEN=([0-9a-f]{32})", text)[1]
        self.helper = self.connect()

    def connect(self):
        connection = Connection(self.net, *self.address)
        self.addCleanup(connection.socket.close)
        return connection

    def assert_fresh_lease(self, since):
        lease = self.helper.lease()
        gateway = self.net.address("gateway")
        self.assertEqual((1, gateway, (self.net.address(2), "0.0.0.0")), (lease["dhcp"], lease["server"], lease["wins"]))
        self.assertGreaterEqual(lease["obtained"], int(since))
        self.assertLessEqual(lease["obtained"], time.time())
        self.assertEqual(LEASE_SECONDS, lease["expires"] - lease["obtained"])

    def test_a_lease_is_read_given_back_and_renewed(self):
        self.assert_fresh_lease(time.time() - 20)
        address = self.client.address()

        self.assertEqual(OK, self.helper.ask(RELEASE, "eth0")[0])
        self.assertEqual("", self.client.address())
        wait_until(lambda: not self.server.leases(), 5, "the server takes the lease back")
        self.assertEqual(NO_LEASE, self.helper.lease())

        since = time.time()
        self.assertEqual(OK, self.helper.ask(RENEW, "eth0")[0])
        self.assertLess(time.time() - since, 8)
        self.assertEqual(address, self.client.address())
        self.assert_fresh_lease(since)

    def test_a_renewal_while_the_client_runs_moves_the_expiry(self):
        before = self.helper.lease()["expires"]
        time.sleep(1.1)
        self.assertEqual(OK, self.helper.ask(RENEW, "eth0")[0])
        self.assertGreater(self.helper.lease()["expires"], before)
        self.assertTrue(self.dhclient_runs())

    def test_a_renewal_without_a_server_ends_in_time_and_the_client_goes_on(self):
        self.server.stop()
        # The client would fall back on the lease that it knows after its own time-out.
        os.truncate(self.client.lease_file, 0)
        since = time.monotonic()
        self.helper.send(RENEW, "eth0")
        time.sleep(0.3)
        second = self.connect()
        asked = time.monotonic()
        self.assertEqual(0, second.lease("lo")["dhcp"])
        self.assertEqual(GENERAL_FAILURE, second.ask(BINDING, "")[0])
        self.assertEqual(BUSY, second.ask(RENEW, "eth0")[0])
        self.assertLess(time.monotonic() - asked, 0.5)
        self.assertEqual(TIMEOUT, struct.unpack("<12xI", self.helper.take(16))[0])
        self.assertLess(time.monotonic() - since, 24)
        self.assertTrue(self.dhclient_runs())
        DhcpServer(self.net)
        wait_until(self.client.address, 20, "the client finds the new server")

    def test_an_interface_without_dhcp_has_none_and_nothing_is_done_to_it(self):
        self.net.ip("device", "link add eth1 up type veth peer name eth2", "addr add 10.78.0.1/24 dev eth1")
        for name in ("eth1", "lo", "nothere0"):
            self.assertEqual(0, self.helper.lease(name)["dhcp"], name)
            self.assertEqual(NOT_SUPPORTED, self.helper.ask(RELEASE, name)[0])
            self.assertEqual(NOT_SUPPORTED, self.helper.ask(RENEW, name)[0])
        self.assertIn("10.78.0.1", self.net.run("device", ["ip", "addr", "show", "eth1"]).stdout)

    def test_a_change_without_rights_is_refused(self):
        os.chmod(self.net.folder, 0o755)
        self.start_helper("setpriv", "--reuid=65534", "--clear-groups")
        self.assertEqual(1, self.helper.lease()["dhcp"])
        self.assertEqual(ACCESS_DENIED, self.helper.ask(RELEASE, "eth0")[0])
        self.assertEqual(ACCESS_DENIED, self.helper.ask(RENEW, "eth0")[0])
        self.assertNotEqual("", self.client.address())


class HelperUnderWineTest(DhcpTest):
    """The desktop's own client, as a Windows program, with the real helper in every state of health."""

    def setUp(self):
        super().setUp()
        self.wine = self.enterContext(WineSession(self.net))
        self.helper = self.wine.start_helper()
        self.probe = self.net.start("device", ["wine", PROBE], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                    env=self.wine.variables)
        self.ask("radio")  # the first program of a session starts slowly

    def ask(self, line):
        """(result, milliseconds, dhcp, server, obtained, expires)"""
        self.probe.stdin.write(line + "\n")
        self.probe.stdin.flush()
        return tuple(map(int, self.probe.stdout.readline().split()))

    def test_lease_release_and_renewal_work_from_a_windows_program(self):
        found, milliseconds, dhcp, server, obtained, expires = self.ask("lease eth0")
        self.assertEqual((1, 1, self.net.address("gateway")), (found, dhcp, dotted(server)))
        self.assertEqual(LEASE_SECONDS, expires - obtained)
        self.assertLess(milliseconds, 300)
        self.assertEqual(0, self.ask("release eth0")[0])
        self.assertEqual("", self.client.address())
        self.assertEqual(0, self.ask("renew eth0")[0])
        self.assertNotEqual("", self.client.address())
        self.assertEqual(0, self.ask("radio")[0])
        print("lease over Wine:", [self.ask("lease eth0")[1] for _ in range(5)], "ms")

    def test_a_hung_helper_costs_one_bound_and_comes_back(self):
        os.kill(self.helper.pid, signal.SIGSTOP)
        times = [self.ask("lease eth0")[:2] for _ in range(10)]
        print("hung helper:", times)
        self.assertEqual({0}, {found for found, _ in times})
        self.assertLess(times[0][1], 600)
        self.assertLess(sum(milliseconds for _, milliseconds in times[1:]), 100)
        since = time.monotonic()
        self.assertEqual(TIMEOUT, self.ask("renew eth0")[0])
        self.assertLess(time.monotonic() - since, 27)
        os.kill(self.helper.pid, signal.SIGCONT)
        wait_until(lambda: self.ask("lease eth0")[0], 40, "the helper answers again", 1)

    def test_a_helper_that_dies_is_noticed_at_once(self):
        self.assertEqual(1, self.ask("lease eth0")[0])
        stop(self.helper)
        for line, failed in (("lease eth0", 0), ("renew eth0", GENERAL_FAILURE), ("radio", 0)):
            result, milliseconds, *_ = self.ask(line)
            self.assertEqual(failed, result)
            self.assertLess(milliseconds, 300)


if __name__ == "__main__":
    unittest.main()
