// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/videofilepipeline.h"

#include "camera/gsthandles.h"
#include "utils/pipelinerecorder.h"
#include "utils/testmedia.h"

#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::PipelineRecorder;

namespace {

constexpr int deadline = 60'000; // ms
constexpr quint16 port = 34343;

// What is seen from inside the handler while the pipeline is being destroyed.
struct Observation
{
    QSemaphore entered;
    QSemaphore left;
    std::weak_ptr<int> captured; // goes with the handler
    GstElementPointer pipeline;
    bool wasWhole = false;
};

bool isAskedToStop(GstElement *pipeline)
{
    GST_OBJECT_LOCK(pipeline);
    const bool asked = GST_STATE_TARGET(pipeline) == GST_STATE_NULL;
    GST_OBJECT_UNLOCK(pipeline);
    return asked;
}

// Whichever comes first: the pipeline is stopped, or the handler is gone. Nothing of the handler's is touched.
void observe(Observation *observation)
{
    observation->entered.release();
    while (!observation->captured.expired() && !isAskedToStop(observation->pipeline.get()))
        std::this_thread::yield();
    observation->wasWhole = !observation->captured.expired();
    observation->left.release();
}

} // namespace

class TestVideoFilePipeline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void tellsOfTheEndOfTheFile();
    void outlivesItsHandler();

private:
    QTemporaryDir m_folder;
    QString m_video;
};

void TestVideoFilePipeline::initTestCase()
{
    gst_init(nullptr, nullptr);
    PipelineRecorder::install();
    QVERIFY(m_folder.isValid());
    m_video = m_folder.filePath(u"video.webm"_s);
    QCOMPARE(TestUtils::writeVideo(m_video, {}), QString());
}

void TestVideoFilePipeline::tellsOfTheEndOfTheFile()
{
    QSemaphore ends;
    VideoFilePipeline pipeline;
    pipeline.assemble("127.0.0.1", port, [&ends] { ends.release(); });
    pipeline.setLocation(m_video);
    for (int i = 0; i < 3; ++i) {
        pipeline.start();
        QVERIFY(ends.tryAcquire(1, deadline));
        pipeline.stop();
    }
    QCOMPARE(ends.available(), 0);
}

// The pipeline is destroyed while it tells of the end of the file: it waits for that before it lets go of anything.
void TestVideoFilePipeline::outlivesItsHandler()
{
    auto captured = std::make_shared<int>();
    Observation observation;
    observation.captured = captured;

    auto pipeline = std::make_unique<VideoFilePipeline>();
    pipeline->assemble("127.0.0.1", port, [&observation, captured = std::move(captured)] { observe(&observation); });
    pipeline->setLocation(m_video);
    const GstElementPointer source(PipelineRecorder::element(u"video-stream-pipeline"_s, u"filesrc"_s));
    QVERIFY(source);
    observation.pipeline.reset(GST_ELEMENT(gst_object_get_parent(GST_OBJECT(source.get()))));
    pipeline->start();
    QVERIFY(observation.entered.tryAcquire(1, deadline));
    pipeline.reset();
    QVERIFY(observation.left.tryAcquire(1, deadline));
    QVERIFY(observation.wasWhole);
    QVERIFY(observation.captured.expired());
    QCOMPARE(observation.entered.available(), 0);
}

QTEST_GUILESS_MAIN(TestVideoFilePipeline)

#include "tst_videofilepipeline.moc"
