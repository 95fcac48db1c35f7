<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CameraManagementPage</name>
    <message>
        <source>Camera Management</source>
        <translation>Kamera</translation>
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
        <source>GPS Management</source>
        <translation>GPS</translation>
    </message>
</context>
<context>
    <name>SensorsManagementPage</name>
    <message>
        <source>Sensors Management</source>
        <translation>Sensoren verwalten</translation>
    </message>
</context>
<context>
    <name>SensorsValuesPage</name>
    <message>
        <source>Sensors Values</source>
        <translation>Sensorwerte</translation>
    </message>
</context>
<context>
    <name>SmartphoneModelPage</name>
    <message>
        <source>Orientation Management</source>
        <translation>Ausrichtung</translation>
    </message>
</context>
</TS>
