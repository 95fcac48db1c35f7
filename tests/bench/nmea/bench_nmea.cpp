// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How fast the same logs are read: by the plugin, by Qt Positioning and by the script that says the same rules. Each is
// given a log as it takes it: Qt Positioning the bytes, the others the text that the page has decoded anyway.

#include "../quantiles.h"

#include "gps/nmealog.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGeoPositionInfo>
#include <QNmeaPositionInfoSource>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace {

// What a reader has read; shows that it has read all.
struct Track
{
    qsizetype points = 0;
    double lastLatitude = 0;
};

struct Log
{
    QByteArray bytes;
    QString text;
};

using Reader = std::function<Track(const Log &)>;

QByteArray line(const QByteArray &text)
{
    char sum = 0;
    for (const char c : text)
        sum ^= c;
    return '$' + text + '*' + QByteArray(1, sum).toHex().toUpper() + "\r\n";
}

QByteArray number(int value, int digits)
{
    return QByteArray::number(value).rightJustified(digits, '0');
}

QByteArray time(int index)
{
    const int seconds = index / 10 % 86'400;
    return number(seconds / 3600, 2) + number(seconds / 60 % 60, 2) + number(seconds % 60, 2) + '.'
        + number(index % 10, 1) + '0';
}

// A drive to the north-east, with ten points a second.
QByteArray position(int index)
{
    const int tenThousandths = index / 10 % 600'000;
    return "48" + number(tenThousandths / 10'000, 2) + '.' + number(tenThousandths % 10'000, 4) + ",N,011"
        + number(tenThousandths / 10'000, 2) + '.' + number(tenThousandths % 10'000, 4) + ",E";
}

QByteArray ggaLog(int lines)
{
    QByteArray log;
    for (int i = 0; i < lines; ++i) {
        log += line("GPGGA," + time(i) + ',' + position(i) + ",1,08,0.9," + number(500 + i % 100, 1) + ".4,M,46.9,M,,");
    }
    return log;
}

QByteArray rmcLog(int lines)
{
    QByteArray log;
    for (int i = 0; i < lines; ++i)
        log += line("GPRMC," + time(i) + ",A," + position(i) + ",022.4,084.4,150124,003.1,W");
    return log;
}

Track readNatively(const Log &log)
{
    const NmeaLog result = parseNmeaLog(log.text);
    const auto *points = std::get_if<QList<TrackPoint>>(&result);
    return points ? Track{points->size(), points->constLast().latitude} : Track();
}

// The source as programs use it, as fast as it goes: in real time, with all data there at once.
Track readFromSource(const Log &log)
{
    QByteArray data; // what is there at the start would be skipped
    QBuffer device(&data);
    device.open(QIODevice::ReadOnly);
    QNmeaPositionInfoSource source(QNmeaPositionInfoSource::RealTimeMode);
    source.setDevice(&device);
    Track track;
    QObject::connect(
        &source, &QGeoPositionInfoSource::positionUpdated, &source, [&track](const QGeoPositionInfo &info) {
            track = {track.points + 1, info.coordinate().latitude()};
        });
    source.startUpdates();
    data = line("GPZDA,000000.00,15,01,2024,00,00") + log.bytes; // without a date it tells of nothing
    Q_EMIT device.readyRead();
    return track;
}

// Nothing but its parser of lines: no device, no waiting, no signals.
class Positioning : public QNmeaPositionInfoSource
{
public:
    Positioning()
        : QNmeaPositionInfoSource(SimulationMode)
    {
    }

    Track read(const Log &log)
    {
        Track track;
        QByteArrayView rest = log.bytes;
        while (!rest.isEmpty()) {
            const qsizetype end = rest.indexOf('\n') + 1;
            QGeoPositionInfo info;
            bool hasFix = false;
            if (parsePosInfoFromNmeaData(rest.first(end), &info, &hasFix) && info.coordinate().isValid())
                track = {track.points + 1, info.coordinate().latitude()};
            rest = rest.sliced(end);
        }
        return track;
    }
};

class Script
{
public:
    Script()
    {
        QQmlComponent component(&m_engine);
        component.setData(
            R"(import QtQml
               import "nmea-parsing.js" as Script
               QtObject {
                   property int points
                   property double lastLatitude
                   function read(log: string) {
                       const list = Script.loadNmeaLog(log);
                       points = list.length;
                       lastLatitude = list[points - 1].latitude;
                   }
               })",
            QUrl::fromLocalFile(QStringLiteral(EMULATIONMANAGEMENT_NMEA_SCRIPT_DIR "/bench.qml")));
        m_object.reset(component.create());
    }

    Track read(const Log &log)
    {
        if (!m_object || !QMetaObject::invokeMethod(m_object.get(), "read", log.text))
            return {};
        return {m_object->property("points").toInt(), m_object->property("lastLatitude").toDouble()};
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_object;
};

// Lines a second, or 0 when any was not read.
double speed(const Reader &read, const QByteArray &bytes, int rounds)
{
    const Log log{bytes, QString::fromUtf8(bytes)};
    const auto lines = double(bytes.count('\n'));
    const double lastLatitude = readNatively(log).lastLatitude;
    std::vector<double> speeds;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        const Track track = read(log);
        speeds.push_back(lines / double(timer.nsecsElapsed()) * 1e9);
        // A source keeps the last point to itself, until it knows that no more is said of it.
        if (double(track.points) < lines - 1 || std::fabs(track.lastLatitude - lastLatitude) > 1e-5)
            return 0;
    }
    return median(speeds);
}

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

double bytesPerPoint(const QByteArray &log)
{
    const QString text = QString::fromUtf8(log);
    const size_t before = heapInUse();
    const NmeaLog result = parseNmeaLog(text);
    const auto *points = std::get_if<QList<TrackPoint>>(&result);
    return points ? double(heapInUse() - before) / double(points->size()) : 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const bool longRun = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") != 0;
    const int lines = longRun ? 1'000'000 : 20'000;
    const int slowLines = longRun ? 100'000 : 10'000;
    const int scriptLines = slowLines / 5;
    const int rounds = longRun ? 7 : 3;

    Positioning positioning;
    Script script;
    struct Sentence
    {
        const char *name;
        QByteArray (*make)(int lines);
    };
    for (const Sentence &sentence : {Sentence{"GGA", ggaLog}, Sentence{"RMC", rmcLog}}) {
        const QByteArray bytes = sentence.make(lines);
        const double own = speed(readNatively, bytes, rounds);
        const QByteArray fewer = sentence.make(slowLines);
        const double source = speed(readFromSource, fewer, rounds);
        const double parser = speed([&](const Log &log) { return positioning.read(log); }, fewer, rounds);
        const double slow = speed([&](const Log &log) { return script.read(log); }, sentence.make(scriptLines), rounds);
        if (own == 0 || source == 0 || parser == 0 || slow == 0) {
            std::fprintf(stderr, "bench_nmea: not all was read (%g, %g, %g, %g lines/s)\n", own, source, parser, slow);
            return EXIT_FAILURE;
        }
        std::printf(
            "%s lines a second / Qt Positioning's source: %.1f (aim at least 10)\n", sentence.name, own / source);
        std::printf("%s lines a second / its bare parser's: %.1f (no aim)\n", sentence.name, own / parser);
        std::printf("%s lines a second / a script's: %.1f (no aim)\n", sentence.name, own / slow);
        std::printf("%s lines a second: %.2f million (no aim)\n", sentence.name, own / 1e6);
        std::printf("%s bytes in memory a point: %.1f (aim at most 50)\n", sentence.name, bytesPerPoint(bytes));
    }
    return EXIT_SUCCESS;
}
