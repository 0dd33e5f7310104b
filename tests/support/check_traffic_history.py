#!/usr/bin/env python3
"""check_traffic_history.py FOLDER - computes from the bytes of the logs in FOLDER what the program wrote beside them:
views.txt (series, charts and tables) and export-FROM-TO.csv. Prints every difference; ends with 1 if there is one."""

import calendar
import csv
import struct
import sys
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

KB, AXIS_MB, AXIS_GB = 1024, 1024000, 1024000000
MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
SCALES = [(n, "KB", KB) for n in (1, 10, 50, *range(100, 1000, 100))] + \
         [(n, "MB", AXIS_MB) for n in (*range(1, 11), *range(20, 101, 10))] + [(1, "GB", AXIS_GB)]


def records(folder, year, month):
    path = folder / f"{year:04}{month:02}.log"
    data = path.read_bytes() if path.exists() else b""
    data += b"\0" * (-len(data) % 12)
    return [(day, hour, sent, received) for day, hour, received, sent in struct.iter_unpack("<bbxxII", data)]


def series(rows, day=None):
    """By the hours of a day, or by days; and the largest value that a slot reached on the way."""
    sent, received, largest = [0] * 32, [0] * 32, 0
    for row_day, row_hour, out, into in rows:
        slot = row_day if day is None else row_hour
        if (day is not None and row_day != day) or not 0 <= slot < 32:
            continue
        sent[slot] = out + (sent[slot] if day is None else 0)
        received[slot] = into + (received[slot] if day is None else 0)
        largest = max(largest, sent[slot], received[slot])
    return sent, received, largest


def count(value):
    if value == 0:
        return "0"
    unit = 1 if value < 1 << 20 else 2 if value < 1 << 30 else 3
    return f"{(Decimal(value) / 1024 ** unit).quantize(Decimal('0.01'), ROUND_HALF_UP)}{'KMG'[unit - 1]}B"


def scale(largest):
    for number, unit, size in SCALES:
        if largest < number * size:
            form = "{:.1f}{}" if number < 10 and (number, unit) != (5, "MB") else "{:.0f}{}"
            return number * size, f"{form.format(number, unit)} {form.format(number / 5, unit)}"
    return 2 * AXIS_GB, ">2GB 0.4GB"


def bars(slots, left, sent, received, full):
    shown = []
    for slot in slots:
        heights = [("T", min(100, int(sent[slot] * (1 / full) * 100))),
                   ("R", min(100, int(received[slot] * (1 / full) * 100)))]
        heights.sort(key=lambda bar: -bar[1])
        if heights[0][1] == heights[1][1]:
            del heights[1]
        shown += [f"{series_name}{left(slot)}:{height}" for series_name, height in heights if height]
    return " ".join(["bars", *shown])


def pages(slots, name, sent, received):
    rows = [f"{name(slot)} {count(sent[slot])} {count(received[slot])} {count(sent[slot] + received[slot])}"
            for slot in range(1, slots + 1) if sent[slot] + received[slot]]
    filled = sum(sent[slot] + received[slot] > 0 for slot in range(slots + 1))
    total = -(-filled // 8)
    for page in range(max(total, 1)):
        yield " ".join(["page", *rows[page * 8:page * 8 + 8], f"{page + 1}/{total}" if filled else "0/0"])


def view(folder, mode, year, month, day):
    rows = records(folder, year, month)
    sent, received, largest = series(rows, day if mode == "hourly" else None)
    slots = 24 if mode == "hourly" else calendar.monthrange(year, month)[1]
    full, labels = scale(largest)
    yield f"view {mode} {year} {month} {day}"
    yield f"slots {slots}"
    yield f"maximum {largest}"
    yield " ".join(["transmitted", *map(str, sent)])
    yield " ".join(["received", *map(str, received)])
    yield f"labels {labels}"
    if mode == "hourly":
        yield bars(range(24), lambda hour: 30 + (hour + 1) * 7, sent, received, full)
        yield from pages(slots, lambda hour: f"{hour:02}:00", sent, received)
    else:
        yield bars(range(1, slots + 1), lambda at: 30 + at * 5, sent, received, full)
        yield from pages(slots, str, sent, received)


def export(folder, first, last):
    yield ["Date", "Xmit", "Rcv", "Total"]
    year, month, nothing_read = first[0], first[1], True
    while (year, month) <= last[:2]:
        counted = []
        for row in records(folder, year, month):
            too_late = (year, month) == last[:2] and row[0] > last[2]
            too_early = nothing_read and row[0] < first[2]
            nothing_read = False
            if not too_late and not too_early:
                counted.append(row)
        sent, received, _ = series(counted)
        name = MONTHS[month - 1]
        for day in range(1, 32):
            if sent[day] + received[day]:
                yield [f"{name} {day:02}, {year:04}", *map(count, (sent[day], received[day], sent[day] + received[day]))]
        out, into = sum(sent), sum(received)
        yield [f"Total for {name} {year:04}", *map(count, (out, into, out + into))]
        year, month = (year, month + 1) if month < 12 else (year + 1, 1)


def compare(title, expected, found):
    different = 0
    for line, (want, have) in enumerate(zip(expected + [None] * len(found), found + [None] * len(expected)), 1):
        if want != have:
            print(f"{title}:{line}: expected {want}, found {have}")
            different += 1
            if different == 5:
                break
    return different


def main():
    folder = Path(sys.argv[1])
    found = (folder / "views.txt").read_text().splitlines()
    expected = [line for head in found if head.startswith("view ")
                for line in view(folder, head.split()[1], *map(int, head.split()[2:]))]
    different = compare("views.txt", expected, found)
    exports = sorted(folder.glob("export-*.csv"))
    for path in exports:
        parts = list(map(int, path.stem.split("-")[1:]))
        raw = path.read_bytes()
        if b"\r" in raw or raw.count(b'"') != 8 * raw.count(b"\n"):
            print(f"{path.name}: line ends or quotes")
            different += 1
        with path.open(newline="") as file:
            different += compare(path.name, list(export(folder, tuple(parts[:3]), tuple(parts[3:]))),
                                 list(csv.reader(file)))
    if len(expected) < 1000 or len(exports) < 6:
        print("too little to compare")
        different += 1
    return different != 0


sys.exit(main())
