// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>

namespace EmulationManagement::Internal {

/// A question to the user in a modal message box of the IDE, for QML, with an optional "Do not show again" box.
class WarningDialog : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QFlags<QMessageBox::StandardButton> standardButtons READ standardButtons WRITE setStandardButtons NOTIFY
                   standardButtonsChanged)
    Q_PROPERTY(bool withDoNotShowAgainCheckBox READ withDoNotShowAgainCheckBox WRITE setWithDoNotShowAgainCheckBox
                   NOTIFY withDoNotShowAgainCheckBoxChanged)

public:
    explicit WarningDialog(QObject *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);

    QFlags<QMessageBox::StandardButton> standardButtons() const { return m_standardButtons; }
    void setStandardButtons(QFlags<QMessageBox::StandardButton> buttons);

    bool withDoNotShowAgainCheckBox() const { return m_withDoNotShowAgainCheckBox; }
    void setWithDoNotShowAgainCheckBox(bool withCheckBox);

    /// Asks, and waits for the answer in a nested event loop. Ok and Apply lead to accepted(), Cancel and Discard to
    /// rejected(); other buttons to no signal.
    Q_INVOKABLE void show();

Q_SIGNALS:
    void textChanged();
    void standardButtonsChanged();
    void withDoNotShowAgainCheckBoxChanged();
    void accepted(bool doNotShowAgain);
    void rejected();

private:
    QString m_text;
    QFlags<QMessageBox::StandardButton> m_standardButtons = QMessageBox::Ok | QMessageBox::Cancel;
    bool m_withDoNotShowAgainCheckBox = false;
};

} // namespace EmulationManagement::Internal
