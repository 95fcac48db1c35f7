#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Hours of a user's work in the real IDE, against the emulator's real services, as fast as they can be done: whether
the IDE is afterwards what it was before.

usage: soak.py BUILD-DIR [--minutes N] [--seed N]

Without a number of minutes all is done once, after it was done once to warm up. The machine is one of libvirt's test driver, which runs nothing; what would be inside it runs beside the IDE. Samples of
what the IDE uses go to BUILD-DIR/soak/soak.csv.
"""

from __future__ import annotations

import argparse
import random
import subprocess
import sys
import tempfile
import time
from contextlib import ExitStack
from pathlib import Path
from typing import Any, NamedTuple

from camera import DemoCameras
from desktop import Timeout, wait_for
from robot import Robot
from sampler import Sampler, Usage, slope
from services import Services, SshServer
from tracks import write_tracks

# KiB a round. At first memory grows with what is loaded and kept for good, and goes up and down by some MiB; after some
# hundred rounds 6 to 16 KiB a round were measured: pixmaps in Qt's cache, at most 10 MiB, and what GStreamer's threads
# have freed and the C library keeps.
MEMORY_SLOPE = 50
ENOUGH_ROUNDS = 100
# KiB that are allocated and not freed, at rest and without a track. After 400 rounds 700 more were measured, most of it
# from the first hundred; a text of a track that is lost each time was 6000 after fifty.
MEMORY_IN_USE = 1500
IDLE_RATIO = 5
# The phone's clock ticks ten times a second while its page is shown, and tells the emulator what the sensors read: 9 ms
# of a second were measured.
TICKING_RATIO = 300
# Milliseconds of CPU time a second: an IDE that waits uses less than can be compared with.
IDLE_FLOOR = 0.1
# Pools of threads give up a thread that has had nothing to do for half a minute.
SETTLING = 35  # seconds
WARM_UP = 4  # rounds

DOMAINS = Path(__file__).resolve().parents[1] / "ide" / "data" / "one-emulator.xml"

VALUES = "sensorsValuesPage"
PHONE = "smartphoneModelPage"
GPS = "gpsManagementPage"
CAMERA = "cameraManagementPage"
CAMERA_LABELS = ("currentCameraLabel", "currentResolutionLabel", "currentFramerateLabel")
CAMERA_SOURCES = ("cameraRadioButton", "videoFileSourceRadioButton")
SENSORS = "sensorsManagementPage"
BUTTONS = {
    VALUES: "sensorsValuesButton",
    PHONE: "smartphoneModelButton",
    GPS: "gpsManagementButton",
    CAMERA: "cameraManagementButton",
    SENSORS: "sensorsManagementButton",
}
SLIDERS = [
    f"{sensor}Controls/{axis}Slider" for sensor in ("accelerometer", "magnetometer", "gyroscope") for axis in "xyz"
]


class Work:
    """What a user does."""

    def __init__(self, robot: Robot, services: Services, ssh: SshServer, files: Path, seed: int):
        self.robot = robot
        self.services = services
        self.ssh = ssh
        self.random = random.Random(seed)
        self.tracks = sorted(file for file in files.glob("*.nmea") if "wpl" not in file.name)
        self.videos = sorted(files.glob("*.webm"))

    def show(self, page: str) -> None:
        self.robot.click(BUTTONS[page])
        wait_for(page, lambda: self.robot.get(page, "visible"))

    def enabled(self, item: str) -> bool:
        return self.robot.get(item, "enabled")

    def arrives(self, what: str, size: int) -> None:
        """Waits until the invoker has noted so many bytes."""
        try:
            wait_for(what, lambda: self.services.traffic() >= size, 30)
        except Timeout:
            raise RuntimeError(f"{what}: {self.services.traffic()} of {size} bytes; {self.robot.state()}") from None

    def drag(self, slider: str) -> None:
        """Far enough to change its value."""
        now = self.robot.get(slider, "visualPosition")
        self.robot.do("drag", item=slider, to=(now + self.random.uniform(0.2, 0.8)) % 1)

    def values(self) -> None:
        self.show(VALUES)
        for slider in self.random.sample(SLIDERS, 5):
            before = self.services.traffic()
            self.drag(f"{VALUES}/{slider}/slider")
            self.arrives(slider, before + 50)
        self.robot.click(f"{VALUES}/resetValuesButton")

    def phone(self) -> None:
        self.show(PHONE)
        before = self.services.traffic()
        for mode, sliders in (
            ("rotationRadioButton", ("xRotSlider", "yRotSlider", "zRotSlider")),
            ("moveRadioButton", ("xMoveSlider", "yMoveSlider", "zMoveSlider")),
        ):
            self.robot.click(f"{PHONE}/{mode}")
            for slider in sliders:
                self.drag(f"{PHONE}/{slider}/slider")
                time.sleep(0.3)  # a few ticks of its clock, for a person who looks at it
        self.robot.click(f"{PHONE}/orientationButton{self.random.randrange(6)}")
        self.arrives("the phone's values", before + 1000)

    def gps(self, keep: bool = False) -> None:
        self.show(GPS)
        track = self.random.choice(self.tracks)
        before = self.services.traffic()
        self.robot.do("openFile", item=GPS, url=track.as_uri())
        self.arrives("the track", before + 15_000)
        for _ in range(self.random.randrange(5)):
            self.robot.do("key", item=f"{GPS}/speedBox", key=self.random.choice(["Down", "Down", "Up"]))
        self.robot.click(f"{GPS}/playButton")
        before = self.services.traffic()
        self.robot.do("drag", item=f"{GPS}/progressSlider", to=self.random.random() * 0.9)
        self.arrives("the track's points", before + 3000)
        self.robot.click(f"{GPS}/pauseButton")
        self.robot.click(f"{GPS}/playButton")
        if not keep:
            self.robot.click(f"{GPS}/stopButton")

    def stream(self, start: str, **arguments: Any) -> None:
        before = self.services.pictures()
        self.robot.do(start, **arguments)
        try:
            wait_for("pictures", lambda: self.services.pictures() > before + 15, 60)
        except Timeout as timeout:
            raise Timeout(f"{timeout}, got {self.services.pictures() - before}: {self.camera_page()}") from timeout

    def camera_page(self) -> str:
        """What it shows, and what the IDE has logged."""
        facts = {name: self.robot.get(f"{CAMERA}/{name}", "text") for name in CAMERA_LABELS}
        facts |= {f"{name} checked": self.robot.get(f"{CAMERA}/{name}", "checked") for name in CAMERA_SOURCES}
        facts |= {name: self.enabled(f"{CAMERA}/{name}") for name in ("playButton", "stopButton", *CAMERA_SOURCES)}
        return f"{facts}; {self.robot.log_tail()}"

    def stop_stream(self) -> None:
        self.robot.click(f"{CAMERA}/stopButton")
        wait_for("the stream to end", lambda: not self.enabled(f"{CAMERA}/stopButton"), 30)

    def camera(self) -> None:
        self.show(CAMERA)
        self.robot.click(f"{CAMERA}/cameraRadioButton")
        self.robot.do("key", item=f"{CAMERA}/resolutionBox", key=self.random.choice(["Down", "Up"]))
        self.robot.click(f"{CAMERA}/setSettingsButton")
        self.stream("click", item=f"{CAMERA}/playButton")
        self.stop_stream()
        self.robot.click(f"{CAMERA}/updateCamerasButton")

    def video(self) -> None:
        self.show(CAMERA)
        self.robot.click(f"{CAMERA}/videoFileSourceRadioButton")
        self.stream("openFile", item=CAMERA, url=self.random.choice(self.videos).as_uri())
        self.stop_stream()

    def sensors(self) -> None:
        self.show(SENSORS)
        for _ in range(2):  # off and on again
            before = self.services.traffic()
            self.robot.click(f"{SENSORS}/tapCheckBox")
            self.robot.click(f"{SENSORS}/proximityCheckBox")
            self.robot.click(f"{SENSORS}/applyButton")
            self.arrives("the sensors", before + 200)

    def reconnect(self) -> None:
        """The services go, with a track loaded, and come back."""
        self.gps(keep=True)
        self.services.stop()
        self.acknowledge_loss()
        self.services.start()
        wait_for("the connection", self.services.greeted, 30)
        wait_for("the track to be given up", lambda: not self.enabled(f"{GPS}/progressSlider"), 30)

    def reopen(self) -> None:
        self.robot.do("close")
        wait_for("the view to go", lambda: not self.robot.state()["visible"], 30)
        self.robot.open_view()

    def acknowledge_loss(self) -> None:
        wait_for("the message", lambda: "connection is lost" in self.robot.state()["box"], 30)
        self.robot.do("acknowledge")

    def power_cycle(self) -> None:
        loaded = self.enabled(f"{GPS}/progressSlider")
        self.services.stop()
        if loaded:
            self.acknowledge_loss()
        self.ssh.stop()
        self.robot.do("powerOff")
        wait_for("the view to go", lambda: not self.robot.state()["visible"], 30)
        self.services.start()
        wait_for("the channel", self.services.greeted, 30)  # which comes back by itself
        self.ssh.start()
        self.robot.open_view()
        wait_for("the connection", lambda: self.services.greeted(2), 30)  # which replaces it

    def round(self, number: int, sampler: Sampler) -> None:
        steps = [self.values, self.phone, self.gps, self.video, self.camera, self.sensors, self.reopen]
        self.random.shuffle(steps)
        if number % 3 == 0:
            steps.append(self.reconnect)
        if number % 4 == 0:
            steps.append(self.power_cycle)
        for step in steps:
            sampler.phase = step.__name__
            step()
        sampler.phase = "rest"
        self.show(VALUES)


def rest(sampler: Sampler, phase: str, settling: float, window: float) -> tuple[Usage, float]:
    """What is used at rest, and milliseconds of CPU time a second there."""
    sampler.phase = phase
    time.sleep(settling)
    before = sampler.sample()
    time.sleep(window)
    after = sampler.sample()
    return after, 1000 * (after.cpu - before.cpu) / (after.seconds - before.seconds)


def write_video(file: Path, pictures: int, size: str) -> None:
    width, height = size.split("x")
    pipeline = (
        f"videotestsrc num-buffers={pictures} ! video/x-raw,format=I420,width={width},height={height},framerate=30/1 ! "
        f"vp8enc deadline=1 cpu-used=16 ! webmmux ! filesink location={file}"
    )
    subprocess.run(["gst-launch-1.0", "-q", *pipeline.split()], check=True)


def prepare(home: Path, ssh: SshServer) -> Path:
    """The IDE's settings; returns their folder."""
    domains = home / "domains.xml"
    domains.write_text(DOMAINS.read_text().replace("@USER@", ssh.user).replace("/tmp/emulator-key", str(ssh.key)))
    settings = home / "settings"
    file = settings / "QtProject" / "QtCreator.ini"
    file.parent.mkdir(parents=True)
    file.write_text(
        "[General]\nSuppressedWarnings=TakeUITour, LinkWithQtInstallation\n\n"
        f"[Tarn]\nConnectionUri=test://{domains}\n\n"
        "[emulationmanagement]\ndo_not_show_again_reset_sensors_dialog=true\n"
    )
    return settings


