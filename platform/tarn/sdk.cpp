// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sdk.h"

#include "domainsnapshot.h"
#include "emulator.h"
#include "hypervisor.h"

#include <QDir>
#include <QLoggingCategory>
#include <QPointer>
#include <QSet>
#include <QSettings>
#include <QTimer>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Tarn {

using Internal::DomainSnapshot;
using Internal::Hypervisor;

namespace {

Q_LOGGING_CATEGORY(tarnLog, "tarn", QtWarningMsg)

constexpr auto reconnectPause = 5s;

Sdk *theInstance = nullptr;

QSet<QString> installedDeviceModels(const QString &folder)
{
    QSet<QString> names;
    if (folder.isEmpty())
        return names;
    for (const QFileInfo &file : QDir(folder).entryInfoList({u"*.ini"_s}, QDir::Files)) {
        const QVariant value = QSettings(file.filePath(), QSettings::IniFormat).value("device-name");
        // QSettings makes a list of a text with commas.
        const QString name =
            value.typeId() == QMetaType::QStringList ? value.toStringList().join(", "_L1) : value.toString();
        if (!name.isEmpty())
            names.insert(name);
    }
    return names;
}

bool isSameMachine(const DomainSnapshot &left, const DomainSnapshot &right)
{
    return left.uuid == right.uuid && left.name == right.name;
}

bool isBefore(const DomainSnapshot &left, const DomainSnapshot &right)
{
    return std::tie(left.name, left.uuid) < std::tie(right.name, right.uuid);
}

} // namespace

struct Sdk::Private
{
    // An emulator and what it was told last.
    struct Entry
    {
        Emulator *emulator = nullptr;
        DomainSnapshot snapshot;
        bool removing = false;
    };

    explicit Private(Sdk *sdk, const ConnectionSettings &settings)
        : q(sdk)
        , settings(settings)
        , installedModels(installedDeviceModels(settings.deviceModelDirectory))
        , knownModels(installedModels)
    {
    }

    void open();
    void showDomains(const QList<DomainSnapshot> &domains);
    bool step(); // false when there is nothing left to do; after true, everything may have changed
    bool removeOne();
    bool addOne();
    bool updateOne();
    void refreshDeviceModels(bool always);

    Sdk *const q;
    const ConnectionSettings settings;
    const QSet<QString> installedModels;
    QSet<QString> knownModels;
    Hypervisor hypervisor;
    QTimer reconnectTimer;
    QList<DomainSnapshot> domains; // what the hypervisor has reported last, in order
    QList<Entry> entries;          // what is shown, in order
    QString uri;
    QString error;
    bool connected = false;
    bool opening = false;
};

void Sdk::Private::open()
{
    opening = true;
    error.clear();
    hypervisor.open(settings);
}

// Brings the emulators to what was reported. Receivers of the signals may run event loops in which the next report
// comes, so every step starts from what holds then.
void Sdk::Private::showDomains(const QList<DomainSnapshot> &reported)
{
    domains = reported;
    std::ranges::sort(domains, isBefore);
    const QPointer self(q);
    while (self && step()) {
    }
}

bool Sdk::Private::step()
{
    return removeOne() || addOne() || updateOne();
}

bool Sdk::Private::removeOne()
{
    const auto isGone = [this](const Entry &entry) {
        return !entry.removing && std::ranges::none_of(domains, [&](const DomainSnapshot &domain) {
            return isSameMachine(domain, entry.snapshot);
        });
    };
    const auto gone = std::ranges::find_if(entries, isGone);
    if (gone == entries.end())
        return false;
    Emulator *emulator = gone->emulator;
    // A running machine cannot be taken out of a hypervisor's list: it was killed since the last report.
    if (connected && gone->snapshot.power != DomainSnapshot::Power::Off) {
        gone->snapshot.power = DomainSnapshot::Power::Off;
        const DomainSnapshot snapshot = gone->snapshot; // the list may be another one before the receivers are through
        emulator->update(snapshot);
        return true;
    }
    gone->removing = true;
    const QPointer self(q);
    Q_EMIT q->aboutToRemoveEmulator(int(gone - entries.begin()));
    if (!self)
        return true;
    entries.removeIf([emulator](const Entry &entry) { return entry.emulator == emulator; });
    // Receivers may still look at it until they have heard that it is gone.
    refreshDeviceModels(true);
    emulator->deleteLater();
    return true;
}

