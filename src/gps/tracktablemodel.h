// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/playertrackpoint.h"
#include "gps/trackpoint.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace EmulationManagement::Internal {

// The points of a track as rows of texts: number, time, latitude, longitude and altitude. The texts are made when a
// cell is shown, so a million rows enter at once.
class TrackTableModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_PROPERTY(int rowCount READ pointCount NOTIFY rowCountChanged FINAL)
    Q_PROPERTY(QStringList columnTitles READ columnTitles CONSTANT FINAL)

public:
    enum Column { NumberColumn, TimeColumn, LatitudeColumn, LongitudeColumn, AltitudeColumn };
    static constexpr int columnTotal = 5;

    explicit TrackTableModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    int pointCount() const;
    // In the user's language.
    QStringList columnTitles() const;

    // What is in a row, under the columns' titles; nothing when there is no such row.
    Q_INVOKABLE QVariantMap getRow(int row) const;
    // The first rows, at most so many.
    Q_INVOKABLE QVariantList firstRows(int count) const;

    // Behind the rows that are there.
    Q_INVOKABLE void appendPoints(const QList<EmulationManagement::Internal::TrackPoint> &points);
    Q_INVOKABLE void clear();

    // A row's point as the emulator's player takes it; one that is all zeros when there is no such row.
    Q_INVOKABLE EmulationManagement::Internal::PlayerTrackPoint playerTrackPoint(int row) const;
    // All points so, as variants: a list of which QML makes no copy when it hands it on.
    Q_INVOKABLE static QVariantList playerTrackPoints(const QList<EmulationManagement::Internal::TrackPoint> &points);

Q_SIGNALS:
    void rowCountChanged();

private:
    QVariant cell(const TrackPoint &point, int column) const;

    QList<TrackPoint> m_points;
};

} // namespace EmulationManagement::Internal
