// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin/emulationmanagementpackageschecker.h"
#include "utils/sshserver.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Checker = EmulationManagementPackagesChecker;

namespace {

constexpr auto deadline = 20s;

const QByteArray everything = "bash-5.2.15-1.x86_64\n"
                              "sensorfw-qt5-emulator-plugins-0.14.1-1.i486\n"
                              "remote-dbus-invoker-1.0.2-1.i486\n"
                              "geoclue-emulator-1.3-1.i486\n"
                              "gstreamer-emulator-1.20-2.i486\n"
                              "zlib-1.2.13-1.x86_64\n";

const QString header = u"Packages is not installed: \n"_s;
const QString failure = u"Necessary packages not found on emulator!"_s;

const QSet<QString> allNames{
    u"sensorfw-qt5-emulator-plugins"_s, u"remote-dbus-invoker"_s, u"geoclue-emulator"_s, u"gstreamer-emulator"_s};

QByteArray everythingWithout(const QByteArrayList &names)
{
    QByteArray output;
    for (const QByteArray &line : everything.split('\n')) {
        if (std::ranges::none_of(names, [&line](const QByteArray &name) { return line.startsWith(name); }))
            output += line + '\n';
    }
    return output;
}

// The names that a detailed text lists, each on a line of its own; nothing if the text has another form.
QSet<QString> listedNames(const QString &detailedText)
{
    if (!detailedText.startsWith(header) || !detailedText.endsWith(u'\n'))
        return {};
    const QStringList lines = detailedText.sliced(header.size()).chopped(1).split(u'\n');
    const QSet<QString> names(lines.begin(), lines.end());
    return names.size() == lines.size() ? names : QSet<QString>();
}

} // namespace

class tst_EmulationManagementPackagesChecker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void constants();
    void completeOutputs_data();
    void completeOutputs();
    void oneMissingPackageIsNamed_data();
    void oneMissingPackageIsNamed();
    void severalMissingPackagesAreNamed();
    void namesAreCaseSensitive();
    void failingQueryWithCompleteOutputPasses();
    void refusedConnectionMissesEverything();
    void wrongKeyMissesEverything();
    void eachCheckStartsAfresh();
    void parametersAreCopied();

private:
    QSsh::SshConnectionParameters parameters() const;

    std::unique_ptr<TestUtils::SshServer> m_server;
};

void tst_EmulationManagementPackagesChecker::init()
{
    m_server = std::make_unique<TestUtils::SshServer>();
    QVERIFY(m_server->start());
}

void tst_EmulationManagementPackagesChecker::cleanup()
{
    m_server.reset();
}

QSsh::SshConnectionParameters tst_EmulationManagementPackagesChecker::parameters() const
{
    QSsh::SshConnectionParameters parameters;
    parameters.host = u"127.0.0.1"_s;
    parameters.port = m_server->port();
    parameters.userName = m_server->userName();
    parameters.privateKeyFile = m_server->privateKeyFile();
    parameters.hostKeyCheck = QSsh::HostKeyCheck::AcceptAnyHostKey;
    return parameters;
}

void tst_EmulationManagementPackagesChecker::constants()
{
    QCOMPARE(Checker::sensorfwPluginsPackageName, u"sensorfw-qt5-emulator-plugins"_s);
    QCOMPARE(Checker::rdbusinvokerPackageName, u"remote-dbus-invoker"_s);
    QCOMPARE(Checker::geoclueEmulatorPackageName, u"geoclue-emulator"_s);
    QCOMPARE(Checker::gtsreamerEmulatorPackageName, u"gstreamer-emulator"_s);
    QCOMPARE(Checker::searchPackagesCommand, u"rpm -qa"_s);
}

void tst_EmulationManagementPackagesChecker::completeOutputs_data()
{
    QTest::addColumn<QByteArray>("output");

    QTest::newRow("names with versions") << everything;
    QTest::newRow("names without versions, in another order")
        << QByteArray("gstreamer-emulator\ngeoclue-emulator\nremote-dbus-invoker\nsensorfw-qt5-emulator-plugins\n");
    QTest::newRow("a name inside a longer name counts")
        << everythingWithout({"geoclue-emulator"}) + "my-geoclue-emulator-tools-1.0-1.i486\n";
    QTest::newRow("no line feed at the end") << everything.trimmed();
    QTest::newRow("bytes that are no UTF-8 around the names") << QByteArray("\xff\xfe\n") + everything + "\xc3";
    QTest::newRow("thousands of packages before")
        << QByteArray("some-package-1.0-1.noarch\n").repeated(20000) + everything;
}

