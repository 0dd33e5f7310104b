#!/usr/bin/env python3
"""bench/network_figures.py FILE SCANS HOSTS... - the measurements that make networks of namespaces, for bench/run:
the scan beside fping, nbtscan and nmap, repeated scans, and vnStat with traffic. Writes the figures to FILE. Needs root."""
import sys

from figures import Figures
from logger import measure_logger
from scan_compare import measure_comparison
from scan_soak import measure_soak


def main(path, scans, *counts):
    figures = Figures()
    measure_comparison(figures, list(map(int, counts)))
    measure_soak(figures, int(scans))
    measure_logger(figures)
    figures.save(path)


if __name__ == "__main__":
    main(*sys.argv[1:])
