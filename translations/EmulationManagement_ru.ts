<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>AccelerometerControls</name>
    <message>
        <source>Accelerometer</source>
        <translation>Акселерометр</translation>
    </message>
    <message>
        <source>g</source>
        <translation>g</translation>
    </message>
    <message>
        <source>m/s</source>
        <translation>м/с</translation>
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
        <translation>Калибровка</translation>
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
        <translation>Не удалось определить кодек видеофайла. Поддерживаются кодеки VP8 и VP9.</translation>
    </message>
    <message>
        <source>Camera emulation does not support %1. Supported codecs: VP8 and VP9.</source>
        <translation>Эмуляция камеры не поддерживает кодек %1. Поддерживаются кодеки VP8 и VP9.</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Камера</translation>
    </message>
    <message>
        <source>Open Video File</source>
        <translation>Открыть видеофайл</translation>
    </message>
    <message>
        <source>Video files (*.webm *.mkv)</source>
        <translation>Видеофайлы (*.webm *.mkv)</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Источник</translation>
    </message>
    <message>
        <source>Host camera</source>
        <translation>Камера компьютера</translation>
    </message>
    <message>
        <source>Video file</source>
        <translation>Видеофайл</translation>
    </message>
    <message>
        <source>Current values</source>
        <translation>Текущие значения</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Камера</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Разрешение</translation>
    </message>
    <message>
        <source>Framerate</source>
        <translation>Кадров/с</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Set settings</source>
        <translation>Применить настройки</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a video file</source>
        <translation>Открыть видеофайл</translation>
    </message>
    <message>
        <source>Start stream</source>
        <translation>Начать трансляцию</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Остановить</translation>
    </message>
    <message>
        <source>Update cameras list</source>
        <translation>Обновить список камер</translation>
    </message>
</context>
<context>
    <name>CompassControls</name>
    <message>
        <source>Compass</source>
        <translation>Компас</translation>
    </message>
    <message>
        <source>Azimuth</source>
        <translation>Азимут</translation>
    </message>
</context>
<context>
    <name>CurrentPosition</name>
    <message>
        <source>Latitude</source>
        <translation>Широта</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Долгота</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Высота</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::EmulationManagementPlugin</name>
    <message>
        <source>Emulation Management</source>
        <translation>Управление эмуляцией</translation>
    </message>
    <message>
        <source>Emulation Management…</source>
        <translation>Управление эмуляцией…</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close the emulator if it is running and add %1 Emulator to the list of available devices in Qt Creator settings.</source>
        <translation>Модуль управления эмуляцией недоступен. Закройте эмулятор, если он запущен, и добавьте эмулятор %1 в список доступных устройств в настройках Qt Creator.</translation>
    </message>
    <message>
        <source>Emulation management plugin</source>
        <translation>Модуль управления эмуляцией</translation>
    </message>
    <message>
        <source>The emulation management plugin cannot be used. Please, close %1 and try to use &apos;Emulation management…&apos; again.</source>
        <translation>Модуль управления эмуляцией недоступен. Закройте %1 и снова выберите «Управление эмуляцией…».</translation>
    </message>
    <message>
        <source>Emulator connection is lost. Please, run %1 if it is needed and load the GPS-track again.</source>
        <translation>Соединение с эмулятором потеряно. Запустите %1, если требуется, и загрузите GPS-трек ещё раз.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::NmeaError</name>
    <message>
        <source>NMEA file is empty</source>
        <translation>Файл NMEA пуст</translation>
    </message>
    <message>
        <source>Incorrect NMEA file</source>
        <translation>Некорректный файл NMEA</translation>
    </message>
    <message>
        <source>NMEA file has incorrect points format.
Supported formats: GPRMC, GPGGA, GPGLL, GPWPL.</source>
        <translation>Неподдерживаемый формат точек в файле NMEA.
Поддерживаются форматы: GPRMC, GPGGA, GPGLL, GPWPL.</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::TrackTableModel</name>
    <message>
        <source>No.</source>
        <translation>№</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Широта</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Долгота</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Высота</translation>
    </message>
</context>
<context>
    <name>EmulationManagement::Internal::WarningDialog</name>
    <message>
        <source>Warning</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>Do not show again</source>
        <translation>Больше не показывать</translation>
    </message>
</context>
<context>
    <name>EmulationManagementPackagesChecker</name>
    <message>
        <source>Packages is not installed: 
</source>
        <translation>Не установлены пакеты: 
</translation>
    </message>
    <message>
        <source>Necessary packages not found on emulator!</source>
        <translation>В эмуляторе нет необходимых пакетов!</translation>
    </message>
