// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "testsetup.h"

#include "utils/pipelinerecorder.h"
#include "utils/quickitems.h"
#include "utils/testmedia.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMetaEnum>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// What one can tell from each other.
constexpr double visibleContrast = 1.2;

double luminance(QRgb pixel)
{
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) + 0.0722 * linear(qBlue(pixel));
}

double contrast(QRgb one, QRgb other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

void MessageBoxes::click(int button, bool tick)
{
    m_answerer.answer([button = QMessageBox::StandardButton(button), tick](QMessageBox *box) {
        if (tick)
            QTest::mouseClick(box->checkBox(), Qt::LeftButton, {}, QPoint(5, box->checkBox()->height() / 2));
        if (QAbstractButton *widget = box->button(button))
            QTest::mouseClick(widget, Qt::LeftButton);
        else
            box->done(-1); // what was seen tells the test
    });
}

QVariantList MessageBoxes::takeSeen()
{
    QVariantList result;
    for (const TestUtils::SeenMessageBox &box : m_answerer.seen()) {
        result.append(QVariantMap{
            {u"text"_s, box.text},
            {u"buttons"_s, int(box.buttons)},
            {u"checkBoxVisible"_s, box.checkBoxVisible},
        });
    }
    m_answerer.forget();
    return result;
}

QVariantMap ScreenReader::describe(QObject *item) const
{
    QAccessible::setActive(true); // controls tell of themselves once somebody listens
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    if (!interface)
        return {};
    QVariant value;
    if (QAccessibleValueInterface *number = interface->valueInterface())
        value = number->currentValue();
    else if (QAccessibleTextInterface *text = interface->textInterface())
        value = text->text(0, text->characterCount());
    QString name = interface->text(QAccessible::Name);
    if (name.isEmpty()) // where the platform has no bridge to the outside, buttons do not hand over their texts
        name = item->property("text").toString();
    return {
        {u"name"_s, name},
        {u"description"_s, interface->text(QAccessible::Description)},
        {u"role"_s, QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(interface->role()))},
        {u"value"_s, value},
        {u"checked"_s, bool(interface->state().checked)},
        {u"disabled"_s, bool(interface->state().disabled)},
    };
}

QQuickItem *Eyes::find(const QString &name) const
{
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow *window : windows) {
        const auto *quickWindow = qobject_cast<QQuickWindow *>(window);
        if (!quickWindow || !quickWindow->isVisible())
            continue;
        if (QQuickItem *found = TestUtils::descendant(name, quickWindow->contentItem()))
            return found;
    }
    return nullptr;
}

QImage Eyes::picture(QQuickItem *item) const
{
    const QImage window = item->window()->grabWindow();
    const QRectF area = item->mapRectToScene(item->boundingRect());
    const qreal ratio = window.devicePixelRatio();
    return window.copy(QRectF(area.topLeft() * ratio, area.size() * ratio).toRect());
}

int Eyes::changedPixels(const QImage &one, const QImage &other) const
{
    int changed = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (contrast(one.pixel(x, y), other.pixel(x, y)) >= visibleContrast)
                ++changed;
        }
    }
    return changed;
}

double Eyes::textContrast(QQuickItem *text) const
{
    const QImage with = picture(text);
    const qreal opacity = text->opacity();
    text->setOpacity(0);
    const QImage without = picture(text);
    text->setOpacity(opacity);

    const QRgb color = text->property("color").value<QColor>().rgb();
    bool visible = false; // in its color, not only by an edge
    double least = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            const QRgb behind = without.pixel(x, y);
            if (contrast(with.pixel(x, y), behind) < visibleContrast)
                continue;
            visible = visible || contrast(with.pixel(x, y), color) < visibleContrast;
            least = least == 0 ? contrast(color, behind) : std::min(least, contrast(color, behind));
        }
    }
    return visible ? least : 0;
}

void Keyboard::repeat(int key, int modifiers)
{
    send(QEvent::KeyRelease, key, modifiers, true);
    send(QEvent::KeyPress, key, modifiers, true);
}

void Keyboard::send(QEvent::Type type, int key, int modifiers, bool repeated)
{
    QWindow *window = QGuiApplication::focusWindow();
    if (!window)
        qFatal("No window has the keys.");
    QKeyEvent event(type, key, Qt::KeyboardModifiers(modifiers), {}, repeated);
    QCoreApplication::sendEvent(window, &event);
}

