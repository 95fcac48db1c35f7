// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "protocol.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QQueue>

#include <functional>
#include <optional>

namespace Emulator {

/*!
    Carries out requests on the message buses.
*/
class Caller : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(const Reply &)>;

    /*! Requests that name the bus "system" go to \a systemBus, a name or an address as in connectToBus(). */
    explicit Caller(const QString &systemBus, QObject *parent = nullptr);
    ~Caller() override;

    /*!
        Reads \a request, makes the call, and passes the answer to \a callback: once, and not after \a context has died.
        Whatever is wrong with the request is an answer, too; so is that too many calls are unanswered already, to one
        service or, by the size of their texts, altogether.
    */
    void call(const QString &request, QObject *context, const Callback &callback);

private:
    struct Job
    {
        QString bus;
        QDBusMessage message;
        QPointer<QObject> context;
        Reply reply;
        Callback callback;
        qsizetype size = 0; // of the request, in bytes
    };

    // The calls to one service: some on their way, others waiting for their turn.
    struct Lane
    {
        int open = 0;
        QQueue<Job> waiting;
    };

    bool hasRoomFor(qsizetype size, const QString &service);
    std::optional<QDBusConnection> connection(const QString &bus);
    void startJobs(const QString &service);
    void start(const Job &job);

    QString m_systemBus;
    QHash<QString, Lane> m_lanes;
    qsizetype m_unanswered = 0; // bytes of the requests that are in a lane
};

} // namespace Emulator
