# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The IDE's settings as they lie on disk: what is the plugin's, and what is others'."""

from __future__ import annotations

from pathlib import Path

OURS = "emulationmanagement"
FOREIGN = "Somebody else %d"
GROUPS, KEYS = 40, 50

# What a step of the robot sets, as a multiple of the step's number: a position is stored at once, sensors within a second
# while the IDE knows an emulator.
SENSORS = {
    f"{sensor}_{axis}": 1.0
    for sensor in ("accelerometer", "gyroscope", "magnetic_field", "magnetometer")
    for axis in "xyz"
} | {"als": 1.0, "proximity_reflectance": 1.0}
POSITION = {"gps_latitude": 0.001, "gps_longitude": 0.001, "gps_altitude": 1.0}


class Damage(Exception):
    pass


def foreign_settings() -> str:
    """So many that writing the file takes its time."""
    values = ["17", "a list, with a comma", '"quoted, with spaces"', "@ByteArray(\\0\\x1\\xff)", "\\x17e\\xfc", ""]
    lines = []
    for group in range(GROUPS):
        lines.append(f"[{FOREIGN % group}]".replace(" ", "%20"))
        lines += [f"key{key}={values[(group + key) % len(values)]}" for key in range(KEYS)]
        lines.append("")
    return "\n".join(lines)


def read(file: Path) -> dict[str, dict[str, str]]:
    """The groups with their keys, as written; raises Damage where a line is none."""
    text = file.read_text(encoding="utf-8")
    if not text.endswith("\n"):
        raise Damage(f"{file} ends within a line")
    groups: dict[str, dict[str, str]] = {}
    group: dict[str, str] | None = None
    for line in text.splitlines():
        if line.startswith("[") and line.endswith("]"):
            if line in groups:
                raise Damage(f"{file} has the group {line} twice")
            group = groups.setdefault(line, {})
        elif line:
            key, separator, value = line.partition("=")
            if group is None or not separator or key in group:
                raise Damage(f"{file} has the line {line!r}")
            group[key] = value
    return groups


def foreign(groups: dict[str, dict[str, str]]) -> dict[str, dict[str, str]]:
    return {name: keys for name, keys in groups.items() if name.startswith("[Somebody%20else")}


def step(groups: dict[str, dict[str, str]], factors: dict[str, float]) -> int:
    """The step that all these values are of; raises Damage when there is no such step."""
    ours = groups.get(f"[{OURS}]", {})
    try:
        numbers = {round(float(ours[key]) / factor, 6) for key, factor in factors.items()}
    except (KeyError, ValueError):
        raise Damage(f"a value is missing: {ours}") from None
    if len(numbers) != 1 or not (number := numbers.pop()).is_integer():
        raise Damage(f"the values are of no one step: {ours}")
    return int(number)
