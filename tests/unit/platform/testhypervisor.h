// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "domainxml.h"

#include <libvirt/libvirt.h>
#include <libvirt/virterror.h>

#include <memory>

// libvirt's driver without machines, as seen by somebody else than the SDK. Its domains go with it.
class TestHypervisor
{
public:
    static constexpr auto uri = "test:///default";

    TestHypervisor();
    ~TestHypervisor();

    void define(const DomainXml &xml);
    void undefine(const QString &name);
    void start(const QString &name);
    void shutDown(const QString &name);
    void kill(const QString &name);
    void setMetadata(const QString &name, const QString &xml);
    QString definition(const QString &name); // with its passwords

private:
    struct Close
    {
        void operator()(virConnect *connection) const { virConnectClose(connection); }
    };
    struct Free
    {
        void operator()(virDomain *domain) const { virDomainFree(domain); }
    };
    using Domain = std::unique_ptr<virDomain, Free>;
    Domain find(const QString &name);

    std::unique_ptr<virConnect, Close> m_connection;
    QStringList m_names;
};
