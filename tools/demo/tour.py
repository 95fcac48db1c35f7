#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A tour through the demo, taken by itself: the real IDE on a desktop without a display, the real emulator.

Each step prints one line with what was observed, and leaves a screenshot in the output folder.
"""

from __future__ import annotations

import argparse
import shutil
import sys
import tempfile
import time
import xml.etree.ElementTree as ElementTree
from pathlib import Path
from typing import Any

sys.path.insert(0, str(Path(__file__).resolve().parent))

from camerapage import CameraPage, write_video  # noqa: E402
from desktop import Desktop, Timeout, wait_for  # noqa: E402
from gps import GpsPage  # noqa: E402
from guest import Guest  # noqa: E402
from ide import Ide  # noqa: E402
from phone import PhonePage  # noqa: E402
from sensors import SensorPages  # noqa: E402
from session import Session, connections  # noqa: E402
from tracks import write_tracks  # noqa: E402

SUBMENU = "Velmo OS"
# What a user left behind the last time; the guest must hold it once the window is open.
STORED = {
    "accelerometer_x": 120,
    "accelerometer_y": -340,
    "accelerometer_z": 905,
    "als": 400,
    "proximity_reflectance": 7,
    "magnetometer_calib_level": 2,
}

# One group of controls for each sensor.
ROWS = [
    "Accelerometer", "Magnetometer", "Compass", "Magnetic Field", "Orientation Sensor", "Gyroscope", "Light Sensor",
    "Proximity Sensor", "Tap Sensor",
]  # fmt: skip


class Tour:
    def __init__(self, output: Path):
        self.output = output
        self.started = time.monotonic()
        self.count = 0

    def step(self, title: str, observed: str, desktop: Desktop | None = None) -> None:
        self.count += 1
        picture = ""
        if desktop:
            name = f"{self.count:02d}-{title.lower().replace(' ', '-')}.png"
            desktop.screenshot(self.output / name)
            picture = f"  [{name}]"
        print(f"{time.monotonic() - self.started:6.1f} s  {title}: {observed}{picture}", flush=True)


def forwarding_rules(definition: str) -> list[str]:
    """The rules in a domain's definition, as "tcp 127.0.0.1:5454 -> 1234"."""
    rules = []
    for forward in ElementTree.fromstring(definition).iter("portForward"):
        for span in forward.iter("range"):
            start = span.get("start")
            rules.append(f"{forward.get('proto')} {forward.get('address')}:{start} -> {span.get('to', start)}")
    return rules


def take(tour: Tour, desktop: Desktop, session: Session) -> None:
    session.prepare()
    session.store_settings("emulationmanagement", STORED)
    tour.step("Emulator defined", f"libvirt lists {session.virsh('list', '--all', '--name').split(chr(10))[0]!r}, off")

    session.cameras.start()
    session.start_ide()
    ide = Ide(desktop, session)
    ide.wait_until_open()
    tour.step("IDE started", f"the window {ide.title!r} is on the screen", desktop)

    rules_before = forwarding_rules(session.definition())
    ide.open_menu(SUBMENU)
    entry = desktop.expect("menu item", "Emulation Management…")
    tour.step("Menu opened", f"Tools > {SUBMENU} > {entry.name}", desktop)
    desktop.click(entry)

    wait_for("both forwarding rules", lambda: len(forwarding_rules(session.definition())) >= len(rules_before) + 2, 60)
    added = [rule for rule in forwarding_rules(session.definition()) if rule not in rules_before]
    tour.step("Ports forwarded", "; ".join(added))

    pid = wait_for("the emulator's process", session.qemu_pid, 60)
    tour.step("Virtual machine started", f"QEMU runs as process {pid}", desktop)

    guest = Guest(session.emulator)
    window = ide.wait_for_view()
    logins = [line for line in session.console().splitlines() if line.startswith("Accepted publickey")]
    tour.step(
        "Packages checked over SSH",
        f"the IDE ran \"rpm -qa\" {session.package_checks()} time, sshd says {logins[-1][:40]!r}",
    )
    tour.step("Window shown", f"window {window}, {ide.geometry(window)}", desktop)

    wait_for("a connection to port 5454", lambda: connections(5454) > 0, 60)
    frames = wait_for("the frames of the connection", lambda: len(guest.frames()) >= 25 and guest.frames(), 60)
    tour.step("WebSocket connected", f"the invoker has got {len(frames)} requests, the first is {frames[0]!r}")

    wanted = {
        "accelerometerX": 120, "accelerometerY": -340, "accelerometerZ": 905, "als": 400, "proximity": 7,
        "magnetometerCalibrationLevel": 2,
    }  # fmt: skip
    state = wait_for("the stored values in the guest", lambda: guest.sensors_when(wanted), 60)
    tour.step("Stored values in the guest", ", ".join(f"{key} {state[key]}" for key in wanted))

    show_sensor_pages(tour, desktop, ide, guest)
    show_phone_page(tour, desktop, ide, guest)
    with tempfile.TemporaryDirectory(prefix="files-") as folder:
        write_tracks(Path(folder))
        show_gps_page(tour, desktop, ide, guest, Path(folder) / "walk-gga.nmea")

        video = Path(folder) / "green.webm"
        write_video(video, 0xFF00FF00)
        show_camera_page(tour, desktop, ide, guest, video)

    code = ide.quit()
    if code:
        raise Timeout(f"the IDE ended with exit code {code}")
    tour.step("IDE closed", f"exit code {code}")


