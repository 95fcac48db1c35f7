// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFile>
#include <QJsonObject>
#include <QString>

namespace Emulator {

/*!
    A record of what went over the wire: one JSON object a line, written at once.

    Each has "time" (ms since 1970), "client" (a number) and "event": "connected", "disconnected", "text" (a frame that
    came), "binary" (one whose content is not kept, with its "size") or "reply" (a frame that was sent). Frames of text
    stand in "text"; of one that is longer than largestText this is the beginning, and "size" says how long it was.

    A file that has become larger than largestFile is renamed with ".old" at the end, in place of an older one, and
    another is begun.
*/
class FrameLog
{
public:
    static constexpr qsizetype largestText = 1024 * 1024;   // UTF-16 units
    static constexpr qint64 largestFile = 32 * 1024 * 1024; // bytes

    /*! Appends to \a fileName. Returns whether it can be written. */
    bool open(const QString &fileName);

    void connected(int client) { write(client, "connected"); }
    void disconnected(int client) { write(client, "disconnected"); }
    void text(int client, const QString &text) { write(client, "text", text); }
    void binary(int client, qint64 size) { write(client, "binary", size); }
    void reply(int client, const QString &text) { write(client, "reply", text); }

private:
    void write(int client, const char *event);
    void write(int client, const char *event, const QString &text);
    void write(int client, const char *event, qint64 size);
    void write(QJsonObject entry, int client, const char *event);
    void beginAnother();

    QFile m_file;
};

} // namespace Emulator
