// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QString>
#include <QStringList>

namespace TestUtils {

/// Writes down the signals of objects in the order in which they are emitted. A property's change signal is written
/// with the value that the property has at that moment: "x=5", or "accelerometer.x=5" for an object watched under a
/// name; any other signal by its name.
class SignalLog : public QObject
{
    Q_OBJECT

public:
    explicit SignalLog(QObject *parent = nullptr);

    void watch(QObject *object, const QString &name = {});
    void append(const QString &entry) { m_entries.append(entry); }

    QStringList entries() const { return m_entries; }
    QStringList takeEntries();

private Q_SLOTS:
    void record();

private:
    QHash<QObject *, QString> m_names;
    QStringList m_entries;
};

} // namespace TestUtils
