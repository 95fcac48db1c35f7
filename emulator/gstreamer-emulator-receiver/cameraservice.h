// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "common/emulationservice.h"
#include "streamreceiver.h"

#include <QTimer>

namespace Emulator {

/*!
    The emulated camera, as the system bus sees it: what has arrived. Changes are announced twice a second at most.
*/
class CameraService : public EmulationService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "ru.kelo.CameraEmulation")

    Q_PROPERTY(bool streaming READ isStreaming)
    Q_PROPERTY(qulonglong framesReceived READ framesReceived)
    Q_PROPERTY(double frameRate READ frameRate)
    Q_PROPERTY(int width READ width)
    Q_PROPERTY(int height READ height)
    Q_PROPERTY(int meanRed READ meanRed)
    Q_PROPERTY(int meanGreen READ meanGreen)
    Q_PROPERTY(int meanBlue READ meanBlue)

public:
    static constexpr auto serviceName = "ru.kelo.CameraEmulation";
    static constexpr auto objectPath = "/ru/kelo/CameraEmulation";

    CameraService(const QDBusConnection &connection, const StreamReceiver &receiver, QObject *parent = nullptr);

    /*! Whether a frame came in the last two seconds. */
    bool isStreaming() const { return m_silence.isActive(); }
    qulonglong framesReceived() const { return m_receiver.frameCount(); }
    /*! Frames a second; 0 when none come. */
    double frameRate() const { return isStreaming() ? m_receiver.frameRate() : 0; }
    int width() const { return m_receiver.lastFrame().width; }
    int height() const { return m_receiver.lastFrame().height; }
    int meanRed() const { return m_receiver.lastFrame().red; }
    int meanGreen() const { return m_receiver.lastFrame().green; }
    int meanBlue() const { return m_receiver.lastFrame().blue; }

public Q_SLOTS:
    /*! The picture that came last, as JPEG; empty before the first. Too large to be announced with each change. */
    Q_SCRIPTABLE QByteArray lastPicture()
    {
        done();
        return m_receiver.lastPicture();
    }

private:
    void onFramesReceived();

    const StreamReceiver &m_receiver;
    QTimer m_silence;
    QTimer m_announcement;
};

} // namespace Emulator
