#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: domain.py TYPE NAME IMAGE OVERLAY SSH_PORT DEVICE_MODEL: see make-domain.sh"""

import os
import sys
import xml.etree.ElementTree as ElementTree

VELMO = "urn:velmo:emulator:1"


def child(parent, tag, text=None, /, **attributes):
    element = ElementTree.SubElement(parent, tag, attributes)
    element.text = text
    return element


def make_domain(kind, name, image, overlay, ssh_port, device_model):
    ElementTree.register_namespace("velmo", VELMO)
    image = os.path.abspath(image)
    overlay = os.path.abspath(overlay)

    domain = ElementTree.Element("domain", type=kind)
    child(domain, "name", name)

    metadata = child(child(domain, "metadata"), f"{{{VELMO}}}emulator")
    child(metadata, f"{{{VELMO}}}deviceModel", name=device_model)
    child(metadata, f"{{{VELMO}}}ssh", user="root", privateKey=os.path.join(image, "id_ed25519"))

    child(domain, "memory", "768", unit="MiB")
    child(domain, "vcpu", "2")
    system = child(domain, "os")
    child(system, "type", "hvm", arch="x86_64", machine="q35")
    child(system, "kernel", os.path.join(image, "vmlinuz"))
    child(system, "initrd", os.path.join(image, "initrd"))
    child(system, "cmdline", "console=ttyS0 quiet mitigations=off random.trust_cpu=on panic=10")
    child(child(domain, "features"), "acpi")
    child(domain, "cpu", mode="host-passthrough" if kind == "kvm" else "maximum")
    child(domain, "on_poweroff", "destroy")
    child(domain, "on_reboot", "restart")
    child(domain, "on_crash", "destroy")

    devices = child(domain, "devices")
    child(devices, "emulator", "/usr/bin/qemu-system-x86_64")
    disk = child(devices, "disk", type="file", device="disk")
    child(disk, "driver", name="qemu", type="qcow2", discard="unmap")
    child(disk, "source", file=overlay)
    child(disk, "target", dev="vda", bus="virtio")
    interface = child(devices, "interface", type="user")
    child(interface, "backend", type="passt")
    child(interface, "model", type="virtio")
    forward = child(interface, "portForward", proto="tcp", address="127.0.0.1")
    child(forward, "range", start=ssh_port, to="22")
    serial = child(devices, "serial", type="file")
    child(serial, "source", path=os.path.splitext(overlay)[0] + ".console.log")
    rng = child(devices, "rng", model="virtio")
    child(rng, "backend", "/dev/urandom", model="random")
    child(devices, "controller", type="usb", model="none")
    child(devices, "memballoon", model="none")

    ElementTree.indent(domain)
    return ElementTree.tostring(domain, encoding="unicode")


if __name__ == "__main__":
    print(make_domain(*sys.argv[1:]))
