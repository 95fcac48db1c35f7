// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "geoclue-emulation-service/trackplayer.h"

#include <QTest>

using namespace Emulator;

namespace {

// Points at latitudes 0, 1, 2, ... with the given intervals.
QList<TrackPlayer::Point> track(const QList<double> &intervals)
{
    QList<TrackPlayer::Point> points;
    for (const double interval : intervals)
        points.append({.latitude = double(points.size()), .longitude = 0, .altitude = 0, .interval = interval});
    return points;
}

} // namespace

class tst_TrackPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsStoppedAndEmpty();
    void waitsTheNextPointsInterval();
    void defaultIntervalModeIgnoresIntervals();
    void speedDividesWaits();
    void speedChangeInTheMiddleOfAWait();
    void stopsAtTheLastPoint();
    void startsAgainFromTheFirstPointWhenFinished();
    void loopedTrackWrapsAfterTwoSecondsAtAnySpeed();
    void loopedTrackOfOnePoint();
    void trackOfOnePointIsOverAtOnce();
    void pauseKeepsTheWait();
    void stopGoesBack();
    void jumpWaitsAnew();
    void jumpToTheLastPointEndsPlaying();
    void loadStops();
    void zeroAndNegativeIntervalsAreSkippedAtOnce();
    void catchesUpAfterALongSleep();
    void nothingHappensWithoutATrack();
};

void tst_TrackPlayer::startsStoppedAndEmpty()
{
    const TrackPlayer player;
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
    QCOMPARE(player.size(), 0);
    QCOMPARE(player.index(), 0);
    QCOMPARE(player.speed(), 1);
    QVERIFY(!player.isLooped());
    QVERIFY(!player.usesDefaultInterval());
    QVERIFY(!player.untilNextPoint());
}

