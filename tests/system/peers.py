"""Real peers for a Network: NetBIOS names, DHCP with DNS, the echo server."""
import os
import re
import shlex
import subprocess

from network import GATEWAY, ROOT, address, wait_until

QUIET = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}


def start_netbios(net, names, seconds=30):
    """nmbd on hosts, given as {number: name}, each of which owns its name at the end; one that ends at start starts again."""
    for number, name in names.items():
        folder = f"{net.folder}/nmbd{number}"
        os.makedirs(folder)
        settings = {"netbios name": name, "interfaces": f"{address(number)}/24", "bind interfaces only": "yes",
                    "local master": "no", "log file": f"{folder}/log", "private dir": folder, "lock directory": folder,
                    "state directory": folder, "cache directory": folder, "pid directory": folder, "ncalrpc dir": folder}
        nmbd = shlex.join(["nmbd", "-F", "--no-process-group", "-s", "/dev/null",
                           *(f"--option={key}={value}" for key, value in settings.items())])
        net.start(number, ["sh", "-c", f"until {nmbd}; do sleep 0.1; done"], **QUIET)
    for number, name in names.items():
        wait_until(lambda: f"{name} " in net.run(GATEWAY, ["nmblookup", "-A", address(number)]).stdout, seconds,
                   f"nmbd owns its name on {number}")


def start_dhcp_server(net, first=100, last=150, lease="2m", names=None):
    """dnsmasq in the gateway: DHCP, and DNS for {name: address}."""
    command = ["dnsmasq", "--keep-in-foreground", "--conf-file=/dev/null", "--user=root", "--bind-interfaces",
               "--interface=eth0", "--no-ping", "--no-resolv", "--no-hosts", "--pid-file=", "--leasefile-ro",
               "--dhcp-authoritative", f"--dhcp-range={address(first)},{address(last)},255.255.255.0,{lease}"]
    command += [f"--address=/{name}/{number}" for name, number in (names or {}).items()]
    server = net.start(GATEWAY, command, **QUIET)
    wait_for_listener(net, GATEWAY, "-u", 67)
    return server


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
            file.write("initial-interval 1; backoff-cutoff 2; timeout 10; retry 2;\n")
        self.process = net.start("device", [
            "dhclient", "-4", "-d", "-lf", self.lease_file, "-pf", f"{net.folder}/dhclient.pid",
            "-sf", f"{net.folder}/dhclient-script", "-cf", f"{net.folder}/dhclient.conf", "eth0"], **QUIET)
        net.device = wait_until(self.address, 15, "the lease is applied")

    def address(self):
        """The device's address now, or an empty text."""
        addresses = self.net.ask_ip("device", "addr", "show", "eth0")[0]["addr_info"]
        return addresses[0]["local"] if addresses else ""


def start_echo_server(net, place=GATEWAY, limit=""):
    """nginx, which answers as docs/echo-server.md has it."""
    with open(f"{ROOT}/docs/echo-server.md") as file:
        location = re.search(r"(?m)^    location = [^}]*}", file.read())[0]
    settings = f"{net.folder}/nginx{place}"
    with open(f"{settings}.conf", "w") as file:
        file.write(f"daemon off; master_process off; user root; pid {settings}.pid; events {{ }}\n"
                   f"http {{ access_log off; keepalive_timeout 0; {limit} server {{ listen 80; {location} }} }}\n")
    server = net.start(place, ["nginx", "-c", f"{settings}.conf", "-e", f"{settings}.log"])
    wait_for_listener(net, place, "-t", 80)
    return server


def wait_for_listener(net, place, protocol, port):
    ask = ["ss", "-Hln", protocol, f"sport = :{port}"]
    wait_until(lambda: f":{port} " in net.run(place, ask).stdout, 5, f"somebody listens at port {port}")
