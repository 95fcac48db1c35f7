<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AccelerometerControls</name>
    <message>
        <source>Accelerometer</source>
        <translation>Beschleunigungssensor</translation>
    </message>
    <message>
        <source>g</source>
        <translation>g</translation>
    </message>
    <message>
        <source>m/s</source>
        <translation>m/s</translation>
    </message>
</context>
<context>
    <name>AxisSlider</name>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Z</source>
        <translation>Z</translation>
    </message>
</context>
<context>
    <name>CalibrationLevelSlider</name>
    <message>
        <source>Calib. level</source>
        <translation>Kalibrierung</translation>
    </message>
</context>
<context>
    <name>CameraManagementPage</name>
    <message>
        <source>%1x%2</source>
        <translation>%1x%2</translation>
    </message>
    <message>
        <source>Could not determine the video codec of the video file. Supported codecs: VP8 and VP9.</source>
        <translation>Der Video-Codec der Videodatei konnte nicht ermittelt werden. Unterstützte Codecs: VP8 und VP9.</translation>
    </message>
    <message>
        <source>Camera emulation does not support %1. Supported codecs: VP8 and VP9.</source>
        <translation>Die Kamera-Emulation unterstützt %1 nicht. Unterstützte Codecs: VP8 und VP9.</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Open Video File</source>
        <translation>Videodatei öffnen</translation>
    </message>
    <message>
        <source>Video files (*.webm *.mkv)</source>
        <translation>Videodateien (*.webm *.mkv)</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Host camera</source>
        <translation>Kamera des Rechners</translation>
    </message>
    <message>
        <source>Video file</source>
        <translation>Videodatei</translation>
    </message>
    <message>
        <source>Current values</source>
        <translation>Aktuelle Werte</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Framerate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Set settings</source>
        <translation>Einstellungen übernehmen</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a video file</source>
        <translation>Eine Videodatei öffnen</translation>
    </message>
    <message>
        <source>Start stream</source>
        <translation>Stream starten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Update cameras list</source>
        <translation>Kameraliste aktualisieren</translation>
    </message>
</context>
<context>
    <name>CompassControls</name>
    <message>
        <source>Compass</source>
        <translation>Kompass</translation>
    </message>
    <message>
        <source>Azimuth</source>
        <translation>Azimut</translation>
    </message>
</context>
<context>
    <name>CurrentPosition</name>
    <message>
        <source>Latitude</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::EmulationManagementPlugin</name>
    <message>
        <source>Emulation Management</source>
        <translation>Emulationsverwaltung</translation>
    </message>
    <message>
        <source>Emulation Management…</source>
        <translation>Emulationsverwaltung…</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close the emulator if it is running and add %1 Emulator to the list of available devices in Qt Creator settings.</source>
        <translation>Das Emulationsverwaltungs-Plugin kann nicht verwendet werden. Bitte schließen Sie den Emulator, falls er läuft, und fügen Sie den %1-Emulator in den Qt-Creator-Einstellungen zur Liste der verfügbaren Geräte hinzu.</translation>
    </message>
    <message>
        <source>Emulation management plugin</source>
        <translation>Emulationsverwaltungs-Plugin</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close %1 and try to use &apos;Emulation management…&apos; again.</source>
        <translation>Das Emulationsverwaltungs-Plugin kann nicht verwendet werden. Bitte schließen Sie %1 und versuchen Sie erneut, „Emulationsverwaltung…“ zu verwenden.</translation>
    </message>
    <message>
        <source>Emulator connection is lost. Please, run %1 if it is needed and load the GPS-track again.</source>
        <translation>Die Verbindung zum Emulator ist abgebrochen. Bitte starten Sie bei Bedarf %1 und laden Sie den GPS-Track erneut.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::NmeaError</name>
    <message>
        <source>NMEA file is empty</source>
        <translation>NMEA-Datei ist leer</translation>
    </message>
    <message>
        <source>Incorrect NMEA file</source>
        <translation>Fehlerhafte NMEA-Datei</translation>
    </message>
    <message>
        <source>NMEA file has incorrect points format.
Supported formats: GPRMC, GPGGA, GPGLL, GPWPL.</source>
        <translation>Die NMEA-Datei enthält Punkte in einem falschen Format.
Unterstützte Formate: GPRMC, GPGGA, GPGLL, GPWPL.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::TrackTableModel</name>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::WarningDialog</name>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Do not show again</source>
        <translation>Nicht mehr anzeigen</translation>
    </message>
</context>
<context>
    <name>EmulationManagementPackagesChecker</name>
    <message>
        <source>Packages is not installed: 
</source>
        <translation>Nicht installierte Pakete: 
