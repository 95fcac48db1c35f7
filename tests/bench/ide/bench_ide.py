#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the plugin costs an IDE: the real one, with all the plugins that it brings and the SDK's, starts with and without
ours by turns.

usage: bench_ide.py BUILD-DIR
"""
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

AIM_START_MS = 80
AIM_START_PERCENT = 8
AIM_MEMORY_MIB = 45


def start(build, home, with_plugin):
    """Seconds until the IDE is up, and its proportional set size in KiB."""
    command = [build / "ide/bin/qtcreator", "-settingspath", home / "settings",
               "-pluginpath", build / "tests/bench/ide/plugins", "-pluginpath", build / "lib/qtcreator/plugins"]
    if not with_plugin:
        command += ["-noload", "emulationmanagement"]
    environment = dict(os.environ, HOME=str(home), XDG_CONFIG_HOME=str(home / "config"),
                       XDG_CACHE_HOME=str(home / "cache"), XDG_DATA_HOME=str(home / "data"))
    begin = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    memory = None
    for line in process.stdout:
        if line.startswith("ready "):
            seconds = time.monotonic() - begin
            memory = int(line.split()[1])
    if process.wait() != 0 or memory is None:
        sys.exit(f"the IDE ended with {process.returncode} and reported {memory}")
    return seconds, memory


def main():
    build = pathlib.Path(sys.argv[1])
    runs = 15 if "EMULATIONMANAGEMENT_LONG_RUN" in os.environ else 5
    with tempfile.TemporaryDirectory() as directory:
        home = pathlib.Path(directory)
        settings = home / "settings/QtProject/QtCreator.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Tarn]\nConnectionUri=test:///default\n", encoding="utf-8")
        for with_plugin in (False, True):  # caches and settings of a first start
            start(build, home, with_plugin)
        without, with_it = [], []
        for _ in range(runs):
            without.append(start(build, home, False))
            with_it.append(start(build, home, True))

    def median(results, index):
        return statistics.median(result[index] for result in results)

    base_ms = median(without, 0) * 1000
    plugin_ms = median(with_it, 0) * 1000
    more_ms = plugin_ms - base_ms
    more_percent = 100 * more_ms / base_ms
    more_mib = (median(with_it, 1) - median(without, 1)) / 1024
    print(f"ide start without plugin: {base_ms:.0f} ms (median of {runs})")
    print(f"ide start with plugin: {plugin_ms:.0f} ms (median of {runs})")
    print(f"ide start added: {more_ms:.0f} ms (aim at most {AIM_START_MS} ms or {AIM_START_PERCENT} %)")
    print(f"ide start ratio: {plugin_ms / base_ms:.3f} (aim at most {1 + AIM_START_PERCENT / 100} or {AIM_START_MS} ms)")
    print(f"ide memory added: {more_mib:.1f} MiB (aim at most {AIM_MEMORY_MIB} MiB)")
    met = (more_ms <= AIM_START_MS or more_percent <= AIM_START_PERCENT) and more_mib <= AIM_MEMORY_MIB
    print(f"ide aims: {'met' if met else 'missed'}")


if __name__ == "__main__":
    main()
