# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The GPS page: what a person does with mouse and keys, and where the guest's GPS service is meanwhile.

Each step accounts for every call since the step before, but for the jumps that a playing track sends all the time.
"""

from __future__ import annotations

import os
import signal

from calls import ServiceCalls
from desktop import wait_for
from gps import GpsPage
from guest import GPS, SENSORS
from story import Story
from tracks import sentence, write_tracks

SETUP = ["stopTrack", "setTrackLooped boolean:0", "setTrackIntervalMode boolean:0", "setTrackSpeed int32:1"]
STORED = {"gps_latitude": 59.93863, "gps_longitude": 30.31413, "gps_altitude": 12.5}
STORED_POSITION = "setPosition double:59.9386300 double:30.3141300 double:12.50"
WALK_LENGTH = 900
JUMP = "goToPositionOnTrack int32:"


def without_jumps(calls: list[str]) -> list[str]:
    return [call for call in calls if not call.startswith(JUMP)]


class Gps(Story):
    stored = STORED

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.page = GpsPage(cls.ide, cls.guest)
        cls.calls = cls.page.calls
        cls.tracks = cls.session.directory / "tracks"
        write_tracks(cls.tracks)

    # --- helpers --------------------------------------------------------------------------------

    def expect_calls(self, *calls: str) -> None:
        self.assertEqual(self.calls.take(len(calls)), list(calls))

    def expect_state(self, **wanted: object) -> dict[str, object]:
        def state() -> dict[str, object] | None:
            found = self.guest.gps()
            return found if all(found[name] == value for name, value in wanted.items()) else None

        return wait_for(f"{wanted} in the guest", state, 60)

    def expect_buttons(self, *enabled: str) -> None:
        wait_for(
            f"the buttons {enabled}",
            lambda: tuple(name for name in ("Play", "Pause", "Stop") if self.page.is_enabled("button", name)) == enabled,
            30,
        )

    def open_walk(self) -> None:
        """Once more, and passes over the calls: a track that the emulator does not have is uploaded twice."""

        def is_loaded() -> bool:
            names = [call.split()[0] for call in self.calls.since_mark()]
            return names[-2:] == ["stopTrack", "loadTrack"]

        self.calls.start_here()
        self.page.open_track(self.tracks / "walk-gga.nmea")
        wait_for("the track", is_loaded, 60)
        self.calls.start_here()
        self.expect_state(trackLength=WALK_LENGTH, trackIndex=0, trackState="stopped")

    def take_without_jumps(self, count: int) -> list[str]:
        """The calls since the last step, once there are that many that are no jumps; see ServiceCalls.take()."""
        wait_for(f"{count} calls", lambda: len(without_jumps(self.calls.since_mark())) >= count, 60)
        return without_jumps(self.calls.take(count))

    def play_to_a_later_row(self) -> None:
        self.page.click("button", "Play")
        wait_for("the guest to come along", lambda: self.guest.gps()["trackIndex"] >= 2, 60)
        self.assertEqual(self.guest.gps()["trackState"], "playing")

    def position(self) -> tuple[float, float, float]:
        state = self.guest.gps()
        return state["latitude"], state["longitude"], state["altitude"]

    # --- the story ------------------------------------------------------------------------------

    def test_the_stored_position_is_in_the_guest(self) -> None:
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        self.expect_calls(*(SETUP + [STORED_POSITION]) * 2)
        self.assertEqual(self.position(), (59.93863, 30.31413, 12.5))
        self.page.show()
        for text in ("59.9386300", "30.3141300", "12.50"):
            self.page.control("label", text)
        self.desktop.screenshot(self.pictures / "empty.png")

    def test_a_position_is_set_by_hand(self) -> None:
        self.page.type_number("Latitude", "-33.8688")
        self.desktop.press("Return")
        self.expect_calls("setLatitude double:-33.8688000")
        self.page.type_number("Longitude", "151.2093")
        self.page.type_number("Altitude", "58.25")
        self.page.click("button", "Set the position")
        self.expect_calls("setPosition double:-33.8688000 double:151.2093000 double:58.25")
        self.expect_state(latitude=-33.8688, longitude=151.2093, altitude=58.25)

    def test_a_broken_log_is_refused(self) -> None:
        broken = self.session.directory / "broken #1 – плохой.nmea"
        broken.write_text(sentence("GPWPL", "4807.038", "N", "01131.000", "E", "A") + "\n\n$GPWPL,nonsense\n")
        self.page.open_track(broken)
        self.desktop.expect("", "Incorrect NMEA file, line: 2")
        self.desktop.screenshot(self.pictures / "refused.png")
        self.desktop.click(self.desktop.expect("button", "OK"))
        wait_for("the box to go", lambda: not self.desktop.find("", "Incorrect NMEA file, line: 2"), 30)
        self.expect_buttons()
        self.assertEqual(self.calls.since_mark(), [])

    def test_a_log_is_opened(self) -> None:
        self.page.open_track(self.tracks / "walk-gga.nmea")
        load, jump, stop, again = self.calls.take(4)
        self.assertTrue(load.startswith("loadTrack array:array:double:59.9602167,30.3141000,14.00,0;"), load[:80])
        self.assertEqual(load.count(";"), WALK_LENGTH - 1)
        self.assertEqual((jump, stop, again), (JUMP + "0", "stopTrack", load))
        state = self.expect_state(trackLength=WALK_LENGTH, trackIndex=0, trackState="stopped")
        self.assertAlmostEqual(state["latitude"], 59.9602167)
        self.expect_buttons("Play")
        self.page.control("", "00:00:01.0")
        self.desktop.screenshot(self.pictures / "loaded.png")

    def test_it_plays_at_five_times_its_speed(self) -> None:
        self.page.choose_speed("5x")
        self.expect_calls("setTrackSpeed int32:5")
        before = self.position()
        self.page.click("button", "Play")
        self.expect_buttons("Pause", "Stop")
        wait_for("the guest to come along", lambda: self.guest.gps()["trackIndex"] >= 20, 60)
        self.assertEqual(self.guest.gps()["trackState"], "playing")
        self.assertNotEqual(self.position(), before)
        self.desktop.screenshot(self.pictures / "playing.png")
        calls = self.calls.take(1)
        self.assertEqual(without_jumps(calls), ["startTrack"])
        jumps = [int(call.removeprefix(JUMP)) for call in calls if call.startswith(JUMP)]
        self.assertEqual(jumps, sorted(jumps))
        self.assertGreater(len(jumps), len(set(jumps)))  # more than one for each point

    def test_it_pauses(self) -> None:
        self.page.click("button", "Pause")
        self.expect_buttons("Play", "Stop")
        self.expect_state(trackState="paused", trackIndex=int(self.page.progress()))
        self.assertEqual(without_jumps(self.calls.take(2)), ["pauseTrack"])

    def test_the_slider_seeks(self) -> None:
        self.page.drag_progress(WALK_LENGTH, 0.9)
        index = int(self.page.progress())
        self.assertGreater(index, WALK_LENGTH // 2)
        self.expect_state(trackState="paused", trackIndex=index)
        calls = self.calls.take(2)
        self.assertEqual(without_jumps(calls), [])
        self.assertEqual(calls[0::2], calls[1::2])  # the row and the slider, each once

    def test_the_loop_goes_on_at_the_first_point(self) -> None:
        self.page.click("check box", "Loop track")
        self.expect_calls("setTrackLooped boolean:1")
        self.page.drag_progress(WALK_LENGTH, 1.1)
        self.expect_state(trackIndex=WALK_LENGTH - 1)
        self.calls.take(1)
        self.page.click("button", "Play")
        wait_for("the track to begin anew", lambda: 0 < self.guest.gps()["trackIndex"] < 100, 60)
        # At its end a track starts from its beginning.
        self.assertEqual(without_jumps(self.calls.take(3)), ["stopTrack", "startTrack"])

    def test_stopping_on_a_later_row_stops_the_emulator(self) -> None:
        wait_for("a later row", lambda: self.guest.gps()["trackIndex"] >= 2, 60)
        self.page.click("button", "Stop")
        self.expect_buttons("Play")
        self.assertEqual(without_jumps(self.calls.take_until("stopTrack")), [])
        self.assertEqual(self.calls.take(1), [JUMP + "0"])
        self.expect_state(trackState="stopped", trackIndex=0)

    def test_a_refused_file_stops_a_playing_track(self) -> None:
        self.play_to_a_later_row()
        self.page.open_track(self.session.directory / "broken #1 – плохой.nmea")
        self.desktop.expect("", "Incorrect NMEA file, line: 2")
        self.desktop.click(self.desktop.expect("button", "OK"))
        self.expect_buttons()
        self.expect_state(trackState="stopped", trackIndex=0)
        self.assertEqual(self.take_without_jumps(2), ["startTrack", "stopTrack"])

    def test_a_refused_call_stops_a_playing_track(self) -> None:
        self.open_walk()
        self.play_to_a_later_row()
        self.page.click("button", "Pause")
        self.expect_buttons("Play", "Stop")
        self.expect_state(trackState="paused")
        # Somebody inside plays another track, which has no such row.
        self.guest.call(GPS, "loadTrack", "[[1.0, 2.0, 3.0, 0.0], [4.0, 5.0, 6.0, 600000.0]]")
        self.guest.call(GPS, "startTrack")
        self.expect_state(trackState="playing", trackLength=2)
        self.page.click("button", "Play")
        text = wait_for("the error box", self.ide.error_text, 60)
        self.assertIn("The track of 2 points has no point ", text)
        self.ide.dismiss_error()
        self.expect_buttons()
        self.expect_state(trackState="stopped", trackIndex=0)
        self.assertEqual(self.page.control("text", "Track file").text, "")
        calls = self.take_without_jumps(5)
        # Each refusal is heard twice, and no more of them are answered than came at once.
        self.assertEqual(calls[:5], ["startTrack", "pauseTrack", "startTrack", "stopTrack", "stopTrack"])
        self.assertEqual(set(calls[5:]) - {"stopTrack"}, set())

    def test_a_paused_track_stops(self) -> None:
        self.open_walk()
        self.play_to_a_later_row()
        self.page.click("button", "Pause")
        self.expect_buttons("Play", "Stop")
        self.page.click("button", "Stop")
        self.expect_buttons("Play")
        self.expect_state(trackState="stopped", trackIndex=0)
        self.assertEqual(without_jumps(self.calls.take(3)), ["startTrack", "pauseTrack", "stopTrack"])

    def test_a_killed_machine_takes_the_track_along(self) -> None:
        self.page.click("button", "Play")
        wait_for("the guest to play", lambda: self.guest.gps()["trackIndex"] >= 3, 60)
        pid = self.session.qemu_pid()
        assert pid
        os.kill(pid, signal.SIGKILL)
        box = self.ide.box("Emulation management plugin")
        self.assertEqual(
            self.ide.box_texts(box),
            ["Emulator connection is lost. Please, run Velmo Demo if it is needed and load the GPS-track again."],
        )
        self.desktop.screenshot(self.pictures / "lost.png")
        self.ide.answer(box, "OK")
        wait_for("the window to hide", lambda: self.ide.view() is None, 60)

    def test_the_position_is_there_again(self) -> None:
        self.calls.record_begins_anew()
        self.ide.choose("Velmo OS", "Emulation Management…")
        self.ide.wait_for_view()
        setup = [SETUP[0], "setTrackLooped boolean:1", SETUP[2], "setTrackSpeed int32:5"]
        latitude, longitude, altitude = self.position()
        once = [*setup, f"setPosition double:{latitude:.7f} double:{longitude:.7f} double:{altitude:.2f}"]
        # The channel, which goes on trying, may have found the invoker before the check of the packages opens it anew.
        calls = self.calls.take(2 * len(once))
        self.assertEqual(calls, once * (len(calls) // len(once)))
        self.assertAlmostEqual(latitude, 59.96, delta=0.01)  # on the walk
        self.page.show()
        self.expect_buttons()
        self.assertEqual(self.page.control("text", "Track file").text, "")
        self.desktop.screenshot(self.pictures / "cleared.png")

    def test_a_new_invoker_needs_the_track_again(self) -> None:
        self.page.open_track(self.tracks / "sail-gll.nmea")
        self.assertEqual([call.split()[0] for call in self.calls.take(4)][3], "loadTrack")
        self.play_to_a_later_row()
        self.calls.start_here()
        self.guest.restart_invoker()
        box = self.ide.box("Emulation management plugin")
        self.ide.answer(box, "OK")
        wait_for("the setup", lambda: len(without_jumps(self.calls.since_mark())) >= 10, 60)
        self.ide.activate_view()
        self.expect_buttons()  # the page has given the track up
        self.expect_state(trackState="stopped")

    def test_the_sensors_got_none_of_this(self) -> None:
        calls = ServiceCalls(self.guest, SENSORS).since_mark()
        self.assertFalse([call for call in calls if "rack" in call or "Latitude" in call])

    def test_the_ide_quits_cleanly(self) -> None:
        self.assertEqual(self.ide.quit(), 0)
