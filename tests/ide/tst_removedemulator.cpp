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

#include <QPointer>
#include <QQuickView>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// Somebody else takes emulators away while the IDE runs: the hypervisor is one that this process shares.
class tst_RemovedEmulator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nextOpeningTellsWhatToDo();
    void nextOpeningTakesTheOther();
    void goesWhileItsPortsAreAdded();
    void anotherIsTheFirstWhenPortsHaveBeenAdded();

private:
    void define(const QString &name);
    static QStringList names();
    static bool waitForNames(const QStringList &expected);
    static void whileTheFirstRuleIsAdded(const std::function<void()> &action);

    std::unique_ptr<TestHypervisor> m_hypervisor;
    TestUtils::MessageBoxAnswerer m_user;
};

namespace {

const RegisterTest<tst_RemovedEmulator> registration;

constexpr int deadline = 30'000;

const QString noEmulatorText =
    u"The emulation management plugin cannot be used. Please, close the emulator if it is running and add Velmo OS "
    "Emulator to the list of available devices in Qt Creator settings."_s;

} // namespace

void tst_RemovedEmulator::define(const QString &name)
{
    DomainXml xml;
    xml.name = name;
    m_hypervisor->define(xml);
}

QStringList tst_RemovedEmulator::names()
{
    QStringList names;
    for (const Tarn::Emulator *emulator : Tarn::Sdk::emulators())
        names.append(emulator->name());
    return names;
}

bool tst_RemovedEmulator::waitForNames(const QStringList &expected)
{
    return QTest::qWaitFor([&expected] { return names() == expected; }, deadline);
}

// In the event loop in which the plugin waits for the rule, once the SDK knows the rule.
void tst_RemovedEmulator::whileTheFirstRuleIsAdded(const std::function<void()> &action)
{
    QTimer::singleShot(0, qApp, [action] {
        const Tarn::VirtualMachine *machine = Tarn::Sdk::emulators().constFirst()->virtualMachine();
        if (QTest::qWaitFor([machine] { return machine->hasPortForwarding(5454); }, deadline))
            action();
    });
}

void tst_RemovedEmulator::init()
{
    m_hypervisor = std::make_unique<TestHypervisor>();
}

void tst_RemovedEmulator::cleanup()
{
    QCOMPARE(m_user.unanswered(), 0);
    m_user.forget();
    QVERIFY(!view()->isVisible());
    m_hypervisor.reset();
    QVERIFY(waitForNames({}));
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

    m_hypervisor->kill(u"a-phone"_s);
    m_hypervisor->undefine(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList(), deadline);
    m_user.click(QMessageBox::Ok);
    openView();
    QCOMPARE(m_user.seen().size(), 1);
    QCOMPARE(m_user.seen().constFirst().text, noEmulatorText);
    QCOMPARE(m_user.seen().constFirst().buttons, QMessageBox::Ok);
}

void tst_RemovedEmulator::nextOpeningTakesTheOther()
{
    define(u"a-phone"_s);
    define(u"b-tablet"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), (QStringList{u"a-phone"_s, u"b-tablet"_s}), deadline);
    m_hypervisor->undefine(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList{u"b-tablet"_s}, deadline);

    openView();
    QCOMPARE(m_user.seen().size(), 0);
    const Tarn::VirtualMachine *machine = Tarn::Sdk::emulators().constFirst()->virtualMachine();
    QVERIFY(machine->hasPortForwarding(5454));
    QVERIFY(machine->hasPortForwarding(34343));
    QTRY_COMPARE_WITH_TIMEOUT(machine->state(), Tarn::VirtualMachine::Running, deadline);
}

void tst_RemovedEmulator::goesWhileItsPortsAreAdded()
{
    define(u"a-phone"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList{u"a-phone"_s}, deadline);
    bool isGone = false;
    whileTheFirstRuleIsAdded([this, &isGone] {
        const QPointer emulator = Tarn::Sdk::emulators().constFirst();
        m_hypervisor->undefine(u"a-phone"_s);
        isGone = QTest::qWaitFor([&emulator] { return !emulator; }, deadline);
    });
    m_user.click(QMessageBox::Ok);
    openView();
    QVERIFY(isGone);
    QCOMPARE(m_user.seen().size(), 1);
    QCOMPARE(m_user.seen().constFirst().text, noEmulatorText);
}

void tst_RemovedEmulator::anotherIsTheFirstWhenPortsHaveBeenAdded()
{
    define(u"b-tablet"_s);
    QTRY_COMPARE_WITH_TIMEOUT(names(), QStringList{u"b-tablet"_s}, deadline);
    const QStringList both{u"a-phone"_s, u"b-tablet"_s};
    bool isAdded = false;
    whileTheFirstRuleIsAdded([&] {
        define(u"a-phone"_s);
        isAdded = waitForNames(both);
    });
    openView();
    QVERIFY(isAdded);
    QCOMPARE(m_user.seen().size(), 0);
    const Tarn::VirtualMachine *phone = Tarn::Sdk::emulators().at(0)->virtualMachine();
    const Tarn::VirtualMachine *tablet = Tarn::Sdk::emulators().at(1)->virtualMachine();
    QVERIFY(phone->hasPortForwarding(5454));
    QVERIFY(phone->hasPortForwarding(34343));
    QTRY_COMPARE_WITH_TIMEOUT(phone->state(), Tarn::VirtualMachine::Running, deadline);
    QVERIFY(tablet->isOff());
}

#include "tst_removedemulator.moc"
