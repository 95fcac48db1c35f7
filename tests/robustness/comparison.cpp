// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/comparison.h"

#include "remote/remotedbusinvokerservice.h"
#include "robustness/faultproxy.h"
#include "robustness/guest.h"
#include "robustness/pluginside.h"
#include "robustness/resources.h"
#include "robustness/userscript.h"

#include <QTest>

using namespace EmulationManagement::Internal;
using namespace Qt::StringLiterals;

namespace Robustness {

void compareEnds(PluginSide &side, UserScript &script, FaultProxy &proxy)
{
    QVERIFY(side.waitUntilCarriedOut());
    const QVariantMap guestSensors = Guest::sensors();
    QCOMPARE(guestSensors.size(), 14);
    QCOMPARE(guestSensors, script.guestSensors());
    QCOMPARE(side.sensorValues(), script.guestSensors());

    QVariantMap guestPosition = Guest::position();
    QCOMPARE(guestPosition.size(), 9);
    if (!side.gps.trackLoaded())
        guestPosition.remove(u"trackLength"_s);
    QCOMPARE(guestPosition, script.guestPosition());
    QCOMPARE(side.positionValues(), script.modelPosition());

    QCOMPARE(Resources::socketsTo(RemoteDBusInvokerService::hostTcpPort), 1);
    QCOMPARE(proxy.open(), 1);
}

} // namespace Robustness
