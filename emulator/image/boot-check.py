#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: boot-check.py IMAGE

Boots the emulator's image as the IDE would, by libvirt, and uses it from outside: packages over SSH, calls over the
WebSocket, the camera's stream, the power button. Prints how long things took; exit code 0 when all was well.
"""

import base64
import os
import socket
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as ElementTree

HERE = os.path.dirname(os.path.abspath(__file__))
SSH_PORT = 2222
TCP_PORT = 5454
UDP_PORT = 34343
PACKAGES = ["sensorfw-qt5-emulator-plugins", "remote-dbus-invoker", "geoclue-emulator", "gstreamer-emulator"]
SENSORS = "ru.kelo.SensorfwEmulationManagement"
CAMERA = "ru.kelo.CameraEmulation"
POSITION = "ru.kelo.GeoclueEmulationManagement"
BOOT_LIMIT = 60  # seconds, without KVM
IMAGE_LIMIT = 500  # MiB
# Methods and properties that must be described, and to which types they go.
METHODS = {
    SENSORS: {
        "enableSensor": "s", "disableSensor": "s", "enabled": "s", "setAccelerometerValues": "iii",
        "setAccelerometerX": "i", "setAccelerometerY": "i", "setAccelerometerZ": "i", "setAlsValue": "i",
        "setGyroscopeValues": "ddd", "setGyroscopeX": "d", "setGyroscopeY": "d", "setGyroscopeZ": "d",
        "setMagnetometerValues": "ddd", "setMagnetometerX": "d", "setMagnetometerY": "d", "setMagnetometerZ": "d",
        "setMagnetometerCalibrationLevel": "i", "setProximitySensorValue": "i", "setTapSensorValue": "i",
    },
    POSITION: {
        "setPosition": "ddd", "setLatitude": "d", "setLongitude": "d", "setAltitude": "d", "loadTrack": "aad",
        "startTrack": "", "pauseTrack": "", "stopTrack": "", "setTrackLooped": "b", "setTrackIntervalMode": "b",
        "setTrackSpeed": "i", "goToPositionOnTrack": "i",
    },
    CAMERA: {"lastPicture": ""},
}  # fmt: skip
PROPERTIES = {
    SENSORS: {"als", "calls"},
    POSITION: {"latitude", "calls"},
    CAMERA: {"streaming", "framesReceived", "frameRate"},
}


class CheckFailed(Exception):
    pass


passed = 0


def passes(text):
    """Says it as Qt Test does, for those who count."""
    global passed
    passed += 1
    print(f"PASS   : boot-check::{text}()", flush=True)


def check(condition, text):
    if not condition:
        raise CheckFailed(text)
    passes(text)


def wait_for(condition, text, limit=60):
    """Waits until condition() is true; its own errors count as false."""
    end = time.monotonic() + limit
    while True:
        try:
            if condition():
                passes(text)
                return
        except (OSError, subprocess.SubprocessError):
            pass
        if time.monotonic() > end:
            raise CheckFailed(f"{text}: not within {limit} s")
        time.sleep(0.1)


class WebSocket:
    """As much of a client as sends and receives short text frames."""

    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), timeout=10)
        key = base64.b64encode(os.urandom(16)).decode()
        self.socket.sendall(
            f"GET / HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
            f"Sec-WebSocket-Key: {key}\r\nSec-WebSocket-Version: 13\r\n\r\n".encode()
        )
        self.buffer = b""
        while b"\r\n\r\n" not in self.buffer:
            self.receive()
        head, self.buffer = self.buffer.split(b"\r\n\r\n", 1)
        if not head.startswith(b"HTTP/1.1 101"):
            raise OSError(f"no WebSocket: {head[:100]!r}")

    def receive(self):
        data = self.socket.recv(65536)
        if not data:
            raise OSError("the connection has ended")
        self.buffer += data

    def take(self, size):
        while len(self.buffer) < size:
            self.receive()
        data, self.buffer = self.buffer[:size], self.buffer[size:]
        return data

    def ask(self, text):
        data = text.encode()
        mask = os.urandom(4)
        size = bytes([0x80 | len(data)]) if len(data) < 126 else bytes([0x80 | 126]) + len(data).to_bytes(2, "big")
        self.socket.sendall(b"\x81" + size + mask + bytes(byte ^ mask[i % 4] for i, byte in enumerate(data)))
        first, length = self.take(2)
        if first != 0x81:
            raise OSError(f"no text frame: {first:#x}")
        if length == 126:
            length = int.from_bytes(self.take(2), "big")
        return self.take(length).decode()


class Machine:
    """The emulator on a libvirt of its own, which lives in one virsh."""

    def __init__(self, image, directory):
        self.image = image
        self.directory = directory
        self.virsh = None

    def start(self):
        """Returns when the power was switched on."""
        overlay = os.path.join(self.directory, "check.qcow2")
        base = os.path.join(self.image, "disk.qcow2")
        subprocess.run(["qemu-img", "create", "-q", "-f", "qcow2", "-b", base, "-F", "qcow2", overlay], check=True)
        made = subprocess.run(
            [os.path.join(HERE, "make-domain.sh"), "check", self.image, overlay, str(SSH_PORT), "demo"],
            check=True,
            capture_output=True,
            text=True,
        )
        domain = ElementTree.fromstring(made.stdout)
        interface = domain.find("devices/interface")
        for protocol, host_port, guest_port in (("tcp", TCP_PORT, 1234), ("udp", UDP_PORT, UDP_PORT)):
            forward = ElementTree.SubElement(interface, "portForward", proto=protocol, address="127.0.0.1")
            ElementTree.SubElement(forward, "range", start=str(host_port), to=str(guest_port))
        definition = os.path.join(self.directory, "check.xml")
        ElementTree.ElementTree(domain).write(definition)

        root = os.path.join(self.directory, "libvirt")
        os.makedirs(os.path.join(root, "etc"))
        with open(os.path.join(root, "etc", "qemu.conf"), "w", encoding="utf-8") as configuration:
            configuration.write(
                'stdio_handler = "file"\nsecurity_driver = "none"\nremember_owner = 0\n'
                "namespaces = []\ncgroup_controllers = []\n"
            )
        self.virsh = subprocess.Popen(
            ["virsh", "-q", "-c", f"qemu:///embed?root={root}"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
            bufsize=1,
        )
        self.command("list")  # waits for the connection
        started = time.monotonic()
        self.command(f"create {definition}")
        return started

    def command(self, text):
        """One command's output."""
        self.virsh.stdin.write(f"{text}\necho end-of-command\n")
        self.virsh.stdin.flush()
        lines = []
        while True:
            line = self.virsh.stdout.readline()
            if not line:
                raise CheckFailed(f"virsh has ended during: {text}")
            if line.strip().endswith("end-of-command"):
                return "".join(lines)
            lines.append(line)

    def is_running(self):
        return "check" in self.command("list --name").split()

    def ssh(self, command):
        with open(os.path.join(self.image, "known_host"), encoding="utf-8") as key:
            known_hosts = os.path.join(self.directory, "known_hosts")
            with open(known_hosts, "w", encoding="utf-8") as file:
                file.write(f"[127.0.0.1]:{SSH_PORT} {key.read()}")
        finished = subprocess.run(
            ["ssh", "-F", "none", "-i", os.path.join(self.image, "id_ed25519"), "-p", str(SSH_PORT), "-o", "BatchMode=yes"]
            + ["-o", f"UserKnownHostsFile={known_hosts}", "-o", "StrictHostKeyChecking=yes", "-o", "ConnectTimeout=20"]
            + ["root@127.0.0.1", command],
            check=True,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
            timeout=60,
        )
        return finished.stdout

    def property(self, service, name):
        """The last word of what dbus-send prints is the value."""
        path = "/" + service.replace(".", "/")
        return self.ssh(
            f"dbus-send --system --print-reply=literal --dest={service} {path} "
            f"org.freedesktop.DBus.Properties.Get string:{service} string:{name}"
        ).split()[-1]

    def described(self, service):
        """The methods of a service with the types of their arguments, and its properties, as it describes itself."""
        path = "/" + service.replace(".", "/")
        xml = self.ssh(f"gdbus introspect --system --xml --dest {service} --object-path {path}")
        interface = ElementTree.fromstring(xml).find(f"interface[@name='{service}']")
        methods = {
            method.get("name"): "".join(
                argument.get("type") for argument in method.findall("arg") if argument.get("direction", "in") == "in"
            )
            for method in interface.findall("method")
        }
        return methods, {element.get("name") for element in interface.findall("property")}

    def console(self):
        try:
            with open(os.path.join(self.directory, "check.console.log"), errors="replace", encoding="utf-8") as log:
                return log.read()
        except OSError:
            return "no console log"

    def end(self):
        if self.virsh:
            if self.virsh.poll() is None:
                if self.is_running():
                    self.command("destroy check")
                self.virsh.stdin.close()
            self.virsh.wait(timeout=30)


