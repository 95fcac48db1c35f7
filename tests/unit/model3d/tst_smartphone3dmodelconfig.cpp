// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "model3d/smartphone3dmodelconfig.h"

#include "utils/metaobjects.h"
#include "utils/signallog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMetaProperty>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace {

using Files = QMap<QString, QByteArray>;

QString besideTheProgram(const QString &path)
{
    return QCoreApplication::applicationDirPath() + u'/' + path;
}

const QString configs = u"configs"_s;

QString configPath(const QString &name)
{
    return besideTheProgram(u"%1/%2"_s.arg(configs, name));
}

bool writeConfig(const QString &name, const QByteArray &content)
{
    // QSettings does not read a file again that has the size and the time of one before it.
    static QDateTime time = QDateTime::currentDateTime();
    time = time.addSecs(1);
    QFile file(configPath(name));
    return QDir().mkpath(besideTheProgram(configs)) && file.open(QIODevice::WriteOnly)
        && file.write(content) == content.size() && file.flush()
        && file.setFileTime(time, QFileDevice::FileModificationTime);
}

QByteArray configOf(const QByteArray &device, const QByteArray &files)
{
    return "device-name=" + device + "\nmesh=" + files + ".obj\ntexture=" + files + ".png\n";
}

// An empty file name gives the folder, with a slash at its end.
QString uriIn(const QString &folder, const QString &fileName)
{
    return QUrl::fromLocalFile(besideTheProgram(folder + u'/' + fileName)).toString();
}

void removeConfigs()
{
    QFile::setPermissions(besideTheProgram(configs), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QDir(besideTheProgram(configs)).removeRecursively();
}

// Root reads also what nobody may read; without these capabilities it is a user like any other.
void obeyPermissions()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3];
    QCOMPARE(syscall(SYS_capget, &header, data), 0);
    data[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
    QCOMPARE(syscall(SYS_capset, &header, data), 0);
}

// What is left to show when there is nothing: the folders themselves.
void verifyNothingIsSelected(const Smartphone3DModelConfig &config)
{
    QCOMPARE(config.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, {}));
    QCOMPARE(config.smartphone3DModelTextureUri(), uriIn(u"textures"_s, {}));
    QVERIFY(config.smartphone3DModelConfigured());
}

} // namespace

class TestSmartphone3DModelConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { obeyPermissions(); }
    void init();
    void cleanup();
    void describesItselfToQml();
    void selectsByName_data();
    void selectsByName();
    void selectsTheDefaultAtFirst();
    void withoutAFolderTheFoldersAreShown();
    void laterFileOfTheSameDeviceWins();
    void everyUpdateIsAnnouncedOnce();
    void bothUrisAreNewWhenAnnounced();
    void filesAddedLaterAreNotSeen();
    void unreadableFileIsAnEmptyOne();
    void unreadableFolderIsAnEmptyOne();
    void largeFileIsReadToItsEnd();
    void hugeFileIsAnEmptyOne();
    void linksAreFollowed();
    void pipeIsNotWaitedFor();
    void folderOfTheProgramMayHaveAnyName();
};

void TestSmartphone3DModelConfig::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    removeConfigs();
}

void TestSmartphone3DModelConfig::cleanup()
{
    removeConfigs();
}

