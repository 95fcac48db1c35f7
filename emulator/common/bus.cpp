// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bus.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusError>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace Emulator {

namespace {

std::array<int, 2> terminationSockets{-1, -1};

void forwardSignal(int)
{
    const int savedError = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(terminationSockets[0], &byte, sizeof byte);
    errno = savedError;
}

int failed(const QString &text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    return EXIT_FAILURE;
}

} // namespace

void addBusOption(QCommandLineParser &parser)
{
    parser.addOption({u"bus"_s, u"The bus to use: system, session, or a bus address."_s, u"bus"_s, u"system"_s});
}

QDBusConnection connectToBus(const QString &bus, const QString &name)
{
    if (bus == "system"_L1)
        return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    if (bus == "session"_L1)
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    return QDBusConnection::connectToBus(bus, name);
}

int serve(
    QCoreApplication &application,
    QDBusConnection connection,
    const QString &service,
    const QString &path,
    QObject *object)
{
    if (!connection.isConnected())
        return failed(u"cannot connect to the bus: %1"_s.arg(connection.lastError().message()));
    if (!connection.registerObject(path, object, QDBusConnection::ExportScriptableContents))
        return failed(u"cannot offer the object %1"_s.arg(path));
    if (!connection.registerService(service))
        return failed(u"cannot own the name %1: %2"_s.arg(service, connection.lastError().message()));

    // A service without its bus is of no use: its supervisor starts it anew.
    connection.connect(
        QString(),
        u"/org/freedesktop/DBus/Local"_s,
        u"org.freedesktop.DBus.Local"_s,
        u"Disconnected"_s,
        &application,
        SLOT(quit()));
    quitOnTermination(application);
    return application.exec();
}

void quitOnTermination(QCoreApplication &application)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, terminationSockets.data()) != 0)
        return;
    auto *notifier = new QSocketNotifier(terminationSockets[1], QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, &QCoreApplication::quit);

    struct sigaction action = {};
    action.sa_handler = forwardSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}

} // namespace Emulator