def call(method, arguments):
    path = "/" + SENSORS.replace(".", "/")
    return WebSocket(TCP_PORT).ask(f"system {SENSORS} {path} {SENSORS} {method} {arguments}")


def size_of(image):
    """In MiB, as the files are when they are copied."""
    return sum(entry.stat().st_size for entry in os.scandir(image)) / 2**20


def run(machine):
    size = size_of(machine.image)
    check(size < IMAGE_LIMIT, f"the image has {size:.0f} MiB, less than {IMAGE_LIMIT}")
    started = machine.start()
    wait_for(lambda: machine.ssh("true") == "", "root logs in over SSH", BOOT_LIMIT)
    ssh_after = time.monotonic() - started
    reply = "enabled:tap:true::"
    wait_for(lambda: call("enabled", "string:tap") == reply, "the WebSocket answers for the sensors", BOOT_LIMIT)
    socket_after = time.monotonic() - started
    print(f"SSH after {ssh_after:.1f} s, WebSocket after {socket_after:.1f} s", flush=True)
    check(socket_after < BOOT_LIMIT, f"the guest is up within {BOOT_LIMIT} s")

    installed = machine.ssh("rpm -qa")
    for package in PACKAGES:
        check(f"{package}-16.0.0" in installed, f"{package} is installed")

    for service, methods in METHODS.items():
        described, properties = machine.described(service)
        check(described == methods, f"{service} describes its methods: {sorted(described)}")
        check(properties >= PROPERTIES[service], f"{service} describes its properties: {sorted(properties)}")

    check(call("setAlsValue", "int32:321") == "setAlsValue:321:::", "a value is set over the WebSocket")
    check(machine.property(SENSORS, "als") == "321", "the value is read back over D-Bus")
    check("setAlsValue int32:321" in machine.ssh("cat /var/log/remote-dbus-invoker.log"), "the call is in the log")

    source = "videotestsrc is-live=true pattern=blue ! video/x-raw,format=I420,width=320,height=240,framerate=10/1"
    sink = f"jpegenc quality=50 ! rtpjpegpay ! udpsink host=127.0.0.1 port={UDP_PORT}"
    with subprocess.Popen(["gst-launch-1.0", "-q"] + f"{source} ! {sink}".split()) as stream:
        try:
            wait_for(lambda: machine.property(CAMERA, "width") == "320", "the camera's stream arrives")
        finally:
            stream.kill()

    machine.ssh("killall sensorfw-emulation-service")
    wait_for(lambda: machine.property(SENSORS, "als") == "0", "a service that ended is started again")

    machine.ssh("rpm -e geoclue-emulator")
    check("geoclue-emulator" not in machine.ssh("rpm -qa"), "a package that is removed is no longer listed")
    wait_for(
        lambda: POSITION not in machine.ssh(
            "dbus-send --system --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.ListNames"
        ),
        "its service is gone, too",
    )

    stopping = time.monotonic()
    machine.command("shutdown check")
    wait_for(lambda: not machine.is_running(), "the power button ends the guest")
    print(f"off after {time.monotonic() - stopping:.1f} s", flush=True)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if not os.path.exists(os.path.join(sys.argv[1], "disk.qcow2")):
        sys.exit(f"there is no image in {sys.argv[1]}; make it with: ./dev image")
    with tempfile.TemporaryDirectory(prefix="emulator-check-") as directory:
        machine = Machine(os.path.abspath(sys.argv[1]), directory)
        try:
            run(machine)
        except CheckFailed as error:
            print(f"FAIL!  : boot-check::{error}()\n--- console ---\n{machine.console()[-4000:]}", flush=True)
            print(f"Totals: {passed} passed, 1 failed, 0 skipped", flush=True)
            sys.exit(1)
        finally:
            machine.end()
    print(f"Totals: {passed} passed, 0 failed, 0 skipped")


if __name__ == "__main__":
    main()
