// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraemulationmanager.h"

#include "camera/cameracapabilities.h"
#include "camera/cameramonitor.h"
#include "camera/camerapipeline.h"
#include "camera/gsthandles.h"
#include "camera/gstreamerloading.h"
#include "camera/videocodec.h"
#include "camera/videofilepipeline.h"

using namespace EmulationManagement::Internal;
using namespace Qt::StringLiterals;

CameraEmulationManager::CameraEmulationManager(QObject *parent)
    : QObject(parent)
{
    m_loading = std::make_unique<GStreamerLoading>(
        [this] { QMetaObject::invokeMethod(this, &CameraEmulationManager::setUp, Qt::QueuedConnection); });
    connect(this, &CameraEmulationManager::videoStreamStopped, this, &CameraEmulationManager::restartVideoStream);
}

CameraEmulationManager::~CameraEmulationManager()
{
    m_videoPipeline.reset();
    m_cameraPipeline.reset();
}

bool CameraEmulationManager::streamRunning() const
{
    return m_streamRunning;
}

QStringList CameraEmulationManager::cameras() const
{
    return m_cameraSettings.keys();
}

QVariantList CameraEmulationManager::resolutions() const
{
    return currentCameraSettings().value(u"resolutions"_s).toList();
}

QStringList CameraEmulationManager::framerates() const
{
    return resolutions().value(m_resolutionIndex).toMap().value(u"framerates"_s).toStringList();
}

QString CameraEmulationManager::cameraName() const
{
    return m_cameraName;
}

void CameraEmulationManager::setCameraName(const QString &name)
{
    m_cameraName = name;
    setResolutionIndex(0);
    Q_EMIT cameraNameChanged();
    Q_EMIT resolutionsChanged();
    Q_EMIT frameratesChanged();
}

int CameraEmulationManager::resolutionIndex() const
{
    return m_resolutionIndex;
}

void CameraEmulationManager::setResolutionIndex(int index)
{
    m_resolutionIndex = index;
    const QVariantMap resolution = resolutions().value(index).toMap();
    setWidth(resolution.value(u"width"_s, -1).toInt());
    setHeight(resolution.value(u"height"_s, -1).toInt());
    const QStringList offered = resolution.value(u"framerates"_s).toStringList();
    setFramerate(offered.contains(m_framerate) ? m_framerate : offered.value(0));
    Q_EMIT resolutionIndexChanged();
    Q_EMIT frameratesChanged();
}

int CameraEmulationManager::width() const
{
    return m_width;
}

void CameraEmulationManager::setWidth(int width)
{
    m_width = width;
    Q_EMIT widthChanged();
}

int CameraEmulationManager::height() const
{
    return m_height;
}

void CameraEmulationManager::setHeight(int height)
{
    m_height = height;
    Q_EMIT heightChanged();
}

QString CameraEmulationManager::framerate() const
{
    return m_framerate;
}

void CameraEmulationManager::setFramerate(const QString &framerate)
{
    m_framerate = framerate.contains(u'/') ? framerate : QString();
    Q_EMIT framerateChanged();
}

void CameraEmulationManager::setupCameraStreamPipeline()
{
    setUp();
    initCameraStreamAvailableSettings();
    constructCameraStreamPipeline();
}

void CameraEmulationManager::startVideoStream(const QString &filePath)
{
    if (filePath.isEmpty() && !m_cameraMonitor) // nothing to stop, nothing to start
        return;
    setUp();
    m_cameraPipeline->stopIfRunning();
    m_videoPipeline->stopIfRunning();
    if (filePath.isEmpty() || !checkVideoFileForCodec(filePath))
        return;
    m_videoPipeline->setLocation(filePath);
    playVideo();
    setStreamRunning(true);
}

void CameraEmulationManager::startCameraStream()
{
    setUp();
    m_videoPipeline->stopIfRunning();
    m_cameraPipeline->stopIfRunning();
    m_cameraPipeline->start();
    setStreamRunning(true);
}

