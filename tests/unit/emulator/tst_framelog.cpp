// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <remote-dbus-invoker/framelog.h>

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Emulator;

class tst_FrameLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void appendsALineForEachEvent()
    {
        const QTemporaryDir folder;
        for (int run = 1; run <= 2; ++run) {
            FrameLog log;
            QVERIFY(log.open(folder.filePath(u"log"_s)));
            log.connected(run);
            log.text(run, u"a \"text\"\nÄ"_s);
            log.binary(run, 3);
            log.reply(run, u"a reply"_s);
            log.disconnected(run);
        }
        const QList<QJsonObject> entries = read(folder.filePath(u"log"_s));
        QCOMPARE(entries.size(), 10);
        QCOMPARE(without(entries[0]), (QJsonObject{{u"client"_s, 1}, {u"event"_s, u"connected"_s}}));
        QCOMPARE(
            without(entries[6]),
            (QJsonObject{{u"client"_s, 2}, {u"event"_s, u"text"_s}, {u"text"_s, u"a \"text\"\nÄ"_s}}));
        QCOMPARE(without(entries[7]), (QJsonObject{{u"client"_s, 2}, {u"event"_s, u"binary"_s}, {u"size"_s, 3}}));
        QCOMPARE(
            without(entries[8]), (QJsonObject{{u"client"_s, 2}, {u"event"_s, u"reply"_s}, {u"text"_s, u"a reply"_s}}));
        QVERIFY(entries[0]["time"_L1].toInteger() <= entries[9]["time"_L1].toInteger());
    }

    void cutsLongTexts()
    {
        const QTemporaryDir folder;
        FrameLog log;
        QVERIFY(log.open(folder.filePath(u"log"_s)));
        const QString longest(FrameLog::largestText, u'a');
        log.text(1, longest);
        log.text(1, longest + u"bc"_s);
        const QList<QJsonObject> entries = read(folder.filePath(u"log"_s));
        QCOMPARE(entries.size(), 2);
        QVERIFY(entries[0]["text"_L1].toString() == longest);
        QVERIFY(!entries[0].contains("size"_L1));
        QVERIFY(entries[1]["text"_L1].toString() == longest);
        QCOMPARE(entries[1]["size"_L1].toInteger(), FrameLog::largestText + 2);
    }

    void keepsTheEndOfVeryMuch()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath(u"log"_s);
        const QString text(FrameLog::largestText, u'a');
        FrameLog log;
        QVERIFY(log.open(name));
        const int enough = int(3 * FrameLog::largestFile / FrameLog::largestText);
        for (int client = 0; client < enough; ++client) {
            log.text(client, text);
            QVERIFY(QFile(name).size() <= FrameLog::largestFile);
        }
        const QList<QJsonObject> entries = read(name + ".old"_L1) + read(name);
        QVERIFY(entries.size() >= FrameLog::largestFile / FrameLog::largestText);
        QVERIFY(entries.size() < enough);
        for (qsizetype i = 0; i < entries.size(); ++i)
            QCOMPARE(entries[i]["client"_L1].toInteger(), enough - entries.size() + i);
    }

    void saysThatItCannotWrite()
    {
        const QTemporaryDir folder;
        FrameLog log;
        QVERIFY(!log.open(folder.filePath(u"no/such/folder"_s)));
        log.text(1, u"goes nowhere"_s);
    }

private:
    static QList<QJsonObject> read(const QString &name)
    {
        QFile file(name);
        QList<QJsonObject> entries;
        if (file.open(QIODevice::ReadOnly)) {
            while (!file.atEnd())
                entries.append(QJsonDocument::fromJson(file.readLine()).object());
        }
        return entries;
    }

    static QJsonObject without(QJsonObject entry)
    {
        entry.remove("time"_L1);
        return entry;
    }
};

QTEST_GUILESS_MAIN(tst_FrameLog)

#include "tst_framelog.moc"
