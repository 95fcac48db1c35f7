// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/icore.h>
#include <extensionsystem/iplugin.h>
#include <qssh/sshremoteprocessrunner.h>
#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using TestUtils::MessageBoxAnswerer;
using TestUtils::SeenMessageBox;

namespace {

constexpr int deadline = 30'000;

const QString header = u"Packages is not installed: \n"_s;

QStringList framesOfDefaultValues()
{
    return {
        sensorFrame(u"setAccelerometerValues"_s, u"int32:0 int32:0 int32:1000"_s),
        sensorFrame(u"setMagnetometerValues"_s, u"double:4.3e-05 double:0 double:0"_s),
        sensorFrame(u"setMagnetometerCalibrationLevel"_s, u"int32:0"_s),
        sensorFrame(u"setGyroscopeValues"_s, u"double:0 double:0 double:1.14592"_s),
        sensorFrame(u"setAlsValue"_s, u"int32:100"_s),
        sensorFrame(u"setProximitySensorValue"_s, u"int32:5"_s),
        sensorFrame(u"setTapSensorValue"_s, u"int32:-1"_s),
    };
}

QObject *cameraManager()
{
    return contextProperty(u"cameraEmulationManager"_s).value<QObject *>();
}

bool hasRule(Tarn::VirtualMachine *machine, quint16 hostPort, const QString &expectedName)
{
    QString name;
    return machine->hasPortForwarding(hostPort, &name) && name == expectedName;
}

} // namespace

/// The ways on which the menu entry leads to the window, or to a message. Each function has an IDE of its own.
class tst_OpenView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void preparesStartsChecksAndShows();
    void refusesARunningEmulatorWithoutRules();
    void refusesARunningEmulatorWithOnlyTheTcpRule();
    void refusesARunningEmulatorWithOnlyTheUdpRule();
    void namesAMissingPackageAndChecksAfresh();
    void namesAllPackagesWhenRefused();
    void sendsValuesOnEachConnection();
    void storedValuesAreSent();
    void openingAgainOnlyShows();
    void poweringOffHidesAndChecksAgain();
    void laterBootsOpenNothing();
    void aMachineStartedElsewhereIsCheckedAfresh();
    void poweringOffWhileCheckingFails();
    void checkStartedUnderAMessageBoxCounts();
    void choosingAgainWhileRulesAreAddedDoesNothing();
    void completeRulesAreKept();
    void incompleteRulesAreAddedTogether();
    void connectionsAccumulate();

private:
    void addRule(const QString &name, const QString &protocol, quint16 hostPort, quint16 emulatorPort);
    void startMachine();
    void killMachine();
    void checkRefusal();

    std::unique_ptr<EmulatorFixture> m_fixture;
    Tarn::VirtualMachine *m_machine = nullptr;
    MessageBoxAnswerer m_user;
};

namespace {
const RegisterTest<tst_OpenView> registration;
}

void tst_OpenView::init()
{
    m_fixture = std::make_unique<EmulatorFixture>();
    QVERIFY(m_fixture->startServices());
    QVERIFY(m_fixture->emulator());
    m_machine = m_fixture->machine();
    QVERIFY(m_machine->isOff());
    QVERIFY(!view()->isVisible());
}

void tst_OpenView::cleanup()
{
    QCOMPARE(m_user.unanswered(), 0);
    m_fixture.reset();
}

void tst_OpenView::addRule(const QString &name, const QString &protocol, quint16 hostPort, quint16 emulatorPort)
{
    bool added = false;
    m_machine->addPortForwarding(name, protocol, hostPort, emulatorPort, this, [&added](bool ok) { added = ok; });
    QTRY_VERIFY_WITH_TIMEOUT(added, deadline);
}

void tst_OpenView::startMachine()
{
    QVERIFY(m_fixture->startSsh());
    bool connected = false;
    m_machine->connectTo({}, this, [&connected](bool ok) { connected = ok; });
    QTRY_VERIFY_WITH_TIMEOUT(connected, deadline);
    QCOMPARE(int(m_machine->state()), 4);
}

