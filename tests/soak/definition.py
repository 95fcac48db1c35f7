# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The emulator's definition: which of the plugin's rules it has, and what it is without them."""

from __future__ import annotations

import xml.etree.ElementTree as ElementTree

VELMO = "{urn:velmo:emulator:1}"
RULES = {  # name: protocol, host's port, guest's port
    "emulationmanagementtcp": ("tcp", "5454", "1234"),
    "emulationmanagementudp": ("udp", "34343", "34343"),
}


def take_rules(xml: str) -> tuple[dict[str, str], str]:
    """Each rule as "none", "complete" or what it is of one; and everything else in a form that can be compared."""
    root = ElementTree.fromstring(xml)
    emulator = root.find(f"metadata/{VELMO}emulator")
    interface = root.find("devices/interface")
    states = {}
    for rule, (protocol, host_port, guest_port) in RULES.items():
        found = []
        for named in emulator.findall(f"{VELMO}portForwarding"):
            if named.attrib == {"name": rule, "protocol": protocol, "hostPort": host_port}:
                found.append("name")
                emulator.remove(named)
        for forward in interface.findall("portForward"):
            for span in forward.findall("range"):
                if forward.get("proto") == protocol and span.attrib in (
                    {"start": host_port, "to": guest_port},
                    {"start": host_port} if host_port == guest_port else None,
                ):
                    found.append("range")
                    forward.remove(span)
            if forward.find("range") is None:
                interface.remove(forward)
        states[rule] = {(): "none", ("name", "range"): "complete"}.get(tuple(found), f"only {found}")
    return states, ElementTree.canonicalize(ElementTree.tostring(root), strip_text=True)
