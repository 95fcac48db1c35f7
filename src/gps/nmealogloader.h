// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/nmealog.h"
#include "gps/trackpoint.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include <stop_token>

namespace EmulationManagement::Internal {

/// Reads logs in the background.
class NmeaLogLoader : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged FINAL)

public:
    explicit NmeaLogLoader(QObject *parent = nullptr);
    ~NmeaLogLoader() override;

    bool isBusy() const;

    /// Answered by either loaded() or failed(), never before it returns. Of a log that is still being read then,
    /// nothing is heard any more.
    Q_INVOKABLE void load(const QString &text);
    /// Nothing is heard any more of a log that is still being read.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    /// Before loaded() or failed() when it ends.
    void busyChanged();
    void loaded(const QList<EmulationManagement::Internal::TrackPoint> &points);
    /// The line is 0 when none is concerned; see NmeaError.
    void failed(const QString &message, int incorrectLine);

private:
    void setBusy(bool busy);
    void finish(const NmeaLog &log);

    bool m_busy = false;
    std::stop_source m_stop;
    QThreadPool m_pool;
};

} // namespace EmulationManagement::Internal
