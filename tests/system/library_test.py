"""The library loaded and unloaded, again and again and while it works."""
import time
import unittest

from network import Host, Network
from wine import ROOT, WineSession

PROBE, LIBRARY = f"{ROOT}/build/desktop/tests/library_probe.exe", f"{ROOT}/build/desktop/quorvane.dll"


class LibraryTest(unittest.TestCase):
    def setUp(self):
        self.net = self.enterContext(Network([Host(10)]))
        self.wine = WineSession(self.net)

    def test_loading_and_unloading_any_number_of_times_leaves_nothing(self):
        host = self.wine.start_host("--reload", 50)
        self.assertEqual(host.wait(60), 0)  # the host counts handles
        probe = self.wine.start(PROBE, LIBRARY, "400")
        pages = []
        while probe.poll() is None:
            with open(f"/proc/{probe.pid}/statm") as file:
                pages.append(int(file.read().partition(" ")[2].split()[0]))
            time.sleep(0.1)
        self.assertEqual(probe.returncode, 0)
        # Pages while it is loaded, in the second half beside the first. One icon lost with every paint is two a round.
        half = len(pages) // 2
        self.assertLess(max(pages[half:]) - max(pages[:half]), 100)

    def test_unloaded_during_a_scan_it_stays_until_the_last_worker_has_ended(self):
        self.assertEqual(self.wine.run(PROBE, LIBRARY).stdout.split(), ["1", "0"])


if __name__ == "__main__":
    unittest.main()
