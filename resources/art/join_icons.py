#!/usr/bin/env python3
"""join_icons.py OUT IN...: puts the images of several .ico files into one, in order. icotool has one depth per file."""

import struct
import sys
from pathlib import Path

HEADER, ENTRY = struct.Struct("<HHH"), struct.Struct("<BBBBHHII")


def images(data):
    """Each image of an .ico file as its directory entry without the offset, and its bytes."""
    for i in range(HEADER.unpack_from(data)[2]):
        *entry, size, offset = ENTRY.unpack_from(data, HEADER.size + i * ENTRY.size)
        yield [*entry, size], data[offset : offset + size]


def main(target, *sources):
    found = [image for source in sources for image in images(Path(source).read_bytes())]
    offset = HEADER.size + len(found) * ENTRY.size
    directory, bodies = HEADER.pack(0, 1, len(found)), b""
    for entry, body in found:
        directory += ENTRY.pack(*entry, offset + len(bodies))
        bodies += body
    Path(target).write_bytes(directory + bodies)


main(*sys.argv[1:])
