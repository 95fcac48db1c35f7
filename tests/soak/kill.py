#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The IDE is killed at random moments: what it leaves on disk and what it leaves running must be whole.

usage: kill.py BUILD-DIR IMAGE-DIR [--minutes N] [--seed N]

Without a number of minutes each kind of kill happens once. The emulator is the demo's, with libvirt's QEMU driver inside the IDE, so that a kill hits the driver, too.
"""

from __future__ import annotations

import argparse
import collections
import itertools
import os
import random
import shutil
import signal
import sys
import time
from pathlib import Path

from definition import take_rules
from desktop import Timeout, wait_for
from robot import Robot
from session import Session
from settingsfile import POSITION, SENSORS, Damage, foreign, foreign_settings, read, step

QEMU = "qemu-system-x86_64"
PASST = ("passt", "passt.avx2")
BOOT = 300  # seconds, without KVM
# Seconds within which the rules are being added, the machine is being started, or is there.
OPENING = (0.01, 0.03, 0.3, 1.5)
PACKAGES_MISSING = "Necessary packages not found"


def processes(*words: str) -> list[int]:
    """Those whose program has one of these names."""
    found = []
    for folder in Path("/proc").iterdir():
        try:
            command = (folder / "cmdline").read_bytes().split(b"\0")
        except OSError:
            continue
        if command[0] and os.fsdecode(command[0]).rpartition("/")[2] in words:
            found.append(int(folder.name))
    return found


class Killing:
    def __init__(self, session: Session, seed: int):
        self.session = session
        self.random = random.Random(seed)
        self.kills: collections.Counter[str] = collections.Counter()
        self.states: collections.Counter[str] = collections.Counter()
        self.machines: collections.Counter[str] = collections.Counter()
        self.locks: collections.Counter[str] = collections.Counter()
        self.longest_start = 0.0
        self._opening = itertools.cycle(OPENING)
        self.settings = session.settings / "QtProject" / "QtCreator.ini"
        self.robot: Robot | None = None

        session.prepare()
        self._xml = session.directory / "original.xml"
        self._xml.write_text(session.virsh("dumpxml", "--inactive", session.emulator.name))
        rules, self._original = take_rules(session.definition())
        if set(rules.values()) != {"none"}:
            raise RuntimeError(f"the emulator has rules already: {rules}")
        with self.settings.open("a") as file:
            file.write("\n" + foreign_settings())
        # Written once by the IDE itself, everything is in its final form.
        robot = self.start()
        robot.do("churn", **{"from": 0})
        wait_for("a step", lambda: robot.last_step > 1)
        robot.quit()
        self._foreign = foreign(read(self.settings))
        if len(self._foreign) < 10:
            raise RuntimeError("the settings are not what they were meant to be")
        self.stored()

    # --- one kill -------------------------------------------------------------------------------

    def begin_to_start(self) -> Robot:
        # The IDE asks about a plugin during whose start it ended; as a user does, the plugin is given another chance.
        for lock in self.settings.parent.glob("QtCreator.*.lock"):
            if not lock.name.startswith("QtCreator.ini"):
                lock.unlink()
        home = self.session.directory / "home"
        command = Robot.command(self.session.build, self.session.settings)
        self.robot = Robot(command, Robot.environment(home), self.session.log)
        return self.robot

    def start(self) -> Robot:
        # Killed in the moment between making the lock and writing into it who has it, an IDE is given half a minute by
        # the next one.
        lock = self.settings.with_name("QtCreator.ini.lock")
        self.locks["whole" if lock.exists() and lock.stat().st_size else "empty" if lock.exists() else "none"] += 1
        begin = time.monotonic()
        self.begin_to_start().wait_until_ready()
        self.longest_start = max(self.longest_start, time.monotonic() - begin)
        return self.robot

    def kill(self, story: str, longest: float) -> None:
        """Within so many seconds from now."""
        time.sleep(self.random.uniform(0, longest))
        self.robot.kill()
        self.kills[story] += 1

    def stored(self) -> tuple[int, int]:
        """Of which steps the sensors and the position are."""
        groups = read(self.settings)
        if foreign(groups) != self._foreign:
            raise Damage("settings of somebody else have changed")
        return step(groups, SENSORS), step(groups, POSITION)

    def check_settings(self, sensors: set[int], position: set[int]) -> None:
        found = self.stored()
        if found[0] not in sensors or found[1] not in position:
            raise Damage(f"values of the steps {found}, and not of {sensors} and {position}")

    def churn(self) -> None:
        """Settings are written all the time."""
        first = self.stored()[1]
        self.robot.do("churn", **{"from": first})
        wait_for("a step", lambda: self.robot.last_step > first + 1)

    def last_steps(self) -> set[int]:
        """The old and the new: the last one may not have come to the file yet."""
        return {self.robot.last_step - 1, self.robot.last_step}

    def check_definition(self) -> str:
        rules, rest = take_rules(self.session.definition())
        if rest != self._original:
            raise Damage(f"the definition has changed:\n{rest}\n{self._original}")
        state = ", ".join(rules.values())
        if not set(rules.values()) <= {"none", "complete"}:
            raise Damage(f"the rules are {state}")
        return state

    # --- stories --------------------------------------------------------------------------------

    def values_change(self) -> None:
        sensors, _ = self.stored()
        self.start()
        self.churn()
        self.kill("values change", 0.3)
        self.check_settings({sensors}, self.last_steps())

    def ide_quits(self) -> None:
        """It stores what all its plugins have; sensors that never met an emulator stay as they were."""
        sensors, _ = self.stored()
        self.start()
        self.churn()
        self.robot.send("quit")
        self.kill("the IDE quits", 0.5)
        self.check_settings({sensors}, self.last_steps())

    def ide_starts(self) -> None:
        sensors, position = self.stored()
        self.begin_to_start()
        self.kill("the IDE starts", 1.5)
        self.check_settings({sensors}, {position})

    def view_opens(self) -> None:
        """For the first time: rules are added, the machine is started."""
        self.end_machine()
        self.session.virsh("define", str(self._xml))
        sensors, position = self.stored()
        robot = self.start()
        wait_for("the emulator", lambda: robot.state()["emulator"])
        robot.send("open")
        self.kill("the view opens", next(self._opening))
        self.check_settings({sensors}, {position})
        self.states[self.check_definition()] += 1
        self.machine_starts()

    def machine_starts(self) -> None:
        """What is half is mended first."""
        robot = self.start()
        self.check_machine()
        if robot.state()["off"]:
            robot.do("open")
            try:
                wait_for("the machine to start", lambda: not robot.state()["off"], 30)
            except Timeout:
                raise Damage(f"the machine does not start: {robot.state()} {robot.log_tail()}") from None
        self.kill("the machine starts", 2)
        if self.check_definition() != "complete, complete":
            raise Damage("the rules are still not there")
        self.start()
        self.check_machine()
        self.kill("the machine is found again", 0.3)
        state = self.session.virsh("domstate", self.session.emulator.name).strip()
        if state != ("running" if processes(QEMU) else "shut off"):
            raise Damage(f"the machine is {state}, and QEMU: {processes(QEMU)}")
        self.machines[state] += 1

    def check_machine(self) -> None:
        """The IDE knows what runs."""
        wait_for("the emulator", lambda: self.robot.state()["emulator"])

        def agrees() -> bool:
            return self.robot.state()["off"] == (not processes(QEMU))

        try:
            wait_for("the IDE to know the machine", agrees, 30)
        except Timeout:
            raise Damage(f"{self.robot.state()}, and QEMU: {processes(QEMU)}") from None

    def end_machine(self) -> None:
        for pid in processes(QEMU):
            os.kill(pid, signal.SIGKILL)
        wait_for("QEMU to end", lambda: not processes(QEMU), 30)
        try:
            wait_for("the network to end with it", lambda: not processes(*PASST), 10)
        except Timeout:
            raise Damage("the network of a machine is left over") from None

    def show_view(self) -> None:
        """However long the machine takes; while it boots, packages are not found."""
        robot = self.robot
        wait_for("the emulator", lambda: robot.state()["emulator"])
        robot.do("open")
        deadline = time.monotonic() + BOOT
        while not (state := robot.state())["visible"]:
            if state["box"] and PACKAGES_MISSING not in state["box"]:
                raise Damage(f"a message in place of the view: {state['box']}")
            if time.monotonic() > deadline:
                raise Damage(f"the view does not open: {state} {robot.log_tail()}")
            if state["box"]:
                robot.do("acknowledge")
                time.sleep(2)
                robot.do("open")
            time.sleep(0.2)

    def machine_runs(self) -> None:
        """And values are sent, too, and stored together now and then. The next start shows the view."""
        running = processes(QEMU)
        sensors, position = self.stored()
        self.churn()
        time.sleep(2)  # a change older than that is in the file
        self.kill("the machine runs", 1)
        stored, _ = self.stored()
        if not position < stored <= self.robot.last_step:
            raise Damage(f"sensors of step {stored}, of {position} to {self.robot.last_step}")
        self.check_settings({stored}, self.last_steps())
        if self.check_definition() != "complete, complete":
            raise Damage("the rules have gone")
        if processes(QEMU) != running:
            raise Damage("the machine has not survived")
        self.start()
        self.check_machine()
        self.show_view()


def kill_each(killing: Killing, times: int, openings: int) -> None:
    for _ in range(times):
        killing.values_change()
        killing.ide_quits()
        killing.ide_starts()
    for _ in range(openings):
        killing.view_opens()
    killing.start()
    killing.check_machine()
    killing.show_view()
    for _ in range(times):
        killing.machine_runs()
    killing.robot.quit()
    killing.end_machine()


def run(session: Session, minutes: float | None, seed: int) -> Killing:
    killing = Killing(session, seed)
    if minutes is None:
        kill_each(killing, 1, len(OPENING))
        return killing
    end = time.monotonic() + minutes * 60
    while True:
        kill_each(killing, 5, 2 * len(OPENING))
        if time.monotonic() > end:
            return killing


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("image", type=Path)
    parser.add_argument("--minutes", type=float)
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000))
    arguments = parser.parse_args()
    print(f"kill seed: {arguments.seed}")
    directory = arguments.build.resolve() / "soak" / "kill"
    shutil.rmtree(directory, ignore_errors=True)
    session = Session(directory, arguments.build.resolve(), arguments.image.resolve())
    try:
        killing = run(session, arguments.minutes, arguments.seed)
    finally:
        session.end()  # what is left of an IDE ends with this network
    for what, count in killing.kills.items():
        print(f"killed while {what}: {count}")
    for state, count in killing.states.items():
        print(f"rules after a kill while the view opens: {state} (tcp, udp): {count}")
    for state, count in killing.machines.items():
        print(f"machine after a kill while it starts: {state}: {count}")
    for lock, count in killing.locks.items():
        print(f"lock of the settings at a start: {lock}: {count}")
    print(f"longest start: {killing.longest_start:.1f} s")
    print(f"kills: {killing.kills.total()}, no damage")
    return 0


if __name__ == "__main__":
    sys.exit(main())
