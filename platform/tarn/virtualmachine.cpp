// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "virtualmachine.h"

#include "domainsnapshot.h"
#include "hypervisor.h"
#include "sshbannerprobe.h"

#include <QHostAddress>
#include <QPointer>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Tarn {

using Internal::DomainSnapshot;
using Internal::Hypervisor;
using Internal::PortRule;
using Internal::SshBannerProbe;

namespace {

constexpr auto connectTimeout = 120s;
constexpr auto shutDownTimeout = 90s;
constexpr quint16 sshGuestPort = 22;

// A callback that is silent once its context has gone.
class Reply
{
public:
    Reply(const QObject *context, const std::function<void(bool)> &callback)
        : m_context(context)
        , m_hasContext(context)
        , m_callback(callback)
    {
    }

    void operator()(bool ok) const
    {
        if (m_callback && (m_context || !m_hasContext))
            m_callback(ok);
    }

private:
    QPointer<const QObject> m_context;
    bool m_hasContext;
    std::function<void(bool)> m_callback;
};

struct ConnectRequest
{
    quint64 id;
    Reply reply;
};

} // namespace

struct VirtualMachine::Private
{
    Private(VirtualMachine *machine, Hypervisor *hypervisor, const DomainSnapshot &snapshot)
        : q(machine)
        , hypervisor(hypervisor)
        , snapshot(snapshot)
    {
    }

    State currentState() const;
    void refreshState();
    void watchSsh();
    void answerRequests(bool connected);
    void answerRequest(quint64 id, bool connected);
    void report(const QString &error);
    // Runs the function when the operation has ended, if the machine is still there.
    Hypervisor::Done whenDone(const std::function<void(const QString &error)> &function);

    VirtualMachine *const q;
    const QPointer<Hypervisor> hypervisor;
    DomainSnapshot snapshot;
    State state = Off;       // what was reported last
    bool offReported = true; // as well
    SshBannerProbe probe;
    QTimer shutDownTimer; // active while the machine has been asked to shut down
    QList<ConnectRequest> requests;
    quint64 lastRequest = 0;
    bool starting = false;
    bool startedHere = false;
    bool sshAnswers = false;
};

VirtualMachine::State VirtualMachine::Private::currentState() const
{
    switch (snapshot.power) {
    case DomainSnapshot::Power::Off:
        return starting ? Starting : Off;
    case DomainSnapshot::Power::ShuttingDown:
        return Stopping;
    case DomainSnapshot::Power::On:
        break;
    }
    if (shutDownTimer.isActive())
        return Stopping;
    return sshAnswers ? Connected : Running;
}

void VirtualMachine::Private::refreshState()
{
    if (snapshot.power == DomainSnapshot::Power::Off) {
        sshAnswers = false;
        startedHere = false;
        shutDownTimer.stop();
    } else if (starting) {
        startedHere = true;
    }

    const State old = std::exchange(state, currentState());
    const QPointer self(q);
    if (state != old) {
        watchSsh();
        // Receivers may run event loops in which the machine goes on, so the other signal tells what holds then.
        Q_EMIT q->stateChanged();
        if (self && offReported != (state == Off)) {
            offReported = state == Off;
            Q_EMIT q->virtualMachineOffChanged(offReported);
        }
    }
    if (!self)
        return;
    if (state == Connected)
        answerRequests(true);
    else if (state == Off || state == Stopping)
        answerRequests(false);
}

void VirtualMachine::Private::watchSsh()
{
    probe.stop();
    if (state != Running)
        return;
    if (const auto parameters = q->sshParameters(); !parameters.host.isEmpty())
        probe.start(parameters.host, parameters.port);
}

void VirtualMachine::Private::answerRequests(bool connected)
{
    for (const ConnectRequest &request : std::exchange(requests, {}))
        request.reply(connected);
}

void VirtualMachine::Private::answerRequest(quint64 id, bool connected)
{
    for (qsizetype i = 0; i < requests.size(); ++i) {
        if (requests.at(i).id == id)
            return requests.takeAt(i).reply(connected);
    }
}

void VirtualMachine::Private::report(const QString &error)
{
    Q_EMIT q->errorOccurred(error);
}

Hypervisor::Done VirtualMachine::Private::whenDone(const std::function<void(const QString &error)> &function)
{
    return [self = QPointer(q), function](const QString &error) {
        if (self)
            function(error);
    };
}

VirtualMachine::VirtualMachine(Hypervisor *hypervisor, const DomainSnapshot &snapshot, QObject *parent)
    : QObject(parent)
    , d(new Private(this, hypervisor, snapshot))
{
    d->shutDownTimer.setSingleShot(true);
    d->shutDownTimer.setInterval(shutDownTimeout);
    connect(&d->shutDownTimer, &QTimer::timeout, this, [this] {
        d->report(tr("%1 has not shut down. It can be killed instead.").arg(d->snapshot.name));
        d->refreshState();
    });
    connect(&d->probe, &SshBannerProbe::answered, this, [this] {
        d->sshAnswers = true;
        d->refreshState();
    });
    d->state = d->currentState();
    d->offReported = d->state == Off;
    d->watchSsh();
}

VirtualMachine::~VirtualMachine()
{
    d->answerRequests(false);
}

bool VirtualMachine::isOff(bool *runningHeadless, bool *startedOutside) const
{
    const bool off = d->state == Off;
    if (runningHeadless)
        *runningHeadless = !off && d->snapshot.description.headless;
    if (startedOutside)
        *startedOutside = !off && !d->starting && !d->startedHere;
    return off;
}

