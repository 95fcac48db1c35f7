<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AccelerometerControls</name>
    <message>
        <source>Accelerometer</source>
        <translation>Acelerómetro</translation>
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
        <translation>Calibración</translation>
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
        <translation>No se pudo determinar el códec del archivo de vídeo. Códecs admitidos: VP8 y VP9.</translation>
    </message>
    <message>
        <source>Camera emulation does not support %1. Supported codecs: VP8 and VP9.</source>
        <translation>La emulación de la cámara no admite %1. Códecs admitidos: VP8 y VP9.</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Cámara</translation>
    </message>
    <message>
        <source>Open Video File</source>
        <translation>Abrir archivo de vídeo</translation>
    </message>
    <message>
        <source>Video files (*.webm *.mkv)</source>
        <translation>Archivos de vídeo (*.webm *.mkv)</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Origen</translation>
    </message>
    <message>
        <source>Host camera</source>
        <translation>Cámara del equipo</translation>
    </message>
    <message>
        <source>Video file</source>
        <translation>Archivo de vídeo</translation>
    </message>
    <message>
        <source>Current values</source>
        <translation>Valores actuales</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Cámara</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Resolución</translation>
    </message>
    <message>
        <source>Framerate</source>
        <translation>Fotogramas/s</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Set settings</source>
        <translation>Aplicar ajustes</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a video file</source>
        <translation>Abrir un archivo de vídeo</translation>
    </message>
    <message>
        <source>Start stream</source>
        <translation>Iniciar transmisión</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Update cameras list</source>
        <translation>Actualizar la lista de cámaras</translation>
    </message>
</context>
<context>
    <name>CompassControls</name>
    <message>
        <source>Compass</source>
        <translation>Brújula</translation>
    </message>
    <message>
        <source>Azimuth</source>
        <translation>Acimut</translation>
    </message>
</context>
<context>
    <name>CurrentPosition</name>
    <message>
        <source>Latitude</source>
        <translation>Latitud</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitud</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Altitud</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::EmulationManagementPlugin</name>
    <message>
        <source>Emulation Management</source>
        <translation>Gestión de la emulación</translation>
    </message>
    <message>
        <source>Emulation Management…</source>
        <translation>Gestión de la emulación…</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close the emulator if it is running and add %1 Emulator to the list of available devices in Qt Creator settings.</source>
        <translation>No se puede usar el complemento de gestión de la emulación. Cierre el emulador si está en marcha y añada el emulador de %1 a la lista de dispositivos disponibles en los ajustes de Qt Creator.</translation>
    </message>
    <message>
        <source>Emulation management plugin</source>
        <translation>Complemento de gestión de la emulación</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close %1 and try to use &apos;Emulation management…&apos; again.</source>
        <translation>No se puede usar el complemento de gestión de la emulación. Cierre %1 y vuelva a elegir «Gestión de la emulación…».</translation>
    </message>
    <message>
        <source>Emulator connection is lost. Please, run %1 if it is needed and load the GPS-track again.</source>
        <translation>Se ha perdido la conexión con el emulador. Inicie %1 si es necesario y vuelva a cargar el recorrido GPS.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::NmeaError</name>
    <message>
        <source>NMEA file is empty</source>
        <translation>El archivo NMEA está vacío</translation>
    </message>
    <message>
        <source>Incorrect NMEA file</source>
        <translation>Archivo NMEA incorrecto</translation>
    </message>
    <message>
        <source>NMEA file has incorrect points format.
Supported formats: GPRMC, GPGGA, GPGLL, GPWPL.</source>
        <translation>El formato de los puntos del archivo NMEA es incorrecto.
Formatos admitidos: GPRMC, GPGGA, GPGLL, GPWPL.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::TrackTableModel</name>
    <message>
        <source>No.</source>
        <translation>N.º</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Tiempo</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Latitud</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitud</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Altitud</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::WarningDialog</name>
    <message>
        <source>Warning</source>
        <translation>Advertencia</translation>
    </message>
    <message>
        <source>Do not show again</source>
        <translation>No volver a mostrar</translation>
    </message>
</context>
<context>
    <name>EmulationManagementPackagesChecker</name>
    <message>
        <source>Packages is not installed: 
