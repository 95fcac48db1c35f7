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
    if (m_file.isOpen())
        write(QJsonObject{{u"text"_s, text}}, client, event);
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
}

} // namespace Emulator
