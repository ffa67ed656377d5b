#!/usr/bin/env python3
"""storeys.py FILE... : refuses includes that point up, or across from form to form, and Windows headers in base/.

The storeys and their ranks are those of cmake/Storey.cmake.
"""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
cmake = (root / "cmake/Storey.cmake").read_text()


def values(variable):
    return re.search(rf"set\({variable} ([^)]*)\)", cmake).group(1).split()


ranks = dict(zip(values("TAMVELO_STOREYS"), map(int, values("TAMVELO_RANKS"))))
portable = re.compile(r"#\s*include\s*<(\w+\.h)>")
own = re.compile(r'#\s*include\s*"(\w+)/')
faults = 0

for name in sys.argv[1:]:
    storey = name.split("/")[0]
    if storey not in ranks:
        continue
    for number, line in enumerate(pathlib.Path(name).read_text(encoding="utf-8").splitlines(), 1):
        fault = None
        used = own.match(line)
        if used and used[1] != storey and ranks.get(used[1], 99) >= ranks[storey]:
            fault = f"{storey} may not include {used[1]}: it is not below it"
        if storey == "base" and (header := portable.match(line)):
            fault = f"base is standard C++ only, without {header[1]}"
        if fault:
            faults += 1
            print(f"{name}:{number}: {fault}")

sys.exit(faults > 0)