// Stopping does not wait for GStreamer: the page stops streams when it is made, and nothing runs as yet.
void CameraEmulationManager::stopVideoStream()
{
    if (m_videoPipeline)
        m_videoPipeline->stop();
    setStreamRunning(false);
}

void CameraEmulationManager::stopCameraStream()
{
    if (m_cameraPipeline)
        m_cameraPipeline->stop();
    setStreamRunning(false);
}

void CameraEmulationManager::setCameraStreamSettings()
{
    setUp();
    if (m_streamRunning) {
        // The wanted pictures can only be changed while the pipeline is stopped.
        stopCameraStream();
        setUpCameraPipelineElementsProperties();
        startCameraStream();
    } else {
        setUpCameraPipelineElementsProperties();
    }
    Q_EMIT cameraStreamSettingsApplied();
}

void CameraEmulationManager::updateCamerasList()
{
    setUp();
    // Whichever stream runs, only the camera's is stopped.
    if (m_streamRunning)
        stopCameraStream();
    m_cameraPipeline.reset();
    m_cameraMonitor->stop();
    m_cameraMonitor->deleteLater();
    m_cameraSettings.clear();
    m_cameraCaps.clear();

    initGstDeviceMonitor(new CameraMonitor(startDeviceMonitor(), this));
    initCameraGstPluginName();
    initCameraStreamElements();
    initCameraStreamAvailableSettings();
    constructCameraStreamPipeline();
}

// What the constructor leaves to be done once GStreamer is loaded, or as soon as it is needed.
void CameraEmulationManager::setUp()
{
    if (m_cameraMonitor)
        return;
    initGstDeviceMonitor(new CameraMonitor(m_loading->takeDeviceMonitor(), this));
    m_loading.reset();
    initCameraGstPluginName();
    initVideoStreamElements();
    initCameraStreamElements();
    constructVideoStreamPipeline();
}

void CameraEmulationManager::initGstDeviceMonitor(CameraMonitor *monitor)
{
    m_cameraMonitor = monitor;
    connect(m_cameraMonitor, &CameraMonitor::cameraAdded, this, &CameraEmulationManager::onCameraAdded);
    connect(m_cameraMonitor, &CameraMonitor::cameraRemoved, this, &CameraEmulationManager::onCameraRemoved);
}

// The first camera decides of which kind the source is for all of them.
void CameraEmulationManager::initCameraGstPluginName()
{
    const GstDeviceListPointer devices = m_cameraMonitor->devices();
    if (!devices)
        return;
    const GstElementPointer element = takeElement(gst_device_create_element(GST_DEVICE(devices->data), nullptr));
    const GstElementFactory *factory = element ? gst_element_get_factory(element.get()) : nullptr;
    if (factory)
        m_cameraSourcePluginName = QString::fromUtf8(GST_OBJECT_NAME(factory));
}

void CameraEmulationManager::initVideoStreamElements()
{
    m_videoPipeline = std::make_unique<VideoFilePipeline>();
}

void CameraEmulationManager::initCameraStreamElements()
{
    m_cameraPipeline = std::make_unique<CameraPipeline>(m_cameraSourcePluginName);
}

void CameraEmulationManager::constructVideoStreamPipeline()
{
    m_videoPipeline->assemble(localhost, udpPort, [this] { onEndOfVideoFile(); });
}

void CameraEmulationManager::constructCameraStreamPipeline()
{
    setUpCameraPipelineElementsProperties();
    m_cameraPipeline->assemble();
}

void CameraEmulationManager::initCameraStreamAvailableSettings()
{
    const GstDeviceListPointer devices = m_cameraMonitor->devices();
    for (const GList *node = devices.get(); node; node = node->next)
        addCameraSettings(GST_DEVICE(node->data));
    if (!m_cameraSettings.isEmpty())
        selectFirstCamera();
    setCameraStreamSettings();
}

void CameraEmulationManager::setUpCameraSource(const QString &name)
{
    const QVariantMap source = m_cameraSettings.value(name).toMap().value(u"source"_s).toMap();
    m_cameraPipeline->setSourceProperty(source.value(u"name"_s).toString(), source.value(u"value"_s).toString());
}

