// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "soak/robot.h"

#include "ide/ide.h"
#include "utils/quickitems.h"

#include <coreplugin/icore.h>
#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QJsonDocument>
#include <QKeySequence>
#include <QMessageBox>
#include <QMetaObject>
#include <QPixmapCache>
#include <QPushButton>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSocketNotifier>
#include <QTest>
#include <QUrl>

#include <array>
#include <cstdio>

#include <malloc.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using TestUtils::descendant;

namespace {

void print(const QByteArray &line)
{
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

QMessageBox *messageBox()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

QQuickItem *item(const QString &path)
{
    QQuickItem *found = IdeTests::view()->rootObject();
    const QStringList names = path.split(u'/');
    for (const QString &name : names) {
        if (found)
            found = descendant(name, found);
    }
    return found;
}

// Why a user could not use it; empty if they can.
QString hindrance(const QQuickItem *item)
{
    if (!item)
        return u"there is no such item"_s;
    if (!item->isVisible() || !IdeTests::view()->isVisible())
        return u"it is not visible"_s;
    if (!item->isEnabled())
        return u"it is disabled"_s;
    const QPointF centre = item->mapToScene(item->boundingRect().center());
    if (!QRectF({}, IdeTests::view()->size()).contains(centre))
        return u"it is outside the window"_s;
    return {};
}

QString click(const QString &name)
{
    const QQuickItem *target = item(name);
    QString error = hindrance(target);
    if (error.isEmpty()) {
        QTest::mouseClick(
            IdeTests::view(), Qt::LeftButton, {}, target->mapToScene(target->boundingRect().center()).toPoint());
    }
    return error;
}

QString openFile(const QString &name, const QUrl &url)
{
    QQuickItem *page = item(name);
    return page && QMetaObject::invokeMethod(page, "openFile", url) ? QString() : u"it opens no files"_s;
}

// The caches are bounded: a message box leaves a pixmap of its icon and one of its button in Qt's.
QJsonObject memory()
{
    IdeTests::view()->engine()->collectGarbage();
    QPixmapCache::clear();
    const struct mallinfo2 info = mallinfo2();
    return {{u"inUse"_s, qint64(info.uordblks + info.hblkhd)}};
}

Tarn::Emulator *emulator()
{
    return Tarn::Sdk::emulators().value(0);
}

} // namespace

Robot::Robot(QObject *parent)
    : QObject(parent)
{
    connect(&m_churn, &QTimer::timeout, this, &Robot::churn);
}

Robot::~Robot() = default;

void Robot::start()
{
    m_input = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(m_input, &QSocketNotifier::activated, this, &Robot::readCommands);
    print("ready");
}

void Robot::readCommands()
{
    std::array<char, 4096> buffer{};
    const ssize_t size = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (size <= 0) {
        m_input->setEnabled(false);
        Core::ICore::exit();
        return;
    }
    m_received.append(buffer.data(), qsizetype(size));
    for (qsizetype end = m_received.indexOf('\n'); end >= 0; end = m_received.indexOf('\n')) {
        const QByteArray line = m_received.first(end);
        m_received.remove(0, end + 1);
        const QJsonObject answer = perform(QJsonDocument::fromJson(line).object());
        print("answer " + QJsonDocument(answer).toJson(QJsonDocument::Compact));
    }
}

QJsonObject Robot::perform(const QJsonObject &command)
{
    const QString what = command.value("do"_L1).toString();
    const QString name = command.value("item"_L1).toString();
    QString error;
    if (what == "state"_L1) {
        return state();
    } else if (what == "memory"_L1) {
        return memory();
    } else if (what == "get"_L1) {
        const QQuickItem *target = item(name);
        if (target)
            return {{u"value"_s, target->property(command.value("property"_L1).toString().toUtf8()).toJsonValue()}};
        error = u"there is no such item"_s;
    } else if (what == "open"_L1) {
        // Later, as it may show a message box.
        QTimer::singleShot(0, this, [] { IdeTests::showViewAction()->trigger(); });
    } else if (what == "close"_L1) {
        IdeTests::view()->close();
    } else if (what == "acknowledge"_L1) {
        error = acknowledge();
    } else if (what == "powerOff"_L1) {
        error = powerOff();
    } else if (what == "click"_L1) {
        error = click(name);
    } else if (what == "drag"_L1) {
        error = drag(name, command.value("to"_L1).toDouble());
    } else if (what == "key"_L1) {
        error = pressKey(name, command.value("key"_L1).toString());
    } else if (what == "openFile"_L1) {
        error = openFile(name, QUrl(command.value("url"_L1).toString()));
    } else if (what == "churn"_L1) {
        m_step = command.value("from"_L1).toInt();
        m_churn.start(0);
    } else if (what == "quit"_L1) {
        QTimer::singleShot(0, this, &Core::ICore::exit);
    } else {
        error = u"nobody knows how"_s;
    }
    return error.isEmpty() ? QJsonObject() : QJsonObject{{u"error"_s, what + u' ' + name + u": "_s + error}};
}

QJsonObject Robot::state() const
{
    const QMessageBox *box = messageBox();
    const Tarn::Emulator *first = emulator();
    return {
        {u"visible"_s, IdeTests::view()->isVisible()},
        {u"box"_s, box ? box->text() + u'\n' + box->informativeText() : QString()},
        {u"emulator"_s, first != nullptr},
        {u"machine"_s, first ? int(first->virtualMachine()->state()) : -1},
        {u"off"_s, first && first->virtualMachine()->isOff()},
    };
}

QString Robot::acknowledge()
{
    QMessageBox *box = messageBox();
    if (!box || box->buttons().isEmpty())
        return u"there is no message box"_s;
    QAbstractButton *button = box->defaultButton();
    (button ? button : box->buttons().constFirst())->click();
    return {};
}

QString Robot::powerOff()
{
    if (!emulator())
        return u"there is no emulator"_s;
    emulator()->virtualMachine()->kill();
    return {};
}

QString Robot::drag(const QString &name, double part)
{
    QQuickItem *slider = item(name);
    QString error = hindrance(slider);
    if (!error.isEmpty())
        return error;
    const auto at = [slider](double position) {
        constexpr double handle = 20;
        const QRectF area = slider->boundingRect().adjusted(handle / 2, 0, -handle / 2, 0);
        return slider->mapToScene({area.left() + position * area.width(), area.center().y()}).toPoint();
    };
    QQuickView *view = IdeTests::view();
    const double now = slider->property("visualPosition").toDouble();
    constexpr int steps = 8;
    QTest::mousePress(view, Qt::LeftButton, {}, at(now));
    for (int i = 1; i <= steps; ++i)
        QTest::mouseMove(view, at(now + (part - now) * i / steps));
    QTest::mouseRelease(view, Qt::LeftButton, {}, at(part));
    return {};
}

QString Robot::pressKey(const QString &name, const QString &keyName)
{
    QQuickItem *target = item(name);
    QString error = hindrance(target);
    const QKeySequence sequence(keyName);
    if (error.isEmpty() && sequence.isEmpty())
        error = u"there is no such key"_s;
    if (error.isEmpty()) {
        target->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(IdeTests::view(), sequence[0].key());
    }
    return error;
}

void Robot::churn()
{
    print("step " + QByteArray::number(++m_step));
    QObject *sensors = IdeTests::contextProperty(u"sensorsEmulationManager"_s).value<QObject *>();
    QObject *gps = IdeTests::contextProperty(u"gpsEmulationManager"_s).value<QObject *>();
    const int n = m_step;
    const double d = n;
    QMetaObject::invokeMethod(sensors, "setAccelerometerValues", n, n, n);
    QMetaObject::invokeMethod(sensors, "setGyroscopeValues", d, d, d);
    QMetaObject::invokeMethod(sensors, "setMagneticFieldValues", d, d, d);
    QMetaObject::invokeMethod(sensors, "setMagnetometerValues", d, d, d);
    QMetaObject::invokeMethod(sensors, "setAlsLuxValue", n);
    QMetaObject::invokeMethod(sensors, "setProximitySensorReflectanceValue", n);
    QMetaObject::invokeMethod(gps, "setPosition", d / 1000, d / 1000, d);
}
