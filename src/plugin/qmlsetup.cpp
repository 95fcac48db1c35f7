// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin/qmlsetup.h"

#include "camera/cameraemulationmanager.h"
#include "gps/gpsemulationmanager.h"
#include "gps/nmealogloader.h"
#include "gps/nmeaparsing.h"
#include "gps/tracktablemodel.h"
#include "plugin/warningdialog.h"
#include "sensors/alsmodel.h"
#include "sensors/sensorsemulationmanager.h"
#include "sensors/settingsmanager.h"
#include "sensors/tapmodel.h"
#include "sensors/textfielddoublevalidator.h"

#include <utils/theme/theme.h>

#include <QQmlContext>
#include <qqml.h>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

// The view relies on these very theme entries; the host numbers them, so a new host version must not move them unseen.
constexpr auto backgroundRole = Utils::Theme::BackgroundColorNormal;
constexpr auto highlightRole = Utils::Theme::PaletteHighlight;
constexpr auto separatorRole = Utils::Theme::FancyToolBarSeparatorColor;
constexpr auto darkFlag = Utils::Theme::DarkUserInterface;
static_assert(backgroundRole == 2 && highlightRole == 59 && separatorRole == 13 && darkFlag == 14);

} // namespace

void registerViewTypes()
{
    // The pages read local files, such as tracks, with XMLHttpRequest.
    qputenv("QML_XHR_ALLOW_FILE_READ", "1");

    constexpr char module[] = "org.quova";
    qmlRegisterType<WarningDialog>(module, 1, 0, "WarningDialog");
    qmlRegisterType<SettingsManager>(module, 1, 0, "SettingsManager");
    qmlRegisterType<SensorsEmulationManager>(module, 1, 0, "SensorsEmulationManager");
    qmlRegisterType<TextFieldDoubleValidator>(module, 1, 0, "TextFieldDoubleValidator");
    qmlRegisterType<TrackTableModel>(module, 1, 0, "TrackTableModel");
    qmlRegisterType<NmeaLogLoader>(module, 1, 0, "NmeaLogLoader");
    qmlRegisterSingletonType<NmeaParsing>(
        module, 1, 0, "NmeaParsing", [](QQmlEngine *, QJSEngine *) { return new NmeaParsing; });

    qRegisterMetaType<AlsModel::LightLevel>("AlsModel::LightLevel");
    qRegisterMetaType<TapModel::TapDirection>("TapModel::TapDirection");

    qmlRegisterUncreatableType<AlsModel>(module, 1, 0, "AlsModel", u"Could not create the AlsModel instance"_s);
    qmlRegisterUncreatableType<TapModel>(module, 1, 0, "TapModel", u"Could not create the TapModel instance"_s);
    qmlRegisterUncreatableType<GPSEmulationManager>(
        module, 1, 0, "GPSEmulationManager", u"The plugin owns the only one"_s);
    qmlRegisterUncreatableType<CameraEmulationManager>(
        module, 1, 0, "CameraEmulationManager", u"The plugin owns the only one"_s);
}

void setThemeContextProperties(QQmlContext *context)
{
    const Utils::Theme *theme = Utils::creatorTheme();
    context->setContextProperty(u"themeBackgroundColorNormal"_s, theme->color(backgroundRole));
    context->setContextProperty(u"themeHighlightColor"_s, theme->color(highlightRole));
    context->setContextProperty(u"themeSeparatorColor"_s, theme->color(separatorRole));
    context->setContextProperty(u"darkUserInterface"_s, theme->flag(darkFlag));
}

} // namespace EmulationManagement::Internal
