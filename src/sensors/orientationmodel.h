// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/sensormodel.h"

#include <QOrientationReading>

namespace EmulationManagement::Internal {

// Which edge or face of the device is up; follows from the accelerometer (any unit for the edges, thousandths of
// standard gravity for the faces).
class OrientationModel : public SensorModel
{
    Q_OBJECT
    Q_PROPERTY(
        QOrientationReading::Orientation orientation READ orientation WRITE setOrientation NOTIFY orientationChanged)

public:
    enum class OrientationMode {
        Portrait = 0,
        Landscape = 1,
    };
    Q_ENUM(OrientationMode)

    // Degrees of tilt that must be exceeded. Landscape is tested first and asks for more.
    static constexpr int thresholdPortrait = 20;
    static constexpr int thresholdLandscape = 25;

    explicit OrientationModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;

    QOrientationReading::Orientation orientation() const;
    void setOrientation(QOrientationReading::Orientation orientation);
    void setOrientation(double x, double y, double z);

    // The parts of the last computation: values of QOrientationReading::Orientation.
    int topEdgeOrientation() const;
    int faceOrientation() const;

    void calculateTopEdgeOrientation(double x, double y, double z);
    // The face keeps its value while the device is nearly upright.
    void calculateFaceOrientation(double z, QOrientationReading::Orientation topEdge);
    int calculateRotationAngle(double x, double y, double z, OrientationMode mode);
    int rotateToLandscape(int angle) const;
    int rotateToPortrait(int angle) const;

Q_SIGNALS:
    void orientationChanged();

private:
    QOrientationReading::Orientation m_orientation = QOrientationReading::Undefined;
    int m_topEdgeOrientation = QOrientationReading::Undefined;
    int m_faceOrientation = QOrientationReading::FaceUp;
};

} // namespace EmulationManagement::Internal
