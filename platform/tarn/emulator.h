// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devicemodel.h"
#include "tarn_global.h"

#include <QObject>

#include <memory>

namespace Tarn {

class VirtualMachine;
namespace Internal {
class Hypervisor;
struct DomainSnapshot;
} // namespace Internal

// An emulated device. Made, owned and deleted by the Sdk; main thread only.
class TARN_EXPORT Emulator : public QObject
{
    Q_OBJECT

public:
    ~Emulator() override;

    QString name() const; // for people to read; it does not change
    DeviceModel deviceModel() const;
    VirtualMachine *virtualMachine() const; // never null; lives as long as the emulator

    // Makes it another device model, for good. deviceModelNameChanged() follows when that has worked,
    // VirtualMachine::errorOccurred() otherwise.
    void setDeviceModel(const QString &name);

Q_SIGNALS:
    void deviceModelNameChanged(const QString &name);

private:
    friend class Sdk;
    Emulator(Internal::Hypervisor *hypervisor, const Internal::DomainSnapshot &snapshot, QObject *parent);
    void update(const Internal::DomainSnapshot &snapshot);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace Tarn