void tst_OpenView::killMachine()
{
    m_machine->kill();
    QTRY_VERIFY_WITH_TIMEOUT(m_machine->isOff(), deadline);
    QVERIFY(!view()->isVisible());
}

void tst_OpenView::preparesStartsChecksAndShows()
{
    QSignalSpy showedSpy(plugin(), SIGNAL(emulationManagementViewShowed()));
    QSignalSpy camerasSpy(cameraManager(), SIGNAL(cameraStreamSettingsApplied()));
    m_fixture->ssh().holdAnswers(true);

    openView();
    QVERIFY(hasRule(m_machine, 5454, u"emulationmanagementtcp"_s));
    QVERIFY(hasRule(m_machine, 34343, u"emulationmanagementudp"_s));
    QTRY_VERIFY_WITH_TIMEOUT(!m_machine->isOff(), deadline);
    QVERIFY(int(m_machine->state()) != 4);

    // Only an SSH server that answers makes the machine connected, and only then the check starts.
    QVERIFY(m_fixture->startSsh());
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->ssh().commands(), QStringList{u"rpm -qa"_s}, deadline);
    QCOMPARE(m_fixture->connections(), 0);
    QVERIFY(!view()->isVisible());
    QCOMPARE(camerasSpy.size(), 0);

    m_fixture->ssh().holdAnswers(false);
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QCOMPARE(camerasSpy.size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->connections(), 1, deadline);
    QCOMPARE(m_fixture->ssh().commands().size(), 1);
    QCOMPARE(m_user.seen().size(), 0);
    QCOMPARE(showedSpy.size(), 0); // only for an emulator that runs already
}

void tst_OpenView::refusesARunningEmulatorWithoutRules()
{
    checkRefusal();
    QVERIFY(!m_machine->hasPortForwarding(5454));
    QVERIFY(!m_machine->hasPortForwarding(34343));
}

void tst_OpenView::refusesARunningEmulatorWithOnlyTheTcpRule()
{
    addRule(u"emulationmanagementtcp"_s, u"tcp"_s, 5454, 1234);
    checkRefusal();
    QVERIFY(!m_machine->hasPortForwarding(34343));
}

void tst_OpenView::refusesARunningEmulatorWithOnlyTheUdpRule()
{
    addRule(u"emulationmanagementudp"_s, u"udp"_s, 34343, 34343);
    checkRefusal();
    QVERIFY(!m_machine->hasPortForwarding(5454));
}

void tst_OpenView::checkRefusal()
{
    startMachine();

    m_user.click(QMessageBox::Ok);
    openView();

    QCOMPARE(m_user.seen().size(), 1);
    const SeenMessageBox &box = m_user.seen().constFirst();
    QCOMPARE(
        box.text,
        u"The emulation management plugin cannot be used. Please, close %1 and try to use "
        "'Emulation management\u2026' again."_s.arg(m_fixture->emulator()->name()));
    QCOMPARE(box.textFormat, Qt::PlainText); // whatever the emulator is called
    QCOMPARE(box.title, u"Emulation management plugin"_s);
    QCOMPARE(box.informativeText, QString());
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.parent, Core::ICore::mainWindow());

    QVERIFY(!view()->isVisible());
    QCOMPARE(m_fixture->ssh().commands(), QStringList());
    QCOMPARE(m_fixture->connections(), 0);
}

