"""The intruder detector's scan and the ping dialog on LANs of hosts whose names and hardware addresses are known."""
import binascii
import dataclasses
import glob
import os
import time
import unittest

from network import Host, Network, plain_hosts, wait_until
from peers import HOSTILE_REPLIES, HostileNetbios, NetbiosPeers
from tool import Tool
from wine import ROOT, WineSession

BOUND_SECONDS = 550
SCAN_PROBE = f"{ROOT}/build/desktop/tests/scan_probe.exe"
LIBRARY = f"{ROOT}/build/desktop/quorvane.dll"
LONGEST_SCAN = 11.0  # an echo of 5 s, then a name query of 5 s
ROUNDS = 5

DETECTOR, LIST, EXPORT, DETECT, OK = (190, 10), 1089, 1090, 1085, 1
PING, PING_HOST, PING_LINES, PING_BUTTON = (110, 10), 1007, (1025, 1026, 1038), 1024


@dataclasses.dataclass
class Round:
    hosts: dict  # {address: (hardware address, name as bytes, ms after which it was complete)}
    milliseconds: int = 0
    pending: int = 0


def run_scans(wine, rounds, timeout=None):
    """[Round] of so many scans, and (threads, handles, ms of processor time, KB) that they left or took."""
    done = wine.run(SCAN_PROBE, "scan", str(rounds), timeout=timeout or 30 + rounds * 40)
    if done.returncode:
        raise RuntimeError(f"scan_probe: {done.returncode} {done.stdout}")
    results, hosts, left = [], {}, None
    for words in map(str.split, done.stdout.splitlines()):
        if words[:1] == ["host"]:
            name = b"" if words[4] == "-" else binascii.unhexlify(words[4])
            hosts[words[2]] = (words[3], name, int(words[1]))
        elif words[:1] == ["round"]:
            results.append(Round(hosts, int(words[1]), int(words[2])))
            hosts = {}
        elif words[:1] == ["left"]:
            left = tuple(map(int, words[1:]))
    return results, left


def expected_hosts(net, names):
    """{address: (hardware address, name)} of all that answer an echo within 5 s; the device has no row in its own table."""
    found = {net.address("device"): ("-", b""), net.address("gateway"): (net.gateway_mac, b"")}
    for host in net.hosts.values():
        if host.behaviour == "answers" or (host.behaviour == "late" and host.delay < 5):
            for number in (host.number, *host.also):
                found[net.address(number)] = (host.hardware, names.get(host.number, "").encode())
    return found


class ScanTest(unittest.TestCase):
    maxDiff = None

    def enter(self, hosts):
        self.net = self.enterContext(Network(hosts))
        self.wine = self.enterContext(WineSession(self.net))

    def assert_found(self, results, names):
        expected = expected_hosts(self.net, names)
        for number, result in enumerate(results):
            with self.subTest(round=number):
                self.assertEqual({address: row[:2] for address, row in result.hosts.items()}, expected)
                self.assertEqual(result.pending, 0)
                self.assertLess(result.milliseconds, LONGEST_SCAN * 1000)

    def test_twelve_hosts_of_every_kind_five_times_out_of_five(self):
        self.enter([Host(2), Host(10), Host(11), Host(20), Host(60), Host(254), Host(30, also=(31,)), Host(40, "drops"),
                    Host(41, "blackhole"), Host(50, "late", delay=3), Host(51, "late", delay=8), Host(100)])
        names = {10: "PRINTER", 20: "FILES-AND-MORE1", 30: "TWO-NUMBERS", 100: "X", 40: "SILENT", 50: "LATE"}
        NetbiosPeers(self.net, names)
        results, left = run_scans(self.wine, ROUNDS)
        self.assertEqual(len(results), ROUNDS)
        self.assert_found(results, names)
        self.assertEqual(left[:2], (0, 0), "threads and handles left")

    def test_sixty_hosts_five_times_out_of_five(self):
        self.enter(plain_hosts(60))
        names = {number: f"HOST-{number}" for number in list(self.net.hosts)[::6]}
        NetbiosPeers(self.net, names, 60)
        results, left = run_scans(self.wine, ROUNDS)
        self.assert_found(results, names)
        self.assertEqual(left[:2], (0, 0), "threads and handles left")

    def test_hostile_names_are_refused_or_taken_as_they_are(self):
        kinds = list(HOSTILE_REPLIES)
        self.enter(plain_hosts(len(kinds)))
        for number, kind in zip(self.net.hosts, kinds):
            HostileNetbios(self.net, number, kind)
        taken = {"good": b"GOOD", "75 bytes": b"LEAST", "count 0": b"NONE", "1024 bytes": b"LARGE", "blanks": b" ",
                 "signs": 'A "b",\xe9\x80 \xff'.encode("latin-1"), "flood": b"FLOOD"}
        results, _ = run_scans(self.wine, 2)
        for result in results:
            found = {kind: result.hosts[self.net.address(number)][1] for number, kind in zip(self.net.hosts, kinds)}
            # A question name that is not repeated shifts what is read; only its length counts.
            found.pop("compressed name")
            self.assertEqual(found, {kind: taken.get(kind, b"") for kind in found})

    def test_a_library_unloaded_during_a_scan_stays_until_the_last_worker_has_ended(self):
        self.enter([Host(2)])
        done = self.wine.run(SCAN_PROBE, "unload", LIBRARY)
        self.assertEqual(done.returncode, 0, done.stdout)
        lines = done.stdout.splitlines()
        self.assertEqual(lines[:2], ["loaded 1", "loaded 0"])
        before, after = map(int, lines[2].split()[1:])
        self.assertGreater(before, 200)
        self.assertLess(after, 20)


