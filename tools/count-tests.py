#!/usr/bin/env python3
"""count-tests.py NAME=passed|failed... BUILD_FOLDER... : the last line of a test run.

Adds the named checks and, for each build folder, the cases of every test program that ctest ran (one per file of
xml/) and the tests of ctest that have no cases. Ends with 1 if anything failed or nothing ran.
"""
import pathlib
import sys
import xml.etree.ElementTree as ElementTree

passed = failed = 0
fixtures = ("wine.up", "wine.down")

for argument in sys.argv[1:]:
    if "=" in argument:
        name, result = argument.rsplit("=", 1)
        passed += result == "passed"
        failed += result != "passed"
        if result != "passed":
            print(f"failed: {name}")
        continue
    build = pathlib.Path(argument)
    if not (build / "junit.xml").exists():
        continue  # ctest did not get as far; its step is among the named checks
    for test in ElementTree.parse(build / "junit.xml").getroot().iter("testcase"):
        name, good = test.get("name"), test.get("status") == "run"
        cases = build / "xml" / f"{name}.xml"
        bad_cases = 0
        if cases.exists():
            for case in ElementTree.parse(cases).getroot().iter("testcase"):
                if case.get("status") != "run" or case.get("result") == "skipped":
                    continue
                bad = case.find("failure") is not None
                bad_cases += bad
                passed += not bad
                if bad:
                    print(f"failed: {build.name} {name} {case.get('classname')}.{case.get('name')}")
        elif good and name not in fixtures:
            passed += 1
        if not good and not bad_cases:  # crashed, hung or could not start
            bad_cases = 1
            print(f"failed: {build.name} {name}")
        failed += bad_cases

if not passed and not failed:
    print("nothing ran")
print(f"{passed} passed, {failed} failed")
sys.exit(failed > 0 or passed == 0)
