// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QVariantMap>

/// What an application inside the emulator would see: the services' properties, asked for on their bus.
namespace Robustness::Guest {

/// Empty when a service does not answer.
QVariantMap sensors();
QVariantMap position();

/// As if somebody inside the emulator had done it.
bool call(const QString &service, const QString &method, const QVariantList &arguments = {});

extern const QString sensorService;
extern const QString positionService;

} // namespace Robustness::Guest