void TestSmartphone3DModelConfig::describesItselfToQml()
{
    const QMetaObject &metaObject = Smartphone3DModelConfig::staticMetaObject;
    QCOMPARE(metaObject.className(), "EmulationManagement::Internal::Smartphone3DModelConfig");
    QCOMPARE(metaObject.superClass(), &QObject::staticMetaObject);

    const QStringList methods{
        u"signal smartphone3DModelConfigChanged()"_s,
        u"signal smartphone3DModelMeshUriChanged()"_s,
        u"signal smartphone3DModelTextureUriChanged()"_s,
        u"bool smartphone3DModelConfigured()"_s,
    };
    QCOMPARE(TestUtils::ownMethods(metaObject), methods);
    QVERIFY(metaObject.method(metaObject.methodOffset() + 3).isConst());

    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        properties.append(QString::fromLatin1(property.name()));
        QCOMPARE(property.metaType(), QMetaType::fromType<QString>());
        QVERIFY(property.isReadable());
        QVERIFY(!property.isWritable());
        QCOMPARE(property.notifySignal().name(), QByteArray(property.name()) + "Changed");
    }
    QCOMPARE(properties, QStringList({u"smartphone3DModelMeshUri"_s, u"smartphone3DModelTextureUri"_s}));

    QCOMPARE(Smartphone3DModelConfig().parent(), nullptr);
}

void TestSmartphone3DModelConfig::selectsByName_data()
{
    QTest::addColumn<Files>("files");
    QTest::addColumn<QString>("deviceName");
    QTest::addColumn<QString>("mesh");
    QTest::addColumn<QString>("texture");

    const Files usual{{u"a.ini"_s, configOf("Phone", "phone")}, {u"b.ini"_s, configOf("default", "plain")}};
    const QString nothing;
    const auto row = [](const char *name) -> QTestData & { return QTest::newRow(name); };
    // One file only, which is the default one.
    const auto defaultFile = [&row](const char *name, const QByteArray &lines) -> QTestData & {
        return row(name) << Files{{u"a.ini"_s, "device-name=default\n" + lines}} << u"default"_s;
    };

    row("a device's files are those of its configuration") << usual << u"Phone"_s << u"phone.obj"_s << u"phone.png"_s;
    row("a device without a configuration has the default one")
        << usual << u"Tablet"_s << u"plain.obj"_s << u"plain.png"_s;
    row("the default one has a name like any other") << usual << u"default"_s << u"plain.obj"_s << u"plain.png"_s;
    row("another letter case is another name") << usual << u"phone"_s << u"plain.obj"_s << u"plain.png"_s;
    row("a blank more is another name") << usual << u"Phone "_s << u"plain.obj"_s << u"plain.png"_s;
    row("no name has the default configuration") << usual << QString() << u"plain.obj"_s << u"plain.png"_s;
    row("another letter case is not the default")
        << Files{{u"a.ini"_s, configOf("Default", "plain")}} << u"Phone"_s << nothing << nothing;
    row("without a default one, an unknown device has no files")
        << Files{{u"a.ini"_s, configOf("Phone", "phone")}} << u"Tablet"_s << nothing << nothing;
    row("without a default one, a known device has its files")
        << Files{{u"a.ini"_s, configOf("Phone", "phone")}} << u"Phone"_s << u"phone.obj"_s << u"phone.png"_s;
    row("without a device name, it is the configuration of the empty one")
        << Files{{u"a.ini"_s, "mesh=a.obj\ntexture=a.png\n"}} << QString() << u"a.obj"_s << u"a.png"_s;
    row("an empty file is the configuration of the empty name")
        << Files{{u"a.ini"_s, {}}, {u"b.ini"_s, configOf("default", "plain")}} << QString() << nothing << nothing;
    row("a comma is part of a device's name") << Files{{u"a.ini"_s, configOf("Phone, small", "phone")}}
                                              << u"Phone, small"_s << u"phone.obj"_s << u"phone.png"_s;
    row("names may be in any script") << Files{{u"a.ini"_s, configOf("Телефон", "трубка")}} << u"Телефон"_s
                                      << u"трубка.obj"_s << u"трубка.png"_s;
    row("names may have characters that templates have")
        << Files{{u"a.ini"_s, configOf("%1", "%3 %1")}} << u"%1"_s << u"%3 %1.obj"_s << u"%3 %1.png"_s;
    row("only names that end in .ini are read")
        << Files{{u"a.ini.txt"_s, configOf("Phone", "phone")}, {u"b.conf"_s, configOf("default", "plain")}}
        << u"Phone"_s << nothing << nothing;
    row("the file's own name means nothing")
        << Files{{u"default.ini"_s, configOf("Phone", "phone")}} << u"default"_s << nothing << nothing;

    defaultFile("a missing mesh is an empty name", "texture=a.png\n") << nothing << u"a.png"_s;
    defaultFile("a missing texture is an empty name", "mesh=a.obj\n") << u"a.obj"_s << nothing;
    defaultFile("an empty value is an empty name", "mesh=\ntexture=\"\"\n") << nothing << nothing;
    defaultFile("keys in a group are others", "[files]\nmesh=a.obj\ntexture=a.png\n") << nothing << nothing;
    defaultFile("keys before a group belong to none", "mesh=a.obj\n[files]\nmesh=b.obj\ntexture=b.png\n")
        << u"a.obj"_s << nothing;
    defaultFile("a group named General is none", "[General]\nmesh=a.obj\ntexture=a.png\n") << u"a.obj"_s << u"a.png"_s;
    defaultFile("keys of another letter case are others", "Mesh=a.obj\nTEXTURE=a.png\n") << nothing << nothing;
    defaultFile("the last of two equal keys counts", "mesh=a.obj\nmesh=b.obj\ntexture=a.png\n")
        << u"b.obj"_s << u"a.png"_s;
    defaultFile("other keys and comments mean nothing", "; a mesh=b.obj\ncolour=red\nmesh=a.obj\ntexture=a.png\n")
        << u"a.obj"_s << u"a.png"_s;
    defaultFile("a file name may lie in a folder", "mesh=small/a.obj\ntexture=small/a.png\n")
        << u"small/a.obj"_s << u"small/a.png"_s;
    defaultFile("a comma is part of a file name", "mesh=a, b.obj\ntexture=\"a, b.png\"\n")
        << u"a, b.obj"_s << u"a, b.png"_s;
    defaultFile("lines may end as in DOS", "mesh=a.obj\r\ntexture=a.png\r\n") << u"a.obj"_s << u"a.png"_s;
    defaultFile("the last line needs no end", "mesh=a.obj\ntexture=a.png") << u"a.obj"_s << u"a.png"_s;
    defaultFile("what cannot be understood is passed over", "mesh=a.obj\n[\n=\n]=[\n\\x\n[General]\ntexture=a.png\n")
        << u"a.obj"_s << u"a.png"_s;

    QByteArray everyByte;
    for (int i = 0; i < 64 * 256; ++i)
        everyByte.append(char(i * 7 + i / 256));
    row("bytes that are no text at all do no harm")
        << Files{{u"a.ini"_s, everyByte}, {u"b.ini"_s, configOf("default", "plain")}} << u"Phone"_s << u"plain.obj"_s
        << u"plain.png"_s;
}

