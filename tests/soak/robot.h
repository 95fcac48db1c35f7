// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QTimer>

class QSocketNotifier;

/// Hands in the IDE for a program outside. Each line of standard input is a command, a JSON object; each is answered by
/// a line "answer JSON" on standard output, with a member "error" when it could not be done. An item is named by the
/// object names on the way to it: "gpsManagementPage/playButton".
///
///   {"do": "state"}                              what a user sees: see state()
///   {"do": "open"}, {"do": "close"}              the view; answered before it is open
///   {"do": "acknowledge"}                        the message box that is shown
///   {"do": "powerOff"}                           the emulator's machine
///   {"do": "click", "item": ITEM}
///   {"do": "drag", "item": SLIDER, "to": PART}   its handle, to a part of its way
///   {"do": "key", "item": ITEM, "key": NAME}     the item has the focus then
///   {"do": "openFile", "item": PAGE, "url": URL} as chosen in the page's dialog
///   {"do": "get", "item": ITEM, "property": NAME}
///   {"do": "memory"}                             bytes that are allocated and not freed; caches are emptied first
///   {"do": "churn", "from": NUMBER}              see churn()
///   {"do": "quit"}
class Robot : public QObject
{
    Q_OBJECT

public:
    explicit Robot(QObject *parent = nullptr);
    ~Robot() override;

    /// Says "ready" and takes commands from now on. When the input ends, nobody is there any more, and the IDE quits.
    void start();

private:
    void readCommands();
    QJsonObject perform(const QJsonObject &command);
    QJsonObject state() const;
    QString acknowledge();
    QString powerOff();
    QString drag(const QString &name, double part);
    QString pressKey(const QString &name, const QString &keyName);
    /// Sets every stored value but directions and levels to one that the number of the step tells, again and again, a
    /// line "step NUMBER" before each. The IDE writes its settings between two steps.
    void churn();

    QSocketNotifier *m_input = nullptr;
    QByteArray m_received;
    QTimer m_churn;
    int m_step = 0;
};