</translation>
    </message>
    <message>
        <source>Necessary packages not found on emulator!</source>
        <translation>Auf dem Emulator fehlen benötigte Pakete!</translation>
    </message>
</context>
<context>
    <name>EmulationManagementView</name>
    <message>
        <source>The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?</source>
        <translation>Die Sensorwerte werden anhand der Lage des 3D-Telefonmodells neu gesetzt. Möchten Sie fortfahren?</translation>
    </message>
    <message>
        <source>Sensors Management</source>
        <translation>Sensoren verwalten</translation>
    </message>
    <message>
        <source>Sensors Values</source>
        <translation>Sensorwerte</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Ausrichtung</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Kamera</translation>
    </message>
</context>
<context>
    <name>ErrorMessageDialog</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>GpsManagementPage</name>
    <message>
        <source>%1, line: %2</source>
        <translation>%1, Zeile: %2</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
    <message>
        <source>The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.</source>
        <translation>Die geladene NMEA-Datei enthält keine Zeitangaben. Sie kann daher nicht mit eigener Geschwindigkeit abgespielt werden.</translation>
    </message>
    <message>
        <source>Open NMEA File</source>
        <translation>NMEA-Datei öffnen</translation>
    </message>
    <message>
        <source>NMEA files (*.nmea)</source>
        <translation>NMEA-Dateien (*.nmea)</translation>
    </message>
    <message>
        <source>Current Position</source>
        <translation>Aktuelle Position</translation>
    </message>
    <message>
        <source>Coordinate</source>
        <translation>Koordinate</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Setzen</translation>
    </message>
    <message>
        <source>Set the position</source>
        <translation>Position setzen</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Track</translation>
    </message>
</context>
<context>
    <name>GyroscopeControls</name>
    <message>
        <source>Gyroscope</source>
        <translation>Gyroskop</translation>
    </message>
    <message>
        <source>deg/s</source>
        <translation>°/s</translation>
    </message>
</context>
<context>
    <name>LightSensorControls</name>
    <message>
        <source>Undefined</source>
        <translation>Unbestimmt</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Twilight</source>
        <translation>Dämmerung</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>Bright</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Sunny</source>
        <translation>Sonnig</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Lichtsensor</translation>
    </message>
    <message>
        <source>Light level</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>lx</source>
        <translation>lx</translation>
    </message>
</context>
<context>
    <name>MagneticFieldControls</name>
    <message>
        <source>Magnetic Field</source>
        <translation>Magnetfeld</translation>
    </message>
    <message>
        <source>μT</source>
        <translation>μT</translation>
    </message>
</context>
<context>
    <name>MagnetometerControls</name>
    <message>
        <source>Magnetometer</source>
        <translation>Magnetometer</translation>
    </message>
    <message>
        <source>μT</source>
        <translation>μT</translation>
    </message>
</context>
<context>
    <name>OrientationSensorControls</name>
    <message>
        <source>TopUp</source>
        <translation>Oberkante oben</translation>
    </message>
    <message>
        <source>TopDown</source>
        <translation>Oberkante unten</translation>
    </message>
    <message>
        <source>LeftUp</source>
        <translation>Linke Seite oben</translation>
    </message>
    <message>
        <source>RightUp</source>
        <translation>Rechte Seite oben</translation>
    </message>
    <message>
        <source>FaceUp</source>
        <translation>Bildschirm oben</translation>
    </message>
    <message>
        <source>FaceDown</source>
        <translation>Bildschirm unten</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Lagesensor</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Lage</translation>
    </message>
</context>
<context>
    <name>ProximitySensorControls</name>
    <message>
        <source>Proximity Sensor</source>
        <translation>Näherungssensor</translation>
    </message>
    <message>
        <source>Reflectance</source>
        <translation>Reflexion</translation>
    </message>
    <message>
        <source>Near</source>
        <translation>Nah</translation>
    </message>
    <message>
        <source>Far</source>
        <translation>Fern</translation>
    </message>
</context>
<context>
    <name>RotationSensorControls</name>
    <message>
        <source>Rotation Sensor</source>
        <translation>Rotationssensor</translation>
    </message>
