#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Counts the tests of all suites.

Each argument is a suite list: a file with the path of one GoogleTest XML result per line. A result
that is missing or cannot be read belongs to a suite that did not run to its end and counts as a
failure. Prints each failed test, then the line "N passed, N failed"; the exit code is 0 only when
something passed and nothing failed.
"""

import sys
import xml.etree.ElementTree


def count(result_path):
    """The names of the tests of one suite that passed, and of those that failed."""
    passed, failed = [], []
    try:
        root = xml.etree.ElementTree.parse(result_path).getroot()
    except (OSError, xml.etree.ElementTree.ParseError) as error:
        return [], [f"{result_path}: did not run to its end ({error})"]
    for case in root.iter("testcase"):
        name = f"{case.get('classname')}.{case.get('name')}"
        ran = case.get("status") == "run" and case.get("result") == "completed"
        # A skipped or disabled test has shown nothing.
        (passed if ran and case.find("failure") is None else failed).append(name)
    if not passed and not failed:
        failed.append(f"{result_path}: holds no test")
    return passed, failed


def main(suite_lists):
    passed, failed = [], []
    for suite_list in suite_lists:
        try:
            with open(suite_list, encoding="utf-8") as lines:
                results = [line.strip() for line in lines if line.strip()]
        except OSError as error:
            failed.append(f"{suite_list}: {error}")
            continue
        if not results:
            failed.append(f"{suite_list}: names no suite")
        for result in results:
            suite_passed, suite_failed = count(result)
            passed += suite_passed
            failed += suite_failed
    for name in failed:
        print(f"FAILED {name}")
    print(f"{len(passed)} passed, {len(failed)} failed")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
