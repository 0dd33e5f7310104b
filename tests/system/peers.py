"""Real and hostile peers for a Network: NetBIOS names, DHCP with DNS, web servers, transfers of a known size."""
import contextlib
import os
import shutil
import socket
import struct
import subprocess
import threading
import time

from network import serve_in_background, stop, wait_until

NAME_PORT = 137
QUESTION = b"\x20" + b"CK" + b"A" * 30 + b"\x00" + struct.pack("!HH", 0x21, 1)


# NetBIOS


def ask_node_status(net, place, address, seconds=0.5):
    """The names that a NetBIOS peer reports to a question from a namespace, first one first; [] without a reply."""
    with net.socket(place) as link:
        link.settimeout(seconds)
        try:
            link.sendto(struct.pack("!6H", 0x5156, 0, 1, 0, 0, 0) + QUESTION, (address, NAME_PORT))
            reply = link.recv(2048)
        except OSError:
            return []
    return [reply[at:at + 15].rstrip(b" ") for at in range(57, 57 + 18 * reply[56], 18)]


class NetbiosPeers:
    """nmbd on hosts, given as {number: name}. Ready when each owns its name; one that ends at start starts again."""

    def __init__(self, net, names, seconds=30):
        self.net, self.names = net, names
        self.processes = {number: self._start(number) for number in names}
        waiting = set(names)

        def all_own_their_names():
            for number in sorted(waiting):
                if self.processes[number].poll() is not None:
                    self.processes[number] = self._start(number)
                elif ask_node_status(net, "gateway", net.address(number), 0.1)[:1] == [names[number].encode()]:
                    waiting.discard(number)
            return not waiting

        wait_until(all_own_their_names, seconds, f"nmbd owns its name on {waiting}", 0.2)

    def _start(self, number):
        folder = f"{self.net.folder}/nmbd{number}"
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        directories = ("private dir", "lock directory", "state directory", "cache directory", "pid directory",
                       "ncalrpc dir")
        lines = ["[global]", f"netbios name = {self.names[number]}", "workgroup = QUORVANELAN",
                 f"interfaces = {self.net.address(number)}/24", "bind interfaces only = yes", "local master = no",
                 "domain master = no", "preferred master = no", "disable spoolss = yes", f"log file = {folder}/log"]
        with open(f"{folder}/smb.conf", "w") as file:
            file.write("\n".join(lines + [f"{directory} = {folder}" for directory in directories]) + "\n")
        return self.net.start(number, ["nmbd", "-F", "--no-process-group", "-s", f"{folder}/smb.conf"],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def stop(self, number):
        stop(self.processes[number])


def node_status_reply(request, names, count=None, tail=b"\x00" * 46):
    """A reply as RFC 1002 draws it, or with a false count or another tail."""
    entries = b"".join(name.encode("latin-1").ljust(15)[:15] + b"\x00\x04\x00" for name in names)
    data = bytes([len(names) if count is None else count]) + entries + tail
    return request[:2] + struct.pack("!5H", 0x8400, 0, 1, 0, 0) + QUESTION[:34] + \
        struct.pack("!HHIH", 0x21, 1, 0, len(data)) + data


# Each gives the datagrams to send for one request. The trusting reader's limits are 75 bytes and 57 + 18 x count.
HOSTILE_REPLIES = {
    "good": lambda request: [node_status_reply(request, ["GOOD"])],
    "74 bytes": lambda request: [node_status_reply(request, ["SHORT"], tail=b"")[:74]],
    "75 bytes": lambda request: [node_status_reply(request, ["LEAST"], tail=b"")[:75]],
    "count 255": lambda request: [node_status_reply(request, ["FALSE"], count=255)],
    "1024 bytes": lambda request: [node_status_reply(request, ["LARGE"], tail=b"L" * 2048)[:1024]],
    "9000 bytes": lambda request: [node_status_reply(request, ["HUGE"], tail=b"H" * 9000)[:9000]],
    "flood": lambda request: [node_status_reply(request, ["FLOOD"])] + [b"\xff" * 1000] * 5000,
}


class HostileNetbios:
    """A responder on UDP 137 that answers each request with the datagrams of one of HOSTILE_REPLIES."""

    def __init__(self, net, number, kind):
        link = net.socket(number)
        link.bind((net.address(number), NAME_PORT))

        def serve():
            with contextlib.suppress(OSError):
                while True:
                    request, sender = link.recvfrom(2048)
                    if not request:
                        return
                    for datagram in HOSTILE_REPLIES[kind](request):
                        link.sendto(datagram, sender)

        serve_in_background(net, link, serve)


# DHCP and DNS


class DhcpServer:
    """dnsmasq in the gateway: DHCP with router, DNS and WINS servers, and DNS for {name: address}."""

    def __init__(self, net, first=100, last=150, lease="2m", wins=2, names=None):
        self.lease_file = f"{net.folder}/dnsmasq.leases"
        gateway = net.address("gateway")
        command = ["dnsmasq", "--keep-in-foreground", "--conf-file=/dev/null", "--user=root", "--bind-interfaces",
                   "--interface=eth0", "--no-ping", "--no-resolv", "--no-hosts", "--pid-file=",
                   f"--dhcp-leasefile={self.lease_file}", "--dhcp-authoritative",
                   f"--dhcp-range={net.address(first)},{net.address(last)},255.255.255.0,{lease}",
                   f"--dhcp-option=3,{gateway}", f"--dhcp-option=6,{gateway}"]
        command += [f"--dhcp-option=44,{net.address(wins)}"] if wins else []
        command += [f"--address=/{name}/{address}" for name, address in (names or {}).items()]
        self.log = open(f"{net.folder}/dnsmasq.log", "w")
        self.process = net.start("gateway", command, stdout=self.log, stderr=self.log)
        net.at_close(self.log.close)
        wait_until(lambda: _listens(net, "gateway", "-u", 67) and _listens(net, "gateway", "-u", 53), 5, "dnsmasq")

    def leases(self):
        """[(expiry in Unix seconds, hardware address, address)] as the server keeps them."""
        with open(self.lease_file) as file:
            return [(int(parts[0]), parts[1], parts[2]) for parts in map(str.split, file) if len(parts) >= 4]

    def stop(self):
        stop(self.process)


DHCLIENT_SCRIPT = """#!/bin/sh
# Applies a lease to this namespace alone and leaves the machine's own files untouched.
case "$reason" in
BOUND|RENEW|REBIND|REBOOT)
    ip addr replace "$new_ip_address/24" dev "$interface"
    ip route replace default via "${new_routers%% *}"
    mkdir -p RESOLVER
    for server in $new_domain_name_servers; do echo "nameserver $server"; done > RESOLVER/resolv.conf ;;
EXPIRE|FAIL|RELEASE|STOP)
    ip addr flush dev "$interface" ;;
esac
"""


class DhcpClient:
    """dhclient for the device's eth0, with files of its own."""

    def __init__(self, net, place="device", seconds=15):
        self.net, self.place = net, place
        self.lease_file, self.pid_file = (f"{net.folder}/dhclient.{end}" for end in ("leases", "pid"))
        self.script = f"{net.folder}/dhclient-script"
        with open(self.script, "w") as file:
            file.write(DHCLIENT_SCRIPT.replace("RESOLVER", f"/etc/netns/{net.namespace(place)}"))
        os.chmod(self.script, 0o755)
        with open(f"{net.folder}/dhclient.conf", "w") as file:
            file.write("request subnet-mask, routers, domain-name-servers, netbios-name-servers;\n"
                       "initial-interval 1; backoff-cutoff 2; timeout 10; retry 2;\n")
        self.process = net.start(place, self.command("-d"), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(self.address, seconds, "the lease is applied", 0.1)

    def command(self, *options):
        return ["dhclient", "-4", "-lf", self.lease_file, "-pf", self.pid_file, "-sf", self.script,
                "-cf", f"{self.net.folder}/dhclient.conf", *options, "eth0"]

    def address(self):
        """The device's address now, or an empty text."""
        shown = self.net.run(self.place, ["ip", "-4", "-o", "addr", "show", "eth0"]).stdout.split()
        return shown[3].split("/")[0] if len(shown) > 3 else ""


# Web servers


class EchoServer:
    """nginx on port 80: the body (bytes) at /ip/ip.php with a status, or any `location` text of one's own."""

    def __init__(self, net, place="gateway", body=b"203.0.113.7\r\n", location=None):
        folder = f"{net.folder}/nginx-{place}"
        os.makedirs(f"{folder}/root/ip")
        with open(f"{folder}/root/ip/ip.php", "wb") as file:
            file.write(body)
        temporary = " ".join(f"{kind}_temp_path {folder}/{kind};"
                             for kind in ("client_body", "proxy", "fastcgi", "uwsgi", "scgi"))
        with open(f"{folder}/nginx.conf", "w") as file:
            file.write(f"daemon off; master_process off; user root; pid {folder}/pid; error_log {folder}/error.log;\n"
                       f"events {{ }}\nhttp {{ access_log {folder}/access.log; keepalive_timeout 0; default_type text/plain; {temporary}\n"
                       f"server {{ listen 80; root {folder}/root; {location or ''} }} }}\n")
        self.access_log = f"{folder}/access.log"
        self.process = net.start(place, ["nginx", "-c", f"{folder}/nginx.conf", "-e", f"{folder}/error.log"])
        wait_until(lambda: _listens(net, place, "-t", 80), 5, "nginx listens")

    def requests(self):
        with open(self.access_log) as file:
            return file.read().splitlines()

    def stop(self):
        stop(self.process)


def http_answer(body, status="200 OK", length=None):
    """A whole answer; `length` is what Content-Length claims."""
    return (f"HTTP/1.1 {status}\r\nContent-Type: text/plain\r\nConnection: close\r\n"
            f"Content-Length: {len(body) if length is None else length}\r\n\r\n").encode() + body


class ScriptedWebServer:
    """What nginx cannot do: sends the given pieces, sleeping where a piece is a number of seconds, then closes.
    A last piece "hold" keeps the connection open, "reset" cuts it. Keeps the requests it saw."""

    def __init__(self, net, place, pieces, port=80):
        self.requests, self.pieces, self._ended = [], pieces, threading.Event()
        link = net.socket(place, socket.SOCK_STREAM)
        link.bind(("", port))
        link.listen(64)
        net.at_close(self._ended.set)

        def serve():
            with contextlib.suppress(OSError):
                while True:
                    threading.Thread(target=self._answer, args=[link.accept()[0]], daemon=True).start()

        serve_in_background(net, link, serve)

    def _answer(self, connection):
        with contextlib.suppress(OSError), connection:
            request = b""
            while b"\r\n\r\n" not in request:
                piece = connection.recv(4096)
                if not piece:
                    return
                request += piece
            self.requests.append(request)
            for piece in self.pieces:
                if isinstance(piece, bytes):
                    connection.sendall(piece)
                elif piece == "hold":
                    self._ended.wait()
                elif piece == "reset":
                    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                elif self._ended.wait(piece):
                    return


# Transfers


def transfer(net, source, target, size, port=4999):
    """Sends `size` payload octets in datagrams from one place to another, and returns when they have arrived."""
    arrived, piece = 0, 1400
    with net.socket(target) as inlet, net.socket(source) as outlet:
        inlet.bind(("", port))
        inlet.settimeout(5)
        outlet.connect((net.address(target), port))
        for sent in range(0, size, piece):
            outlet.send(b"q" * min(piece, size - sent))
            arrived += len(inlet.recv(65536))
    assert arrived == size, arrived


class Stream:
    """Datagrams from one place to another, 100 a second, for as long as the with block lasts."""

    def __init__(self, net, source, target, piece=1400, port=4998):
        self._inlet, self._outlet = net.socket(target), net.socket(source)
        self._inlet.bind(("", port))
        self._outlet.connect((net.address(target), port))
        self._ended, self._piece = threading.Event(), b"q" * piece

    def __enter__(self):
        self._thread = threading.Thread(target=self._send, daemon=True)
        self._thread.start()
        return self

    def _send(self):
        while not self._ended.wait(0.01):
            # The link may be down or gone for a while. Nobody reads: what arrives is counted below the socket.
            with contextlib.suppress(OSError):
                self._outlet.send(self._piece)

    def __exit__(self, *_):
        self._ended.set()
        self._thread.join()
        self._inlet.close()
        self._outlet.close()


def _listens(net, place, protocol, port):
    shown = net.run(place, ["ss", "-Hln", protocol, f"sport = :{port}"]).stdout
    return f":{port} " in shown
