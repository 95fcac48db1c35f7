// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the sensors manager makes of any values, from the settings file or from the pages: what it shows is finite, what
// it derives is in range, and what it saves it restores.

#include "sensors/sensorsemulationmanager.h"

#include "fuzz/fuzzer.h"
#include "utils/idesettings.h"

#include <QCoreApplication>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace {

TestUtils::IdeSettings *ide = nullptr;

const QStringList keys{
    u"accelerometer_x"_s,
    u"accelerometer_y"_s,
    u"accelerometer_z"_s,
    u"als"_s,
    u"gyroscope_x"_s,
    u"gyroscope_y"_s,
    u"gyroscope_z"_s,
    u"magnetic_field_x"_s,
    u"magnetic_field_y"_s,
    u"magnetic_field_z"_s,
    u"magnetometer_x"_s,
    u"magnetometer_y"_s,
    u"magnetometer_z"_s,
    u"magnetometer_calib_level"_s,
    u"proximity_reflectance"_s,
    u"tap"_s,
};

QVariant anyValue(Fuzz::Input &input)
{
    switch (input.number(6)) {
    case 0:
        return input.anyInt();
    case 1:
        return QString::number(input.anyDouble(), 'g', 17);
    case 2:
        return input.text(u"-+.0159e ,naif"_s, 8);
    case 3:
        return input.anyText(8);
    case 4:
        return input.chance(50);
    default:
        return QVariantList{input.anyInt()};
    }
}

// A key, "=" and a value in each line of a sample.
void storeAnything(Fuzz::Input &input)
{
    const std::optional<QString> sample = input.sample();
    if (sample) {
        for (const QString &line : sample->split(u'\n')) {
            const QString key = line.section(u'=', 0, 0);
            if (keys.contains(key))
                ide->setValue(u"emulationmanagement/"_s + key, line.section(u'=', 1));
        }
        return;
    }
    for (const QString &key : keys) {
        if (input.chance(70))
            ide->setValue(u"emulationmanagement/"_s + key, anyValue(input));
    }
}

void anyOperation(Fuzz::Input &input, SensorsEmulationManager &manager)
{
    const int i = input.anyInt();
    const double a = input.anyDouble();
    const double b = input.anyDouble();
    const double c = input.anyDouble();
    const QList<std::function<void()>> operations{
        [&] { manager.setAccelerometerValues(i, input.anyInt(), input.anyInt()); },
        [&] { manager.setAccelerometerX(i); },
        [&] { manager.setAccelerometerY(i); },
        [&] { manager.setAccelerometerZ(i); },
        [&] { manager.setAlsLuxValue(i); },
        [&] { manager.setCompassAzimuth(i); },
        [&] { manager.setCompassCalibrationLevel(i); },
        [&] { manager.setGyroscopeValues(a, b, c); },
        [&] { manager.setGyroscopeX(a); },
        [&] { manager.setGyroscopeY(b); },
        [&] { manager.setGyroscopeZ(c); },
        [&] { manager.setMagneticFieldValues(a, b, c); },
        [&] { manager.setMagneticFieldX(a); },
        [&] { manager.setMagneticFieldY(b); },
        [&] { manager.setMagneticFieldZ(c); },
        [&] { manager.setMagnetometerValues(a, b, c); },
        [&] { manager.setMagnetometerX(a); },
        [&] { manager.setMagnetometerY(b); },
        [&] { manager.setMagnetometerZ(c); },
        [&] { manager.setOrientation(i); },
        [&] { manager.setOrientation(input.number(8)); },
        [&] { manager.setProximitySensorReflectanceValue(i); },
        [&] { manager.setTapSensorValue(static_cast<TapModel::TapDirection>(i)); },
        [&] { manager.setDefaultValues(); },
        [&] { manager.setupSensors(); },
    };
    operations.at(input.number(int(operations.size())))();
}

QVariantMap values(const SensorsEmulationManager &manager)
{
    const auto vector = [](const auto *model) { return QVariantList{model->x(), model->y(), model->z()}; };
    return {
        {u"accelerometer"_s, vector(manager.accelerometer())},
        {u"gyroscope"_s, vector(manager.gyroscope())},
        {u"magneticField"_s, vector(manager.magneticField())},
        {u"magnetometer"_s, vector(manager.magnetometer())},
        {u"calibration"_s, manager.magnetometer()->calibrationLevel()},
        {u"als"_s, manager.als()->lux()},
        {u"proximity"_s, manager.proximity()->reflectance()},
        {u"tap"_s, static_cast<int>(manager.tap()->tapDirection())},
    };
}

QString wrongWith(const SensorsEmulationManager &manager)
{
    for (const DoubleXYZModel *model :
         {static_cast<DoubleXYZModel *>(manager.gyroscope()),
          static_cast<DoubleXYZModel *>(manager.magneticField()),
          static_cast<DoubleXYZModel *>(manager.magnetometer())}) {
        if (!std::isfinite(model->x()) || !std::isfinite(model->y()) || !std::isfinite(model->z()))
            return u"a value of %1 is not finite"_s.arg(model->name());
    }
    if (manager.compass()->azimuth() < 0 || manager.compass()->azimuth() >= 360)
        return u"the azimuth is %1"_s.arg(manager.compass()->azimuth());
    const int orientation = manager.orientation()->orientation();
    if (orientation < QOrientationReading::TopUp || orientation > QOrientationReading::FaceDown)
        return u"the orientation is %1"_s.arg(orientation);
    return {};
}

QString check(Fuzz::Input &input)
{
    ide->clear();
    storeAnything(input);

    QVariantMap saved;
    {
        SensorsEmulationManager manager;
        manager.setupSensors();
        for (int i = 0; i < 20; ++i) {
            const QString wrong = wrongWith(manager);
            if (!wrong.isEmpty())
                return wrong;
            anyOperation(input, manager);
        }
        saved = values(manager);
    }
    SensorsEmulationManager next;
    next.setupSensors();
    if (values(next) != saved)
        return u"other values are restored than were saved"_s;
    return wrongWith(next);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    TestUtils::IdeSettings settings;
    ide = &settings;
    return Fuzz::run("fuzz_settings", check);
}
