"""The Linux helper with dhclient and dnsmasq on a network of namespaces: lease, release, renewal. Needs root.

QUORVANE_HELPER_PROGRAM names the built quorvane-helper.
"""

import ctypes
import os
import pathlib
import re
import shutil
import signal
import socket
import struct
import subprocess
import tempfile
import time
import unittest

HELPER = os.environ.get("QUORVANE_HELPER_PROGRAM", "build/release/platform/linux/quorvane-helper")
SERVER, CLIENT = f"qvh-{os.getpid()}s", f"qvh-{os.getpid()}c"
LEASE_STATE, RELEASE, RENEW, BINDING = 1, 2, 3, 4
OK, ACCESS_DENIED, GENERAL_FAILURE, NOT_SUPPORTED, BUSY, TIMEOUT = 0, 5, 31, 50, 170, 1460


def run(*words, check=True):
    return subprocess.run(words, check=check, capture_output=True, text=True).stdout


def inside(namespace, *words):
    return ("ip", "netns", "exec", namespace) + words


class HelperProcess:
    """A quorvane-helper in the client's namespace."""

    def __init__(self, *prefix):
        self.process = subprocess.Popen(inside(CLIENT, *prefix, HELPER), stdout=subprocess.PIPE, text=True)
        text = self.process.stdout.readline() + self.process.stdout.readline()
        self.port = int(re.search(r"PORT=(\d+)", text).group(1))
        self.token = re.search(r"TOKEN=([0-9a-f]{32})", text).group(1)

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


class Connection:
    """One connection to a helper, made inside the client's namespace."""

    def __init__(self, helper):
        self.socket = self.connect(helper.port)
        self.socket.sendall(b"QVHP" + struct.pack("<HH", 1, 0) + helper.token.encode())
        self.sequence = 0

    @staticmethod
    def connect(port):
        """A socket belongs to the namespace it is made in."""
        own = os.open("/proc/self/ns/net", os.O_RDONLY)
        there = os.open(f"/run/netns/{CLIENT}", os.O_RDONLY)
        try:
            enter_namespace(there)
            return socket.create_connection(("127.0.0.1", port), timeout=30)
        finally:
            enter_namespace(own)
            os.close(own)
            os.close(there)

    def ask(self, kind, name):
        body = bytes([len(name)]) + name.encode() if name else b""
        self.sequence += 1
        self.socket.sendall(struct.pack("<IHHI", len(body), 1, kind, self.sequence) + body)
        length, version, answered, sequence = struct.unpack("<IHHI", self.take(12))
        assert (version, answered, sequence) == (1, kind | 0x8000, self.sequence)
        body = self.take(length)
        return struct.unpack("<I", body[:4])[0], body[4:]

    def take(self, count):
        data = b""
        while len(data) < count:
            part = self.socket.recv(count - len(data))
            if not part:
                raise EOFError
            data += part
        return data

    def lease(self, name="eth0"):
        result, rest = self.ask(LEASE_STATE, name)
        assert result == OK
        dhcp, server, obtained, expires, first, second = struct.unpack("<BIIIII", rest)
        return {"dhcp": dhcp, "server": dotted(server), "obtained": obtained, "expires": expires,
                "wins": (dotted(first), dotted(second))}


def enter_namespace(descriptor):
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.setns(descriptor, 0x40000000) != 0:  # CLONE_NEWNET
        raise OSError(ctypes.get_errno(), "setns")


def dotted(number):
    return socket.inet_ntoa(struct.pack(">I", number))


