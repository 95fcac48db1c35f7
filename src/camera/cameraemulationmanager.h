// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <memory>

using GstCaps = struct _GstCaps; // GStreamer's own names for them
using GstDevice = struct _GstDevice;

namespace EmulationManagement::Internal {
class CameraMonitor;
class CameraPipeline;
class GStreamerLoading;
class VideoFilePipeline;
} // namespace EmulationManagement::Internal

// Sends pictures of a camera of the host, or of a video file in a loop, to the emulator's camera: JPEG over RTP to a
// UDP port that the virtual machine forwards.
//
// A selection (camera, resolution, framerate) is only remembered until setCameraStreamSettings() applies it. Every
// setter announces, also what does not change. A stream that fails, or that cannot start, still counts as running.
class CameraEmulationManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool streamRunning READ streamRunning NOTIFY streamRunningChanged)
    Q_PROPERTY(QStringList framerates READ framerates NOTIFY frameratesChanged)
    Q_PROPERTY(QVariantList resolutions READ resolutions NOTIFY resolutionsChanged)
    Q_PROPERTY(QStringList cameras READ cameras NOTIFY camerasChanged)
    Q_PROPERTY(QString framerate READ framerate WRITE setFramerate NOTIFY framerateChanged)
    Q_PROPERTY(int width READ width WRITE setWidth NOTIFY widthChanged)
    Q_PROPERTY(int height READ height WRITE setHeight NOTIFY heightChanged)
    Q_PROPERTY(int resolutionIndex READ resolutionIndex WRITE setResolutionIndex NOTIFY resolutionIndexChanged)
    Q_PROPERTY(QString cameraName READ cameraName WRITE setCameraName NOTIFY cameraNameChanged)

public:
    // The virtual machine's rule that forwards udpPort, which is the same on both sides.
    static inline const QString portForwardingRule = QStringLiteral("emulationmanagementudp");
    static constexpr quint16 udpPort = 34343;
    static constexpr const char *localhost = "127.0.0.1";

    // Cameras are watched from soon after construction on: GStreamer is loaded in the background.
    explicit CameraEmulationManager(QObject *parent = nullptr);
    ~CameraEmulationManager() override;

    // A stream has been started and not stopped.
    bool streamRunning() const;

    // Display names, sorted.
    QStringList cameras() const;
    // Of the selected camera: maps with "width", "height" (pixels), "string" (such as "640x480") and "framerates", the
    // widest first.
    QVariantList resolutions() const;
    // Of the selected resolution, such as "30/1", the highest first.
    QStringList framerates() const;

    // A camera that is gone stays selected when there is no other.
    QString cameraName() const;
    // Selects the camera's first resolution with it.
    void setCameraName(const QString &name);

    int resolutionIndex() const;
    // Selects width, height and framerate with it: the framerate stays if it can, else it is the highest. For an index
    // outside the list they are not set.
    void setResolutionIndex(int index);

    // Pixels, -1 when not set.
    int width() const;
    void setWidth(int width);
    int height() const;
    void setHeight(int height);

    // Empty when not set. A text without "/" is no framerate.
    QString framerate() const;
    void setFramerate(const QString &framerate);

    // To be called before each use of the camera: looks for cameras, selects the first and prepares its stream. A
    // stream that runs becomes the stream of that camera.
    void setupCameraStreamPipeline();

    // A path, not a URL. Stops what runs; streams the file if its video codec is VP8 or VP9, again and again. Looking
    // into the file takes up to 2 seconds.
    Q_INVOKABLE void startVideoStream(const QString &filePath);
    Q_INVOKABLE void startCameraStream();
    Q_INVOKABLE void stopVideoStream();
    Q_INVOKABLE void stopCameraStream();
    // Applies the selection. If any stream runs, the camera's runs afterwards.
    Q_INVOKABLE void setCameraStreamSettings();
    // Forgets all cameras and looks for them anew, also for the kind of source that they need.
    Q_INVOKABLE void updateCamerasList();

Q_SIGNALS:
    void streamRunningChanged();
    // The file has been played to its end, and begins again.
    void videoStreamStopped();
    void frameratesChanged();
    void resolutionsChanged();
    void camerasChanged();
    void framerateChanged();
    void widthChanged();
    void heightChanged();
    void resolutionIndexChanged();
    void cameraNameChanged();
    void cameraStreamSettingsApplied();
    // The codec's name is empty when the file's video codec is not known.
    void videoFileCodecChecked(bool success, const QString &codecName);

private:
    void setUp();
    void initGstDeviceMonitor(EmulationManagement::Internal::CameraMonitor *monitor);
    void initCameraGstPluginName();
    void initVideoStreamElements();
    void initCameraStreamElements();
    void constructVideoStreamPipeline();
    void constructCameraStreamPipeline();
    void initCameraStreamAvailableSettings();
    void setUpCameraSource(const QString &name);
    void setUpCameraPipelineElementsProperties();

    void onCameraAdded(GstDevice *device);
    void onCameraRemoved(GstDevice *device);
    void addCameraSettings(GstDevice *device);
    void addCameraSource(const QString &name);
    void removeCameraSettings(const QString &name);
    void selectFirstCamera();
    QVariantMap currentCameraSettings() const;

    bool checkVideoFileForCodec(const QString &filePath);
    void playVideo();
    void restartVideoStream();
    void onEndOfVideoFile();
    void setStreamRunning(bool running);

    std::unique_ptr<EmulationManagement::Internal::VideoFilePipeline> m_videoPipeline;
    std::unique_ptr<EmulationManagement::Internal::CameraPipeline> m_cameraPipeline;
    EmulationManagement::Internal::CameraMonitor *m_cameraMonitor = nullptr; // a child
    bool m_streamRunning = false;
    // By display name: a map with "resolutions", as of the property, and "source", a map with the "name" and "value" of
    // the source's property that selects the camera.
    QMap<QString, QVariant> m_cameraSettings;
    QMap<QString, std::shared_ptr<GstCaps>> m_cameraCaps; // by display name: what the camera offers
    QString m_framerate;
    int m_width = -1;
    int m_height = -1;
    int m_resolutionIndex = 0;
    QString m_cameraName;
    QString m_cameraSourcePluginName;
    std::atomic<int> m_videoRun = 0; // counts starts; read by a thread of GStreamer's
    std::unique_ptr<EmulationManagement::Internal::GStreamerLoading> m_loading; // null when it is done
};
