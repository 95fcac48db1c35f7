// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmealogloader.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <atomic>
#include <chrono>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace EmulationManagement::Internal;

class TestNmeaLogLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loads();
    void tellsOfErrors_data();
    void tellsOfErrors();
    void answersAfterLoadHasReturned();
    void isBusyUntilItAnswers();
    void dropsTheLoadBefore();
    void dropsALoadThatIsReadButNotTold();
    void loadsAgainWhenItIsNoLongerBusy();
    void answersInItsOwnThread();
    void isDestroyedWhileItLoads();
    void isDestroyedByItsAnswer();
    void leavesTheOwnersThreadAlone();
};

static QString log(int lines)
{
    return u"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\n"_s.repeated(lines);
}

constexpr int manyLines = 400'000; // longer than anything else here takes

void TestNmeaLogLoader::loads()
{
    NmeaLogLoader loader;
    QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
    QSignalSpy failed(&loader, &NmeaLogLoader::failed);
    loader.load(log(3));
    QVERIFY(loaded.wait(30s));
    const auto points = loaded.constFirst().constFirst().value<QList<TrackPoint>>();
    QCOMPARE(points.size(), 3);
    QCOMPARE(points.constLast().latitude, 48.1173);
    QCOMPARE(points.constLast().index, 2);
    QCOMPARE(failed.size(), 0);
}

void TestNmeaLogLoader::tellsOfErrors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("line");
    QTest::newRow("nothing") << QString() << u"NMEA file is empty"_s << 0;
    QTest::newRow("a broken line") << log(2) + u"$GPGGA"_s << u"Incorrect NMEA file"_s << 3;
    QTest::newRow("line breaks") << u"\n\n"_s << u"Value is null and could not be converted to an object"_s << 0;
}

void TestNmeaLogLoader::tellsOfErrors()
{
    QFETCH(const QString, text);
    QFETCH(const QString, message);
    QFETCH(const int, line);

    NmeaLogLoader loader;
    QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
    QSignalSpy failed(&loader, &NmeaLogLoader::failed);
    loader.load(text);
    QVERIFY(failed.wait(30s));
    QCOMPARE(failed.constFirst(), QVariantList({message, line}));
    QCOMPARE(loaded.size(), 0);
    QVERIFY(!loader.isBusy());
}

void TestNmeaLogLoader::answersAfterLoadHasReturned()
{
    NmeaLogLoader loader;
    QSignalSpy failed(&loader, &NmeaLogLoader::failed);
    loader.load({});
    QCOMPARE(failed.size(), 0);
    QVERIFY(failed.wait(30s));
}

void TestNmeaLogLoader::isBusyUntilItAnswers()
{
    NmeaLogLoader loader;
    QVERIFY(!loader.isBusy());
    QStringList events;
    connect(
        &loader, &NmeaLogLoader::busyChanged, this, [&] { events.append(loader.isBusy() ? u"busy"_s : u"idle"_s); });
    connect(&loader, &NmeaLogLoader::loaded, this, [&] { events.append(u"loaded"_s); });
    loader.load(log(1));
    QVERIFY(loader.isBusy());
    QTRY_COMPARE_WITH_TIMEOUT(events, QStringList({u"busy"_s, u"idle"_s, u"loaded"_s}), 30s);
    loader.load(log(1));
    loader.load(log(1));
    QTRY_COMPARE_WITH_TIMEOUT(events.sliced(3), QStringList({u"busy"_s, u"idle"_s, u"loaded"_s}), 30s);
}

void TestNmeaLogLoader::dropsTheLoadBefore()
{
    NmeaLogLoader loader;
    QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
    QSignalSpy failed(&loader, &NmeaLogLoader::failed);
    loader.load(log(manyLines));
    for (int i = 0; i < 20; ++i)
        loader.load(i % 2 == 0 ? QString() : log(i));
    loader.load(log(2));
    QVERIFY(loaded.wait(30s));
    QCOMPARE(loaded.constFirst().constFirst().value<QList<TrackPoint>>().size(), 2);
    loader.load(log(3));
    QVERIFY(loaded.wait(30s));
    QCOMPARE(loaded.size(), 2);
    QCOMPARE(loaded.constLast().constFirst().value<QList<TrackPoint>>().size(), 3);
    QCOMPARE(failed.size(), 0);
}

