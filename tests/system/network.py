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


def wait_until(condition, seconds, what, interval=0.1):
    """Asks until the condition is true and returns its value; fails after the given time."""
    deadline = time.monotonic() + seconds
    while not (value := condition()):
        if time.monotonic() > deadline:
            raise TimeoutError(f"not within {seconds} s: {what}")
        time.sleep(interval)
    return value


def hardware(number):
    return f"02:51:56:00:00:{number:02x}"


class Network(contextlib.ExitStack):
    """with Network([10]) as net: net.run("device", ["ping", net.address(10)]). A place is "device", "gateway", "lan" (the
    namespace of the bridge) or a host's number. `device_number` None leaves the device without an address. What is put
    on the stack (net.callback) ends with the network, whose files are in net.folder."""
    _numbers = itertools.count()

    device_mac, gateway_mac = "02:51:56:01:00:01", "02:51:56:01:00:fe"

    def __init__(self, hosts=(), device_number=33):
        super().__init__()
        self.hosts, self.device_number = [*hosts], device_number
        self.prefix = f"qn{os.getpid()}n{next(self._numbers)}-"
        self.resolver = f"/etc/netns/{self.prefix}device/resolv.conf"

    def __enter__(self):
        remove_remains()
        self.callback(_remove, self.prefix)
        # Beside the finished Wine prefix, whose files are linked into it.
        self.folder = tempfile.mkdtemp(prefix=self.prefix, dir=BUILD)
        places = ["lan", "device", "gateway", *self.hosts]
        _batch([f"netns add {self.namespace(place)}" for place in places])
        for place in places:
            self.set(place, "net.ipv6.conf.default.disable_ipv6=1")
            self.ip(place, "link set lo up")
        self.ip("lan", "link add bridge type bridge forward_delay 0 mcast_snooping 0", "link set bridge up")
        self._connect("gateway", 1, self.gateway_mac)
        # Refusals of the gateway are wanted every time, whatever other networks of this machine send meanwhile.
        self.set("gateway", "net.ipv4.ip_forward=1", "net.ipv4.icmp_ratemask=0")
        for number in self.hosts:
            self._connect(number, number, hardware(number))
        self.attach_device()
        # A file of its own from the start: programs that are running see later changes of it, never the machine's.
        self.set_resolver()
        return self

    def _connect(self, place, number, mac):
        self.ip("lan", f"link add p{place} up master bridge type veth"
                       f" peer name eth0 address {mac} netns {self.namespace(place)}")
        self.ip(place, "link set eth0 up", f"addr add {self.address(number)}/24 dev eth0")

    def namespace(self, place):
        return f"{self.prefix}{place}"

    def address(self, place):
        numbers = {"device": self.device_number, "gateway": 1}
        return f"192.168.7.{numbers.get(place, place)}"

    def ip(self, place, *commands):
        _batch(commands, self.namespace(place))

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
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.STDOUT, "text": True,
                   "timeout": 60, **options}
        return subprocess.run(["ip", "netns", "exec", self.namespace(place), *command], **options)

    def set_resolver(self, *servers):
        """Names the DNS servers that the device's programs started from now on see."""
        os.makedirs(os.path.dirname(self.resolver), exist_ok=True)
        with open(self.resolver, "w") as file:
            file.writelines(f"nameserver {server}\n" for server in servers)

    def counters(self):
        """The kernel's own octet counters of the device's adapter: (received, transmitted)."""
        statistics = self.ask_ip("device", "-s", "link", "show", "eth0")[0]["stats64"]
        return statistics["rx"]["bytes"], statistics["tx"]["bytes"]

    def attach_device(self, chosen=""):
        """Gives the device its adapter eth0, with an address and the default route; chosen may be an "index 77"."""
        self.ip("device", f"link add eth0 {chosen} address {self.device_mac} up type veth"
                          f" peer name pdevice netns {self.namespace('lan')}")
        self.ip("lan", "link set pdevice master bridge up")
        self.wait_for_bridge()
        if self.device_number:
            self.ip("device", f"addr add {self.address('device')}/24 dev eth0",
                    f"route add default via {self.address('gateway')}")

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


def _batch(commands, namespace=None):
    where = ["-n", namespace] if namespace else []
    done = subprocess.run(["ip", *where, "-batch", "-"], input="\n".join(commands), text=True, capture_output=True)
    if done.returncode:
        raise RuntimeError(f"ip {' '.join(where)}: {done.stderr.strip()}")
