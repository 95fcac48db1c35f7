// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QFile>
#include <QImage>
#include <QList>
#include <QMap>
#include <QPair>
#include <QPointF>
#include <QSettings>
#include <QTest>
#include <QVector3D>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QDir dataDir(QStringLiteral(EMULATIONMANAGEMENT_DATA_DIR));

QStringList iniFiles(const QString &folder)
{
    QStringList paths;
    for (const QFileInfo &file : QDir(dataDir.filePath(folder)).entryInfoList({u"*.ini"_s}, QDir::Files))
        paths.append(file.filePath());
    return paths;
}

QString valueIn(const QString &path, const QString &key)
{
    return QSettings(path, QSettings::IniFormat).value(key).toString();
}

// Counts from 0.
struct Corner
{
    qsizetype vertex = -1;
    qsizetype texel = -1;
};
using Face = QList<Corner>;

struct Mesh
{
    QList<QVector3D> vertices;
    QList<QPointF> texels;
    QMap<QByteArray, QList<Face>> groups;
    QByteArrayList notUnderstood;
};

Mesh readMesh(const QString &path)
{
    Mesh mesh;
    QByteArray group;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return mesh;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        const QByteArrayList words = line.split(' ');
        if (words[0] == "v" && words.size() == 4) {
            mesh.vertices.append(QVector3D(words[1].toFloat(), words[2].toFloat(), words[3].toFloat()));
        } else if (words[0] == "vt" && words.size() == 3) {
            mesh.texels.append(QPointF(words[1].toDouble(), words[2].toDouble()));
        } else if (words[0] == "g" && words.size() == 2) {
            group = words[1];
        } else if (words[0] == "f" && words.size() > 3) {
            Face face;
            for (const QByteArray &word : words.sliced(1)) {
                const QByteArrayList numbers = word.split('/');
                face.append({numbers[0].toLongLong() - 1, numbers.value(1).toLongLong() - 1});
            }
            mesh.groups[group].append(face);
        } else if (words[0] != "o" && words[0] != "s" && words[0] != "#") {
            mesh.notUnderstood.append(line);
        }
    }
    return mesh;
}

// Twice its area long; a face's corners lie counter-clockwise, as seen from where it points to.
QVector3D normalOf(const Mesh &mesh, const Face &face)
{
    QVector3D normal;
    for (qsizetype i = 0; i < face.size(); ++i) {
        normal +=
            QVector3D::crossProduct(mesh.vertices[face[i].vertex], mesh.vertices[face[(i + 1) % face.size()].vertex]);
    }
    return normal;
}

} // namespace

/// The meshes and textures that show the device models.
class TestPhoneModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyDeviceModelHasOne();
    void canBeShown_data();
    void canBeShown();
    void nothingIsLeftOver();
};

void TestPhoneModels::everyDeviceModelHasOne()
{
    QStringList expected{u"default"_s};
    for (const QString &path : iniFiles({}))
        expected.append(valueIn(path, u"device-name"_s));
    QCOMPARE_GT(expected.size(), 1);
    expected.sort();

    QStringList names;
    for (const QString &path : iniFiles(u"configs"_s))
        names.append(valueIn(path, u"device-name"_s));
    names.sort();
    QCOMPARE(names, expected);
}

void TestPhoneModels::canBeShown_data()
{
    QTest::addColumn<QString>("mesh");
    QTest::addColumn<QString>("texture");
    for (const QString &path : iniFiles(u"configs"_s)) {
        QTest::newRow(qPrintable(valueIn(path, u"device-name"_s)))
            << valueIn(path, u"mesh"_s) << valueIn(path, u"texture"_s);
    }
}

void TestPhoneModels::canBeShown()
{
    QFETCH(const QString, mesh);
    QFETCH(const QString, texture);

    const Mesh model = readMesh(dataDir.filePath(u"meshes/"_s + mesh));
    QCOMPARE(model.notUnderstood, QByteArrayList());
    QCOMPARE(model.groups.keys(), QByteArrayList({"body", "screen"}));

    // Every edge lies between two faces that point to the same side: nothing is open, nothing inside out.
    QMap<QPair<qsizetype, qsizetype>, int> edges;
    float volume = 0; // six times
    for (const QList<Face> &faces : model.groups) {
        for (const Face &face : faces) {
            for (const Corner &corner : face) {
                QVERIFY(corner.vertex >= 0 && corner.vertex < model.vertices.size());
                QVERIFY(corner.texel >= 0 && corner.texel < model.texels.size());
            }
            for (qsizetype i = 0; i < face.size(); ++i)
                ++edges[{face[i].vertex, face[(i + 1) % face.size()].vertex}];
            volume += QVector3D::dotProduct(normalOf(model, face), model.vertices[face[0].vertex]);
        }
    }
    for (auto it = edges.cbegin(); it != edges.cend(); ++it) {
        QCOMPARE(it.value(), 1);
        QCOMPARE(edges.value({it.key().second, it.key().first}), 1);
    }
    QCOMPARE_GT(volume, 0);

    // The screen is one face towards the viewer, on the left half of the texture.
    const QList<Face> screen = model.groups.value("screen");
    QCOMPARE(screen.size(), 1);
    const QVector3D normal = normalOf(model, screen[0]).normalized();
    QCOMPARE_LT((normal - QVector3D(0, 0, 1)).length(), 1e-5f);
    for (const Corner &corner : screen[0])
        QVERIFY(model.texels[corner.texel].x() <= 0.5);
    for (const QPointF &texel : model.texels)
        QVERIFY(texel.x() >= 0 && texel.x() <= 1 && texel.y() >= 0 && texel.y() <= 1);

    // It stands upright around the origin.
    constexpr float largest = std::numeric_limits<float>::max();
    QVector3D low(largest, largest, largest);
    QVector3D high = -low;
    for (const QVector3D &vertex : model.vertices) {
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], vertex[axis]);
            high[axis] = std::max(high[axis], vertex[axis]);
        }
    }
    QCOMPARE(low, -high);
    QVERIFY(high.y() > high.x() && high.x() > high.z());

    const QImage image(dataDir.filePath(u"textures/"_s + texture));
    QVERIFY(!image.isNull());
    // Pixels are squares on the screen, too.
    QCOMPARE_LT(qAbs(double(image.width()) / image.height() - 2 * double(high.x() / high.y())), 0.02);
    const auto hasOneColour = [&image](const QRect &area) {
        const QImage part = image.copy(area).convertToFormat(QImage::Format_RGB32);
        const QImage plain = [&] {
            QImage filled(part.size(), QImage::Format_RGB32);
            filled.fill(part.pixelColor(0, 0));
            return filled;
        }();
        return part == plain;
    };
    QVERIFY(!hasOneColour({0, 0, image.width() / 2, image.height()}));
    // The body's edge takes its colour from the middle of the lower rim of the back.
    QVERIFY(hasOneColour({image.width() * 5 / 8, image.height() - 4, image.width() / 4, 4}));
}

void TestPhoneModels::nothingIsLeftOver()
{
    for (const auto &[folder, key] : {std::pair(u"meshes"_s, u"mesh"_s), std::pair(u"textures"_s, u"texture"_s)}) {
        QStringList named;
        for (const QString &path : iniFiles(u"configs"_s))
            named.append(valueIn(path, key));
        named.sort();
        QCOMPARE(QDir(dataDir.filePath(folder)).entryList(QDir::Files, QDir::Name), named);
    }
}

QTEST_GUILESS_MAIN(TestPhoneModels)

#include "tst_phonemodels.moc"
