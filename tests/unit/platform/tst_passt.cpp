// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 30'000;

QString readAll(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

bool isRunning(const QString &pid)
{
    const QString state = readAll("/proc/"_L1 + pid + "/stat"_L1).section(u") "_s, 1).left(1);
    return !state.isEmpty() && state != "Z"_L1;
}

} // namespace

/// The stand-in for passt, between a driver that starts it and a QEMU that connects to it. The real one is a script.
class tst_Passt : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void becomesPasstWhenSomebodyConnects();
    void endsWithTheDriverWhenNobodyHasConnected();

private:
    void startUnderADriver();
    QString path(const QString &name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_driver;
    QString m_pid;
};

void tst_Passt::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    QFile script(path(u"passt"_s));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(
        "#!/bin/sh\necho \"$@\" >\"$ARGUMENTS.partial\"\nmv \"$ARGUMENTS.partial\" \"$ARGUMENTS\"\nexec sleep 600\n");
    script.close();
    QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    startUnderADriver();
}

void tst_Passt::cleanup()
{
    m_driver->kill();
    m_driver->waitForFinished();
    if (isRunning(m_pid))
        ::kill(m_pid.toInt(), SIGKILL);
}

void tst_Passt::startUnderADriver()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, m_directory->path() + u':' + environment.value(u"PATH"_s));
    environment.insert(u"ARGUMENTS"_s, path(u"arguments"_s));
    m_driver = std::make_unique<QProcess>();
    m_driver->setProcessEnvironment(environment);
    const QStringList command{
        QStringLiteral(PASST_PROGRAM),
        u"--one-off"_s,
        u"--socket"_s,
        path(u"socket"_s),
        u"--pid"_s,
        path(u"pid"_s),
        u"--mac-addr"_s,
        u"52:54:00:11:22:33"_s,
    };
    m_driver->start(u"sh"_s, QStringList{u"-c"_s, u"\"$@\" && echo started && read -r end"_s, u"sh"_s} + command);
    QVERIFY(m_driver->waitForReadyRead(deadline));
    QCOMPARE(m_driver->readAllStandardOutput(), "started\n");
    m_pid = readAll(path(u"pid"_s));
    QVERIFY(isRunning(m_pid));
}

void tst_Passt::becomesPasstWhenSomebodyConnects()
{
    QVERIFY(!QFile::exists(path(u"arguments"_s)));
    QLocalSocket qemu;
    qemu.connectToServer(path(u"socket"_s));
    QVERIFY(qemu.waitForConnected(deadline));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(u"arguments"_s)), deadline);
    const QString arguments = readAll(path(u"arguments"_s));
    QVERIFY2(arguments.startsWith("--foreground --fd "_L1), qPrintable(arguments));
    QVERIFY2(arguments.endsWith(" --mac-addr 52:54:00:11:22:33"_L1), qPrintable(arguments));

    // As the machine does, it outlives a driver inside an IDE.
    m_driver->kill();
    QVERIFY(m_driver->waitForFinished(deadline));
    QVERIFY(isRunning(m_pid));
}

// The driver was killed while it started the machine: no QEMU will ever come.
void tst_Passt::endsWithTheDriverWhenNobodyHasConnected()
{
    m_driver->kill();
    QVERIFY(m_driver->waitForFinished(deadline));
    QTRY_VERIFY_WITH_TIMEOUT(!isRunning(m_pid), deadline);
}

QTEST_GUILESS_MAIN(tst_Passt)

#include "tst_passt.moc"
