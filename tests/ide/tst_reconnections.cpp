// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "unit/platform/testhypervisor.h"
#include "utils/messageboxanswerer.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QQuickView>
#include <QTest>

#include <memory>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using TestUtils::MessageBoxAnswerer;

/// What changes while the channel is away counts when it comes back.
class tst_Reconnections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void deviceModelsChangeMeanwhile();
    void emulatorIsReplacedMeanwhile();

private:
    void comeBack(const QStringList &sensors);

    std::unique_ptr<EmulatorFixture> m_fixture;
    MessageBoxAnswerer m_user;
};

namespace {

const RegisterTest<tst_Reconnections> registration;

constexpr int deadline = 30'000;

const QStringList tabletSensors{
    u"accelerometer"_s, u"als"_s, u"compass"_s, u"gyroscope"_s, u"magnetometer"_s, u"orientation"_s};
const QStringList minimalSensors{u"accelerometer"_s, u"orientation"_s};

DomainXml machine(const QString &deviceModel)
{
    DomainXml xml;
    xml.name = u"a-phone"_s;
    xml.metadata = uR"(<velmo:emulator xmlns:velmo="urn:velmo:emulator:1">
      <velmo:deviceModel name="%1"/>
      <velmo:ssh user="%2" privateKey="/tmp/emulator-key"/>
    </velmo:emulator>)"_s.arg(deviceModel, QString::fromLocal8Bit(getpwuid(getuid())->pw_name));
    return xml;
}

QStringList emulators()
{
    QStringList names;
    for (const Tarn::Emulator *emulator : Tarn::Sdk::emulators())
        names.append(emulator->name());
    return names;
}

} // namespace

void tst_Reconnections::init()
{
    m_fixture = std::make_unique<EmulatorFixture>();
    QVERIFY(m_fixture->startServices());
    QVERIFY(m_fixture->startSsh());
}

void tst_Reconnections::cleanup()
{
    QCOMPARE(m_user.unanswered(), 0);
    m_user.forget();
    m_fixture.reset();
}

// Starts the services again, whose sensors are all on, and waits for the whole of a connection.
void tst_Reconnections::comeBack(const QStringList &sensors)
{
    QVERIFY(m_fixture->startServices());
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    QStringList expected;
    for (const QString &sensor : allSensors) {
        const QString method = sensors.contains(sensor) ? u"enableSensor"_s : u"disableSensor"_s;
        expected.append(sensorFrame(method, u"string:"_s + sensor));
    }
    QCOMPARE(m_fixture->frames().sliced(framesOfGpsSetup().size(), expected.size()), expected);
    const QVariantMap states = sensorsManager()->property("sensorsEnabledStates").toMap();
    for (const QString &sensor : allSensors)
        QCOMPARE(states.value(sensor), QVariant(sensors.contains(sensor)));
    QCOMPARE(m_fixture->connections(), 1);
}

void tst_Reconnections::deviceModelsChangeMeanwhile()
{
    QVERIFY(m_fixture->emulator());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    const QList<std::pair<QString, QStringList>> models{
        {u"Velmo Tablet"_s, tabletSensors},
        {u"Velmo Minimal"_s, minimalSensors},
        {u"Velmo Phone"_s, allSensors},
        {u"Velmo Minimal"_s, minimalSensors},
        {u"Known to nobody"_s, allSensors},
    };
    for (const auto &[name, sensors] : models) {
        m_fixture->stopServices();
        Q_EMIT m_fixture->emulator()->deviceModelNameChanged(u"Velmo Tablet"_s); // on the way, and not for long
        Q_EMIT m_fixture->emulator()->deviceModelNameChanged(name);
        comeBack(sensors);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_Reconnections::emulatorIsReplacedMeanwhile()
{
    TestHypervisor hypervisor;
    hypervisor.define(machine(u"Velmo Phone"_s));
    QTRY_COMPARE_WITH_TIMEOUT(emulators(), QStringList{u"a-phone"_s}, deadline);
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    QObject *gps = contextProperty(u"gpsEmulationManager"_s).value<QObject *>();
    QVERIFY(QMetaObject::invokeMethod(gps, "loadTrack", QVariantList{QVariantMap()}));

    // It goes, and its connection after it: there is no name left to tell.
    hypervisor.kill(u"a-phone"_s);
    hypervisor.undefine(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(emulators(), QStringList(), deadline);
    QVERIFY(!view()->isVisible());
    m_user.click(QMessageBox::Ok);
    m_fixture->stopServices();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    QCOMPARE(
        m_user.seen().constFirst().text,
        u"Emulator connection is lost. Please, run Velmo OS if it is needed and load the GPS-track again."_s);

    // Another one takes its place, with fewer sensors. The channel finds it by itself.
    hypervisor.define(machine(u"Velmo Minimal"_s));
    QTRY_COMPARE_WITH_TIMEOUT(emulators(), QStringList{u"a-phone"_s}, deadline);
    comeBack(minimalSensors);
    if (QTest::currentTestFailed())
        return;

    // Opening the view connects anew; nothing is left of the connection before.
    openView();
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), 2 * connectionFrameCount, deadline);
    QCOMPARE(m_fixture->connections(), 2);
    QCOMPARE(m_fixture->framesOf([] {}), QStringList());
    QCOMPARE(m_user.seen().size(), 1);
}

#include "tst_reconnections.moc"
