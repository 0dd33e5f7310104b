"""How much of a Windows library is pictures: walks the resource directory of its file."""
import struct

DIRECTORY = struct.Struct("<IIHHHH")
BITMAP, ICON, ICON_GROUP = 2, 3, 14


def _resource_section(data):
    header, = struct.unpack_from("<I", data, 0x3C)
    count, = struct.unpack_from("<H", data, header + 6)
    optional, = struct.unpack_from("<H", data, header + 20)
    for index in range(count):
        start = header + 24 + optional + index * 40
        if data[start:start + 8].rstrip(b"\0") == b".rsrc":
            size, offset = struct.unpack_from("<II", data, start + 16)
            return data[offset:offset + size]
    return b""


def _entries(section, offset):
    *_, named, numbered = DIRECTORY.unpack_from(section, offset)
    for index in range(named + numbered):
        yield struct.unpack_from("<II", section, offset + DIRECTORY.size + index * 8)


def _leaves_size(section, target):
    if target & 0x80000000:
        return sum(_leaves_size(section, below) for _, below in _entries(section, target & 0x7FFFFFFF))
    return struct.unpack_from("<I", section, target + 4)[0]


def artwork_size(path):
    """Bytes of all bitmaps and icons."""
    with open(path, "rb") as file:
        section = _resource_section(file.read())
    return sum(_leaves_size(section, target) for kind, target in _entries(section, 0)
               if kind in (BITMAP, ICON, ICON_GROUP))
