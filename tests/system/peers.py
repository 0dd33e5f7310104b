"""Real and hostile peers for a Network: NetBIOS names, DHCP with DNS, web servers, transfers of a known size."""
import contextlib
import os
import re
import socket
import socketserver
import struct
import subprocess
import threading
import time

from network import inside, stop, wait_until
from wine import ROOT

QUESTION_NAME = b"\x20" + b"CK" + b"A" * 30 + b"\x00"
QUIET = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}


def serve(net, place, kind, port, answer):
    """A server of the module socketserver in a namespace, which calls answer(request, sender) in a thread of its own."""

    class Handler(socketserver.BaseRequestHandler):
        def handle(self):
            with contextlib.suppress(OSError):
                answer(self.request, self.client_address)

    with inside(net.namespace(place)):
        server = kind(("", port), Handler)
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
    net.at_close(server.server_close)
    net.at_close(server.shutdown)


# NetBIOS


def start_netbios(net, names, seconds=30):
    """nmbd on hosts, given as {number: name}, each of which owns its name at the end; one that ends at start starts again."""
    processes = {number: _start_nmbd(net, number, name) for number, name in names.items()}
    waiting = dict(names)

    def all_own_their_names():
        for number, name in [*waiting.items()]:
            if processes[number].poll() is not None:
                processes[number] = _start_nmbd(net, number, name)
            elif f"{name} " in net.run("gateway", ["nmblookup", "-A", net.address(number)]).stdout:
                del waiting[number]
        return not waiting

    wait_until(all_own_their_names, seconds, f"nmbd owns its name on {waiting}", 0.2)


def _start_nmbd(net, number, name):
    folder = f"{net.folder}/nmbd{number}"
    os.makedirs(folder, exist_ok=True)
    lines = ["[global]", f"netbios name = {name}", "workgroup = QUORVANELAN", f"interfaces = {net.address(number)}/24",
             "bind interfaces only = yes", "local master = no", "domain master = no", "preferred master = no",
             "disable spoolss = yes", f"log file = {folder}/log"]
    lines += [f"{kind} = {folder}" for kind in ("private dir", "lock directory", "state directory", "cache directory",
                                                "pid directory", "ncalrpc dir")]
    with open(f"{folder}/smb.conf", "w") as file:
        file.write("\n".join(lines) + "\n")
    return net.start(number, ["nmbd", "-F", "--no-process-group", "-s", f"{folder}/smb.conf"], **QUIET)


def node_status_reply(request, name, count=1, tail=b"\x00" * 46):
    """A reply as RFC 1002 draws it, or with a false count or another tail."""
    data = bytes([count]) + name.encode().ljust(15) + b"\x00\x04\x00" + tail
    return request[:2] + struct.pack("!5H", 0x8400, 0, 1, 0, 0) + QUESTION_NAME + \
        struct.pack("!HHIH", 0x21, 1, 0, len(data)) + data


# Each gives the datagrams to send for one request. The trusting reader's limits are 75 bytes and 57 + 18 x count.
HOSTILE_REPLIES = {
    "74 bytes": lambda request: [node_status_reply(request, "SHORT", tail=b"")[:74]],
    "75 bytes": lambda request: [node_status_reply(request, "LEAST", tail=b"")[:75]],
    "count 255": lambda request: [node_status_reply(request, "FALSE", count=255)],
    "1024 bytes": lambda request: [node_status_reply(request, "LARGE", tail=b"L" * 2048)[:1024]],
    "9000 bytes": lambda request: [node_status_reply(request, "HUGE", tail=b"H" * 9000)[:9000]],
    "flood": lambda request: [node_status_reply(request, "FLOOD")] + [b"\xff" * 1000] * 5000,
}


def start_hostile_netbios(net, number, kind):
    def answer(request, sender):
        datagram, link = request
        for reply in HOSTILE_REPLIES[kind](datagram):
            link.sendto(reply, sender)

    serve(net, number, socketserver.ThreadingUDPServer, 137, answer)


# DHCP and DNS


class DhcpServer:
    """dnsmasq in the gateway: DHCP with router, DNS and WINS servers, and DNS for {name: address}."""

    def __init__(self, net, first=100, last=150, lease="2m", names=None):
        self.lease_file = f"{net.folder}/dnsmasq.leases"
        gateway = net.address("gateway")
        command = ["dnsmasq", "--keep-in-foreground", "--conf-file=/dev/null", "--user=root", "--bind-interfaces",
                   "--interface=eth0", "--no-ping", "--no-resolv", "--no-hosts", "--pid-file=",
                   f"--dhcp-leasefile={self.lease_file}", "--dhcp-authoritative",
                   f"--dhcp-range={net.address(first)},{net.address(last)},255.255.255.0,{lease}",
                   f"--dhcp-option=3,{gateway}", f"--dhcp-option=6,{gateway}", f"--dhcp-option=44,{net.address(2)}"]
        command += [f"--address=/{name}/{address}" for name, address in (names or {}).items()]
        self.process = net.start("gateway", command, **QUIET)
        wait_until(lambda: _listens(net, "-u", 67) and _listens(net, "-u", 53), 5, "dnsmasq")

    def addresses(self):
        """Those it has leased."""
        with open(self.lease_file) as file:
            return [line.split()[2] for line in file]

    def stop(self):
        stop(self.process)


