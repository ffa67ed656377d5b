#!/usr/bin/env python3
"""typelib.py WIDL BITS SOURCE.idl OUT.tlb OUT.h : compiles the type library, and the interfaces for C++.

Parameters have no help strings in a type library: each function's has what parametros.txt says of its parameters behind
it. The compiler takes help strings as Windows text, our source is UTF-8; and it writes the time into its result, which would
make every build different.
"""
import pathlib
import re
import subprocess
import sys

widl, bits = sys.argv[1:3]
source, out, header = map(pathlib.Path, sys.argv[3:6])
here = pathlib.Path(__file__).resolve().parent
work = out.resolve().parent / "idl"
work.mkdir(parents=True, exist_ok=True)

described = dict(line.split(": ", 1) for line in (here / "parametros.txt").read_text(encoding="utf-8").splitlines()
                 if not line.startswith("#"))
idl, interface = source.read_text(encoding="utf-8"), ""


def helped(part):
    """A function with the help of its parameters, or the beginning of an interface, whose name may stand before theirs."""
    global interface
    interface = (part["interface"] or interface).lstrip("_")
    names = re.findall(r"\*+ (\w+)(?:,|$)", part["list"] or "")
    texts = [f"{name}: {described.get(f'{interface}.{name}') or described[name]}" for name in names]
    return part[0].replace(part["help"], ". ".join([part["help"], *texts]), 1) if texts else part[0]


idl = re.sub(r'\binterface (?P<interface>\w+)|helpstring\("(?P<help>[^"]*)"\)\]\s+\w+ \w+\((?P<list>[^;]*)\);', helped, idl)
(work / source.name).write_bytes(idl.encode("cp1252"))


def compile_library(idl, made, kind="-t"):
    done = subprocess.run([widl, f"-m{bits}", kind, "--nostdinc", f"-I{here}", f"-L{work}", "-o", made, idl], cwd=work,
                          stderr=subprocess.PIPE, text=True)
    # A default value on a by-reference parameter is what we mean.
    said = [line for line in done.stderr.splitlines() if "non-null pointer default value" not in line]
    if said or done.returncode:
        sys.exit("\n".join(said) or f"{widl} failed")


compile_library(here / "stdole2.idl", work / "stdole2.tlb")
compile_library(source.name, work / out.name) # by its name alone: the header tells where it came from
compile_library(source.name, work / header.name, "-h")
# The time stands there twice: as text, and as a number in the value after it.
made, stamps = re.subn(rb"(Created by WIDL version [^\0]*? at .{24})(\nW*\x13\0).{4}",
                       lambda stamp: b" " * len(stamp[1]) + stamp[2] + bytes(4),
                       (work / out.name).read_bytes(), flags=re.DOTALL)
if stamps != 1:
    sys.exit(f"typelib.py: {stamps} stamps of the compiler found, not one")
out.write_bytes(made)
# What is left out of a call by reference is no value, but no pointer.
header.write_text(re.sub(r"( \*\w+) = -?\d+", r"\1", (work / header.name).read_text()))