class DetectorDialogTest(unittest.TestCase):
    def test_a_person_detects_marks_and_exports(self):
        net = self.enterContext(Network([Host(10), Host(20), Host(77, "drops")]))
        wine = self.enterContext(WineSession(net))
        NetbiosPeers(net, {10: "PRINTER"})
        tool = self.enterContext(Tool(wine, *DETECTOR))
        self.assertFalse(tool.dialog()[1][EXPORT].enabled)
        started = time.monotonic()
        tool.press(DETECT)
        rows = [["", net.address("gateway"), net.gateway_mac.upper()],
                ["PRINTER", net.address(10), net.hosts[10].hardware.upper()],
                ["", net.address(20), net.hosts[20].hardware.upper()],
                ["", net.address("device"), net.device_mac.upper()]]
        wait_until(lambda: tool.rows(LIST) == rows, 15, "the ordered list", 0.2)
        self.assertLess(time.monotonic() - started, 15)
        # A tap on the printer's row makes it safe.
        for message in ("0x201", "0x202"):
            tool.probe("post", LIST, message, 1, 44 << 16 | 30)
        title, controls = wait_until(lambda: (shown := tool.dialog())[0] == "Question" and shown, 10, "the question")
        self.assertIn("Add PRINTER to safe list?", [control.text for control in controls.values()])
        tool.press(6)
        wait_until(lambda: os.path.exists(f"{wine.data}/slist.dat"), 10, "the safe list")
        tool.press(EXPORT)
        title, controls = wait_until(lambda: (shown := tool.dialog())[0] == "Infomation" and shown, 10, "the outcome")
        tool.press(1)
        with open(f"{wine.data}/slist.dat", "rb") as file:
            self.assertEqual(file.read(), bytes.fromhex(net.hosts[10].hardware.replace(":", "")))
        reports = glob.glob(f"{wine.documents()}/QuorvaneRpt*.csv")
        self.assertEqual([os.path.basename(report) for report in reports], ["QuorvaneRpt001.csv"])
        with open(reports[0], "rb") as file:
            marks = ["Yes", "No", "Yes", "No"]
            self.assertEqual(file.read().decode(), '"Host","Intruder","IP","Mac Addr"\n' + "".join(
                f'"{name}","{mark}","{address}","{mac}"\n' for (name, address, mac), mark in zip(rows, marks)))


class PingDialogTest(unittest.TestCase):
    def test_every_kind_of_host(self):
        net = self.enterContext(Network([Host(10), Host(40, "drops"), Host(50, "late", delay=2)]))
        net.refuse_by_gateway("10.99.0.0/16")
        behind = net.redirect_by_gateway("10.77.0.0/24", 10)
        wine = self.enterContext(WineSession(net))
        tool = self.enterContext(Tool(wine, *PING))
        alive = "Host ({}) is alive"
        rows = [
            (net.address(10), alive.format(net.address(10)), f"MAC Address: {net.hosts[10].hardware.upper()}"),
            (net.address(50), alive.format(net.address(50)), f"MAC Address: {net.hosts[50].hardware.upper()}"),
            (net.address("device"), alive.format(net.address("device")), ""),
            (behind, alive.format(behind), ""),
            (net.address(40), "Request timed out.", ""),
            (net.address(99), "Destination host unreachable.", ""),
            ("10.99.1.1", "Destination host unreachable.", ""),
            ("x" * 99, "Unknown host: " + "x" * 99, ""),
        ]
        for host, status, mac in rows:
            with self.subTest(host=host):
                tool.probe("set", PING_HOST, host)
                tool.press(PING_BUTTON)
                shown = wait_until(lambda: (lines := tool.texts(*PING_LINES))[0] not in ("", "Pinging...") and lines,
                                   15, "the answer", 0.1)
                self.assertEqual([shown[0], shown[2]], [status, mac])
                self.assertRegex(shown[1], r"^Round Trip Time: \d+ ms$" if "alive" in status else "^$")
                if host == net.address(50):
                    self.assertTrue(2000 <= int(shown[1].split()[3]) < 2500, shown[1])
                self.assertTrue(tool.dialog()[1][PING_BUTTON].enabled)
        with open(f"{wine.data}/hosts.dat", "rb") as file:
            data = file.read()
        kept = [data[at:at + 200].decode("utf-16-le").partition("\0")[0] for at in range(0, len(data), 200)]
        self.assertEqual(kept, [host for host, _, _ in rows])
        self.assertEqual(wine.value("pinghost"), rows[-1][0])


if __name__ == "__main__":
    unittest.main()
