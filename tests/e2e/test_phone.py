# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The phone's page: how a person turns and moves the phone with mouse and keys, and what the guest's sensors read.

The page tells the gyroscope ten times a second, mostly that nothing turns: what is accounted for are the steps at which
something does.
"""

from __future__ import annotations

from desktop import wait_for
from phone import PhonePage, Vector, on_phone, turn
from sensors import SensorPages
from story import Story

GRAVITY = (0, 1000, 0)  # thousandths of g, on an upright phone
FIELD = (0, 5.95e-6, -48.76e-6)  # the emulated one, where nobody has changed it
NEAR, FAR = "setProximitySensorValue int32:0", "setProximitySensorValue int32:10"
# The accelerometer reads whole numbers; of the field the channel carries six digits.
TOLERANCE = {"accelerometer": 1, "gyroscope": 0, "magnetometer": 1e-10}
QUESTION = "The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?"


def close(first: Vector, second: Vector, tolerance: float) -> bool:
    return all(abs(a - b) <= tolerance for a, b in zip(first, second, strict=True))


class Phone(Story):
    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.page = PhonePage(cls.ide, cls.guest)
        cls.pages = SensorPages(cls.ide, cls.guest)
        cls.calls = cls.page.calls

    # --- helpers --------------------------------------------------------------------------------

    def expect_readings(self, **wanted: Vector) -> None:
        def read() -> bool:
            found = self.page.readings()
            return all(close(found[sensor], reading, TOLERANCE[sensor]) for sensor, reading in wanted.items())

        wait_for(f"{wanted} in the guest", read, 60)

    def expect_pose(self, x: float = 0, y: float = 0, z: float = 0) -> None:
        """On the page, and in the guest, where the phone rests in it."""
        rotation = (x, y, z)
        wait_for(f"the rotation {rotation}", lambda: self.page.rotation() == rotation, 30)
        self.expect_readings(
            accelerometer=on_phone(rotation, GRAVITY), magnetometer=on_phone(rotation, FIELD), gyroscope=(0, 0, 0)
        )

    def rest(self) -> Vector | None:
        """The rotation on the page, None while it changes."""
        rotation = self.page.rotation()
        return rotation if self.page.reading("gyroscope") == (0, 0, 0) and self.page.rotation() == rotation else None

    def expect_turn(self, x: float = 0, y: float = 0, z: float = 0) -> None:
        """The rates since the mark add up to it. Sets the mark behind them."""
        wait_for(f"a turn by {(x, y, z)} in the guest", lambda: turn(self.page.rates()) == (x, y, z), 60)
        self.calls.start_here()

    def expect_move(self, axis: int) -> None:
        """A start along one of the axes of an upright phone, a stop, and rest again."""
        accelerations = wait_for("a move of the phone in the guest", self.page.move, 60)
        self.assertEqual(accelerations[-1], GRAVITY)
        linear = [reading[axis] - GRAVITY[axis] for reading in accelerations]
        self.assertGreater(max(linear), 0)
        self.assertLess(min(linear), 0)
        for other in {0, 1, 2} - {axis}:
            self.assertEqual({reading[other] for reading in accelerations}, {GRAVITY[other]})

    def open_view(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()

    # --- the story ------------------------------------------------------------------------------

    def test_the_phone_stands_upright(self) -> None:
        self.open_view()
        self.pages.click("button", "Proximity Sensor Near")
        setup = self.calls.take_until(NEAR)
        self.assertIn("setAccelerometerValues int32:0 int32:0 int32:1000", setup)
        self.page.show()
        self.page.wait_for_mode("Rotation")
        self.expect_pose()
        opening, steps = (shown := self.calls.take(4))[:3], shown[3:]
        self.assertEqual(
            [call.split()[0] for call in opening],
            ["setAccelerometerValues", "setGyroscopeValues", "setMagnetometerValues"],
        )
        self.assertEqual(set(steps), {"setGyroscopeValues double:0 double:0 double:0"})
        self.page.control("label", "Accelerometer (m/s²): 0.000 9.807 0.000")
        self.page.control("label", "Magnetometer (μT): 0.000 5.950 -48.760")
        self.desktop.screenshot(self.pictures / "upright.png")

    def test_presets_turn_it_at_once(self) -> None:
        for name, pose, turned in (
            ("Left side up", {"z": -90}, {"z": -90}),
            ("Top down", {"z": 180}, {"z": 270}),
            ("Right side up", {"z": 90}, {"z": -90}),
            ("Top up", {}, {"z": -90}),
            ("Face up", {"x": -90}, {"x": -90}),
            ("Face down", {"x": 90}, {"x": 180}),
            ("Top up", {}, {"x": -90}),
        ):
            self.page.click("button", name)
            self.expect_pose(**pose)
            self.expect_turn(**turned)

    def test_arrow_keys_turn_it_by_degrees(self) -> None:
        self.desktop.press("Right", "Right", "Right", "Left")
        self.expect_pose(z=2)
        self.expect_turn(z=2)
        self.desktop.press("Left", "Left")
        self.expect_pose()
        self.expect_turn(z=-2)
        self.desktop.press("Up", "Up", "Down", "Up")
        self.expect_pose(x=2)
        self.expect_turn(x=2)

    def test_with_shift_about_the_long_axis(self) -> None:
        self.desktop.press("shift+Right", "shift+Right", "shift+Left", "shift+Right", "shift+Right")
        self.expect_pose(x=2, y=3)
        self.expect_turn(y=3)

    def test_a_held_key_goes_on_turning(self) -> None:
        with self.desktop.holding("Right"):
            rate = wait_for("a turning phone in the guest", lambda: self.page.reading("gyroscope")[2], 60)
            self.assertGreater(rate, 0)
            self.desktop.screenshot(self.pictures / "turning.png")
        x, y, z = wait_for("the phone to rest", self.rest, 60)
        if z == 180:  # or past it, where the next key goes on at the other end
            self.desktop.press("Right", "Right")
            x, y, z = wait_for("the phone to go on", lambda: (pose := self.rest()) and pose[2] < 0 and pose, 60)
        self.assertEqual((x, y), (2, 3))
        self.assertNotEqual(z, 0)
        self.expect_pose(x, y, z)
        self.calls.start_here()

    def test_an_angle_is_typed(self) -> None:
        self.page.click("button", "Top up")
        wait_for("the turn in the guest", self.page.rates, 60)
        self.expect_pose()
        self.calls.start_here()
        self.page.type_angle("Y", "-33.5")
        self.expect_pose(y=-33.5)
        self.expect_turn(y=-33.5)
        self.page.type_angle("Y", "0")
        self.expect_turn(y=33.5)

    def test_the_keys_come_back_from_a_field(self) -> None:
        self.page.click("button", "Left side up")
        self.expect_turn(z=-90)
        self.desktop.press("Right")
        self.expect_pose(z=-89)
        self.page.click("button", "Top up")
        self.expect_turn(z=90)

    def test_with_ctrl_it_moves(self) -> None:
        with self.desktop.holding("ctrl"):
            self.page.wait_for_mode("Move")
            self.desktop.press("Right", "Right", "Right", "Right", "Right")
            wait_for("the position", lambda: self.page.control("text", "X").text == "0.050", 30)
            self.expect_move(axis=0)
            self.desktop.screenshot(self.pictures / "moving.png")
        self.page.wait_for_mode("Rotation")
        self.assertFalse([call for call in self.calls.since_mark() if call.startswith("setMagnetometer")])
        self.expect_pose()
        self.calls.start_here()

    def test_a_dragged_slider_moves_it(self) -> None:
        self.page.click("radio button", "Move")
        self.calls.start_here()
        self.pages.drag_slider("Y", pixels=60, steps=6)
        self.expect_move(axis=1)
        self.page.click("radio button", "Rotation")
        self.page.wait_for_mode("Rotation")
        self.expect_pose()

    def test_nothing_is_sent_once_the_page_is_left(self) -> None:
        self.ide.show_page("GPS Management")
        self.ide.show_page("Sensors Values")
        self.pages.click("button", "Proximity Sensor Far")
        self.calls.take_until(FAR)
        self.ide.show_page("GPS Management")
        self.ide.show_page("Camera Management")
        self.ide.show_page("Sensors Values")
        self.pages.click("button", "Proximity Sensor Near")
        self.assertEqual(self.calls.take(1), [NEAR])

    def test_unchanged_values_may_be_left(self) -> None:
        self.page.show()
        self.expect_pose()
        self.ide.show_page("Sensors Values")

    def test_changed_values_are_kept_on_cancel(self) -> None:
        self.pages.choose_entry("Orientation Sensor Orientation", "LeftUp")
        self.expect_readings(accelerometer=(-100, 0, 0))
        self.ide.click_page_button("Orientation Management")
        box = self.ide.box("Warning")
        self.assertEqual(self.ide.box_texts(box), [QUESTION])
        self.desktop.screenshot(self.pictures / "question.png")
        self.ide.answer(box, "Cancel")
        wait_for("the box to go", lambda: not self.desktop.find("", QUESTION), 30)
        self.ide.activate_view()
        self.pages.click("button", "Proximity Sensor Far")
        self.calls.take_until(FAR)
        self.assertFalse(self.page.is_shown())
        self.assertEqual(self.page.reading("accelerometer"), (-100, 0, 0))

    def test_changed_values_are_reset_on_ok(self) -> None:
        self.ide.click_page_button("Orientation Management")
        self.ide.answer(self.ide.box("Warning"), "OK")
        self.page.wait_for_mode("Rotation")
        self.expect_pose()

    def test_the_question_can_be_switched_off(self) -> None:
        self.ide.show_page("Sensors Values")
        self.pages.choose_entry("Orientation Sensor Orientation", "RightUp")
        self.expect_readings(accelerometer=(100, 0, 0))
        self.ide.click_page_button("Orientation Management")
        box = self.ide.box("Warning")
        self.desktop.click(self.desktop.expect("check box", "Do not show again", within=box))
        self.desktop.screenshot(self.pictures / "not-again.png")
        self.ide.answer(box, "OK")
        self.page.wait_for_mode("Rotation")
        self.expect_pose()
        self.page.click("button", "Face up")
        self.expect_pose(x=-90)
        self.assertEqual(self.ide.quit(), 0)

    def test_nor_does_the_restarted_ide_ask(self) -> None:
        self.start_ide()
        self.open_view()
        self.pages.choose_entry("Orientation Sensor Orientation", "LeftUp")
        self.expect_readings(accelerometer=(-100, 0, 0))
        self.page.show()
        self.expect_pose()  # a pose is not kept
        self.assertFalse(self.desktop.find("", QUESTION))
        self.desktop.screenshot(self.pictures / "not-asked.png")

    def test_the_ide_quits_while_it_tells_the_guest(self) -> None:
        self.assertEqual(self.ide.quit(), 0)
