"""The customary traffic logger, vnStat, at work on a network of namespaces where each of its polls finds traffic."""
import os
import re
import subprocess
import tempfile
import time

from programs import memory, processor_seconds
from scan_networks import Network, plain_hosts

AS_OFTEN = (2, 2, 0)  # seconds between polls and between updates, minutes between saves: every poll is saved
CUSTOMARY = (5, 20, 5)
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
        before = os.times()
        subprocess.run(["vnstat", "--config", config, "-d"], stdout=subprocess.DEVNULL, check=True)
        after = os.times()
        figures.add("vnstat -d: processor time", after.children_user + after.children_system - before.children_user -
                    before.children_system)


def measure_logger(figures, seconds):
    with Network(plain_hosts(1)) as net, tempfile.TemporaryDirectory() as often, tempfile.TemporaryDirectory() as traced, \
            tempfile.TemporaryDirectory() as customary:
        trace = f"{traced}/trace"
        ping = net.start("device", ["ping", "-q", "-i", "0.2", net.address(next(iter(net.hosts)))],
                         stdout=subprocess.DEVNULL)
        saving, traced_logger, idle = loggers = [
            Logger(net, often, AS_OFTEN), Logger(net, traced, AS_OFTEN, "strace", "-I2", "-o", trace),
            Logger(net, customary, CUSTOMARY)]
        time.sleep(8)  # past the start
        before = [logger.used() for logger in loggers]
        time.sleep(seconds)
        after = [logger.used() for logger in loggers]
        figures.add("vnStat: resident memory", memory(idle.process.pid)[0], "MB")
        for logger in loggers:
            logger.stop()
        ping.terminate()
        _show_days(figures, saving.config)
        with open(trace, encoding="utf-8", errors="replace") as file:
            turns = [turn for turn in _turns(file.read()) if "fdatasync" in turn]
    for turn in turns:
        figures.add("vnStat's update with its save: system calls", len(turn), "calls")
    figures.add("vnStat's update with its save: processor time", (after[0] - before[0]) * AS_OFTEN[0] / seconds)
    figures.add("vnStat with its own times: processor time in 5 minutes", (after[2] - before[2]) / seconds * 300)
    figures.add("vnstat and vnstatd: size", sum(map(os.path.getsize, PROGRAMS)), "bytes")