bool Sdk::Private::addOne()
{
    const auto isNew = [this](const DomainSnapshot &domain) {
        return std::ranges::none_of(
            entries, [&](const Entry &entry) { return !entry.removing && isSameMachine(domain, entry.snapshot); });
    };
    const auto found = std::ranges::find_if(domains, isNew);
    if (found == domains.end())
        return false;
    const DomainSnapshot &snapshot = *found;
    for (const QString &warning : snapshot.description.warnings)
        qCWarning(tarnLog).noquote() << "The definition of" << snapshot.name << warning;
    const auto position = std::ranges::lower_bound(entries, snapshot, isBefore, &Entry::snapshot);
    const int index = int(position - entries.begin());
    entries.insert(index, Entry{new Emulator(&hypervisor, snapshot, q), snapshot});
    const QPointer self(q);
    Q_EMIT q->emulatorAdded(index);
    if (self)
        refreshDeviceModels(false);
    return true;
}

bool Sdk::Private::updateOne()
{
    for (Entry &entry : entries) {
        const auto domain = std::ranges::find_if(
            domains, [&](const DomainSnapshot &domain) { return isSameMachine(domain, entry.snapshot); });
        if (entry.removing || domain == domains.end() || *domain == entry.snapshot)
            continue;
        // A copy: the list may be another one before the emulator's receivers are through.
        const DomainSnapshot snapshot = *domain; // NOLINT(performance-unnecessary-copy-initialization)
        if (snapshot.description.warnings != entry.snapshot.description.warnings) {
            for (const QString &warning : snapshot.description.warnings)
                qCWarning(tarnLog).noquote() << "The definition of" << snapshot.name << warning;
        }
        entry.snapshot = snapshot;
        const QPointer self(q);
        entry.emulator->update(snapshot);
        if (self)
            refreshDeviceModels(false);
        return true;
    }
    return false;
}

void Sdk::Private::refreshDeviceModels(bool always)
{
    QSet<QString> models = installedModels;
    for (const Entry &entry : std::as_const(entries)) {
        if (!entry.snapshot.description.deviceModel.isEmpty())
            models.insert(entry.snapshot.description.deviceModel);
    }
    if (models == knownModels && !always)
        return;
    knownModels = models;
    Q_EMIT q->deviceModelsChanged();
}

Sdk::Sdk(const ConnectionSettings &settings, QObject *parent)
    : QObject(parent)
    , d(new Private(this, settings))
{
    Q_ASSERT_X(!theInstance, "Tarn::Sdk", "there is one already");
    theInstance = this;

    d->reconnectTimer.setSingleShot(true);
    d->reconnectTimer.setInterval(reconnectPause);
    connect(&d->reconnectTimer, &QTimer::timeout, this, [this] { d->open(); });
    connect(&d->hypervisor, &Hypervisor::opened, this, [this](const QString &uri) {
        d->opening = false;
        d->connected = true;
        d->uri = uri;
        Q_EMIT connected();
    });
    connect(&d->hypervisor, &Hypervisor::failed, this, [this](const QString &uri, const QString &error) {
        d->opening = false;
        d->uri = uri;
        d->error = error;
        qCWarning(tarnLog).noquote() << error;
        Q_EMIT connectionFailed(error);
    });
    connect(&d->hypervisor, &Hypervisor::lost, this, [this](const QString &error) {
        d->connected = false;
        d->error = error;
        d->reconnectTimer.start();
        const QPointer self(this);
        d->showDomains({});
        if (self)
            Q_EMIT connectionFailed(error);
    });
    connect(&d->hypervisor, &Hypervisor::domainsListed, this, [this](const QList<DomainSnapshot> &domains) {
        if (d->connected)
            d->showDomains(domains);
    });
    d->open();
}

Sdk::~Sdk()
{
    theInstance = nullptr;
    for (const Private::Entry &entry : std::exchange(d->entries, {}))
        delete entry.emulator;
}

Sdk *Sdk::instance()
{
    return theInstance;
}

QList<Emulator *> Sdk::emulators()
{
    QList<Emulator *> emulators;
    if (theInstance) {
        for (const Private::Entry &entry : std::as_const(theInstance->d->entries))
            emulators.append(entry.emulator);
    }
    return emulators;
}

QString Sdk::osVariant(TextStyle style)
{
    QString name = u"Velmo OS"_s;
    if (style == TextStyle::NonBreaking)
        name.replace(u' ', QChar::Nbsp);
    return name;
}

QList<DeviceModel> Sdk::deviceModels() const
{
    QStringList names(d->knownModels.begin(), d->knownModels.end());
    names.sort();
    QList<DeviceModel> models;
    for (const QString &name : std::as_const(names))
        models.append({name});
    return models;
}

bool Sdk::isConnected() const
{
    return d->connected;
}

QString Sdk::connectionUri() const
{
    return d->uri;
}

QString Sdk::connectionError() const
{
    return d->error;
}

void Sdk::reconnect()
{
    if (d->connected || d->opening)
        return;
    d->reconnectTimer.stop();
    d->open();
}

} // namespace Tarn
