// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"

#include <tarn/emulator.h>

#include <QCoreApplication>
#include <QDir>
#include <QQuickView>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// Which sensors are offered for which device model, with the files of data/configs beside the IDE's executable.
class tst_SensorsConfigurations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void deviceModels_data();
    void deviceModels();
    void laterFileOfTheSameNameWins();
    void unnamedSensorsStayAsTheyWere();
    void unknownSensorIsAddedToBothMaps();
    void nothingIsLoggedAboutTheFiles();

private:
    QStringList framesOfModel(const QString &name) { return m_fixture->framesOfDeviceModel(name); }
    QVariantMap availability() const { return sensorsManager()->property("sensorsAvailability").toMap(); }

    std::unique_ptr<EmulatorFixture> m_fixture;
};

namespace {

const RegisterTest<tst_SensorsConfigurations> registration;

QString enabling(const QString &sensor)
{
    return sensorFrame(u"enableSensor"_s, u"string:"_s + sensor);
}

QString disabling(const QString &sensor)
{
    return sensorFrame(u"disableSensor"_s, u"string:"_s + sensor);
}

} // namespace

void tst_SensorsConfigurations::initTestCase()
{
    m_fixture = std::make_unique<EmulatorFixture>();
    QVERIFY(m_fixture->startServices());
    QVERIFY(m_fixture->startSsh());
    QVERIFY(m_fixture->emulator());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, 30'000);
}

void tst_SensorsConfigurations::deviceModels_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("frames");

    const QStringList everything = framesForAllSensors(u"enableSensor"_s);
    QTest::newRow("a file's sensors are applied in ascending order, and no others")
        << u"Partial"_s << QStringList{enabling(u"accelerometer"_s), enabling(u"tap"_s)};
    QTest::newRow("empty, 0 and false in any letter case are no; other texts are yes")
        << u"Texts"_s
        << QStringList{
               enabling(u"accelerometer"_s),
               disabling(u"als"_s),
               disabling(u"compass"_s),
               disabling(u"gyroscope"_s),
               disabling(u"magnetometer"_s),
               enabling(u"orientation"_s),
               enabling(u"proximity"_s),
               enabling(u"tap"_s),
           };
    QTest::newRow("a model without a file has everything") << u"Velmo Phone"_s << everything;
    QTest::newRow("a file without sensors is as good as none") << u"No sensors"_s << everything;
    QTest::newRow("a file without a name is the one of the empty name")
        << QString() << QStringList{disabling(u"proximity"_s)};
    // The section's name lacks its end, so the line is its name; what follows the next section's line is not its own.
    QTest::newRow("a malformed file gives what can be read from it")
        << u"Malformed"_s << QStringList{disabling(u"als"_s)};
    QTest::newRow("a key without a name is not read") << u"Empty key"_s << QStringList{disabling(u"als"_s)};
    QTest::newRow("a comma is part of a name") << u"Phone, small"_s << QStringList{disabling(u"als"_s)};
    QTest::newRow("names are compared with their letter case") << u"partial"_s << everything;
    QTest::newRow("other files are not read") << u"Not an INI file"_s << everything;
    QTest::newRow("folders are not searched") << u"In a folder"_s << everything;
}

void tst_SensorsConfigurations::deviceModels()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, frames);

    QCOMPARE(framesOfModel(name), frames);
    QCOMPARE(framesOfModel(name), frames); // looking an unknown name up does not change its meaning
}

void tst_SensorsConfigurations::laterFileOfTheSameNameWins()
{
    const QStringList listed =
        QDir(QCoreApplication::applicationDirPath()).entryList({u"*.ini"_s}, QDir::Files, QDir::Unsorted);
    QVERIFY(listed.contains("twice-a.ini"_L1) && listed.contains("twice-b.ini"_L1));
    const bool aWins = listed.indexOf("twice-a.ini"_L1) > listed.indexOf("twice-b.ini"_L1);
    QCOMPARE(framesOfModel(u"Twice"_s), QStringList{aWins ? enabling(u"als"_s) : disabling(u"als"_s)});
}

void tst_SensorsConfigurations::unnamedSensorsStayAsTheyWere()
{
    framesOfModel(u"Texts"_s);
    QCOMPARE(availability().value(u"als"_s), QVariant(false));
    framesOfModel(u"Partial"_s);
    QCOMPARE(availability().value(u"als"_s), QVariant(false));
    QCOMPARE(availability().value(u"tap"_s), QVariant(true));
    framesOfModel(u"Unknown"_s);
    for (const QString &sensor : allSensors)
        QCOMPARE(availability().value(sensor), QVariant(true));
}

void tst_SensorsConfigurations::unknownSensorIsAddedToBothMaps()
{
    const QStringList expected{enabling(u"als"_s), enabling(u"thermometer"_s)};
    QCOMPARE(framesOfModel(u"Unknown sensor"_s), expected);
    QCOMPARE(availability().value(u"thermometer"_s), QVariant(true));
    QCOMPARE(sensorsManager()->property("sensorsEnabledStates").toMap().value(u"thermometer"_s), QVariant(true));
}

void tst_SensorsConfigurations::nothingIsLoggedAboutTheFiles()
{
    for (const Message &message : recordedMessages()) {
        QVERIFY2(!message.text.contains(".ini"_L1), qUtf8Printable(message.text));
        QVERIFY2(!message.text.contains("Malformed"_L1), qUtf8Printable(message.text));
        QVERIFY2(!message.text.contains("QSettings::"_L1), qUtf8Printable(message.text));
    }
}

#include "tst_sensorsconfigurations.moc"
