// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/bus.h"
#include "processes.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QDir>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QXmlStreamWriter>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto readyTimeout = 30s;

struct Options
{
    QString directory;
    quint16 port = 0;
    quint16 cameraPort = 0; // 0: no camera
    QStringList command;
};

int failed(const QString &text)
{
    std::fprintf(stderr, "emulator-host: %s\n", qUtf8Printable(text));
    return EXIT_FAILURE;
}

// A bus with the system bus's limits on which everybody may do everything.
bool writeBusConfiguration(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QXmlStreamWriter writer(&file);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeDTD(u"<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
                    "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"_s);
    writer.writeStartElement(u"busconfig"_s);
    writer.writeTextElement(u"type"_s, u"system"_s);
    writer.writeTextElement(u"listen"_s, "unix:dir="_L1 + QDir::tempPath());
    writer.writeTextElement(u"auth"_s, u"EXTERNAL"_s);
    writer.writeStartElement(u"policy"_s);
    writer.writeAttribute(u"context"_s, u"default"_s);
    for (const QString &attribute : {u"user"_s, u"own"_s, u"send_destination"_s, u"receive_sender"_s}) {
        writer.writeEmptyElement(u"allow"_s);
        writer.writeAttribute(attribute, u"*"_s);
    }
    writer.writeEndDocument();
    return !writer.hasError();
}

// The bus's address; empty when it does not start.
QString startBus(EmulatorHost::Processes &processes, const QString &directory)
{
    const QString configuration = directory + "/bus.conf"_L1;
    if (!writeBusConfiguration(configuration))
        return {};
    QProcess *bus = processes.start(
        u"dbus-daemon"_s,
        {u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s, "--config-file="_L1 + configuration},
        QProcessEnvironment::systemEnvironment());
    const QDeadlineTimer deadline(readyTimeout);
    while (bus && !bus->canReadLine() && bus->waitForReadyRead(int(deadline.remainingTime())))
        ;
    return bus ? QString::fromLocal8Bit(bus->readLine()).trimmed() : QString();
}

bool isListening(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    return socket.waitForConnected(1000);
}

// Waits until the names are owned and the port is open; false when a program has ended or time is up.
bool waitUntilReady(
    const QDBusConnection &connection, const QStringList &names, quint16 port, const QList<QProcess *> &programs)
{
    const QDeadlineTimer deadline(readyTimeout);
    while (!deadline.hasExpired()) {
        bool ready = true;
        for (const QString &name : names)
            ready = ready && connection.interface()->isServiceRegistered(name);
        if (ready && isListening(port))
            return true;
        for (QProcess *program : programs) {
            if (program->waitForFinished(5))
                return false;
        }
    }
    return false;
}

int runCommand(QCoreApplication &application, const QStringList &command, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    int exitCode = EXIT_FAILURE;
    QObject::connect(&process, &QProcess::finished, &application, [&](int code, QProcess::ExitStatus status) {
        exitCode = status == QProcess::NormalExit ? code : EXIT_FAILURE;
        application.quit();
    });
    process.start(command.first(), command.sliced(1));
    if (!process.waitForStarted())
        return failed(u"cannot start %1: %2"_s.arg(command.first(), process.errorString()));
    application.exec();
    if (process.state() != QProcess::NotRunning) { // asked to end before the command has
        process.terminate();
        if (!process.waitForFinished(5000)) {
            process.kill();
            process.waitForFinished();
        }
    }
    return exitCode;
}

int run(QCoreApplication &application, const Options &options)
{
    const QString log = options.directory + "/invoker.log"_L1;
    QFile::remove(log); // the invoker would append to an earlier run's

    EmulatorHost::Processes processes;
    const QString address = startBus(processes, options.directory);
    if (address.isEmpty())
        return failed(u"the bus does not start"_s);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, address);
    const QString programs = QCoreApplication::applicationDirPath() + u'/';
    const QString port = QString::number(options.port);
    const QString local = u"127.0.0.1"_s;
    QStringList names{u"ru.kelo.SensorfwEmulationManagement"_s, u"ru.kelo.GeoclueEmulationManagement"_s};
    QList<QProcess *> started{
        processes.start(programs + "sensorfw-emulation-service"_L1, {}, environment),
        processes.start(programs + "geoclue-emulation-service"_L1, {}, environment),
        processes.start(
            programs + "remote-dbus-invoker"_L1,
            {u"--address"_s, local, u"--port"_s, port, u"--log"_s, log},
            environment),
    };
    if (options.cameraPort != 0) {
        names.append(u"ru.kelo.CameraEmulation"_s);
        started.append(processes.start(
            programs + "gstreamer-emulator-receiver"_L1,
            {u"--address"_s, local, u"--port"_s, QString::number(options.cameraPort)},
            environment));
    }
    if (started.contains(nullptr))
        return failed(u"a program does not start"_s);

    const QString connectionName = u"emulator-host"_s;
    const bool ready = waitUntilReady(Emulator::connectToBus(address, connectionName), names, options.port, started);
    QDBusConnection::disconnectFromBus(connectionName);
    if (!ready)
        return failed(u"the services do not come up"_s);

    Emulator::quitOnTermination(application);
    int exitCode = EXIT_SUCCESS;
    if (options.command.isEmpty()) {
        std::printf("DBUS_SYSTEM_BUS_ADDRESS=%s\n", qUtf8Printable(address));
        std::fflush(stdout);
        application.exec();
    } else {
        exitCode = runCommand(application, options.command, environment);
    }
    // A crash or leak of a service is a failure whatever the command made of it.
    const QStringList complaints = processes.stop();
    for (const QString &complaint : complaints)
        exitCode = failed(complaint);
    return exitCode;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Runs the emulator's services on this machine, with a system bus of their own.\n\n"
        "COMMAND runs with DBUS_SYSTEM_BUS_ADDRESS set once everything is up, and its exit code is this program's "
        "unless a "
        "service failed. "
        "Without a COMMAND the variable is printed, and the services run until this program is ended. "
        "DIR/invoker.log gets a line of JSON for every frame."_s);
    parser.addHelpOption();
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.addOption({u"port"_s, u"The TCP port of the invoker."_s, u"port"_s, u"5454"_s});
    parser.addOption({u"directory"_s, u"The folder for the log (a temporary one)."_s, u"dir"_s});
    parser.addOption({u"camera-port"_s, u"Receive the camera's stream on this UDP port."_s, u"port"_s, u"0"_s});
    parser.addPositionalArgument(u"command"_s, u"The command to run."_s, u"[COMMAND...]"_s);
    parser.process(application);

    Options options;
    bool isNumber = false;
    options.port = parser.value(u"port"_s).toUShort(&isNumber);
    bool isCameraNumber = false;
    options.cameraPort = parser.value(u"camera-port"_s).toUShort(&isCameraNumber);
    if (!isNumber || !isCameraNumber)
        return failed(u"a port is a number from 0 to 65535"_s);
    options.command = parser.positionalArguments();

    QTemporaryDir temporary;
    options.directory =
        parser.isSet(u"directory"_s) ? QDir(parser.value(u"directory"_s)).absolutePath() : temporary.path();
    if (!QDir().mkpath(options.directory))
        return failed(u"cannot make the folder %1"_s.arg(options.directory));
    return run(application, options);
}
