// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QQuickItem>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// Settings of odd types and virtual machines with garbled definitions.
class tst_BadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unknownLanguageLeavesTheTextsAsTheyAre();
    void oddSettingsAreReadAsFarAsTheyGo();
    void garbledEmulatorsAreListedAndWarnedOf();
    void emulatorWithoutPortsNeverShowsTheView();
};

namespace {
const RegisterTest<tst_BadInput> registration;
}

void tst_BadInput::unknownLanguageLeavesTheTextsAsTheyAre()
{
    QCOMPARE(view()->title(), u"Emulation Management"_s);
    QCOMPARE(view()->status(), QQuickView::Ready);
    const auto isTheLine = [](const Message &message) {
        return message.text.startsWith("Failed to load translator:"_L1);
    };
    QCOMPARE(std::ranges::count_if(recordedMessages(), isTheLine), 1);
}

void tst_BadInput::oddSettingsAreReadAsFarAsTheyGo()
{
    auto *settings = view()->rootObject()->findChild<QObject *>(u"settingsManager"_s);
    QVERIFY(settings);
    bool doNotShowAgain = false;
    QVERIFY(QMetaObject::invokeMethod(
        settings, "readDoNotShowAgainResetSensorsDialog", Q_RETURN_ARG(bool, doNotShowAgain)));
    QVERIFY(doNotShowAgain); // "maybe", a text that is neither "false" nor "0"

    // Bytes that are no number, and nothing stored for the others.
    auto *accelerometer = sensorsManager()->property("accelerometer").value<QObject *>();
    QVERIFY(accelerometer->setProperty("x", 5));
    QVERIFY(accelerometer->setProperty("z", 5));
    auto *channel = contextProperty(u"remoteDBusInvokerService"_s).value<QObject *>();
    QVERIFY(QMetaObject::invokeMethod(channel, "webSocketConnected"));
    QCOMPARE(accelerometer->property("x"), QVariant(0));
    QCOMPARE(accelerometer->property("z"), QVariant(1000));
}

void tst_BadInput::garbledEmulatorsAreListedAndWarnedOf()
{
    QTRY_COMPARE_WITH_TIMEOUT(Tarn::Sdk::emulators().size(), 2, 30'000);
    const Tarn::Emulator *bare = Tarn::Sdk::emulators().at(0);
    const Tarn::Emulator *garbled = Tarn::Sdk::emulators().at(1);
    QCOMPARE(bare->name(), u"a-bare"_s);
    QCOMPARE(garbled->name(), u"b-garbled"_s);
    QCOMPARE(garbled->deviceModel().name, QString());
    QVERIFY(!garbled->virtualMachine()->hasPortForwarding(5454));
    QVERIFY(!garbled->virtualMachine()->hasPortForwarding(0));

    QStringList warnings;
    for (const Message &message : recordedMessages()) {
        if (message.type == QtWarningMsg && message.text.startsWith("The definition of "_L1))
            warnings.append(message.text.sliced(18));
    }
    const QStringList expected{
        u"a-bare names no device model"_s,
        u"a-bare names no private key for SSH"_s,
        u"a-bare forwards no port to its SSH server"_s,
        u"b-garbled names no device model"_s,
        u"b-garbled has a port forwarding without a name or with a wrong port"_s,
        u"b-garbled forwards no port to its SSH server"_s,
    };
    QCOMPARE(warnings, expected);
}

// Rules cannot be added to a machine without a suitable network, which is not noticed at once: the machine is started,
// and the next attempt says what is wrong.
void tst_BadInput::emulatorWithoutPortsNeverShowsTheView()
{
    QTRY_VERIFY_WITH_TIMEOUT(!Tarn::Sdk::emulators().isEmpty(), 30'000);
    const Tarn::Emulator *emulator = Tarn::Sdk::emulators().constFirst();
    TestUtils::MessageBoxAnswerer user;

    openView();
    QTRY_VERIFY_WITH_TIMEOUT(!emulator->virtualMachine()->isOff(), 30'000);
    QCOMPARE(user.seen().size(), 0);
    QVERIFY(!view()->isVisible());

    user.click(QMessageBox::Ok);
    openView();
    QCOMPARE(user.seen().size(), 1);
    QCOMPARE(
        user.seen().constFirst().text,
        u"The emulation management plugin cannot be used. Please, close %1 and try to use "
        "'Emulation management\u2026' again."_s.arg(emulator->name()));
    QVERIFY(!view()->isVisible());
}

#include "tst_badinput.moc"
