// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "testhypervisor.h"

#include <cstdlib>

namespace {

// A fixture that does not work makes every result worthless.
void require(bool worked, const char *what)
{
    if (!worked)
        qFatal("%s: %s", what, virGetLastErrorMessage());
}

} // namespace

TestHypervisor::TestHypervisor()
    : m_connection(virConnectOpen(uri))
{
    require(bool(m_connection), "opening the test driver");
}

TestHypervisor::~TestHypervisor()
{
    for (const QString &name : std::as_const(m_names)) {
        const Domain domain(virDomainLookupByName(m_connection.get(), name.toUtf8().constData()));
        if (!domain)
            continue;
        if (virDomainIsActive(domain.get()) == 1)
            virDomainDestroy(domain.get());
        virDomainUndefine(domain.get());
    }
}

TestHypervisor::Domain TestHypervisor::find(const QString &name)
{
    Domain domain(virDomainLookupByName(m_connection.get(), name.toUtf8().constData()));
    require(bool(domain), "looking a domain up");
    return domain;
}

void TestHypervisor::define(const DomainXml &xml)
{
    const Domain domain(virDomainDefineXML(m_connection.get(), xml.toString().toUtf8().constData()));
    require(bool(domain), "defining a domain");
    if (!m_names.contains(xml.name))
        m_names.append(xml.name);
}

void TestHypervisor::undefine(const QString &name)
{
    require(virDomainUndefine(find(name).get()) == 0, "undefining a domain");
}

void TestHypervisor::start(const QString &name)
{
    require(virDomainCreate(find(name).get()) == 0, "starting a domain");
}

void TestHypervisor::shutDown(const QString &name)
{
    require(virDomainShutdown(find(name).get()) == 0, "shutting a domain down");
}

void TestHypervisor::kill(const QString &name)
{
    require(virDomainDestroy(find(name).get()) == 0, "killing a domain");
}

void TestHypervisor::setMetadata(const QString &name, const QString &xml)
{
    const int result = virDomainSetMetadata(
        find(name).get(),
        VIR_DOMAIN_METADATA_ELEMENT,
        xml.toUtf8().constData(),
        "velmo",
        "urn:velmo:emulator:1",
        VIR_DOMAIN_AFFECT_CONFIG);
    require(result == 0, "changing a domain's metadata");
}

QString TestHypervisor::definition(const QString &name)
{
    char *xml = virDomainGetXMLDesc(find(name).get(), VIR_DOMAIN_XML_INACTIVE | VIR_DOMAIN_XML_SECURE);
    require(xml, "reading a domain's definition");
    const QString definition = QString::fromUtf8(xml);
    std::free(xml);
    return definition;
}
