// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the managers make of anything that an invoker may send.

#include "gps/gpsemulationmanager.h"
#include "sensors/sensorsemulationmanager.h"

#include "fuzz/fuzzer.h"
#include "utils/idesettings.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace {

QString anyReply(Fuzz::Input &input)
{
    if (input.chance(20))
        return input.anyText(60);
    if (input.chance(20))
        return input.text(u":|ab%1 "_s, 20);
    const QStringList parts{
        input.oneOf({u"enabled"_s, u"enabled"_s, u"Enabled"_s, u"setAlsValue"_s, {}, input.anyText(5)}),
        input.oneOf({u"tap"_s, u"als"_s, u"tap|als"_s, u"||compass"_s, u"|"_s, {}, u"new"_s, input.anyText(8)}),
        input.oneOf({u"true"_s, u"false"_s, u"1"_s, u"0"_s, u"FALSE"_s, u"-"_s, {}, input.anyText(4)}),
        input.chance(70) ? QString() : input.oneOf({u"org.example.Error"_s, u"%2"_s, u" "_s, input.anyText(4)}),
        input.chance(50) ? QString() : input.anyText(10),
    };
    return parts.join(u':');
}

// One in each line of a sample.
QStringList anyReplies(Fuzz::Input &input)
{
    const std::optional<QString> sample = input.sample();
    if (sample)
        return sample->split(u'\n');
    QStringList replies;
    for (int i = 0; i < 20; ++i)
        replies.append(anyReply(input));
    return replies;
}

// The rules once more, over plain maps.
struct Expectation
{
    QVariantMap states;
    QVariantMap availability;
    QString text;

    void reply(const QString &reply)
    {
        if (reply.count(u':') != 4) {
            text = reply;
            return;
        }
        const auto field = [&](int number) { return reply.section(u':', number, number); };
        if (!field(3).isEmpty()) {
            text = field(3) + u' ' + field(4);
            return;
        }
        text = u"OK"_s;
        if (field(0) != u"enabled")
            return;
        const QString sensor = field(1).section(u'|', 0, 0, QString::SectionSkipEmpty);
        if (sensor.isEmpty())
            return;
        const QString value = field(2).toLower();
        const bool available = availability.value(sensor).toBool();
        if (!availability.contains(sensor))
            availability.insert(sensor, QVariant());
        states.insert(sensor, available && !value.isEmpty() && value != "0"_L1 && value != "false"_L1);
    }
};

QString check(Fuzz::Input &input)
{
    RemoteDBusInvokerService channel;
    SensorsEmulationManager manager;
    manager.setRdbusinvoker(&channel);
    QStringList texts;
    QObject::connect(&manager, &EmulationManager::replyFromEmulatorReceived, &manager, [&](const QString &text) {
        texts.append(text);
    });
    GPSEmulationManager gps;
    gps.setRdbusinvoker(&channel);
    gps.setRdbusinvoker(&channel); // as the plugin does
    gps.loadTrack({QVariantMap()});
    QStringList gpsTexts;
    QObject::connect(
        &gps, &EmulationManager::replyFromEmulatorReceived, &gps, [&](const QString &text) { gpsTexts.append(text); });
    if (input.chance(50))
        manager.setSensorAvailable(u"als"_s, false);

    Expectation expected{manager.sensorsEnabledStates(), manager.sensorsAvailability(), {}};
    for (const QString &reply : anyReplies(input)) {
        texts.clear();
        gpsTexts.clear();
        Q_EMIT channel.replyReceived(reply);
        expected.reply(reply);
        if (texts != QStringList(expected.text))
            return u"the reply \"%1\" became \"%2\" instead of \"%3\""_s.arg(reply, texts.join(u'|'), expected.text);
        if (gpsTexts != QStringList({expected.text, expected.text}) || !gps.trackLoaded())
            return u"the GPS manager made \"%2\" of the reply \"%1\""_s.arg(reply, gpsTexts.join(u'|'));
        if (manager.sensorsEnabledStates() != expected.states)
            return u"other enabled states after the reply \"%1\""_s.arg(reply);
        if (manager.sensorsAvailability() != expected.availability)
            return u"another availability after the reply \"%1\""_s.arg(reply);
    }
    return {};
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const TestUtils::IdeSettings ide;
    return Fuzz::run("fuzz_replies", check);
}
