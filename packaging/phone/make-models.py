#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the meshes and the textures of the device models below. Run it where ImageMagick is, as in "./dev shell"."""

import math
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
CORNER_STEPS = 5
PIXELS_PER_UNIT = 128

LICENCE = """\
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Made by make-models.py
"""


@dataclass(frozen=True)
class Device:
    """A box with round corners and edges. Lengths are in model units, of which a phone is two high; the device stands
    upright around the origin, its screen to the viewer (+z)."""

    name: str
    width: float
    height: float
    depth: float
    radius: float  # of the corners
    bevel: float  # of the edges
    colour: str  # of the body
    screen: tuple[float, float, float, float]  # left, bottom, right, top
    button: tuple[float, float, float] | None = None  # its middle and radius
    lens: tuple[float, float, float] | None = None  # the same, on the back and as seen from there

    def outline(self, inset: float) -> list[tuple[float, float]]:
        """Counter-clockwise, as seen from the front."""
        radius = self.radius - inset
        points = []
        for quarter, (right, up) in enumerate([(1, 1), (-1, 1), (-1, -1), (1, -1)]):
            for step in range(CORNER_STEPS):
                angle = math.pi / 2 * (quarter + step / (CORNER_STEPS - 1))
                points.append(
                    (
                        right * (self.width / 2 - self.radius) + radius * math.cos(angle),
                        up * (self.height / 2 - self.radius) + radius * math.sin(angle),
                    )
                )
        return points

    def mesh(self) -> str:
        """A closed surface: from front to back four rings of vertices. The front is a group of its own, "screen"."""
        face, middle = self.depth / 2, self.depth / 2 - self.bevel
        rings = [(self.bevel, face), (0.0, middle), (0.0, -middle), (self.bevel, -face)]
        count = 4 * CORNER_STEPS
        lines = [f"o {self.name}"]
        for inset, z in rings:
            lines += [f"v {x:.4f} {y:.4f} {z:.4f}" for x, y in self.outline(inset)]

        # The front is the left half of the texture, the back the right one. The edge has the colour of the back's rim.
        face_points = self.outline(self.bevel)
        lines += [f"vt {0.25 + x / self.width / 2:.4f} {0.5 + y / self.height:.4f}" for x, y in face_points]
        lines += [f"vt {0.75 - x / self.width / 2:.4f} {0.5 + y / self.height:.4f}" for x, y in face_points]
        lines.append("vt 0.7500 0.0100")
        edge = 2 * count + 1

        lines += ["s off", "g screen"]
        lines.append("f " + " ".join(f"{i}/{i}" for i in range(1, count + 1)))
        lines.append("g body")
        for ring in range(len(rings) - 1):
            for i in range(count):
                front, front_next = ring * count + i + 1, ring * count + (i + 1) % count + 1
                corners = [front, front + count, front_next + count, front_next]
                lines.append("f " + " ".join(f"{corner}/{edge}" for corner in corners))
        back = range(4 * count, 3 * count, -1)
        lines.append("f " + " ".join(f"{i}/{i - 2 * count}" for i in back))
        return LICENCE + "\n".join(lines) + "\n"

    def drawing(self) -> str:
        """Both faces side by side, in ImageMagick's words."""

        def pixel(x: float, y: float, on_back: bool = False) -> str:
            left = self.width * 1.5 if on_back else self.width / 2
            return f"{(left + x) * PIXELS_PER_UNIT:.1f},{(self.height / 2 - y) * PIXELS_PER_UNIT:.1f}"

        left, bottom, right, top = self.screen
        half_width, half_height = self.width / 2, self.height / 2
        words = [
            f"fill #1b1d20 rectangle {pixel(-half_width, half_height)} {pixel(half_width, -half_height)}",
            f"fill #3d6b8f rectangle {pixel(left, top)} {pixel(right, bottom)}",
        ]
        # A band of light, so that one sees the screen turn.
        corners = [(left, bottom), (left, (bottom + top) / 2), (right, top), (right, (bottom + top) / 2)]
        words.append("fill #5b8bb0 polygon " + " ".join(pixel(x, y) for x, y in corners))
        if self.button:
            x, y, radius = self.button
            words.append(f"fill #4a4d52 circle {pixel(x, y)} {pixel(x + radius, y)}")
        if self.lens:
            x, y, radius = self.lens
            flash = y - 2 * radius
            words.append(f"fill #1b1d20 circle {pixel(x, y, True)} {pixel(x + radius, y, True)}")
            words.append(f"fill #3d6b8f circle {pixel(x, y, True)} {pixel(x + radius / 2, y, True)}")
            words.append(f"fill #f4ecc8 circle {pixel(x, flash, True)} {pixel(x + radius / 3, flash, True)}")
        return " ".join(words)

    def make(self, magick: str) -> None:
        (FOLDER / "meshes" / f"{self.name}.obj").write_text(self.mesh())
        size = f"{2 * self.width * PIXELS_PER_UNIT:.0f}x{self.height * PIXELS_PER_UNIT:.0f}"
        # Few colours, and no time of writing: the same drawing is the same file.
        command = [magick, "-size", size, f"xc:{self.colour}", "-draw", self.drawing(), "-colors", "32", "-strip"]
        command += ["-define", "png:exclude-chunks=date,time", f"PNG8:{FOLDER / 'textures' / self.name}.png"]
        subprocess.run(command, check=True)


DEVICES = [
    Device(
        "default", 1.0, 2.0, 0.16, 0.12, 0.03, "#8a8d91",
        screen=(-0.44, -0.72, 0.44, 0.84), button=(0.0, -0.86, 0.08),
    ),
    Device(
        "velmo-minimal", 0.8, 1.4, 0.24, 0.16, 0.06, "#b5483a",
        screen=(-0.3, 0.0, 0.3, 0.52), button=(0.0, -0.35, 0.18),
    ),
    Device(
        "velmo-phone", 1.0, 2.0, 0.14, 0.18, 0.04, "#34495e",
        screen=(-0.45, -0.9, 0.45, 0.9), lens=(-0.3, 0.78, 0.09),
    ),
    Device(
        "velmo-tablet", 1.8, 2.4, 0.14, 0.14, 0.03, "#c9ccd1",
        screen=(-0.78, -1.06, 0.78, 1.06), lens=(-0.74, 1.05, 0.06),
    ),
]

if __name__ == "__main__":
    program = shutil.which("magick") or shutil.which("convert")
    if not program:
        raise SystemExit("ImageMagick is needed.")
    for device in DEVICES:
        device.make(program)