VirtualMachine::State VirtualMachine::state() const
{
    return d->state;
}

void VirtualMachine::connectTo(
    ConnectOptions options, const QObject *context, const std::function<void(bool)> &callback)
{
    const quint64 id = ++d->lastRequest;
    d->requests.append({id, Reply(context, callback)});
    const auto answerSoon = [this, id](bool connected) {
        QMetaObject::invokeMethod(
            this, [this, id, connected] { d->answerRequest(id, connected); }, Qt::QueuedConnection);
    };
    switch (d->state) {
    case Connected:
        return answerSoon(true);
    case Stopping:
        return answerSoon(false);
    case Off:
        if (options.testFlag(DoNotStart))
            return answerSoon(false);
        start();
        break;
    case Starting:
    case Running:
        break;
    }
    QTimer::singleShot(connectTimeout, this, [this, id] { d->answerRequest(id, false); });
}

void VirtualMachine::start()
{
    if (d->state != Off || !d->hypervisor)
        return;
    d->starting = true;
    d->hypervisor->start(d->snapshot.uuid, d->whenDone([this](const QString &error) {
        d->starting = false;
        if (!error.isEmpty())
            d->report(tr("%1 could not be started. %2").arg(d->snapshot.name, error));
        d->refreshState();
    }));
    d->refreshState();
}

void VirtualMachine::shutDown()
{
    if ((d->state != Running && d->state != Connected) || !d->hypervisor)
        return;
    d->shutDownTimer.start();
    d->hypervisor->shutDown(d->snapshot.uuid, d->whenDone([this](const QString &error) {
        if (error.isEmpty())
            return;
        d->shutDownTimer.stop();
        d->report(tr("%1 could not be shut down. %2").arg(d->snapshot.name, error));
        d->refreshState();
    }));
    d->refreshState();
}

void VirtualMachine::kill()
{
    if (d->state == Off || !d->hypervisor)
        return;
    d->hypervisor->kill(d->snapshot.uuid, d->whenDone([this](const QString &error) {
        if (!error.isEmpty())
            d->report(tr("%1 could not be killed. %2").arg(d->snapshot.name, error));
    }));
}

bool VirtualMachine::hasPortForwarding(quint16 hostPort, QString *ruleName) const
{
    if (ruleName)
        ruleName->clear();
    bool found = false;
    for (const PortRule &rule : std::as_const(d->snapshot.description.portRules)) {
        if (!rule.covers(hostPort))
            continue;
        found = true;
        if (ruleName && ruleName->isEmpty())
            *ruleName = rule.name;
    }
    return found;
}

void VirtualMachine::addPortForwarding(
    const QString &ruleName,
    const QString &protocol,
    quint16 hostPort,
    quint16 emulatorPort,
    const QObject *context,
    const std::function<void(bool)> &callback)
{
    const Reply reply(context, callback);
    QString problem;
    if (protocol != "tcp"_L1 && protocol != "udp"_L1)
        problem = tr("The protocol \"%1\" cannot be forwarded.").arg(protocol);
    else if (hostPort == 0 || emulatorPort == 0)
        problem = tr("0 is no port that can be forwarded.");
    else if (d->state != Off)
        problem = tr("Ports can be forwarded only while the virtual machine is off.");
    if (!problem.isEmpty() || !d->hypervisor) {
        const auto fail = [self = QPointer(this), problem, reply] {
            if (self && !problem.isEmpty())
                self->d->report(problem);
            reply(false);
        };
        QTimer::singleShot(0, fail); // clazy:exclude=connect-3arg-lambda the caller is answered in any case
        return;
    }
    const PortRule rule{
        .name = ruleName,
        .protocol = protocol,
        .address = {},
        .firstHostPort = hostPort,
        .lastHostPort = hostPort,
        .firstGuestPort = emulatorPort,
    };
    // Somebody may wait for the reply, so it comes even if the machine has gone meanwhile.
    d->hypervisor->addPortRule(d->snapshot.uuid, rule, [self = QPointer(this), reply](const QString &error) {
        if (self && !error.isEmpty())
            self->d->report(tr("%1: %2").arg(self->d->snapshot.name, error));
        reply(error.isEmpty());
    });
}

QSsh::SshConnectionParameters VirtualMachine::sshParameters() const
{
    const Internal::EmulatorDescription &description = d->snapshot.description;
    QSsh::SshConnectionParameters parameters;
    parameters.userName = description.sshUser;
    parameters.privateKeyFile = description.sshPrivateKey;
    for (const PortRule &rule : description.portRules) {
        const quint16 hostPort = rule.protocol == "tcp"_L1 ? rule.hostPortFor(sshGuestPort) : 0;
        if (hostPort == 0)
            continue;
        const bool everywhere = rule.address.isEmpty() || rule.address == "0.0.0.0"_L1 || rule.address == "::"_L1;
        parameters.host = everywhere ? u"127.0.0.1"_s : rule.address;
        parameters.port = hostPort;
        // Its key changes with its image, and only programs of this host can answer in its place.
        if (QHostAddress(parameters.host).isLoopback())
            parameters.hostKeyCheck = QSsh::HostKeyCheck::AcceptAnyHostKey;
        break;
    }
    return parameters;
}

void VirtualMachine::update(const DomainSnapshot &snapshot)
{
    d->snapshot = snapshot;
    d->refreshState();
}

} // namespace Tarn
