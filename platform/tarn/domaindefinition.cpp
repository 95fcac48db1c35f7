// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "domaindefinition.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Tarn::Internal {

namespace {

constexpr int sshGuestPort = 22;
const QString loopbackAddress = u"127.0.0.1"_s;

struct Tr
{
    Q_DECLARE_TR_FUNCTIONS(Tarn::Internal)
};

// Without namespace processing, so that prefixes and declarations are written back as they were.
QDomDocument parsed(const QString &xml)
{
    QDomDocument document;
    if (!document.setContent(xml, QDomDocument::ParseOption::PreserveSpacingOnlyNodes))
        document.clear();
    return document;
}

struct QualifiedName
{
    QString namespaceUri;
    QString localName;
};

QualifiedName qualifiedName(const QDomElement &element)
{
    const QString tag = element.tagName();
    const qsizetype colon = tag.indexOf(u':');
    const QString declaration = colon < 0 ? u"xmlns"_s : u"xmlns:"_s + tag.left(colon);
    for (QDomElement e = element; !e.isNull(); e = e.parentNode().toElement()) {
        if (e.hasAttribute(declaration))
            return {e.attribute(declaration), tag.mid(colon + 1)};
    }
    return {{}, tag.mid(colon + 1)};
}

bool isOurs(const QDomElement &element, const QString &localName)
{
    const QualifiedName name = qualifiedName(element);
    return name.localName == localName && name.namespaceUri == QLatin1StringView(metadataNamespace);
}

QList<QDomElement> childElements(const QDomElement &parent, const QString &tagName = {})
{
    QList<QDomElement> children;
    for (QDomElement e = parent.firstChildElement(tagName); !e.isNull(); e = e.nextSiblingElement(tagName))
        children.append(e);
    return children;
}

QList<QDomElement> ourChildren(const QDomElement &parent, const QString &localName)
{
    QList<QDomElement> children = childElements(parent);
    children.removeIf([&](const QDomElement &e) { return !isOurs(e, localName); });
    return children;
}

QDomElement ourMetadata(const QDomDocument &document)
{
    const QDomElement metadata = document.documentElement().firstChildElement(u"metadata"_s);
    return ourChildren(metadata, u"emulator"_s).value(0);
}

// An element of ours has the prefix of its parent, which is declared where it stands.
QDomElement makeOurs(QDomDocument &document, const QDomElement &parent, const QString &localName)
{
    const QString tag = parent.tagName();
    return document.createElement(tag.left(tag.indexOf(u':') + 1) + localName);
}

// The interface whose ports passt forwards.
QDomElement forwardingInterface(const QDomDocument &document)
{
    const QDomElement devices = document.documentElement().firstChildElement(u"devices"_s);
    for (const QDomElement &interface : childElements(devices, u"interface"_s)) {
        const QString type = interface.attribute(u"type"_s);
        const QString backend = interface.firstChildElement(u"backend"_s).attribute(u"type"_s);
        if ((type == "user"_L1 || type == "vhostuser"_L1) && backend == "passt"_L1)
            return interface;
    }
    return {};
}

quint16 port(const QDomElement &element, const QString &attribute, quint16 fallback = 0)
{
    bool ok = false;
    const quint16 number = element.attribute(attribute).toUShort(&ok);
    return ok ? number : fallback;
}

PortRule ruleOf(const QDomElement &forward, const QDomElement &range)
{
    const quint16 first = port(range, u"start"_s);
    return {
        .name = {},
        .protocol = forward.attribute(u"proto"_s),
        .address = forward.attribute(u"address"_s),
        .firstHostPort = first,
        .lastHostPort = port(range, u"end"_s, first),
        .firstGuestPort = port(range, u"to"_s, first),
    };
}

QList<PortRule> portRules(const QDomDocument &document)
{
    QList<PortRule> rules;
    for (const QDomElement &forward : childElements(forwardingInterface(document), u"portForward"_s)) {
        for (const QDomElement &range : childElements(forward, u"range"_s)) {
            if (range.attribute(u"exclude"_s) == "yes"_L1)
                continue;
            if (const PortRule rule = ruleOf(forward, range); rule.firstHostPort != 0)
                rules.append(rule);
        }
    }
    return rules;
}

bool nameRules(QList<PortRule> &rules, const QDomElement &named)
{
    const QString name = named.attribute(u"name"_s);
    const quint16 hostPort = port(named, u"hostPort"_s);
    if (name.isEmpty() || hostPort == 0)
        return false;
    // A name without its rule is left over from a change that somebody made by hand: no harm.
    for (PortRule &rule : rules) {
        if (rule.protocol == named.attribute(u"protocol"_s) && rule.covers(hostPort))
            rule.name = name;
    }
    return true;
}

void insertPortRange(QDomDocument &document, QDomElement interface, const PortRule &rule)
{
    QDomElement target;
    QDomElement last;
    for (const QDomElement &forward : childElements(interface, u"portForward"_s)) {
        last = forward;
        if (forward.attribute(u"proto"_s) == rule.protocol && forward.attribute(u"address"_s) == loopbackAddress
            && !forward.hasAttribute(u"dev"_s) && !forward.firstChildElement(u"range"_s).isNull())
            target = forward;
    }
    if (target.isNull()) {
        target = document.createElement(u"portForward"_s);
        target.setAttribute(u"proto"_s, rule.protocol);
        target.setAttribute(u"address"_s, loopbackAddress);
        if (last.isNull())
            interface.appendChild(target);
        else
            interface.insertAfter(target, last);
    }
    QDomElement range = document.createElement(u"range"_s);
    range.setAttribute(u"start"_s, rule.firstHostPort);
    range.setAttribute(u"to"_s, rule.firstGuestPort);
    target.appendChild(range);
}

// Takes away single ports that the rule replaces. Says whether the way is free: a wider range is not torn apart.
bool removePortRange(QDomElement interface, const PortRule &rule)
{
    for (QDomElement forward : childElements(interface, u"portForward"_s)) {
        if (forward.attribute(u"proto"_s) != rule.protocol)
            continue;
        bool removed = false;
        for (const QDomElement &range : childElements(forward, u"range"_s)) {
            const PortRule present = ruleOf(forward, range);
            if (range.attribute(u"exclude"_s) == "yes"_L1 || !present.covers(rule.firstHostPort))
                continue;
            if (present.firstHostPort != present.lastHostPort)
                return false;
            forward.removeChild(range);
            removed = true;
        }
        // Without any range, everything would be forwarded.
        if (removed && forward.firstChildElement(u"range"_s).isNull())
            interface.removeChild(forward);
    }
    return true;
}

void collectOurs(const QDomElement &element, QList<QDomElement> &ours)
{
    if (isOurs(element, qualifiedName(element).localName))
        ours.append(element);
    for (const QDomElement &child : childElements(element))
        collectOurs(child, ours);
}

void removeDeclarations(QDomElement element)
{
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = attributes.size() - 1; i >= 0; --i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        if (attribute.name().startsWith("xmlns"_L1) && attribute.value() == QLatin1StringView(metadataNamespace))
            element.removeAttributeNode(attribute);
    }
    for (const QDomElement &child : childElements(element))
        removeDeclarations(child);
}

