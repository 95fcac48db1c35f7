#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: build-image.sh BASE PROGRAMS DESTINATION SCRATCH
# Puts our services, as packages, on a base made by build-base.sh. DESTINATION gets vmlinuz, initrd, disk.qcow2, the key
# to log in with (id_ed25519) and what the guest identifies itself with (known_host).
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=emulator/image/inputs.sh
source "$here/inputs.sh"
base=$1 programs=$2 destination=$3 scratch=$4
rm -rf "$scratch" "$destination"
mkdir -p "$scratch" "$destination"
root=$scratch/root

# in_root COMMAND...: as the guest's root user.
in_root() {
    bwrap --unshare-user --uid 0 --gid 0 --bind "$root" / --dev /dev --proc /proc --tmpfs /tmp \
        --ro-bind "$scratch/packages" /tmp/packages --setenv HOME /root --setenv PATH /usr/bin:/usr/sbin -- "$@"
}

# --- packages ---------------------------------------------------------------------------------

staging=$scratch/staging
mkdir -p "$staging"/usr/{bin,lib/emulator/services,share/dbus-1/system.d}
for service in "$here"/services/*; do
    name=$(basename "$service")
    strip -o "$staging/usr/bin/$name" "$programs/$name"
    install -m 755 "$service" "$staging/usr/lib/emulator/services/$name"
done
install -m 644 "$here"/policies/*.conf "$staging/usr/share/dbus-1/system.d/"
# Macros come apart at blanks, which the path to this link does not have.
links=$(mktemp -d)
ln -s "$(realpath "$scratch")" "$links/scratch"
rpmbuild -bb --quiet --define "_topdir $links/scratch/rpmbuild" --define "_rpmdir $links/scratch/packages" \
    --define "_dbpath $links/scratch/rpmdb" --define "staging $links/scratch/staging" --define "emulator_version 16.0.0" \
    --define "_build_id_links none" --define "_binary_payload w3.zstdio" "$here/packages.spec"
rm -r "$links"
find "$scratch/packages" -name '*.rpm' -exec mv {} "$scratch/packages/" \;

# --- root folder ------------------------------------------------------------------------------

cp -a "$base/root" "$root"
ssh-keygen -q -t ed25519 -N '' -C emulator -f "$destination/id_ed25519"
ssh-keygen -q -t ed25519 -N '' -C emulator -f "$root/etc/ssh/ssh_host_ed25519_key"
cp "$destination/id_ed25519.pub" "$root/etc/ssh/authorized_keys"
chmod 600 "$root/etc/ssh/authorized_keys"
cut -d ' ' -f 1,2 "$root/etc/ssh/ssh_host_ed25519_key.pub" >"$destination/known_host"
tr -d - </proc/sys/kernel/random/uuid >"$root/etc/machine-id"
in_root rpm --initdb
in_root sh -c 'rpm --install --nosignature /tmp/packages/*.rpm'
for package in "${guest_packages[@]}"; do in_root rpm --query "$package"; done

# --- disk -------------------------------------------------------------------------------------

bwrap --unshare-user --uid 0 --gid 0 --dev-bind / / --bind "$scratch" "$scratch" -- \
    mke2fs -q -t ext4 -m 0 -L emulator -d "$root" "$scratch/disk.raw" 512M
qemu-img convert -c -O qcow2 "$scratch/disk.raw" "$destination/disk.qcow2"
cp "$base/vmlinuz" "$base/initrd" "$destination/"
rm -rf "$scratch"
