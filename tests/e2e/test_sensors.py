# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sensor pages: what a person does with mouse and keys, and what the guest's sensor service gets.

Each step accounts for every call since the step before: a call too many shows in the step that follows.
"""

from __future__ import annotations

import time
from pathlib import Path

from desktop import Timeout, wait_for
from guest import SENSORS
from sensors import SensorPages
from story import Story, own_build_folder

NAMES = ["accelerometer", "als", "compass", "gyroscope", "magnetometer", "orientation", "proximity", "tap"]
DEFAULTS = {
    "setAccelerometerValues": "int32:0 int32:0 int32:1000",
    "setMagnetometerValues": "double:4.3e-05 double:0 double:0",
    "setMagnetometerCalibrationLevel": "int32:0",
    "setGyroscopeValues": "double:0 double:0 double:1.14592",
    "setAlsValue": "int32:100",
    "setProximitySensorValue": "int32:5",
    "setTapSensorValue": "int32:-1",
}
FAR = "setProximitySensorValue int32:10"


def values(**changed: str) -> list[str]:
    """The calls that restore values, with those that are not the defaults."""
    return [f"{method} {arguments}" for method, arguments in (DEFAULTS | changed).items()]


def for_all_sensors(method: str) -> list[str]:
    return [f"{method} string:{name}" for name in NAMES]


class Sensors(Story):
    stored = {"als": 250, "tap": 2}

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.pages = SensorPages(cls.ide, cls.guest)
        cls.calls = cls.pages.calls

    @classmethod
    def build_folder(cls, directory: Path) -> Path:
        """An IDE of its own, with one more device model: its file names a sensor that the emulator does not have."""
        build = own_build_folder(directory / "build")
        (build / "ide" / "bin" / "velmo-weather-station.ini").write_text(
            "device-name=Velmo Weather Station\n\n[sensors]\nals=true\nthermometer=true\n"
        )
        return build

    # --- helpers --------------------------------------------------------------------------------

    def expect_calls(self, *calls: str) -> None:
        self.assertEqual(self.calls.take(len(calls)), list(calls))

    def expect_state(self, **wanted: object) -> dict[str, object]:
        return wait_for(f"{wanted} in the guest", lambda: self.guest.sensors_when(wanted), 60)

    def expect_sets(self, calls: list[str], once: list[str]) -> None:
        """The same calls, once or several times."""
        self.assertGreaterEqual(len(calls), len(once))
        self.assertEqual(calls, once * (len(calls) // len(once)))

    def open_view(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()

    def change_everything_inside(self) -> None:
        """The machine goes on running while no IDE does; somebody changes what it has."""
        for method in ("setAlsValue", "setTapSensorValue", "setProximitySensorValue", "setMagnetometerCalibrationLevel"):
            self.guest.call_sensors(method, "1")
        self.guest.call_sensors("setAccelerometerX", "55")
        self.guest.call_sensors("setMagnetometerX", "0.00001")
        self.guest.call_sensors("setGyroscopeX", "0.5")
        self.expect_state(als=1, tap=1, proximity=1, magnetometerCalibrationLevel=1, accelerometerX=55,
                          magnetometerX=0.00001, gyroscopeX=0.5)  # fmt: skip

    def expect_the_same(self, state: dict[str, object]) -> None:
        values = {name: value for name, value in state.items() if name != "calls"}
        try:
            wait_for("what was set", lambda: self.guest.sensors_when(values), 60)
        except Timeout:
            self.assertEqual(self.guest.sensors(), values)

    # --- the story ------------------------------------------------------------------------------

    def test_the_view_opens_on_the_sensor_values(self) -> None:
        self.open_view()
        self.expect_calls(
            *for_all_sensors("enabled"), *values(setAlsValue="int32:250", setTapSensorValue="int32:2")
        )
        self.assertTrue(self.pages.find("slider", "Accelerometer X"))
        self.desktop.screenshot(self.pictures / "values.png")

    def test_looking_sends_nothing(self) -> None:
        for name in ("Accelerometer X", "Light Sensor"):
            slider = self.pages.control("slider", name).rectangle
            for offset in range(0, slider.width, 10):
                self.desktop.move(slider.x + offset, slider.y + slider.height // 2)
        for box in ("Light Sensor Light level", "Orientation Sensor Orientation", "Tap Sensor Direction"):
            self.desktop.move(*self.pages.control("combo box", box).rectangle.centre)
            self.desktop.scroll(2)
        self.pages.click("button", "Proximity Sensor Far")
        self.expect_calls(FAR)
        self.expect_state(proximity=10)

    def test_a_dragged_slider_sends_each_step_once(self) -> None:
        self.pages.drag_slider("Accelerometer X", pixels=60, steps=12)
        self.expect_state(accelerometerX=(value := self.pages.shown_thousandths("Accelerometer X")))
        self.assertGreater(value, 0)
        steps = [int(call.removeprefix("setAccelerometerX int32:")) for call in self.calls.take(1)]
        self.assertTrue(3 <= len(steps) <= 12, steps)
        self.assertEqual(steps, sorted(set(steps)))
        self.assertEqual(steps[-1], value)

    def test_a_typed_value_is_sent_on_enter(self) -> None:
        self.pages.type_number("Magnetometer Y", "-12.345")
        self.desktop.press("Return")
        self.expect_calls("setMagnetometerY double:-1.2345e-05")
        self.expect_state(magnetometerY=-1.2345e-05)

    def test_a_valid_field_is_sent_when_it_is_left(self) -> None:
        self.desktop.press("Tab")
        self.expect_calls("setMagnetometerY double:-1.2345e-05")
        self.pages.type_number("Magnetometer Y", "7.5")
        self.desktop.press("Tab")
        self.expect_calls("setMagnetometerY double:7.5e-06")
        self.expect_state(magnetometerY=7.5e-06)

    def test_an_unfinished_number_is_not_sent(self) -> None:
        self.pages.type_number("Magnetometer Y", "-")
        self.desktop.press("Tab")
        wait_for("the number from before", lambda: self.pages.control("text", "Magnetometer Y").text == "7.500", 30)

    def test_arrow_keys_move_a_slider_by_steps(self) -> None:
        self.pages.click("slider", "Light Sensor")
        [clicked] = self.calls.take(1)
        lux = int(clicked.removeprefix("setAlsValue int32:"))
        self.desktop.press("Right", "Right", "Left")
        self.expect_calls(*(f"setAlsValue int32:{lux + step}" for step in (1, 2, 1)))
        self.expect_state(als=lux + 1)

    def test_a_light_level_is_chosen(self) -> None:
        self.pages.choose_entry("Light Sensor Light level", "Bright")
        self.expect_calls("setAlsValue int32:400")
        self.expect_state(als=400)

    def test_near_and_far(self) -> None:
        self.pages.click("button", "Proximity Sensor Near")
        self.expect_calls("setProximitySensorValue int32:0")
        self.expect_state(proximity=0)
        self.pages.click("button", "Proximity Sensor Far")
        self.expect_calls(FAR)
        self.expect_state(proximity=10)

    def test_a_tap_direction_is_chosen(self) -> None:
        self.pages.choose_entry("Tap Sensor Direction", "Z_Pos")
        self.expect_calls("setTapSensorValue int32:6")
        self.expect_state(tap=6)

    def test_an_orientation_is_chosen(self) -> None:
        self.pages.choose_entry("Orientation Sensor Orientation", "LeftUp")
        self.expect_calls("setAccelerometerValues int32:-100 int32:0 int32:0")
        self.expect_state(accelerometerX=-100, accelerometerY=0, accelerometerZ=0)
        self.desktop.screenshot(self.pictures / "changed.png")

    def test_the_rows_follow_the_device_model(self) -> None:
        self.assertTrue(self.pages.find("combo box", "Tap Sensor Direction"))
        self.pages.choose_device_model("Velmo Tablet")
        wait_for("the tap sensor's row to go", lambda: not self.pages.find("combo box", "Tap Sensor Direction"), 60)
        self.assertFalse(self.pages.find("button", "Proximity Sensor Near"))
        self.assertTrue(self.pages.find("slider", "Accelerometer X"))
        self.desktop.screenshot(self.pictures / "tablet.png")
        self.pages.choose_entry("Light Sensor Light level", "Dark")
        # A change is applied once for each time that the SDK has told of the emulator.
        missing = {"proximity", "tap"}
        once = [f"{'disable' if name in missing else 'enable'}Sensor string:{name}" for name in NAMES]
        self.expect_sets(self.calls.take_until("setAlsValue int32:0"), once)
        self.expect_state(enabledSensors=[name for name in NAMES if name not in missing])

        self.pages.choose_device_model("Velmo Phone")
        wait_for("the tap sensor's row", lambda: self.pages.find("combo box", "Tap Sensor Direction"), 60)
        self.pages.choose_entry("Light Sensor Light level", "Bright")
        self.expect_sets(self.calls.take_until("setAlsValue int32:400"), for_all_sensors("enableSensor"))
        self.expect_state(enabledSensors=NAMES)

    def test_switched_off_sensors_are_greyed(self) -> None:
        greyed = [("slider", "Accelerometer X"), ("text", "Accelerometer X"), ("slider", "Compass Azimuth"),
                  ("combo box", "Orientation Sensor Orientation")]  # fmt: skip
        others = [("slider", "Magnetometer X"), ("slider", "Gyroscope X"), ("button", "Proximity Sensor Near"),
                  ("combo box", "Tap Sensor Direction")]  # fmt: skip
        for control in greyed + others:
            self.assertTrue(self.pages.control(*control).enabled, control)

        self.ide.show_page("Sensors Management")
        self.pages.click("check box", "Accelerometer")
        for box in ("Compass", "Orientation Sensor"):
            wait_for(f"{box} to follow", lambda box=box: not self.pages.control("check box", box).checked, 30)
        self.desktop.screenshot(self.pictures / "management.png")
        self.pages.click("button", "Apply")
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
        off = {"accelerometer", "compass", "orientation"}
        self.expect_state(enabledSensors=[name for name in NAMES if name not in off])
        self.ide.show_page("Sensors Values")
        self.desktop.screenshot(self.pictures / "greyed.png")
        for control in greyed:
            self.assertFalse(self.pages.control(*control).enabled, control)
        for control in others:
            self.assertTrue(self.pages.control(*control).enabled, control)
        self.pages.drag_slider("Accelerometer X", pixels=60, steps=3)
        self.pages.click("button", "Proximity Sensor Far")
        self.expect_calls(FAR)

        self.ide.show_page("Sensors Management")
        self.pages.click("check box", "Orientation Sensor")
        self.pages.click("check box", "Compass")
        self.pages.click("button", "Apply")
        self.calls.take(8)
        self.expect_state(enabledSensors=NAMES)

    def test_leaving_with_changes_asks(self) -> None:
        self.pages.click("check box", "Tap Sensor")
        self.ide.click_page_button("Sensors Values")
        box = self.ide.box("Warning")
        self.assertEqual(
            self.ide.box_texts(box), ["The sensor configuration has been changed. Apply or discard changes?"]
        )
        self.desktop.screenshot(self.pictures / "apply-or-discard.png")
        self.ide.answer(box, "Discard")
        wait_for("the values page", lambda: self.pages.find("slider", "Accelerometer X"), 30)
        self.ide.activate_view()
        self.pages.click("button", "Proximity Sensor Far")
        self.expect_calls(FAR)

    def test_each_sensor_has_a_value_of_its_own(self) -> None:
        for field, number, call in (
            ("Accelerometer Y", "0.345", "setAccelerometerY int32:345"),
            ("Magnetometer Y", "-7.5", "setMagnetometerY double:-7.5e-06"),
            ("Magnetometer Calib. level", "2", "setMagnetometerCalibrationLevel int32:2"),
            ("Gyroscope X", "12.5", "setGyroscopeX double:12.5"),
        ):
            self.pages.type_number(field, number)
            self.desktop.press("Return")
            self.calls.take_until(call)  # the field before sends once more when it is left
        self.pages.choose_entry("Light Sensor Light level", "Dark")
        self.calls.take_until("setAlsValue int32:0")
        type(self).set_by_hand = self.expect_state(accelerometerY=345, magnetometerCalibrationLevel=2, gyroscopeX=12.5, als=0)

    def test_power_off_and_on_brings_back_what_was_set(self) -> None:
        self.ide.choose_for_emulator("Shut Down")
        wait_for("the emulator to end", lambda: self.session.qemu_pid() is None, 120)
        wait_for("the window to hide", lambda: self.ide.view() is None, 60)
        self.calls.record_begins_anew()
        # The channel, which goes on trying, may have found the invoker before the check of the packages opens it once
        # more.
        self.open_view()
        once = for_all_sensors("enableSensor") + values(
            setAccelerometerValues="int32:-100 int32:345 int32:0",
            setMagnetometerValues="double:4.3e-05 double:-7.5e-06 double:0",
            setMagnetometerCalibrationLevel="int32:2",
            setGyroscopeValues="double:12.5 double:0 double:1.14592",
            setAlsValue="int32:0",
            setProximitySensorValue="int32:10",
            setTapSensorValue="int32:6",
        )
        wait_for("the values", lambda: self.calls.since_mark()[-len(once) :] == once, 60)
        self.pages.click("button", "Proximity Sensor Near")
        self.expect_sets(self.calls.take_until("setProximitySensorValue int32:0"), once)
        self.pages.click("button", "Proximity Sensor Far")
        self.expect_calls(FAR)
        self.expect_the_same(self.set_by_hand)

    def test_a_killed_ide_has_lost_nothing(self) -> None:
        self.pages.type_number("Gyroscope X", "-4.5")
        self.desktop.press("Return")
        type(self).set_by_hand = self.expect_state(gyroscopeX=-4.5)
        time.sleep(2)  # what was set longer ago than that is promised to be kept
        self.session.end_ide()
        self.change_everything_inside()
        self.start_ide()
        self.open_view()
        self.expect_the_same(self.set_by_hand)

    def test_an_ide_that_never_connects_keeps_what_was_set(self) -> None:
        self.assertEqual(self.ide.quit(), 0)
        self.change_everything_inside()
        self.start_ide()
        self.assertEqual(self.ide.quit(), 0)
        self.start_ide()
        self.open_view()
        self.expect_the_same(self.set_by_hand)
        self.calls.start_here()

    def test_an_error_of_the_service_opens_the_error_box(self) -> None:
        self.pages.choose_device_model("Velmo Weather Station")
        text = wait_for("the error box", self.ide.error_text, 60)
        self.assertEqual(text, f'{SENSORS}.Error.UnknownSensor There is no sensor "thermometer"')
        self.desktop.screenshot(self.pictures / "error.png")
        self.ide.dismiss_error()
        self.pages.choose_device_model("Velmo Phone")
        self.pages.click("button", "Proximity Sensor Far")
        calls = self.calls.take_until(FAR)
        self.assertEqual(calls[:2], ["enableSensor string:als", "enableSensor string:thermometer"])
        self.assertEqual(calls[-8:], for_all_sensors("enableSensor"))

    def test_a_service_that_does_not_answer_opens_the_error_box(self) -> None:
        self.guest.stop_service("sensorfw-emulation-service")
        self.pages.click("button", "Proximity Sensor Near")
        text = wait_for("the error box", self.ide.error_text, 60)
        self.assertTrue(text.startswith("org.freedesktop.DBus.Error.ServiceUnknown "), text)
        self.ide.dismiss_error()
        self.expect_calls("setProximitySensorValue int32:0")
        self.guest.start_service("sensorfw-emulation-service")
        wait_for("the service", self.guest.sensors_answer, 60)

    def test_reset_sends_the_defaults(self) -> None:
        self.pages.click("button", "Reset values")
        by_reset = ["setAccelerometerValues", "setAlsValue", "setGyroscopeValues", "setMagnetometerValues",
                    "setMagnetometerCalibrationLevel", "setProximitySensorValue", "setTapSensorValue"]  # fmt: skip
        self.expect_calls(*(f"{method} {DEFAULTS[method]}" for method in by_reset))
        self.expect_state(als=100, tap=-1, accelerometerZ=1000)

    def test_values_are_there_again_after_the_ide_was_restarted(self) -> None:
        self.pages.choose_entry("Light Sensor Light level", "Bright")
        self.pages.choose_entry("Tap Sensor Direction", "Z_Pos")
        self.pages.choose_entry("Orientation Sensor Orientation", "LeftUp")
        self.expect_calls(
            "setAlsValue int32:400", "setTapSensorValue int32:6", "setAccelerometerValues int32:-100 int32:0 int32:0"
        )
        self.assertEqual(self.ide.quit(), 0)
        self.change_everything_inside()
        self.start_ide()
        self.open_view()
        self.expect_calls(
            *for_all_sensors("enabled"),
            *values(
                setAlsValue="int32:400",
                setTapSensorValue="int32:6",
                setAccelerometerValues="int32:-100 int32:0 int32:0",
            ),
        )
        self.expect_state(als=400, tap=6, accelerometerX=-100)
        self.assertEqual(self.pages.control("text", "Light Sensor").text, "400")
