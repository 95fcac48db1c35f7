// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "emulator.h"

#include "domainsnapshot.h"
#include "hypervisor.h"
#include "virtualmachine.h"

#include <QPointer>

namespace Tarn {

struct Emulator::Private
{
    const QPointer<Internal::Hypervisor> hypervisor;
    Internal::DomainSnapshot snapshot;
    VirtualMachine *machine = nullptr;
};

Emulator::Emulator(Internal::Hypervisor *hypervisor, const Internal::DomainSnapshot &snapshot, QObject *parent)
    : QObject(parent)
    , d(new Private{hypervisor, snapshot})
{
    d->machine = new VirtualMachine(hypervisor, snapshot, this);
}

Emulator::~Emulator() = default;

QString Emulator::name() const
{
    return d->snapshot.name;
}

DeviceModel Emulator::deviceModel() const
{
    return {d->snapshot.description.deviceModel};
}

VirtualMachine *Emulator::virtualMachine() const
{
    return d->machine;
}

void Emulator::setDeviceModel(const QString &name)
{
    if (name == d->snapshot.description.deviceModel || !d->hypervisor)
        return;
    d->hypervisor->setDeviceModel(d->snapshot.uuid, name, [self = QPointer(this), name](const QString &error) {
        if (self && !error.isEmpty()) {
            Q_EMIT self->d->machine->errorOccurred(
                tr("%1 could not be made a \"%2\". %3").arg(self->name(), name, error));
        }
    });
}

void Emulator::update(const Internal::DomainSnapshot &snapshot)
{
    const bool renamed = snapshot.description.deviceModel != d->snapshot.description.deviceModel;
    d->snapshot = snapshot;
    const QPointer self(this);
    d->machine->update(snapshot);
    if (self && renamed)
        Q_EMIT deviceModelNameChanged(snapshot.description.deviceModel);
}

} // namespace Tarn
