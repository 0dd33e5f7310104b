"""The first table of docs/measurements.md: a line for each figure, beside what a person would use instead."""

# What it is, Quorvane's figure, what does the same elsewhere, its figures.
ROWS = (
    ("logging a tick in a full month: processor time", "tick's file work, month of 744, natively",
     "a poll of vnStat that saves", ["vnStat's poll with a save: processor time"]),
    ("system calls of that", "tick's file work, natively: system calls",
     "the same", ["vnStat's poll with a save: system calls"]),
    ("the same under Wine, by the clock", "tick's file work, month of 744, under Wine", "", []),
    ("a whole tick under Wine", "whole tick, month of 744, under Wine", "", []),
    ("reading a month's days: processor time", "reading a month as its days, natively",
     "`vnstat -d`, start included", ["vnstat -d: processor time"]),
    ("exporting ten years", "exporting ten full years, natively", "reading the same files once",
     ["reading ten full years once, natively"]),
    ("painting the strip's graph", "painting the strip's graph, 240x320", "", []),
    ("painting the usage chart", "painting the usage chart, 240x320", "", []),
    *((f"finding {count} hosts", f"scan of {count} hosts: Quorvane", "fping, then nbtscan; nmap, which finds no names",
       [f"scan of {count} hosts: fping, then nbtscan", f"scan of {count} hosts: nmap"]) for count in (12, 60, 200)),
    ("a scan of 60 hosts: processor time with Wine's", "scan of 60 hosts: processor time", "", []),
    ("faults in repeated scans", "repeated scans: faults", "", []),
    ("start to a complete screen", "start of the host to a complete screen", "", []),
    ("five idle minutes: processor time with Wine's", "idle: processor time in 5 minutes, all",
     "vnStat with its own times", ["vnStat with its own times: processor time in 5 minutes"]),
    ("resident memory", "idle: resident memory of the host", "vnStat, which shows nothing", ["vnStat: resident memory"]),
    ("size of the library", "quorvane.dll", "vnstat and vnstatd", ["vnstat and vnstatd: size"]),
    ("without icons and bitmaps", "quorvane.dll without icons and bitmaps", "", []),
    ("handheld: instructions of a tick that logs", "handheld: instructions per tick", "", []),
    ("handheld: instructions of painting the strip", "handheld: instructions per paint", "", []),
    ("handheld: deepest stack, of 64 KB", "handheld: deepest stack", "", []),
    ("handheld: size of the library", "handheld: quorvane.dll", "", []),
    ("handheld: without icons and bitmaps", "handheld: quorvane.dll without icons and bitmaps", "", []),
)


def summary(figures):
    yield "| | Quorvane | instead | |"
    yield "|---|---|---|---|"
    for what, ours, theirs, names in ROWS:
        if ours not in figures:
            continue
        known = [figures.text(name) for name in names if name in figures]
        yield f"| {what} | {figures.text(ours)} | {'; '.join(known)} | {theirs if known else ''} |"
