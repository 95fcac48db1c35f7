// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include <tarn/execasynchronous.h>

#include <QObject>
#include <QTest>

// An operation whose answer is known at once, or later.
class Operation : public QObject
{
    Q_OBJECT

public:
    void answerAtOnce(bool answer, const QObject *, const std::function<void(bool)> &callback) { callback(answer); }

    void answerLater(bool answer, int delay, const QObject *context, const std::function<void(bool)> &callback)
    {
        m_context = context;
        QTimer::singleShot(delay, this, [answer, callback] { callback(answer); });
    }

    const QObject *m_context = nullptr;
};

class tst_ExecAsynchronous : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answerBeforeTheLoopRuns()
    {
        Operation operation;
        bool result = false;
        Tarn::execAsynchronous(result, &Operation::answerAtOnce, &operation, true);
        QVERIFY(result);
        Tarn::execAsynchronous(result, &Operation::answerAtOnce, &operation, false);
        QVERIFY(!result);
    }

    void answerWhileTheLoopRuns()
    {
        Operation operation;
        bool result = false;
        bool eventsWereServed = false;
        QTimer::singleShot(0, &operation, [&] { eventsWereServed = true; });
        Tarn::execAsynchronous(result, &Operation::answerLater, &operation, true, 20);
        QVERIFY(result);
        QVERIFY(eventsWereServed);
        QVERIFY(operation.m_context);
        Tarn::execAsynchronous(result, &Operation::answerLater, &operation, false, 20);
        QVERIFY(!result);
    }

    void ignoredAnswer()
    {
        const std::function<void(bool)> callback = Tarn::IgnoreAsynchronousReturn;
        callback(true);
        QVERIFY(callback);
    }
};

QTEST_GUILESS_MAIN(tst_ExecAsynchronous)

#include "tst_execasynchronous.moc"
