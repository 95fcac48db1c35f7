// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sdk.h"

#include "emulator.h"

using namespace Qt::StringLiterals;

namespace Tarn {

namespace {
Sdk *theInstance = nullptr;
}

struct Sdk::Private
{
    ConnectionSettings settings;
    QList<Emulator *> emulators;
};

Sdk::Sdk(const ConnectionSettings &settings, QObject *parent)
    : QObject(parent)
    , d(new Private{settings, {}})
{
    Q_ASSERT(!theInstance);
    theInstance = this;
}

Sdk::~Sdk()
{
    theInstance = nullptr;
}

Sdk *Sdk::instance()
{
    return theInstance;
}

QList<Emulator *> Sdk::emulators()
{
    return theInstance ? theInstance->d->emulators : QList<Emulator *>();
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
    return {};
}

bool Sdk::isConnected() const
{
    return false;
}

QString Sdk::connectionUri() const
{
    return d->settings.uri;
}

QString Sdk::connectionError() const
{
    return {};
}

void Sdk::reconnect() {}

} // namespace Tarn