</context>
<context>
    <name>EmulationManagementView</name>
    <message>
        <source>The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?</source>
        <translation>Показания датчиков будут заменены вычисленными по положению 3D-модели смартфона. Продолжить?</translation>
    </message>
    <message>
        <source>Sensors Management</source>
        <translation>Управление датчиками</translation>
    </message>
    <message>
        <source>Sensors Values</source>
        <translation>Показания датчиков</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Ориентация</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
    <message>
        <source>Camera Management</source>
        <translation>Камера</translation>
    </message>
</context>
<context>
    <name>ErrorMessageDialog</name>
    <message>
        <source>Error</source>
        <translation>Ошибка</translation>
    </message>
</context>
<context>
    <name>GpsManagementPage</name>
    <message>
        <source>%1, line: %2</source>
        <translation>%1, строка: %2</translation>
    </message>
    <message>
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
    <message>
        <source>The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.</source>
        <translation>В загруженном файле NMEA нет сведений о времени, поэтому его нельзя воспроизвести с собственной скоростью.</translation>
    </message>
    <message>
        <source>Open NMEA File</source>
        <translation>Открыть файл NMEA</translation>
    </message>
    <message>
        <source>NMEA files (*.nmea)</source>
        <translation>Файлы NMEA (*.nmea)</translation>
    </message>
    <message>
        <source>Current Position</source>
        <translation>Текущее положение</translation>
    </message>
    <message>
        <source>Coordinate</source>
        <translation>Координаты</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Широта</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Долгота</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Высота</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Задать</translation>
    </message>
    <message>
        <source>Set the position</source>
        <translation>Задать положение</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Трек</translation>
    </message>
</context>
<context>
    <name>GyroscopeControls</name>
    <message>
        <source>Gyroscope</source>
        <translation>Гироскоп</translation>
    </message>
    <message>
        <source>deg/s</source>
        <translation>°/с</translation>
    </message>
</context>
<context>
    <name>LightSensorControls</name>
    <message>
        <source>Undefined</source>
        <translation>Не определено</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Темно</translation>
    </message>
    <message>
        <source>Twilight</source>
        <translation>Сумерки</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Светло</translation>
    </message>
    <message>
        <source>Bright</source>
        <translation>Ярко</translation>
    </message>
    <message>
        <source>Sunny</source>
        <translation>Солнечно</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Датчик освещённости</translation>
    </message>
    <message>
        <source>Light level</source>
        <translation>Освещение</translation>
    </message>
    <message>
        <source>lx</source>
        <translation>лк</translation>
    </message>
</context>
<context>
    <name>MagneticFieldControls</name>
    <message>
        <source>Magnetic Field</source>
        <translation>Магнитное поле</translation>
    </message>
    <message>
        <source>μT</source>
        <translation>мкТл</translation>
    </message>
</context>
<context>
    <name>MagnetometerControls</name>
    <message>
        <source>Magnetometer</source>
        <translation>Магнитометр</translation>
    </message>
    <message>
        <source>μT</source>
        <translation>мкТл</translation>
    </message>
</context>
<context>
    <name>OrientationSensorControls</name>
    <message>
        <source>TopUp</source>
        <translation>Верхний край вверху</translation>
    </message>
    <message>
        <source>TopDown</source>
        <translation>Верхний край внизу</translation>
    </message>
    <message>
        <source>LeftUp</source>
        <translation>Левый край вверху</translation>
    </message>
    <message>
        <source>RightUp</source>
        <translation>Правый край вверху</translation>
    </message>
    <message>
        <source>FaceUp</source>
        <translation>Экраном вверх</translation>
    </message>
    <message>
        <source>FaceDown</source>
        <translation>Экраном вниз</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Датчик ориентации</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Ориентация</translation>
    </message>
</context>
<context>
    <name>ProximitySensorControls</name>
    <message>
        <source>Proximity Sensor</source>
        <translation>Датчик приближения</translation>
    </message>
    <message>
        <source>Reflectance</source>
        <translation>Отражение</translation>
    </message>
    <message>
        <source>Near</source>
        <translation>Близко</translation>
    </message>
    <message>
        <source>Far</source>
        <translation>Далеко</translation>
    </message>
</context>
<context>
    <name>RotationSensorControls</name>
    <message>
        <source>Rotation Sensor</source>
        <translation>Датчик вращения</translation>
    </message>