</context>
<context>
    <name>SensorsManagementPage</name>
    <message>
        <source>Sensors Management</source>
        <translation>Sensoren verwalten</translation>
    </message>
    <message>
        <source>The sensor configuration has been changed. Apply or discard changes?</source>
        <translation>Die Sensorkonfiguration wurde geändert. Änderungen übernehmen oder verwerfen?</translation>
    </message>
    <message>
        <source>Accelerometer</source>
        <translation>Beschleunigungssensor</translation>
    </message>
    <message>
        <source>Compass</source>
        <translation>Kompass</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Lagesensor</translation>
    </message>
    <message>
        <source>Magnetometer</source>
        <translation>Magnetometer</translation>
    </message>
    <message>
        <source>Gyroscope</source>
        <translation>Gyroskop</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Lichtsensor</translation>
    </message>
    <message>
        <source>Proximity Sensor</source>
        <translation>Näherungssensor</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Klopfsensor</translation>
    </message>
    <message>
        <source>After applying changes, all applications retrieving data from sensors must be restarted.</source>
        <translation>Nach dem Übernehmen der Änderungen müssen alle Anwendungen, die Sensordaten abrufen, neu gestartet werden.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
</context>
<context>
    <name>SensorsValuesPage</name>
    <message>
        <source>Sensors Values</source>
        <translation>Sensorwerte</translation>
    </message>
    <message>
        <source>Reset values</source>
        <translation>Werte zurücksetzen</translation>
    </message>
</context>
<context>
    <name>SmartphoneModelPage</name>
    <message>
        <source>Top up</source>
        <translation>Oberkante oben</translation>
    </message>
    <message>
        <source>Left side up</source>
        <translation>Linke Seite oben</translation>
    </message>
    <message>
        <source>Top down</source>
        <translation>Oberkante unten</translation>
    </message>
    <message>
        <source>Right side up</source>
        <translation>Rechte Seite oben</translation>
    </message>
    <message>
        <source>Face up</source>
        <translation>Bildschirm oben</translation>
    </message>
    <message>
        <source>Face down</source>
        <translation>Bildschirm unten</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Ausrichtung</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Drehung</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Bewegung</translation>
    </message>
    <message>
        <source>X-Rot</source>
        <translation>X-Drehung</translation>
    </message>
    <message>
        <source>Y-Rot</source>
        <translation>Y-Drehung</translation>
    </message>
    <message>
        <source>Z-Rot</source>
        <translation>Z-Drehung</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Z</source>
        <translation>Z</translation>
    </message>
    <message>
        <source>Device rotation</source>
        <translation>Drehung des Geräts</translation>
    </message>
    <message>
        <source>Resulting values</source>
        <translation>Resultierende Werte</translation>
    </message>
    <message>
        <source>Accelerometer (m/s²)</source>
        <translation>Beschleunigungssensor (m/s²)</translation>
    </message>
    <message>
        <source>Gyroscope (°/s)</source>
        <translation>Gyroskop (°/s)</translation>
    </message>
    <message>
        <source>Magnetometer (μT)</source>
        <translation>Magnetometer (μT)</translation>
    </message>
</context>
<context>
    <name>TapSensorControls</name>
    <message>
        <source>Undefined</source>
        <translation>Unbestimmt</translation>
    </message>
    <message>
        <source>X_Both</source>
        <translation>X, beide</translation>
    </message>
    <message>
        <source>Y_Both</source>
        <translation>Y, beide</translation>
    </message>
    <message>
        <source>Z_Both</source>
        <translation>Z, beide</translation>
    </message>
    <message>
        <source>X_Pos</source>
        <translation>X, positiv</translation>
    </message>
    <message>
        <source>X_Neg</source>
        <translation>X, negativ</translation>
    </message>
    <message>
        <source>Z_Neg</source>
        <translation>Z, negativ</translation>
    </message>
    <message>
        <source>Z_Pos</source>
        <translation>Z, positiv</translation>
    </message>
    <message>
        <source>Y_Pos</source>
        <translation>Y, positiv</translation>
    </message>
    <message>
        <source>Y_Neg</source>
        <translation>Y, negativ</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Klopfsensor</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Richtung</translation>
    </message>
</context>
<context>
    <name>TrackFileRow</name>
    <message>
        <source>Track file</source>
        <translation>Trackdatei</translation>
    </message>
    <message>
        <source>The track file is being read</source>
        <translation>Die Trackdatei wird gelesen</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a track file</source>
        <translation>Trackdatei öffnen</translation>
    </message>
</context>
<context>
    <name>TrackPlayerRow</name>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Track speed</source>
        <translation>Abspielgeschwindigkeit</translation>
    </message>
    <message>
        <source>Use own track speed</source>
        <translation>Eigenes Tempo</translation>
    </message>
    <message>
        <source>Loop track</source>
        <translation>Wiederholen</translation>
    </message>
</context>
<context>
    <name>TrackProgressRow</name>
    <message>
        <source>Track progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>TrackTable</name>
    <message>
        <source>Track points</source>
        <translation>Trackpunkte</translation>
    </message>
</context>
</TS>
