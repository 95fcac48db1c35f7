// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// usage: view-pictures [--language NAME] FOLDER [THEME...]
// Draws every page of the view into FOLDER, in themes of the IDE and in the language of one of the translations, at its
// smallest size, at its first size and at twice that size.

#include "sensors/sensorsemulationmanager.h"
#include "view/viewhost.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

void click(QQuickView &view, const QString &name)
{
    const auto *item = view.rootObject()->findChild<QQuickItem *>(name);
    QTest::mouseClick(&view, Qt::LeftButton, {}, item->mapToScene(item->boundingRect().center()).toPoint());
}

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

    // Each with the controls that choose what it shows.
    static const QList<QStringList> pages{
        {u"sensorsManagementButton"_s},
        {u"sensorsValuesButton"_s},
        {u"smartphoneModelButton"_s, u"rotationRadioButton"_s},
        {u"smartphoneModelButton"_s, u"moveRadioButton"_s},
        {u"gpsManagementButton"_s},
        {u"cameraManagementButton"_s, u"videoFileSourceRadioButton"_s},
        {u"cameraManagementButton"_s, u"cameraRadioButton"_s},
    };
    for (const QSize size : {QSize(1000, 400), QSize(1100, 600), QSize(2200, 1200)}) {
        view.resize(size);
        for (const QStringList &controls : pages) {
            for (const QString &control : controls)
                click(view, control);
            QTest::keyClick(&view, Qt::Key_Tab);
            QTest::qWait(50);
            const QString name = u"%1-%2-%3.png"_s.arg(theme, controls.join(u'-')).arg(view.width());
            if (!view.grabWindow().save(folder.filePath(name)))
                qFatal("Cannot write %s", qPrintable(folder.filePath(name)));
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QCommandLineOption languageOption(u"language"_s, {}, u"NAME"_s);
    QCommandLineParser parser;
    parser.addOption(languageOption);
    parser.process(application);
    QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        qFatal("usage: view-pictures [--language NAME] FOLDER [THEME...]");
    const QDir folder(arguments.takeFirst());
    if (!folder.mkpath(u"."_s))
        qFatal("Cannot make %s", qPrintable(folder.path()));
    if (arguments.isEmpty())
        arguments = {u"light-2024"_s, u"dark-2024"_s};

    QTranslator translator;
    if (parser.isSet(languageOption)) {
        const QString name = u"EmulationManagement_"_s + parser.value(languageOption);
        if (!translator.load(name, QStringLiteral(EMULATIONMANAGEMENT_TRANSLATIONS)))
            qFatal("There is no translation %s", qPrintable(name));
        QCoreApplication::installTranslator(&translator);
    }

    TestView::ViewHost host;
    for (const QString &theme : std::as_const(arguments))
        drawPages(host, theme, folder);
    return 0;
}
