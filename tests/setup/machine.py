# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A Debian machine to install on: a copy of this one's system folders, in which we are root."""

from __future__ import annotations

import fcntl
import os
import shutil
import subprocess
import tempfile
from pathlib import Path

CACHE = Path(os.environ.get("EMULATIONMANAGEMENT_CACHE") or Path.home() / ".cache" / "emulationmanagement")
PREFIX = "install-machine-"
# Packages keep a few notes in /var/lib; a developer's machine has much more there.
NOT_OF_PACKAGES = {"containers", "docker", "flatpak", "libvirt", "lxc", "lxd", "machines", "mysql", "postgresql", "snapd"}


class Machine:
    """Shares the network, the processes and the folders for temporary files with this machine."""

    def __init__(self) -> None:
        remove_left_machines()
        # Whoever holds the lock uses the machine.
        self.root = Path(tempfile.mkdtemp(prefix=PREFIX, dir=CACHE))
        self._lock = os.open(self.root, os.O_RDONLY)
        fcntl.flock(self._lock, fcntl.LOCK_EX)
        (self.root / "root").mkdir()
        copy("/usr", self.root)
        copy("/etc", self.root)
        for folder in ("var/cache/apt/archives/partial", "var/lib", "var/log/apt", "var/tmp"):
            (self.root / folder).mkdir(parents=True, exist_ok=True)
        for folder in Path("/var/lib").iterdir():
            if folder.name not in NOT_OF_PACKAGES:
                copy(str(folder), self.root / "var/lib")
        if Path("/var/cache/debconf").is_dir():
            copy("/var/cache/debconf", self.root / "var/cache")
        (self.root / "var/run").symlink_to("/run")
        for link in ("bin", "lib", "lib64", "sbin"):
            if Path(f"/{link}").is_symlink():
                (self.root / link).symlink_to(Path(f"/{link}").readlink())
        # This machine may do without documentation.
        for file in (self.root / "etc/dpkg/dpkg.cfg.d").glob("*"):
            lines = file.read_text().splitlines(keepends=True)
            file.write_text("".join(line for line in lines if not line.startswith("path-exclude")))
        # One user id is all there is, so apt cannot change to a user of its own.
        (self.root / "etc/apt/apt.conf.d/90one-user").write_text('APT::Sandbox::User "root";\n')

    def remove(self) -> None:
        shutil.rmtree(self.root, ignore_errors=True)
        os.close(self._lock)

    def as_root(self, *command: str | Path) -> str:
        done = subprocess.run(
            [*self._enter(0), "--tmpfs", "/run", "--setenv", "HOME", "/root", "--setenv", "DEBIAN_FRONTEND",
             "noninteractive", "--chdir", "/root", "--", *command],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
        )  # fmt: skip
        if done.returncode:
            raise RuntimeError(f"{' '.join(map(str, command))}: exit code {done.returncode}: {done.stdout[-3000:]}")
        return done.stdout

    def as_user(self, *command: str | Path) -> list[str]:
        """The command that runs another one as an ordinary user, who sees this machine's folders of the cache."""
        options: list[str | Path] = ["--bind", CACHE, CACHE]
        runtime = os.environ.get("XDG_RUNTIME_DIR")
        if runtime:
            options += ["--bind", runtime, runtime]
        return [str(part) for part in [*self._enter(1000), *options, "--", *command]]

    def _enter(self, user: int) -> list[str | Path]:
        return [
            "bwrap", "--unshare-user", "--uid", str(user), "--gid", str(user), "--bind", self.root, "/",
            "--dev-bind", "/dev", "/dev", "--bind", "/proc", "/proc", "--ro-bind", "/sys", "/sys", "--bind", "/tmp", "/tmp",
        ]  # fmt: skip

    # --- packages -------------------------------------------------------------------------------

    def install(self, package: Path) -> None:
        """What the package needs has to be here already: nothing is downloaded."""
        shutil.copy(package, self.root / "root")
        self.as_root("dpkg", "--install", f"/root/{package.name}")

    def keep_only(self, *packages: str, recommended: bool) -> None:
        """These packages and what they depend on are all that stays."""
        manual = self.as_root("apt-mark", "showmanual").split()
        self.as_root("apt-mark", "auto", *manual)
        self.as_root("apt-mark", "manual", "apt", *packages)
        self.as_root(
            "apt-get", "-y", "-o", "Dpkg::Options::=--force-unsafe-io",
            "-o", f"APT::AutoRemove::RecommendsImportant={str(recommended).lower()}", "autoremove",
        )  # fmt: skip

    def has(self, file: str) -> bool:
        return os.path.lexists(f"{self.root}/{file.lstrip('/')}")


def copy(source: str, into: Path) -> None:
    """Some files are for root's eyes only; the machine does without them."""
    done = subprocess.run(["cp", "-a", source, into], capture_output=True, text=True, env=os.environ | {"LC_ALL": "C"})
    troubles = [line for line in done.stderr.splitlines() if "Permission denied" not in line]
    if troubles:
        raise RuntimeError(f"{source} cannot be copied: {troubles[0]}")


def remove_left_machines() -> None:
    """Those of runs that were killed."""
    for folder in CACHE.glob(f"{PREFIX}*"):
        lock = os.open(folder, os.O_RDONLY)
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            shutil.rmtree(folder, ignore_errors=True)
        except BlockingIOError:
            pass
        finally:
            os.close(lock)