void TestSmartphone3DModelConfig::selectsByName()
{
    QFETCH(const Files, files);
    QFETCH(const QString, deviceName);
    QFETCH(const QString, mesh);
    QFETCH(const QString, texture);

    for (auto it = files.cbegin(); it != files.cend(); ++it)
        QVERIFY(writeConfig(it.key(), it.value()));

    Smartphone3DModelConfig config;
    for (int i = 0; i < 2; ++i) { // looking an unknown name up does not change its meaning
        config.updateSmartphone3DModel(deviceName);
        QCOMPARE(config.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, mesh));
        QCOMPARE(config.smartphone3DModelTextureUri(), uriIn(u"textures"_s, texture));
        QVERIFY(config.smartphone3DModelConfigured());
    }
}

void TestSmartphone3DModelConfig::selectsTheDefaultAtFirst()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("Phone", "phone")));
    QVERIFY(writeConfig(u"b.ini"_s, configOf("default", "plain")));

    const Smartphone3DModelConfig config;
    QVERIFY(config.smartphone3DModelMeshUri().startsWith("file:///"_L1));
    QCOMPARE(QUrl(config.smartphone3DModelMeshUri()).toLocalFile(), besideTheProgram(u"meshes/plain.obj"_s));
    QCOMPARE(QUrl(config.smartphone3DModelTextureUri()).toLocalFile(), besideTheProgram(u"textures/plain.png"_s));
}

