<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AccelerometerControls</name>
    <message>
        <source>Accelerometer</source>
        <translation>Accelerometer</translation>
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
        <translation>Calib. level</translation>
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
        <translation>Could not determine the video codec of the video file. Supported codecs: VP8 and VP9.</translation>
    </message>
    <message>
        <source>Camera emulation does not support %1. Supported codecs: VP8 and VP9.</source>
        <translation>Camera emulation does not support %1. Supported codecs: VP8 and VP9.</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Camera Management</translation>
    </message>
    <message>
        <source>Open Video File</source>
        <translation>Open Video File</translation>
    </message>
    <message>
        <source>Video files (*.webm *.mkv)</source>
        <translation>Video files (*.webm *.mkv)</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Host camera</source>
        <translation>Host camera</translation>
    </message>
    <message>
        <source>Video file</source>
        <translation>Video file</translation>
    </message>
    <message>
        <source>Current values</source>
        <translation>Current values</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Camera</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>Framerate</source>
        <translation>Framerate</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Set settings</source>
        <translation>Set settings</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a video file</source>
        <translation>Open a video file</translation>
    </message>
    <message>
        <source>Start stream</source>
        <translation>Start stream</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Update cameras list</source>
        <translation>Update cameras list</translation>
    </message>
</context>
<context>
    <name>CompassControls</name>
    <message>
        <source>Compass</source>
        <translation>Compass</translation>
    </message>
    <message>
        <source>Azimuth</source>
        <translation>Azimuth</translation>
    </message>
</context>
<context>
    <name>CurrentPosition</name>
    <message>
        <source>Latitude</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Altitude</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::EmulationManagementPlugin</name>
    <message>
        <source>Emulation Management</source>
        <translation>Emulation Management</translation>
    </message>
    <message>
        <source>Emulation Management…</source>
        <translation>Emulation Management…</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close the emulator if it is running and add %1 Emulator to the list of available devices in Qt Creator settings.</source>
        <translation>The emulation management plugin cannot be used. Please, close the emulator if it is running and add %1 Emulator to the list of available devices in Qt Creator settings.</translation>
    </message>
    <message>
        <source>Emulation management plugin</source>
        <translation>Emulation management plugin</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close %1 and try to use &apos;Emulation management…&apos; again.</source>
        <translation>The emulation management plugin cannot be used. Please, close %1 and try to use &apos;Emulation management…&apos; again.</translation>
    </message>
    <message>
        <source>Emulator connection is lost. Please, run %1 if it is needed and load the GPS-track again.</source>
        <translation>Emulator connection is lost. Please, run %1 if it is needed and load the GPS-track again.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::NmeaError</name>
    <message>
        <source>NMEA file is empty</source>
        <translation>NMEA file is empty</translation>
    </message>
    <message>
        <source>Incorrect NMEA file</source>
        <translation>Incorrect NMEA file</translation>
    </message>
    <message>
        <source>NMEA file has incorrect points format.
Supported formats: GPRMC, GPGGA, GPGLL, GPWPL.</source>
        <translation>NMEA file has incorrect points format.
Supported formats: GPRMC, GPGGA, GPGLL, GPWPL.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::TrackTableModel</name>
    <message>
        <source>No.</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Altitude</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::WarningDialog</name>
    <message>
        <source>Warning</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>Do not show again</source>
        <translation>Do not show again</translation>
    </message>
</context>
<context>
    <name>EmulationManagementPackagesChecker</name>
    <message>
        <source>Packages is not installed: 
</source>
        <translation>Packages is not installed: 
</translation>
    </message>
    <message>
        <source>Necessary packages not found on emulator!</source>
        <translation>Necessary packages not found on emulator!</translation>
    </message>
</context>
<context>
    <name>EmulationManagementView</name>
    <message>
        <source>The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?</source>
        <translation>The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?</translation>
    </message>
    <message>
        <source>Sensors Management</source>
        <translation>Sensors Management</translation>
    </message>
    <message>
        <source>Sensors Values</source>
        <translation>Sensors Values</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Orientation Management</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS Management</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Camera Management</translation>
    </message>
</context>
<context>
    <name>ErrorMessageDialog</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
</context>
<context>
    <name>GpsManagementPage</name>
    <message>
        <source>%1, line: %2</source>
        <translation>%1, line: %2</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS Management</translation>
    </message>
    <message>
        <source>The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.</source>
        <translation>The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.</translation>
    </message>
    <message>
        <source>Open NMEA File</source>
        <translation>Open NMEA File</translation>
    </message>
    <message>
        <source>NMEA files (*.nmea)</source>
        <translation>NMEA files (*.nmea)</translation>
    </message>
    <message>
        <source>Current Position</source>
        <translation>Current Position</translation>
    </message>
    <message>
        <source>Coordinate</source>
        <translation>Coordinate</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Altitude</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>Set the position</source>
        <translation>Set the position</translation>
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
        <translation>Gyroscope</translation>
    </message>
    <message>
        <source>deg/s</source>
        <translation>deg/s</translation>
    </message>
</context>
<context>
    <name>LightSensorControls</name>
    <message>
        <source>Undefined</source>
        <translation>Undefined</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message>
        <source>Twilight</source>
        <translation>Twilight</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>Bright</source>
        <translation>Bright</translation>
    </message>
    <message>
        <source>Sunny</source>
        <translation>Sunny</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Light Sensor</translation>
    </message>
    <message>
        <source>Light level</source>
        <translation>Light level</translation>
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
        <translation>Magnetic Field</translation>
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
        <translation>TopUp</translation>
    </message>
    <message>
        <source>TopDown</source>
        <translation>TopDown</translation>
    </message>
    <message>
        <source>LeftUp</source>
        <translation>LeftUp</translation>
    </message>
    <message>
        <source>RightUp</source>
        <translation>RightUp</translation>
    </message>
    <message>
        <source>FaceUp</source>
        <translation>FaceUp</translation>
    </message>
    <message>
        <source>FaceDown</source>
        <translation>FaceDown</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Orientation Sensor</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Orientation</translation>
    </message>
