// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin/warningdialog.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/icore.h>

#include <QCheckBox>
#include <QMainWindow>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using EmulationManagement::Internal::WarningDialog;
using TestUtils::MessageBoxAnswerer;

namespace {
QMainWindow *theMainWindow = nullptr;
}

// The dialog asks the IDE for nothing but its main window; this one belongs to the test.
QMainWindow *Core::ICore::mainWindow()
{
    return theMainWindow;
}

class tst_WarningDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void describesItselfToQml();
    void startsEmptyWithOkAndCancel();
    void settersAlwaysNotify();
    void showsAQuestionOverTheMainWindow();
    void mapsTheButtons_data();
    void mapsTheButtons();
    void escapeRejectsWhereThereIsCancel();
    void escapeOnYesAndNoSaysNothing();
    void hiddenCheckBoxCountsForNothing();
    void visibleCheckBoxIsReported();
    void asksAnyNumberOfTimes();
    void survivesItsOwnDeletionWhileAsking();

private:
    std::unique_ptr<QMainWindow> m_mainWindow;
};

void tst_WarningDialog::init()
{
    m_mainWindow = std::make_unique<QMainWindow>();
    theMainWindow = m_mainWindow.get();
}

void tst_WarningDialog::cleanup()
{
    QVERIFY(m_mainWindow->findChildren<QMessageBox *>().isEmpty());
    theMainWindow = nullptr;
    m_mainWindow.reset();
}

void tst_WarningDialog::describesItselfToQml()
{
    const QMetaObject &metaObject = WarningDialog::staticMetaObject;
    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        QVERIFY(property.isReadable() && property.isWritable());
        properties.append(u"%1 %2 %3"_s.arg(
            QString::fromLatin1(property.typeName()),
            QString::fromLatin1(property.name()),
            QString::fromLatin1(property.notifySignal().methodSignature())));
    }
    const QStringList expectedProperties{
        u"QString text textChanged()"_s,
        u"QFlags<QMessageBox::StandardButton> standardButtons standardButtonsChanged()"_s,
        u"bool withDoNotShowAgainCheckBox withDoNotShowAgainCheckBoxChanged()"_s,
    };
    QCOMPARE(properties, expectedProperties);

    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        methods.append(QString::fromLatin1(metaObject.method(i).methodSignature()));
    const QStringList expectedMethods{
        u"textChanged()"_s,
        u"standardButtonsChanged()"_s,
        u"withDoNotShowAgainCheckBoxChanged()"_s,
        u"accepted(bool)"_s,
        u"rejected()"_s,
        u"show()"_s,
    };
    QCOMPARE(methods, expectedMethods);
}

void tst_WarningDialog::startsEmptyWithOkAndCancel()
{
    const WarningDialog dialog;
    QCOMPARE(dialog.text(), QString());
    QCOMPARE(dialog.standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
    QCOMPARE(dialog.withDoNotShowAgainCheckBox(), false);
}

void tst_WarningDialog::settersAlwaysNotify()
{
    WarningDialog dialog;
    QSignalSpy textSpy(&dialog, &WarningDialog::textChanged);
    QSignalSpy buttonsSpy(&dialog, &WarningDialog::standardButtonsChanged);
    QSignalSpy checkBoxSpy(&dialog, &WarningDialog::withDoNotShowAgainCheckBoxChanged);

    for (int i = 0; i < 2; ++i) {
        dialog.setText(u"Really?"_s);
        dialog.setStandardButtons(QMessageBox::Apply | QMessageBox::Discard);
        dialog.setWithDoNotShowAgainCheckBox(true);
    }

    QCOMPARE(textSpy.size(), 2);
    QCOMPARE(buttonsSpy.size(), 2);
    QCOMPARE(checkBoxSpy.size(), 2);
    QCOMPARE(dialog.text(), u"Really?"_s);
    QCOMPARE(dialog.standardButtons(), QMessageBox::Apply | QMessageBox::Discard);
    QCOMPARE(dialog.withDoNotShowAgainCheckBox(), true);
}

void tst_WarningDialog::showsAQuestionOverTheMainWindow()
{
    WarningDialog dialog;
    dialog.setText(u"Do you want to continue?"_s);
    dialog.setWithDoNotShowAgainCheckBox(true);

    MessageBoxAnswerer user;
    user.click(QMessageBox::Ok);
    dialog.show();

    QCOMPARE(user.seen().size(), 1);
    const TestUtils::SeenMessageBox &box = user.seen().constFirst();
    QCOMPARE(box.title, u"Warning"_s);
    QCOMPARE(box.text, u"Do you want to continue?"_s);
    QCOMPARE(box.textFormat, Qt::PlainText);
    QCOMPARE(box.informativeText, QString());
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
    QCOMPARE(box.parent, m_mainWindow.get());
    QCOMPARE(box.flags & Qt::WindowType_Mask, Qt::Dialog);
    QVERIFY(box.flags.testFlag(Qt::MSWindowsFixedSizeDialogHint));
    QCOMPARE(box.checkBoxText, u"Do not show again"_s);
    QVERIFY(box.checkBoxVisible);
}

void tst_WarningDialog::mapsTheButtons_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("button");
    QTest::addColumn<int>("accepted");
    QTest::addColumn<int>("rejected");

    QTest::newRow("Ok accepts") << QMessageBox::Ok << 1 << 0;
    QTest::newRow("Apply accepts") << QMessageBox::Apply << 1 << 0;
    QTest::newRow("Cancel rejects") << QMessageBox::Cancel << 0 << 1;
    QTest::newRow("Discard rejects") << QMessageBox::Discard << 0 << 1;
    for (const auto button :
         {QMessageBox::Yes,
          QMessageBox::YesToAll,
          QMessageBox::No,
          QMessageBox::NoToAll,
          QMessageBox::Save,
          QMessageBox::SaveAll,
          QMessageBox::Open,
          QMessageBox::Close,
          QMessageBox::Abort,
          QMessageBox::Retry,
          QMessageBox::Ignore,
          QMessageBox::Reset,
          QMessageBox::RestoreDefaults}) {
        QTest::addRow("button 0x%x says nothing", unsigned(button)) << button << 0 << 0;
    }
}

