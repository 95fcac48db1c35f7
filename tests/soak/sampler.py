# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a process uses, over time."""

from __future__ import annotations

import csv
import threading
import time
from dataclasses import dataclass, fields
from pathlib import Path


@dataclass(frozen=True)
class Usage:
    seconds: float  # since the start of the record
    phase: str
    pss: int  # KiB
    private_dirty: int  # KiB
    threads: int
    descriptors: int
    cpu: float  # seconds of CPU time so far


def cpu_time(pid: int) -> float:
    """Seconds that the process has run, with all its threads, also those that have ended."""
    return time.clock_gettime((~pid << 3) | 2)  # what clock_getcpuclockid() makes of it


class Sampler:
    """Writes a line every few seconds while it is entered, beside those that are asked for."""

    def __init__(self, pid: int, file: Path, interval: float = 3):
        self.samples: list[Usage] = []
        self.phase = "start"
        self._pid = pid
        self._folder = Path(f"/proc/{pid}")
        self._interval = interval
        self._begin = time.monotonic()
        self._end = threading.Event()
        self._lock = threading.Lock()
        self._file = file
        self._thread = threading.Thread(target=self._run, daemon=True)

    def __enter__(self) -> Sampler:
        self._stream = self._file.open("w", newline="")
        self._writer = csv.writer(self._stream)
        self._writer.writerow(field.name for field in fields(Usage))
        self._thread.start()
        return self

    def __exit__(self, *_: object) -> None:
        self._end.set()
        self._thread.join()
        self._stream.close()

    def sample(self) -> Usage:
        with self._lock:
            rollup = dict(
                line.split(":") for line in (self._folder / "smaps_rollup").read_text().splitlines() if ":" in line[:20]
            )
            usage = Usage(
                round(time.monotonic() - self._begin, 2),
                self.phase,
                int(rollup["Pss"].split()[0]),
                int(rollup["Private_Dirty"].split()[0]),
                len(list((self._folder / "task").iterdir())),
                len(list((self._folder / "fd").iterdir())),
                round(cpu_time(self._pid), 5),
            )
            self._writer.writerow(getattr(usage, field.name) for field in fields(Usage))
            self._stream.flush()
            self.samples.append(usage)
            return usage

    def names(self) -> dict[str, int]:
        """How many threads of each name there are."""
        names: dict[str, int] = {}
        for task in (self._folder / "task").iterdir():
            name = (task / "comm").read_text().strip()
            names[name] = names.get(name, 0) + 1
        return names

    def _run(self) -> None:
        while not self._end.wait(self._interval):
            try:
                self.sample()
            except OSError:
                return  # it has ended


def slope(points: list[tuple[float, float]]) -> float:
    """Of the line that fits them best; of a few outliers, Theil and Sen's median of all slopes takes no notice."""
    slopes = sorted(
        (b[1] - a[1]) / (b[0] - a[0]) for i, a in enumerate(points) for b in points[i + 1 :] if b[0] > a[0]
    )
    return slopes[len(slopes) // 2] if slopes else 0
