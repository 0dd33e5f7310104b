"""The item on a real adapter when something breaks, and the library loaded and unloaded. The ordinary day is day_test.py's."""
import os
import random
import signal
import time
import unittest

from network import Host, Network, wait_until
from peers import Stream
from wine import RECORD, ROOT, WineSession, read_log

TICK = 2.0
LATE_TICK = 2.6  # one tick and some, on a busy machine
READY = 20  # a host that was started has logged traffic within this time
LIBRARY_PROBE, LIBRARY = f"{ROOT}/build/desktop/tests/library_probe.exe", f"{ROOT}/build/desktop/quorvane.dll"


def records_of_other_hours():
    """A record for every hour of 31 days but this one, each with sums of its own."""
    now = time.gmtime()  # as the sessions here have it
    return [(day, hour, 0x5151, day * 100 + hour, hour + 1)
            for day in range(1, 32) for hour in range(24) if (day, hour) != (now.tm_mday, now.tm_hour)]


class ItemTest(unittest.TestCase):
    def setUp(self):
        self.net = self.enterContext(Network([Host(10)]))
        self.wine = self.enterContext(WineSession(self.net, TZ="UTC"))

    def start_host(self):
        return self.wine.start_host("--size", "240x320", "--seconds", 300)

    def wait_for_growth(self):
        """The sums after the next write of a log."""
        before = self.wine.logged()
        return wait_until(lambda: (now := self.wine.logged()) != before and now, READY, "the log grows")

    def test_a_kill_at_any_moment_loses_at_most_the_tick_in_flight(self):
        others = records_of_other_hours()
        os.makedirs(self.wine.data)
        path = f"{self.wine.data}/{time.strftime('%Y%m', time.gmtime())}.log"
        with open(path, "wb") as file:
            file.writelines(RECORD.pack(*record) for record in others)
        seed = random.randrange(1 << 32)
        moments = random.Random(seed)
        with Stream(self.net, 10, "device"):
            for turn in range(4):
                host = self.start_host()
                logged, counted = self.wait_for_growth()[0], self.net.counters()[0]
                time.sleep(moments.uniform(0, TICK))
                tick_ago = self.net.counters()[0]
                time.sleep(LATE_TICK)
                last = self.net.counters()[0]
                host.kill()
                host.wait()
                with self.subTest(seed=seed, turn=turn):
                    missing = last - counted - (self.wine.logged()[0] - logged)
                    self.assertLessEqual(missing, last - tick_ago)
        # This hour's record came last and took the traffic of every run; the others stand as they were.
        records, rest = read_log(path)
        self.assertEqual((len(records), rest), (len(others) + 1, b""))
        changed = [new for new, old in zip(records, others) if new != old]
        self.assertLessEqual(len(changed), 1, "only the turn of the hour changes a second record")
        self.assertEqual(records[-1][2], 0)

    def test_neither_a_missing_adapter_nor_a_hung_helper_stops_the_ticks(self):
        self.net.detach_device()
        helper = self.wine.start_helper()
        self.start_host()
        time.sleep(2 * LATE_TICK)
        self.assertEqual(self.wine.logs(), [])
        self.net.attach_device()
        with Stream(self.net, 10, "device"):
            self.wait_for_growth()
            helper.send_signal(signal.SIGSTOP)
            for _ in range(5):
                started = time.monotonic()
                self.wait_for_growth()
                # One bound is 0.3 s; the machine may be busy.
                self.assertLess(time.monotonic() - started, TICK + 1.5)
        wait_until(lambda: self.wine.logged() == self.net.counters(), 2 * LATE_TICK, "the log is what the kernel counted")

    def test_a_library_loaded_and_unloaded_any_number_of_times_leaves_nothing(self):
        done = self.wine.run(LIBRARY_PROBE, "reload", "300", LIBRARY, timeout=200)
        self.assertEqual(done.returncode, 0, done.stdout)
        rounds = [list(map(int, line.split())) for line in done.stdout.splitlines()]
        self.assertEqual([round[0] for round in rounds], [10, 100, 200, 300])
        # Handles, GDI and USER objects, threads; in KB a tenth of what one icon of the strip lost with every paint is.
        self.assertEqual(rounds[1][1:5], rounds[-1][1:5])
        self.assertLess(rounds[-1][5] - rounds[1][5], 40)

    def test_a_library_unloaded_during_a_scan_stays_until_the_last_worker_has_ended(self):
        done = self.wine.run(LIBRARY_PROBE, "unload", LIBRARY)
        self.assertEqual(done.returncode, 0, done.stdout)
        lines = done.stdout.splitlines()
        self.assertEqual(lines[:2], ["loaded 1", "loaded 0"])
        before, after = map(int, lines[2].split()[1:])
        self.assertGreater(before, 200)
        self.assertLess(after, 20)


if __name__ == "__main__":
    unittest.main()
