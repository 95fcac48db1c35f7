// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tarn_global.h"

#include <qssh/sshconnectionparameters.h>

#include <QObject>

#include <functional>
#include <memory>

namespace Tarn {

namespace Internal {
class Hypervisor;
struct DomainSnapshot;
} // namespace Internal

// The machine that an emulator runs in. Main thread only; owned by its Emulator.
//
// Questions are answered at once, from what the hypervisor has reported last. Operations return at once. Those with a
// callback report true or false exactly once, from the event loop, and not at all once the context object is gone
// (a null context never goes).
class TARN_EXPORT VirtualMachine : public QObject
{
    Q_OBJECT

public:
    enum State {
        Off = 0,
        Starting = 1,
        Running = 2, // powered, but its SSH server does not answer (yet)
        Stopping = 3,
        Connected = 4, // its SSH server answers
    };
    Q_ENUM(State)

    enum ConnectOption {
        NoConnectOptions = 0x0,
        DoNotStart = 0x1, // a machine that is off makes connectTo() fail instead of being started
    };
    Q_DECLARE_FLAGS(ConnectOptions, ConnectOption)

    ~VirtualMachine() override;

    // When it runs, runningHeadless tells whether it has no screen of its own and startedOutside whether something
    // else than this SDK started it; both are false for a machine that is off. Either may be null.
    bool isOff(bool *runningHeadless = nullptr, bool *startedOutside = nullptr) const;
    State state() const;

    // Starts the machine if it is off, then waits until it is connected. Reports false when it cannot be started,
    // stops, is stopping already, or is not connected within two minutes.
    void connectTo(ConnectOptions options, const QObject *context, const std::function<void(bool)> &callback);

    void start();
    void shutDown(); // asks the software inside to; errorOccurred() when it has not within 90 s
    void kill();     // as pulling the plug

    // Whether any rule, of whatever protocol, forwards this port of the host. The name is empty for a rule without one.
    bool hasPortForwarding(quint16 hostPort, QString *ruleName = nullptr) const;

    // Forwards a port of the host's loopback interface, for good. Possible only while the machine is off. The protocol
    // is "tcp" or "udp", ports are 1 to 65535. An earlier rule for the same protocol and host port is replaced.
    void addPortForwarding(
        const QString &ruleName,
        const QString &protocol,
        quint16 hostPort,
        quint16 emulatorPort,
        const QObject *context,
        const std::function<void(bool)> &callback);

    // Login into the machine through its forwarded SSH port; the host is empty when no rule forwards one. Behind a port
    // of the loopback interface ANY host key is accepted; behind another address it must be known to the user's ssh.
    QSsh::SshConnectionParameters sshParameters() const;

Q_SIGNALS:
    void stateChanged();
    void virtualMachineOffChanged(bool off);
    void errorOccurred(const QString &error); // a text for the user

private:
    friend class Emulator;
    VirtualMachine(Internal::Hypervisor *hypervisor, const Internal::DomainSnapshot &snapshot, QObject *parent);
    void update(const Internal::DomainSnapshot &snapshot);

    struct Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(VirtualMachine::ConnectOptions)

} // namespace Tarn
