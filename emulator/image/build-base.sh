#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: build-base.sh DESTINATION SCRATCH
# Makes the part of the image that our own services have no part in: the kernel, its first file system, and the root
# folder. Programs and libraries are the ones of the tool chain, so they fit what is built with it; the kernel is
# Debian's for virtual machines.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=emulator/image/inputs.sh
source "$here/inputs.sh"
destination=$1 scratch=$2
rm -rf "$scratch" "$destination"
mkdir -p "$scratch" "$destination"
scratch=$(realpath "$scratch")
root=$destination/root

# --- kernel -----------------------------------------------------------------------------------

# The machine's apt sources name the mirror; its package state is left alone.
fetch_kernel() {
    local apt package
    mkdir -p "$scratch/lists/partial" "$scratch/archives/partial"
    : >"$scratch/status"
    apt=(-q -o Dir::State::Lists="$scratch/lists" -o Dir::State::status="$scratch/status" -o Dir::Cache="$scratch"
        -o APT::Sandbox::User= -o Debug::NoLocking=true)
    apt-get "${apt[@]}" update
    package=$(apt-cache "${apt[@]}" depends linux-image-cloud-amd64 |
        awk '$1 == "Depends:" && $2 ~ /^linux-image-[0-9]/ { print $2; exit }')
    (cd "$scratch" && apt-get "${apt[@]}" download "$package")
    dpkg-deb --extract "$scratch/$package"_*.deb "$scratch/kernel"
}

# copy_module NAME: into the initramfs, after those that it needs.
copy_module() {
    local name=${1//-/_} file dependency
    grep -qx "$name.ko" "$scratch/initramfs/modules/order" && return 0
    file=$(find "$scratch/kernel/usr/lib/modules" -name "${name//_/[-_]}.ko.xz" -print -quit)
    [[ -n $file ]] || {
        echo "there is no module $1" >&2
        return 1
    }
    xz -dc "$file" >"$scratch/initramfs/modules/$name.ko"
    for dependency in $(tr '\0' '\n' <"$scratch/initramfs/modules/$name.ko" | sed -n 's/^depends=//p' | tr ',' ' '); do
        copy_module "$dependency"
    done
    echo "$name.ko" >>"$scratch/initramfs/modules/order"
}

make_initramfs() {
    local module
    mkdir -p "$scratch/initramfs"/{bin,dev,root,modules}
    cp "$(command -v busybox)" "$scratch/initramfs/bin/busybox"
    install -m 755 "$here/initramfs-init" "$scratch/initramfs/init"
    ln -s busybox "$scratch/initramfs/bin/sh"
    : >"$scratch/initramfs/modules/order"
    for module in "${guest_modules[@]}"; do copy_module "$module"; done
    (cd "$scratch/initramfs" && find . | LC_ALL=C sort | cpio --quiet --create --format=newc --owner=0:0) |
        gzip -9n >"$destination/initrd"
}

# --- root folder --------------------------------------------------------------------------------

# copy FILE: with its links, under the same name.
copy() {
    local file=$1
    [[ -e $root$file ]] && return 0
    mkdir -p "$root$(dirname "$file")"
    cp -a "$file" "$root$file"
    if [[ -L $file ]]; then copy "$(realpath -s -m "$(dirname "$file")/$(readlink "$file")")"; fi
}

# What a list of programs is linked with, the loader included.
linked_libraries() {
    local program links
    for program in "$@"; do
        # A static program is none for ldd.
        links=$(LD_LIBRARY_PATH=$libraries/systemd ldd "$program" 2>/dev/null) || continue
        if grep 'not found' <<<"$links" >&2; then return 1; fi
        sed -n 's/.* => \(\/[^ ]*\) .*/\1/p; s/^\t\(\/[^ ]*\) .*/\1/p' <<<"$links"
    done
}

make_root() {
    local file applet linked
    mkdir -p "$root"/{dev,etc,proc,root,run,sys,tmp,usr/{bin,lib,lib64,sbin},var/{cache,empty,lib/rpm,log,tmp}}
    chmod 700 "$root/root"
    chmod 1777 "$root/tmp" "$root/var/tmp"
    for file in bin lib lib64 sbin; do ln -s "usr/$file" "$root/$file"; done
    ln -s /run "$root/var/run"

    for file in "${guest_programs[@]}" "${guest_data[@]}"; do copy "$file"; done
    linked=$(linked_libraries "${guest_programs[@]}")
    for file in $linked; do copy "${file/#\/lib/\/usr\/lib}"; done
    # Not busybox's shell: that prefers its own applets to programs, and its rpm is a toy.
    ln -s dash "$root/usr/bin/sh"
    for applet in $(busybox --list); do
        [[ -e $root/usr/bin/$applet || -e $root/usr/sbin/$applet || $applet == dpkg* || $applet == ssl_client ]] ||
            ln -s busybox "$root/usr/bin/$applet"
    done
    ln -s ../bin/busybox "$root/usr/sbin/init"
    [[ ! -e $libraries/systemd ]] || echo "$libraries/systemd" >"$root/etc/ld.so.conf"
    cp -a "$here/root/." "$root/"
    /usr/sbin/ldconfig -r "$root"
}

fetch_kernel
cp "$scratch"/kernel/boot/vmlinuz-* "$destination/vmlinuz"
make_initramfs
make_root
rm -rf "$scratch"