</source>
        <translation>Paquetes no instalados: 
</translation>
    </message>
    <message>
        <source>Necessary packages not found on emulator!</source>
        <translation>¡Faltan paquetes necesarios en el emulador!</translation>
    </message>
</context>
<context>
    <name>EmulationManagementView</name>
    <message>
        <source>The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?</source>
        <translation>Los valores de los sensores se sustituirán por los de la posición del modelo 3D del teléfono. ¿Desea continuar?</translation>
    </message>
    <message>
        <source>Sensors Management</source>
        <translation>Gestión de sensores</translation>
    </message>
    <message>
        <source>Sensors Values</source>
        <translation>Valores de sensores</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Orientación</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Cámara</translation>
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
        <translation>%1, línea: %2</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
    <message>
        <source>The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.</source>
        <translation>El archivo NMEA cargado no contiene tiempos, así que no se puede reproducir a su propia velocidad.</translation>
    </message>
    <message>
        <source>Open NMEA File</source>
        <translation>Abrir archivo NMEA</translation>
    </message>
    <message>
        <source>NMEA files (*.nmea)</source>
        <translation>Archivos NMEA (*.nmea)</translation>
    </message>
    <message>
        <source>Current Position</source>
        <translation>Posición actual</translation>
    </message>
    <message>
        <source>Coordinate</source>
        <translation>Coordenadas</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Latitud</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitud</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Altitud</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Establecer</translation>
    </message>
    <message>
        <source>Set the position</source>
        <translation>Establecer la posición</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Recorrido</translation>
    </message>
</context>
<context>
    <name>GyroscopeControls</name>
    <message>
        <source>Gyroscope</source>
        <translation>Giroscopio</translation>
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
        <translation>Sin definir</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message>
        <source>Twilight</source>
        <translation>Crepúsculo</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message>
        <source>Bright</source>
        <translation>Luminoso</translation>
    </message>
    <message>
        <source>Sunny</source>
        <translation>Soleado</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Sensor de luz</translation>
    </message>
    <message>
        <source>Light level</source>
        <translation>Nivel de luz</translation>
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
        <translation>Campo magnético</translation>
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
        <translation>Magnetómetro</translation>
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
        <translation>Borde superior arriba</translation>
    </message>
    <message>
        <source>TopDown</source>
        <translation>Borde superior abajo</translation>
    </message>
    <message>
        <source>LeftUp</source>
        <translation>Lado izquierdo arriba</translation>
    </message>
    <message>
        <source>RightUp</source>
        <translation>Lado derecho arriba</translation>
    </message>
    <message>
        <source>FaceUp</source>
        <translation>Pantalla hacia arriba</translation>
    </message>
    <message>
        <source>FaceDown</source>
        <translation>Pantalla hacia abajo</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Sensor de orientación</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Orientación</translation>
    </message>
</context>
<context>
    <name>ProximitySensorControls</name>
    <message>
        <source>Proximity Sensor</source>
        <translation>Sensor de proximidad</translation>
    </message>
    <message>
        <source>Reflectance</source>
        <translation>Reflectancia</translation>
    </message>
    <message>
        <source>Near</source>
        <translation>Cerca</translation>
    </message>
    <message>
        <source>Far</source>
        <translation>Lejos</translation>
    </message>
</context>
<context>
    <name>RotationSensorControls</name>
    <message>
        <source>Rotation Sensor</source>
        <translation>Sensor de rotación</translation>
    </message>
</context>
<context>
    <name>SensorsManagementPage</name>
    <message>
        <source>Sensors Management</source>
        <translation>Gestión de sensores</translation>
    </message>
    <message>
        <source>The sensor configuration has been changed. Apply or discard changes?</source>
        <translation>Se ha cambiado la configuración de los sensores. ¿Desea aplicar los cambios o descartarlos?</translation>
    </message>
    <message>
        <source>Accelerometer</source>
        <translation>Acelerómetro</translation>
    </message>
    <message>
        <source>Compass</source>
        <translation>Brújula</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Sensor de orientación</translation>
    </message>
    <message>
        <source>Magnetometer</source>
        <translation>Magnetómetro</translation>
    </message>
    <message>
        <source>Gyroscope</source>
        <translation>Giroscopio</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Sensor de luz</translation>
    </message>
    <message>
        <source>Proximity Sensor</source>
        <translation>Sensor de proximidad</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Sensor de toques</translation>
    </message>
    <message>
        <source>After applying changes, all applications retrieving data from sensors must be restarted.</source>
        <translation>Después de aplicar los cambios, es necesario reiniciar todas las aplicaciones que obtienen datos de los sensores.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Aplicar</translation>
    </message>