DHCLIENT_SCRIPT = """#!/bin/sh
# Applies a lease to this namespace alone and leaves the machine's own files untouched.
case "$reason" in
BOUND|RENEW|REBIND|REBOOT)
    ip addr replace "$new_ip_address/24" dev "$interface"
    ip route replace default via "${new_routers%% *}"
    for server in $new_domain_name_servers; do echo "nameserver $server"; done > RESOLVER ;;
EXPIRE|FAIL|RELEASE|STOP)
    ip addr flush dev "$interface" ;;
esac
"""


class DhcpClient:
    """dhclient for the device's eth0, with files of its own."""

    def __init__(self, net):
        self.net, self.lease_file = net, f"{net.folder}/dhclient.leases"
        with open(f"{net.folder}/dhclient-script", "w", opener=lambda *path: os.open(*path, 0o755)) as file:
            file.write(DHCLIENT_SCRIPT.replace("RESOLVER", net.resolver))
        with open(f"{net.folder}/dhclient.conf", "w") as file:
            file.write("request subnet-mask, routers, domain-name-servers, netbios-name-servers;\n"
                       "initial-interval 1; backoff-cutoff 2; timeout 10; retry 2;\n")
        net.start("device", self.command("-d"), **QUIET)
        wait_until(self.address, 15, "the lease is applied", 0.1)

    def command(self, *options):
        return ["dhclient", "-4", "-lf", self.lease_file, "-pf", f"{self.net.folder}/dhclient.pid",
                "-sf", f"{self.net.folder}/dhclient-script", "-cf", f"{self.net.folder}/dhclient.conf", *options, "eth0"]

    def address(self, with_mask=False):
        """The device's address now, or an empty text."""
        shown = self.net.run("device", ["ip", "-4", "-o", "addr", "show", "eth0"]).stdout.split()
        return "" if len(shown) < 4 else shown[3] if with_mask else shown[3].partition("/")[0]


# Web servers


class EchoServer:
    """nginx in the gateway, which answers as docs/echo-server.md has it."""

    def __init__(self, net):
        with open(f"{ROOT}/docs/echo-server.md") as file:
            location = re.search(r"(?m)^    location = [^}]*}", file.read())[0]
        folder = self.folder = f"{net.folder}/nginx"
        os.mkdir(folder)
        temporary = " ".join(f"{kind}_temp_path {folder}/{kind};"
                             for kind in ("client_body", "proxy", "fastcgi", "uwsgi", "scgi"))
        with open(f"{folder}/nginx.conf", "w") as file:
            file.write(f"daemon off; master_process off; user root; pid {folder}/pid; events {{ }}\n"
                       f"http {{ access_log {folder}/access.log; {temporary} server {{ listen 80; {location} }} }}\n")
        net.start("gateway", ["nginx", "-c", f"{folder}/nginx.conf", "-e", f"{folder}/error.log"])
        wait_until(lambda: _listens(net, "-t", 80), 5, "nginx listens")

    def requests(self):
        with open(f"{self.folder}/access.log") as file:
            return file.read().splitlines()


def http_answer(body, length=None):
    """A whole answer; `length` is what Content-Length claims."""
    return (f"HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nConnection: close\r\n"
            f"Content-Length: {len(body) if length is None else length}\r\n\r\n").encode() + body


class ScriptedWebServer:
    """What nginx cannot do: sends the given pieces, sleeping where a piece is a number of seconds, then closes.
    A last piece "hold" keeps the connection open, "reset" cuts it. Keeps the requests it saw."""

    def __init__(self, net, place, *pieces):
        self.requests, self.pieces = [], pieces
        serve(net, place, socketserver.ThreadingTCPServer, 80, self._answer)

    def _answer(self, connection, _):
        request = b""
        while not request.endswith(b"\r\n\r\n"):
            request += (piece := connection.recv(4096))
            if not piece:
                return
        self.requests.append(request)
        for piece in self.pieces:
            if piece == "hold":
                connection.recv(1)
            elif piece == "reset":
                connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                connection.close()
            elif isinstance(piece, bytes):
                connection.sendall(piece)
            else:
                time.sleep(piece)


def transfer(net, source, target, size):
    """Sends `size` payload octets in datagrams from one place to another, and returns when they have arrived."""
    with inside(net.namespace(target)):
        inlet = socket.socket(type=socket.SOCK_DGRAM)
    with inside(net.namespace(source)):
        outlet = socket.socket(type=socket.SOCK_DGRAM)
    with inlet, outlet:
        inlet.bind(("", 4999))
        inlet.settimeout(5)
        outlet.connect((net.address(target), 4999))
        for sent in range(0, size, 1400):
            outlet.send(b"q" * min(1400, size - sent))
            inlet.recv(65536)


def _listens(net, protocol, port):
    return f":{port} " in net.run("gateway", ["ss", "-Hln", protocol, f"sport = :{port}"]).stdout
