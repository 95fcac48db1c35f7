// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

// A libvirt domain with an emulator in it, to be adapted to what a test needs.
struct DomainXml
{
    QString name = QStringLiteral("emulator");
    QString type = QStringLiteral("test");
    QString metadata = defaultMetadata(); // everything inside the metadata element
    QString interfaceBackend = QStringLiteral("passt");
    QString portForwards = portForward(QStringLiteral("tcp"), 2222, 22); // inside the interface
    QString os = QStringLiteral("<type>hvm</type>");
    QString devices{}; // further ones

    QString toString() const;

    static QString defaultMetadata(const QString &deviceModel = QStringLiteral("Velmo One"));
    static QString portForward(const QString &protocol, int hostPort, int guestPort);
};
