// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

// What the plugin registers as "org.quova" 1.0 at run time, described for the QML compiler and for qmllint. Nothing of
// this is linked: the descriptions are generated from the classes themselves.

#include "camera/cameraemulationmanager.h"
#include "gps/gpsemulationmanager.h"
#include "gps/nmealogloader.h"
#include "gps/nmeaparsing.h"
#include "gps/playertrackpoint.h"
#include "gps/positionmodel.h"
#include "gps/trackpoint.h"
#include "gps/tracktablemodel.h"
#include "plugin/warningdialog.h"
#include "remote/emulationmanager.h"
#include "sensors/accelerometermodel.h"
#include "sensors/alsmodel.h"
#include "sensors/compassmodel.h"
#include "sensors/doublexyzmodel.h"
#include "sensors/gyroscopemodel.h"
#include "sensors/intxyzmodel.h"
#include "sensors/magneticfieldmodel.h"
#include "sensors/magnetometermodel.h"
#include "sensors/orientationmodel.h"
#include "sensors/proximitymodel.h"
#include "sensors/sensorsemulationmanager.h"
#include "sensors/settingsmanager.h"
#include "sensors/tapmodel.h"
#include "sensors/textfielddoublevalidator.h"

#include <QtQml/qqmlregistration.h>

namespace EmulationManagement::Internal {

struct SensorsEmulationManagerDescription
{
    Q_GADGET
    QML_FOREIGN(SensorsEmulationManager)
    QML_NAMED_ELEMENT(SensorsEmulationManager)
};

struct SettingsManagerDescription
{
    Q_GADGET
    QML_FOREIGN(SettingsManager)
    QML_NAMED_ELEMENT(SettingsManager)
};

struct WarningDialogDescription
{
    Q_GADGET
    QML_FOREIGN(WarningDialog)
    QML_NAMED_ELEMENT(WarningDialog)
};

struct NmeaLogLoaderDescription
{
    Q_GADGET
    QML_FOREIGN(NmeaLogLoader)
    QML_NAMED_ELEMENT(NmeaLogLoader)
};

struct NmeaParsingDescription
{
    Q_GADGET
    QML_FOREIGN(NmeaParsing)
    QML_NAMED_ELEMENT(NmeaParsing)
    QML_SINGLETON
};

struct TrackPointDescription
{
    Q_GADGET
    QML_FOREIGN(TrackPoint)
    QML_ANONYMOUS
};

struct TrackPointsDescription
{
    Q_GADGET
    QML_FOREIGN(QList<TrackPoint>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(TrackPoint)
};

struct AlsModelDescription
{
    Q_GADGET
    QML_FOREIGN(AlsModel)
    QML_NAMED_ELEMENT(AlsModel)
    QML_UNCREATABLE("Could not create the AlsModel instance")
};

struct TapModelDescription
{
    Q_GADGET
    QML_FOREIGN(TapModel)
    QML_NAMED_ELEMENT(TapModel)
    QML_UNCREATABLE("Could not create the TapModel instance")
};

struct GPSEmulationManagerDescription
{
    Q_GADGET
    QML_FOREIGN(GPSEmulationManager)
    QML_NAMED_ELEMENT(GPSEmulationManager)
    QML_UNCREATABLE("The plugin owns the only one")
};

struct PlayerTrackPointDescription
{
    Q_GADGET
    QML_FOREIGN(PlayerTrackPoint)
    QML_VALUE_TYPE(playerTrackPoint)
};

struct TrackTableModelDescription
{
    Q_GADGET
    QML_FOREIGN(TrackTableModel)
    QML_NAMED_ELEMENT(TrackTableModel)
};

struct PositionModelDescription
{
    Q_GADGET
    QML_FOREIGN(PositionModel)
    QML_ANONYMOUS
};

struct AccelerometerModelDescription
{
    Q_GADGET
    QML_FOREIGN(AccelerometerModel)
    QML_ANONYMOUS
};

struct CompassModelDescription
{
    Q_GADGET
    QML_FOREIGN(CompassModel)
    QML_ANONYMOUS
};

struct EmulationManagerDescription
{
    Q_GADGET
    QML_FOREIGN(EmulationManager)
    QML_ANONYMOUS
};

struct DoubleXYZModelDescription
{
    Q_GADGET
    QML_FOREIGN(DoubleXYZModel)
    QML_ANONYMOUS
};

struct GyroscopeModelDescription
{
    Q_GADGET
    QML_FOREIGN(GyroscopeModel)
    QML_ANONYMOUS
};

struct IntXYZModelDescription
{
    Q_GADGET
    QML_FOREIGN(IntXYZModel)
    QML_ANONYMOUS
};

struct MagneticFieldModelDescription
{
    Q_GADGET
    QML_FOREIGN(MagneticFieldModel)
    QML_ANONYMOUS
};

struct MagnetometerModelDescription
{
    Q_GADGET
    QML_FOREIGN(MagnetometerModel)
    QML_ANONYMOUS
};

struct OrientationModelDescription
{
    Q_GADGET
    QML_FOREIGN(OrientationModel)
    QML_ANONYMOUS
};

struct ProximityModelDescription
{
    Q_GADGET
    QML_FOREIGN(ProximityModel)
    QML_ANONYMOUS
};

} // namespace EmulationManagement::Internal

struct CameraEmulationManagerDescription
{
    Q_GADGET
    QML_FOREIGN(CameraEmulationManager)
    QML_NAMED_ELEMENT(CameraEmulationManager)
    QML_UNCREATABLE("The plugin owns the only one")
};

struct TextFieldDoubleValidatorDescription
{
    Q_GADGET
    QML_FOREIGN(TextFieldDoubleValidator)
    QML_NAMED_ELEMENT(TextFieldDoubleValidator)
};
