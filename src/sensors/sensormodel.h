// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>

// The value of one emulated sensor. Every setter of a sensor model emits its change signal, also when the value stays
// what it was: the pages refresh themselves that way.
class SensorModel : public QObject
{
    Q_OBJECT

public:
    explicit SensorModel(QObject *parent)
        : QObject(parent)
    {
    }

    virtual void setDefaultValues() = 0;
    // The key of the sensor in pages, in the manager and in the emulator's service.
    virtual QString name() const = 0;
};