def check(what: str, value: float, limit: float, unit: str) -> bool:
    verdict = "met" if value <= limit else "missed"
    print(f"{what}: {value:.3g} {unit} (aim at most {limit:g}: {verdict})")
    return value <= limit


class Idle(NamedTuple):
    """Milliseconds of CPU time a second: before the view was opened, and on each page while it is open and closed."""

    unopened: float
    opened: dict[str, float]
    closed: dict[str, float]


def rest_on_each_page(work: Work, sampler: Sampler, unopened: float, window: float) -> Idle:
    opened, closed = {}, {}
    for page in BUTTONS:
        work.show(page)
        _, opened[page] = rest(sampler, f"open on {page}", 3, window)
        work.robot.do("close")
        _, closed[page] = rest(sampler, f"closed on {page}", 3, window)
        work.robot.open_view()
    return Idle(unopened, opened, closed)


def check_idle(idle: Idle) -> list[bool]:
    before = max(idle.unopened, IDLE_FLOOR)
    print(f"idle before the view was opened: {idle.unopened:.3f} ms/s (no aim)")
    checks = []
    for state, pages in (("open", idle.opened), ("closed", idle.closed)):
        for page, used in pages.items():
            limit = TICKING_RATIO if page == PHONE and state == "open" else IDLE_RATIO
            checks.append(check(f"idle, {state} on {page} / before", used / before, limit, "times"))
    return checks


