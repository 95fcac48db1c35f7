// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "domainsnapshot.h"

#include <optional>

// Reads and edits libvirt's domain XML. Pure functions: nothing here speaks to libvirt.
namespace Tarn::Internal {

// The namespace of our element in a domain's metadata, and the prefix it is written with.
inline constexpr auto metadataNamespace = "urn:velmo:emulator:1";
inline constexpr auto metadataPrefix = "velmo";

// Nothing when the domain does not carry our metadata, or is no XML.
std::optional<EmulatorDescription> describeDomain(const QString &domainXml);

struct Edit
{
    QString xml;
    QString error; // a text for the user; empty when the XML is good
};

// The definition with a rule more, on the host's loopback interface; everything else is left as it is. A rule of the
// same protocol and host port is replaced. The rule forwards a single port.
Edit withPortRule(const QString &domainXml, const PortRule &rule);

// Our metadata element of the domain, with another device model in it. Its names are without the namespace, which
// libvirt puts in when it sets an element of the metadata.
Edit metadataWithDeviceModel(const QString &domainXml, const QString &deviceModel);

// What the definition asks for and this host does not have, each as a text for the user.
QStringList missingOnHost(const QString &domainXml);

} // namespace Tarn::Internal
