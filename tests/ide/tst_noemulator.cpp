// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/icore.h>
#include <tarn/sdk.h>

#include <QMainWindow>
#include <QPushButton>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using TestUtils::MessageBoxAnswerer;
using TestUtils::SeenMessageBox;

/// Asking for the view on a host without an emulator.
class tst_NoEmulator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatToDo();
    void retryOpensAgain();
};

namespace {

const RegisterTest<tst_NoEmulator> registration;

const QString message = u"The emulation management plugin cannot be used. Please, close the emulator if it is running "
                        "and add Velmo OS Emulator to the list of available devices in Qt Creator settings."_s;

} // namespace

void tst_NoEmulator::tellsWhatToDo()
{
    QTRY_VERIFY_WITH_TIMEOUT(Tarn::Sdk::instance()->isConnected(), 30'000);

    MessageBoxAnswerer user;
    user.click(QMessageBox::Ok);
    openView();

    QCOMPARE(user.seen().size(), 1);
    const SeenMessageBox &box = user.seen().constFirst();
    QCOMPARE(box.text, message);
    QCOMPARE(box.title, u"Emulation management plugin"_s);
    QCOMPARE(box.informativeText, QString());
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QCOMPARE(box.parent, Core::ICore::mainWindow());
    QVERIFY(box.flags.testFlag(Qt::Dialog));
    QVERIFY(box.flags.testFlag(Qt::MSWindowsFixedSizeDialogHint));
    QVERIFY(!view()->isVisible());
}

// No message of the plugin offers Retry by itself.
void tst_NoEmulator::retryOpensAgain()
{
    MessageBoxAnswerer user;
    user.answer([](QMessageBox *box) { QTest::mouseClick(box->addButton(QMessageBox::Retry), Qt::LeftButton); });
    user.click(QMessageBox::Ok);
    openView();

    QCOMPARE(user.seen().size(), 2);
    QCOMPARE(user.seen().at(1).text, message);
}

#include "tst_noemulator.moc"
