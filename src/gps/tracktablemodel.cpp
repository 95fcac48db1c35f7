// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/tracktablemodel.h"

#include "gps/coordinates.h"

#include <algorithm>

namespace EmulationManagement::Internal {

TrackTableModel::TrackTableModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

int TrackTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : pointCount();
}

int TrackTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columnTotal;
}

QVariant TrackTableModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return cell(m_points.at(index.row()), index.column());
}

QVariant TrackTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    return columnTitles().value(section);
}

int TrackTableModel::pointCount() const
{
    return int(m_points.size());
}

QStringList TrackTableModel::columnTitles() const
{
    return {tr("No."), tr("Time"), tr("Latitude"), tr("Longitude"), tr("Altitude")};
}

QVariantMap TrackTableModel::getRow(int row) const
{
    QVariantMap cells;
    if (row < 0 || row >= m_points.size())
        return cells;
    const QStringList titles = columnTitles();
    for (int column = 0; column < columnTotal; ++column)
        cells.insert(titles.at(column), cell(m_points.at(row), column));
    return cells;
}

QVariantList TrackTableModel::firstRows(int count) const
{
    QVariantList rows;
    for (int row = 0; row < std::min(count, pointCount()); ++row)
        rows.append(getRow(row));
    return rows;
}

void TrackTableModel::appendPoints(const QList<TrackPoint> &points)
{
    if (points.isEmpty())
        return;
    beginInsertRows({}, pointCount(), pointCount() + int(points.size()) - 1);
    m_points += points; // an empty list shares what it gets
    endInsertRows();
    Q_EMIT rowCountChanged();
}

void TrackTableModel::clear()
{
    if (m_points.isEmpty())
        return;
    beginResetModel();
    m_points.clear();
    endResetModel();
    Q_EMIT rowCountChanged();
}

PlayerTrackPoint TrackTableModel::playerTrackPoint(int row) const
{
    return PlayerTrackPoint(m_points.value(row));
}

QVariantList TrackTableModel::playerTrackPoints(const QList<TrackPoint> &points)
{
    QVariantList list;
    list.reserve(points.size());
    for (const TrackPoint &point : points)
        list.append(QVariant::fromValue(PlayerTrackPoint(point)));
    return list;
}

QVariant TrackTableModel::cell(const TrackPoint &point, int column) const
{
    switch (Column(column)) {
    case NumberColumn:
        return point.index;
    case TimeColumn:
        return point.timeString();
    case LatitudeColumn:
        return degreesText(point.latitude);
    case LongitudeColumn:
        return degreesText(point.longitude);
    case AltitudeColumn:
        return metresText(point.altitude);
    }
    return {};
}

} // namespace EmulationManagement::Internal
