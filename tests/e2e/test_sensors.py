# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sensor pages: what a person does with mouse and keys, and what the guest's sensor service gets."""

from __future__ import annotations

from desktop import Element, wait_for
from story import Story

SENSORS = "ru.kelo.SensorfwEmulationManagement"
PREFIX = f"system {SENSORS} /ru/kelo/SensorfwEmulationManagement {SENSORS} "


class Sensors(Story):
    stored = {"als": 250, "tap": 2}
    seen = 0

    # --- helpers --------------------------------------------------------------------------------

    def new_calls(self) -> list[str]:
        """The calls the invoker got since the last look, each as method and arguments."""
        frames = self.guest.frames()
        fresh, type(self).seen = frames[self.seen :], len(frames)
        for frame in fresh:
            self.assertTrue(frame.startswith(PREFIX), frame)
        return [frame.removeprefix(PREFIX) for frame in fresh]

    def expect_calls(self, *calls: str) -> None:
        collected: list[str] = []

        def arrived() -> bool:
            collected.extend(self.new_calls())
            return len(collected) >= len(calls)

        wait_for(f"the calls {calls}", arrived, 60)
        self.assertEqual(collected, list(calls))

    def control(self, role: str, name: str) -> Element:
        return self.desktop.expect(role, name, within=self.ide.view_frame())

    def shown(self, role: str, name: str) -> bool:
        return self.desktop.find(role, name, within=self.ide.view_frame()) is not None

    def choose_entry(self, box: str, entry: str) -> None:
        self.desktop.click(self.control("combo box", box))
        self.desktop.click(self.desktop.expect("", entry))

    # --- the story ------------------------------------------------------------------------------

    def test_the_view_opens_on_the_sensor_values(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        wait_for("the first connection", lambda: len(self.guest.frames()) >= 15, 60)
        self.assertEqual(len(self.new_calls()), 15)
        self.assertTrue(self.shown("slider", "Accelerometer X"))
        self.desktop.screenshot(self.pictures / "values.png")

    def test_looking_sends_nothing(self) -> None:
        slider = self.control("slider", "Accelerometer X").rectangle
        for offset in range(0, slider.width, 10):
            self.desktop.move(slider.x + offset, slider.y + slider.height // 2)
        self.assertEqual(self.new_calls(), [])

    def test_a_dragged_slider_sends_each_step_once(self) -> None:
        slider = self.control("slider", "Accelerometer X").rectangle
        x, y = slider.centre
        self.desktop.drag((x, y), (x + 60, y), steps=12)
        value = wait_for("a value", lambda: self.guest.sensors()["accelerometerX"], 30)
        calls = self.new_calls()
        steps = [int(call.removeprefix("setAccelerometerX int32:")) for call in calls]
        self.assertTrue(3 <= len(steps) <= 12, steps)
        self.assertEqual(steps, sorted(set(steps)))
        self.assertEqual(steps[-1], value)
        self.assertEqual(self.control("text", "Accelerometer X").text, f"{value / 1000:.3f}")

    def test_a_typed_value_is_sent_on_enter(self) -> None:
        field = self.control("text", "Magnetometer Y")
        self.desktop.double_click(field)
        self.desktop.press("ctrl+a")
        self.desktop.type("-12.345")
        self.assertEqual(self.new_calls(), [])
        self.desktop.press("Return")
        self.expect_calls("setMagnetometerY double:-1.2345e-05")
        self.assertEqual(self.guest.sensors()["magnetometerY"], -1.2345e-05)

    def test_arrow_keys_move_a_slider_by_steps(self) -> None:
        self.desktop.click(self.control("slider", "Light Sensor"))
        wait_for("the click to arrive", lambda: self.new_calls(), 30)
        before = self.guest.sensors()["als"]
        self.desktop.press("Right", "Right", "Left")
        self.expect_calls(
            f"setAlsValue int32:{before + 1}", f"setAlsValue int32:{before + 2}", f"setAlsValue int32:{before + 1}"
        )

    def test_a_light_level_is_chosen(self) -> None:
        self.choose_entry("Light Sensor Light level", "Bright")
        self.expect_calls("setAlsValue int32:400")
        self.assertEqual(self.guest.sensors()["als"], 400)

    def test_near_and_far(self) -> None:
        self.desktop.click(self.control("button", "Proximity Sensor Near"))
        self.expect_calls("setProximitySensorValue int32:0")
        self.desktop.click(self.control("button", "Proximity Sensor Far"))
        self.expect_calls("setProximitySensorValue int32:10")
        self.assertEqual(self.guest.sensors()["proximity"], 10)

    def test_a_tap_direction_is_chosen(self) -> None:
        self.choose_entry("Tap Sensor Direction", "Z_Pos")
        self.expect_calls("setTapSensorValue int32:6")
        self.assertEqual(self.guest.sensors()["tap"], 6)

    def test_an_orientation_is_chosen(self) -> None:
        self.choose_entry("Orientation Sensor Orientation", "LeftUp")
        self.expect_calls("setAccelerometerValues int32:-100 int32:0 int32:0")
        state = self.guest.sensors()
        self.assertEqual([state["accelerometerX"], state["accelerometerY"], state["accelerometerZ"]], [-100, 0, 0])
        self.desktop.screenshot(self.pictures / "changed.png")

    def test_the_rows_follow_the_device_model(self) -> None:
        self.assertTrue(self.shown("combo box", "Tap Sensor Direction"))
        self.ide.choose_for_emulator("Device Model", "Velmo Tablet")
        wait_for("the tap sensor's row to go", lambda: not self.shown("combo box", "Tap Sensor Direction"), 60)
        self.assertFalse(self.shown("button", "Proximity Sensor Near"))
        self.assertTrue(self.shown("slider", "Accelerometer X"))
        self.desktop.screenshot(self.pictures / "tablet.png")
        calls = self.new_calls()
        self.assertIn("disableSensor string:tap", calls)
        self.assertIn("disableSensor string:proximity", calls)
        self.assertIn("enableSensor string:als", calls)
        self.assertNotIn("tap", self.guest.sensors()["enabledSensors"])

        self.ide.choose_for_emulator("Device Model", "Velmo Phone")
        wait_for("the tap sensor's row", lambda: self.shown("combo box", "Tap Sensor Direction"), 60)
        wait_for("the tap sensor", lambda: "tap" in self.guest.sensors()["enabledSensors"], 60)
        self.new_calls()

    def test_switched_off_sensors_are_greyed(self) -> None:
        self.ide.show_page("Sensors Management")
        self.desktop.click(self.control("check box", "Accelerometer"))
        self.assertFalse(self.control("check box", "Compass").checked)
        self.assertFalse(self.control("check box", "Orientation Sensor").checked)
        self.assertEqual(self.new_calls(), [])
        self.desktop.screenshot(self.pictures / "management.png")
        self.desktop.click(self.control("button", "Apply"))
        self.expect_calls(
            "disableSensor string:accelerometer",
            "disableSensor string:compass",
            "disableSensor string:orientation",
            "enableSensor string:magnetometer",
            "enableSensor string:gyroscope",
            "enableSensor string:als",
            "enableSensor string:proximity",
            "enableSensor string:tap",
        )
        self.assertNotIn("accelerometer", self.guest.sensors()["enabledSensors"])
        self.ide.show_page("Sensors Values")
        self.desktop.screenshot(self.pictures / "greyed.png")
        self.ide.show_page("Sensors Management")
        self.desktop.click(self.control("check box", "Orientation Sensor"))
        self.desktop.click(self.control("check box", "Compass"))
        self.desktop.click(self.control("button", "Apply"))
        wait_for("the compass", lambda: "compass" in self.guest.sensors()["enabledSensors"], 30)

    def test_leaving_with_changes_asks(self) -> None:
        self.desktop.click(self.control("check box", "Tap Sensor"))
        self.ide.click_page_button("Sensors Values")
        box = self.ide.box("Warning")
        self.assertIn(
            "The sensor configuration has been changed. Apply or discard changes?", self.ide.box_texts(box)
        )
        self.desktop.screenshot(self.pictures / "apply-or-discard.png")
        self.ide.answer(box, "Discard")
        wait_for("the values page", lambda: self.shown("slider", "Accelerometer X"), 30)
        self.new_calls()

    def test_an_error_of_the_service_opens_the_error_box(self) -> None:
        self.guest.stop_service("sensorfw-emulation-service")
        self.ide.activate_view()
        self.desktop.click(self.control("button", "Proximity Sensor Near"))
        text = wait_for("the error box", self.ide.error_text, 60)
        self.assertIn("org.freedesktop.DBus.Error.ServiceUnknown", text)
        self.desktop.screenshot(self.pictures / "error.png")
        self.ide.dismiss_error()
        self.guest.start_service("sensorfw-emulation-service")

    def test_power_off_and_on_brings_back_what_was_stored(self) -> None:
        self.ide.choose_for_emulator("Shut Down")
        wait_for("the emulator to end", lambda: self.session.qemu_pid() is None, 120)
        wait_for("the window to hide", lambda: self.ide.view() is None, 60)
        # Values are stored when the IDE quits, so these are the ones from before.
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        state = wait_for("the stored values", lambda: self.guest.sensors_when({"als": 250, "tap": 2}), 60)
        self.assertEqual(state["accelerometerX"], 0)

    def test_values_are_there_again_after_the_ide_was_restarted(self) -> None:
        self.ide.activate_view()
        self.choose_entry("Light Sensor Light level", "Bright")
        self.choose_entry("Tap Sensor Direction", "Z_Pos")
        wait_for("the tap direction", lambda: self.guest.sensors_when({"als": 400, "tap": 6}), 60)
        self.assertEqual(self.ide.quit(), 0)
        self.start_ide()
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        # The machine went on running; the new IDE's first connection asks for the states and sets the values.
        wait_for("the new connection", lambda: len(self.new_calls()) >= 15, 60)
        wait_for("the values", lambda: self.guest.sensors_when({"als": 400, "tap": 6}), 60)
