// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

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
