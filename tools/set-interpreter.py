#!/usr/bin/env python3
"""set-interpreter.py LOADER FILE... : make 32-bit ELF programs start with another dynamic loader.

The new name goes to the end of the file: the old place may be too small for it.
"""
import struct
import sys

PT_INTERP = 3

loader = sys.argv[1].encode() + b"\0"
for name in sys.argv[2:]:
    with open(name, "r+b") as program:
        header = program.read(52)
        table, entry_size, entries = struct.unpack_from("<28xI10xHH", header)
        end = program.seek(0, 2)
        for entry in range(table, table + entry_size * entries, entry_size):
            program.seek(entry)
            if struct.unpack("<I", program.read(4))[0] == PT_INTERP:
                program.seek(entry + 4)  # p_offset
                program.write(struct.pack("<I", end))
                program.seek(entry + 16)  # p_filesz
                program.write(struct.pack("<I", len(loader)))
                program.seek(end)
                program.write(loader)
