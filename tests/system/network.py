"""A LAN of network namespaces: a bridge, the device under test, a gateway and hosts. Needs root.

Everything carries a prefix with the owner's process id, so several networks live side by side, and the next network
clears away what one of an owner that is gone left.
"""
import contextlib
import glob
import itertools
import json
import os
import re
import shutil
import subprocess
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = f"{ROOT}/build"
GATEWAY, DEVICE = 1, 33


def wait_until(condition, seconds, what):
    """Asks until the condition is true and returns its value; fails after the given time."""
    deadline = time.monotonic() + seconds
    while not (value := condition()):
        if time.monotonic() > deadline:
            raise TimeoutError(f"not within {seconds} s: {what}")
        time.sleep(0.1)
    return value


def address(number):
    return f"192.168.7.{number}"


def hardware(number):
    return f"02:51:56:00:00:{number:02x}"


class Network(contextlib.ExitStack):
    """with Network([10]) as net: net.run("device", ["ping", address(10)]). A place is "device", "lan" (the namespace of the
    bridge) or the number of a host or the gateway. `device` is the device's address; with None it has none. What is put
    on the stack (net.callback) ends with the network, whose files are in net.folder."""
    _numbers = itertools.count()

    def __init__(self, hosts=(), device=address(DEVICE)):
        super().__init__()
        self.hosts, self.device = [*hosts], device
        self.prefix = f"qn{os.getpid()}n{next(self._numbers)}-"
        self.resolver = f"/etc/netns/{self.prefix}device/resolv.conf"

    def __enter__(self):
        remove_remains()
        self.callback(_remove, self.prefix)
        # Beside the finished Wine prefix, whose files are linked into it.
        self.folder = tempfile.mkdtemp(prefix=self.prefix, dir=BUILD)
        # A file of its own from the start: programs that are running see later changes of it, never the machine's.
        os.makedirs(os.path.dirname(self.resolver))
        open(self.resolver, "w").close()
        for place in ("lan", "device", GATEWAY, *self.hosts):
            subprocess.run(["ip", "netns", "add", self.namespace(place)], check=True)
            self.set(place, "net.ipv6.conf.default.disable_ipv6=1")
            self.ip(place, "link set lo up")
        self.ip("lan", "link add bridge type bridge forward_delay 0 mcast_snooping 0", "link set bridge up")
        for number in (GATEWAY, *self.hosts):
            self.ip("lan", f"link add p{number} up master bridge type veth"
                           f" peer name eth0 address {hardware(number)} netns {self.namespace(number)}")
            self.ip(number, "link set eth0 up", f"addr add {address(number)}/24 dev eth0")
        self.attach_device()
        return self

    def namespace(self, place):
        return f"{self.prefix}{place}"

    def ip(self, place, *commands):
        self.run(place, ["ip", "-batch", "-"], input="\n".join(commands), stderr=None, check=True)

    def ask_ip(self, place, *words):
        """The records that this command shows."""
        return json.loads(self.run(place, ["ip", "-j", *words], check=True).stdout)

    def set(self, place, *settings):
        self.run(place, ["sysctl", "-qw", *settings], check=True)

    def start(self, place, command, **options):
        """Starts a program in a namespace; it ends with the network at the latest. Its process id is its own."""
        # Some daemons end when a pipe on their standard input does.
        process = subprocess.Popen(["ip", "netns", "exec", self.namespace(place), *command], stdin=subprocess.DEVNULL,
                                   **options)
        self.callback(stop, process)
        return process

    def run(self, place, command, **options):
        """Runs a program to its end and returns the completed process with its text output."""
        options = {"input": "", "stdout": subprocess.PIPE, "stderr": subprocess.STDOUT, "text": True, "timeout": 60,
                   **options}
        return subprocess.run(["ip", "netns", "exec", self.namespace(place), *command], **options)

    def counters(self):
        """The kernel's own octet counters of the device's adapter: (received, transmitted)."""
        statistics = self.ask_ip("device", "-s", "link", "show", "eth0")[0]["stats64"]
        return statistics["rx"]["bytes"], statistics["tx"]["bytes"]

    def attach_device(self, chosen=""):
        """Gives the device its adapter eth0, with its address and the default route; chosen may be an "index 77"."""
        self.ip("device", f"link add eth0 {chosen} address {hardware(DEVICE)} up type veth"
                          f" peer name pdevice netns {self.namespace('lan')}")
        self.ip("lan", "link set pdevice master bridge up")
        self.wait_for_bridge()
        if self.device:
            self.ip("device", f"addr add {self.device}/24 dev eth0", f"route add default via {address(GATEWAY)}")

    def wait_for_bridge(self):
        """The bridge hears of a link that came up a moment later, and drops what comes before."""

        def forwards():
            links = self.ask_ip("lan", "-d", "link", "show", "master", "bridge")
            return all(link["linkinfo"]["info_slave_data"]["state"] == "forwarding" for link in links)

        wait_until(forwards, 10, "the bridge forwards")


def stop(process):
    with process:
        process.kill()


def remove_remains():
    """Clears away what networks of dead owners left; others may do so, too."""
    for path in [*glob.glob("/run/netns/qn*"), *glob.glob(f"{BUILD}/qn*")]:
        prefix, owner = re.match(r"(qn(\d+)n\d+-)", os.path.basename(path)).groups()
        if not os.path.exists(f"/proc/{owner}"):
            _remove(prefix)


def _remove(prefix):
    """Ends every process inside the namespaces of a prefix, then deletes these and its files."""
    for name in map(os.path.basename, glob.glob(f"/run/netns/{prefix}*")):
        end = f'while pids=$(ip netns pids {name}) && [ "$pids" ]; do kill -9 $pids; sleep 0.02; done'
        subprocess.run(f"{end}; ip netns del {name}", shell=True, stderr=subprocess.DEVNULL, timeout=10)
    for folder in [*glob.glob(f"/etc/netns/{prefix}*"), *glob.glob(f"{BUILD}/{prefix}*")]:
        shutil.rmtree(folder, ignore_errors=True)
