// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/quickitems.h"
#include "utils/testcameras.h"
#include "utils/testmedia.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/actionmanager/command.h>
#include <coreplugin/coreconstants.h>
#include <extensionsystem/iplugin.h>
#include <extensionsystem/pluginmanager.h>
#include <extensionsystem/pluginspec.h>
#include <utils/theme/theme.h>

#include <QAction>
#include <QColor>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QMenu>
#include <QMetaEnum>
#include <QNetworkDatagram>
#include <QPluginLoader>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using TestUtils::descendant;

/// What the IDE has once the plugin is loaded and nobody has opened the view.
class tst_Startup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metadata();
    void pluginObject();
    void menuEntry();
    void contextProperties();
    void defaultModelIsConfigured();
    void themeValues();
    void creatableTypes_data();
    void creatableTypes();
    void uncreatableTypes_data();
    void uncreatableTypes();
    void enumerations();
    void localFilesCanBeReadFromQml();
    void hiddenViewIsLoaded();
    void controlsAreMadeWhenTheWindowIsFirstShown();
    void hidingTheWindowEndsAStream();
    void hidingTheWindowEndsThePictures_data();
    void hidingTheWindowEndsThePictures();
    void missingTranslationIsLogged();
};

namespace {
const RegisterTest<tst_Startup> registration;
}

void tst_Startup::metadata()
{
    const QPluginLoader loader(
        plugin() ? QDir(qEnvironmentVariable("EMULATIONMANAGEMENT_TEST_BUILD_DIR"))
                       .filePath(u"lib/qtcreator/plugins/libEmulationManagement.so"_s)
                 : QString());
    const QJsonObject all = loader.metaData();
    QCOMPARE(all.value("IID"_L1).toString(), u"org.qt-project.Qt.QtCreatorPlugin"_s);
    QCOMPARE(all.value("className"_L1).toString(), u"EmulationManagementPlugin"_s);

    const QJsonObject metaData = all.value("MetaData"_L1).toObject();
    QCOMPARE(metaData.value("Id"_L1).toString(), u"emulationmanagement"_s);
    QCOMPARE(metaData.value("Name"_L1).toString(), u"EmulationManagement"_s);
    QCOMPARE(metaData.value("Version"_L1).toString(), u"16.0.0"_s);
    QCOMPARE(metaData.value("CompatVersion"_L1).toString(), u"16.0.0"_s);
    QCOMPARE(metaData.value("Description"_L1).toString(), u"Velmo OS emulator management plugin"_s);
    const QJsonArray dependencies{QJsonObject{{u"Id"_s, u"core"_s}, {u"Version"_s, u"16.0.0"_s}}};
    QCOMPARE(metaData.value("Dependencies"_L1).toArray(), dependencies);
    for (const auto key : {"Vendor"_L1, "VendorId"_L1, "Url"_L1, "License"_L1, "Copyright"_L1})
        QVERIFY2(!metaData.value(key).toString().isEmpty(), key.data());
}

void tst_Startup::pluginObject()
{
    QVERIFY(plugin());
    const QMetaObject *metaObject = plugin()->metaObject();
    QCOMPARE(metaObject->className(), "EmulationManagement::Internal::EmulationManagementPlugin");
    QCOMPARE(metaObject->propertyCount() - metaObject->propertyOffset(), 0);
    QCOMPARE(metaObject->methodCount() - metaObject->methodOffset(), 1);
    const QMetaMethod signal = metaObject->method(metaObject->methodOffset());
    QCOMPARE(signal.methodType(), QMetaMethod::Signal);
    QCOMPARE(signal.methodSignature(), QByteArray("emulationManagementViewShowed()"));
    QVERIFY(!ExtensionSystem::PluginManager::specForPlugin(plugin())->hasError());
}

