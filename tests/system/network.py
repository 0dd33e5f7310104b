"""A LAN of network namespaces: a bridge, the device under test, a gateway and hosts of chosen behaviour.

Everything carries a prefix with the owner's process id, so several networks live side by side, and the next network
clears away what one of an owner that is gone left. Needs root.
"""
import atexit
import concurrent.futures
import contextlib
import ctypes
import dataclasses
import fcntl
import glob
import ipaddress
import json
import os
import re
import shutil
import signal
import socket
import struct
import subprocess
import tempfile
import threading
import time

CLONE_NEWNET = 0x40000000
ECHO_REQUEST = 8
_libc = ctypes.CDLL(None, use_errno=True)


def wait_until(condition, seconds, what, interval=0.02):
    """Asks until the condition is true and returns its value; fails after the given time."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimeoutError(f"not within {seconds} s: {what}")
        time.sleep(interval)


@contextlib.contextmanager
def inside(namespace):
    """The calling thread works in the namespace; a socket made here stays in it wherever it is used."""

    def enter(path):
        descriptor = os.open(path, os.O_RDONLY | os.O_CLOEXEC)
        try:
            if _libc.setns(descriptor, CLONE_NEWNET):
                raise OSError(ctypes.get_errno(), f"setns {path}")
        finally:
            os.close(descriptor)

    home = os.open("/proc/thread-self/ns/net", os.O_RDONLY | os.O_CLOEXEC)
    enter(f"/run/netns/{namespace}")
    try:
        yield
    finally:
        enter(f"/proc/self/fd/{home}")
        os.close(home)


@dataclasses.dataclass(frozen=True)
class Host:
    """behaviour: answers; drops (no echo reply, all else works); blackhole (answers ARP, nothing else);
    late (echo replies after `delay` seconds). `also`: further numbers on the same hardware address."""
    number: int
    behaviour: str = "answers"
    also: tuple = ()
    delay: float = 0.0

    @property
    def hardware(self):
        return f"02:51:56:00:00:{self.number:02x}"


def plain_hosts(count, taken=(1, 33)):
    """Hosts that answer, on the first free numbers from 2 on."""
    return [Host(number) for number in range(2, 255) if number not in taken][:count]


class Network:
    """with Network(hosts) as net: net.run("device", ["ping", net.address(10)]). A place is "device", "gateway", "lan"
    (the namespace of the bridge) or a host's number. `device_number` None leaves the device without an address."""
    _count = 0

    device_mac, gateway_mac = "02:51:56:01:00:01", "02:51:56:01:00:fe"

    def __init__(self, hosts=(), device_number=33):
        self.hosts = {host.number: host for host in hosts}
        self.device_number = device_number
        self.prefix = f"qn{os.getpid()}n{Network._count}-"
        Network._count += 1
        self._stack = contextlib.ExitStack()
        self._started = []

    # Life

    def __enter__(self):
        remove_remains()
        self.folder = tempfile.mkdtemp(prefix=self.prefix)
        atexit.register(self.close)
        try:
            self._build()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._stack.close()
        for process in reversed(self._started):
            stop(process)
        _remove(self.prefix)
        shutil.rmtree(self.folder, ignore_errors=True)
        atexit.unregister(self.close)

    def _build(self):
        places = ["lan", "device", "gateway", *self.hosts]
        _batch([f"netns add {self.namespace(place)}" for place in places])
        for place in places:
            self.sysctl(place, {"net/ipv6/conf/all/disable_ipv6": 1, "net/ipv6/conf/default/disable_ipv6": 1})
        links = ["link add bridge type bridge forward_delay 0 mcast_snooping 0", "link set bridge up"]
        links += self._port("gateway", self.gateway_mac)
        for host in self.hosts.values():
            links += self._port(host.number, host.hardware)
        self.ip("lan", *links)
        self.ip("gateway", "link set lo up", "link set eth0 up", f"addr add {self.address('gateway')}/24 dev eth0")
        # Refusals of the gateway are wanted every time, whatever other networks of this machine send meanwhile.
        self.sysctl("gateway", {"net/ipv4/ip_forward": 1, "net/ipv4/icmp_ratemask": 0})
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            list(pool.map(self._raise_host, self.hosts.values()))
        self.ip("device", "link set lo up")
        self.attach_device()
        # A file of its own from the start: programs that are running see later changes of it, never the machine's.
        self.set_resolver("device")

    def _port(self, place, mac):
        return [f"link add p{place} up master bridge type veth"
                f" peer name eth0 address {mac} netns {self.namespace(place)}"]

    def _raise_host(self, host):
        self.ip(host.number, "link set lo up", "link set eth0 up",
                *[f"addr add {self.address(number)}/24 dev eth0" for number in (host.number, *host.also)],
                f"route add default via {self.address('gateway')}")
        self.sysctl(host.number, {"net/ipv4/icmp_echo_ignore_all": int(host.behaviour in ("drops", "late"))})
        if host.behaviour == "blackhole":
            self.ip(host.number, f"route add blackhole {self.address('device')}/32")
        elif host.behaviour == "late":
            # This kernel need not have a delaying queue: replies are written by hand.
            self._answer_late(host.number, host.delay)

    # Asking and telling

    def namespace(self, place):
        return f"{self.prefix}{place}"

    def address(self, place):
        numbers = {"device": self.device_number, "gateway": 1}
        return f"192.168.7.{numbers.get(place, place)}"

    def ip(self, place, *commands):
        _batch(commands, self.namespace(place))

    def sysctl(self, place, values):
        with inside(self.namespace(place)):
            for name, value in values.items():
                with open(f"/proc/sys/{name}", "w") as file:
                    file.write(str(value))

    def start(self, place, command, **options):
        """Starts a program in a namespace; it ends with the network at the latest. Its process id is its own."""
        # Some daemons end when a pipe on their standard input does.
        options = {"stdin": subprocess.DEVNULL, **options}
        process = subprocess.Popen(["ip", "netns", "exec", self.namespace(place), *command], **options)
        self._started.append(process)
        return process

    def run(self, place, command, timeout=30, **options):
        """Runs a program to its end and returns the completed process with its text output."""
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.STDOUT, "text": True,
                   **options}
        return subprocess.run(["ip", "netns", "exec", self.namespace(place), *command], timeout=timeout, **options)

    def socket(self, place, kind=socket.SOCK_DGRAM, protocol=0):
        with inside(self.namespace(place)):
            made = socket.socket(socket.AF_INET, kind, protocol)
        made.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        return made

    def at_close(self, action):
        self._stack.callback(action)

    def set_resolver(self, place, *servers):
        """Names the DNS servers that programs started in this namespace from now on see."""
        folder = f"/etc/netns/{self.namespace(place)}"
        os.makedirs(folder, exist_ok=True)
        with open(f"{folder}/resolv.conf", "w") as file:
            file.writelines(f"nameserver {server}\n" for server in servers)

    def counters(self, place="device", link="eth0"):
        """The kernel's own octet counters of a link: (received, transmitted)."""
        statistics = self._ask_ip(place, "-s", "link", "show", link)[0]["stats64"]
        return statistics["rx"]["bytes"], statistics["tx"]["bytes"]

    def neighbour(self, number, place="device"):
        """The hardware address that a namespace's ARP table holds for a host, or an empty text."""
        rows = self._ask_ip(place, "neigh", "show", self.address(number))
        return rows[0].get("lladdr", "") if rows else ""

    def _ask_ip(self, place, *words):
        shown = subprocess.run(["ip", "-n", self.namespace(place), "-j", *words], check=True, capture_output=True)
        return json.loads(shown.stdout)

    # The device's adapter

    def attach_device(self, index=None):
        """Gives the device its adapter eth0, with an address and the default route, under a chosen index if wanted."""
        chosen = f"index {index}" if index else ""
        self.ip("device", f"link add eth0 {chosen} address {self.device_mac} up type veth"
                          f" peer name pdevice netns {self.namespace('lan')}")
        self.ip("lan", "link set pdevice master bridge up")
        self._wait_for_bridge()
        if self.device_number:
            self.ip("device", f"addr add {self.address('device')}/24 dev eth0",
                    f"route add default via {self.address('gateway')}")

    def detach_device(self):
        self.ip("lan", "link del pdevice")

    def switch_device(self, up):
        self.ip("device", f"link set eth0 {'up' if up else 'down'}")
        if up:
            self._wait_for_bridge()

    def _wait_for_bridge(self):
        """The bridge hears of a link that came up a moment later, and drops what comes before."""

        def forwards():
            links = self._ask_ip("lan", "-d", "link", "show", "master", "bridge")
            return all(link["linkinfo"]["info_slave_data"]["state"] == "forwarding" for link in links)

        wait_until(forwards, 10, "the bridge forwards")

    # Behaviours

    def _answer_late(self, number, delay):
        link = self.socket(number, socket.SOCK_RAW, socket.IPPROTO_ICMP)

        def serve():
            with contextlib.suppress(OSError):
                while packet := link.recv(2048):
                    header = (packet[0] & 15) * 4
                    if packet[header] == ECHO_REQUEST:
                        time.sleep(delay)
                        body = bytes(4) + packet[header + 4:]
                        reply = body[:2] + struct.pack("!H", _checksum(body)) + body[4:]
                        link.sendto(reply, (socket.inet_ntoa(packet[12:16]), 0))

        serve_in_background(self, link, serve)

    def refuse_by_gateway(self, destination):
        """The gateway answers "unreachable" for this network."""
        self.ip("gateway", f"route add unreachable {destination}")

    def redirect_by_gateway(self, destination, number):
        """The gateway redirects the device to a host, which owns the network's first address."""
        first = next(ipaddress.ip_network(destination).hosts())
        self.ip(number, f"addr add {first}/32 dev lo")
        self.ip("gateway", f"route add {destination} via {self.address(number)}")
        return str(first)


