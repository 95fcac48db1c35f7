// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtTypes>

/// What a process holds, from the kernel's books.
namespace Robustness::Resources {

/// Open descriptors; of this process when there is no id.
int descriptors(qint64 processId = 0);
/// Resident memory in KiB.
qint64 memory(qint64 processId = 0);
/// Sockets of this network that are connected to a port, or were and are still held by somebody.
int socketsTo(quint16 port);

} // namespace Robustness::Resources
