// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "utils/jpegreceiver.h"
#include "utils/messageboxanswerer.h"
#include "view/viewhost.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QEvent>
#include <QImage>
#include <QObject>
#include <QTemporaryDir>
#include <QUrl>
#include <QVariant>

#include <memory>

class QQmlEngine;
class QQuickItem;

/// The message boxes of the view's native dialogs, for tests in QML.
class MessageBoxes : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Click this button (a MessageDialog.StandardButton) of the next box; with "tick", tick its check box before.
    Q_INVOKABLE void click(int button, bool tick = false);
    /// The boxes seen since the last call, as objects with "text", "buttons" and "checkBoxVisible".
    Q_INVOKABLE QVariantList takeSeen();
    Q_INVOKABLE int unanswered() const { return m_answerer.unanswered(); }

private:
    TestUtils::MessageBoxAnswerer m_answerer;
};

/// What assistive technology is told of an item.
class ScreenReader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// An object with "name", "description", "role" (as QAccessible::Role is called), "value" (of a slider the number,
    /// of a field the text), "checked" and "disabled". Empty for what is not told of.
    Q_INVOKABLE QVariantMap describe(QObject *item) const;
};

/// What a user sees of an item.
class Eyes : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The item as it is on the screen now.
    Q_INVOKABLE QImage picture(QQuickItem *item) const;
    /// The item of this name in any window that shows, such as a dialog's. Null when there is none.
    Q_INVOKABLE QQuickItem *find(const QString &name) const;
    /// How many pixels of two pictures of the same size one can tell from each other: their contrast is at least 1.2
    /// to 1.
    Q_INVOKABLE int changedPixels(const QImage &one, const QImage &other) const;
    /// The contrast of a text's color to what is behind it on the screen, where it is lowest; 0 when there is no text
    /// to be seen in its color.
    Q_INVOKABLE double textContrast(QQuickItem *text) const;
};

/// Single events of the keyboard, with the modifiers that the test wants. Quick Test's own presses bring along presses
/// of the modifiers' keys.
class Keyboard : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE void press(int key, int modifiers = 0) { send(QEvent::KeyPress, key, modifiers); }
    Q_INVOKABLE void release(int key, int modifiers = 0) { send(QEvent::KeyRelease, key, modifiers); }
    /// What a key that is held brings now and then.
    Q_INVOKABLE void repeat(int key, int modifiers = 0);

private:
    void send(QEvent::Type type, int key, int modifiers, bool repeated = false);
};

/// Files in a folder that goes with the test.
class Files : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double hugeSize READ hugeSize CONSTANT)

public:
    using QObject::QObject;

    /// Bytes of a file that nobody has yet, but may have. A sanitizer's checks would take minutes over all of it.
#ifdef __SANITIZE_ADDRESS__
    double hugeSize() const { return 20e6; }
#else
    double hugeSize() const { return 200e6; }
#endif

    /// A file that holds the text so many times; its address.
    Q_INVOKABLE QUrl write(const QString &name, const QString &text, int times = 1);
    Q_INVOKABLE QUrl writeBytes(const QString &name, const QList<int> &bytes);
    Q_INVOKABLE QUrl makeFolder(const QString &name);
    /// A video of one colour, 5 seconds long. The encoder is one of GStreamer's, such as "vp8enc".
    Q_INVOKABLE QUrl writeVideo(const QString &name, const QColor &color, const QByteArray &encoder = "vp8enc");
    /// Of H.264, which this process can decode from then on.
    Q_INVOKABLE QUrl writeH264(const QString &name);
    /// A link that leads nowhere but to itself: nobody can read it.
    Q_INVOKABLE QUrl makeLinkToItself(const QString &name);
    /// The address under which there would be such a file.
    Q_INVOKABLE QUrl url(const QString &name) const;
    Q_INVOKABLE QString path(const QString &name) const;

private:
    QTemporaryDir m_folder;
};

/// The streams into the emulator's camera.
class Streams : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// From before the first pipeline is made on, what is done with those of the manager is written down.
    static void watch();
    /// What has been done since the last call, in order: "play camera", "stop camera", "play video" and "stop video".
    Q_INVOKABLE QStringList take();

    /// Pictures are received until the test is over.
    Q_INVOKABLE void receive();
    Q_INVOKABLE void stopReceiving() { m_receiver.reset(); }
    /// Forgets the pictures that have come.
    Q_INVOKABLE void clear() { m_receiver->clear(); }
    /// Whether a picture has come, and it shows about this colour.
    Q_INVOKABLE bool shows(const QColor &color) const;
    Q_INVOKABLE QSize size() const { return m_receiver->size(); }

private:
    std::unique_ptr<TestUtils::JpegReceiver> m_receiver;
};

/// How long the window does not answer.
class Watchdog : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE void start();
    /// The longest time between two looks at the events since the start, in milliseconds.
    Q_INVOKABLE qint64 longestSilence();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_timer;
    QElapsedTimer m_sinceTick;
    qint64 m_longest = 0;
};

/// Gives every test document the view's surroundings and notes what the engine warns of.
class TestSetup : public QObject
{
    Q_OBJECT

public:
    TestSetup();

    int warnings() const { return m_warnings; }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine);

private:
    TestView::ViewHost m_host;
    MessageBoxes m_messageBoxes;
    ScreenReader m_screenReader;
    Eyes m_eyes;
    Keyboard m_keyboard;
    Files m_files;
    Streams m_streams;
    Watchdog m_watchdog;
    int m_warnings = 0;
};
