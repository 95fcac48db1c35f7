// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/bus.h"
#include "invokerserver.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QHostAddress>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

int failed(const QString &text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Calls D-Bus methods for WebSocket clients."_s);
    parser.addHelpOption();
    Emulator::addBusOption(parser);
    parser.addOption({u"address"_s, u"The address to listen on."_s, u"address"_s, u"0.0.0.0"_s});
    parser.addOption({u"port"_s, u"The TCP port to listen on."_s, u"port"_s, u"1234"_s});
    parser.addOption({u"log"_s, u"Append a line of JSON for every frame to this file."_s, u"file"_s});
    parser.process(application);

    bool isNumber = false;
    const quint16 port = parser.value(u"port"_s).toUShort(&isNumber);
    if (!isNumber)
        return failed(u"not a port: %1"_s.arg(parser.value(u"port"_s)));
    QHostAddress address;
    if (!address.setAddress(parser.value(u"address"_s)))
        return failed(u"not an address: %1"_s.arg(parser.value(u"address"_s)));

    Emulator::InvokerServer server(parser.value(u"bus"_s));
    if (const QString log = parser.value(u"log"_s); !log.isEmpty() && !server.setLogFile(log))
        return failed(u"cannot write to %1"_s.arg(log));
    if (!server.listen(address, port))
        return failed(u"cannot listen on port %1: %2"_s.arg(port).arg(server.errorString()));
    Emulator::quitOnTermination(application);
    return application.exec();
}
