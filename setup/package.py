#!/usr/bin/env python3
"""package.py FOLDER [--unpack FOLDER] [--partial]: the setup program, a zip with the same content and their checksums.

Takes what build/release and build/release64 hold; what is missing there is an error. The same commit makes the same
bytes: names are sorted, and every file is as old as the commit. For tests: --unpack also unpacks the zip, --partial goes
without what build/release64 lacks.
"""
import argparse
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

root = pathlib.Path(__file__).resolve().parent.parent
built, built64 = root / "build/release", root / "build/release64"

# Where it lies in the package, and from where it comes. A folder stands for what git keeps in it.
CONTENTS = [
    ("Tamvelo.dll", built / "Tamvelo.dll"),
    ("Tamvelo64.dll", built64 / "Tamvelo64.dll"),
    ("TamveloDemo.exe", built / "TamveloDemo.exe"),
    ("TamveloDemo64.exe", built64 / "TamveloDemo64.exe"),
    ("KvSearchTool.atb", root / "assets/KvSearchTool.atb"),
    ("Image", root / "assets/Image"),
    ("LEEME.txt", root / "setup/LEEME.txt"),
    ("idl/Tamvelo.idl", root / "idl/Tamvelo.idl"),
    ("idl/Tamvelo.tlb", built / "idl/Tamvelo.tlb"),
    ("idl/Tamvelo.h", built / "idl/Tamvelo.h"),
    ("examples", root / "examples"),
    ("docs", root / "docs"),
]


def git(*arguments):
    return subprocess.run(["git", "-C", root, *arguments], check=True, capture_output=True, text=True).stdout


def kept(folder):
    names = git("ls-files", "-z", "--", folder).split("\0")[:-1]
    return [(pathlib.Path(name).relative_to(folder.relative_to(root)), root / name) for name in names]


def contents(partial):
    """(place in the package, source), sorted by place."""
    found = []
    for place, source in CONTENTS:
        if source.is_dir():
            found += [(f"{place}/{name.as_posix()}", path) for name, path in kept(source)]
        else:
            found.append((place, source))
    if partial:
        found = [(place, source) for place, source in found if source.is_file() or built64 not in source.parents]
    missing = [str(source.relative_to(root)) for _, source in found if not source.is_file()]
    if missing:
        sys.exit("package: there is no " + ", ".join(missing))
    return sorted(found)


def product():
    header = (built / "generated/ProductVersion.h").read_text()
    return dict(re.findall(r'#define TAMVELO_(\w+) "?([^"\n]*)"?', header))


def stage(folder, files, when):
    shutil.rmtree(folder, ignore_errors=True)
    for place, source in files:
        target = folder / place
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source, target)
        os.utime(target, (when, when))


def write_zip(path, top, folder, files, when):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for place, _ in files:
            entry = zipfile.ZipInfo(f"{top}/{place}", time.gmtime(when)[:6])
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            packed.writestr(entry, (folder / place).read_bytes(), compresslevel=9)


def installer_lists(files):
    """What to place and what to remove, as macros of the installer's language."""
    places = [place.replace("/", "\\") for place, _ in files]
    folders = sorted({place.rpartition("\\")[0] for place in places})
    parents = {"\\".join(folder.split("\\")[:n]) for folder in folders for n in range(1, folder.count("\\") + 2)}
    lines = ["!macro PlaceFiles"]
    for folder in folders:
        lines.append(f'  SetOutPath "$INSTDIR{chr(92) * bool(folder)}{folder}"')
        for place in places:
            if place.rpartition("\\")[0] == folder:
                lines += [f'  !insertmacro Free "$INSTDIR\\{place}"', f'  File "${{STAGE}}/{place.replace(chr(92), "/")}"']
    lines += ["!macroend", "!macro RemoveFiles"]
    lines += [f'  !insertmacro Free "$INSTDIR\\{place}"' for place in places]
    lines += [f'  RMDir "$INSTDIR\\{folder}"' for folder in sorted(parents - {""}, reverse=True)]
    return "\n".join(lines + ["!macroend", ""])


def make_setup(path, made, staged, files, names, when):
    kilobytes = sum((staged / place).stat().st_size for place, _ in files) // 1024
    (made / "contents.nsh").write_text(installer_lists(files), encoding="utf-8")
    defines = {"COMPANY": names["COMPANY"], "PRODUCT": names["PRODUCT"], "VERSION": names["VERSION"],
               "KILOBYTES": kilobytes, "STAGE": staged, "MADE": made, "OUT": path}
    command = ["makensis", "-V2", "-WX", "-NOCD", "-INPUTCHARSET", "UTF8"]
    command += [f"-D{name}={value}" for name, value in defines.items()]
    subprocess.run([*command, "setup/Tamvelo.nsi"], cwd=root, check=True,
                   env={**os.environ, "SOURCE_DATE_EPOCH": str(when), "TZ": "UTC"})


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--unpack", type=pathlib.Path)
    parser.add_argument("--partial", action="store_true")
    wanted = parser.parse_args()
    files, names, when = contents(wanted.partial), product(), int(git("log", "-1", "--format=%ct"))
    top = f"{names['PRODUCT']}-{names['VERSION']}"
    out = wanted.folder.resolve()
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir(parents=True)
    with tempfile.TemporaryDirectory() as made:
        made = pathlib.Path(made)
        stage(made / "files", files, when)
        write_zip(out / f"{top}.zip", top, made / "files", files, when)
        make_setup(out / f"{top}-instalar.exe", made, made / "files", files, names, when)
    sums = "".join(f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n" for path in sorted(out.iterdir()))
    (out / "SHA256SUMS").write_text(sums)
    if wanted.unpack:
        shutil.rmtree(wanted.unpack, ignore_errors=True)
        zipfile.ZipFile(out / f"{top}.zip").extractall(wanted.unpack)
    for path in sorted(out.iterdir()):
        print(f"{path.stat().st_size:>10} {path.name}")
    if git("status", "--porcelain", "--untracked-files=no"):
        print("package: not of a commit: there are changes", file=sys.stderr)


if __name__ == "__main__":
    main()
