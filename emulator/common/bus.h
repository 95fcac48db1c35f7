// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QString>

class QCommandLineParser;
class QCoreApplication;

namespace Emulator {

/*!
    Adds the option --bus to a program: "system" (the default), "session", or the address of a bus.
*/
void addBusOption(QCommandLineParser &parser);

/*!
    Opens a connection of its own, called \a name, to the bus that --bus names. It may turn out not to be connected.
*/
QDBusConnection connectToBus(const QString &bus, const QString &name);

/*!
    Offers \a object under \a path, takes the name \a service, and runs \a application until it is asked to end or the
    bus goes away. Returns the program's exit code. Failures are printed.
*/
int serve(
    QCoreApplication &application,
    QDBusConnection connection,
    const QString &service,
    const QString &path,
    QObject *object);

/*!
    Lets SIGTERM, SIGINT and SIGHUP end \a application's event loop in an orderly way.
*/
void quitOnTermination(QCoreApplication &application);

} // namespace Emulator