</context>
<context>
    <name>ProximitySensorControls</name>
    <message>
        <source>Proximity Sensor</source>
        <translation>Proximity Sensor</translation>
    </message>
    <message>
        <source>Reflectance</source>
        <translation>Reflectance</translation>
    </message>
    <message>
        <source>Near</source>
        <translation>Near</translation>
    </message>
    <message>
        <source>Far</source>
        <translation>Far</translation>
    </message>
</context>
<context>
    <name>RotationSensorControls</name>
    <message>
        <source>Rotation Sensor</source>
        <translation>Rotation Sensor</translation>
    </message>
</context>
<context>
    <name>SensorsManagementPage</name>
    <message>
        <source>Sensors Management</source>
        <translation>Sensors Management</translation>
    </message>
    <message>
        <source>The sensor configuration has been changed. Apply or discard changes?</source>
        <translation>The sensor configuration has been changed. Apply or discard changes?</translation>
    </message>
    <message>
        <source>Accelerometer</source>
        <translation>Accelerometer</translation>
    </message>
    <message>
        <source>Compass</source>
        <translation>Compass</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Orientation Sensor</translation>
    </message>
    <message>
        <source>Magnetometer</source>
        <translation>Magnetometer</translation>
    </message>
    <message>
        <source>Gyroscope</source>
        <translation>Gyroscope</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Light Sensor</translation>
    </message>
    <message>
        <source>Proximity Sensor</source>
        <translation>Proximity Sensor</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Tap Sensor</translation>
    </message>
    <message>
        <source>After applying changes, all applications retrieving data from sensors must be restarted.</source>
        <translation>After applying changes, all applications retrieving data from sensors must be restarted.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Apply</translation>
    </message>
</context>
<context>
    <name>SensorsValuesPage</name>
    <message>
        <source>Sensors Values</source>
        <translation>Sensors Values</translation>
    </message>
    <message>
        <source>Reset values</source>
        <translation>Reset values</translation>
    </message>
</context>
<context>
    <name>SmartphoneModelPage</name>
    <message>
        <source>Top up</source>
        <translation>Top up</translation>
    </message>
    <message>
        <source>Left side up</source>
        <translation>Left side up</translation>
    </message>
    <message>
        <source>Top down</source>
        <translation>Top down</translation>
    </message>
    <message>
        <source>Right side up</source>
        <translation>Right side up</translation>
    </message>
    <message>
        <source>Face up</source>
        <translation>Face up</translation>
    </message>
    <message>
        <source>Face down</source>
        <translation>Face down</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Orientation Management</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Rotation</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Move</translation>
    </message>
    <message>
        <source>X-Rot</source>
        <translation>X-Rot</translation>
    </message>
    <message>
        <source>Y-Rot</source>
        <translation>Y-Rot</translation>
    </message>
    <message>
        <source>Z-Rot</source>
        <translation>Z-Rot</translation>
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
        <translation>Device rotation</translation>
    </message>
    <message>
        <source>Resulting values</source>
        <translation>Resulting values</translation>
    </message>
    <message>
        <source>Accelerometer (m/s²)</source>
        <translation>Accelerometer (m/s²)</translation>
    </message>
    <message>
        <source>Gyroscope (°/s)</source>
        <translation>Gyroscope (°/s)</translation>
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
        <translation>Undefined</translation>
    </message>
    <message>
        <source>X_Both</source>
        <translation>X_Both</translation>
    </message>
    <message>
        <source>Y_Both</source>
        <translation>Y_Both</translation>
    </message>
    <message>
        <source>Z_Both</source>
        <translation>Z_Both</translation>
    </message>
    <message>
        <source>X_Pos</source>
        <translation>X_Pos</translation>
    </message>
    <message>
        <source>X_Neg</source>
        <translation>X_Neg</translation>
    </message>
    <message>
        <source>Z_Neg</source>
        <translation>Z_Neg</translation>
    </message>
    <message>
        <source>Z_Pos</source>
        <translation>Z_Pos</translation>
    </message>
    <message>
        <source>Y_Pos</source>
        <translation>Y_Pos</translation>
    </message>
    <message>
        <source>Y_Neg</source>
        <translation>Y_Neg</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Tap Sensor</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Direction</translation>
    </message>
</context>
<context>
    <name>TrackFileRow</name>
    <message>
        <source>Track file</source>
        <translation>Track file</translation>
    </message>
    <message>
        <source>The track file is being read</source>
        <translation>The track file is being read</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a track file</source>
        <translation>Open a track file</translation>
    </message>
</context>
<context>
    <name>TrackPlayerRow</name>
    <message>
        <source>Play</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Track speed</source>
        <translation>Track speed</translation>
    </message>
    <message>
        <source>Use own track speed</source>
        <translation>Use own track speed</translation>
    </message>
    <message>
        <source>Loop track</source>
        <translation>Loop track</translation>
    </message>
</context>
<context>
    <name>TrackProgressRow</name>
    <message>
        <source>Track progress</source>
        <translation>Track progress</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>TrackTable</name>
    <message>
        <source>Track points</source>
        <translation>Track points</translation>
    </message>
</context>
</TS>
