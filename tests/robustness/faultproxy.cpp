// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/faultproxy.h"

#include "robustness/faultylink.h"

#include <QTcpSocket>

#include <utility>

namespace Robustness {

FaultProxy::FaultProxy(quint16 emulatorPort, QObject *parent)
    : QObject(parent)
    , m_emulatorPort(emulatorPort)
{
    connect(&m_server, &QTcpServer::newConnection, this, &FaultProxy::accept);
}

FaultProxy::~FaultProxy()
{
    for (FaultyLink *link : std::as_const(m_links))
        link->disconnect(this);
}

bool FaultProxy::listen(quint16 port)
{
    return m_server.listen(QHostAddress::LocalHost, port);
}

void FaultProxy::setFault(const std::optional<Fault> &fault)
{
    if (!m_links.isEmpty())
        m_links.constLast()->setFault(fault);
}

void FaultProxy::breakAll(Ending ending)
{
    const QList<FaultyLink *> links = m_links;
    for (FaultyLink *link : links)
        link->breakNow(ending);
}

void FaultProxy::accept()
{
    while (QTcpSocket *plugin = m_server.nextPendingConnection()) {
        auto *link = new FaultyLink(plugin, m_emulatorPort, m_bytesAtOnce, this);
        m_links.append(link);
        m_bytes.clear();
        ++m_connections;
        connect(link, &FaultyLink::passed, this, [this, link](Direction direction, qint64 bytes) {
            if (link == m_links.constLast())
                m_bytes[direction] += bytes;
        });
        connect(link, &FaultyLink::broken, this, [this](Ending ending) {
            ++m_broken;
            Q_EMIT linkBroken(ending);
        });
        connect(link, &FaultyLink::finished, this, [this, link] {
            m_links.removeAll(link);
            link->deleteLater();
        });
        link->setFault(m_nextFault ? m_nextFault() : std::nullopt);
    }
}

} // namespace Robustness