void tst_Startup::menuEntry()
{
    QAction *action = showViewAction();
    QVERIFY(action);
    QCOMPARE(action->text(), u"Emulation Management\u2026"_s);
    QVERIFY(action->isEnabled());

    const Core::Command *command =
        Core::ActionManager::command("EmulationManagement.ShowEmulationManagementView.Action");
    const QAction *registered = command->actionForContext("Global Context");
    QVERIFY(registered);
    QCOMPARE(registered->parent(), plugin());
    for (const Utils::Id &context : command->context()) {
        if (context != Utils::Id("Global Context"))
            QVERIFY2(!command->actionForContext(context), context.name().toByteArray().constData());
    }
    QVERIFY(!command->isScriptable());
    QVERIFY(!command->isScriptable(Core::Context("Global Context")));

    Core::ActionContainer *submenu = Core::ActionManager::actionContainer("Vok.Tools.Menu");
    QVERIFY(submenu);
    QVERIFY(submenu->menu()->actions().contains(action));
    QMenu *tools = Core::ActionManager::actionContainer(Core::Constants::M_TOOLS)->menu();
    QVERIFY(tools->actions().contains(submenu->menu()->menuAction()));
    QCOMPARE(submenu->menu()->title(), u"Velmo OS"_s); // which the SDK's plugin has given it
}

void tst_Startup::contextProperties()
{
    QVERIFY(view());
    const auto className = [](const char *property) {
        const auto *object = contextProperty(QString::fromLatin1(property)).value<QObject *>();
        return object ? QByteArray(object->metaObject()->className()) : QByteArray();
    };
    QCOMPARE(className("remoteDBusInvokerService"), "EmulationManagement::Internal::RemoteDBusInvokerService");
    QCOMPARE(className("sensorsEmulationManager"), "EmulationManagement::Internal::SensorsEmulationManager");
    QCOMPARE(className("smartphone3DModelConfig"), "EmulationManagement::Internal::Smartphone3DModelConfig");
    QCOMPARE(className("cameraEmulationManager"), "CameraEmulationManager");
    QCOMPARE(contextProperty(u"emulationManagementPlugin"_s).value<QObject *>(), plugin());

    auto *manager = contextProperty(u"sensorsEmulationManager"_s).value<QObject *>();
    QCOMPARE(
        manager->property("rdbusinvoker").value<QObject *>(),
        contextProperty(u"remoteDBusInvokerService"_s).value<QObject *>());
    QCOMPARE(contextProperty(u"smartphone3DModelConfig"_s).value<QObject *>()->parent(), nullptr);
}

// Without an emulator, nothing but the model of no device in particular.
void tst_Startup::defaultModelIsConfigured()
{
    const auto *config = contextProperty(u"smartphone3DModelConfig"_s).value<QObject *>();
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString mesh = QUrl(config->property("smartphone3DModelMeshUri").toString()).toLocalFile();
    const QString texture = QUrl(config->property("smartphone3DModelTextureUri").toString()).toLocalFile();
    QCOMPARE(mesh, folder.filePath(u"meshes/default.obj"_s));
    QCOMPARE(texture, folder.filePath(u"textures/default.png"_s));
    QVERIFY(QFile::exists(mesh) && QFile::exists(texture));
}

void tst_Startup::themeValues()
{
    const Utils::Theme *theme = Utils::creatorTheme();
    QCOMPARE(contextProperty(u"themeBackgroundColorNormal"_s).metaType(), QMetaType::fromType<QColor>());
    QCOMPARE(contextProperty(u"themeBackgroundColorNormal"_s).value<QColor>(), theme->color(Utils::Theme::Color(2)));
    QCOMPARE(contextProperty(u"themeHighlightColor"_s).value<QColor>(), theme->color(Utils::Theme::Color(59)));
    QCOMPARE(contextProperty(u"themeSeparatorColor"_s).value<QColor>(), theme->color(Utils::Theme::Color(13)));
    QCOMPARE(contextProperty(u"darkUserInterface"_s), QVariant(theme->flag(Utils::Theme::Flag(14))));
}

