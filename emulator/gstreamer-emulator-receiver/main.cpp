// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cameraservice.h"
#include "common/bus.h"
#include "streamreceiver.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Receives the camera's picture as JPEG over RTP."_s);
    parser.addHelpOption();
    Emulator::addBusOption(parser);
    parser.addOption({u"address"_s, u"The address to receive on."_s, u"address"_s, u"0.0.0.0"_s});
    parser.addOption({u"port"_s, u"The UDP port to receive on."_s, u"port"_s, u"34343"_s});
    parser.process(application);

    bool isNumber = false;
    const quint16 port = parser.value(u"port"_s).toUShort(&isNumber);
    if (!isNumber) {
        std::fprintf(stderr, "not a port: %s\n", qUtf8Printable(parser.value(u"port"_s)));
        return EXIT_FAILURE;
    }

    gst_init(nullptr, nullptr);
    const QDBusConnection connection = Emulator::connectToBus(parser.value(u"bus"_s), u"service"_s);
    Emulator::StreamReceiver receiver;
    Emulator::CameraService service(connection, receiver);
    if (const QString error = receiver.start(parser.value(u"address"_s), port); !error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error));
        return EXIT_FAILURE;
    }
    return Emulator::serve(
        application,
        connection,
        QLatin1StringView(Emulator::CameraService::serviceName),
        QLatin1StringView(Emulator::CameraService::objectPath),
        &service);
}
