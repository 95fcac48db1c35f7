# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Opening the view: from an emulator that is off to values in the guest, and what can go wrong on the way."""

from __future__ import annotations

import os
import signal

from desktop import wait_for
from session import connections
from story import Story

GPS = "ru.kelo.GeoclueEmulationManagement"
SENSORS = "ru.kelo.SensorfwEmulationManagement"
PREFIX = f"system {SENSORS} /ru/kelo/SensorfwEmulationManagement {SENSORS} "
NAMES = ["accelerometer", "als", "compass", "gyroscope", "magnetometer", "orientation", "proximity", "tap"]

VALUES = [
    PREFIX + "setAccelerometerValues int32:120 int32:-340 int32:905",
    PREFIX + "setMagnetometerValues double:4.3e-05 double:0 double:-1.25e-05",
    PREFIX + "setMagnetometerCalibrationLevel int32:2",
    PREFIX + "setGyroscopeValues double:0 double:0 double:1.14592",
    PREFIX + "setAlsValue int32:400",
    PREFIX + "setProximitySensorValue int32:7",
    PREFIX + "setTapSensorValue int32:3",
]
GPS_PREFIX = f"system {GPS} /ru/kelo/GeoclueEmulationManagement {GPS} "
GPS_SETUP = [
    GPS_PREFIX + "stopTrack ",
    GPS_PREFIX + "setTrackLooped boolean:0",
    GPS_PREFIX + "setTrackIntervalMode boolean:0",
    GPS_PREFIX + "setTrackSpeed int32:1",
    GPS_PREFIX + "setPosition double:59.9386300 double:30.3141300 double:-3.50",
]
# The GPS manager is bound to the channel twice.
FIRST_CONNECTION = [*GPS_SETUP, *(PREFIX + f"enabled string:{name}" for name in NAMES), *VALUES, *GPS_SETUP]
RECONNECTION = [*GPS_SETUP, *(PREFIX + f"enableSensor string:{name}" for name in NAMES), *VALUES, *GPS_SETUP]


class Opening(Story):
    stored = {
        "accelerometer_x": 120,
        "accelerometer_y": -340,
        "accelerometer_z": 905,
        "magnetometer_z": -1.25e-05,
        "magnetometer_calib_level": 2,
        "als": 400,
        "proximity_reflectance": 7,
        "tap": 3,
        "gps_latitude": 59.93863,
        "gps_longitude": 30.31413,
        "gps_altitude": -3.5,
    }

    def open_view(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")

    def test_the_machine_that_is_off_gets_the_rules_and_starts(self) -> None:
        self.assertNotIn("5454", self.session.definition())
        self.open_view()
        wait_for("the emulator's process", self.session.qemu_pid, 60)
        definition = self.session.definition()
        self.assertIn("start='5454' to='1234'", definition)
        self.assertIn("start='34343'", definition)

    def test_the_window_shows_after_the_package_check(self) -> None:
        window = self.ide.wait_for_view()
        self.assertEqual(self.ide.geometry(window), "1100 x 600 pixels")

    def test_the_first_connection_asks_for_states_and_restores_values(self) -> None:
        frames = wait_for(
            "the frames", lambda: (seen := self.guest.frames()) and len(seen) >= len(FIRST_CONNECTION) and seen, 60
        )
        self.assertEqual(frames, FIRST_CONNECTION)

    def test_the_service_holds_the_stored_values(self) -> None:
        state = self.guest.sensors()
        self.assertEqual(
            [state["accelerometerX"], state["accelerometerY"], state["accelerometerZ"]], [120, -340, 905]
        )
        self.assertEqual(state["magnetometerZ"], -1.25e-05)
        self.assertEqual(state["magnetometerCalibrationLevel"], 2)
        self.assertEqual(state["als"], 400)
        self.assertEqual(state["proximity"], 7)
        self.assertEqual(state["tap"], 3)

    def test_a_restarted_invoker_gets_states_and_values_again(self) -> None:
        self.guest.restart_invoker()
        sent = len(FIRST_CONNECTION)
        frames = wait_for(
            "the frames", lambda: (seen := self.guest.frames()[sent:]) and len(seen) >= len(RECONNECTION) and seen, 60
        )
        self.assertEqual(frames, RECONNECTION)

    def test_opening_again_checks_nothing_and_connects_nothing(self) -> None:
        checks, requests = self.session.package_checks(), len(self.guest.frames())
        self.assertEqual(checks, 1)
        self.ide.close_view()
        for _ in range(2):
            self.open_view()
            self.ide.wait_for_view(30)
        self.assertEqual(self.session.package_checks(), checks)
        self.assertEqual(len(self.guest.frames()), requests)
        self.assertEqual(connections(5454), 1)

    def test_a_killed_machine_hides_the_window(self) -> None:
        pid = self.session.qemu_pid()
        os.kill(pid, signal.SIGKILL)
        wait_for("the window to hide", lambda: self.ide.view() is None, 60)

    def test_the_next_opening_starts_and_checks_again(self) -> None:
        self.open_view()
        self.ide.wait_for_view()
        wait_for("the values", lambda: self.guest.sensors()["als"] == 400, 60)

    def test_a_removed_package_is_named(self) -> None:
        self.guest.remove_package("geoclue-emulator")
        self.ide.choose_for_emulator("Shut Down")
        wait_for("the emulator to end", lambda: self.session.qemu_pid() is None, 120)
        self.open_view()
        box = self.ide.box("Emulation management plugin", 180)
        self.assertEqual(
            self.ide.box_texts(box),
            ["Necessary packages not found on emulator!", "Packages is not installed: \ngeoclue-emulator\n"],
        )
        self.desktop.screenshot(self.pictures / "package-missing.png")
        self.ide.answer(box, "Close")
        self.assertIsNone(self.ide.view())

    def test_the_ide_quits_cleanly_and_leaves_the_machine_running(self) -> None:
        self.assertEqual(self.ide.quit(), 0)
        self.assertIsNotNone(self.session.qemu_pid())
