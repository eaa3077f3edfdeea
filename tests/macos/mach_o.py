"""The parts of a 64-bit Mach-O object that the checks ask for (Apple's <mach-o/loader.h> and
<mach-o/nlist.h> as they are publicly documented)."""

import struct
from dataclasses import dataclass, field

MAGIC_64 = 0xFEEDFACF
SEGMENT_64, SYMBOL_TABLE = 0x19, 0x02
HEADER, SEGMENT, SECTION, SYMBOL = 32, 72, 80, 16
DEBUGGING, TYPE_MASK, UNDEFINED = 0xE0, 0x0E, 0x00


@dataclass
class Object:
    defined: set = field(default_factory=set)
    undefined: set = field(default_factory=set)
    method_names: set = field(default_factory=set)


def text_at(data, offset):
    return data[offset : data.index(b"\0", offset)].decode()


def read(path):
    """The symbols of an object, and the selectors that it uses or defines."""
    with open(path, "rb") as file:
        data = file.read()
    magic, command_count = struct.unpack_from("<I12xI", data)
    if magic != MAGIC_64:
        raise SystemExit(f"{path} is no 64-bit Mach-O object")
    result, offset = Object(), HEADER
    for _ in range(command_count):
        command, size = struct.unpack_from("<II", data, offset)
        if command == SEGMENT_64:
            read_selectors(data, offset, result)
        elif command == SYMBOL_TABLE:
            read_symbols(data, offset, result)
        offset += size
    return result


def read_selectors(data, segment, result):
    (count,) = struct.unpack_from("<64xI", data, segment)
    for index in range(count):
        section = segment + SEGMENT + index * SECTION
        name, size, start = struct.unpack_from("<16s24xQI", data, section)
        if name.rstrip(b"\0") == b"__objc_methname":
            names = data[start : start + size].split(b"\0")
            result.method_names |= {text.decode() for text in names if text}


def read_symbols(data, command, result):
    table, count, strings = struct.unpack_from("<8xIII", data, command)
    for index in range(count):
        name, kind = struct.unpack_from("<IB", data, table + index * SYMBOL)
        if kind & DEBUGGING:
            continue
        is_undefined = kind & TYPE_MASK == UNDEFINED
        (result.undefined if is_undefined else result.defined).add(text_at(data, strings + name))
