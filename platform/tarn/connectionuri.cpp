// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "connectionuri.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace Tarn::Internal {

namespace {

// An ordinary user may neither change a program's owner, label nor control group; and with no log daemon QEMU writes
// its own log.
constexpr auto embedConfiguration = "stdio_handler = \"file\"\n"
                                    "security_driver = \"none\"\n"
                                    "remember_owner = 0\n"
                                    "namespaces = []\n"
                                    "cgroup_controllers = []\n";

struct Tr
{
    Q_DECLARE_TR_FUNCTIONS(Tarn::Internal)
};

} // namespace

QString embedRoot(const QString &uri)
{
    const QUrl url(uri);
    if (url.scheme() != "qemu"_L1 || url.path() != "/embed"_L1)
        return {};
    return QUrlQuery(url).queryItemValue(u"root"_s, QUrl::FullyDecoded);
}

QStringList daemonFolders()
{
    return qEnvironmentVariable("PATH").split(u':', Qt::SkipEmptyParts)
        + QStringList{u"/usr/sbin"_s, u"/usr/local/sbin"_s, u"/sbin"_s};
}

QString connectionUri(const ConnectionSettings &settings, const QStringList &daemonFolders)
{
    if (!settings.uri.isEmpty())
        return settings.uri;
    for (const QString &daemon : {u"virtqemud"_s, u"libvirtd"_s}) {
        if (!QStandardPaths::findExecutable(daemon, daemonFolders).isEmpty())
            return u"qemu:///session"_s;
    }
    QString root = settings.embedRoot;
    if (root.isEmpty())
        root = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/velmo-emulators"_L1;
    return u"qemu:///embed?root="_s + QString::fromLatin1(QUrl::toPercentEncoding(root, "/"));
}

bool isLocalQemu(const QString &uri)
{
    const QUrl url(uri);
    return url.scheme().section(u'+', 0, 0) == "qemu"_L1 && url.host().isEmpty();
}

QString prepareEmbedRoot(const QString &uri)
{
    const QString root = embedRoot(uri);
    if (root.isEmpty())
        return {};
    const QDir folder(root + "/etc"_L1);
    const QString fileName = folder.filePath(u"qemu.conf"_s);
    if (QFile::exists(fileName))
        return {};
    QSaveFile file(fileName);
    if (!folder.mkpath(u"."_s) || !file.open(QIODevice::WriteOnly) || file.write(embedConfiguration) < 0
        || !file.commit())
        return Tr::tr("The file \"%1\" could not be written.").arg(QDir::toNativeSeparators(fileName));
    return {};
}

QString connectionHint(const QString &uri, const QString &libvirtMessage)
{
    if (libvirtMessage.contains("driver.pid"_L1))
        return Tr::tr("Another program is using these emulators; close it and connect again.");
    if (!isLocalQemu(uri))
        return {};
    if (!embedRoot(uri).isEmpty())
        return Tr::tr("libvirt's QEMU driver may be missing (package \"libvirt-daemon-driver-qemu\").");
    return Tr::tr("libvirt's daemon or its QEMU driver may be missing (packages \"libvirt-daemon\" and "
                  "\"libvirt-daemon-driver-qemu\").");
}

} // namespace Tarn::Internal