void tst_Startup::creatableTypes_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("className");

    QTest::newRow("warning dialog") << u"WarningDialog"_s << QByteArray("EmulationManagement::Internal::WarningDialog");
    QTest::newRow("settings manager") << u"SettingsManager"_s
                                      << QByteArray("EmulationManagement::Internal::SettingsManager");
    QTest::newRow("sensors manager") << u"SensorsEmulationManager"_s
                                     << QByteArray("EmulationManagement::Internal::SensorsEmulationManager");
    QTest::newRow("validator") << u"TextFieldDoubleValidator"_s << QByteArray("TextFieldDoubleValidator");
}

void tst_Startup::creatableTypes()
{
    QFETCH(const QString, type);
    QFETCH(const QByteArray, className);

    QQmlComponent component(view()->engine());
    component.setData("import org.quova 1.0\n" + type.toUtf8() + " {}", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qUtf8Printable(component.errorString()));
    QCOMPARE(QByteArray(object->metaObject()->className()), className);
}

void tst_Startup::uncreatableTypes_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("light sensor") << QByteArray("AlsModel");
    QTest::newRow("tap sensor") << QByteArray("TapModel");
}

void tst_Startup::uncreatableTypes()
{
    QFETCH(const QByteArray, type);

    QQmlComponent component(view()->engine());
    component.setData("import org.quova 1.0\n" + type + " {}", QUrl());
    QVERIFY(component.isError());
    QCOMPARE(component.errors().size(), 1);
    QCOMPARE(
        component.errors().constFirst().description(),
        u"Could not create the %1 instance"_s.arg(QLatin1StringView(type)));
}

void tst_Startup::enumerations()
{
    QQmlComponent component(view()->engine());
    component.setData(
        "import QtQml\nimport org.quova 1.0\n"
        "QtObject { property int light: AlsModel.Sunny; property int tap: TapModel.Y_Pos }",
        QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qUtf8Printable(component.errorString()));
    QCOMPARE(object->property("light").toInt(), 2500);
    QCOMPARE(object->property("tap").toInt(), 7);

    for (const char *alias : {"AlsModel::LightLevel", "TapModel::TapDirection"}) {
        const QMetaType type = QMetaType::fromName(alias);
        QVERIFY(type.isValid());
        QVERIFY(type.flags().testFlag(QMetaType::IsEnumeration));
        QCOMPARE(QByteArray(type.name()), QByteArray("EmulationManagement::Internal::") + alias);
    }
}

void tst_Startup::localFilesCanBeReadFromQml()
{
    QCOMPARE(qgetenv("QML_XHR_ALLOW_FILE_READ"), QByteArray("1"));
}

void tst_Startup::hiddenViewIsLoaded()
{
    QVERIFY2(view()->errors().isEmpty(), qPrintable(view()->errors().value(0).toString()));
    QCOMPARE(view()->status(), QQuickView::Ready);
    QCOMPARE(view()->source(), QUrl(u"qrc:/emulationmanagement/qml/EmulationManagementView.qml"_s));
    QCOMPARE(view()->resizeMode(), QQuickView::SizeRootObjectToView);
    QCOMPARE(view()->title(), u"Emulation Management"_s);
    QCOMPARE(view()->size(), QSize(1100, 600));
    QVERIFY(!view()->isVisible());
    QCOMPARE(view()->parent(), nullptr);
    QCOMPARE(view()->transientParent(), nullptr);
    // What is loaded ahead of it.
    const QQmlComponent modules(view()->engine(), QUrl(u"qrc:/emulationmanagement/qml/QtQuickModules.qml"_s));
    QVERIFY2(modules.isReady(), qPrintable(modules.errorString()));
}

// All of the pages are there before; their controls are not made for a user who does not open the view.
void tst_Startup::controlsAreMadeWhenTheWindowIsFirstShown()
{
    const QStringList names{
        u"accelerometerCheckBox"_s, u"xSlider"_s, u"xRotSlider"_s, u"latitudeField"_s, u"cameraBox"_s};
    const auto controls = [&names] {
        QList<const QQuickItem *> found;
        for (const QString &name : names) {
            if (const QQuickItem *item = descendant(name, view()->rootObject()))
                found.append(item);
        }
        return found;
    };
    QVERIFY(controls().isEmpty());

    view()->show();
    const QList<const QQuickItem *> made = controls();
    QCOMPARE(made.size(), names.size());
    view()->hide();
    view()->show();
    QCOMPARE(controls(), made);
    view()->hide();
    QCOMPARE(controls(), made);
}

