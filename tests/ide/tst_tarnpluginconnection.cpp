// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/testregistry.h"
#include "unit/platform/domainxml.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <tarn/sdk.h>

#include <QFile>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using Tarn::Sdk;

/// An IDE whose hypervisor is not there at first.
class tst_TarnPluginConnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhyAndConnectsAgain()
    {
        constexpr int longTime = 30'000; // ms
        const QMenu *menu = Core::ActionManager::actionContainer("Vok.Tools.Menu")->menu();
        const auto entry = [menu](const QString &start) -> QAction * {
            for (QAction *action : menu->actions()) {
                if (action->isVisible() && action->text().startsWith(start))
                    return action;
            }
            return nullptr;
        };

        QTRY_VERIFY_WITH_TIMEOUT(entry(u"No connection to the emulators"_s), longTime);
        const QAction *status = entry(u"No connection to the emulators"_s);
        QVERIFY(!status->isEnabled());
        QVERIFY2(
            status->toolTip().startsWith(
                u"There is no connection to the hypervisor \"test:///tmp/late-emulators.xml\": "_s),
            qPrintable(status->toolTip()));
        QVERIFY(menu->toolTipsVisible());
        QAction *reconnect = entry(u"Connect to the Emulators Again"_s);
        QVERIFY(reconnect);

        QFile file(u"/tmp/late-emulators.xml"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<node>" + DomainXml().toString().toUtf8() + "</node>");
        file.close();
        reconnect->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(entry(u"emulator ("_s), longTime);
        QVERIFY(!status->isVisible());
        QVERIFY(!reconnect->isVisible());
        QCOMPARE(Sdk::instance()->connectionError(), QString());
    }
};

namespace {

const RegisterTest<tst_TarnPluginConnection> registration;

} // namespace

#include "tst_tarnpluginconnection.moc"