void tst_EmulationManagementPackagesChecker::completeOutputs()
{
    QFETCH(const QByteArray, output);
    m_server->setAnswer(output);

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(parameters());

    QVERIFY(spy.wait(deadline));
    const QList<QVariantList> expected{{QString(), QString()}};
    QCOMPARE(spy, expected);
    QCOMPARE(m_server->commands(), QStringList{u"rpm -qa"_s});
}

void tst_EmulationManagementPackagesChecker::oneMissingPackageIsNamed_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : allNames)
        QTest::newRow(qUtf8Printable(name)) << name;
}

void tst_EmulationManagementPackagesChecker::oneMissingPackageIsNamed()
{
    QFETCH(const QString, name);
    m_server->setAnswer(everythingWithout({name.toUtf8()}));

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(parameters());

    QVERIFY(spy.wait(deadline));
    const QList<QVariantList> expected{{failure, QString(u"Packages is not installed: \n"_s + name + u'\n')}};
    QCOMPARE(spy, expected);
}

void tst_EmulationManagementPackagesChecker::severalMissingPackagesAreNamed()
{
    m_server->setAnswer(everythingWithout({"geoclue-emulator", "remote-dbus-invoker"}));

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(parameters());

    QVERIFY(spy.wait(deadline));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toString(), failure);
    const QSet<QString> expected{u"geoclue-emulator"_s, u"remote-dbus-invoker"_s};
    QCOMPARE(listedNames(spy[0][1].toString()), expected);
}

void tst_EmulationManagementPackagesChecker::namesAreCaseSensitive()
{
    m_server->setAnswer(everything.toUpper());

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(parameters());

    QVERIFY(spy.wait(deadline));
    QCOMPARE(listedNames(spy[0][1].toString()), allNames);
}

// What counts is the output; whether the command failed does not.
void tst_EmulationManagementPackagesChecker::failingQueryWithCompleteOutputPasses()
{
    m_server->setAnswer(everything, 1);

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(parameters());

    QVERIFY(spy.wait(deadline));
    const QList<QVariantList> expected{{QString(), QString()}};
    QCOMPARE(spy, expected);
}

void tst_EmulationManagementPackagesChecker::refusedConnectionMissesEverything()
{
    m_server->stop();

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(parameters());

    QVERIFY(spy.wait(deadline));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toString(), failure);
    QCOMPARE(listedNames(spy[0][1].toString()), allNames);
}

void tst_EmulationManagementPackagesChecker::wrongKeyMissesEverything()
{
    m_server->setAnswer(everything);
    const TestUtils::SshServer stranger;
    QSsh::SshConnectionParameters withWrongKey = parameters();
    withWrongKey.privateKeyFile = stranger.privateKeyFile();

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    checker.checkPackages(withWrongKey);

    QVERIFY(spy.wait(deadline));
    QCOMPARE(listedNames(spy[0][1].toString()), allNames);
    QCOMPARE(m_server->commands(), QStringList());
}

void tst_EmulationManagementPackagesChecker::eachCheckStartsAfresh()
{
    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);

    m_server->setAnswer(everything);
    checker.checkPackages(parameters());
    QVERIFY(spy.wait(deadline));

    m_server->setAnswer(everythingWithout({"gstreamer-emulator"}));
    checker.checkPackages(parameters());
    QVERIFY(spy.wait(deadline));

    m_server->setAnswer(everything);
    checker.checkPackages(parameters());
    QVERIFY(spy.wait(deadline));

    const QList<QVariantList> expected{
        {QString(), QString()},
        {failure, u"Packages is not installed: \ngstreamer-emulator\n"_s},
        {QString(), QString()},
    };
    QCOMPARE(spy, expected);
    QCOMPARE(m_server->commands(), QStringList(3, u"rpm -qa"_s));
}

void tst_EmulationManagementPackagesChecker::parametersAreCopied()
{
    m_server->setAnswer(everything);

    Checker checker;
    QSignalSpy spy(&checker, &Checker::checkFinished);
    auto temporary = std::make_unique<QSsh::SshConnectionParameters>(parameters());
    checker.checkPackages(*temporary);
    temporary.reset();

    QVERIFY(spy.wait(deadline));
    QCOMPARE(spy[0][0].toString(), QString());
}

QTEST_GUILESS_MAIN(tst_EmulationManagementPackagesChecker)
#include "tst_emulationmanagementpackageschecker.moc"
