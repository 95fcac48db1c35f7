// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "framelog.h"

#include <QDateTime>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace Emulator {

bool FrameLog::open(const QString &fileName)
{
    m_file.setFileName(fileName);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
}

void FrameLog::write(int client, const char *event)
{
    write(QJsonObject(), client, event);
}

void FrameLog::write(int client, const char *event, const QString &text)
{
    if (!m_file.isOpen())
        return;
    QJsonObject entry{{u"text"_s, text.left(largestText)}};
    if (text.size() > largestText)
        entry.insert(u"size"_s, text.size());
    write(entry, client, event);
}

void FrameLog::write(int client, const char *event, qint64 size)
{
    write(QJsonObject{{u"size"_s, size}}, client, event);
}

void FrameLog::write(QJsonObject entry, int client, const char *event)
{
    if (!m_file.isOpen())
        return;
    entry.insert(u"time"_s, QDateTime::currentMSecsSinceEpoch());
    entry.insert(u"client"_s, client);
    entry.insert(u"event"_s, QLatin1StringView(event));
    m_file.write(QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n');
    if (m_file.size() > largestFile)
        beginAnother();
}

void FrameLog::beginAnother()
{
    const QString name = m_file.fileName();
    const QString old = name + ".old"_L1;
    m_file.close();
    QFile::remove(old);
    QFile::rename(name, old);
    open(name);
}

} // namespace Emulator
