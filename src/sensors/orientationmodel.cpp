// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/orientationmodel.h"

#include "sensors/accelerometermodel.h"
#include "sensors/degrees.h"

#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr double faceThreshold = 300.0;

} // namespace

OrientationModel::OrientationModel(QObject *parent)
    : SensorModel(parent)
{
}

void OrientationModel::setDefaultValues()
{
    setOrientation(0.0, 0.0, AccelerometerModel::defaultZValue);
}

QString OrientationModel::name() const
{
    return u"orientation"_s;
}

QOrientationReading::Orientation OrientationModel::orientation() const
{
    return m_orientation;
}

void OrientationModel::setOrientation(QOrientationReading::Orientation orientation)
{
    m_orientation = orientation;
    Q_EMIT orientationChanged();
}

void OrientationModel::setOrientation(double x, double y, double z)
{
    calculateTopEdgeOrientation(x, y, z);
    const auto topEdge = static_cast<QOrientationReading::Orientation>(m_topEdgeOrientation);
    calculateFaceOrientation(z, topEdge);
    setOrientation(
        topEdge != QOrientationReading::Undefined ? topEdge
                                                  : static_cast<QOrientationReading::Orientation>(m_faceOrientation));
}

int OrientationModel::topEdgeOrientation() const
{
    return m_topEdgeOrientation;
}

int OrientationModel::faceOrientation() const
{
    return m_faceOrientation;
}

void OrientationModel::calculateTopEdgeOrientation(double x, double y, double z)
{
    const int landscapeAngle = calculateRotationAngle(x, y, z, OrientationMode::Landscape);
    if (std::abs(landscapeAngle) > thresholdLandscape) {
        m_topEdgeOrientation = rotateToLandscape(landscapeAngle);
        return;
    }
    const int portraitAngle = calculateRotationAngle(x, y, z, OrientationMode::Portrait);
    m_topEdgeOrientation =
        std::abs(portraitAngle) > thresholdPortrait ? rotateToPortrait(portraitAngle) : QOrientationReading::Undefined;
}

void OrientationModel::calculateFaceOrientation(double z, QOrientationReading::Orientation topEdge)
{
    if (!(std::abs(z) >= faceThreshold))
        return;
    // A device that lies on its face but leans on an edge has its face up, too.
    m_faceOrientation = z <= 0.0 && topEdge == QOrientationReading::Undefined ? QOrientationReading::FaceDown
                                                                              : QOrientationReading::FaceUp;
}

int OrientationModel::calculateRotationAngle(double x, double y, double z, OrientationMode mode)
{
    const double tangent =
        mode == OrientationMode::Landscape ? x / std::sqrt(y * y + z * z) : y / std::sqrt(x * x + z * z);
    return roundedDegrees(std::atan(tangent) * degreesPerRadian);
}

int OrientationModel::rotateToLandscape(int angle) const
{
    return angle < 1 ? QOrientationReading::LeftUp : QOrientationReading::RightUp;
}

int OrientationModel::rotateToPortrait(int angle) const
{
    return angle < 1 ? QOrientationReading::TopDown : QOrientationReading::TopUp;
}

} // namespace EmulationManagement::Internal
