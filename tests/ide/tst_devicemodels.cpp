// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/signallog.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <memory>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// The device models that are installed beside the IDE, with their own files.
class tst_DeviceModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void firstOneIsShown();
    void areOffered();
    void haveTheirSensors_data();
    void haveTheirSensors();
    void haveTheirLooks_data();
    void haveTheirLooks();
    void sensorsAreToldBeforeLooks();
    void notificationShowsTheEmulatorsOwn();

private:
    std::unique_ptr<EmulatorFixture> m_fixture;
};

namespace {

const RegisterTest<tst_DeviceModels> registration;

QObject *modelConfig()
{
    return contextProperty(u"smartphone3DModelConfig"_s).value<QObject *>();
}

// Both files of a model, which are beside the IDE's executable.
void verifyShownModel(const QString &name)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString mesh = QUrl(modelConfig()->property("smartphone3DModelMeshUri").toString()).toLocalFile();
    const QString texture = QUrl(modelConfig()->property("smartphone3DModelTextureUri").toString()).toLocalFile();
    QCOMPARE(mesh, u"%1/meshes/%2.obj"_s.arg(folder, name));
    QCOMPARE(texture, u"%1/textures/%2.png"_s.arg(folder, name));
    QVERIFY(QFile::exists(mesh));
    QVERIFY(QFile::exists(texture));
}

} // namespace

void tst_DeviceModels::initTestCase()
{
    m_fixture = std::make_unique<EmulatorFixture>();
    QVERIFY(m_fixture->startServices());
    QVERIFY(m_fixture->startSsh());
    QVERIFY(m_fixture->emulator());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, 30'000);
}

// The emulator's own, before any change.
void tst_DeviceModels::firstOneIsShown()
{
    QCOMPARE(m_fixture->emulator()->deviceModel().name, u"Velmo Phone"_s);
    verifyShownModel(u"velmo-phone"_s);
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

void tst_DeviceModels::haveTheirLooks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("model");

    QTest::newRow("minimal") << u"Velmo Minimal"_s << u"velmo-minimal"_s;
    QTest::newRow("phone") << u"Velmo Phone"_s << u"velmo-phone"_s;
    QTest::newRow("tablet") << u"Velmo Tablet"_s << u"velmo-tablet"_s;
    QTest::newRow("a model without a file looks like any") << u"Known to nobody"_s << u"default"_s;
    QTest::newRow("names are compared with their letter case") << u"velmo tablet"_s << u"default"_s;
}

void tst_DeviceModels::haveTheirLooks()
{
    QFETCH(const QString, name);
    QFETCH(const QString, model);

    QSignalSpy changed(modelConfig(), SIGNAL(smartphone3DModelConfigChanged()));
    QSignalSpy meshChanged(modelConfig(), SIGNAL(smartphone3DModelMeshUriChanged()));
    QSignalSpy textureChanged(modelConfig(), SIGNAL(smartphone3DModelTextureUriChanged()));
    Q_EMIT m_fixture->emulator()->deviceModelNameChanged(name);
    verifyShownModel(model);
    // Once for each of the SDK's notifications so far, as the sensors are.
    const qsizetype times = changed.size();
    QCOMPARE_GT(times, 0);
    Q_EMIT m_fixture->emulator()->deviceModelNameChanged(name);
    QCOMPARE(changed.size(), 2 * times);
    QCOMPARE(meshChanged.size(), 0);
    QCOMPARE(textureChanged.size(), 0);
}

void tst_DeviceModels::sensorsAreToldBeforeLooks()
{
    TestUtils::SignalLog log;
    log.watch(sensorsManager(), u"sensors"_s);
    log.watch(modelConfig(), u"looks"_s);
    Q_EMIT m_fixture->emulator()->deviceModelNameChanged(u"Known to nobody"_s);

    const QStringList once{u"sensors.sensorsAvailabilityChanged"_s, u"looks.smartphone3DModelConfigChanged"_s};
    QStringList entries;
    for (const QString &entry : log.entries()) {
        if (once.contains(entry))
            entries.append(entry);
    }
    QStringList expected;
    while (expected.size() < entries.size())
        expected += once;
    QVERIFY(!entries.isEmpty());
    QCOMPARE(entries, expected);
}

// The last of all: each notification lets every later change be applied once more.
void tst_DeviceModels::notificationShowsTheEmulatorsOwn()
{
    Q_EMIT m_fixture->emulator()->deviceModelNameChanged(u"Velmo Tablet"_s);
    verifyShownModel(u"velmo-tablet"_s);
    Q_EMIT Tarn::Sdk::instance()->deviceModelsChanged();
    verifyShownModel(u"velmo-phone"_s);
}

#include "tst_devicemodels.moc"
