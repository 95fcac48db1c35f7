# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The calls that one of the guest's services gets from the IDE."""

from __future__ import annotations

from desktop import wait_for
from guest import Guest


class ServiceCalls:
    """The calls to a service, each as method and arguments, from a mark on. One connection keeps their order."""

    def __init__(self, guest: Guest, service: str):
        self._guest = guest
        self._prefix = f"system {service} /{service.replace('.', '/')} {service} "
        self._mark = 0

    def start_here(self) -> None:
        """Passes over all calls so far."""
        self._mark += len(self.since_mark())

    def record_begins_anew(self) -> None:
        """With the emulator, whose record the guest keeps."""
        self._mark = 0

    def since_mark(self) -> list[str]:
        calls = [
            frame.removeprefix(self._prefix).rstrip() for frame in self._guest.frames() if frame.startswith(self._prefix)
        ]
        return calls[self._mark :]

    def take(self, count: int) -> list[str]:
        """All calls since the mark, once there are that many; sets the mark behind them."""
        calls = wait_for(f"{count} calls", lambda: (found := self.since_mark()) and len(found) >= count and found, 60)
        self._mark += len(calls)
        return calls

    def take_until(self, marker: str) -> list[str]:
        """The calls that came before the marker, once that is there; sets the mark behind it."""
        calls = wait_for(f"the call {marker!r}", lambda: marker in (found := self.since_mark()) and found, 60)
        position = calls.index(marker)
        self._mark += position + 1
        return calls[:position]
