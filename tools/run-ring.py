#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: run-ring.py BUILD_FOLDER RING FILTER [-- EXTRA ARGUMENT...]

Runs a ring's programs whose names match, one after another, with extra arguments, and shows their output as it comes.
"""

import json
import os
import subprocess
import sys


def main() -> int:
    folder, ring, names = sys.argv[1:4]
    extra = sys.argv[5:]
    listing = subprocess.run(
        ["ctest", "--test-dir", folder, "--label-regex", f"^{ring}$", "--tests-regex", names, "--show-only=json-v1"],
        check=True,
        capture_output=True,
        text=True,
    )
    failed = []
    tests = json.loads(listing.stdout)["tests"]
    if not tests:
        sys.exit(f"no program of the ring {ring} matches {names}")
    for test in tests:
        properties = {entry["name"]: entry["value"] for entry in test["properties"]}
        environment = os.environ | dict(line.split("=", 1) for line in properties.get("ENVIRONMENT", []))
        print(f"--- {test['name']}", flush=True)
        working_directory = properties.get("WORKING_DIRECTORY", folder)
        if subprocess.run([*test["command"], *extra], env=environment, cwd=working_directory).returncode:
            failed.append(test["name"])
    for name in failed:
        print(f"failed: {name}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
