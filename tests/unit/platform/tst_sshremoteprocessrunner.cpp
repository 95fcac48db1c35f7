// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "utils/sshserver.h"

#include <qssh/sshremoteprocessrunner.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using QSsh::SshConnectionParameters;
using QSsh::SshRemoteProcessRunner;
using TestUtils::SshServer;

namespace {

constexpr int longTime = 30000; // ms

// Until nobody listens to it any more, so that no process outlives the test.
const QString neverEnding = u"while echo .; do sleep 0.2; done"_s;

// A runner and what it has reported.
struct Run
{
    bool wait() { return closed.size() == 1 || closed.wait(longTime); }
    bool run(const QString &command, const SshConnectionParameters &parameters)
    {
        closed.clear();
        runner.run(command, parameters);
        return closed.isEmpty() && wait(); // never from within run()
    }
    QString error() const { return closed.constLast().constFirst().toString(); }

    SshRemoteProcessRunner runner;
    QSignalSpy closed{&runner, &SshRemoteProcessRunner::processClosed};
};

} // namespace

class tst_SshRemoteProcessRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_server.runCommands();
        QVERIFY(m_server.start());
    }

    void runsACommand()
    {
        Run run;
        QVERIFY(run.run(u"echo out; echo err >&2"_s, parameters()));
        QCOMPARE(run.error(), QString());
        QCOMPARE(run.runner.command(), u"echo out; echo err >&2"_s);
        QCOMPARE(run.runner.readAllStandardOutput(), "out\n");
        QCOMPARE(run.runner.readAllStandardOutput(), "");
        QCOMPARE(run.runner.readAllStandardError(), "err\n");
        QCOMPARE(run.runner.exitCode(), 0);
        QVERIFY(!run.runner.isRunning());
    }

    void reportsTheExitCode()
    {
        Run run;
        QVERIFY(run.run(u"echo partly; echo because >&2; exit 7"_s, parameters()));
        QCOMPARE(run.error(), u"The command ended with exit code 7 on 127.0.0.1:%1. because"_s.arg(m_server.port()));
        QCOMPARE(run.runner.exitCode(), 7);
        QCOMPARE(run.runner.readAllStandardOutput(), "partly\n");
        QCOMPARE(run.runner.readAllStandardError(), "because\n");
    }

    void nothingIsLeftOfAnEarlierRun()
    {
        Run run;
        QVERIFY(run.run(u"echo because >&2; exit 7"_s, parameters()));
        QCOMPARE(run.runner.exitCode(), 7);

        run.closed.clear();
        run.runner.run(u"exit 8"_s, parameters());
        QCOMPARE(run.runner.exitCode(), -1);
        QVERIFY(run.wait());
        QCOMPARE(run.error(), u"The command ended with exit code 8 on 127.0.0.1:%1."_s.arg(m_server.port()));
        QCOMPARE(run.runner.exitCode(), 8);
        QCOMPARE(run.runner.readAllStandardError(), "");

        QVERIFY(run.run({}, parameters()));
        QCOMPARE(run.runner.exitCode(), -1);
    }

    void leavesTheCommandAsItIs_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("both kinds of quotes") << u"printf '%s' \"it's\" '\"quoted\"'"_s << QByteArray("it's\"quoted\"");
        QTest::newRow("blanks side by side") << u"printf '%s' 'a  b'"_s << QByteArray("a  b");
        QTest::newRow("what the host's shell would replace")
            << u"printf '%s' '$HOME `id` * ~'"_s << QByteArray("$HOME `id` * ~");
        QTest::newRow("several lines") << u"echo a\necho b"_s << QByteArray("a\nb\n");
        QTest::newRow("more than ASCII") << u"printf '%s' 'grüße'"_s << QByteArray("grüße");
        QTest::newRow("a percent sign") << u"printf '%s' '%h'"_s << QByteArray("%h");
        QTest::newRow("no input to wait for") << u"cat; echo end"_s << QByteArray("end\n");
    }

    void leavesTheCommandAsItIs()
    {
        QFETCH(const QString, command);
        QFETCH(const QByteArray, output);
        Run run;
        QVERIFY(run.run(command, parameters()));
        QCOMPARE(run.error(), QString());
        QCOMPARE(run.runner.readAllStandardOutput(), output);
    }

    void aCommandIsNoOption()
    {
        Run run;
        QVERIFY(run.run(u"-V"_s, parameters()));
        QVERIFY(run.runner.exitCode() > 0); // as an option of ssh, it ends with 0
        QVERIFY(m_server.commands().contains("-V"_L1));

        SshConnectionParameters strange = parameters();
        strange.host = u"-oProxyCommand=true"_s;
        QVERIFY(run.run(u"true"_s, strange));
        QVERIFY(!run.error().isEmpty());
    }

    void carriesMuchOutput()
    {
        Run run;
        QVERIFY(run.run(u"head -c 5000000 /dev/zero | tr '\\0' x"_s, parameters()));
        QCOMPARE(run.error(), QString());
        const QByteArray output = run.runner.readAllStandardOutput();
        QCOMPARE(output.size(), 5000000);
        QCOMPARE(output.count('x'), 5000000);
    }

    void runsOneAfterTheOther()
    {
        Run run;
        for (int i = 0; i < 10; ++i) {
            QVERIFY(run.run(u"echo %1"_s.arg(i), parameters()));
            QCOMPARE(run.error(), QString());
            QCOMPARE(run.runner.readAllStandardOutput().trimmed().toInt(), i);
        }
    }

    void theNewestRunCounts()
    {
        Run run;
        run.runner.run(neverEnding, parameters());
        run.runner.run(u"echo second"_s, parameters());
        QVERIFY(run.wait());
        QCOMPARE(run.error(), QString());
        QCOMPARE(run.runner.command(), u"echo second"_s);
        QCOMPARE(run.runner.readAllStandardOutput(), "second\n");

        // And when the first has failed, but its news is still on the way
        run.closed.clear();
        run.runner.run({}, parameters());
        run.runner.run(u"echo third"_s, parameters());
        QVERIFY(run.wait());
        QCOMPARE(run.error(), QString());
        QCOMPARE(run.closed.size(), 1);
    }

    void runsAgainFromItsOwnSignal()
    {
        Run run;
        int count = 0;
        connect(&run.runner, &SshRemoteProcessRunner::processClosed, this, [&] {
            if (++count < 3)
                run.runner.run(u"echo %1"_s.arg(count), parameters());
        });
        run.runner.run(u"echo 0"_s, parameters());
        QTRY_COMPARE_WITH_TIMEOUT(count, 3, longTime);
        QCOMPARE(run.runner.readAllStandardOutput(), "2\n");
    }

    void mayBeDeletedFromItsOwnSignal()
    {
        auto *runner = new SshRemoteProcessRunner;
        bool deleted = false;
        connect(runner, &SshRemoteProcessRunner::processClosed, runner, [&] {
            delete runner;
            deleted = true;
        });
        runner->run(u"true"_s, parameters());
        QTRY_VERIFY_WITH_TIMEOUT(deleted, longTime);
    }

    void isSilentWhenItGoes()
    {
        int count = 0;
        QElapsedTimer timer;
        {
            SshRemoteProcessRunner runner;
            connect(&runner, &SshRemoteProcessRunner::processClosed, this, [&] { ++count; });
            const qsizetype before = m_server.commands().size();
            runner.run(neverEnding, parameters());
            QTRY_COMPARE_WITH_TIMEOUT(m_server.commands().size(), before + 1, longTime);
            timer.start();
        }
        QVERIFY(timer.elapsed() < 1000);
        QCoreApplication::processEvents();
        QCOMPARE(count, 0);
    }

    void endsACommandThatTakesTooLong()
    {
        SshConnectionParameters hasty = parameters();
        hasty.commandTimeout = 1s;
        Run run;
        QVERIFY(run.run(neverEnding, hasty));
        QCOMPARE(run.error(), u"The command on 127.0.0.1:%1 did not end in time."_s.arg(m_server.port()));
        QCOMPARE(run.runner.exitCode(), -1);

        QVERIFY(run.run(u"echo again"_s, parameters()));
        QCOMPARE(run.error(), QString());
        QCOMPARE(run.closed.size(), 1);
    }

    void failsWhereNobodyListens()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        SshConnectionParameters wrong = parameters();
        wrong.port = closed.serverPort();
        closed.close();
        Run run;
        QVERIFY(run.run(u"true"_s, wrong));
        QVERIFY2(run.error().contains("Connection refused"_L1), qPrintable(run.error()));
        QCOMPARE(run.runner.exitCode(), -1);
        QCOMPARE(run.runner.readAllStandardOutput(), "");
    }

    void failsWhereNobodyGreets()
    {
        QTcpServer silent; // as a forwarding host whose guest is still booting
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        SshConnectionParameters wrong = parameters();
        wrong.port = silent.serverPort();
        wrong.timeout = 1s;
        wrong.commandTimeout = 0s;
        Run run;
        QVERIFY(run.run(u"true"_s, wrong));
        QVERIFY(!run.error().isEmpty());
    }

    void failsWithoutTheRightKey_data()
    {
        QTest::addColumn<QString>("key");
        const SshServer other;
        m_folder = std::make_unique<QTemporaryDir>();
        const QString copy = m_folder->filePath(u"other key"_s);
        QVERIFY(QFile::copy(other.privateKeyFile(), copy));
        QTest::newRow("another server's key") << copy;
        QTest::newRow("no such file") << m_folder->filePath(u"none"_s);
    }

    void failsWithoutTheRightKey()
    {
        QFETCH(const QString, key);
        SshConnectionParameters wrong = parameters();
        wrong.privateKeyFile = key;
        Run run;
        QVERIFY(run.run(u"true"_s, wrong));
        QVERIFY2(run.error().contains("Permission denied"_L1), qPrintable(run.error()));
    }

    void findsAKeyWhateverItsName()
    {
        const QTemporaryDir folder;
        SshConnectionParameters strange = parameters();
        strange.privateKeyFile = folder.filePath(u"a \"key\" of 100%h \\ me"_s);
        QVERIFY(QFile::copy(m_server.privateKeyFile(), strange.privateKeyFile));
        Run run;
        QVERIFY(run.run(u"true"_s, strange));
        QCOMPARE(run.error(), QString());
    }

    void acceptsAnyHostKey()
    {
        Run run;
        SshConnectionParameters wanted = parameters();
        QCOMPARE(wanted.hostKeyCheck, QSsh::HostKeyCheck::AcceptAnyHostKey);
        {
            SshServer first;
            first.runCommands();
            QVERIFY(first.start());
            wanted.port = first.port();
            wanted.privateKeyFile = first.privateKeyFile();
            QVERIFY(run.run(u"true"_s, wanted));
            QCOMPARE(run.error(), QString());
        }
        SshServer second; // a machine made anew
        second.runCommands();
        QVERIFY(second.start(wanted.port));
        wanted.privateKeyFile = second.privateKeyFile();
        QVERIFY(run.run(u"true"_s, wanted));
        QCOMPARE(run.error(), QString());
        QCOMPARE(run.runner.readAllStandardError(), "");
    }

    void requiresAKnownHostKey()
    {
        const QTemporaryDir folder;
        SshConnectionParameters careful = parameters();
        careful.hostKeyCheck = SshConnectionParameters().hostKeyCheck;
        QCOMPARE(careful.hostKeyCheck, QSsh::HostKeyCheck::RequireKnownHostKey);
        careful.knownHostsFile = folder.filePath(u"known hosts"_s);
        Run run;
        QVERIFY(run.run(u"true"_s, careful));
        QVERIFY2(run.error().contains("Host key verification failed"_L1), qPrintable(run.error()));
        QVERIFY(!QFile::exists(careful.knownHostsFile));

        QProcess scan;
        scan.setStandardOutputFile(careful.knownHostsFile);
        scan.start(u"ssh-keyscan"_s, {u"-p"_s, QString::number(careful.port), careful.host});
        QVERIFY(scan.waitForFinished(longTime));
        QVERIFY(run.run(u"true"_s, careful));
        QCOMPARE(run.error(), QString());

        // The user's own file does not know it.
        careful.knownHostsFile.clear();
        QVERIFY(run.run(u"true"_s, careful));
        QVERIFY2(run.error().contains("Host key verification failed"_L1), qPrintable(run.error()));
    }

    void ignoresTheUsersOwnConfiguration()
    {
        const QTemporaryDir home;
        QVERIFY(QDir(home.path()).mkdir(u".ssh"_s));
        QFile configuration(home.filePath(u".ssh/config"_s));
        QVERIFY(configuration.open(QIODevice::WriteOnly));
        configuration.write("Host *\n  ProxyCommand false\n");
        configuration.close();
        const QByteArray before = qgetenv("HOME");
        qputenv("HOME", home.path().toLocal8Bit());
        Run run;
        const bool closed = run.run(u"true"_s, parameters());
        qputenv("HOME", before);
        QVERIFY(closed);
        QCOMPARE(run.error(), QString());
    }

    void saysWhenSshIsMissing()
    {
        const QTemporaryDir empty;
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", empty.path().toLocal8Bit());
        Run run;
        const bool closed = run.run(u"true"_s, parameters());
        qputenv("PATH", before);
        QVERIFY(closed);
        QCOMPARE(
            run.error(),
            u"The program \"ssh\" was not found. Install the OpenSSH client (package \"openssh-client\")."_s);
        QCOMPARE(run.runner.readAllStandardOutput(), "");
    }

    void saysWhenSshCannotBeStarted()
    {
        const QTemporaryDir folder;
        QFile broken(folder.filePath(u"ssh"_s));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("no program");
        broken.close();
        QVERIFY(broken.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", folder.path().toLocal8Bit());
        Run run;
        const bool closed = run.run(u"true"_s, parameters());
        qputenv("PATH", before);
        QVERIFY(closed);
        QVERIFY(!run.error().isEmpty());
        QCOMPARE(run.closed.size(), 1);
    }

    void saysWhenSomethingIsLeftOut()
    {
        Run run;
        QVERIFY(run.run({}, parameters()));
        QCOMPARE(run.error(), u"There is no command to run on 127.0.0.1:%1."_s.arg(m_server.port()));
        QVERIFY(run.run(u"true"_s, {}));
        QCOMPARE(run.error(), u"There is no host to run \"true\" on."_s);
    }

    void saysWhenTheServerGoes()
    {
        SshServer server;
        server.runCommands();
        QVERIFY(server.start());
        SshConnectionParameters there = parameters();
        there.port = server.port();
        there.privateKeyFile = server.privateKeyFile();
        Run run;
        // The session's process is the parent of the command's shell.
        QVERIFY(run.run(u"kill -KILL $PPID; sleep 1"_s, there));
        QVERIFY(!run.error().isEmpty());
        QCOMPARE(run.closed.size(), 1);
    }

private:
    SshConnectionParameters parameters() const
    {
        SshConnectionParameters parameters;
        parameters.host = u"127.0.0.1"_s;
        parameters.port = m_server.port();
        parameters.userName = m_server.userName();
        parameters.privateKeyFile = m_server.privateKeyFile();
        parameters.hostKeyCheck = QSsh::HostKeyCheck::AcceptAnyHostKey;
        return parameters;
    }

    SshServer m_server;
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_SshRemoteProcessRunner)

#include "tst_sshremoteprocessrunner.moc"
