# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The camera page: what a person does with mouse and keys, and the pictures that the guest's receiver gets."""

from __future__ import annotations

import time

from camera import FIRST_CAMERA
from camerapage import CameraPage, write_video
from desktop import wait_for
from story import Story

SECOND_CAMERA = "Another Camera"
GREEN = 0xFF00FF00
UNKNOWN_CODEC = "Could not determine the video codec of the video file. Supported codecs: VP8 and VP9."


class Camera(Story):
    with_cameras = True

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.page = CameraPage(cls.ide, cls.guest)
        cls.videos = cls.session.directory / "videos"
        write_video(cls.videos / "clip #1 – зелёный 100%.webm", GREEN, (176, 144))
        (cls.videos / "no video.webm").write_text("This is text.\n")

    # --- helpers --------------------------------------------------------------------------------

    def expect_current_values(self, camera: str, resolution: str, framerate: str) -> None:
        for value in (camera, resolution, framerate):
            self.page.control("label", value)

    def expect_streaming(self, running: bool) -> None:
        wait_for(f"streaming to be {running}", lambda: self.page.is_enabled("Stop") == running, 30)
        self.assertEqual(self.page.is_enabled("Start stream"), not running)

    def expect_camera_picture(self, count: int = 30) -> None:
        """Colour bars and a white line."""
        state = self.page.wait_for_frames(count, width=320, height=240)
        for part in ("meanRed", "meanGreen", "meanBlue"):
            self.assertTrue(60 < state[part] < 160, state)

    def expect_video_picture(self, count: int = 45) -> None:
        """Nothing but green."""
        state = self.page.wait_for_frames(count, width=176, height=144)
        self.assertLess(state["meanRed"], 40, state)
        self.assertGreater(state["meanGreen"], 200, state)
        self.assertLess(state["meanBlue"], 40, state)

    # --- the story ------------------------------------------------------------------------------

    def test_the_camera_is_there(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        self.page.show()
        self.assertTrue(self.page.control("radio button", "Host camera").checked)
        self.expect_current_values(FIRST_CAMERA, "1280x720", "30/1")
        self.assertEqual(self.page.entries("Resolution"), ["1280x720", "640x480", "320x240"])
        self.assertEqual(self.page.entries("Framerate"), ["30/1", "15/1"])
        self.expect_streaming(False)
        self.assertEqual(self.page.frames(), 0)
        self.desktop.screenshot(self.pictures / "page.png")

    def test_settings_are_in_force_when_they_are_set(self) -> None:
        self.page.choose_entry("Camera", FIRST_CAMERA)
        self.page.choose_entry("Resolution", "320x240")
        self.page.choose_entry("Framerate", "15/1")
        self.expect_current_values(FIRST_CAMERA, "1280x720", "30/1")
        self.page.click("button", "Set settings")
        self.expect_current_values(FIRST_CAMERA, "320x240", "15/1")
        self.assertEqual(self.page.frames(), 0)

    def test_the_guest_gets_the_cameras_pictures(self) -> None:
        self.page.start()
        self.expect_streaming(True)
        self.expect_camera_picture()
        self.desktop.screenshot(self.pictures / "camera.png")

    def test_they_come_at_the_rate_that_was_set(self) -> None:
        # A busy machine may be late for a while.
        wait_for("15 pictures a second", lambda: 12 < self.guest.camera()["frameRate"] < 18, 120)

    def test_stop_ends_them(self) -> None:
        self.page.stop()
        self.expect_streaming(False)
        self.page.wait_for_silence()

    def test_a_video_goes_round_and_round(self) -> None:
        self.page.start()
        self.expect_streaming(True)
        self.page.click("radio button", "Video file")
        self.expect_streaming_ends_without_a_file()
        self.page.open_video(self.videos / "clip #1 – зелёный 100%.webm")
        self.expect_streaming(True)
        self.expect_video_picture()
        self.desktop.screenshot(self.pictures / "video.png")

    def expect_streaming_ends_without_a_file(self) -> None:
        wait_for("the stream to end", lambda: not self.page.is_enabled("Stop"), 30)
        self.assertFalse(self.page.is_enabled("Start stream"))

    def test_camera_and_video_take_turns(self) -> None:
        self.page.click("radio button", "Host camera")
        self.expect_camera_picture()
        self.page.click("radio button", "Video file")
        self.expect_video_picture()
        self.expect_streaming(True)

    def test_a_file_without_video_is_refused(self) -> None:
        self.page.open_video(self.videos / "no video.webm")
        self.desktop.expect("", UNKNOWN_CODEC)
        self.desktop.screenshot(self.pictures / "refused.png")
        self.desktop.click(self.desktop.expect("button", "OK"))
        wait_for("the box to go", lambda: not self.desktop.find("", UNKNOWN_CODEC), 30)
        self.expect_streaming(False)
        self.page.wait_for_silence()

    def test_hiding_the_window_ends_the_stream_within_a_second(self) -> None:
        self.page.open_video(self.videos / "clip #1 – зелёный 100%.webm")
        self.expect_video_picture()
        self.ide.close_view()
        time.sleep(1)  # what is allowed
        count = self.page.frames()
        self.assertEqual(self.page.wait_for_silence(), count)

    def test_a_second_camera_is_found(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        self.page.show()
        self.page.click("radio button", "Host camera")
        self.expect_current_values(FIRST_CAMERA, "1280x720", "15/1")
        self.page.choose_entry("Resolution", "320x240")
        self.page.click("button", "Set settings")
        self.page.start()
        self.expect_camera_picture()
        # Programs that ask for any camera, as this page's stream does, still get the first.
        self.session.cameras.plug(SECOND_CAMERA, "640x480", priority=500)
        self.page.click("button", "Update cameras list")
        self.expect_streaming(False)
        self.expect_current_values(SECOND_CAMERA, "640x480", "15/1")
        self.assertEqual(self.page.entries("Camera"), [SECOND_CAMERA, FIRST_CAMERA])
        self.desktop.screenshot(self.pictures / "two-cameras.png")
        self.page.wait_for_silence()

    def test_the_new_list_streams(self) -> None:
        self.page.start()
        self.page.wait_for_frames(15, width=640, height=480)
        self.expect_streaming(True)

    def test_the_stream_ends_with_its_camera(self) -> None:
        self.session.cameras.unplug(SECOND_CAMERA)
        self.expect_streaming(False)
        self.expect_current_values(FIRST_CAMERA, "1280x720", "15/1")
        self.page.wait_for_silence()

    def test_the_ide_quits_while_it_streams(self) -> None:
        self.page.choose_entry("Resolution", "320x240")
        self.page.click("button", "Set settings")
        self.page.start()
        self.expect_camera_picture()
        self.assertEqual(self.ide.quit(), 0)
        self.page.wait_for_silence()
