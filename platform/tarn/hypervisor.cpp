// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "hypervisor.h"

#include "connectionuri.h"
#include "domaindefinition.h"
#include "eventloop.h"
#include "libvirthandles.h"
#include "passtpath.h"

#include <QLoggingCategory>
#include <QMutex>
#include <QPointer>

#include <algorithm>
#include <array>
#include <atomic>
#include <optional>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Tarn::Internal {

namespace {

constexpr auto endTimeout = 5s;

Q_LOGGING_CATEGORY(libvirtLog, "tarn.libvirt", QtWarningMsg)

// Errors are returned to whoever has asked, so they need not be printed, too.
void logLibvirtError(void *, virErrorPtr error)
{
    qCDebug(libvirtLog) << error->message;
}

std::optional<DomainSnapshot::Power> powerOf(virDomain *domain)
{
    int state = VIR_DOMAIN_NOSTATE;
    if (virDomainGetState(domain, &state, nullptr, 0) < 0)
        return {};
    switch (state) {
    case VIR_DOMAIN_SHUTOFF:
    case VIR_DOMAIN_CRASHED:
        return DomainSnapshot::Power::Off;
    case VIR_DOMAIN_SHUTDOWN:
        return DomainSnapshot::Power::ShuttingDown;
    default:
        return DomainSnapshot::Power::On;
    }
}

QString uuidOf(virDomain *domain)
{
    std::array<char, VIR_UUID_STRING_BUFLEN> uuid{};
    return virDomainGetUUIDString(domain, uuid.data()) < 0 ? QString() : QString::fromLatin1(uuid.data());
}

QString definitionOf(virDomain *domain, unsigned int flags)
{
    return QString::fromUtf8(TextHandle(virDomainGetXMLDesc(domain, flags)).get());
}

// Somebody may have been quicker in switching it off, which is no error.
QString errorUnlessOff(virDomain *domain)
{
    const QString error = lastLibvirtError();
    return virDomainIsActive(domain) == 0 ? QString() : error;
}

// Nothing for a domain that is not ours, or that has gone meanwhile.
std::optional<DomainSnapshot> snapshotOf(virDomain *domain)
{
    const auto power = powerOf(domain);
    if (!power)
        return {};
    // A machine that is off is what its next start will make it.
    const unsigned int flags = power == DomainSnapshot::Power::Off ? VIR_DOMAIN_XML_INACTIVE : 0;
    const auto description = describeDomain(definitionOf(domain, flags));
    if (!description)
        return {};
    return DomainSnapshot{uuidOf(domain), QString::fromUtf8(virDomainGetName(domain)), *power, *description};
}

} // namespace

// The worker thread's way to the hypervisor, which may have gone when a call returns at last.
struct Hypervisor::Link
{
    // Calls the function on the main thread.
    template<typename Function>
    void post(Function &&function)
    {
        const QMutexLocker locker(&mutex);
        if (hypervisor)
            QMetaObject::invokeMethod(hypervisor, std::forward<Function>(function), Qt::QueuedConnection);
    }

    QMutex mutex;
    Hypervisor *hypervisor;
};

// libvirt calls back on the main thread. What it is given lives until libvirt lets go of it, which may be later than
// the end of the hypervisor.
struct Hypervisor::Events
{
    QPointer<Hypervisor> hypervisor;

    static void release(void *events) { delete static_cast<Events *>(events); }

    static Hypervisor *of(void *events) { return static_cast<Events *>(events)->hypervisor; }

    static void lifecycle(virConnect *, virDomain *, int, int, void *events)
    {
        if (Hypervisor *hypervisor = of(events))
            hypervisor->scheduleRefresh();
    }

    static void metadataChanged(virConnect *, virDomain *, int, const char *, void *events)
    {
        if (Hypervisor *hypervisor = of(events))
            hypervisor->scheduleRefresh();
    }

    static void closed(virConnect *, int, void *events)
    {
        // Later, as libvirt holds a lock that closing the connection needs.
        if (Hypervisor *hypervisor = of(events)) {
            QMetaObject::invokeMethod(
                hypervisor, &Hypervisor::lost, Qt::QueuedConnection, tr("The connection to the hypervisor was lost."));
        }
    }
};

struct Hypervisor::Worker
{
    QString open(const QString &uri, Link &link);
    void close();
    std::optional<QList<DomainSnapshot>> list() const;
    DomainHandle find(const QString &uuid) const
    {
        return DomainHandle(virDomainLookupByUUIDString(connection.get(), uuid.toLatin1().constData()));
    }

    ConnectionHandle connection;
    std::array<int, 2> subscriptions{-1, -1};
    std::unique_ptr<Events> closeEvents;
    bool isLocal = false;
    std::atomic<bool> refreshScheduled = false; // of both threads
};

