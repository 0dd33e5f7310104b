"""What the scan benchmarks share: a LAN of plain hosts of which some speak NetBIOS, and what a scan should find there."""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests", "system"))

from network import Network, plain_hosts  # noqa: E402
from peers import NetbiosPeers  # noqa: E402


class NamedNetwork:
    """with NamedNetwork(60, 20) as (net, names): so many hosts, real NetBIOS peers on some of them."""

    def __init__(self, hosts, named):
        self.net, self.hosts, self.named = Network(plain_hosts(hosts)), hosts, named

    def __enter__(self):
        self.net.__enter__()
        numbers = list(self.net.hosts)[::max(1, self.hosts // self.named)][:self.named]
        names = {number: f"HOST-{number}" for number in numbers}
        NetbiosPeers(self.net, names, 120)
        return self.net, names

    def __exit__(self, *_):
        self.net.close()