def show_sensor_pages(tour: Tour, desktop: Desktop, ide: Ide, guest: Guest) -> None:
    pages = SensorPages(ide, guest)
    calls = pages.calls
    calls.start_here()

    def in_the_guest(**wanted: object) -> str:
        state = wait_for(f"{wanted} in the guest", lambda: guest.sensors_when(wanted), 60)
        return ", ".join(f"{name} {state[name]}" for name in wanted)

    pages.drag_slider("Accelerometer X", pixels=60, steps=12)
    held = in_the_guest(accelerometerX=pages.shown_thousandths("Accelerometer X"))
    steps = calls.take(1)
    tour.step("Slider dragged", f"{len(steps)} calls, the last is {steps[-1]!r}; the guest holds {held}", desktop)

    pages.type_number("Magnetometer Y", "-12.345")
    desktop.press("Return")
    held = in_the_guest(magnetometerY=-1.2345e-05)
    tour.step("Number typed", f"{calls.take(1)[-1]!r}; the guest holds {held}", desktop)
    desktop.press("Tab")  # which sends the number once more
    calls.take(1)

    for title, choose, wanted in (
        ("Light level chosen", lambda: pages.choose_entry("Light Sensor Light level", "Sunny"), {"als": 2500}),
        ("Near pressed", lambda: pages.click("button", "Proximity Sensor Near"), {"proximity": 0}),
        ("Tap direction chosen", lambda: pages.choose_entry("Tap Sensor Direction", "Z_Pos"), {"tap": 6}),
    ):
        choose()
        received = calls.take(1)
        tour.step(title, f"{received[-1]!r}; the guest holds {in_the_guest(**wanted)}", desktop)

    pages.switch_off("Gyroscope")
    received = calls.take(8)
    state = guest.sensors()
    tour.step(
        "Gyroscope switched off",
        f"{len(received)} calls, among them {next(call for call in received if 'gyroscope' in call)!r}; "
        f"the guest has {', '.join(state['enabledSensors'])}",
        desktop,
    )
    ide.show_page("Sensors Values")
    slider = pages.control("slider", "Gyroscope X")
    tour.step("Gyroscope greyed", f"its slider is {'enabled' if slider.enabled else 'disabled'}", desktop)

    offered = [name for name in ROWS if pages.find("", name)]
    pages.choose_device_model("Velmo Tablet")
    wait_for("the rows to follow", lambda: not pages.find("", ROWS[-1]), 60)
    remaining = [name for name in ROWS if pages.find("", name)]
    enabled = wait_for(
        "the sensors of a tablet", lambda: "tap" not in (on := guest.sensors()["enabledSensors"]) and on, 60
    )
    tour.step(
        "Device model switched",
        f"the rows {', '.join(name for name in offered if name not in remaining)} are gone, "
        f"{', '.join(remaining)} stay; the guest has {', '.join(enabled)}",
        desktop,
    )


