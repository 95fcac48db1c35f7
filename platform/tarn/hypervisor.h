// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "connectionsettings.h"
#include "domainsnapshot.h"

#include <QHash>
#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>

namespace Tarn::Internal {

// The connection to libvirt.
//
// Calls into libvirt may take seconds, so each is made on one worker thread, in the order asked for. Results and events
// come back to the main thread, where this object lives. Every operation is followed by a fresh look at the domains,
// which is reported before the operation's own end.
class Hypervisor : public QObject
{
    Q_OBJECT

public:
    using Done = std::function<void(const QString &error)>; // an empty error means that it has worked

    explicit Hypervisor(QObject *parent = nullptr);
    // Waits a few seconds for the call that is going; those still waiting their turn fail. A call that does not return,
    // as the other end hangs, is left to itself.
    ~Hypervisor() override;

    void open(const ConnectionSettings &settings);

    void start(const QString &uuid, const Done &done);
    void shutDown(const QString &uuid, const Done &done);
    void kill(const QString &uuid, const Done &done);
    void addPortRule(const QString &uuid, const PortRule &rule, const Done &done); // only while it is off
    void setDeviceModel(const QString &uuid, const QString &name, const Done &done);

Q_SIGNALS:
    void opened(const QString &uri);
    void failed(const QString &uri, const QString &error);
    void lost(const QString &error); // the other end closed an open connection
    void domainsListed(const QList<Tarn::Internal::DomainSnapshot> &domains);

private:
    struct Link;
    struct Worker;
    struct Events;

    using Operation = std::function<QString(Worker &)>;
    void post(const Operation &operation, const Done &done);
    void finish(quint64 task, const QString &error);
    void scheduleRefresh();

    const std::shared_ptr<Link> m_link;
    const std::shared_ptr<Worker> m_worker; // of the worker thread, but for what is said otherwise
    std::unique_ptr<QThreadPool> m_pool;
    QHash<quint64, Done> m_pending; // every one is called, come what may: somebody may wait for it
    quint64 m_lastTask = 0;
};

} // namespace Tarn::Internal
