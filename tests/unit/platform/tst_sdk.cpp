// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "testhypervisor.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace Tarn;

namespace {

ConnectionSettings testSettings()
{
    return {.uri = QString::fromLatin1(TestHypervisor::uri), .embedRoot = {}, .deviceModelDirectory = {}};
}

QStringList names()
{
    QStringList names;
    for (const Emulator *emulator : Sdk::emulators())
        names.append(emulator->name());
    return names;
}

QStringList models(const Sdk &sdk)
{
    QStringList names;
    for (const DeviceModel &model : sdk.deviceModels())
        names.append(model.name);
    return names;
}

} // namespace

class tst_Sdk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereIsOneOrNone()
    {
        QVERIFY(!Sdk::instance());
        QVERIFY(Sdk::emulators().isEmpty());
        {
            const Sdk sdk(testSettings());
            QCOMPARE(Sdk::instance(), &sdk);
        }
        QVERIFY(!Sdk::instance());
    }

    void namesTheSystem()
    {
        QCOMPARE(Sdk::osVariant(), u"Velmo OS"_s);
        QCOMPARE(Sdk::osVariant(TextStyle::NonBreaking), u"Velmo\u00a0OS"_s);
    }

    void listsEmulatorsInNameOrder()
    {
        TestHypervisor hypervisor;
        for (const QString &name : {u"charlie"_s, u"alpha"_s, u"bravo"_s})
            hypervisor.define({.name = name});
        hypervisor.define({.name = u"aaa"_s, .metadata = {}}); // no emulator

        Sdk sdk(testSettings());
        QList<int> indices;
        connect(&sdk, &Sdk::emulatorAdded, &sdk, [&](int index) {
            indices.append(index);
            QVERIFY(Sdk::emulators().at(index));
            QCOMPARE(QThread::currentThread(), qApp->thread());
        });
        QSignalSpy connected(&sdk, &Sdk::connected);
        QVERIFY(Sdk::emulators().isEmpty());
        QTRY_COMPARE(names(), (QStringList{u"alpha"_s, u"bravo"_s, u"charlie"_s}));
        QCOMPARE(indices.size(), 3);
        QCOMPARE(connected.size(), 1);
        QVERIFY(sdk.isConnected());
        QCOMPARE(sdk.connectionUri(), testSettings().uri);
        QCOMPARE(sdk.connectionError(), QString());
    }

    void followsDefinitions()
    {
        TestHypervisor hypervisor;
        hypervisor.define({.name = u"bravo"_s});
        Sdk sdk(testSettings());
        QTRY_COMPARE(names(), QStringList(u"bravo"_s));

        QStringList events;
        connect(&sdk, &Sdk::emulatorAdded, &sdk, [&](int index) {
            events.append(u"added %1 of %2"_s.arg(names().at(index), names().join(u' ')));
        });
        connect(&sdk, &Sdk::aboutToRemoveEmulator, &sdk, [&](int index) {
            events.append(u"removing %1 of %2"_s.arg(names().at(index), names().join(u' ')));
        });
        connect(&sdk, &Sdk::deviceModelsChanged, &sdk, [&] { events.append(u"models %1"_s.arg(names().join(u' '))); });

        hypervisor.define({.name = u"alpha"_s});
        QTRY_COMPARE(names().size(), 2);
        QCOMPARE(std::exchange(events, {}), QStringList(u"added alpha of alpha bravo"_s));

        hypervisor.undefine(u"bravo"_s);
        QTRY_COMPARE(names(), QStringList(u"alpha"_s));
        QCOMPARE(events, (QStringList{u"removing bravo of alpha bravo"_s, u"models alpha"_s}));
    }

    void anEmulatorOutlivesTheNewsOfItsRemoval()
    {
        TestHypervisor hypervisor;
        hypervisor.define({});
        Sdk sdk(testSettings());
        QTRY_COMPARE(names().size(), 1);
        QPointer emulator = Sdk::emulators().constFirst();
        bool wasThere = false;
        connect(&sdk, &Sdk::deviceModelsChanged, &sdk, [&] { wasThere = emulator && names().isEmpty(); });
        hypervisor.undefine(u"emulator"_s);
        QTRY_VERIFY(wasThere);
        QTRY_VERIFY(!emulator);
    }

    void followsDeviceModels()
    {
        TestHypervisor hypervisor;
        hypervisor.define({.name = u"a"_s, .metadata = DomainXml::defaultMetadata(u"Velmo One"_s)});
        Sdk sdk(testSettings());
        QTRY_COMPARE(names().size(), 1);
        QCOMPARE(models(sdk), QStringList(u"Velmo One"_s));
        Emulator *emulator = Sdk::emulators().constFirst();
        QCOMPARE(emulator->deviceModel().name, u"Velmo One"_s);

        QSignalSpy renamed(emulator, &Emulator::deviceModelNameChanged);
        QSignalSpy changed(&sdk, &Sdk::deviceModelsChanged);
        hypervisor.setMetadata(
            u"a"_s, u"<emulator><deviceModel name='Velmo Two'/><ssh privateKey='/keys/emulator'/></emulator>"_s);
        QVERIFY(renamed.wait());
        QCOMPARE(renamed.constFirst().constFirst().toString(), u"Velmo Two"_s);
        QTRY_COMPARE(changed.size(), 1);
        QCOMPARE(models(sdk), QStringList(u"Velmo Two"_s));

        emulator->setDeviceModel(u"Velmo <3>"_s);
        QVERIFY(renamed.wait());
        QCOMPARE(emulator->deviceModel().name, u"Velmo <3>"_s);
        QVERIFY(hypervisor.definition(u"a"_s).contains("/keys/emulator"_L1));
    }

    void knowsInstalledDeviceModels()
    {
        const QTemporaryDir folder;
        const auto write = [&](const QString &fileName, const QByteArray &content) {
            QFile file(folder.filePath(fileName));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        };
        write(u"one.ini"_s, "device-name=Velmo Wide\n[sensors]\nals=true\n");
        write(u"two.ini"_s, "device-name=Velmo One\n");
        write(u"three.ini"_s, "[sensors]\nals=true\n");
        write(u"commas.ini"_s, "device-name=Velmo Phone, small, blue\n[sensors]\nals=true\n");
        write(u"quoted.ini"_s, "device-name=\"Velmo Phone, large\"\n");
        write(u"four.ini"_s, QByteArray("\0\xff]", 3));
        TestHypervisor hypervisor;
        hypervisor.define({});
        ConnectionSettings settings = testSettings();
        settings.deviceModelDirectory = folder.path();
        Sdk sdk(settings);
        QSignalSpy changed(&sdk, &Sdk::deviceModelsChanged);
        QTRY_COMPARE(names().size(), 1);
        QCOMPARE(
            models(sdk),
            (QStringList{u"Velmo One"_s, u"Velmo Phone, large"_s, u"Velmo Phone, small, blue"_s, u"Velmo Wide"_s}));
        QCOMPARE(changed.size(), 0);
    }

    void toleratesAMalformedDefinition()
    {
        TestHypervisor hypervisor;
        hypervisor.define({.name = u"odd"_s, .metadata = u"<v:emulator xmlns:v='urn:velmo:emulator:1'/>"_s});
        QTest::ignoreMessage(QtWarningMsg, "The definition of odd names no device model");
        QTest::ignoreMessage(QtWarningMsg, "The definition of odd names no private key for SSH");
        const Sdk sdk(testSettings());
        QTRY_COMPARE(names(), QStringList(u"odd"_s));
        QCOMPARE(Sdk::emulators().constFirst()->deviceModel().name, QString());
    }

    void listsEmulatorsWhileAReceiverWaits()
    {
        TestHypervisor hypervisor;
        hypervisor.define({.name = u"a"_s});
        Sdk sdk(testSettings());
        bool nested = false;
        connect(&sdk, &Sdk::emulatorAdded, &sdk, [&] {
            if (std::exchange(nested, true))
                return;
            hypervisor.define({.name = u"b"_s});
            hypervisor.undefine(u"a"_s);
            QTRY_COMPARE(names(), QStringList(u"b"_s)); // a loop within the signal
        });
        QTRY_COMPARE(names(), QStringList(u"b"_s));
    }

    void saysWhyThereIsNoConnection()
    {
        ConnectionSettings settings;
        settings.uri = u"test:///no/such/file.xml"_s;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"There is no connection to the hypervisor"_s));
        Sdk sdk(settings);
        QSignalSpy failed(&sdk, &Sdk::connectionFailed);
        QVERIFY(failed.wait());
        QVERIFY(!sdk.isConnected());
        QVERIFY(sdk.connectionError().startsWith(
            "There is no connection to the hypervisor \"test:///no/such/file.xml\": "_L1));

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"There is no connection to the hypervisor"_s));
        sdk.reconnect();
        QVERIFY(failed.wait());
        QCOMPARE(failed.size(), 2);
    }

    void mayGoAtAnyMoment()
    {
        TestHypervisor hypervisor;
        hypervisor.define({});
        for (int i = 0; i < 20; ++i) {
            Sdk sdk(testSettings());
            if (i % 2)
                QTRY_COMPARE(names().size(), 1);
            if (i % 4 == 3) {
                Sdk::emulators().constFirst()->virtualMachine()->start();
                Sdk::emulators().constFirst()->virtualMachine()->kill();
            }
        }
        QVERIFY(!Sdk::instance());
    }

    void mayGoInAReceiver()
    {
        TestHypervisor hypervisor;
        hypervisor.define({.name = u"a"_s});
        hypervisor.define({.name = u"b"_s});
        auto *sdk = new Sdk(testSettings());
        connect(sdk, &Sdk::emulatorAdded, sdk, [sdk] { delete sdk; });
        QTRY_VERIFY(!Sdk::instance());
    }
};

QTEST_GUILESS_MAIN(tst_Sdk)

#include "tst_sdk.moc"