def show_phone_page(tour: Tour, desktop: Desktop, ide: Ide, guest: Guest) -> None:
    page = PhonePage(ide, guest)
    page.show()

    def in_the_guest(sensor: str, scale: float = 1, unit: str = "") -> str:
        values = (f"{round(value * scale, 2) + 0:g}" for value in page.reading(sensor))  # no minus for zero
        return f"the guest's {sensor} reads {' '.join(values)}{unit}"

    page.click("button", "Right side up")
    wait_for("the guest to follow", lambda: page.reading("accelerometer") == (1000, 0, 0), 60)
    desktop.move(*page.control("", "Device rotation").rectangle.centre)  # no hint in the picture
    tour.step("Phone turned to a side", f"{in_the_guest('accelerometer')}; {in_the_guest('magnetometer', 1e6, ' μT')}")

    with desktop.holding("Up"):
        wait_for("the guest to turn along", lambda: page.reading("gyroscope")[0] > 0, 60)
        tour.step("Phone turned by keys", in_the_guest("gyroscope"), desktop)
    wait_for("the phone to rest", lambda: not any(page.reading("gyroscope")), 60)
    tour.step("Phone at rest", f"it is turned by {page.rotation()}; {in_the_guest('gyroscope')}")

    page.calls.start_here()
    with desktop.holding("ctrl"):
        page.wait_for_mode("Move")
        desktop.press(*["Right"] * 5)
        readings = wait_for("a move in the guest", page.move, 60)
        shown = ", ".join(" ".join(f"{value:g}" for value in reading) for reading in dict.fromkeys(readings))
        tour.step("Phone moved by keys", f"the guest's accelerometer has read {shown}, and then the first again")


def show_gps_page(tour: Tour, desktop: Desktop, ide: Ide, guest: Guest, track: Path) -> None:
    page = GpsPage(ide, guest)
    calls = page.calls
    calls.start_here()
    page.show()

    def in_the_guest() -> str:
        state = guest.gps()
        place = f"the guest is at {state['latitude']:.5f} {state['longitude']:.5f}, {state['altitude']:.1f} m"
        if not state["trackLength"]:
            return place
        return f"{place}, point {state['trackIndex'] + 1} of {state['trackLength']}, {state['trackState']}"

    page.type_number("Latitude", "59.93863")
    page.type_number("Longitude", "30.31413")
    page.click("button", "Set the position")
    tour.step("Position set", f"{calls.take(1)[-1]!r}; {in_the_guest()}")

    page.open_track(track)
    wait_for("the track in the guest", lambda: guest.gps()["trackLength"] > 0, 60)
    tour.step("Track opened", f"{len(calls.take(4))} calls; {in_the_guest()}", desktop)

    page.choose_speed("5x")
    page.click("button", "Play")
    desktop.move(*page.control("", "Coordinate").rectangle.centre)  # no hint in the picture
    wait_for("the guest to come along", lambda: guest.gps()["trackIndex"] >= 20, 60)
    tour.step("Track played", f"{len(calls.take(1))} calls; {in_the_guest()}", desktop)

    page.click("button", "Pause")
    wait_for("the guest to wait", lambda: guest.gps()["trackState"] == "paused", 60)
    tour.step("Track paused", in_the_guest())
    page.click("button", "Stop")
    wait_for("the guest to stop", lambda: guest.gps()["trackState"] == "stopped", 60)
    tour.step("Track stopped", in_the_guest())


def show_camera_page(tour: Tour, desktop: Desktop, ide: Ide, guest: Guest, video: Path) -> None:
    page = CameraPage(ide, guest)
    page.show()

    def describe(state: dict[str, Any]) -> str:
        colour = ", ".join(f"{part} {state[f'mean{part.capitalize()}']}" for part in ("red", "green", "blue"))
        return f"the guest has got {state['framesReceived']} pictures, now of {state['width']} x {state['height']}, {colour}"

    page.choose_entry("Resolution", "640x480")
    page.choose_entry("Framerate", "15/1")
    page.click("button", "Set settings")
    page.start()
    tour.step("Camera streamed", describe(page.wait_for_frames(30, width=640, height=480)), desktop)
    page.stop()
    page.click("radio button", "Video file")
    page.open_video(video)
    tour.step("Video streamed", describe(page.wait_for_frames(30, width=320, height=240)), desktop)
    page.stop()
    tour.step("Stream stopped", f"the guest has got {page.wait_for_silence()} pictures and no more")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--image", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    options = parser.parse_args()

    shutil.rmtree(options.output, ignore_errors=True)
    options.output.mkdir(parents=True)
    tour = Tour(options.output)
    session = Session(options.output / "session", options.build, options.image)
    with Desktop() as desktop:
        try:
            take(tour, desktop, session)
        except Exception as error:
            desktop.screenshot(options.output / "failure.png")
            print(f"the tour ended early: {error}", file=sys.stderr)
            print(session.log_tail(), file=sys.stderr)
            return 1
        finally:
            session.end()
    print(f"The tour took {time.monotonic() - tour.started:.0f} s; pictures are in {options.output}.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
