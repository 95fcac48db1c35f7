# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The phone's page as a person uses it, and what a phone in its pose feels."""

from __future__ import annotations

import math
from collections.abc import Iterable

from desktop import wait_for
from guest import SENSORS, Guest
from ide import Ide
from page import Page

SENSORS_OF_PHONE = ("accelerometer", "gyroscope", "magnetometer")
SECONDS_PER_STEP = 0.1  # of the gyroscope

Vector = tuple[float, float, float]


class PhonePage(Page):
    def __init__(self, ide: Ide, guest: Guest):
        super().__init__(ide, guest, SENSORS)

    def show(self) -> None:
        self.ide.show_page("Orientation Management")

    def is_shown(self) -> bool:
        return self.find("radio button", "Rotation") is not None

    def wait_for_mode(self, mode: str) -> None:
        wait_for(f"the mode {mode!r}", lambda: self.control("radio button", mode).checked, 30)

    def rotation(self) -> Vector:
        """The angles that the page shows, in degrees; only in rotation mode."""
        x, y, z = (float(self.control("text", f"{axis}-Rot").text) for axis in "XYZ")
        return x, y, z

    def type_angle(self, axis: str, angle: str) -> None:
        self.type_number(f"{axis}-Rot", angle)
        self.desktop.press("Return")

    def readings(self) -> dict[str, Vector]:
        """What the phone's sensors read in the guest at one moment."""
        state = self.guest.sensors()
        return {sensor: (state[f"{sensor}X"], state[f"{sensor}Y"], state[f"{sensor}Z"]) for sensor in SENSORS_OF_PHONE}

    def reading(self, sensor: str) -> Vector:
        return self.readings()[sensor]

    def rates(self) -> list[Vector]:
        """What the gyroscope was set to since the mark, in degrees per second; without the steps at rest."""
        return [rate for rate in sent(self.calls.since_mark(), "setGyroscopeValues") if any(rate)]

    def move(self) -> list[Vector]:
        """What the accelerometer was set to since the mark, in thousandths of g, once a move has begun and ended."""
        found = sent(self.calls.since_mark(), "setAccelerometerValues")
        return found if len(set(found)) > 1 and found[0] == found[-1] else []


def sent(calls: Iterable[str], method: str) -> list[Vector]:
    """The three numbers of each call of that method."""
    found = []
    for name, *arguments in map(str.split, calls):
        if name == method:
            x, y, z = (float(argument.partition(":")[2]) for argument in arguments)
            found.append((x, y, z))
    return found


def turn(rates: Iterable[Vector]) -> Vector:
    """How far the phone has turned about its own axes, in degrees; of turns about one axis at a time."""
    x, y, z = (round(sum(rate[axis] for rate in rates) * SECONDS_PER_STEP, 3) for axis in range(3))
    return x, y, z


def on_phone(rotation: Vector, vector: Vector) -> Vector:
    """A vector of the room on the axes of a phone that was turned about x, then about y and z of its own.

    Each turn of the phone turns the room the other way round for it.
    """
    x, y, z = vector
    about_x, about_y, about_z = rotation
    y, z = turned_back(y, z, about_x)
    z, x = turned_back(z, x, about_y)
    x, y = turned_back(x, y, about_z)
    return x, y, z


def turned_back(first: float, second: float, degrees: float) -> tuple[float, float]:
    """Two parts of a vector after a turn from the second to the first."""
    sine, cosine = math.sin(math.radians(degrees)), math.cos(math.radians(degrees))
    return first * cosine + second * sine, second * cosine - first * sine