void tst_OpenView::namesAMissingPackageAndChecksAfresh()
{
    m_fixture->ssh().setAnswer(installedPackagesWithout({"geoclue-emulator"}));
    QVERIFY(m_fixture->startSsh());

    m_user.click(QMessageBox::Close);
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    const SeenMessageBox &box = m_user.seen().constFirst();
    QCOMPARE(box.text, u"Necessary packages not found on emulator!"_s);
    QCOMPARE(box.informativeText, u"Packages is not installed: \ngeoclue-emulator\n"_s);
    QCOMPARE(box.title, u"Emulation management plugin"_s);
    QCOMPARE(box.buttons, QMessageBox::Close);
    QVERIFY(!view()->isVisible());

    // The next opening asks again, and another package is missing now.
    QSignalSpy showedSpy(plugin(), SIGNAL(emulationManagementViewShowed()));
    m_fixture->ssh().setAnswer(installedPackagesWithout({"gstreamer-emulator"}));
    m_user.click(QMessageBox::Close);
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 2, deadline);
    QCOMPARE(m_user.seen().at(1).informativeText, u"Packages is not installed: \ngstreamer-emulator\n"_s);
    QVERIFY(!view()->isVisible());
    QCOMPARE(m_fixture->connections(), 0);

    m_fixture->ssh().setAnswer(installedPackagesWithout());
    openView();
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QCOMPARE(m_fixture->ssh().commands().size(), 3);
    QCOMPARE(m_user.seen().size(), 2);
    QCOMPARE(showedSpy.size(), 2);
}

void tst_OpenView::namesAllPackagesWhenRefused()
{
    addRule(u"emulationmanagementtcp"_s, u"tcp"_s, 5454, 1234);
    addRule(u"emulationmanagementudp"_s, u"udp"_s, 34343, 34343);
    startMachine();
    m_fixture->ssh().stop();

    m_user.click(QMessageBox::Close);
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    const QString text = m_user.seen().constFirst().informativeText;
    QVERIFY(text.startsWith(header));
    QStringList names = text.sliced(header.size()).split(u'\n');
    names.sort();
    const QStringList expected{
        QString(),
        u"geoclue-emulator"_s,
        u"gstreamer-emulator"_s,
        u"remote-dbus-invoker"_s,
        u"sensorfw-qt5-emulator-plugins"_s,
    };
    QCOMPARE(names, expected);
    QVERIFY(!view()->isVisible());
}

void tst_OpenView::sendsValuesOnEachConnection()
{
    QVERIFY(m_fixture->startSsh());
    openView();

    const QStringList first = framesOfConnection(framesForAllSensors(u"enabled"_s) + framesOfDefaultValues());
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_fixture->frames().size(), first.size(), deadline);
    QCOMPARE(m_fixture->frames(), first);

    // The plugin goes on trying while nobody listens, and then sends states and values again. The services' log begins
    // anew.
    m_fixture->stopServices();
    QVERIFY(m_fixture->startServices());
    const QStringList again = framesOfConnection(framesForAllSensors(u"enableSensor"_s) + framesOfDefaultValues());
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_fixture->frames().size(), again.size(), deadline);
    QCOMPARE(m_fixture->frames(), again);
    QCOMPARE(m_fixture->connections(), 1);
    QVERIFY(view()->isVisible());
    QCOMPARE(m_user.seen().size(), 0); // no track is loaded: the drop is silent
}

// The settings of this run hold values of many kinds, some of them of the wrong type.
void tst_OpenView::storedValuesAreSent()
{
    QVERIFY(m_fixture->startSsh());
    openView();

    const QStringList sensors = framesForAllSensors(u"enabled"_s)
        + QStringList{
            sensorFrame(u"setAccelerometerValues"_s, u"int32:-12 int32:0 int32:0"_s),
            sensorFrame(u"setMagnetometerValues"_s, u"double:0 double:0.5 double:-1e-07"_s),
            sensorFrame(u"setMagnetometerCalibrationLevel"_s, u"int32:3"_s),
            sensorFrame(u"setGyroscopeValues"_s, u"double:1.23457 double:0 double:0"_s),
            sensorFrame(u"setAlsValue"_s, u"int32:0"_s),
            sensorFrame(u"setProximitySensorValue"_s, u"int32:5"_s),
            sensorFrame(u"setTapSensorValue"_s, u"int32:8"_s),
        };
    // The latitude does not convert.
    const QStringList expected =
        framesOfConnection(sensors, framesOfGpsSetup(u"double:0.0000000 double:-30.3141300 double:12.50"_s));
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_fixture->frames().size(), expected.size(), deadline);
    QCOMPARE(m_fixture->frames(), expected);
}

