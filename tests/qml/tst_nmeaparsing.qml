// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.quova
import "nmea"
import "nmea/nmea-parsing.js" as Script

Item {
    NmeaParsingTestCase {
        name: "NmeaParsing"
        parsing: NmeaParsing
    }

    NmeaParsingTestCase {
        name: "NmeaParsingScript"
        parsing: Script
    }

    NmeaAgreementTestCase {
        name: "NmeaAgreement"
        one: Script
        other: NmeaParsing
    }
}
