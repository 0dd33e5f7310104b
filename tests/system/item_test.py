"""The item on a real adapter: what the kernel counted is what the month's log holds, whatever happens meanwhile."""
import os
import random
import time
import unittest

from network import Host, Network, wait_until
from peers import MIB, Stream, transfer
from wine import HOST, RECORD, SmallDisk, WineSession, read_log

BOUND_SECONDS = 400
TICK = 2.0
LATE_TICK = 2.6  # one tick and some, on a busy machine
READY = 20  # a host that was started has logged traffic within this time


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

    def assert_alive(self):
        self.assertIsNone(self.host.poll(), "the host ended")

    def wait_for_growth(self):
        """The sums after the next write of a log."""
        before = self.wine.logged()

        def grown():
            self.assert_alive()
            return (now := self.wine.logged()) != before and now

        return wait_until(grown, READY, "the log grows")

    def wait_for_rest(self):
        """(logged, counted) that belong together: a whole tick has brought nothing new."""
        before, since = None, 0.0

        def rested():
            nonlocal before, since
            now = self.wine.logged(), self.net.counters()
            if now != before:
                before, since = now, time.monotonic()
            return time.monotonic() - since > LATE_TICK

        wait_until(rested, READY, "the adapter comes to rest", 0.1)
        return before

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

    def test_a_transfer_is_logged_as_the_kernel_counted_it(self):
        self.enter()
        logged, counted = self.start_and_rest()
        transfer(self.net, 10, "device", 20 * MIB, "udp", 5)
        transfer(self.net, "device", 10, 5 * MIB, "tcp", 2)
        self.assert_logged_since(logged, counted)
        received, transmitted = (now - before for before, now in zip(logged, self.wine.logged()))
        self.assertTrue(20 * MIB < received < 22 * MIB and 5 * MIB < transmitted < 6 * MIB, (received, transmitted))
        self.assertRegex(self.wine.value("Adapter"), r"^\{[0-9A-Fa-f-]{36}\}$")
        self.assertEqual([self.wine.value(name) for name in ("XLocation", "TIcon", "TFormat")], [75, 1, 1])
        self.assert_alive()

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

    def test_a_read_only_folder_loses_only_its_own_ticks(self):
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
        self.assert_alive()

    def test_a_full_disk_is_survived(self):
        disk = SmallDisk()
        self.enter(disk)
        self.start_and_rest()
        os.unlink(self.wine.logs()[0])
        disk.fill()
        transfer(self.net, 10, "device", MIB, seconds=3)
        logged, counted = self.wait_for_rest()
        self.assertEqual([os.path.getsize(path) % RECORD.size for path in self.wine.logs()], [0])
        self.assertEqual(logged, (0, 0))
        disk.empty()
        transfer(self.net, 10, "device", MIB)
        self.assert_logged_since(logged, counted)
        self.assert_alive()

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
        added = list(RECORD.iter_unpack(data[len(content):]))
        hours.add(this_hour())
        for day, hour, reserved, received, _ in added:
            self.assertIn((day, hour), hours)
            self.assertEqual(reserved, 0)
            self.assertTrue(0 < received < MIB)
        self.assert_alive()

    def test_an_install_folder_that_is_missing_drops_ticks_until_it_is_there(self):
        self.enter()
        self.wine.set_value("InstallDir", r"C:\logs")
        self.start_host()
        folder = f"{self.wine.folder}/drive_c/logs"
        with Stream(self.net, 10, "device"):
            # The first tick with traffic makes the default folders, wherever the log goes.
            wait_until(lambda: os.path.isdir(self.wine.data), READY, "the default folders")
            time.sleep(LATE_TICK)
            self.assertEqual(os.listdir(self.wine.data), [])
            self.assertFalse(os.path.exists(folder))
            os.mkdir(folder)
            wait_until(lambda: os.listdir(folder), READY, "the log")
        records, rest = read_log(f"{folder}/{os.listdir(folder)[0]}")
        self.assertEqual((len(records), rest), (1, b""))
        self.assert_alive()

    def test_sampling_recovers_when_the_adapter_goes_and_comes(self):
        self.enter()
        logged, counted = self.start_and_rest()
        with self.subTest("down and up"):
            self.net.switch_device(False)
            time.sleep(LATE_TICK)
            self.net.switch_device(True)
            transfer(self.net, 10, "device", MIB)
            self.assert_logged_since(logged, counted)
        with self.subTest("deleted and made again under another index"):
            logged, _ = self.wait_for_rest()
            self.net.detach_device()
            time.sleep(LATE_TICK)
            self.assertEqual(self.wine.logged(), logged)
            self.net.attach_device(index=77)
            transfer(self.net, 10, "device", MIB)
            self.assert_logged_since(logged, (0, 0))
        self.assert_alive()

    def test_a_host_without_adapter_waits_for_one(self):
        self.enter()
        self.net.detach_device()
        self.start_host()
        time.sleep(2 * LATE_TICK)
        self.assertEqual(self.wine.logs(), [])
        self.net.attach_device()
        with Stream(self.net, 10, "device"):
            self.wait_for_growth()
        self.assert_logged_since((0, 0), (0, 0))
        self.assert_alive()

    def test_the_library_is_loaded_and_unloaded_any_number_of_times(self):
        self.enter()
        even = r"^todayhost: (\d+) handles after the first round, \1 after round 50$"
        rows = [(["--reload", "50"], even), (["--size", "480x640", "--reload", "50"], even), (["--seconds", "3"], "^$")]
        for arguments, output in rows:
            with self.subTest(arguments=arguments):
                done = self.wine.run(HOST, *arguments)
                self.assertEqual(done.returncode, 0)
                self.assertRegex(done.stdout, output)


if __name__ == "__main__":
    unittest.main()