void tst_OpenView::openingAgainOnlyShows()
{
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);
    QVERIFY(view()->isVisible());

    QSignalSpy showedSpy(plugin(), SIGNAL(emulationManagementViewShowed()));
    QSignalSpy camerasSpy(cameraManager(), SIGNAL(cameraStreamSettingsApplied()));
    openView(); // while it shows
    QVERIFY(view()->isVisible());
    QCOMPARE(camerasSpy.size(), 1);
    view()->close();
    QVERIFY(!view()->isVisible());
    openView();
    QVERIFY(view()->isVisible());
    QCOMPARE(showedSpy.size(), 2);
    QCOMPARE(camerasSpy.size(), 2);

    QCOMPARE(m_fixture->framesOf([] {}), QStringList());
    QCOMPARE(m_fixture->connections(), 1);
    QCOMPARE(m_fixture->ssh().commands(), QStringList{u"rpm -qa"_s});
}

void tst_OpenView::poweringOffHidesAndChecksAgain()
{
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);

    m_machine->kill();
    QTRY_VERIFY_WITH_TIMEOUT(!view()->isVisible(), deadline);
    QVERIFY(m_machine->isOff());
    QCOMPARE(m_fixture->ssh().commands().size(), 1);

    openView();
    QVERIFY(!view()->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QCOMPARE(m_fixture->ssh().commands().size(), 2);
    QCOMPARE(m_user.seen().size(), 0);
}

// The request to open the window is carried out once.
void tst_OpenView::laterBootsOpenNothing()
{
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    killMachine();

    startMachine();
    // Commands of the test's own: by their end, a check that the start has led to would have been seen.
    QSsh::SshRemoteProcessRunner runner;
    for (int i = 0; i < 2; ++i) {
        QSignalSpy closed(&runner, &QSsh::SshRemoteProcessRunner::processClosed);
        runner.run(u"test"_s, m_machine->sshParameters());
        QVERIFY(closed.wait(deadline));
    }
    QCOMPARE(m_fixture->ssh().commands(), (QStringList{u"rpm -qa"_s, u"test"_s, u"test"_s}));
    QVERIFY(!view()->isVisible());
}

void tst_OpenView::aMachineStartedElsewhereIsCheckedAfresh()
{
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    killMachine();

    startMachine();
    m_fixture->ssh().setAnswer(installedPackagesWithout({"geoclue-emulator"}));
    m_user.click(QMessageBox::Close);
    openView();
    QVERIFY(!view()->isVisible());
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    QCOMPARE(m_user.seen().constFirst().informativeText, u"Packages is not installed: \ngeoclue-emulator\n"_s);
    QVERIFY(!view()->isVisible());
}

void tst_OpenView::poweringOffWhileCheckingFails()
{
    m_fixture->ssh().holdAnswers(true);
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->ssh().commands().size(), 1, deadline);

    // The machine goes, and with it its SSH server.
    m_user.click(QMessageBox::Close);
    m_machine->kill();
    m_fixture->ssh().setAnswer({});
    m_fixture->ssh().holdAnswers(false);
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    QVERIFY(!view()->isVisible());
    QCOMPARE(m_fixture->connections(), 0);
}

// A second opening while the machine boots fails; its message still shows when the machine is up and is checked.
void tst_OpenView::checkStartedUnderAMessageBoxCounts()
{
    openView();
    QTRY_VERIFY_WITH_TIMEOUT(!m_machine->isOff(), deadline);

    m_user.answer([this](QMessageBox *box) {
        m_fixture->ssh().holdAnswers(true);
        QVERIFY(m_fixture->startSsh());
        QTRY_COMPARE_WITH_TIMEOUT(m_fixture->ssh().commands().size(), 1, deadline);
        box->button(QMessageBox::Close)->click();
    });
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activeModalWidget(), deadline);
    QVERIFY(!view()->isVisible());

    m_fixture->ssh().holdAnswers(false);
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QCOMPARE(m_user.seen().size(), 1);
}