void TestNmeaLogLoader::dropsALoadThatIsReadButNotTold()
{
    // Sees the answer on its way.
    class LoadAgain : public QObject
    {
    public:
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::MetaCall && std::exchange(m_first, false))
                qobject_cast<NmeaLogLoader *>(watched)->load(log(2));
            return false;
        }

        bool m_first = true;
    };

    NmeaLogLoader loader;
    LoadAgain again;
    loader.installEventFilter(&again);
    QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
    loader.load(log(1));
    QVERIFY(loaded.wait(30s));
    QVERIFY(!again.m_first);
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().constFirst().value<QList<TrackPoint>>().size(), 2);
}

void TestNmeaLogLoader::loadsAgainWhenItIsNoLongerBusy()
{
    NmeaLogLoader loader;
    QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
    bool again = true;
    connect(&loader, &NmeaLogLoader::busyChanged, this, [&] {
        if (!loader.isBusy() && std::exchange(again, false))
            loader.load(log(2));
    });
    loader.load(log(1));
    QVERIFY(loaded.wait(30s));
    QCOMPARE(loaded.constFirst().constFirst().value<QList<TrackPoint>>().size(), 2);
    QVERIFY(!loader.isBusy());
}

void TestNmeaLogLoader::answersInItsOwnThread()
{
    QThread thread;
    thread.start();
    auto *loader = new NmeaLogLoader;
    loader->moveToThread(&thread);
    connect(&thread, &QThread::finished, loader, &QObject::deleteLater);
    std::atomic<QThread *> answeredIn = nullptr;
    connect(
        loader, &NmeaLogLoader::loaded, loader, [&] { answeredIn = QThread::currentThread(); }, Qt::DirectConnection);
    QMetaObject::invokeMethod(loader, &NmeaLogLoader::load, log(1));
    QTRY_COMPARE_WITH_TIMEOUT(answeredIn.load(), &thread, 30s);
    thread.quit();
    QVERIFY(thread.wait(30s));
}

void TestNmeaLogLoader::isDestroyedWhileItLoads()
{
    constexpr int times = 25;
    const QString text = log(manyLines);
    QElapsedTimer timer;
    timer.start();
    {
        NmeaLogLoader loader;
        QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
        loader.load(text);
        QVERIFY(loaded.wait(60s));
    }
    const auto wholeLoad = timer.durationElapsed();

    int answers = 0;
    timer.start();
    for (int i = 0; i < times; ++i) {
        NmeaLogLoader loader;
        connect(&loader, &NmeaLogLoader::loaded, this, [&] { ++answers; });
        loader.load(text);
        if (i % 3 == 0)
            loader.load(text);
        QVERIFY(!log(1000 * (1 + i % 5)).isEmpty()); // takes a while, to be in the middle of it
    }
    QCOMPARE_LT(timer.durationElapsed(), wholeLoad * times); // nobody waits until all is read
    QCoreApplication::processEvents();
    QCOMPARE(answers, 0);
}

void TestNmeaLogLoader::isDestroyedByItsAnswer()
{
    auto loader = std::make_unique<NmeaLogLoader>();
    connect(loader.get(), &NmeaLogLoader::loaded, this, [&] { loader.reset(); });
    loader->load(log(1));
    QTRY_VERIFY_WITH_TIMEOUT(!loader, 30s);

    loader = std::make_unique<NmeaLogLoader>();
    bool answered = false;
    connect(loader.get(), &NmeaLogLoader::loaded, this, [&] { answered = true; });
    connect(loader.get(), &NmeaLogLoader::busyChanged, this, [&] {
        if (!loader->isBusy())
            loader.reset();
    });
    loader->load(log(1));
    QTRY_VERIFY_WITH_TIMEOUT(!loader, 30s);
    QCoreApplication::processEvents();
    QVERIFY(!answered);
}

void TestNmeaLogLoader::leavesTheOwnersThreadAlone()
{
    NmeaLogLoader loader;
    QSignalSpy loaded(&loader, &NmeaLogLoader::loaded);
    const QString text = log(manyLines);
    QElapsedTimer timer;
    timer.start();
    loader.load(text);
    const auto call = timer.durationElapsed();
    QVERIFY(loaded.wait(60s));
    QCOMPARE_LT(call, timer.durationElapsed() / 2);
    QCOMPARE(loaded.constFirst().constFirst().value<QList<TrackPoint>>().size(), manyLines);
}

QTEST_GUILESS_MAIN(TestNmeaLogLoader)

#include "tst_nmealogloader.moc"