void checkFile(QStringList &missing, const QString &what, const QString &file)
{
    if (!file.isEmpty() && !QFileInfo::exists(file))
        missing.append(Tr::tr("The %1 \"%2\" does not exist.").arg(what, file));
}

} // namespace

std::optional<EmulatorDescription> describeDomain(const QString &domainXml)
{
    const QDomDocument document = parsed(domainXml);
    const QDomElement metadata = ourMetadata(document);
    if (metadata.isNull())
        return {};

    EmulatorDescription description;
    description.deviceModel = ourChildren(metadata, u"deviceModel"_s).value(0).attribute(u"name"_s);
    if (description.deviceModel.isEmpty())
        description.warnings.append(u"names no device model"_s);

    const QDomElement ssh = ourChildren(metadata, u"ssh"_s).value(0);
    description.sshUser = ssh.attribute(u"user"_s, u"root"_s);
    description.sshPrivateKey = ssh.attribute(u"privateKey"_s);
    if (description.sshPrivateKey.isEmpty())
        description.warnings.append(u"names no private key for SSH"_s);

    description.portRules = portRules(document);
    for (const QDomElement &named : ourChildren(metadata, u"portForwarding"_s)) {
        if (!nameRules(description.portRules, named))
            description.warnings.append(u"has a port forwarding without a name or with a wrong port"_s);
    }
    if (!std::ranges::any_of(description.portRules, [](const PortRule &rule) { return rule.leadsTo(sshGuestPort); }))
        description.warnings.append(u"forwards no port to its SSH server"_s);

    const QDomElement devices = document.documentElement().firstChildElement(u"devices"_s);
    description.headless = devices.firstChildElement(u"graphics"_s).isNull();
    return description;
}

