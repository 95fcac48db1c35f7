<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CameraManagementPage</name>
    <message>
        <source>Camera Management</source>
        <translation>Camera Management</translation>
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
        <source>GPS Management</source>
        <translation>GPS Management</translation>
    </message>
</context>
<context>
    <name>SensorsManagementPage</name>
    <message>
        <source>Sensors Management</source>
        <translation>Sensors Management</translation>
    </message>
</context>
<context>
    <name>SensorsValuesPage</name>
    <message>
        <source>Sensors Values</source>
        <translation>Sensors Values</translation>
    </message>
</context>
<context>
    <name>SmartphoneModelPage</name>
    <message>
        <source>Orientation Management</source>
        <translation>Orientation Management</translation>
    </message>
</context>
</TS>
