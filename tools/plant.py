#!/usr/bin/env python3
"""plant.py [named] [N] [SEED] [ID...]
Plants faults in the product and shows which of them the tests notice: N at random (40, with `named` none; seed 1), spread
over the storeys by their lines, and with `named` those of tools/plant/named.py. All are built into one library, in a copy
under build/plant, where TAMVELO_PLANTED=<id> chooses one. A recording run finds which cases reach which place; only those
are run then, first the one that noticed this fault the last time, and what fails must pass without the fault. IDs: only these.
PLANT_JOBS=2: so many at a time. PLANT_SECONDS=N: for each fault the quickest cases, N seconds of them; 0 for all.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import queue
import random
import re
import shutil
import signal
import subprocess
import sys
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent / "plant"))
import named
from places import Place, chance

root = pathlib.Path(__file__).resolve().parent.parent
copy = root / "build/plant"
build = copy / "build/release"
jobs = int(os.environ.get("PLANT_JOBS", "2"))
seconds_each = int(os.environ.get("PLANT_SECONDS", "0")) or 1e9
storeys = "base com contract win objects grid environment frame search selection gridconfig reports dates entry".split()


def by_name():
    for title, file, old, new in named.faults:
        text = (root / file).read_text()
        if text.count(old) != 1:
            sys.exit("named fault «%s»: %d times in %s:\n%s" % (title, text.count(old), file, old))
        yield Place(root, file, text.index(old), text.index(old) + len(old), new, title)


# Building

def replaced(text, old, new):
    if text.count(old) != 1:
        sys.exit("plant.py: not found once: " + old)
    return text.replace(old, new)


def copy_sources(places):
    """The checkout with the faults in it; files that stay as they are keep their time."""
    listing = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=root, capture_output=True, text=True)
    for name in filter(lambda name: (root / name).is_file(), listing.stdout.splitlines()):
        new = (root / name).read_bytes()
        inside = [(p.start, p.end, p.fault.replace("@", "::Planted(%d)" % n)) for n, p in enumerate(places, 1) if p.file == name]
        if inside:
            text = new.decode()
            for start, end, fault in sorted(inside, reverse=True):
                text = text[:start] + fault + text[end:]
            new = ("bool Planted(int place) noexcept;\n#line 1\n" + text).encode()
        elif name == "tests/CMakeLists.txt":
            new = replaced(new.decode(), "-test ${arg_SOURCES})",
                           "-test ${arg_SOURCES} ${CMAKE_SOURCE_DIR}/tools/plant/Listener.cpp)").encode()
        elif name == "base/CMakeLists.txt":
            new = replaced(new.decode(), "SOURCES ", "SOURCES ../tools/plant/Planted.cpp ").encode()
        target = copy / name
        if not target.exists() or target.read_bytes() != new:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(new)
            shutil.copymode(root / name, target)


def compile_all(*targets):
    """What the compiler said; empty when all is well."""
    settings = dict(os.environ, CCACHE_BASEDIR=str(copy), CCACHE_NOHASHDIR="1")
    if shutil.which("ccache"):
        settings.update(CMAKE_CXX_COMPILER_LAUNCHER="ccache", CMAKE_C_COMPILER_LAUNCHER="ccache")
    if not (build / "build.ninja").exists():
        subprocess.run(["cmake", "--preset", "release"], cwd=copy, env=settings, check=True, stdout=subprocess.DEVNULL)
    done = subprocess.run(["ninja", "-j", str(jobs), "-k", "0", "-C", build, *targets], env=settings, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.stdout if done.returncode else ""


def plant(places, count, seed):
    """The places, and of each storey as many at random as its share of the lines; built, without what does not compile."""
    sizes = {s: sum(p.read_text().count("\n") for p in (root / s).glob("*.cpp")) for s in storeys}
    exact = {s: count * size / sum(sizes.values()) for s, size in sizes.items()}
    left = {s: int(e) for s, e in exact.items()}
    for storey in sorted(exact, key=lambda s: left[s] - exact[s])[:count - sum(left.values())]:
        left[storey] += 1
    source, fixed = {s: chance(root, s, seed) for s in storeys}, len(places)
    store = copy / "refused.json"
    refused = json.loads(store.read_text()) if store.exists() else []
    while True:
        for storey in storeys:
            while left[storey] > 0 and (place := next(source[storey], None)):
                if str(place) not in refused and not any(p.file == place.file and p.lines & place.lines for p in places):
                    places.append(place)
                    left[storey] -= 1
        copy_sources(places)
        if not (said := compile_all("Tamvelo")):
            return places
        errors = {(m[1], int(m[2])) for m in re.finditer(r"(\w+/\w+\.cpp):(\d+):\d+: (?:error|note|  )", said)}
        bad = [p for p in places[fixed:] if any(f == p.file and line in p.lines for f, line in errors)]
        if not bad:
            sys.exit("the library does not build:\n" + said[-4000:])
        print("  %d places do not compile: others in their stead" % len(bad), flush=True)
        for place in bad:
            places.remove(place)
            left[place.file.split("/")[0]] += 1
        store.write_text(json.dumps(refused := refused + [str(place) for place in bad]))


# Running

class Worker:
    """A Wine prefix and a folder with the programs, so that several can run at once."""

    def __init__(self, number):
        self.folder = copy / ("run-%d" % number)
        self.settings = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "GTEST_FILTER")}
        self.settings["WINEPREFIX"] = str(copy / ("prefix-%d" % number))
        shutil.copytree(build, self.folder, ignore=shutil.ignore_patterns("CMakeFiles", "*.a"), dirs_exist_ok=True)
        self.up()

    def up(self):
        """A desktop that stays between the programs."""
        subprocess.run([root / "tools/wine32.sh", "--make"], env=self.settings, check=True)
        subprocess.Popen([root / "tools/wine32.sh", self.folder / "keeper.exe"], env=self.settings, stdin=subprocess.DEVNULL,
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        time.sleep(3)

    def down(self):
        subprocess.run([root / "tools/wine32.sh", "--server", "-k"], env=self.settings)

    def run(self, program, cases, limit, *options, **more):
        """(exit code, or None for too long; what it printed)"""
        command = [root / "tools/wine32.sh", self.folder / (program + ".exe"), "--gtest_filter=" + ":".join(cases), *options]
        with open(self.folder / "output.txt", "w+b") as output:
            running = subprocess.Popen(command, cwd=self.folder, env=dict(self.settings, **more), stdout=output,
                                       stderr=output, stdin=subprocess.DEVNULL, start_new_session=True)
            try:
                code = running.wait(limit)
            except subprocess.TimeoutExpired:
                code = None
                os.killpg(running.pid, signal.SIGKILL)
                running.wait()
                self.down()  # and what it started
                self.up()
            output.seek(0)
            return code, output.read().decode(errors="replace")

    def record(self, program):
        """{case: [seconds, places that it reaches]} of the cases that pass"""
        reached = self.folder / "reached.txt"
        reached.unlink(missing_ok=True)
        code, text = self.run(program, "*", 900, TAMVELO_REACHED="Z:" + str(reached).replace("/", "\\"))
        passed = re.finditer(r"\[       OK \] (\S+?)(?:, where.*)? \((\d+) ms\)", text)
        found, last = {m[1]: [int(m[2]) / 1000, []] for m in passed}, None
        for line in reached.read_text().splitlines() if reached.exists() else []:
            name, *numbers = line.split()
            last = last if name == "program" else found.get(name)  # what the end of the program reaches: the last case's
            if last:
                last[1] += map(int, numbers)
        if code != 0:
            failed = " ".join(sorted(set(re.findall(r"\[  FAILED  \] (\S+\.\S+?)[ ,]", text)))) or text[-300:]
            print("  without any fault %s ends with %s: %s" % (program, code, failed), flush=True)
        return found

    def notice(self, number, reached, before):
        """What noticed the fault, first tried with what did before; "" for nothing, None when nothing reaches it."""
        hits = sorted((seconds, program, name) for program, cases in reached.items()
                      for name, (seconds, places) in cases.items() if number in places)
        if hit := [hit for hit in hits if before.endswith(" %s %s" % hit[1:])]:
            return self.among(number, hit) or self.among(number, [other for other in hits if other != hit[0]])
        return self.among(number, hits) if hits else None

    def among(self, number, hits):
        programs, budget = {}, seconds_each
        for seconds, program, name in hits:
            if budget > 0:
                programs.setdefault(program, {})[name] = seconds
                budget -= seconds
        for program, cases in sorted(programs.items(), key=lambda item: sum(item[1].values())):
            while cases:
                limit = 30 + 4 * sum(cases.values())
                code, text = self.run(program, cases, limit, "--gtest_fail_fast", TAMVELO_PLANTED=str(number))
                if code == 0:
                    break
                failed = (re.findall(r"\[  FAILED  \] (\S+\.\S+?)[ ,\n]", text) or re.findall(r"\[ RUN      \] (\S+)", text)[-1:])
                suspects = {failed[0]: cases.pop(failed[0])} if failed and failed[0] in cases else cases
                if self.run(program, suspects, limit)[0] == 0:  # so it was the fault
                    return ("hangs:" if code is None else "fails:" if code == 1 else "crashes:") + " ".join(["", program, *failed[:1]])
                cases = {} if suspects is cases else cases
        return ""


def with_one(workers, work):
    worker = workers.get()
    try:
        return work(worker)
    finally:
        workers.put(worker)


def recorded(workers):
    """{program: {case: [seconds, places]}}; programs that are what they were are not run again."""
    store, now = copy / "recorded.json", {}
    known = json.loads(store.read_text()) if store.exists() else {}
    shared = b"".join(p.read_bytes() for p in [build / "Tamvelo.dll", *sorted((root / "tests/hosts").glob("*.[vj]*s"))])

    def one(path):
        digest = hashlib.sha256(path.read_bytes() + shared).hexdigest()
        if known.get(path.stem, [""])[0] != digest:
            known[path.stem] = [digest, with_one(workers, lambda worker: worker.record(path.stem))]
        now[path.stem] = known[path.stem][1]
        store.write_text(json.dumps(known))

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        targets = subprocess.run(["ninja", "-C", build, "-t", "targets", "all"], capture_output=True, text=True).stdout
        list(pool.map(one, (build / name for name in re.findall(r"^(\S+-test\.exe): ", targets, re.M))))
    return now


def main():
    wanted = sys.argv[1:2] == ["named"]
    given = sys.argv[1 + wanted:]
    count, seed, *only = given + ["0" if wanted else "40", "1"][len(given):]
    places = plant(list(by_name()) if wanted else [], int(count), seed)
    if said := compile_all():
        sys.exit("the tests do not build:\n" + said[-4000:])
    print("%d faults are built in; finding out what reaches them" % len(places), flush=True)
    every, workers, results = [Worker(i) for i in range(jobs)], queue.Queue(), {}
    store = copy / "noticed.json"
    noticed = json.loads(store.read_text()) if store.exists() else {}
    for worker in every:
        workers.put(worker)

    def one(number):
        start = time.time()
        before = noticed.get(str(places[number - 1]), "")
        results[number] = by = with_one(workers, lambda worker: worker.notice(number, reached, before))
        noticed[str(places[number - 1])] = by or ""
        store.write_text(json.dumps(noticed))
        said = "noticed" if by else "not reached" if by is None else "NOT NOTICED"
        print("%4d %-11s %s%s (%d s)" % (number, said, places[number - 1], "\n%17sby %s" % ("", by) if by else "",
                                         time.time() - start), flush=True)

    for interrupt in (signal.SIGINT, signal.SIGTERM):
        signal.signal(interrupt, signal.default_int_handler)
    pool = concurrent.futures.ThreadPoolExecutor(jobs)
    try:
        reached = recorded(workers)
        order = [n for n in range(1, len(places) + 1) if not only or str(n) in only]
        random.Random(seed).shuffle(order)  # so that a run that is stopped has seen something of everything
        for future in [pool.submit(one, n) for n in order]:
            future.result()
    except KeyboardInterrupt:
        pool.shutdown(wait=False, cancel_futures=True)
    for worker in every:
        worker.down()
    for storey in [*storeys, ""]:
        if tried := [by for n, by in results.items() if places[n - 1].file.startswith(storey)]:
            noticed = sum(map(bool, tried))
            print("%-10s %3d of %3d noticed, %2d not reached: %3d %%" % (
                storey or "all", noticed, len(tried), tried.count(None), 100 * noticed // len(tried)))


if __name__ == "__main__":
    main()
