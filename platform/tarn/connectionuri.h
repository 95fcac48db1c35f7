// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "connectionsettings.h"

#include <QString>
#include <QStringList>

namespace Tarn::Internal {

// Where libvirt's daemon may be installed: the PATH, and folders for system programs, which an ordinary user's PATH
// seldom has.
QStringList daemonFolders();

// The URI that the settings stand for, see ConnectionSettings, when these are the folders with a daemon or without.
QString connectionUri(const ConnectionSettings &settings, const QStringList &daemonFolders);

// Whether the hypervisor runs on this host, so that its files are this host's.
bool isLocalQemu(const QString &uri);

// The root of an embed URI; empty for other URIs.
QString embedRoot(const QString &uri);

// Puts the driver's configuration below an embed URI's root when there is none; does nothing for other URIs. Returns
// a text for the user when that fails.
QString prepareEmbedRoot(const QString &uri);

// What to do about a connection that failed with libvirt's message, as a text for the user; may be empty.
QString connectionHint(const QString &uri, const QString &libvirtMessage);

} // namespace Tarn::Internal
