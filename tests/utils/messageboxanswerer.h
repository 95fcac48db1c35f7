// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <functional>
#include <queue>

namespace TestUtils {

/// What a message box showed at the moment it was answered.
struct SeenMessageBox
{
    QString title;
    QString text;
    Qt::TextFormat textFormat = Qt::AutoText;
    QString informativeText;
    QMessageBox::StandardButtons buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    Qt::WindowFlags flags;
    QWidget *parent = nullptr;
    bool checkBoxVisible = false;
    QString checkBoxText;
};

/// Answers modal message boxes as a user would: it watches for the next one and hands it to the next answer in line.
/// A box that nobody expects is recorded too and closed, so that a test fails in its comparison and does not hang.
class MessageBoxAnswerer : public QObject
{
    Q_OBJECT

public:
    using Answer = std::function<void(QMessageBox *box)>;

    explicit MessageBoxAnswerer(QObject *parent = nullptr);

    /// Click this button of the next box.
    void click(QMessageBox::StandardButton button);
    /// Press Escape on the next box.
    void pressEscape();
    /// Do anything with the next box; it must lead to the box's end.
    void answer(const Answer &answer);

    const QList<SeenMessageBox> &seen() const { return m_seen; }
    int unanswered() const { return int(m_answers.size()); }
    void forget() { m_seen.clear(); }

private:
    void look();

    QTimer m_timer;
    std::queue<Answer> m_answers;
    QPointer<QMessageBox> m_answered;
    QList<SeenMessageBox> m_seen;
};

} // namespace TestUtils