void TestSmartphone3DModelConfig::withoutAFolderTheFoldersAreShown()
{
    QVERIFY(!QFile::exists(besideTheProgram(configs)));
    Smartphone3DModelConfig config;
    verifyNothingIsSelected(config);
    config.updateSmartphone3DModel(u"Phone"_s);
    verifyNothingIsSelected(config);

    bool configured = false;
    QVERIFY(QMetaObject::invokeMethod(&config, "smartphone3DModelConfigured", qReturnArg(configured)));
    QVERIFY(configured);
}

void TestSmartphone3DModelConfig::laterFileOfTheSameDeviceWins()
{
    // Enough of them that the file system's order is neither that of the names nor that of their making.
    for (int i = 0; i < 40; ++i) {
        const QByteArray name = QByteArray::number(i * 7 % 40);
        QVERIFY(writeConfig(QString::fromLatin1(name + ".ini"), configOf("default", name)));
    }
    QString last;
    for (const auto &entry : std::filesystem::directory_iterator(besideTheProgram(configs).toStdString()))
        last = QString::fromStdString(entry.path().stem().string());

    const Smartphone3DModelConfig config;
    QCOMPARE(config.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, last + u".obj"_s));
    QCOMPARE(config.smartphone3DModelTextureUri(), uriIn(u"textures"_s, last + u".png"_s));
}

void TestSmartphone3DModelConfig::everyUpdateIsAnnouncedOnce()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("Phone", "phone")));
    Smartphone3DModelConfig config;
    TestUtils::SignalLog log;
    log.watch(&config);
    for (const QString &name : {u"Phone"_s, u"Phone"_s, u"Tablet"_s, u"default"_s, QString()}) {
        config.updateSmartphone3DModel(name);
        QCOMPARE(log.takeEntries(), QStringList{u"smartphone3DModelConfigChanged"_s});
    }
}

void TestSmartphone3DModelConfig::bothUrisAreNewWhenAnnounced()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("Phone", "phone")));
    Smartphone3DModelConfig config;
    QStringList uris;
    connect(&config, &Smartphone3DModelConfig::smartphone3DModelConfigChanged, this, [&] {
        uris << config.smartphone3DModelMeshUri() << config.smartphone3DModelTextureUri();
    });
    config.updateSmartphone3DModel(u"Phone"_s);
    QCOMPARE(uris, QStringList({uriIn(u"meshes"_s, u"phone.obj"_s), uriIn(u"textures"_s, u"phone.png"_s)}));
}

void TestSmartphone3DModelConfig::filesAddedLaterAreNotSeen()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("default", "plain")));
    Smartphone3DModelConfig config;
    QVERIFY(writeConfig(u"a.ini"_s, configOf("default", "changed")));
    QVERIFY(writeConfig(u"b.ini"_s, configOf("Phone", "phone")));
    config.updateSmartphone3DModel(u"Phone"_s);
    QCOMPARE(config.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"plain.obj"_s));
    Smartphone3DModelConfig later;
    QCOMPARE(later.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"changed.obj"_s));
    later.updateSmartphone3DModel(u"Phone"_s);
    QCOMPARE(later.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"phone.obj"_s));
}

void TestSmartphone3DModelConfig::unreadableFileIsAnEmptyOne()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("Phone", "phone")));
    QVERIFY(writeConfig(u"b.ini"_s, configOf("default", "plain")));
    QVERIFY(QFile::setPermissions(configPath(u"a.ini"_s), {}));
    QVERIFY(!QFile(configPath(u"a.ini"_s)).open(QIODevice::ReadOnly));

    Smartphone3DModelConfig config;
    config.updateSmartphone3DModel(u"Phone"_s);
    QCOMPARE(config.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"plain.obj"_s));
    config.updateSmartphone3DModel({});
    verifyNothingIsSelected(config);
}

