// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The camera manager as a program of its own, so that its costs can be told from all others. Lines of its standard
// input say what to do; each is answered by a line with the time at which that began, in nanoseconds of the monotonic
// clock.
//
//   setup            as before the window is shown; answered when there is a camera
//   select WxH RATE  and apply it
//   camera, video PATH, stop, update
//
// With --unpaced a video goes as fast as it can.

#include "camera/cameraemulationmanager.h"

#include "utils/pipelinerecorder.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <gst/gst.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using TestUtils::PipelineRecorder;

namespace {

void unpace()
{
    GstElement *sink = PipelineRecorder::element(u"video-stream-pipeline"_s, u"udpsinkVS"_s);
    g_object_set(sink, "sync", FALSE, nullptr);
    gst_object_unref(sink);
}

bool select(CameraEmulationManager &manager, const QStringList &words)
{
    const QVariantList resolutions = manager.resolutions();
    for (int i = 0; i < resolutions.size(); ++i) {
        if (resolutions.at(i).toMap().value(u"string"_s) == words.value(1)) {
            manager.setResolutionIndex(i);
            manager.setFramerate(words.value(2));
            manager.setCameraStreamSettings();
            return true;
        }
    }
    return false;
}

bool perform(CameraEmulationManager &manager, const QString &line)
{
    const QStringList words = line.split(u' ');
    const QString &command = words.first();
    if (command == "setup"_L1) {
        manager.setupCameraStreamPipeline();
        if (QCoreApplication::arguments().contains("--unpaced"_L1))
            unpace();
        return !manager.cameras().isEmpty();
    }
    if (command == "select"_L1)
        return select(manager, words);
    if (command == "camera"_L1) {
        manager.startCameraStream();
    } else if (command == "video"_L1) {
        manager.startVideoStream(line.section(u' ', 1));
    } else if (command == "stop"_L1) {
        manager.stopVideoStream();
        manager.stopCameraStream();
    } else if (command == "update"_L1) {
        manager.updateCamerasList();
    } else {
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains("--unpaced"_L1)) {
        gst_init(&argc, &argv);
        PipelineRecorder::install();
    }
    CameraEmulationManager manager;

    const QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &manager, [&manager] {
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
            return;
        }
        const auto begin = std::chrono::steady_clock::now().time_since_epoch();
        if (!perform(manager, QString::fromStdString(line))) {
            std::fprintf(stderr, "cannot %s\n", line.c_str());
            QCoreApplication::exit(EXIT_FAILURE);
            return;
        }
        std::printf("%lld\n", static_cast<long long>(std::chrono::nanoseconds(begin).count()));
        std::fflush(stdout);
    });
    return QCoreApplication::exec();
}