</context>
<context>
    <name>SensorsManagementPage</name>
    <message>
        <source>Sensors Management</source>
        <translation>Управление датчиками</translation>
    </message>
    <message>
        <source>The sensor configuration has been changed. Apply or discard changes?</source>
        <translation>Конфигурация датчиков изменена. Применить изменения или отменить их?</translation>
    </message>
    <message>
        <source>Accelerometer</source>
        <translation>Акселерометр</translation>
    </message>
    <message>
        <source>Compass</source>
        <translation>Компас</translation>
    </message>
    <message>
        <source>Orientation Sensor</source>
        <translation>Датчик ориентации</translation>
    </message>
    <message>
        <source>Magnetometer</source>
        <translation>Магнитометр</translation>
    </message>
    <message>
        <source>Gyroscope</source>
        <translation>Гироскоп</translation>
    </message>
    <message>
        <source>Light Sensor</source>
        <translation>Датчик освещённости</translation>
    </message>
    <message>
        <source>Proximity Sensor</source>
        <translation>Датчик приближения</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Датчик постукиваний</translation>
    </message>
    <message>
        <source>After applying changes, all applications retrieving data from sensors must be restarted.</source>
        <translation>После применения изменений необходимо перезапустить все приложения, получающие данные от датчиков.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Сбросить</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Применить</translation>
    </message>
</context>
<context>
    <name>SensorsValuesPage</name>
    <message>
        <source>Sensors Values</source>
        <translation>Показания датчиков</translation>
    </message>
    <message>
        <source>Reset values</source>
        <translation>Сбросить показания</translation>
    </message>
</context>
<context>
    <name>SmartphoneModelPage</name>
    <message>
        <source>Top up</source>
        <translation>Верхний край вверху</translation>
    </message>
    <message>
        <source>Left side up</source>
        <translation>Левый край вверху</translation>
    </message>
    <message>
        <source>Top down</source>
        <translation>Верхний край внизу</translation>
    </message>
    <message>
        <source>Right side up</source>
        <translation>Правый край вверху</translation>
    </message>
    <message>
        <source>Face up</source>
        <translation>Экраном вверх</translation>
    </message>
    <message>
        <source>Face down</source>
        <translation>Экраном вниз</translation>
    </message>
    <message>
        <source>Orientation Management</source>
        <translation>Ориентация</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Вращение</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Перемещение</translation>
    </message>
    <message>
        <source>X-Rot</source>
        <translation>Вращение X</translation>
    </message>
    <message>
        <source>Y-Rot</source>
        <translation>Вращение Y</translation>
    </message>
    <message>
        <source>Z-Rot</source>
        <translation>Вращение Z</translation>
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
        <translation>Положение устройства</translation>
    </message>
    <message>
        <source>Resulting values</source>
        <translation>Получаемые значения</translation>
    </message>
    <message>
        <source>Accelerometer (m/s²)</source>
        <translation>Акселерометр (м/с²)</translation>
    </message>
    <message>
        <source>Gyroscope (°/s)</source>
        <translation>Гироскоп (°/с)</translation>
    </message>
    <message>
        <source>Magnetometer (μT)</source>
        <translation>Магнитометр (мкТл)</translation>
    </message>
</context>
<context>
    <name>TapSensorControls</name>
    <message>
        <source>Undefined</source>
        <translation>Не определено</translation>
    </message>
    <message>
        <source>X_Both</source>
        <translation>X, оба</translation>
    </message>
    <message>
        <source>Y_Both</source>
        <translation>Y, оба</translation>
    </message>
    <message>
        <source>Z_Both</source>
        <translation>Z, оба</translation>
    </message>
    <message>
        <source>X_Pos</source>
        <translation>X, положительное</translation>
    </message>
    <message>
        <source>X_Neg</source>
        <translation>X, отрицательное</translation>
    </message>
    <message>
        <source>Z_Neg</source>
        <translation>Z, отрицательное</translation>
    </message>
    <message>
        <source>Z_Pos</source>
        <translation>Z, положительное</translation>
    </message>
    <message>
        <source>Y_Pos</source>
        <translation>Y, положительное</translation>
    </message>
    <message>
        <source>Y_Neg</source>
        <translation>Y, отрицательное</translation>
    </message>
    <message>
        <source>Tap Sensor</source>
        <translation>Датчик постукиваний</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Направление</translation>
    </message>
</context>
<context>
    <name>TrackFileRow</name>
    <message>
        <source>Track file</source>
        <translation>Файл трека</translation>
    </message>
    <message>
        <source>The track file is being read</source>
        <translation>Файл трека читается</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>Open a track file</source>
        <translation>Открыть файл трека</translation>
    </message>
</context>
<context>
    <name>TrackPlayerRow</name>
    <message>
        <source>Play</source>
        <translation>Воспроизвести</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Приостановить</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Остановить</translation>
    </message>
    <message>
        <source>Track speed</source>
        <translation>Скорость воспроизведения</translation>
    </message>
    <message>
        <source>Use own track speed</source>
        <translation>Собственная скорость</translation>
    </message>
    <message>
        <source>Loop track</source>
        <translation>Повторять</translation>
    </message>
</context>
<context>
    <name>TrackProgressRow</name>
    <message>
        <source>Track progress</source>
        <translation>Пройдено</translation>
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
        <translation>Точки трека</translation>
    </message>
</context>
</TS>