void TestSmartphone3DModelConfig::unreadableFolderIsAnEmptyOne()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("default", "plain")));
    QVERIFY(QFile::setPermissions(besideTheProgram(configs), {}));
    verifyNothingIsSelected(Smartphone3DModelConfig());
}

void TestSmartphone3DModelConfig::largeFileIsReadToItsEnd()
{
    const QByteArray end = configOf("default", "plain");
    const QByteArray comments = QByteArray("; a long line of comment, of which there are many\n").repeated(30'000);
    QVERIFY(writeConfig(u"a.ini"_s, comments.first(1024 * 1024 - end.size() - 1) + '\n' + end));
    QCOMPARE(Smartphone3DModelConfig().smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"plain.obj"_s));
}

void TestSmartphone3DModelConfig::hugeFileIsAnEmptyOne()
{
    QVERIFY(writeConfig(u"a.ini"_s, configOf("Phone", "phone") + "x\n"));
    QVERIFY(QFile::resize(configPath(u"a.ini"_s), 4'000'000'000)); // takes no room: a hole
    QVERIFY(writeConfig(u"b.ini"_s, configOf("default", "plain")));

    QElapsedTimer timer;
    timer.start();
    Smartphone3DModelConfig config;
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    config.updateSmartphone3DModel(u"Phone"_s);
    QCOMPARE(config.smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"plain.obj"_s));
    config.updateSmartphone3DModel({});
    verifyNothingIsSelected(config);
}

void TestSmartphone3DModelConfig::linksAreFollowed()
{
    QVERIFY(writeConfig(u"a.txt"_s, configOf("default", "plain")));
    QVERIFY(QFile::link(configPath(u"a.txt"_s), configPath(u"a.ini"_s)));
    QVERIFY(QFile::link(configPath(u"missing"_s), configPath(u"b.ini"_s)));
    QVERIFY(QDir().mkpath(configPath(u"c.ini"_s)));
    QCOMPARE(Smartphone3DModelConfig().smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"plain.obj"_s));
}

// A pipe that nobody writes to can be neither opened nor read without waiting; /dev/zero never ends.
void TestSmartphone3DModelConfig::pipeIsNotWaitedFor()
{
    QVERIFY(writeConfig(u"z.ini"_s, configOf("default", "plain")));
    QCOMPARE(::mkfifo(QFile::encodeName(configPath(u"pipe"_s)).constData(), 0600), 0);
    QVERIFY(QFile::link(configPath(u"pipe"_s), configPath(u"a.ini"_s)));
    QVERIFY(QFile::link(u"/dev/zero"_s, configPath(u"b.ini"_s)));
    QCOMPARE(::mkfifo(QFile::encodeName(configPath(u"c.ini"_s)).constData(), 0600), 0);
    QCOMPARE(Smartphone3DModelConfig().smartphone3DModelMeshUri(), uriIn(u"meshes"_s, u"plain.obj"_s));
}

// Runs a test above in a copy of this program.
void TestSmartphone3DModelConfig::folderOfTheProgramMayHaveAnyName()
{
    const QTemporaryDir folder(QDir::tempPath() + u"/%1 %2 #50%25 ?x=1 XXXXXX"_s);
    QVERIFY(folder.isValid());
    const QString copy = folder.filePath(u"tests"_s);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copy));

    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(copy, {u"selectsTheDefaultAtFirst"_s, u"withoutAFolderTheFoldersAreShown"_s});
    QVERIFY(process.waitForFinished(60'000));
    const QByteArray output = process.readAllStandardOutput();
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, output.constData());
    QVERIFY2(output.contains("4 passed"), output.constData()); // with the beginning and the end
}

QTEST_GUILESS_MAIN(TestSmartphone3DModelConfig)

#include "tst_smartphone3dmodelconfig.moc"
