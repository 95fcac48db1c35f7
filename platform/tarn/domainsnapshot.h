// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace Tarn::Internal {

struct PortRule
{
    QString name; // of the rule in our metadata; empty for a rule that has none
    QString protocol;
    QString address; // of the host; empty for all of them
    quint16 firstHostPort = 0;
    quint16 lastHostPort = 0;
    quint16 firstGuestPort = 0;

    bool covers(quint16 hostPort) const { return firstHostPort <= hostPort && hostPort <= lastHostPort; }
    bool leadsTo(quint16 guestPort) const { return hostPortFor(guestPort) != 0; }
    // The host's port that is forwarded to this one of the guest; 0 when none is.
    quint16 hostPortFor(quint16 guestPort) const
    {
        const int offset = guestPort - firstGuestPort;
        return offset >= 0 && firstHostPort + offset <= lastHostPort ? quint16(firstHostPort + offset) : 0;
    }

    friend bool operator==(const PortRule &, const PortRule &) = default;
};

// What a domain's definition says about the emulator in it.
struct EmulatorDescription
{
    QString deviceModel;
    QString sshUser;
    QString sshPrivateKey;
    QList<PortRule> portRules;
    bool headless = false;
    QStringList warnings; // what was amiss and how it was understood

    friend bool operator==(const EmulatorDescription &, const EmulatorDescription &) = default;
};

// A domain as it was at one moment.
struct DomainSnapshot
{
    enum class Power { Off, On, ShuttingDown };

    QString uuid;
    QString name;
    Power power = Power::Off;
    EmulatorDescription description;

    friend bool operator==(const DomainSnapshot &, const DomainSnapshot &) = default;
};

} // namespace Tarn::Internal
