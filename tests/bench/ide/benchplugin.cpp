// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchplugin.h"

#include <extensionsystem/pluginmanager.h>

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// The process's share of all memory in use, in KiB: pages that several processes map count in part.
qint64 proportionalSetSize()
{
    QFile file(u"/proc/self/smaps_rollup"_s);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    static const QRegularExpression line(u"^Pss:\\s+(\\d+) kB"_s, QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(QString::fromLatin1(file.readAll()));
    return match.hasMatch() ? match.captured(1).toLongLong() : -1;
}

void report()
{
    std::printf("ready %lld\n", static_cast<long long>(proportionalSetSize()));
    std::fflush(stdout);
    QCoreApplication::quit();
}

} // namespace

void BenchPlugin::extensionsInitialized()
{
    connect(
        ExtensionSystem::PluginManager::instance(),
        &ExtensionSystem::PluginManager::initializationDone,
        this,
        [this] { QTimer::singleShot(0, this, report); },
        Qt::QueuedConnection);
}