Edit withPortRule(const QString &domainXml, const PortRule &rule)
{
    QDomDocument document = parsed(domainXml);
    QDomElement metadata = ourMetadata(document);
    if (metadata.isNull())
        return {{}, Tr::tr("The definition of the virtual machine is not an emulator's.")};
    const QDomElement interface = forwardingInterface(document);
    if (interface.isNull()) {
        return {
            {},
            Tr::tr("The virtual machine has no user-mode network interface with the passt backend, "
                   "so no port can be forwarded to it.")};
    }
    if (!removePortRange(interface, rule)) {
        return {
            {},
            Tr::tr("The port %1 of this host belongs to a range of ports that is forwarded already.")
                .arg(rule.firstHostPort)};
    }
    insertPortRange(document, interface, rule);

    for (const QDomElement &named : ourChildren(metadata, u"portForwarding"_s)) {
        const bool samePort =
            named.attribute(u"protocol"_s) == rule.protocol && port(named, u"hostPort"_s) == rule.firstHostPort;
        if (samePort)
            metadata.removeChild(named);
    }
    QDomElement named = makeOurs(document, metadata, u"portForwarding"_s);
    named.setAttribute(u"name"_s, rule.name);
    named.setAttribute(u"protocol"_s, rule.protocol);
    named.setAttribute(u"hostPort"_s, rule.firstHostPort);
    metadata.appendChild(named);
    return {document.toString(-1), {}};
}

Edit metadataWithDeviceModel(const QString &domainXml, const QString &deviceModel)
{
    QDomDocument document = parsed(domainXml);
    QDomElement metadata = ourMetadata(document);
    if (metadata.isNull())
        return {{}, Tr::tr("The definition of the virtual machine is not an emulator's.")};
    QDomElement model = ourChildren(metadata, u"deviceModel"_s).value(0);
    if (model.isNull()) {
        model = makeOurs(document, metadata, u"deviceModel"_s);
        metadata.insertBefore(model, metadata.firstChild());
    }
    model.setAttribute(u"name"_s, deviceModel);

    QList<QDomElement> ours;
    collectOurs(metadata, ours);
    for (QDomElement &element : ours)
        element.setTagName(element.tagName().section(u':', -1));
    removeDeclarations(metadata);
    QDomDocument alone;
    alone.appendChild(alone.importNode(metadata, true));
    return {alone.toString(-1), {}};
}

QStringList missingOnHost(const QString &domainXml)
{
    const QDomDocument document = parsed(domainXml);
    const QDomElement domain = document.documentElement();
    const QDomElement os = domain.firstChildElement(u"os"_s);
    const QDomElement devices = domain.firstChildElement(u"devices"_s);

    QStringList missing;
    if (const QString program = devices.firstChildElement(u"emulator"_s).text();
        !program.isEmpty() && !QFileInfo(program).isExecutable()) {
        missing.append(
            Tr::tr("The program \"%1\" is missing. Install QEMU (package \"qemu-system-x86\").").arg(program));
    }
    if (!forwardingInterface(document).isNull() && QStandardPaths::findExecutable(u"passt"_s).isEmpty())
        missing.append(Tr::tr("The program \"passt\" is missing. Install it (package \"passt\")."));
    checkFile(missing, Tr::tr("kernel"), os.firstChildElement(u"kernel"_s).text());
    checkFile(missing, Tr::tr("initial RAM disk"), os.firstChildElement(u"initrd"_s).text());
    for (const QDomElement &disk : childElements(devices, u"disk"_s))
        checkFile(missing, Tr::tr("disk image"), disk.firstChildElement(u"source"_s).attribute(u"file"_s));
    return missing;
}

} // namespace Tarn::Internal
