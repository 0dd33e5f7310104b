"""The item on a real adapter when something breaks: what the kernel counted is what the month's log holds, or the log stays
as it was. The ordinary day is day_test.py's."""
import os
import random
import signal
import time
import unittest

from network import Host, Network, wait_until
from peers import MIB, Stream, transfer
from wine import RECORD, ROOT, SmallDisk, WineSession, read_log

BOUND_SECONDS = 300
TICK = 2.0
LATE_TICK = 2.6  # one tick and some, on a busy machine
READY = 20  # a host that was started has logged traffic within this time
LIBRARY_PROBE, LIBRARY = f"{ROOT}/build/desktop/tests/library_probe.exe", f"{ROOT}/build/desktop/quorvane.dll"


def this_hour():
    """Day and hour as the sessions here see them, in UTC."""
    now = time.gmtime()
    return now.tm_mday, now.tm_hour


def records_of_other_hours():
    """A record for every hour of 31 days but this one, each with sums of its own."""
    return [(day, hour, 0x5151, day * 100 + hour, hour + 1)
            for day in range(1, 32) for hour in range(24) if (day, hour) != this_hour()]


class ItemTest(unittest.TestCase):
    def enter(self, prepare=None):
        self.net = self.enterContext(Network([Host(10)]))
        self.wine = self.enterContext(WineSession(self.net, prepare=prepare, TZ="UTC"))

    def write_month_log(self, data):
        os.makedirs(self.wine.data, exist_ok=True)
        path = f"{self.wine.data}/{time.strftime('%Y%m', time.gmtime())}.log"
        with open(path, "wb") as file:
            file.write(data)
        return path

    def start_host(self):
        self.host = self.wine.start_host("--size", "240x320", "--seconds", 300)
        return self.host

    def wait_for_growth(self):
        """The sums after the next write of a log."""
        before = self.wine.logged()
        return wait_until(lambda: (now := self.wine.logged()) != before and now, READY, "the log grows")

    def wait_for_rest(self):
        """(logged, counted) that belong together: a whole tick has brought nothing new."""

        def rested():
            before = self.wine.logged(), self.net.counters()
            time.sleep(LATE_TICK)
            return before == (self.wine.logged(), self.net.counters()) and before

        return wait_until(rested, READY, "the adapter comes to rest")

    def start_and_rest(self):
        self.start_host()
        with Stream(self.net, 10, "device"):
            self.wait_for_growth()
        return self.wait_for_rest()

    def assert_logged_since(self, logged, counted):
        """What the logs gained since is what the kernel counted, both ways, to the byte."""

        def gains():
            return [tuple(now - before for before, now in zip(*pair))
                    for pair in ((logged, self.wine.logged()), (counted, self.net.counters()))]

        deadline = time.monotonic() + 2 * LATE_TICK
        while gains()[0] != gains()[1] and time.monotonic() < deadline:
            time.sleep(0.1)
        self.assertEqual(*gains())
        self.assertIsNone(self.host.poll(), "the host ended")

    def test_a_kill_at_any_moment_loses_at_most_the_tick_in_flight(self):
        self.enter()
        others = records_of_other_hours()
        path = self.write_month_log(b"".join(RECORD.pack(*record) for record in others))
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

    def test_a_read_only_folder_or_a_full_disk_loses_only_its_own_ticks(self):
        disk = SmallDisk()
        self.enter(disk)
        logged, _ = self.start_and_rest()
        disk.allow_writing(False)
        transfer(self.net, 10, "device", MIB, seconds=3)
        still_logged, counted = self.wait_for_rest()
        self.assertEqual(still_logged, logged)
        disk.allow_writing(True)
        transfer(self.net, 10, "device", MIB)
        self.assert_logged_since(logged, counted)
        os.unlink(self.wine.logs()[0])
        disk.fill()
        transfer(self.net, 10, "device", MIB, seconds=3)
        logged, counted = self.wait_for_rest()
        self.assertEqual([os.path.getsize(path) % RECORD.size for path in self.wine.logs()], [0])
        self.assertEqual(logged, (0, 0))
        disk.empty()
        transfer(self.net, 10, "device", MIB)
        self.assert_logged_since(logged, counted)

    def test_a_cut_log_is_continued_behind_its_cut(self):
        self.enter()
        content = b"".join(RECORD.pack(*record) for record in records_of_other_hours()[:3]) + b"\x7f" * 5
        path = self.write_month_log(content)
        hours = {this_hour()}
        self.start_host()
        with Stream(self.net, 10, "device"):
            wait_until(lambda: os.path.getsize(path) >= len(content) + 3 * RECORD.size, READY, "three ticks")
        with open(path, "rb") as file:
            data = file.read()
        self.assertTrue(data.startswith(content))
        # Behind the cut no record is found again: every tick adds one of its own.
        hours.add(this_hour())
        for day, hour, reserved, received, _ in RECORD.iter_unpack(data[len(content):]):
            self.assertIn((day, hour), hours)
            self.assertEqual(reserved, 0)
            self.assertTrue(0 < received < MIB)

    def test_an_install_folder_that_is_missing_drops_ticks_until_it_is_there(self):
        self.enter()
        self.wine.set_value("InstallDir", r"C:\logs")
        self.start_host()
        folder = f"{self.wine.folder}/drive_c/logs"
        with Stream(self.net, 10, "device"):
            # The first tick with traffic makes the default folders, wherever the log goes.
            wait_until(lambda: os.path.isdir(self.wine.data), READY, "the default folders")
            time.sleep(LATE_TICK)
            self.assertEqual((os.listdir(self.wine.data), os.path.exists(folder)), ([], False))
            os.mkdir(folder)
            wait_until(lambda: os.listdir(folder), READY, "the log")
        records, rest = read_log(f"{folder}/{os.listdir(folder)[0]}")
        self.assertEqual((len(records), rest), (1, b""))

    def test_neither_a_missing_adapter_nor_a_hung_helper_stops_the_ticks(self):
        self.enter()
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
        self.assert_logged_since((0, 0), (0, 0))

    def test_a_library_loaded_and_unloaded_any_number_of_times_leaves_nothing(self):
        self.enter()
        done = self.wine.run(LIBRARY_PROBE, "reload", "300", LIBRARY, timeout=200)
        self.assertEqual(done.returncode, 0, done.stdout)
        rounds = [list(map(int, line.split())) for line in done.stdout.splitlines()]
        self.assertEqual([round[0] for round in rounds], [10, 100, 200, 300])
        # Handles, GDI and USER objects, threads; in KB a tenth of what one icon of the strip lost with every paint is.
        self.assertEqual(rounds[1][1:5], rounds[-1][1:5])
        self.assertLess(rounds[-1][5] - rounds[1][5], 40)

    def test_a_library_unloaded_during_a_scan_stays_until_the_last_worker_has_ended(self):
        self.enter()
        done = self.wine.run(LIBRARY_PROBE, "unload", LIBRARY)
        self.assertEqual(done.returncode, 0, done.stdout)
        lines = done.stdout.splitlines()
        self.assertEqual(lines[:2], ["loaded 1", "loaded 0"])
        before, after = map(int, lines[2].split()[1:])
        self.assertGreater(before, 200)
        self.assertLess(after, 20)


if __name__ == "__main__":
    unittest.main()
