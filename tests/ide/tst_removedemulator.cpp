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

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// Somebody else takes emulators away while the IDE runs: the hypervisor is one that this process shares.
class tst_RemovedEmulator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void nextOpeningTellsWhatToDo();
    void nextOpeningTakesTheOther();

private:
    void define(const QString &name);
    static QStringList names();

    TestHypervisor m_hypervisor;
    TestUtils::MessageBoxAnswerer m_user;
};

namespace {

const RegisterTest<tst_RemovedEmulator> registration;

constexpr int deadline = 30'000;

} // namespace

void tst_RemovedEmulator::define(const QString &name)
{
    DomainXml xml;
    xml.name = name;
    m_hypervisor.define(xml);
}

QStringList tst_RemovedEmulator::names()
{
    QStringList names;
    for (const Tarn::Emulator *emulator : Tarn::Sdk::emulators())
        names.append(emulator->name());
    return names;
}

void tst_RemovedEmulator::cleanup()
{
    QCOMPARE(m_user.unanswered(), 0);
    QVERIFY(!view()->isVisible());
}

void tst_RemovedEmulator::nextOpeningTellsWhatToDo()
{
    define(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList{u"a-phone"_s}, deadline);
    openView();
    QCOMPARE(m_user.seen().size(), 0);
    const Tarn::VirtualMachine *machine = Tarn::Sdk::emulators().constFirst()->virtualMachine();
    QVERIFY(machine->hasPortForwarding(5454));
    QTRY_COMPARE_WITH_TIMEOUT(machine->state(), Tarn::VirtualMachine::Running, deadline);

    m_hypervisor.kill(u"a-phone"_s);
    m_hypervisor.undefine(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList(), deadline);
    m_user.click(QMessageBox::Ok);
    openView();
    QCOMPARE(m_user.seen().size(), 1);
    QCOMPARE(
        m_user.seen().constFirst().text,
        u"The emulation management plugin cannot be used. Please, close the emulator if it is running and add Velmo OS "
        "Emulator to the list of available devices in Qt Creator settings."_s);
    QCOMPARE(m_user.seen().constFirst().buttons, QMessageBox::Ok);
    m_user.forget();
}

void tst_RemovedEmulator::nextOpeningTakesTheOther()
{
    define(u"a-phone"_s);
    define(u"b-tablet"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), (QStringList{u"a-phone"_s, u"b-tablet"_s}), deadline);
    m_hypervisor.undefine(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList{u"b-tablet"_s}, deadline);

    openView();
    QCOMPARE(m_user.seen().size(), 0);
    const Tarn::VirtualMachine *machine = Tarn::Sdk::emulators().constFirst()->virtualMachine();
    QVERIFY(machine->hasPortForwarding(5454));
    QVERIFY(machine->hasPortForwarding(34343));
    QTRY_COMPARE_WITH_TIMEOUT(machine->state(), Tarn::VirtualMachine::Running, deadline);
}

#include "tst_removedemulator.moc"