void tst_OpenView::choosingAgainWhileRulesAreAddedDoesNothing()
{
    QVERIFY(m_fixture->startSsh());
    QSignalSpy showedSpy(plugin(), SIGNAL(emulationManagementViewShowed()));
    bool chosenAgain = false;
    QTimer::singleShot(0, this, [&chosenAgain] { // runs in the event loop that waits for the first rule
        openView();
        chosenAgain = true;
    });
    openView();
    QVERIFY(chosenAgain);
    QVERIFY(hasRule(m_machine, 5454, u"emulationmanagementtcp"_s));
    QVERIFY(hasRule(m_machine, 34343, u"emulationmanagementudp"_s));
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QCOMPARE(m_fixture->ssh().commands(), QStringList{u"rpm -qa"_s});
    QCOMPARE(m_user.seen().size(), 0);
    QCOMPARE(showedSpy.size(), 0);
}

void tst_OpenView::completeRulesAreKept()
{
    // Rules of other names count, as long as they are for these ports.
    addRule(u"mine"_s, u"tcp"_s, 5454, 999);
    addRule(u"mine too"_s, u"udp"_s, 34343, 998);
    QVERIFY(m_fixture->startSsh());

    openView();
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
    QVERIFY(hasRule(m_machine, 5454, u"mine"_s));
    QVERIFY(hasRule(m_machine, 34343, u"mine too"_s));
    QCOMPARE(m_user.seen().size(), 0);
}

void tst_OpenView::incompleteRulesAreAddedTogether()
{
    addRule(u"mine"_s, u"tcp"_s, 5454, 999);
    QVERIFY(m_fixture->startSsh());

    openView();
    QVERIFY(hasRule(m_machine, 5454, u"emulationmanagementtcp"_s));
    QVERIFY(hasRule(m_machine, 34343, u"emulationmanagementudp"_s));
    QTRY_VERIFY_WITH_TIMEOUT(view()->isVisible(), deadline);
}

void tst_OpenView::connectionsAccumulate()
{
    QVERIFY(m_fixture->startSsh());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->frames().size(), connectionFrameCount, deadline);

    const QStringList once = framesForAllSensors(u"enableSensor"_s);
    const auto changeDeviceModel = [this] { Q_EMIT m_fixture->emulator()->deviceModelNameChanged(u"no such model"_s); };

    // How many sets there are by now is up to the SDK's notifications at its start.
    const QStringList atFirst = m_fixture->framesOf(changeDeviceModel);
    QCOMPARE_GE(atFirst.size(), once.size());
    QCOMPARE(atFirst.size() % once.size(), 0);

    // Each further notification applies the sensors at once, and makes one more set of connections.
    const QStringList atNotifications = m_fixture->framesOf([] {
        Q_EMIT Tarn::Sdk::instance()->deviceModelsChanged();
        Q_EMIT Tarn::Sdk::instance()->emulatorAdded(0);
        Q_EMIT Tarn::Sdk::instance()->deviceModelsChanged();
    });
    QCOMPARE(atNotifications, once + once + once);
    QCOMPARE(m_fixture->framesOf(changeDeviceModel), atFirst + once + once + once);

    // The other handlers tolerate the repetition: one check, one message.
    m_fixture->ssh().setAnswer(installedPackagesWithout({"remote-dbus-invoker"}));
    m_machine->kill();
    QTRY_VERIFY_WITH_TIMEOUT(!view()->isVisible(), deadline);
    m_user.click(QMessageBox::Close);
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(m_user.seen().size(), 1, deadline);
    QCOMPARE(m_fixture->ssh().commands().size(), 2);
}

#include "tst_openview.moc"