def serve_in_background(net, link, serve):
    """Runs serve() in a thread until the network closes the socket it reads from."""

    def end():
        with contextlib.suppress(OSError):
            link.shutdown(socket.SHUT_RDWR)
        link.close()

    net.at_close(end)
    threading.Thread(target=serve, daemon=True).start()


def stop(process, patience=3):
    """Ends a started program: politely, then by force."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(patience)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
    for stream in (process.stdin, process.stdout, process.stderr):
        if stream:
            stream.close()


def owner_lives(prefix):
    owner = re.match(r"qn(\d+)n", prefix)
    return owner is not None and os.path.exists(f"/proc/{owner[1]}")


def remove_remains():
    """Clears away what networks of dead owners left; one process at a time."""
    with open("/run/quorvane-network.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        names = os.listdir("/run/netns") if os.path.isdir("/run/netns") else []
        for prefix in {found[0] for name in names if (found := re.match(r"qn\d+n\d+-", name))}:
            if not owner_lives(prefix):
                _remove(prefix)
                for folder in glob.glob(f"{tempfile.gettempdir()}/{prefix}*"):
                    shutil.rmtree(folder, ignore_errors=True)


def _remove(prefix):
    """Ends every process inside the namespaces of a prefix, then deletes these."""
    names = [name for name in os.listdir("/run/netns") if name.startswith(prefix)]
    inodes = {os.stat(f"/run/netns/{name}").st_ino for name in names}

    def end_inhabitants():
        found = 0
        for process in filter(str.isdigit, os.listdir("/proc")):
            with contextlib.suppress(OSError):
                if os.stat(f"/proc/{process}/ns/net").st_ino in inodes:
                    os.kill(int(process), signal.SIGKILL)
                    found += 1
        return not found

    wait_until(end_inhabitants, 5, f"processes of {prefix} end")
    _batch([f"netns del {name}" for name in names])
    for name in names:
        shutil.rmtree(f"/etc/netns/{name}", ignore_errors=True)


def _batch(commands, namespace=None):
    where = ["-n", namespace] if namespace else []
    done = subprocess.run(["ip", *where, "-batch", "-"], input="\n".join(commands), text=True, capture_output=True)
    if done.returncode:
        raise RuntimeError(f"ip {' '.join(where)}: {done.stderr.strip()}")


def _checksum(data):
    total = sum(struct.unpack(f"!{len(data) // 2}H", data[:len(data) // 2 * 2]))
    total = (total & 0xFFFF) + (total >> 16)
    return ~(total + (total >> 16)) & 0xFFFF
