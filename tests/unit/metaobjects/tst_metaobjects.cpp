// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraemulationmanager.h"
#include "camera/cameramonitor.h"
#include "gps/gpsemulationmanager.h"
#include "gps/nmealogloader.h"
#include "gps/nmeaparsing.h"
#include "gps/positionmodel.h"
#include "gps/tracktablemodel.h"
#include "model3d/smartphone3dmodelconfig.h"
#include "plugin/emulationmanagementpackageschecker.h"
#include "plugin/warningdialog.h"
#include "remote/emulationmanager.h"
#include "remote/remotedbusinvokerservice.h"
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
#include "sensors/sensormodel.h"
#include "sensors/sensorsemulationmanager.h"
#include "sensors/settingsmanager.h"
#include "sensors/tapmodel.h"
#include "sensors/textfielddoublevalidator.h"
#include "utils/metaobjects.h"

#include <QDirIterator>
#include <QFile>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTest>

using namespace EmulationManagement::Internal;
using namespace Qt::StringLiterals;

/// The face that each class shows to documents: they find its members by name, and connect to signals by order.
class TestMetaObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void members_data();
    void members();
    void noClassIsForgotten();

private:
    QMap<QString, QStringList> m_expected;
};

namespace {

const QMetaObject *const metaObjects[] = {
    &AccelerometerModel::staticMetaObject,
    &AlsModel::staticMetaObject,
    &CameraEmulationManager::staticMetaObject,
    &CameraMonitor::staticMetaObject,
    &CompassModel::staticMetaObject,
    &DoubleXYZModel::staticMetaObject,
    &EmulationManagementPackagesChecker::staticMetaObject,
    &EmulationManager::staticMetaObject,
    &GPSEmulationManager::staticMetaObject,
    &GyroscopeModel::staticMetaObject,
    &IntXYZModel::staticMetaObject,
    &MagneticFieldModel::staticMetaObject,
    &MagnetometerModel::staticMetaObject,
    &NmeaLogLoader::staticMetaObject,
    &NmeaParsing::staticMetaObject,
    &OrientationModel::staticMetaObject,
    &PositionModel::staticMetaObject,
    &ProximityModel::staticMetaObject,
    &RemoteDBusInvokerService::staticMetaObject,
    &SensorModel::staticMetaObject,
    &SensorsEmulationManager::staticMetaObject,
    &SettingsManager::staticMetaObject,
    &Smartphone3DModelConfig::staticMetaObject,
    &TapModel::staticMetaObject,
    &TextFieldDoubleValidator::staticMetaObject,
    &TrackTableModel::staticMetaObject,
    &WarningDialog::staticMetaObject,
};

QString text(const QMetaProperty &property)
{
    QString text = u"property %1 %2"_s.arg(QLatin1StringView(property.typeName()), QLatin1StringView(property.name()));
    if (property.isWritable())
        text += u" writable"_s;
    if (property.isConstant())
        text += u" constant"_s;
    if (property.hasNotifySignal())
        text += u" notifies %1"_s.arg(QLatin1StringView(property.notifySignal().name()));
    return text;
}

QString text(const QMetaEnum &enumeration)
{
    QStringList keys;
    for (int i = 0; i < enumeration.keyCount(); ++i)
        keys.append(u"%1=%2"_s.arg(QLatin1StringView(enumeration.key(i))).arg(enumeration.value(i)));
    const QString kind = enumeration.isScoped() ? u"enum class"_s : u"enum"_s;
    return u"%1 %2 %3"_s.arg(kind, QLatin1StringView(enumeration.name()), keys.join(u' '));
}

QString nameOf(const QMetaObject &metaObject)
{
    return QString::fromLatin1(metaObject.className());
}

QStringList membersOf(const QMetaObject &metaObject)
{
    QStringList members{u"inherits "_s + nameOf(*metaObject.superClass())};
    for (int i = metaObject.enumeratorOffset(); i < metaObject.enumeratorCount(); ++i)
        members.append(text(metaObject.enumerator(i)));
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i)
        members.append(text(metaObject.property(i)));
    return members + TestUtils::ownMethods(metaObject);
}

} // namespace

void TestMetaObjects::initTestCase()
{
    QFile file(QStringLiteral(METAOBJECTS));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString name;
    for (const QByteArray &bytes : file.readAll().split('\n')) {
        const QString line = QString::fromUtf8(bytes);
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[')) {
            name = line.sliced(1).chopped(1);
            m_expected.insert(name, {});
        } else {
            m_expected[name].append(line);
        }
    }
}

void TestMetaObjects::members_data()
{
    QTest::addColumn<const QMetaObject *>("metaObject");
    for (const QMetaObject *metaObject : metaObjects)
        QTest::newRow(qPrintable(nameOf(*metaObject))) << metaObject;
}

void TestMetaObjects::members()
{
    QFETCH(const QMetaObject *, metaObject);
    QCOMPARE(membersOf(*metaObject).join(u'\n'), m_expected.value(nameOf(*metaObject)).join(u'\n'));
}

// The plugin itself, which has a test inside the IDE, is no library's.
void TestMetaObjects::noClassIsForgotten()
{
    QStringList listed = m_expected.keys();
    QStringList compared;
    for (const QMetaObject *metaObject : metaObjects)
        compared.append(nameOf(*metaObject));
    compared.sort();
    QCOMPARE(compared, listed);

    QStringList declared{};
    static const QRegularExpression declaration(u"class (\\w+)[^;{]*\\{\\s*Q_OBJECT"_s);
    QDirIterator headers(QStringLiteral(SOURCES), {u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (headers.hasNext()) {
        QFile header(headers.next());
        QVERIFY(header.open(QIODevice::ReadOnly));
        for (const QRegularExpressionMatch &match : declaration.globalMatch(QString::fromUtf8(header.readAll())))
            declared.append(match.captured(1));
    }
    declared.removeOne(u"EmulationManagementPlugin"_s);
    declared.sort();
    for (QString &name : listed)
        name = name.section(u"::"_s, -1);
    listed.sort();
    QCOMPARE(listed, declared);
}

QTEST_APPLESS_MAIN(TestMetaObjects)

#include "tst_metaobjects.moc"