class HelperDhcpTest(unittest.TestCase):
    LEASE_SECONDS = 120

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="qvh-"))
        self.addCleanup(shutil.rmtree, self.folder)
        for namespace in (SERVER, CLIENT):
            run("ip", "netns", "add", namespace)
            self.addCleanup(run, "ip", "netns", "del", namespace)
        for command in (
                f"-n {SERVER} link add eth0 type veth peer name eth0 netns {CLIENT}",
                f"-n {CLIENT} link add eth1 type veth peer name eth2",
                f"-n {SERVER} addr add 10.77.0.1/24 dev eth0",
                f"-n {SERVER} link set eth0 up", f"-n {SERVER} link set lo up",
                f"-n {CLIENT} link set eth0 up", f"-n {CLIENT} link set lo up",
                f"-n {CLIENT} addr add 10.78.0.1/24 dev eth1", f"-n {CLIENT} link set eth1 up"):
            run("ip", *command.split())
        self.files = ["-4", "-pf", str(self.folder / "client.pid"), "-lf", str(self.folder / "client.leases")]
        self.addCleanup(self.end_dhclient)
        self.start_server()
        run(*inside(CLIENT, "dhclient", *self.files, "eth0"))
        self.helper = self.start_helper()

    def start_helper(self, *prefix):
        self.program = HelperProcess(*prefix)
        self.addCleanup(self.program.end)
        return self.connect()

    def connect(self):
        connection = Connection(self.program)
        self.addCleanup(connection.socket.close)
        return connection

    def start_server(self):
        self.server = subprocess.Popen(inside(
            SERVER, "dnsmasq", "--keep-in-foreground", "--conf-file=/dev/null", "--interface=eth0",
            "--bind-interfaces", "--port=0", "--no-ping", f"--dhcp-range=10.77.0.50,10.77.0.60,{self.LEASE_SECONDS}s",
            "--dhcp-option=44,10.77.0.1,10.77.0.9", f"--dhcp-leasefile={self.folder}/server.leases",
            f"--pid-file={self.folder}/server.pid"), stderr=subprocess.DEVNULL)
        self.addCleanup(self.stop_server, self.server)
        self.wait_for(lambda: (self.folder / "server.pid").exists())

    @staticmethod
    def stop_server(server):
        server.terminate()
        server.wait()

    def dhclient_id(self):
        try:
            number = int((self.folder / "client.pid").read_text())
            words = pathlib.Path(f"/proc/{number}/cmdline").read_bytes().split(b"\0")
            return number if str(self.folder / "client.pid").encode() in words else None
        except (FileNotFoundError, ValueError):
            return None

    def end_dhclient(self):
        number = self.dhclient_id()
        if number:
            os.kill(number, signal.SIGKILL)

    def wait_for(self, condition):
        deadline = time.monotonic() + 10
        while not condition():
            self.assertLess(time.monotonic(), deadline, "waited in vain")
            time.sleep(0.05)

    def addresses(self):
        return re.findall(r"inet ([\d.]+)", run("ip", "-n", CLIENT, "-4", "addr", "show", "eth0"))

    def held_by_server(self):
        return (self.folder / "server.leases").read_text().strip() != ""

    def assert_fresh_lease(self, since):
        lease = self.helper.lease()
        self.assertEqual((1, "10.77.0.1", ("10.77.0.1", "10.77.0.9")), (lease["dhcp"], lease["server"], lease["wins"]))
        self.assertGreaterEqual(lease["obtained"], int(since))
        self.assertLessEqual(lease["obtained"], time.time())
        self.assertEqual(self.LEASE_SECONDS, lease["expires"] - lease["obtained"])

    def test_a_lease_is_read_given_back_and_renewed(self):
        self.assert_fresh_lease(time.time() - 10)
        address = self.addresses()

        self.assertEqual(OK, self.helper.ask(RELEASE, "eth0")[0])
        self.assertEqual([], self.addresses())
        self.wait_for(lambda: not self.held_by_server())
        self.assertEqual({"dhcp": 1, "server": "0.0.0.0", "obtained": 0, "expires": 0,
                          "wins": ("0.0.0.0", "0.0.0.0")}, self.helper.lease())

        since = time.time()
        self.assertEqual(OK, self.helper.ask(RENEW, "eth0")[0])
        self.assertLess(time.time() - since, 8)
        self.assertEqual(address, self.addresses())
        self.assert_fresh_lease(since)

    def test_a_renewal_while_the_client_runs_moves_the_expiry(self):
        before = self.helper.lease()["expires"]
        time.sleep(1.1)
        self.assertEqual(OK, self.helper.ask(RENEW, "eth0")[0])
        self.assertGreater(self.helper.lease()["expires"], before)
        self.assertIsNotNone(self.dhclient_id())

    def test_a_renewal_without_a_server_ends_in_time_and_the_client_goes_on(self):
        self.stop_server(self.server)
        since = time.monotonic()
        self.assertEqual(TIMEOUT, self.helper.ask(RENEW, "eth0")[0])
        self.assertLess(time.monotonic() - since, 23)
        self.assertIsNotNone(self.dhclient_id())
        self.start_server()
        self.wait_for(self.addresses)

    def test_an_interface_without_dhcp_has_none_and_nothing_is_done_to_it(self):
        for name in ("eth1", "lo", "nothere0"):
            self.assertEqual(0, self.helper.lease(name)["dhcp"], name)
            self.assertEqual(NOT_SUPPORTED, self.helper.ask(RELEASE, name)[0])
            self.assertEqual(NOT_SUPPORTED, self.helper.ask(RENEW, name)[0])
        self.assertIn("10.78.0.1", run("ip", "-n", CLIENT, "addr", "show", "eth1"))

    def test_a_release_without_rights_is_refused(self):
        helper = self.start_helper("setpriv", "--reuid=65534", "--clear-groups")
        self.assertEqual(1, helper.lease()["dhcp"])
        self.assertEqual(ACCESS_DENIED, helper.ask(RELEASE, "eth0")[0])
        self.assertEqual(ACCESS_DENIED, helper.ask(RENEW, "eth0")[0])
        self.assertNotEqual([], self.addresses())

    def test_queries_are_answered_while_a_renewal_waits(self):
        self.stop_server(self.server)
        self.helper.socket.sendall(struct.pack("<IHHI", 5, 1, RENEW, 99) + b"\4eth0")
        time.sleep(0.3)
        since = time.monotonic()
        second = self.connect()
        self.assertEqual(0, second.lease("eth1")["dhcp"])
        self.assertEqual(GENERAL_FAILURE, second.ask(BINDING, "")[0])
        self.assertEqual(BUSY, second.ask(RENEW, "eth0")[0])
        self.assertLess(time.monotonic() - since, 0.3)


if __name__ == "__main__":
    unittest.main(verbosity=2)