void tst_Startup::hidingTheWindowEndsAStream()
{
    auto *manager = contextProperty(u"cameraEmulationManager"_s).value<QObject *>();
    QVERIFY(manager);
    QSignalSpy runningSpy(manager, SIGNAL(streamRunningChanged()));
    const auto isRunning = [&] { return manager->property("streamRunning").toBool(); };

    view()->show();
    view()->hide();
    QCOMPARE(runningSpy.size(), 0); // nothing to end

    view()->show();
    QVERIFY(QMetaObject::invokeMethod(manager, "startCameraStream"));
    QVERIFY(isRunning());
    runningSpy.clear();
    view()->hide();
    QVERIFY(!isRunning());
    QCOMPARE(runningSpy.size(), 2); // the video's and the camera's
}

void tst_Startup::hidingTheWindowEndsThePictures_data()
{
    QTest::addColumn<bool>("isVideo");
    QTest::addColumn<bool>("counts");

    QTest::newRow("of a video") << true << true;
    QTest::newRow("of a video that counts as stopped since the list of cameras was renewed") << true << false;
    QTest::newRow("of a camera") << false << true;
}

void tst_Startup::hidingTheWindowEndsThePictures()
{
    QFETCH(bool, isVideo);
    QFETCH(bool, counts);
    const QTemporaryDir folder;
    const QString video = folder.filePath(u"video.webm"_s);
    QCOMPARE(TestUtils::writeVideo(video, {.frames = 300}), QString());
    QUdpSocket port;
    QVERIFY2(port.bind(QHostAddress::LocalHost, 34343), qPrintable(port.errorString()));
    auto *manager = contextProperty(u"cameraEmulationManager"_s).value<QObject *>();
    QVERIFY(manager);

    view()->show();
    if (isVideo) {
        QVERIFY(QMetaObject::invokeMethod(manager, "startVideoStream", Q_ARG(QString, video)));
        if (!counts)
            QVERIFY(QMetaObject::invokeMethod(manager, "updateCamerasList"));
    } else {
        TestUtils::TestCameras::install();
        TestUtils::TestCameras::plug({.name = u"Camera"_s});
        QVERIFY(QMetaObject::invokeMethod(manager, "updateCamerasList"));
        QVERIFY(QMetaObject::invokeMethod(manager, "startCameraStream"));
    }
    QCOMPARE(manager->property("streamRunning").toBool(), counts);
    QTRY_VERIFY_WITH_TIMEOUT(port.hasPendingDatagrams(), 30000);
    while (port.hasPendingDatagrams())
        port.receiveDatagram();
    QTRY_VERIFY_WITH_TIMEOUT(port.hasPendingDatagrams(), 30000); // more and more

    view()->hide();
    while (port.hasPendingDatagrams())
        port.receiveDatagram();
    // In the time that another stream takes for 30 pictures nothing comes.
    const QString problem = TestUtils::writeMedia(
        folder.filePath(u"pictures"_s),
        "videotestsrc is-live=true num-buffers=30 ! video/x-raw,width=16,height=16,framerate=30/1"
        " ! filesink name=target");
    QCOMPARE(problem, QString());
    QCoreApplication::processEvents();
    QVERIFY(!port.hasPendingDatagrams());
}

// These tests run in the C locale, for which there is no file.
void tst_Startup::missingTranslationIsLogged()
{
    const QString expected = u"Failed to load translator: \"%1\" EmulationManagement"_s.arg(QDir::toNativeSeparators(
        QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/qtcreator/translations"_s)));
    QList<Message> found;
    for (const Message &message : recordedMessages()) {
        if (message.text.contains("translator"_L1))
            found.append(message);
    }
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.constFirst().text, expected);
    QCOMPARE(found.constFirst().type, QtDebugMsg);
    QCOMPARE(found.constFirst().category, u"default"_s);
}

#include "tst_startup.moc"
