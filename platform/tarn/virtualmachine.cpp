// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "virtualmachine.h"

#include "domainsnapshot.h"

#include <QPointer>

namespace Tarn {

struct VirtualMachine::Private
{
    Internal::DomainSnapshot snapshot;
};

VirtualMachine::VirtualMachine(Internal::Hypervisor *, const Internal::DomainSnapshot &snapshot, QObject *parent)
    : QObject(parent)
    , d(new Private{snapshot})
{
}

VirtualMachine::~VirtualMachine() = default;

bool VirtualMachine::isOff(bool *runningHeadless, bool *startedOutside) const
{
    if (runningHeadless)
        *runningHeadless = false;
    if (startedOutside)
        *startedOutside = false;
    return state() == Off;
}

VirtualMachine::State VirtualMachine::state() const
{
    return Off;
}

void VirtualMachine::connectTo(ConnectOptions, const QObject *context, const std::function<void(bool)> &callback)
{
    QMetaObject::invokeMethod(const_cast<QObject *>(context), [callback] { callback(false); }, Qt::QueuedConnection);
}

void VirtualMachine::start() {}
void VirtualMachine::shutDown() {}
void VirtualMachine::kill() {}

bool VirtualMachine::hasPortForwarding(quint16, QString *) const
{
    return false;
}

void VirtualMachine::addPortForwarding(
    const QString &,
    const QString &,
    quint16,
    quint16,
    const QObject *context,
    const std::function<void(bool)> &callback)
{
    QMetaObject::invokeMethod(const_cast<QObject *>(context), [callback] { callback(false); }, Qt::QueuedConnection);
}

QSsh::SshConnectionParameters VirtualMachine::sshParameters() const
{
    return {};
}

void VirtualMachine::update(const Internal::DomainSnapshot &snapshot)
{
    d->snapshot = snapshot;
}

} // namespace Tarn
