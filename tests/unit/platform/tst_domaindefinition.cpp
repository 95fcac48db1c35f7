// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "domainxml.h"

#include <tarn/domaindefinition.h>

#include <QDomDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Tarn::Internal;

namespace {

PortRule rule(const QString &name, const QString &protocol, quint16 hostPort, quint16 guestPort)
{
    return {name, protocol, {}, hostPort, hostPort, guestPort};
}

// One line per element, attribute and text, so that two definitions can be compared whatever their spelling.
QStringList facts(const QDomElement &element, const QString &path = {})
{
    const QString here = path + u'/' + element.tagName();
    QStringList found{here};
    QStringList attributes;
    for (int i = 0; i < element.attributes().count(); ++i) {
        const QDomAttr attribute = element.attributes().item(i).toAttr();
        attributes.append(here + u'@' + attribute.name() + u'=' + attribute.value());
    }
    attributes.sort();
    found += attributes;
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (node.isElement())
            found += facts(node.toElement(), here);
        else if (const QString text = node.nodeValue().trimmed(); !text.isEmpty())
            found.append(here + u'=' + text);
    }
    return found;
}

QStringList facts(const QString &xml)
{
    QDomDocument document;
    return document.setContent(xml) ? facts(document.documentElement()) : QStringList();
}

QStringList added(const QStringList &before, const QStringList &after)
{
    QStringList rest = after;
    for (const QString &fact : before)
        rest.removeOne(fact);
    return rest;
}

} // namespace

