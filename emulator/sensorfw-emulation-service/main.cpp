// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/bus.h"
#include "sensorservice.h"

#include <QCommandLineParser>
#include <QCoreApplication>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Keeps the values of the emulated sensors."_s);
    parser.addHelpOption();
    Emulator::addBusOption(parser);
    parser.process(application);

    const QDBusConnection connection = Emulator::connectToBus(parser.value(u"bus"_s), u"service"_s);
    Emulator::SensorService service(connection);
    return Emulator::serve(
        application,
        connection,
        QLatin1StringView(Emulator::SensorService::serviceName),
        QLatin1StringView(Emulator::SensorService::objectPath),
        &service);
}