</context>
<context>
    <name>SensorsValuesPage</name>
    <message>
        <source>Sensors Values</source>
        <translation>Valores de sensores</translation>
    </message>
    <message>
        <source>Reset values</source>
        <translation>Restablecer valores</translation>
    </message>
</context>
<context>
    <name>SmartphoneModelPage</name>
    <message>
        <source>Top up</source>
        <translation>Borde superior arriba</translation>
    </message>
    <message>
        <source>Left side up</source>
        <translation>Lado izquierdo arriba</translation>
    </message>
    <message>
        <source>Top down</source>
        <translation>Borde superior abajo</translation>
    </message>
    <message>
        <source>Right side up</source>
        <translation>Lado derecho arriba</translation>
    </message>
    <message>
        <source>Face up</source>
        <translation>Pantalla hacia arriba</translation>
    </message>
    <message>
        <source>Face down</source>
        <translation>Pantalla hacia abajo</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Orientación</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Rotación</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Movimiento</translation>
    </message>
    <message>
        <source>X-Rot</source>
        <translation>Rotación X</translation>
    </message>
    <message>
        <source>Y-Rot</source>
        <translation>Rotación Y</translation>
    </message>
    <message>
        <source>Z-Rot</source>
        <translation>Rotación Z</translation>
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
        <translation>Posición del dispositivo</translation>
    </message>
    <message>
        <source>Resulting values</source>
        <translation>Valores resultantes</translation>
    </message>
    <message>
        <source>Accelerometer (m/s²)</source>
        <translation>Acelerómetro (m/s²)</translation>
    </message>
    <message>
        <source>Gyroscope (°/s)</source>
        <translation>Giroscopio (°/s)</translation>
    </message>
    <message>
        <source>Magnetometer (μT)</source>
        <translation>Magnetómetro (μT)</translation>
    </message>
</context>
<context>
    <name>TapSensorControls</name>
    <message>
        <source>Undefined</source>
        <translation>Sin definir</translation>
    </message>
    <message>
        <source>X_Both</source>
        <translation>X, ambas</translation>
    </message>
    <message>
        <source>Y_Both</source>
        <translation>Y, ambas</translation>
    </message>
    <message>
        <source>Z_Both</source>
        <translation>Z, ambas</translation>
    </message>
    <message>
        <source>X_Pos</source>
        <translation>X, positiva</translation>
    </message>
    <message>
        <source>X_Neg</source>
        <translation>X, negativa</translation>
    </message>
    <message>
        <source>Z_Neg</source>
        <translation>Z, negativa</translation>
    </message>
    <message>
        <source>Z_Pos</source>
        <translation>Z, positiva</translation>
    </message>
    <message>
        <source>Y_Pos</source>
        <translation>Y, positiva</translation>
    </message>
    <message>
        <source>Y_Neg</source>
        <translation>Y, negativa</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Sensor de toques</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Dirección</translation>
    </message>
</context>
<context>
    <name>TrackFileRow</name>
    <message>
        <source>Track file</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>The track file is being read</source>
        <translation>Se está leyendo el archivo del recorrido</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a track file</source>
        <translation>Abrir un archivo de recorrido</translation>
    </message>
</context>
<context>
    <name>TrackPlayerRow</name>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Track speed</source>
        <translation>Velocidad de reproducción</translation>
    </message>
    <message>
        <source>Use own track speed</source>
        <translation>Velocidad propia</translation>
    </message>
    <message>
        <source>Loop track</source>
        <translation>Repetir</translation>
    </message>
</context>
<context>
    <name>TrackProgressRow</name>
    <message>
        <source>Track progress</source>
        <translation>Progreso</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>TrackTable</name>
    <message>
        <source>Track points</source>
        <translation>Puntos del recorrido</translation>
    </message>
</context>
</TS>