class tst_DomainDefinition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesAnEmulator()
    {
        DomainXml xml;
        xml.metadata = uR"(<other:thing xmlns:other="urn:other"><deviceModel name="wrong"/></other:thing>
            <v:emulator xmlns:v="urn:velmo:emulator:1"><v:deviceModel name="Velmo Fold"/>
            <v:ssh user="me" privateKey="/k"/>
            <v:portForwarding name="web" protocol="tcp" hostPort="8080"/></v:emulator>)"_s;
        xml.portForwards = DomainXml::portForward(u"tcp"_s, 8080, 80) + DomainXml::portForward(u"tcp"_s, 2222, 22);
        const auto description = describeDomain(xml.toString());
        QVERIFY(description);
        QCOMPARE(description->deviceModel, u"Velmo Fold"_s);
        QCOMPARE(description->sshUser, u"me"_s);
        QCOMPARE(description->sshPrivateKey, u"/k"_s);
        QCOMPARE(description->portRules.size(), 2);
        QCOMPARE(description->portRules.at(0).name, u"web"_s);
        QCOMPARE(description->portRules.at(1).name, QString());
        QCOMPARE(description->portRules.at(1).hostPortFor(22), 2222);
        QCOMPARE(description->warnings, QStringList());
        QVERIFY(description->headless);
    }

    void ignoresOtherDomains_data()
    {
        QTest::addColumn<QString>("metadata");
        QTest::newRow("no metadata") << QString();
        QTest::newRow("an emulator of another namespace") << u"<v:emulator xmlns:v='urn:other'/>"_s;
        QTest::newRow("a later version of ours") << u"<v:emulator xmlns:v='urn:velmo:emulator:2'/>"_s;
        QTest::newRow("something else of ours") << u"<v:other xmlns:v='urn:velmo:emulator:1'/>"_s;
    }

    void ignoresOtherDomains()
    {
        QFETCH(const QString, metadata);
        DomainXml xml;
        xml.metadata = metadata;
        QVERIFY(!describeDomain(xml.toString()));
    }

    void ignoresWhatIsNoXml_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::newRow("nothing") << QString();
        QTest::newRow("a text") << u"no domain"_s;
        QTest::newRow("cut off") << DomainXml().toString().left(300);
    }

    void ignoresWhatIsNoXml()
    {
        QFETCH(const QString, xml);
        QVERIFY(!describeDomain(xml));
        QVERIFY(!withPortRule(xml, rule(u"a"_s, u"tcp"_s, 1, 1)).error.isEmpty());
        QVERIFY(!metadataWithDeviceModel(xml, u"a"_s).error.isEmpty());
        QCOMPARE(missingOnHost(xml), QStringList());
    }

    void toleratesMistakes_data()
    {
        QTest::addColumn<QString>("metadata");
        QTest::addColumn<QString>("portForwards");
        QTest::addColumn<QString>("warning");
        const QString start = u"<v:emulator xmlns:v='urn:velmo:emulator:1'>"_s;
        const QString model = u"<v:deviceModel name='m'/>"_s;
        const QString ssh = u"<v:ssh user='root' privateKey='/k'/>"_s;
        const QString end = u"</v:emulator>"_s;
        const QString sshPort = DomainXml::portForward(u"tcp"_s, 2222, 22);
        QTest::newRow("no device model") << start + ssh + end << sshPort << u"names no device model"_s;
        QTest::newRow("no SSH") << start + model + end << sshPort << u"names no private key for SSH"_s;
        QTest::newRow("a rule without a name")
            << start + model + ssh + u"<v:portForwarding protocol='tcp' hostPort='80'/>"_s + end << sshPort
            << u"has a port forwarding without a name or with a wrong port"_s;
        QTest::newRow("a port too large")
            << start + model + ssh + u"<v:portForwarding name='n' protocol='tcp' hostPort='70000'/>"_s + end << sshPort
            << u"has a port forwarding without a name or with a wrong port"_s;
        QTest::newRow("no SSH port") << start + model + ssh + end << QString()
                                     << u"forwards no port to its SSH server"_s;
    }

    void toleratesMistakes()
    {
        QFETCH(const QString, metadata);
        QFETCH(const QString, portForwards);
        QFETCH(const QString, warning);
        DomainXml xml;
        xml.metadata = metadata;
        xml.portForwards = portForwards;
        const auto description = describeDomain(xml.toString());
        QVERIFY(description);
        QCOMPARE(description->warnings, QStringList(warning));
    }

    void rulesCoverRanges()
    {
        DomainXml xml;
        xml.portForwards = u"<portForward proto='udp'><range start='1000' end='1010' to='2000'/>"
                           "<range start='1005' exclude='yes'/></portForward>"
                           "<portForward proto='tcp' address='127.0.0.1'><range start='22'/></portForward>"_s;
        const auto description = describeDomain(xml.toString());
        QVERIFY(description);
        QCOMPARE(description->portRules.size(), 2);
        const PortRule range = description->portRules.at(0);
        QVERIFY(range.covers(1000));
        QVERIFY(range.covers(1010));
        QVERIFY(!range.covers(1011));
        QCOMPARE(range.hostPortFor(2003), 1003);
        QCOMPARE(range.hostPortFor(1999), 0);
        QCOMPARE(range.hostPortFor(2011), 0);
        QVERIFY(description->portRules.at(1).leadsTo(22));
    }

    void addsNothingButTheRule()
    {
        DomainXml xml;
        xml.metadata += u"<o:notes xmlns:o='urn:o' a='1 &amp; 2'>Text &lt;with&gt; signs</o:notes>"_s;
        xml.devices = u"<graphics type='vnc' passwd='secret'/><serial type='pty'/>"_s;
        const QString before = xml.toString();
        const Edit edit = withPortRule(before, rule(u"camera"_s, u"udp"_s, 34343, 34343));
        QCOMPARE(edit.error, QString());
        QCOMPARE(added(facts(edit.xml), facts(before)), QStringList());
        const QString forward = u"/domain/devices/interface/portForward"_s;
        const QString named = u"/domain/metadata/velmo:emulator/velmo:portForwarding"_s;
        const QStringList expected{
            named,
            named + u"@hostPort=34343"_s,
            named + u"@name=camera"_s,
            named + u"@protocol=udp"_s,
            forward,
            forward + u"@address=127.0.0.1"_s,
            forward + u"@proto=udp"_s,
            forward + u"/range"_s,
            forward + u"/range@start=34343"_s,
            forward + u"/range@to=34343"_s,
        };
        QCOMPARE(added(facts(before), facts(edit.xml)), expected);
    }

    void joinsRulesOfOneProtocol()
    {
        const QString before = DomainXml().toString();
        const Edit edit = withPortRule(before, rule(u"web"_s, u"tcp"_s, 5454, 1234));
        QCOMPARE(edit.xml.count("<portForward "_L1), 1);
        const auto description = describeDomain(edit.xml);
        QCOMPARE(description->portRules.size(), 2);
        QCOMPARE(description->portRules.at(1).name, u"web"_s);
        QCOMPARE(description->portRules.at(1).firstGuestPort, 1234);
    }

    void addingTwiceIsAddingOnce()
    {
        const PortRule web = rule(u"web"_s, u"tcp"_s, 5454, 1234);
        const Edit once = withPortRule(DomainXml().toString(), web);
        const Edit twice = withPortRule(once.xml, web);
        QCOMPARE(facts(twice.xml), facts(once.xml));
    }

    void replacesTheRuleOfThePort()
    {
        const Edit first = withPortRule(DomainXml().toString(), rule(u"old"_s, u"udp"_s, 5454, 1));
        const Edit second = withPortRule(first.xml, rule(u"new"_s, u"udp"_s, 5454, 2));
        const auto description = describeDomain(second.xml);
        QCOMPARE(description->portRules.size(), 2);
        QCOMPARE(description->portRules.at(1).name, u"new"_s);
        QCOMPARE(description->portRules.at(1).firstGuestPort, 2);
        QVERIFY(!second.xml.contains("old"_L1));
    }

    void aRangeIsNotTornApart()
    {
        DomainXml xml;
        xml.portForwards = u"<portForward proto='tcp'><range start='5000' end='6000'/></portForward>"_s;
        const Edit edit = withPortRule(xml.toString(), rule(u"web"_s, u"tcp"_s, 5454, 1234));
        QCOMPARE(edit.error, u"The port 5454 of this host belongs to a range of ports that is forwarded already."_s);
        QCOMPARE(edit.xml, QString());
    }

    void onlyPasstForwards()
    {
        DomainXml xml;
        xml.interfaceBackend = u"default"_s;
        const Edit edit = withPortRule(xml.toString(), rule(u"web"_s, u"tcp"_s, 5454, 1234));
        QVERIFY(edit.error.contains("passt"_L1));
        QCOMPARE(describeDomain(xml.toString())->portRules.size(), 0);
    }

    void changesTheDeviceModel()
    {
        DomainXml xml;
        const Edit edit = metadataWithDeviceModel(xml.toString(), u"A \"new\" <one>"_s);
        QCOMPARE(edit.error, QString());
        QDomDocument document;
        QVERIFY(document.setContent(edit.xml));
        const QStringList expected{
            u"/emulator"_s,
            u"/emulator/deviceModel"_s,
            u"/emulator/deviceModel@name=A \"new\" <one>"_s,
            u"/emulator/ssh"_s,
            u"/emulator/ssh@privateKey=/keys/emulator"_s,
            u"/emulator/ssh@user=root"_s,
        };
        QCOMPARE(facts(document.documentElement()), expected);
    }

    void addsADeviceModelWhereNoneWas()
    {
        DomainXml xml;
        xml.metadata = u"<emulator xmlns='urn:velmo:emulator:1'><o:a xmlns:o='urn:o'/></emulator>"_s;
        const Edit edit = metadataWithDeviceModel(xml.toString(), u"m"_s);
        const QStringList expected{
            u"/emulator"_s,
            u"/emulator/deviceModel"_s,
            u"/emulator/deviceModel@name=m"_s,
            u"/emulator/o:a"_s,
            u"/emulator/o:a@xmlns:o=urn:o"_s,
        };
        QCOMPARE(facts(edit.xml), expected);
    }

    void saysWhatTheHostLacks()
    {
        const QTemporaryDir folder;
        DomainXml xml;
        xml.os = u"<type>hvm</type><kernel>%1</kernel><initrd>/nowhere/initrd</initrd>"_s.arg(
            QCoreApplication::applicationFilePath());
        xml.devices = u"<emulator>/nowhere/qemu</emulator>"
                      "<disk type='file'><source file='/nowhere/disk.img'/></disk>"_s;
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", folder.path().toLocal8Bit());
        const QStringList missing = missingOnHost(xml.toString());
        qputenv("PATH", path);
        const QStringList expected{
            u"The program \"/nowhere/qemu\" is missing. Install QEMU (package \"qemu-system-x86\")."_s,
            u"The program \"passt\" is missing. Install it (package \"passt\")."_s,
            u"The initial RAM disk \"/nowhere/initrd\" does not exist."_s,
            u"The disk image \"/nowhere/disk.img\" does not exist."_s,
        };
        QCOMPARE(missing, expected);
        QCOMPARE(missingOnHost(DomainXml().toString()), QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_DomainDefinition)

#include "tst_domaindefinition.moc"
