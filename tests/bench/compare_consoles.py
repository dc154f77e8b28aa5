#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares two builds of pelora-console: what starting costs, and what opening 1,000 users costs.

    tests/bench/compare_consoles.py OLD NEW [ROUNDS]

OLD and NEW are the programs. They take turns on one directory file, ROUNDS (9) times, and draw a picture in place
of a window; what counts is the processor time of each run, in seconds. Prints least and median of both builds and
their ratio. The exit code is 1 when the new build's least is more than a tenth above the old one's. Needs ldbadd.
"""

import os
import resource
import statistics
import subprocess
import sys
import tempfile

USERS = 1000
PARENT = "OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example"
MOST = 1.10


def names():
    return [f"CN=Bench {number},{PARENT}" for number in range(USERS)]


def write_users(path):
    with open(path, "w", encoding="utf-8") as ldif:
        for number, name in enumerate(names()):
            ldif.write(
                f"dn: {name}\nobjectClass: top\nobjectClass: person\nobjectClass: organizationalPerson\n"
                f"objectClass: user\ncn: Bench {number}\nname: Bench {number}\npeloraAccount: 1\n"
                f"mail: bench{number}@linden-werke.example\notherMailbox: b{number}@linden-werke.example\n"
                f"peloraQuotaHard: {number}\npeloraQuotaOverride: 1\n\n"
            )


def processor_time(command, home):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    environment = dict(os.environ, HOME=home, XDG_DATA_HOME=home, XDG_CONFIG_HOME=home, LC_ALL="C.UTF-8")
    run = subprocess.run(command, env=environment, capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit(f"{command[0]}: {run.stderr[-300:]}")
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    builds = sys.argv[1:3]
    rounds = int(sys.argv[3]) if len(sys.argv) == 4 else 9
    worst = 0
    with tempfile.TemporaryDirectory() as home:
        picture = os.path.join(home, "picture.png")
        processor_time([builds[0], "--screenshot", picture], home)
        (company,) = [os.path.join(at, name) for at, _, files in os.walk(home) for name in files if name.endswith(".ldb")]
        users = os.path.join(home, "users.ldif")
        write_users(users)
        subprocess.run(["ldbadd", "-H", company, users], check=True, stdout=subprocess.DEVNULL)
        drawn = ["--directory", company, "--screenshot", picture]
        for case, arguments in {"start": drawn, f"open {USERS} users": drawn + ["--open"] + names()}.items():
            times = [[], []]
            for _ in range(rounds):
                for build, taken in zip(builds, times):
                    taken.append(processor_time([build] + arguments, home))
            old, new = times
            ratio = min(new) / min(old)
            worst = max(worst, ratio)
            print(f"{case:16} old {min(old):.3f} ({statistics.median(old):.3f})  new {min(new):.3f} "
                  f"({statistics.median(new):.3f})  ratio {ratio:.2f} ({statistics.median(new) / statistics.median(old):.2f})")
    return 1 if worst > MOST else 0


if __name__ == "__main__":
    sys.exit(main())
