// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QMap>
#include <QObject>
#include <QVariantMap>

#include <initializer_list>

namespace Emulator {

/*! How often each method was carried out (calls that ended in an error are not counted). On the bus: a{su}. */
using CallCounts = QMap<QString, uint>;

/*!
    What the emulation services have in common: state that is readable as D-Bus properties, and calls that are counted.

    A subclass names its D-Bus interface in its class information, offers methods as scriptable slots, and ends each
    one with done() or fail().
*/
class EmulationService : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    /*! The service announces changes of its properties on \a connection, for the object \a path. */
    EmulationService(const QDBusConnection &connection, const QString &path, QObject *parent = nullptr);

    CallCounts calls() const { return m_calls; }

protected:
    /*! Counts the current call and announces what it changed. */
    void done();

    /*! Answers the current call with the error \a name, a last part such as "InvalidArguments", and \a message. */
    void fail(const QString &name, const QString &message);

    /*! Whether all \a values are numbers of finite size; otherwise the current call is answered with an error. */
    bool areFinite(std::initializer_list<double> values);

    /*! Announces the properties that changed since the last time; also for changes that no call made. */
    void publish();

private:
    QString interfaceName() const;
    QVariantMap changedProperties();

    QDBusConnection m_connection;
    QString m_path;
    CallCounts m_calls;
    QVariantMap m_published;
};

} // namespace Emulator

Q_DECLARE_METATYPE(Emulator::CallCounts)