void tst_WarningDialog::mapsTheButtons()
{
    QFETCH(const QMessageBox::StandardButton, button);
    QFETCH(const int, accepted);
    QFETCH(const int, rejected);

    WarningDialog dialog;
    dialog.setStandardButtons(button);
    QSignalSpy acceptedSpy(&dialog, &WarningDialog::accepted);
    QSignalSpy rejectedSpy(&dialog, &WarningDialog::rejected);

    MessageBoxAnswerer user;
    user.click(button);
    dialog.show();

    QCOMPARE(user.seen().size(), 1);
    QCOMPARE(user.seen().constFirst().buttons, button);
    QCOMPARE(acceptedSpy.size(), accepted);
    QCOMPARE(rejectedSpy.size(), rejected);
}

void tst_WarningDialog::escapeRejectsWhereThereIsCancel()
{
    WarningDialog dialog;
    QSignalSpy acceptedSpy(&dialog, &WarningDialog::accepted);
    QSignalSpy rejectedSpy(&dialog, &WarningDialog::rejected);

    MessageBoxAnswerer user;
    user.pressEscape();
    dialog.show();

    QCOMPARE(acceptedSpy.size(), 0);
    QCOMPARE(rejectedSpy.size(), 1);
}

void tst_WarningDialog::escapeOnYesAndNoSaysNothing()
{
    WarningDialog dialog;
    dialog.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    QSignalSpy acceptedSpy(&dialog, &WarningDialog::accepted);
    QSignalSpy rejectedSpy(&dialog, &WarningDialog::rejected);

    MessageBoxAnswerer user;
    user.pressEscape();
    dialog.show();

    QCOMPARE(user.seen().size(), 1);
    QCOMPARE(acceptedSpy.size(), 0);
    QCOMPARE(rejectedSpy.size(), 0);
}

void tst_WarningDialog::hiddenCheckBoxCountsForNothing()
{
    WarningDialog dialog;
    QSignalSpy acceptedSpy(&dialog, &WarningDialog::accepted);

    MessageBoxAnswerer user;
    user.answer([](QMessageBox *box) {
        box->checkBox()->setChecked(true);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    dialog.show();

    QCOMPARE(user.seen().size(), 1);
    QVERIFY(!user.seen().constFirst().checkBoxVisible);
    QCOMPARE(acceptedSpy, QList<QVariantList>{{false}});
}

void tst_WarningDialog::visibleCheckBoxIsReported()
{
    WarningDialog dialog;
    dialog.setWithDoNotShowAgainCheckBox(true);
    QSignalSpy acceptedSpy(&dialog, &WarningDialog::accepted);

    MessageBoxAnswerer user;
    user.answer([](QMessageBox *box) {
        QTest::keyClick(box->checkBox(), Qt::Key_Space);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    user.click(QMessageBox::Ok);
    dialog.show();
    dialog.show(); // a new box with a new check box

    const QList<QVariantList> expected{{true}, {false}};
    QCOMPARE(acceptedSpy, expected);
}

void tst_WarningDialog::asksAnyNumberOfTimes()
{
    WarningDialog dialog;
    QSignalSpy acceptedSpy(&dialog, &WarningDialog::accepted);
    QSignalSpy rejectedSpy(&dialog, &WarningDialog::rejected);

    MessageBoxAnswerer user;
    for (const auto button : {QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Cancel})
        user.click(button);
    for (int i = 0; i < 3; ++i)
        dialog.show();

    QCOMPARE(user.seen().size(), 3);
    QCOMPARE(acceptedSpy.size(), 1);
    QCOMPARE(rejectedSpy.size(), 2);
}

void tst_WarningDialog::survivesItsOwnDeletionWhileAsking()
{
    auto *dialog = new WarningDialog;
    QSignalSpy acceptedSpy(dialog, &WarningDialog::accepted);

    MessageBoxAnswerer user;
    user.answer([dialog](QMessageBox *box) {
        delete dialog;
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    dialog->show();

    QCOMPARE(user.seen().size(), 1);
    QCOMPARE(acceptedSpy.size(), 0);
}

QTEST_MAIN(tst_WarningDialog)
#include "tst_warningdialog.moc"
