// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/trackpoint.h"

#include "gps/nmeatime.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

QString TrackPoint::formatName() const
{
    switch (format) {
    case Format::Rmc:
        return u"$GPRMC"_s;
    case Format::Gga:
        return u"$GPGGA"_s;
    case Format::Gll:
        return u"$GPGLL"_s;
    case Format::Wpl:
        return u"$GPWPL"_s;
    }
    Q_UNREACHABLE_RETURN({});
}

QString TrackPoint::timeString() const
{
    return millisToPointTime(time);
}

} // namespace EmulationManagement::Internal
