// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Tarn {

// Which hypervisor the SDK looks at.
struct ConnectionSettings
{
    // A libvirt URI. Empty means automatic:
    // - "qemu:///session" when a libvirt daemon (virtqemud or libvirtd) is installed. libvirt starts the user's own
    //   daemon when it is needed, and that daemon ends by itself two minutes after the last use;
    // - otherwise "qemu:///embed?root=...", the hypervisor driver inside this process, with embedRoot as its root.
    //
    // With an embed URI, named here or found automatically, the driver's configuration file is put below the root
    // when there is none. One root belongs to one process at a time, and one process has one root in its life.
    QString uri;
    // An absolute path; empty means the folder "velmo-emulators" below the user's data folder.
    QString embedRoot;
    // A folder with the INI files of installed device models (key "device-name"); empty means none are installed.
    QString deviceModelDirectory;
};

} // namespace Tarn