def report(first: Usage, rounds: list[Usage], last: Usage, in_use_growth: int, idle: Idle) -> bool:
    seconds, cpu = last.seconds - first.seconds, last.cpu - first.cpu
    print(f"soak: {len(rounds)} rounds, {seconds:.0f} s, {cpu:.0f} s of CPU time")
    print(f"soak memory: {first.private_dirty} KiB after the warm-up, {last.private_dirty} KiB at the end (no aim)")
    points = [(number, usage.private_dirty) for number, usage in enumerate(rounds)]
    checks = [
        check("soak memory in use, end - warm-up", in_use_growth, MEMORY_IN_USE, "KiB"),
        check("soak threads, end - warm-up", last.threads - first.threads, 0, "threads"),
        check("soak descriptors, end - warm-up", last.descriptors - first.descriptors, 0, "descriptors"),
        *check_idle(idle),
    ]
    growth = slope(points[len(points) // 2 :])
    if len(rounds) >= ENOUGH_ROUNDS:
        checks.append(check("soak memory, second half", growth, MEMORY_SLOPE, "KiB a round"))
    else:
        print(f"soak memory, second half: {growth:.3g} KiB a round (no aim with fewer than {ENOUGH_ROUNDS} rounds)")
    return all(checks)


def soak(build: Path, home: Path, csv: Path, minutes: float | None, seed: int) -> bool:
    with ExitStack() as stack:
        cameras = DemoCameras(home / "cameras", home / "pw", build)
        stack.callback(cameras.end)
        cameras.start()
        write_tracks(home)
        for name, pictures, size in (("short", 45, "320x240"), ("long", 300, "640x480")):
            write_video(home / f"{name}.webm", pictures, size)
        services = Services(build, home)
        stack.callback(services.stop)
        services.start()
        ssh = SshServer(home / "ssh")
        stack.callback(ssh.stop)
        ssh.start()
        settings = prepare(home, ssh)
        robot = Robot(
            Robot.command(build, settings), Robot.environment(home) | cameras.environment, csv.with_suffix(".log")
        )
        stack.callback(robot.end)
        robot.wait_until_ready()
        sampler = stack.enter_context(Sampler(robot.pid, csv))
        work = Work(robot, services, ssh, home, seed)

        window = 4 if minutes is None else 30
        _, unopened = rest(sampler, "unopened", SETTLING, window)
        robot.open_view()
        wait_for("the connection", services.greeted, 30)
        for number in range(1 if minutes is None else WARM_UP):
            work.round(number, sampler)
        work.power_cycle()  # here and at the end, so that no track is loaded
        first, _ = rest(sampler, "warm", SETTLING, 0.1)
        first_in_use = robot.do("memory")["inUse"]
        begin, rounds = time.monotonic(), []
        while not rounds if minutes is None else time.monotonic() - begin < minutes * 60:
            work.round(len(rounds), sampler)
            rounds.append(sampler.sample())
        work.power_cycle()
        last, _ = rest(sampler, "end", SETTLING, 0.1)
        growth = (robot.do("memory")["inUse"] - first_in_use) // 1024
        idle = rest_on_each_page(work, sampler, unopened, window)
        met = report(first, rounds, last, growth, idle)
        robot.quit()
        return met


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("--minutes", type=float)
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000))
    arguments = parser.parse_args()
    build = arguments.build.resolve()
    csv = build / "soak" / "soak.csv"
    csv.parent.mkdir(exist_ok=True)
    csv.with_suffix(".log").unlink(missing_ok=True)
    print(f"soak seed: {arguments.seed}")
    with tempfile.TemporaryDirectory() as directory:
        return 0 if soak(build, Path(directory), csv, arguments.minutes, arguments.seed) else 1


if __name__ == "__main__":
    sys.exit(main())
