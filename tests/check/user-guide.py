#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The user guide has every message of the plugins, so that whoever sees one finds what to do."""

import pathlib
import re
import sys
from xml.etree import ElementTree

PROJECT = pathlib.Path(__file__).resolve().parents[2]

# Whose texts are messages also without a full stop, whose nobody is shown, and sentences that are no messages.
MESSAGE_CONTEXTS = {"EmulationManagement::Internal::NmeaError", "ErrorMessageDialog"}
SILENT_CONTEXTS = {"QSsh::SshRemoteProcessRunner"}
DESCRIPTIONS = ("The URI of the hypervisor,",)


def plain(text: str) -> str:
    """A text as the guide has it: "…" for what is filled in, and nothing for that at the end."""
    return re.sub(r"[:.]?( ?…)+$", "", re.sub(r"\s+", " ", re.sub(r"%[0-9]+", "…", text)).strip())


def is_explained(message: str, guide: str) -> bool:
    """What is filled in may stand there as an example, too."""
    return re.search(r"[^|*]+?".join(map(re.escape, plain(message).split("…"))), guide) is not None


def is_message(context: str, text: str) -> bool:
    if context in SILENT_CONTEXTS or text.startswith(DESCRIPTIONS):
        return False
    return context in MESSAGE_CONTEXTS or (text.count(" ") > 1 and re.search(r"\w[.!?](\s|$)", text) is not None)


def main() -> int:
    guide = re.sub(r"\s+", " ", (PROJECT / "docs/user-guide.md").read_text(encoding="utf-8"))
    count, missing = 0, 0
    for name in ("EmulationManagement_de.ts", "TarnPlugin_de.ts"):
        for context in ElementTree.parse(PROJECT / "translations" / name).getroot().iter("context"):
            for message in context.iter("message"):
                source = message.findtext("source")
                if not is_message(context.findtext("name"), source):
                    continue
                count += 1
                if not is_explained(source, guide):
                    print(f"docs/user-guide.md does not explain: {plain(source)}")
                    missing += 1
    print(f"{count} messages, {missing} of them not explained")
    return 1 if missing or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
