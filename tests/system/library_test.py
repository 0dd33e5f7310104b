"""The library loaded and unloaded by a program that is nothing else."""
import unittest

from network import Host, Network
from wine import ROOT, WineSession

PROBE, LIBRARY = f"{ROOT}/build/desktop/tests/library_probe.exe", f"{ROOT}/build/desktop/quorvane.dll"


class LibraryTest(unittest.TestCase):
    def probe(self, *words):
        wine = WineSession(self.enterContext(Network([Host(10)])))
        done = wine.run(PROBE, *words, LIBRARY, timeout=200)
        self.assertEqual(done.returncode, 0, done.stdout)
        return [list(map(int, line.split())) for line in done.stdout.splitlines()]

    def test_a_library_loaded_and_unloaded_any_number_of_times_leaves_nothing(self):
        # Round, handles, GDI and USER objects, threads, KB.
        _, early, _, late = self.probe("reload", "300")
        self.assertEqual(early[1:5], late[1:5])
        # A tenth of what one icon of the strip lost with every paint is.
        self.assertLess(late[5] - early[5], 40)

    def test_a_library_unloaded_during_a_scan_stays_until_the_last_worker_has_ended(self):
        # Whether it is loaded right after unloading and at the end; the threads then.
        loaded, threads = self.probe("unload")
        self.assertEqual(loaded, [1, 0])
        self.assertGreater(threads[0], 200)
        self.assertLess(threads[1], 20)


if __name__ == "__main__":
    unittest.main()
