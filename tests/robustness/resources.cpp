// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/resources.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace Robustness::Resources {

namespace {

QString folder(qint64 processId)
{
    return u"/proc/%1/"_s.arg(processId > 0 ? QString::number(processId) : u"self"_s);
}

} // namespace

int descriptors(qint64 processId)
{
    const QDir entries(folder(processId) + "fd"_L1);
    const auto filter = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
    return int(entries.entryList(filter).size());
}

qint64 memory(qint64 processId)
{
    QFile file(folder(processId) + "status"_L1);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ').value(1).toLongLong();
    }
    return 0;
}

int socketsTo(quint16 port)
{
    QFile file(u"/proc/net/tcp"_s);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray ending = ':' + QByteArray::number(port, 16).rightJustified(4, '0').toUpper();
    int sockets = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QByteArrayList fields = line.simplified().split(' ');
        constexpr qsizetype remote = 2;
        constexpr qsizetype inode = 9; // 0 for what only the kernel remembers
        if (fields.value(remote).endsWith(ending) && fields.value(inode).toLongLong() != 0)
            ++sockets;
    }
    return sockets;
}

} // namespace Robustness::Resources
