// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "emulator.h"

#include "domainsnapshot.h"
#include "virtualmachine.h"

namespace Tarn {

struct Emulator::Private
{
    Internal::DomainSnapshot snapshot;
    VirtualMachine *machine = nullptr;
};

Emulator::Emulator(Internal::Hypervisor *hypervisor, const Internal::DomainSnapshot &snapshot, QObject *parent)
    : QObject(parent)
    , d(new Private{snapshot})
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

QString Emulator::id() const
{
    return d->snapshot.uuid;
}

void Emulator::setDeviceModel(const QString &) {}

void Emulator::update(const Internal::DomainSnapshot &snapshot)
{
    const bool renamed = snapshot.description.deviceModel != d->snapshot.description.deviceModel;
    d->snapshot = snapshot;
    d->machine->update(snapshot);
    if (renamed)
        Q_EMIT deviceModelNameChanged(snapshot.description.deviceModel);
}

} // namespace Tarn
