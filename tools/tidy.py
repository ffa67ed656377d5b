#!/usr/bin/env python3
"""tidy.py BUILD_FOLDER CACHE_FOLDER : clang-tidy on every source of compile_commands.json but the tests.

What is found clean leaves a stamp in the cache, named by a hash of all that the result depends on: the sources, the
headers of ours that they reach, the command and the settings. So only what changed is checked again.
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


def flags(command):
    """What clang needs of a compiler's command. It knows the target by its name, but not where Debian keeps the headers."""
    compiler, *words = shlex.split(command)
    kept = [word for i, word in enumerate(words)
            if re.match("-[DIOWf]|-std=|-isystem", word) or words[i - 1] == "-isystem"]
    headers = subprocess.run([compiler, "-print-file-name=include/c++"], capture_output=True, text=True, check=True)
    folder = headers.stdout.strip()
    return [*kept, "--target=i686-w64-mingw32", f"-isystem{folder}", f"-isystem{folder}/i686-w64-mingw32"]


def own_names(source):
    """What a source declares for itself alone: two sources that use a name for two things cannot be read as one."""
    regions = re.findall(r"^namespace \{$(.*?)^\} // namespace$", source.read_text(), re.MULTILINE | re.DOTALL)
    return set(re.findall(r"^(?! )(?!//)(?:template .*> *)?[\w:<>,&*\[\] ]*?\b(\w+)(?: = |[({;\[]| \{)", "".join(regions),
                          re.MULTILINE))


def read_together(sources):
    together = []
    for source in sorted(sources):
        names = own_names(source)
        for group, taken in together:
            if not names & taken:
                group.append(source)
                taken |= names
                break
        else:
            together.append(([source], names))
    return [group for group, _ in together]


def check(sources, command):
    """Whether the sources are clean, read as one, and what there is to say; None where one name stands for two things."""
    unit = plain / hashlib.sha256(" ".join(map(str, sources)).encode()).hexdigest()[:16] / "sources.cpp"
    unit.parent.mkdir(exist_ok=True)
    unit.write_text("".join(f'#include "{source}"\n' for source in sources))
    result = subprocess.run(["clang-tidy", "--quiet", f"--config-file={root / '.clang-tidy'}", unit, "--",
                             *flags(command)], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    if len(sources) > 1 and "[clang-diagnostic-error" in result.stdout:
        return None, ""
    return result.returncode == 0, result.stdout


def check_all(sources, command):
    clean, findings = check(sources, command)
    if clean is not None:
        return clean, findings
    half = len(sources) // 2
    first, second = check_all(sources[:half], command), check_all(sources[half:], command)
    return first[0] and second[0], first[1] + second[1]


# clang refuses what only GCC knows, and reads the headers that GCC has compiled itself.
text = (build / "compile_commands.json").read_text()
text = re.sub(r" (-fno-ipa-icf|-Wno-stringop-overread|-Winvalid-pch|-include \S*cmake_pch.hxx)", "", text)
plain = cache / "commands"
plain.mkdir(parents=True, exist_ok=True)

# The sources of a folder are read as one where they can: the headers of the system are most of what there is to read.
commands = {}
for entry in json.loads(text):
    source = pathlib.Path(entry["directory"], entry["file"]).resolve()
    if source.suffix == ".cpp" and source.is_relative_to(root):
        if source.relative_to(root).parts[0] not in ("tests", "build"):
            commands[source] = entry["command"]
groups = []
for folder in sorted({source.parent for source in commands}):
    groups += read_together([source for source in commands if source.parent == folder])

settings = (root / ".clang-tidy").read_bytes() + pathlib.Path(__file__).read_bytes()
settings += subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
todo = []
for sources in groups:
    digest = hashlib.sha256(settings + commands[sources[0]].encode())
    for path in sorted({path for source in sources for path in reached(source)}):
        digest.update(str(path).encode() + path.read_bytes())
    stamp = cache / digest.hexdigest()
    if not stamp.exists():
        todo.append((sources, stamp))

failed = 0
with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    running = {pool.submit(check_all, sources, commands[sources[0]]): (sources, stamp)
               for sources, stamp in sorted(todo, key=lambda group: -len(group[0]))}
    for done, future in enumerate(concurrent.futures.as_completed(running), 1):
        sources, stamp = running[future]
        clean, findings = future.result()
        names = ", ".join(source.stem for source in sources)
        print(f"  {done} of {len(todo)}: {sources[0].parent.relative_to(root)}: {names}", flush=True)
        if clean:
            stamp.touch()
        else:
            failed += 1
            print(findings or "  clang-tidy failed and said nothing: see the commands in compile_commands.json")
print(f"  {len(commands)} files in {len(groups)} groups: {len(todo) - failed} clean, {failed} with findings, the rest as before")
sys.exit(failed > 0)
