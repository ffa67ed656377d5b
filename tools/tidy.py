#!/usr/bin/env python3
"""tidy.py BUILD_FOLDER CACHE_FOLDER : clang-tidy on every source of compile_commands.json but the tests.

A file found clean leaves a stamp in the cache, named by a hash of all that the result depends on: the file, the
headers of ours that it reaches, the command and the settings. So only what changed is checked again.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parent.parent
build, cache = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
include = re.compile(rb'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def reached(source):
    """The source and every header of ours that it includes, directly or not."""
    found, todo = set(), [source]
    while todo:
        path = todo.pop()
        if path in found or not path.is_file():
            continue
        found.add(path)
        for name in include.findall(path.read_bytes()):
            todo += [folder / name.decode() for folder in (root, path.parent, build.resolve())]
    return sorted(found)


def system_headers(command):
    """clang knows the target by the compiler's name, but not where Debian keeps its C++ headers."""
    compiler = shlex.split(command)[0]
    headers = subprocess.run([compiler, "-print-file-name=include/c++"], capture_output=True, text=True, check=True)
    folder = headers.stdout.strip()
    return ["--extra-arg=--target=i686-w64-mingw32", f"--extra-arg=-isystem{folder}",
            f"--extra-arg=-isystem{folder}/i686-w64-mingw32"]


def check(source, command):
    result = subprocess.run(["clang-tidy", "--quiet", "-p", plain, *system_headers(command), source],
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    return result.returncode == 0, result.stdout


# clang refuses what only GCC knows.
text = (build / "compile_commands.json").read_text().replace(" -fno-ipa-icf", "")
plain = cache / "commands"
plain.mkdir(parents=True, exist_ok=True)
(plain / "compile_commands.json").write_text(text)

commands = {}
for entry in json.loads(text):
    source = pathlib.Path(entry["directory"], entry["file"]).resolve()
    if source.suffix == ".cpp" and source.is_relative_to(root):
        folder = source.relative_to(root).parts[0]
        if folder not in ("tests", "build"):
            commands[source] = entry["command"]

settings = (root / ".clang-tidy").read_bytes() + pathlib.Path(__file__).read_bytes()
settings += subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
todo = {}
for source, command in commands.items():
    digest = hashlib.sha256(settings + command.encode())
    for path in reached(source):
        digest.update(str(path).encode() + path.read_bytes())
    stamp = cache / digest.hexdigest()
    if not stamp.exists():
        todo[source] = stamp

failed = 0
with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    running = {pool.submit(check, source, commands[source]): source for source in todo}
    for done, future in enumerate(concurrent.futures.as_completed(running), 1):
        source = running[future]
        clean, findings = future.result()
        print(f"  {done} of {len(todo)}: {source.relative_to(root)}", flush=True)
        if clean:
            todo[source].touch()
        else:
            failed += 1
            print(findings or "  clang-tidy failed and said nothing: see the file's command in compile_commands.json")
unchanged = len(commands) - len(todo)
print(f"  {len(commands)} files: {unchanged} unchanged, {len(todo) - failed} clean, {failed} with findings")
sys.exit(failed > 0)
