// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What is made of any framerates and caps that a device may offer, of any selection, and of streams that start and stop
// meanwhile.

#include "camera/cameracapabilities.h"
#include "camera/cameraemulationmanager.h"
#include "camera/gsthandles.h"

#include "fuzz/fuzzer.h"
#include "utils/testcameras.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QSet>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::TestCamera;
using TestUtils::TestCameras;

namespace {

QString anyNumber(Fuzz::Input &input)
{
    return input.chance(60) ? QString::number(input.number(130)) : QString::number(input.anyInt());
}

QString anyFraction(Fuzz::Input &input)
{
    if (input.chance(10))
        return input.text(u"0123456789/-"_s, 6);
    return anyNumber(input) + u'/' + (input.chance(60) ? u"1"_s : anyNumber(input));
}

QString anyRange(Fuzz::Input &input)
{
    return u"[ %1, %2 ]"_s.arg(anyFraction(input), anyFraction(input));
}

QString anyList(Fuzz::Input &input)
{
    QStringList members;
    for (int i = input.number(6); i > 0; --i)
        members.append(input.chance(90) ? u"(fraction)"_s + anyFraction(input) : anyRange(input));
    return u"{ %1 }"_s.arg(members.join(u", "_s));
}

QString anyFramerates(Fuzz::Input &input)
{
    switch (input.number(5)) {
    case 0:
        return anyFraction(input);
    case 1:
        return anyRange(input);
    case 2:
        return anyList(input);
    case 3:
        return input.text(u"[]{}(),/ 0123456789-fraction"_s, 30);
    default:
        return input.anyText(20);
    }
}

// What a device can offer: GStreamer has no ranges whose ends are in the wrong order, and no zero denominators.
QString offeredFraction(Fuzz::Input &input)
{
    return u"%1/%2"_s.arg(input.number(130)).arg(input.oneOf({u"1"_s, u"1"_s, u"2"_s, u"1001"_s}));
}

QString offeredRange(Fuzz::Input &input)
{
    const int lower = input.number(60);
    const int upper = input.chance(80) ? lower + 1 + input.number(60) : std::numeric_limits<int>::max();
    return u"[ %1/1, %2/1 ]"_s.arg(lower).arg(upper);
}

QString offeredFramerates(Fuzz::Input &input)
{
    switch (input.number(3)) {
    case 0:
        return offeredFraction(input);
    case 1:
        return offeredRange(input);
    default:
        QStringList members{offeredFraction(input)};
        for (int i = input.number(6); i > 0; --i)
            members.append(input.chance(90) ? offeredFraction(input) : offeredRange(input));
        return u"{ %1 }"_s.arg(members.join(u", "_s));
    }
}

QString anySize(Fuzz::Input &input)
{
    if (input.chance(80))
        return QString::number(input.number(40));
    return input.oneOf({u"[ 1, 1920 ]"_s, u"{ 640, 1280 }"_s, u"-1"_s, u"2147483647"_s, u"x"_s});
}

QString anyCaps(Fuzz::Input &input)
{
    QStringList structures;
    for (int i = input.number(8); i > 0; --i) {
        QString structure = input.oneOf({u"video/x-raw"_s, u"image/jpeg"_s, u"video/x-raw(memory:DMABuf)"_s});
        if (input.chance(90))
            structure += u",width="_s + anySize(input) + u",height="_s + anySize(input);
        if (input.chance(90))
            structure += u",framerate="_s + offeredFramerates(input);
        structures.append(structure);
    }
    return structures.join(u';');
}

int numerator(const QString &framerate)
{
    return framerate.split(u'/').first().toInt();
}

QString checkFramerates(const QStringList &framerates, const QString &origin)
{
    const bool sorted = std::is_sorted(framerates.cbegin(), framerates.cend(), [](const QString &a, const QString &b) {
        return numerator(a) > numerator(b);
    });
    if (!sorted)
        return u"\"%1\" became \"%2\", which is not sorted"_s.arg(origin, framerates.join(u'|'));
    if (framerates.size() > 300)
        return u"\"%1\" became %2 framerates"_s.arg(origin).arg(framerates.size());
    return {};
}

// A range once more, from the other end: which rates belong to it, rather than which comes next.
QStringList ratesOfRange(qint64 lower, qint64 upper)
{
    const qint64 first = std::max<qint64>(lower, 0);
    QSet<qint64> rates{first};
    if (first != upper) {
        rates.insert(first + 1);
        if (first + 1 < upper) {
            // Multiples of 5, to the first that reaches the upper end, but two where the first step went to a multiple.
            const qint64 step = (first + 1) % 5 ? (first + 1) / 5 * 5 + 5 : first + 1;
            qint64 last = step + 5;
            while (last < std::min<qint64>(upper, 1000))
                last += 5;
            for (qint64 rate = step; rate <= last; rate += 5)
                rates.insert(rate);
        }
    }
    QList<qint64> sorted = rates.values();
    std::sort(sorted.begin(), sorted.end(), std::greater<>());
    QStringList texts;
    for (const qint64 rate : std::as_const(sorted)) {
        if (rate <= 1000)
            texts.append(QString::number(rate) + u"/1"_s);
    }
    return first > 1000 ? QStringList() : texts;
}

QString checkRange(Fuzz::Input &input)
{
    const int lower = input.chance(70) ? input.number(60) : input.anyInt();
    const int upper = input.chance(70) ? input.number(60) : input.anyInt();
    QStringList framerates;
    initAvailableFramerates(&framerates, u"[ %1/1, %2/1 ]"_s.arg(lower).arg(upper));
    const QStringList expected = ratesOfRange(lower, upper);
    if (framerates != expected)
        return u"[ %1/1, %2/1 ] became \"%3\" instead of \"%4\""_s.arg(lower).arg(upper).arg(
            framerates.join(u'|'), expected.join(u'|'));
    return {};
}

// What a camera of one kind of pictures offers is of that kind.
QString checkKind(const GstCaps *caps, const QString &capsText, int width, int height, const QString &framerate)
{
    const bool jpegOnly =
        isJpegOnly(caps, u",width=%1,height=%2"_s.arg(width).arg(height), u",framerate="_s + framerate);
    if (jpegOnly && !capsText.contains("image/jpeg"_L1))
        return u"JPEG of %1x%2 at %3 of %4"_s.arg(width).arg(height).arg(framerate, capsText);
    if (!jpegOnly && !capsText.contains("video/x-raw"_L1))
        return u"no JPEG of %1x%2 at %3 of %4"_s.arg(width).arg(height).arg(framerate, capsText);
    return {};
}

QString checkCaps(Fuzz::Input &input, QString *capsText)
{
    *capsText = anyCaps(input);
    const GstCapsPointer caps(gst_caps_from_string(capsText->toUtf8().constData()));
    const QVariantList resolutions = availableResolutions(caps.get());
    if (!caps) {
        capsText->clear();
        return resolutions.isEmpty() ? QString() : u"resolutions of nothing"_s;
    }
    QSet<QString> strings;
    int previousWidth = std::numeric_limits<int>::max();
    for (const QVariant &entry : resolutions) {
        const QVariantMap resolution = entry.toMap();
        const int width = resolution.value(u"width"_s).toInt();
        const int height = resolution.value(u"height"_s).toInt();
        const QString string = resolution.value(u"string"_s).toString();
        if (resolution.size() != 4 || width < 1 || height < 1 || string != u"%1x%2"_s.arg(width).arg(height))
            return u"a wrong resolution %1 of %2"_s.arg(string, *capsText);
        if (width > previousWidth)
            return u"resolutions of %1 are not sorted"_s.arg(*capsText);
        previousWidth = width;
        if (strings.contains(string))
            return u"%1 twice of %2"_s.arg(string, *capsText);
        strings.insert(string);
        const QStringList framerates = resolution.value(u"framerates"_s).toStringList();
        QString problem = checkFramerates(framerates, *capsText);
        for (const QString &framerate : framerates) {
            if (problem.isEmpty())
                problem = checkKind(caps.get(), *capsText, width, height, framerate);
        }
        if (!problem.isEmpty())
            return problem;
    }
    return {};
}

bool canBePlugged(const QString &capsText)
{
    const GstCapsPointer caps(capsText.isEmpty() ? nullptr : gst_caps_from_string(capsText.toUtf8().constData()));
    const GstCapsPointer raw(gst_caps_new_empty_simple("video/x-raw"));
    // The camera would really make pictures of the largest sizes.
    return caps && gst_caps_can_intersect(raw.get(), caps.get()) && !capsText.contains(u"=2147483647"_s);
}

// Until the manager has heard of what has been done to its only camera; false when it does not.
bool waitForCamera(const CameraEmulationManager &manager, bool plugged)
{
    const QDeadlineTimer deadline(std::chrono::seconds(30));
    while (manager.cameras().isEmpty() == plugged && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, deadline);
    return manager.cameras().isEmpty() != plugged;
}

// A manager whose only camera offers these caps lives through anything that a page may do and a user may unplug.
QString checkManager(Fuzz::Input &input, const QString &caps)
{
    TestCamera camera;
    camera.name = u"Camera"_s;
    camera.caps = caps.toUtf8();
    TestCameras::unplugAll();
    TestCameras::plug(camera);
    CameraEmulationManager manager;
    if (input.chance(80))
        manager.setupCameraStreamPipeline();
    else if (!waitForCamera(manager, true))
        return u"the camera is not found"_s;
    bool running = false;
    bool plugged = true;
    bool heard = true;
    const auto selectsIt = [&] { return manager.cameraName() == camera.name; };
    const QList<std::function<void()>> operations{
        [&] { manager.setResolutionIndex(input.chance(50) ? input.number(5) : input.anyInt()); },
        [&] { manager.setCameraName(input.chance(70) ? camera.name : input.anyText(5)); },
        [&] { manager.setFramerate(input.chance(50) ? anyFraction(input) : input.anyText(10)); },
        [&] { manager.setWidth(input.anyInt()); },
        [&] { manager.setHeight(input.anyInt()); },
        [&] { manager.setCameraStreamSettings(); },
        [&] {
            manager.startCameraStream();
            running = true;
        },
        [&] {
            manager.stopCameraStream();
            running = false;
        },
        [&] {
            manager.stopVideoStream();
            running = false;
        },
        [&] {
            manager.startVideoStream(
                input.chance(30) ? QString() : u"/no/such/folder/"_s + input.anyText(10).remove(QChar()));
        },
        [&] {
            manager.updateCamerasList();
            running = false;
        },
        [&] { manager.setupCameraStreamPipeline(); },
        [&] {
            running = running && !(plugged && selectsIt());
            if (plugged)
                TestCameras::unplug(camera.name);
            else
                TestCameras::plug(camera);
            plugged = !plugged;
            heard = waitForCamera(manager, plugged);
        },
    };
    for (int i = 0; i < 20; ++i) {
        operations.at(input.number(int(operations.size())))();
        if (!heard)
            return u"what happens to the camera is not noticed"_s;
        if (manager.cameras() != (plugged ? QStringList(camera.name) : QStringList()))
            return u"the cameras \"%1\""_s.arg(manager.cameras().join(u'|'));
        if (manager.streamRunning() != running)
            return running ? u"the stream does not run"_s : u"the stream runs"_s;
        if (!(plugged && selectsIt()) && !manager.resolutions().isEmpty())
            return u"resolutions of the camera \"%1\""_s.arg(manager.cameraName());
        const int count = int(manager.resolutions().size());
        const bool inside = manager.resolutionIndex() >= 0 && manager.resolutionIndex() < count;
        if (!inside && !manager.framerates().isEmpty())
            return u"framerates of resolution %1 of %2"_s.arg(manager.resolutionIndex()).arg(count);
        if (!manager.framerate().isEmpty() && !manager.framerate().contains(u'/'))
            return u"the framerate \"%1\""_s.arg(manager.framerate());
    }
    return {};
}

QString check(Fuzz::Input &input)
{
    const std::optional<QString> sample = input.sample();
    const QString text = sample ? *sample : anyFramerates(input);
    QStringList framerates;
    initAvailableFramerates(&framerates, text);
    QString problem = checkFramerates(framerates, text);
    if (problem.isEmpty())
        problem = checkRange(input);
    QString caps;
    if (problem.isEmpty())
        problem = checkCaps(input, &caps);
    if (problem.isEmpty() && canBePlugged(caps) && input.chance(5))
        problem = checkManager(input, caps);
    return problem;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    TestCameras::install();
    return Fuzz::run("fuzz_camera", check);
}
