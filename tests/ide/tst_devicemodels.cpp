// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"

#include <tarn/sdk.h>

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// The device models that are installed beside the IDE, with their own files.
class tst_DeviceModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void areOffered();
    void haveTheirSensors_data();
    void haveTheirSensors();

private:
    std::unique_ptr<EmulatorFixture> m_fixture;
};

namespace {
const RegisterTest<tst_DeviceModels> registration;
}

void tst_DeviceModels::initTestCase()
{
    m_fixture = std::make_unique<EmulatorFixture>();
    QVERIFY(m_fixture->startServices());
    QVERIFY(m_fixture->startSsh());
    QVERIFY(m_fixture->emulator());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, 30'000);
}

void tst_DeviceModels::areOffered()
{
    QStringList names;
    for (const Tarn::DeviceModel &model : Tarn::Sdk::instance()->deviceModels())
        names.append(model.name);
    const QStringList expected{u"Velmo Minimal"_s, u"Velmo Phone"_s, u"Velmo Tablet"_s};
    QCOMPARE(names, expected);
}

void tst_DeviceModels::haveTheirSensors_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("available");

    QTest::newRow("a phone has everything") << u"Velmo Phone"_s << allSensors;
    QTest::newRow("a tablet knows neither nearness nor taps")
        << u"Velmo Tablet"_s
        << QStringList{u"accelerometer"_s, u"als"_s, u"compass"_s, u"gyroscope"_s, u"magnetometer"_s, u"orientation"_s};
    QTest::newRow("the least is to know which way is up")
        << u"Velmo Minimal"_s << QStringList{u"accelerometer"_s, u"orientation"_s};
}

void tst_DeviceModels::haveTheirSensors()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, available);

    QStringList frames;
    for (const QString &sensor : allSensors) {
        frames.append(
            sensorFrame(available.contains(sensor) ? u"enableSensor"_s : u"disableSensor"_s, u"string:"_s + sensor));
    }
    m_fixture->framesOfDeviceModel(u"Known to nobody"_s);
    QCOMPARE(m_fixture->framesOfDeviceModel(name), frames);

    const QVariantMap availability = sensorsManager()->property("sensorsAvailability").toMap();
    QCOMPARE(availability.keys(), allSensors);
    for (const QString &sensor : allSensors)
        QCOMPARE(availability.value(sensor), QVariant(available.contains(sensor)));

    // A model without a file has everything as well, but all of it at once.
    QSignalSpy changed(sensorsManager(), SIGNAL(sensorsAvailabilityChanged()));
    const qsizetype atOnce = (m_fixture->framesOfDeviceModel(u"Known to nobody"_s), changed.size());
    changed.clear();
    m_fixture->framesOfDeviceModel(name);
    QCOMPARE(changed.size(), atOnce * allSensors.size());
}

#include "tst_devicemodels.moc"
