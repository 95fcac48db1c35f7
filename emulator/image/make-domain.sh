#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: make-domain.sh NAME IMAGE OVERLAY SSH_PORT DEVICE_MODEL
# Prints the libvirt domain of an emulator. IMAGE is a folder made by build-image.sh; OVERLAY is a disk image of the
# user's own on top of its disk.qcow2; SSH_PORT is the host's port that leads to the guest's SSH. The guest's console
# goes to a file beside OVERLAY.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
(($# == 5)) || {
    sed -n '4,7s/^# //p' "${BASH_SOURCE[0]}" >&2
    exit 2
}

# /dev/kvm may be there and yet no guest get anywhere on it: only a kernel that says something counts.
kvm_works() {
    [[ -r /dev/kvm && -w /dev/kvm ]] || return 1
    # The first line ends it; a reader that leaves makes QEMU's exit code meaningless.
    local line
    line=$(timeout 5 qemu-system-x86_64 -accel kvm -machine q35 -m 256 -nodefaults -display none -no-reboot \
        -serial stdio -kernel "$1/vmlinuz" -append "earlyprintk=ttyS0 console=ttyS0 panic=-1" 2>/dev/null </dev/null |
        grep -m 1 'Linux version' || true)
    [[ -n $line ]]
}

type=qemu
if kvm_works "$2"; then type=kvm; fi
exec python3 "$here/domain.py" "$type" "$@"