QString Hypervisor::Worker::open(const QString &uri, Link &link)
{
    close();
    if (const QString error = prepareEmbedRoot(uri); !error.isEmpty())
        return error;
    isLocal = isLocalQemu(uri);
    connection.reset(virConnectOpen(uri.toUtf8().constData()));
    if (!connection) {
        const QString message = lastLibvirtError();
        return tr("There is no connection to the hypervisor \"%1\": %2 %3")
            .arg(uri, message, connectionHint(uri, message))
            .trimmed();
    }
    const auto events = [&link] {
        const QMutexLocker locker(&link.mutex);
        return new Events{link.hypervisor};
    };
    const auto subscribe = [&](int event, virConnectDomainEventGenericCallback callback) {
        Events *const receiver = events();
        const int subscription =
            virConnectDomainEventRegisterAny(connection.get(), nullptr, event, callback, receiver, &Events::release);
        if (subscription < 0)
            Events::release(receiver);
        return subscription;
    };
    subscriptions = {
        subscribe(VIR_DOMAIN_EVENT_ID_LIFECYCLE, VIR_DOMAIN_EVENT_CALLBACK(&Events::lifecycle)),
        subscribe(VIR_DOMAIN_EVENT_ID_METADATA_CHANGE, VIR_DOMAIN_EVENT_CALLBACK(&Events::metadataChanged)),
    };
    if (std::ranges::any_of(subscriptions, [](int subscription) { return subscription < 0; })) {
        const QString message = lastLibvirtError();
        close();
        return tr("The hypervisor \"%1\" does not report changes: %2").arg(uri, message);
    }
    // A driver that cannot lose its connection succeeds without ever letting go of what it is given: it stays ours.
    closeEvents.reset(events());
    virConnectRegisterCloseCallback(connection.get(), &Events::closed, closeEvents.get(), nullptr);
    return {};
}

void Hypervisor::Worker::close()
{
    if (!connection)
        return;
    for (int &subscription : subscriptions) {
        if (subscription >= 0)
            virConnectDomainEventDeregisterAny(connection.get(), std::exchange(subscription, -1));
    }
    virConnectUnregisterCloseCallback(connection.get(), &Events::closed);
    connection.reset();
    closeEvents.reset();
}

std::optional<QList<DomainSnapshot>> Hypervisor::Worker::list() const
{
    virDomainPtr *domains = nullptr;
    const int count = virConnectListAllDomains(connection.get(), &domains, 0);
    if (count < 0)
        return {};
    QList<DomainSnapshot> snapshots;
    for (int i = 0; i < count; ++i) {
        const DomainHandle domain(domains[i]);
        if (const auto snapshot = snapshotOf(domain.get()))
            snapshots.append(*snapshot);
    }
    std::free(static_cast<void *>(domains));
    return snapshots;
}

Hypervisor::Hypervisor(QObject *parent)
    : QObject(parent)
    , m_link(new Link{.mutex = {}, .hypervisor = this})
    , m_worker(new Worker)
    , m_pool(new QThreadPool)
{
    m_pool->setMaxThreadCount(1);
    m_pool->setObjectName("Tarn"_L1);
}

Hypervisor::~Hypervisor()
{
    {
        const QMutexLocker locker(&m_link->mutex);
        m_link->hypervisor = nullptr;
    }
    m_pool->clear();
    m_pool->start([worker = m_worker] { worker->close(); });
    if (!m_pool->waitForDone(QDeadlineTimer(endTimeout))) {
        qCWarning(libvirtLog, "The hypervisor does not answer; a call to it is given up.");
        std::ignore = m_pool.release(); // would wait for the thread
    }
    for (const Done &done : std::exchange(m_pending, {})) {
        if (done)
            done(tr("The connection to the hypervisor was closed."));
    }
}

void Hypervisor::open(const ConnectionSettings &settings)
{
    // libvirt's own log goes to the IDE's output: only what is wrong belongs there.
    if (!qEnvironmentVariableIsSet("LIBVIRT_DEBUG"))
        qputenv("LIBVIRT_DEBUG", "error");
    deliverLibvirtEvents();
    virSetErrorFunc(nullptr, &logLibvirtError);

    const QString uri = connectionUri(settings, daemonFolders());
    // QEMU's driver runs in this process, or in a daemon that libvirt starts from it with the same PATH.
    if (isLocalQemu(uri))
        preferOurPasst();
    m_pool->start([this, link = m_link, worker = m_worker, uri] {
        const QString error = worker->open(uri, *link);
        const auto domains = error.isEmpty() ? worker->list() : std::nullopt;
        link->post([this, uri, error, domains] {
            if (!error.isEmpty()) {
                Q_EMIT failed(uri, error);
                return;
            }
            const QPointer self(this);
            Q_EMIT opened(uri); // NOLINT(clang-analyzer-core.CallAndMessage) not null before
            if (self && domains)
                Q_EMIT domainsListed(*domains);
        });
    });
}

