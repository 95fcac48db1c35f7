// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "protocol.h"

#include <QDBusConnection>
#include <QObject>

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
        Whatever is wrong with the request is an answer, too.
    */
    void call(const QString &request, QObject *context, const Callback &callback);

private:
    std::optional<QDBusConnection> connection(const QString &bus);

    QString m_systemBus;
};

} // namespace Emulator
