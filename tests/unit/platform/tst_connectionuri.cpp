// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include <tarn/connectionuri.h>

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Tarn;
using namespace Tarn::Internal;

class tst_ConnectionUri : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNamedConnectionIsTaken()
    {
        ConnectionSettings settings;
        settings.uri = u"test:///default"_s;
        QCOMPARE(connectionUri(settings, daemonFolders()), u"test:///default"_s);
    }

    void aDaemonIsUsedWhenItIsInstalled_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QFile::Permissions>("permissions");
        QTest::addColumn<QString>("uri");
        const QFile::Permissions program = QFile::ReadOwner | QFile::ExeOwner;
        const QString embed = u"qemu:///embed?root=/a%20root"_s;
        QTest::newRow("QEMU's own daemon") << u"virtqemud"_s << program << u"qemu:///session"_s;
        QTest::newRow("the daemon for everything") << u"libvirtd"_s << program << u"qemu:///session"_s;
        QTest::newRow("a daemon for something else") << u"virtlogd"_s << program << embed;
        QTest::newRow("no program") << u"virtqemud"_s << QFile::Permissions(QFile::ReadOwner) << embed;
    }

    void aDaemonIsUsedWhenItIsInstalled()
    {
        QFETCH(const QString, program);
        QFETCH(const QFile::Permissions, permissions);
        const QTemporaryDir empty;
        const QTemporaryDir programs;
        QFile daemon(programs.filePath(program));
        QVERIFY(daemon.open(QIODevice::WriteOnly));
        QVERIFY(daemon.setPermissions(permissions));
        ConnectionSettings settings;
        settings.embedRoot = u"/a root"_s;
        QTEST(connectionUri(settings, {empty.path(), programs.path()}), "uri");
    }

    void theDriverInsideHasAFolderOfTheUser()
    {
        const QTemporaryDir empty;
        QStandardPaths::setTestModeEnabled(true);
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        QCOMPARE(connectionUri({}, {empty.path()}), u"qemu:///embed?root=%1/velmo-emulators"_s.arg(data));
    }

    void looksForSystemPrograms()
    {
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", "/a:/b");
        const QStringList folders = daemonFolders();
        qputenv("PATH", path);
        QCOMPARE(folders, (QStringList{u"/a"_s, u"/b"_s, u"/usr/sbin"_s, u"/usr/local/sbin"_s, u"/sbin"_s}));
    }

    void knowsLocalMachines_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<bool>("local");
        QTest::newRow("the user's daemon") << u"qemu:///session"_s << true;
        QTest::newRow("inside this process") << u"qemu:///embed?root=/a"_s << true;
        QTest::newRow("another host") << u"qemu+ssh://host/session"_s << false;
        QTest::newRow("no machines at all") << u"test:///default"_s << false;
        QTest::newRow("no URI") << u"%"_s << false;
    }

    void knowsLocalMachines()
    {
        QFETCH(const QString, uri);
        QTEST(isLocalQemu(uri), "local");
    }

    void preparesARoot()
    {
        const QTemporaryDir folder;
        const QString uri = u"qemu:///embed?root="_s + folder.path() + u"/a%20root"_s;
        QCOMPARE(prepareEmbedRoot(uri), QString());
        QFile file(folder.filePath(u"a root/etc/qemu.conf"_s));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.readAll().contains("security_driver = \"none\"\n"));

        // What the user has made of it stays.
        file.resize(0);
        file.close();
        QCOMPARE(prepareEmbedRoot(uri), QString());
        QCOMPARE(file.size(), 0);
    }

    void saysWhenARootCannotBePrepared()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"file"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(
            prepareEmbedRoot(u"qemu:///embed?root="_s + file.fileName()),
            u"The file \"%1/etc/qemu.conf\" could not be written."_s.arg(file.fileName()));
    }

    void leavesOtherConnectionsAlone()
    {
        QCOMPARE(prepareEmbedRoot(u"qemu:///session"_s), QString());
        QCOMPARE(prepareEmbedRoot(u"test:///default"_s), QString());
    }

    void givesHints_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("hint");
        QTest::newRow("a root in use") << u"qemu:///embed?root=/a"_s
                                       << u"Failed to acquire pid file '/a/run/qemu/driver.pid'"_s
                                       << u"Another program is using these emulators; close it and connect again."_s;
        QTest::newRow("no driver")
            << u"qemu:///embed?root=/a"_s << u"no driver"_s
            << u"libvirt's QEMU driver may be missing (package \"libvirt-daemon-driver-qemu\")."_s;
        QTest::newRow("no daemon") << u"qemu:///session"_s << u"no socket"_s
                                   << u"libvirt's daemon or its QEMU driver may be missing (packages "
                                      "\"libvirt-daemon\" and \"libvirt-daemon-driver-qemu\")."_s;
        QTest::newRow("something else") << u"test:///x"_s << u"no file"_s << QString();
    }

    void givesHints()
    {
        QFETCH(const QString, uri);
        QFETCH(const QString, message);
        QTEST(connectionHint(uri, message), "hint");
    }
};

QTEST_GUILESS_MAIN(tst_ConnectionUri)

#include "tst_connectionuri.moc"
