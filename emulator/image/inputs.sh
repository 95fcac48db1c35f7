# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# What the guest's base system is made of. Sourced.
# shellcheck shell=bash disable=SC2034

libraries=/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH 2>/dev/null || echo x86_64-linux-gnu)

# Programs and libraries that are loaded by name; what they are linked with is found.
guest_programs=(
    /usr/bin/busybox
    /usr/bin/busctl
    /usr/bin/dash
    /usr/bin/dbus-daemon
    /usr/bin/dbus-send
    /usr/bin/gdbus
    /usr/bin/rpm
    /usr/bin/rpmdb
    /usr/bin/rpmkeys
    /usr/lib/openssh/sftp-server
    /usr/lib/openssh/sshd-auth
    /usr/lib/openssh/sshd-session
    /usr/sbin/sshd
    "$libraries/gstreamer-1.0/libgstapp.so"
    "$libraries/gstreamer-1.0/libgstcoreelements.so"
    "$libraries/gstreamer-1.0/libgstjpeg.so"
    "$libraries/gstreamer-1.0/libgstrtp.so"
    "$libraries/gstreamer-1.0/libgstudp.so"
    "$libraries/gstreamer-1.0/libgstvideoconvertscale.so"
    "$libraries/libQt6Core.so.6"
    "$libraries/libQt6DBus.so.6"
    "$libraries/libQt6Network.so.6"
    "$libraries/libQt6WebSockets.so.6"
    "$libraries/libgstapp-1.0.so.0"
    "$libraries/libgstvideo-1.0.so.0"
)

# Files and folders that are read.
guest_data=(
    /usr/lib/locale/C.utf8
    /usr/lib/rpm/macros
    /usr/lib/rpm/platform/x86_64-linux
    /usr/lib/rpm/rpmpopt-*
    /usr/lib/rpm/rpmrc
    /usr/share/dbus-1/system.conf
)

guest_packages=(
    sensorfw-qt5-emulator-plugins remote-dbus-invoker geoclue-emulator gstreamer-emulator
)

# Modules of the kernel that are not built into it, and that the guest needs; theirs are found.
guest_modules=(virtio_blk virtio_net virtio-rng button evdev)
