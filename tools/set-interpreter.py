#!/usr/bin/env python3
"""set-interpreter.py LOADER FILE... : make ELF programs, of 32 or 64 bits, start with another dynamic loader.

The new name goes to the end of the file: the old place may be too small for it.
"""
import struct
import sys

PT_INTERP = 3
# By the class of the file: where its header says where the table of segments is; in an entry of the table where
# the offset of the segment stands and where its size; how wide such a number is.
FORMATS = {1: ("<28xI10xHH", 4, 16, "<I"), 2: ("<32xQ14xHH", 8, 32, "<Q")}

loader = sys.argv[1].encode() + b"\0"
for name in sys.argv[2:]:
    with open(name, "r+b") as program:
        header = program.read(64)
        shape, offset_at, size_at, number = FORMATS[header[4]]
        table, entry_size, entries = struct.unpack_from(shape, header)
        end = program.seek(0, 2)
        for entry in range(table, table + entry_size * entries, entry_size):
            program.seek(entry)
            if struct.unpack("<I", program.read(4))[0] == PT_INTERP:
                program.seek(entry + offset_at)
                program.write(struct.pack(number, end))
                program.seek(entry + size_at)
                program.write(struct.pack(number, len(loader)))
                program.seek(end)
                program.write(loader)