void CameraEmulationManager::setUpCameraPipelineElementsProperties()
{
    setUpCameraSource(m_cameraName);

    QString size;
    if (m_width >= 0 && m_height >= 0)
        size = u",width=%1,height=%2"_s.arg(m_width).arg(m_height);
    const QString framerate = m_framerate.isEmpty() ? QString() : u",framerate="_s + m_framerate;
    m_cameraPipeline->setJpegDecoded(isJpegOnly(m_cameraCaps.value(m_cameraName).get(), size, framerate));
    m_cameraPipeline->setCaps(QLatin1StringView(rawPictures) + size + framerate);
    m_cameraPipeline->setUpEncoderAndSink(localhost, udpPort);
}

void CameraEmulationManager::onCameraAdded(GstDevice *device)
{
    if (m_cameraSettings.contains(deviceName(device)))
        return;
    addCameraSettings(device);
    if (!m_cameraPipeline->hasSource())
        addCameraSource(deviceName(device));
    if (m_cameraSettings.size() == 1)
        setCameraStreamSettings();
}

void CameraEmulationManager::onCameraRemoved(GstDevice *device)
{
    const QString name = deviceName(device);
    if (m_cameraSettings.contains(name))
        removeCameraSettings(name);
}

void CameraEmulationManager::addCameraSettings(GstDevice *device)
{
    const QString name = deviceName(device);
    const std::shared_ptr<GstCaps> caps = GstCapsPointer(gst_device_get_caps(device));
    m_cameraCaps.insert(name, caps);
    m_cameraSettings.insert(
        name,
        QVariantMap{
            {u"resolutions"_s, availableResolutions(caps.get())},
            {u"source"_s, retrieveCameraDeviceProperty(device)},
        });
    Q_EMIT camerasChanged();
    Q_EMIT resolutionsChanged();
    Q_EMIT frameratesChanged();
}

// On a host that had no camera yet. The camera is not selected by this, but it is what streams while none is.
void CameraEmulationManager::addCameraSource(const QString &name)
{
    initCameraGstPluginName();
    initCameraStreamElements();
    setUpCameraSource(name);
    constructCameraStreamPipeline();
}

void CameraEmulationManager::removeCameraSettings(const QString &name)
{
    const bool selected = name == m_cameraName;
    // Whichever stream runs, only the camera's is stopped.
    if (selected && m_streamRunning)
        stopCameraStream();
    m_cameraSettings.remove(name);
    m_cameraCaps.remove(name);
    Q_EMIT camerasChanged();
    if (m_cameraSettings.isEmpty() || !selected)
        return;
    selectFirstCamera();
    setCameraStreamSettings();
}

void CameraEmulationManager::selectFirstCamera()
{
    setCameraName(m_cameraSettings.firstKey());
}

QVariantMap CameraEmulationManager::currentCameraSettings() const
{
    return m_cameraSettings.value(m_cameraName).toMap();
}

bool CameraEmulationManager::checkVideoFileForCodec(const QString &filePath)
{
    const QString codec = videoCodec(filePath);
    const bool accepted = isSupportedVideoCodec(codec);
    Q_EMIT videoFileCodecChecked(accepted, codec);
    return accepted;
}

void CameraEmulationManager::playVideo()
{
    ++m_videoRun;
    m_videoPipeline->start();
}

void CameraEmulationManager::restartVideoStream()
{
    if (!m_videoPipeline) // the signal is public
        return;
    m_videoPipeline->stopIfRunning();
    playVideo();
}

// Called in a thread of GStreamer's.
void CameraEmulationManager::onEndOfVideoFile()
{
    const auto announce = [this, run = m_videoRun.load()] {
        // It may have been stopped, and even started again, in the meantime.
        if (run == m_videoRun && m_videoPipeline->isRunning())
            Q_EMIT videoStreamStopped();
    };
    QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
}

void CameraEmulationManager::setStreamRunning(bool running)
{
    m_streamRunning = running;
    Q_EMIT streamRunningChanged();
}
