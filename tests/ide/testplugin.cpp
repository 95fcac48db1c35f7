// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/testplugin.h"

#include "ide/ide.h"
#include "ide/testregistry.h"

#include <coreplugin/icore.h>
#include <extensionsystem/pluginmanager.h>

#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace IdeTests {

namespace {

// An exit code that is only asked for gets lost when something else ends the event loop.
[[noreturn]] void endWithFailure()
{
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}

} // namespace

// All plugins are constructed before the first one is initialized: what that one prints is seen.
TestPlugin::TestPlugin()
{
    startRecordingMessages();
    qunsetenv("LD_PRELOAD"); // was meant for the IDE alone, not for the programs that tests start
}

bool TestPlugin::initialize(const QStringList &arguments, QString *errorString)
{
    const qsizetype index = arguments.indexOf("-run-test"_L1);
    if (index < 0 || index + 1 >= arguments.size()) {
        *errorString = u"Nothing to run."_s;
        return false;
    }
    m_test = arguments.at(index + 1);
    return true;
}

void TestPlugin::extensionsInitialized()
{
    connect(
        ExtensionSystem::PluginManager::instance(),
        &ExtensionSystem::PluginManager::initializationDone,
        this,
        &TestPlugin::run,
        Qt::QueuedConnection);
}

void TestPlugin::run()
{
    const QString className = m_test.section(u':', 0, 0);
    const QString functionName = m_test.section(u':', 1);
    std::unique_ptr<QObject> test = createTest(className);
    if (!test) {
        qWarning("There is no test class %s.", qUtf8Printable(className));
        endWithFailure();
    }
    QStringList arguments{className};
    if (!functionName.isEmpty())
        arguments.append(functionName);
    const int failures = QTest::qExec(test.get(), arguments);
    test.reset(); // ends what it has started
    if (failures)
        endWithFailure();
    Core::ICore::exit();
}

} // namespace IdeTests
