// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// usage: view-pictures FOLDER [THEME...]
// Draws every page of the view into FOLDER, in themes of the IDE, at its first size and at twice that size.

#include "sensors/sensorsemulationmanager.h"
#include "view/viewhost.h"

#include <QApplication>
#include <QDir>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void drawPages(TestView::ViewHost &host, const QString &theme, const QDir &folder)
{
    QQuickView view;
    host.setTheme(theme);
    host.setUp(view.rootContext());
    const QStringList sensors = host.sensors()->sensorsEnabledStates().keys();
    for (const QString &sensor : sensors) // one of them off, to see how that looks
        host.sensors()->setSensorEnabled(sensor, sensor != "gyroscope"_L1);
    host.plugCamera(
        u"Integrated Camera: Front"_s, u"video/x-raw,format=YUY2,width=1280,height=720,framerate=30/1"_s, Qt::blue);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl(u"qrc:/emulationmanagement/qml/EmulationManagementView.qml"_s));
    host.setupCameraStreamPipeline();
    view.show();
    view.requestActivate();

    static const QStringList pages{
        u"sensorsManagement"_s, u"sensorsValues"_s, u"smartphoneModel"_s, u"gpsManagement"_s, u"cameraManagement"_s};
    for (const int scale : {1, 2}) {
        view.resize(1100 * scale, 600 * scale);
        for (const QString &page : pages) {
            const auto *button = view.rootObject()->findChild<QQuickItem *>(page + u"Button"_s);
            QTest::mouseClick(&view, Qt::LeftButton, {}, button->mapToScene(button->boundingRect().center()).toPoint());
            QTest::keyClick(&view, Qt::Key_Tab);
            QTest::qWait(50);
            const QString name = u"%1-%2-%3.png"_s.arg(theme, page).arg(view.width());
            if (!view.grabWindow().save(folder.filePath(name)))
                qFatal("Cannot write %s", qPrintable(folder.filePath(name)));
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QStringList arguments = application.arguments().mid(1);
    if (arguments.isEmpty())
        qFatal("usage: view-pictures FOLDER [THEME...]");
    const QDir folder(arguments.takeFirst());
    if (!folder.mkpath(u"."_s))
        qFatal("Cannot make %s", qPrintable(folder.path()));
    if (arguments.isEmpty())
        arguments = {u"light-2024"_s, u"dark-2024"_s};

    TestView::ViewHost host;
    for (const QString &theme : std::as_const(arguments))
        drawPages(host, theme, folder);
    return 0;
}