QUrl Files::write(const QString &name, const QString &text, int times)
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("Cannot write %s", qPrintable(file.fileName()));
    const QByteArray bytes = text.toUtf8();
    for (int i = 0; i < times; ++i)
        file.write(bytes);
    return url(name);
}

QUrl Files::writeBytes(const QString &name, const QList<int> &bytes)
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("Cannot write %s", qPrintable(file.fileName()));
    for (const int byte : bytes)
        file.putChar(char(byte));
    return url(name);
}

QUrl Files::makeFolder(const QString &name)
{
    QDir(m_folder.path()).mkpath(name);
    return url(name);
}

QUrl Files::writeVideo(const QString &name, const QColor &color, const QByteArray &encoder)
{
    const TestUtils::TestVideo video{
        .frames = 150, // longer than the tests look at it
        .color = "0x" + QByteArray::number(color.rgba(), 16),
        .encoder = encoder.startsWith("vp") ? encoder + " deadline=1" : encoder,
        .container = name.endsWith(".mkv"_L1) ? "matroskamux" : "webmmux",
    };
    const QString error = TestUtils::writeVideo(m_folder.filePath(name), video);
    if (!error.isEmpty())
        qFatal("Cannot write a video: %s", qPrintable(error));
    return url(name);
}

QUrl Files::writeH264(const QString &name)
{
    TestUtils::installH264Decoder();
    const QString error = TestUtils::writeH264(m_folder.filePath(name));
    if (!error.isEmpty())
        qFatal("Cannot write a video: %s", qPrintable(error));
    return url(name);
}

QUrl Files::makeLinkToItself(const QString &name)
{
    QFile::link(name, m_folder.filePath(name));
    return url(name);
}

QUrl Files::url(const QString &name) const
{
    return QUrl::fromLocalFile(m_folder.filePath(name));
}

QString Files::path(const QString &name) const
{
    return m_folder.filePath(name);
}

void Streams::watch()
{
    TestUtils::PipelineRecorder::install();
}

QStringList Streams::take()
{
    static const QRegularExpression ours(u"^(play|stop) (camera|video)-stream-pipeline$"_s);
    QStringList states;
    for (const QString &entry : TestUtils::PipelineRecorder::takeEntries()) {
        if (const QRegularExpressionMatch match = ours.match(entry); match.hasMatch())
            states.append(match.captured(1) + u' ' + match.captured(2));
    }
    return states;
}

void Streams::receive()
{
    m_receiver = std::make_unique<TestUtils::JpegReceiver>();
}

bool Streams::shows(const QColor &color) const
{
    return m_receiver->frameCount() > 0 && TestUtils::alike(m_receiver->color(), color);
}

void Watchdog::start()
{
    m_longest = 0;
    m_sinceTick.start();
    m_timer.start(std::chrono::milliseconds(5), this);
}

qint64 Watchdog::longestSilence()
{
    m_timer.stop();
    return std::max(m_longest, m_sinceTick.elapsed());
}

void Watchdog::timerEvent([[maybe_unused]] QTimerEvent *event)
{
    m_longest = std::max(m_longest, m_sinceTick.restart());
}

TestSetup::TestSetup()
{
    Streams::watch();
}

void TestSetup::qmlEngineAvailable(QQmlEngine *engine)
{
    connect(engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError> &warnings) {
        m_warnings += int(warnings.size());
    });
    m_host.setTheme(u"flat-light"_s);
    m_host.setUp(engine->rootContext());
    engine->rootContext()->setContextProperty(u"host"_s, &m_host);
    engine->rootContext()->setContextProperty(u"invoker"_s, m_host.invoker());
    engine->rootContext()->setContextProperty(u"messageBoxes"_s, &m_messageBoxes);
    engine->rootContext()->setContextProperty(u"keyboard"_s, &m_keyboard);
    engine->rootContext()->setContextProperty(u"screenReader"_s, &m_screenReader);
    engine->rootContext()->setContextProperty(u"eyes"_s, &m_eyes);
    engine->rootContext()->setContextProperty(u"files"_s, &m_files);
    engine->rootContext()->setContextProperty(u"watchdog"_s, &m_watchdog);
    engine->rootContext()->setContextProperty(u"streams"_s, &m_streams);
}
