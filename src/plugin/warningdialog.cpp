// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin/warningdialog.h"

#include <coreplugin/icore.h>

#include <QCheckBox>
#include <QGuiApplication>
#include <QMainWindow>
#include <QPointer>
#include <QWindow>

namespace EmulationManagement::Internal {

WarningDialog::WarningDialog(QObject *parent)
    : QObject(parent)
{
}

void WarningDialog::setText(const QString &text)
{
    m_text = text;
    Q_EMIT textChanged();
}

void WarningDialog::setStandardButtons(QFlags<QMessageBox::StandardButton> buttons)
{
    m_standardButtons = buttons;
    Q_EMIT standardButtonsChanged();
}

void WarningDialog::setWithDoNotShowAgainCheckBox(bool withCheckBox)
{
    m_withDoNotShowAgainCheckBox = withCheckBox;
    Q_EMIT withDoNotShowAgainCheckBoxChanged();
}

void WarningDialog::show()
{
    QMessageBox box(QMessageBox::Question, tr("Warning"), m_text, m_standardButtons, Core::ICore::mainWindow());
    box.setTextFormat(Qt::PlainText);
    auto *checkBox = new QCheckBox(tr("Do not show again"), &box);
    checkBox->setVisible(m_withDoNotShowAgainCheckBox);
    box.setCheckBox(checkBox);

    // The QML that declares this object may go while the box is open.
    const QPointer<WarningDialog> guard(this);
    const QPointer<QWindow> asking = QGuiApplication::focusWindow();
    const int button = box.exec();
    if (asking) // the box has brought the IDE's window before it
        asking->requestActivate();
    if (!guard)
        return;

    switch (button) {
    case QMessageBox::Ok:
    case QMessageBox::Apply:
        Q_EMIT accepted(m_withDoNotShowAgainCheckBox && checkBox->isChecked());
        break;
    case QMessageBox::Cancel:
    case QMessageBox::Discard:
        Q_EMIT rejected();
        break;
    default:
        break;
    }
}

} // namespace EmulationManagement::Internal