void Hypervisor::post(const Operation &operation, const Done &done)
{
    const quint64 task = ++m_lastTask;
    m_pending.insert(task, done);
    m_pool->start([this, link = m_link, worker = m_worker, operation, task] {
        QString error = tr("There is no connection to the hypervisor.");
        std::optional<QList<DomainSnapshot>> domains;
        if (worker->connection) {
            error = operation(*worker);
            domains = worker->list();
        }
        link->post([this, task, error, domains] {
            const QPointer self(this);
            if (domains)
                Q_EMIT domainsListed(*domains); // NOLINT(clang-analyzer-core.CallAndMessage) not null before
            if (self)
                finish(task, error);
        });
    });
}

void Hypervisor::finish(quint64 task, const QString &error)
{
    if (const Done done = m_pending.take(task))
        done(error);
}

void Hypervisor::scheduleRefresh()
{
    if (m_worker->refreshScheduled.exchange(true))
        return;
    post(
        [](Worker &worker) {
            worker.refreshScheduled = false; // events from now on need another look
            return QString();
        },
        {});
}

void Hypervisor::start(const QString &uuid, const Done &done)
{
    post(
        [uuid](Worker &worker) {
            const DomainHandle domain = worker.find(uuid);
            if (!domain)
                return lastLibvirtError();
            if (virDomainIsActive(domain.get()) == 1)
                return QString();
            if (worker.isLocal) {
                const QStringList missing = missingOnHost(definitionOf(domain.get(), VIR_DOMAIN_XML_INACTIVE));
                if (!missing.isEmpty())
                    return missing.join(u' ');
            }
            return virDomainCreate(domain.get()) < 0 ? lastLibvirtError() : QString();
        },
        done);
}

void Hypervisor::shutDown(const QString &uuid, const Done &done)
{
    post(
        [uuid](Worker &worker) {
            const DomainHandle domain = worker.find(uuid);
            if (!domain)
                return lastLibvirtError();
            return virDomainShutdown(domain.get()) == 0 ? QString() : errorUnlessOff(domain.get());
        },
        done);
}

void Hypervisor::kill(const QString &uuid, const Done &done)
{
    post(
        [uuid](Worker &worker) {
            const DomainHandle domain = worker.find(uuid);
            if (!domain)
                return lastLibvirtError();
            return virDomainDestroy(domain.get()) == 0 ? QString() : errorUnlessOff(domain.get());
        },
        done);
}

void Hypervisor::addPortRule(const QString &uuid, const PortRule &rule, const Done &done)
{
    post(
        [uuid, rule](Worker &worker) {
            const DomainHandle domain = worker.find(uuid);
            if (!domain)
                return lastLibvirtError();
            if (virDomainIsActive(domain.get()) != 0)
                return tr("Ports can be forwarded only while the virtual machine is off.");
            // With its secrets, or they would be lost.
            const Edit edit =
                withPortRule(definitionOf(domain.get(), VIR_DOMAIN_XML_INACTIVE | VIR_DOMAIN_XML_SECURE), rule);
            if (!edit.error.isEmpty())
                return edit.error;
            const DomainHandle redefined(virDomainDefineXML(worker.connection.get(), edit.xml.toUtf8().constData()));
            return redefined ? QString() : lastLibvirtError();
        },
        done);
}

void Hypervisor::setDeviceModel(const QString &uuid, const QString &name, const Done &done)
{
    post(
        [uuid, name](Worker &worker) {
            const DomainHandle domain = worker.find(uuid);
            if (!domain)
                return lastLibvirtError();
            const Edit edit = metadataWithDeviceModel(definitionOf(domain.get(), VIR_DOMAIN_XML_INACTIVE), name);
            if (!edit.error.isEmpty())
                return edit.error;
            unsigned int flags = VIR_DOMAIN_AFFECT_CONFIG;
            if (virDomainIsActive(domain.get()) == 1)
                flags |= VIR_DOMAIN_AFFECT_LIVE;
            const int result = virDomainSetMetadata(
                domain.get(),
                VIR_DOMAIN_METADATA_ELEMENT,
                edit.xml.toUtf8().constData(),
                metadataPrefix,
                metadataNamespace,
                flags);
            return result < 0 ? lastLibvirtError() : QString();
        },
        done);
}

} // namespace Tarn::Internal
