#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: tracks.py FOLDER

Writes sample logs for the GPS page, one for each kind of sentence that it reads: a walk around a lake (GGA, with
heights), a drive along a coast that passes midnight (RMC), a boat that sails a figure of eight (GLL) and the way points
of a tour through a town (WPL).
"""

from __future__ import annotations

import math
import sys
from collections.abc import Iterator
from datetime import datetime, timedelta
from pathlib import Path

METRES_PER_DEGREE = 111_320


def sentence(*fields: object) -> str:
    """With its checksum, as receivers write it."""
    body = ",".join(str(field) for field in fields)
    checksum = 0
    for character in body:
        checksum ^= ord(character)
    return f"${body}*{checksum:02X}"


def coordinate(degrees: float, size: int, hemispheres: str) -> tuple[str, str]:
    """Degrees and minutes, such as 5956.3178,N."""
    ten_thousandths = round(abs(degrees) * 60 * 10_000)
    whole, minutes = divmod(ten_thousandths, 60 * 10_000)
    return f"{whole:0{size}}{minutes / 10_000:07.4f}", hemispheres[degrees < 0]


def fields_of(position: tuple[float, float]) -> tuple[str, str, str, str]:
    return *coordinate(position[0], 2, "NS"), *coordinate(position[1], 3, "EW")


def moved(origin: tuple[float, float], east: float, north: float) -> tuple[float, float]:
    """So many metres away."""
    latitude, longitude = origin
    return (
        latitude + north / METRES_PER_DEGREE,
        longitude + east / (METRES_PER_DEGREE * math.cos(math.radians(latitude))),
    )


def times(start: datetime, step: float, count: int) -> Iterator[datetime]:
    for i in range(count):
        yield start + timedelta(seconds=i * step)


def clock(time: datetime) -> str:
    return f"{time:%H%M%S}.{time.microsecond // 10_000:02}"


def walk() -> Iterator[str]:
    """Fifteen minutes around a lake, a point a second; the path has bays and goes up and down."""
    centre, count = (59.9586, 30.3141), 900
    for i, time in enumerate(times(datetime(2026, 6, 13, 7, 30), 1, count)):
        angle = 2 * math.pi * i / count
        radius = 180 + 25 * math.sin(3 * angle) + 8 * math.sin(11 * angle)
        height = 14 + 9 * math.sin(angle) ** 2 + 1.5 * math.sin(5 * angle)
        position = moved(centre, radius * math.sin(angle), radius * math.cos(angle))
        yield sentence("GPGGA", clock(time), *fields_of(position), 1, "08", "0.9", f"{height:.1f}", "M", "17.0", "M", "", "")


def drive() -> Iterator[str]:
    """Half an hour along a winding coast in the south and west, a point every two seconds, from 23:40 on.

    The page takes a point's year from the digits of its day, so a day later is a year later, for which playing would
    wait. Only where the day's digits are those of this year, the next day is in the last century, and no wait at all.
    """
    position, course, count = (-33.0200, -71.5500), 20.0, 900
    start = datetime(datetime.now().year, 6, min(datetime.now().year % 100, 29), 23, 40)
    for i, time in enumerate(times(start, 2, count)):
        speed = 14 + 9 * math.sin(i / 40) - (12 if 440 < i < 470 else 0)  # metres a second; traffic lights at midnight
        speed = max(speed, 0)
        course = (20 + 70 * math.sin(i / 60) + 25 * math.sin(i / 17)) % 360
        position = moved(
            position, 2 * speed * math.sin(math.radians(course)), 2 * speed * math.cos(math.radians(course))
        )
        yield sentence(
            "GPRMC", clock(time), "A", *fields_of(position), f"{speed * 1.943844:.1f}", f"{course:.1f}",
            f"{time:%d%m%y}", "", "",
        )  # fmt: skip


def sail() -> Iterator[str]:
    """Ten minutes on a figure of eight, two points a second."""
    centre, count = (54.4200, 10.2300), 1200
    for i, time in enumerate(times(datetime(2026, 7, 4, 14, 0), 0.5, count)):
        angle = 2 * math.pi * i / count
        position = moved(centre, 600 * math.sin(angle), 280 * math.sin(2 * angle))
        yield sentence("GPGLL", *fields_of(position), clock(time), "A")


def tour() -> Iterator[str]:
    """Sights of a town, on a spiral."""
    for i in range(24):
        angle, radius = i * 0.7, 150 + 45 * i
        position = moved((48.1173, 11.5167), radius * math.sin(angle), radius * math.cos(angle))
        yield sentence("GPWPL", *fields_of(position), f"SIGHT{i + 1:02}")


TRACKS = {"walk-gga.nmea": walk, "drive-rmc.nmea": drive, "sail-gll.nmea": sail, "tour-wpl.nmea": tour}


def write_tracks(folder: Path) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    for name, track in TRACKS.items():
        (folder / name).write_text("".join(line + "\r\n" for line in track()))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    write_tracks(Path(sys.argv[1]))
