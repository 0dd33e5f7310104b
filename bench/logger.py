"""The customary traffic logger, vnStat, at work on a network of namespaces where every poll finds traffic."""
import os
import re
import resource
import subprocess
import tempfile
import time

from programs import memory, processor_seconds
from scan_networks import Network, address

AS_OFTEN = (2, 2, 1)  # seconds between polls and between updates, minutes between saves: the shortest that it takes
CUSTOMARY = (5, 20, 5)
SAVES = 3
PROGRAMS = ("/usr/bin/vnstat", "/usr/sbin/vnstatd")


class Logger:
    def __init__(self, net, folder, times, *prefix):
        self.config = f"{folder}/vnstat.conf"
        poll, update, save = times
        with open(self.config, "w", encoding="ascii") as file:
            file.write(f'DatabaseDir "{folder}"\nPollInterval {poll}\nUpdateInterval {update}\nSaveInterval {save}\n'
                       'UseLogging 0\n')
        self.process = net.start("device", [*prefix, "vnstatd", "--nodaemon", "--config", self.config],
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def used(self):
        return processor_seconds(self.process.pid)

    def saved(self):
        return os.stat(f"{os.path.dirname(self.config)}/vnstat.db").st_mtime_ns

    def stop(self):
        if self.process.poll() is not None:
            raise SystemExit("bench/run: vnstatd ended by itself")
        self.process.terminate()
        self.process.wait()


def _turns(trace):
    """What was called between two sleeps."""
    turns = [[]]
    for name in re.findall(r"^(?:\d+ +)?(\w+)\(", trace, re.MULTILINE):
        if name in ("nanosleep", "clock_nanosleep"):
            turns.append([])
        else:
            turns[-1].append(name)
    return turns[1:-1]  # neither the start nor the end


def _show_days(figures, config):
    """The processor time of a whole run of `vnstat -d`."""
    for _ in range(20):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        subprocess.run(["vnstat", "--config", config, "-d"], stdout=subprocess.DEVNULL, check=True)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        figures.add("vnstat -d: processor time", after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)


def _watch_saves(figures, logger):
    """The processor time of the seconds in which the database was written; how many seconds all took."""
    began, saves, used, saved = time.monotonic(), 0, logger.used(), logger.saved()
    while saves < SAVES and time.monotonic() - began < 90 * SAVES:
        time.sleep(1)
        used, before, saved, written = logger.used(), used, logger.saved(), saved
        if saved != written:
            saves += 1
            figures.add("vnStat's poll with a save: processor time", used - before)
    return time.monotonic() - began


def measure_logger(figures):
    with Network([2]) as net, tempfile.TemporaryDirectory() as often, tempfile.TemporaryDirectory() as traced, \
            tempfile.TemporaryDirectory() as customary:
        trace = f"{traced}/trace"
        ping = net.start("device", ["ping", "-q", "-i", "0.2", address(2)],
                         stdout=subprocess.DEVNULL)
        saving, traced_logger, idle = loggers = [
            Logger(net, often, AS_OFTEN), Logger(net, traced, AS_OFTEN, "strace", "-I2", "-o", trace),
            Logger(net, customary, CUSTOMARY)]
        time.sleep(8)  # past the start
        before = idle.used()
        seconds = _watch_saves(figures, saving)
        figures.add("vnStat with its own times: processor time in 5 minutes", (idle.used() - before) / seconds * 300)
        figures.add("vnStat: resident memory", memory(idle.process.pid)[0], "MB")
        for logger in loggers:
            logger.stop()
        ping.terminate()
        _show_days(figures, saving.config)
        with open(trace, encoding="utf-8", errors="replace") as file:
            turns = [turn for turn in _turns(file.read()) if "fdatasync" in turn]
    for turn in turns:
        figures.add("vnStat's poll with a save: system calls", len(turn), "calls")
    figures.add("vnstat and vnstatd: size", sum(map(os.path.getsize, PROGRAMS)), "bytes")
