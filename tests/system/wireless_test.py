"""The wireless tools where there is no radio, and the helper that would know one hangs; and the demonstration's radio."""
import glob
import signal
import time
import unittest

from network import Host, Network, wait_until
from peers import Stream
from tool import Tool
from wine import WineSession, read_log

BOUND_SECONDS = 300
SCANNER, CARD, DETECTOR = (150, 10), (170, 10), (190, 10)
SCANNER_SSID, SCANNER_LIST, CARD_VALUES = 1039, 1059, (1049, 1050, 1051, 1052, 1053, 1055, 1056, 1057)
DETECT, HOSTS, OK = 1085, 1089, 1
TICK = 2.0


class WirelessTest(unittest.TestCase):
    def enter(self):
        self.net = self.enterContext(Network([Host(10)]))
        self.wine = self.enterContext(WineSession(self.net, TZ="UTC"))

    def test_without_a_radio_there_is_nothing(self):
        self.enter()
        self.wine.start_helper()
        with Tool(self.wine, *SCANNER) as tool:
            self.assertEqual(tool.rows(SCANNER_LIST), [])
            self.assertEqual(tool.texts(SCANNER_SSID), [""])
        with Tool(self.wine, *CARD) as tool:
            self.assertEqual(tool.texts(*CARD_VALUES), [""] * len(CARD_VALUES))

    def test_a_hung_helper_keeps_no_tick_from_being_logged(self):
        self.enter()
        helper = self.wine.start_helper()
        with Stream(self.net, 10, "device"):
            self.wine.start_host("--seconds", 300)
            wait_until(self.wine.logs, 20, "the log")
            helper.send_signal(signal.SIGSTOP)
            for _ in range(5):
                before, started = self.wine.logged(), time.monotonic()
                wait_until(lambda: self.wine.logged() != before, 10, "the next tick", 0.05)
                # One bound is 0.3 s; the machine may be busy.
                self.assertLess(time.monotonic() - started, TICK + 1.5)

    def test_the_demonstration_shows_its_own_network_and_leaves_the_users_things_alone(self):
        self.enter()
        self.wine.set_value("XLocation", 40)
        with Tool(self.wine, *SCANNER, more=["--demo"]) as tool:
            self.assertIn(["", "Lighthouse"], tool.rows(SCANNER_LIST))
            self.assertEqual(tool.texts(SCANNER_SSID), ["Harbour Office"])
            logs = sorted(glob.glob(f"{self.wine.folder}/drive_c/users/*/Temp/Quorvane demonstration/*.log"))
            self.assertEqual(len(logs), 3)
            prefilled = read_log(logs[-1])[0]
            wait_until(lambda: read_log(logs[-1])[0] != prefilled, 20, "the demonstration's log to grow")
        self.assertEqual(self.wine.logs(), [])
        self.assertEqual([self.wine.value(name) for name in ("XLocation", "Adapter", "InstallDir")], [40, None, None])

    def test_the_demonstration_detects_its_hosts(self):
        self.enter()
        with Tool(self.wine, *DETECTOR, more=["--demo"]) as tool:
            tool.press(DETECT)
            rows = wait_until(lambda: len(found := tool.rows(HOSTS)) >= 12 and found, 40, "the hosts", 0.5)
            self.assertTrue(any("127.7.7.254" in row for row in rows), rows)


if __name__ == "__main__":
    unittest.main()
