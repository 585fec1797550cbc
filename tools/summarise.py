"""Adds up what the test runners reported and prints the closing line "N passed, N failed".

Reads the JUnit files of ctest (one case a test program), the reports the test programs wrote
themselves (one case a test), those of pytest, and the .step files of tools/test.sh. A program that
failed without naming a failed test (a crash, a time-out, a leak) counts as one failure.
"""

import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def count_cases(path):
    """(passed, names of the failed ones) of one JUnit file; None when it cannot be read."""
    try:
        root = ElementTree.parse(path).getroot()
    except (ElementTree.ParseError, OSError):
        return None
    passed, failed = 0, []
    for case in root.iter("testcase"):
        if case.find("failure") is not None or case.find("error") is not None:
            failed.append(f"{case.get('classname')}.{case.get('name')}")
        elif case.get("status") in ("notrun", "disabled") or case.find("skipped") is not None:
            failed.append(f"{case.get('classname')}.{case.get('name')} (not run)")
        else:
            passed += 1
    return passed, failed


def count_ctest(path, build):
    passed, failed = 0, []
    preset = path.stem.removeprefix("ctest-").partition(".")[0]
    for case in ElementTree.parse(path).getroot().iter("testcase"):
        name = case.get("name")
        own = count_cases(build / preset / "reports" / f"{name}.xml")
        if own is not None:
            passed += own[0]
            failed += [f"{preset}: {test}" for test in own[1]]
        if case.get("status") != "run" and (own is None or not own[1]):
            failed.append(f"{preset}: {name} ended badly")
        elif own is None:
            passed += 1  # a script that is one test
    return passed, failed


def main():
    reports, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    passed, failed = 0, []
    for path in sorted(reports.glob("*.xml")):
        if path.name.startswith("ctest-"):
            result = count_ctest(path, build)
        else:
            result = count_cases(path) or (0, [f"{path.name} cannot be read"])
        passed += result[0]
        failed += result[1]
    for path in sorted(reports.glob("*.step")):
        if path.read_text().strip() == "passed":
            passed += 1
        else:
            failed.append(path.stem)
    for name in failed:
        print("FAILED", name)
    print(f"{passed} passed, {len(failed)} failed")
    return 1 if failed or passed == 0 else 0


sys.exit(main())
