// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/icore.h>
#include <tarn/sdk.h>

#include <QMainWindow>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using TestUtils::MessageBoxAnswerer;

namespace {

constexpr int deadline = 30'000;

QObject *gpsManager()
{
    return contextProperty(u"gpsEmulationManager"_s).value<QObject *>();
}

} // namespace

/// A connection that ends while a track is loaded.
class tst_ConnectionLost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aLoadedTrackIsMissed();
    void severalSetsOfConnectionsShowOneMessage();
    void theConnectionComesBackWhileTheMessageShows();

private:
    void dropAndWaitForTheMessage();

    std::unique_ptr<EmulatorFixture> m_fixture;
    MessageBoxAnswerer m_user;
};

namespace {
const RegisterTest<tst_ConnectionLost> registration;
}

void tst_ConnectionLost::init()
{
    m_fixture = std::make_unique<EmulatorFixture>();
    QVERIFY(m_fixture->startServices());
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);

    // The player is set up, too.
    QVERIFY(QMetaObject::invokeMethod(gpsManager(), "setTrackLooped", true));
    QVERIFY(QMetaObject::invokeMethod(gpsManager(), "setTrackSpeed", 3));
    QVERIFY(QMetaObject::invokeMethod(gpsManager(), "setPosition", 1.5, -2.5, 3.5));
    const QVariantMap point{{u"latitude"_s, 1}, {u"longitude"_s, 2}, {u"altitude"_s, 3}, {u"interval"_s, 0}};
    QVERIFY(QMetaObject::invokeMethod(gpsManager(), "loadTrack", QVariantList{point}));
    QVERIFY(gpsManager()->property("trackLoaded").toBool());
}

void tst_ConnectionLost::cleanup()
{
    QCOMPARE(m_user.unanswered(), 0);
    m_user.forget();
    m_fixture.reset();
}

void tst_ConnectionLost::dropAndWaitForTheMessage()
{
    m_user.click(QMessageBox::Ok);
    m_fixture->stopServices();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
}

void tst_ConnectionLost::aLoadedTrackIsMissed()
{
    QSignalSpy replies(gpsManager(), SIGNAL(replyFromEmulatorReceived(QString)));
    dropAndWaitForTheMessage();

    const auto &box = m_user.seen().constFirst();
    QCOMPARE(box.title, u"Emulation management plugin"_s);
    QCOMPARE(
        box.text,
        u"Emulator connection is lost. Please, run velmo-phone if it is needed and load the GPS-track again."_s);
    QCOMPARE(box.informativeText, QString());
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QCOMPARE(box.parent, Core::ICore::mainWindow());
    QVERIFY(!gpsManager()->property("trackLoaded").toBool());
    // What is still on its way from the service comes before.
    QCOMPARE_GE(replies.size(), 1);
    QCOMPARE(replies.constLast(), QVariantList{QString()});
    QVERIFY(view()->isVisible()); // the machine runs on

    // What the user had set is set again; the track is not.
    QVERIFY(m_fixture->startServices());
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    const QStringList setup{
        gpsFrame(u"stopTrack"_s),
        gpsFrame(u"setTrackLooped"_s, u"boolean:1"_s),
        gpsFrame(u"setTrackIntervalMode"_s, u"boolean:0"_s),
        gpsFrame(u"setTrackSpeed"_s, u"int32:3"_s),
        gpsFrame(u"setPosition"_s, u"double:1.5000000 double:-2.5000000 double:3.50"_s),
    };
    QCOMPARE(m_fixture->frames().first(setup.size()), setup);
    QCOMPARE(m_fixture->frames().last(setup.size()), setup);

    // Without a track the next drop is silent.
    m_fixture->stopServices();
    QVERIFY(m_fixture->startServices());
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    QCOMPARE(m_user.seen().size(), 1);
}

// The first run of the handler takes the track from the others.
void tst_ConnectionLost::severalSetsOfConnectionsShowOneMessage()
{
    Q_EMIT Tarn::Sdk::instance()->deviceModelsChanged();
    Q_EMIT Tarn::Sdk::instance()->emulatorAdded(0);
    dropAndWaitForTheMessage();
    QVERIFY(m_fixture->startServices());
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    QCOMPARE(m_user.seen().size(), 1);
}

void tst_ConnectionLost::theConnectionComesBackWhileTheMessageShows()
{
    std::optional<bool> isBack;
    m_user.answer([&](QMessageBox *box) {
        isBack = m_fixture->startServices()
            && QTest::qWaitFor([&] { return m_fixture->frames().size() == connectionFrameCount; }, deadline);
        box->accept();
    });
    m_fixture->stopServices();
    QTRY_VERIFY_WITH_TIMEOUT(isBack.has_value(), 2 * deadline);
    QVERIFY(*isBack);
}

#include "tst_connectionlost.moc"
