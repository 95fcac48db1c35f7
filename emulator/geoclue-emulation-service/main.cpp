// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/bus.h"
#include "positionservice.h"

#include <QCommandLineParser>
#include <QCoreApplication>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Keeps the emulated position and moves it along a track."_s);
    parser.addHelpOption();
    Emulator::addBusOption(parser);
    parser.process(application);

    const QDBusConnection connection = Emulator::connectToBus(parser.value(u"bus"_s), u"service"_s);
    Emulator::PositionService service(connection);
    return Emulator::serve(
        application,
        connection,
        QLatin1StringView(Emulator::PositionService::serviceName),
        QLatin1StringView(Emulator::PositionService::objectPath),
        &service);
}