void tst_TrackPlayer::waitsTheNextPointsInterval()
{
    TrackPlayer player;
    player.load(track({500, 1000, 300}));
    player.start(10'000);
    QCOMPARE(player.index(), 0);
    QCOMPARE(*player.untilNextPoint(), 1000.0);
    player.advance(10'999);
    QCOMPARE(player.index(), 0);
    player.advance(11'000);
    QCOMPARE(player.index(), 1);
    QCOMPARE(player.point().latitude, 1.0);
    QCOMPARE(*player.untilNextPoint(), 300.0);
}

void tst_TrackPlayer::defaultIntervalModeIgnoresIntervals()
{
    TrackPlayer player;
    player.load(track({0, 100, 100}));
    player.setUsesDefaultInterval(true, 0);
    player.setSpeed(2, 0);
    player.start(0);
    QCOMPARE(*player.untilNextPoint(), 1000.0);
}

void tst_TrackPlayer::speedDividesWaits()
{
    TrackPlayer player;
    player.load(track({0, 1000, 1000}));
    player.setSpeed(5, 0);
    player.start(0);
    QCOMPARE(*player.untilNextPoint(), 200.0);
    player.advance(200);
    QCOMPARE(player.index(), 1);
}

void tst_TrackPlayer::speedChangeInTheMiddleOfAWait()
{
    TrackPlayer player;
    player.load(track({0, 1000, 1000}));
    player.start(0);
    player.setSpeed(4, 600);
    QCOMPARE(*player.untilNextPoint(), 100.0);
    player.advance(700);
    QCOMPARE(player.index(), 1);
}

void tst_TrackPlayer::stopsAtTheLastPoint()
{
    TrackPlayer player;
    player.load(track({0, 100}));
    player.start(0);
    player.advance(100);
    QCOMPARE(player.index(), 1);
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
    QVERIFY(!player.untilNextPoint());
}

void tst_TrackPlayer::startsAgainFromTheFirstPointWhenFinished()
{
    TrackPlayer player;
    player.load(track({0, 100}));
    player.start(0);
    player.advance(100);
    player.start(5000);
    QCOMPARE(player.index(), 0);
    QCOMPARE(player.state(), TrackPlayer::State::Playing);
    QCOMPARE(*player.untilNextPoint(), 100.0);
}

void tst_TrackPlayer::loopedTrackWrapsAfterTwoSecondsAtAnySpeed()
{
    TrackPlayer player;
    player.load(track({0, 500}));
    player.setLooped(true, 0);
    player.setSpeed(5, 0);
    player.start(0);
    player.advance(100);
    QCOMPARE(player.index(), 1);
    QCOMPARE(*player.untilNextPoint(), 2000.0);
    player.advance(2099);
    QCOMPARE(player.index(), 1);
    player.advance(2100);
    QCOMPARE(player.index(), 0);
    QCOMPARE(player.state(), TrackPlayer::State::Playing);
}

void tst_TrackPlayer::loopedTrackOfOnePoint()
{
    TrackPlayer player;
    player.load(track({0}));
    player.setLooped(true, 0);
    player.start(0);
    player.advance(1'000'000);
    QCOMPARE(player.index(), 0);
    QCOMPARE(player.state(), TrackPlayer::State::Playing);
}

void tst_TrackPlayer::trackOfOnePointIsOverAtOnce()
{
    TrackPlayer player;
    player.load(track({0}));
    player.start(0);
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
    QCOMPARE(player.index(), 0);
}

void tst_TrackPlayer::pauseKeepsTheWait()
{
    TrackPlayer player;
    player.load(track({0, 1000, 1000}));
    player.start(0);
    player.pause(400);
    QCOMPARE(player.state(), TrackPlayer::State::Paused);
    QVERIFY(!player.untilNextPoint());
    player.advance(100'000);
    QCOMPARE(player.index(), 0);
    player.start(100'000);
    QCOMPARE(*player.untilNextPoint(), 600.0);
}

void tst_TrackPlayer::stopGoesBack()
{
    TrackPlayer player;
    player.load(track({0, 100, 100}));
    player.start(0);
    player.advance(150);
    QCOMPARE(player.index(), 1);
    player.stop();
    QCOMPARE(player.index(), 0);
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
    player.start(1000);
    QCOMPARE(*player.untilNextPoint(), 100.0);
}

void tst_TrackPlayer::jumpWaitsAnew()
{
    TrackPlayer player;
    player.load(track({0, 1000, 1000, 1000}));
    player.start(0);
    player.goTo(1, 900);
    QCOMPARE(player.index(), 1);
    QCOMPARE(player.state(), TrackPlayer::State::Playing);
    QCOMPARE(*player.untilNextPoint(), 1000.0);
    player.pause(1000);
    player.goTo(2, 1100);
    QCOMPARE(player.index(), 2);
    QCOMPARE(player.state(), TrackPlayer::State::Paused);
}

void tst_TrackPlayer::jumpToTheLastPointEndsPlaying()
{
    TrackPlayer player;
    player.load(track({0, 1000, 1000}));
    player.start(0);
    player.goTo(2, 10);
    QCOMPARE(player.index(), 2);
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
}

void tst_TrackPlayer::loadStops()
{
    TrackPlayer player;
    player.load(track({0, 100, 100}));
    player.start(0);
    player.advance(150);
    player.load(track({0, 100}));
    QCOMPARE(player.index(), 0);
    QCOMPARE(player.size(), 2);
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
}

void tst_TrackPlayer::zeroAndNegativeIntervalsAreSkippedAtOnce()
{
    TrackPlayer player;
    player.load(track({0, 0, -50, 100}));
    player.start(0);
    QCOMPARE(player.index(), 2);
    QCOMPARE(*player.untilNextPoint(), 100.0);
}

void tst_TrackPlayer::catchesUpAfterALongSleep()
{
    TrackPlayer player;
    player.load(track({0, 1000, 1000}));
    player.setLooped(true, 0);
    player.start(0);
    // A round takes 4 s: 1 + 1 + 2.
    player.advance(4000 * 1000 + 1500);
    QCOMPARE(player.index(), 1);
    QCOMPARE(*player.untilNextPoint(), 500.0);
}

void tst_TrackPlayer::nothingHappensWithoutATrack()
{
    TrackPlayer player;
    player.start(0);
    player.advance(1000);
    player.pause(1000);
    QCOMPARE(player.state(), TrackPlayer::State::Stopped);
    QVERIFY(!player.untilNextPoint());
}

QTEST_GUILESS_MAIN(tst_TrackPlayer)

#include "tst_trackplayer.moc"
