<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>QSsh::SshRemoteProcessRunner</name>
    <message>
        <source>The command on %1 did not end in time.</source>
        <translation>La orden en %1 no terminó a tiempo.</translation>
    </message>
    <message>
        <source>There is no command to run on %1.</source>
        <translation>No hay ninguna orden que ejecutar en %1.</translation>
    </message>
    <message>
        <source>There is no host to run &quot;%1&quot; on.</source>
        <translation>No hay ningún equipo en el que ejecutar «%1».</translation>
    </message>
    <message>
        <source>The program &quot;ssh&quot; was not found. Install the OpenSSH client (package &quot;openssh-client&quot;).</source>
        <translation>No se encontró el programa «ssh». Instale el cliente OpenSSH (paquete «openssh-client»).</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; could not be started.</source>
        <translation>No se pudo iniciar el programa «%1».</translation>
    </message>
    <message>
        <source>The connection to %1 was cut off.</source>
        <translation>Se cortó la conexión con %1.</translation>
    </message>
    <message>
        <source>The command could not be run on %1: %2</source>
        <translation>No se pudo ejecutar la orden en %1: %2</translation>
    </message>
    <message>
        <source>The command ended with exit code %1 on %2. %3</source>
        <translation>La orden terminó con el código de salida %1 en %2. %3</translation>
    </message>
</context>
<context>
    <name>Tarn::Emulator</name>
    <message>
        <source>%1 could not be made a &quot;%2&quot;. %3</source>
        <translation>No se pudo convertir %1 en «%2». %3</translation>
    </message>
</context>
<context>
    <name>Tarn::Internal</name>
    <message>
        <source>The file &quot;%1&quot; could not be written.</source>
        <translation>No se pudo escribir el archivo «%1».</translation>
    </message>
    <message>
        <source>Another program is using these emulators; close it and connect again.</source>
        <translation>Otro programa está usando estos emuladores; ciérrelo y vuelva a conectar.</translation>
    </message>
    <message>
        <source>libvirt&apos;s QEMU driver may be missing (package &quot;libvirt-daemon-driver-qemu&quot;).</source>
        <translation>Es posible que falte el controlador QEMU de libvirt (paquete «libvirt-daemon-driver-qemu»).</translation>
    </message>
    <message>
        <source>libvirt&apos;s daemon or its QEMU driver may be missing (packages &quot;libvirt-daemon&quot; and &quot;libvirt-daemon-driver-qemu&quot;).</source>
        <translation>Es posible que falte el servicio de libvirt o su controlador QEMU (paquetes «libvirt-daemon» y «libvirt-daemon-driver-qemu»).</translation>
    </message>
    <message>
        <source>The %1 &quot;%2&quot; does not exist.</source>
        <translation>No existe: %1 «%2».</translation>
    </message>
    <message>
        <source>The definition of the virtual machine is not an emulator&apos;s.</source>
        <translation>La definición de la máquina virtual no es la de un emulador.</translation>
    </message>
    <message>
        <source>The virtual machine has no user-mode network interface with the passt backend, so no port can be forwarded to it.</source>
        <translation>La máquina virtual no tiene ninguna interfaz de red en modo usuario con passt, así que no se le puede redirigir ningún puerto.</translation>
    </message>
    <message>
        <source>The port %1 of this host belongs to a range of ports that is forwarded already.</source>
        <translation>El puerto %1 de este equipo pertenece a un intervalo de puertos que ya está redirigido.</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is missing. Install QEMU (package &quot;qemu-system-x86&quot;).</source>
        <translation>Falta el programa «%1». Instale QEMU (paquete «qemu-system-x86»).</translation>
    </message>
    <message>
        <source>The program &quot;passt&quot; is missing. Install it (package &quot;passt&quot;).</source>
        <translation>Falta el programa «passt». Instálelo (paquete «passt»).</translation>
    </message>
    <message>
        <source>kernel</source>
        <translation>el núcleo</translation>
    </message>
    <message>
        <source>initial RAM disk</source>
        <translation>el disco RAM inicial</translation>
    </message>
    <message>
        <source>disk image</source>
        <translation>la imagen de disco</translation>
    </message>
</context>
<context>
    <name>Tarn::Internal::Hypervisor</name>
    <message>
        <source>The connection to the hypervisor was lost.</source>
        <translation>Se perdió la conexión con el hipervisor.</translation>
    </message>
    <message>
        <source>There is no connection to the hypervisor &quot;%1&quot;: %2 %3</source>
        <translation>No hay conexión con el hipervisor «%1»: %2 %3</translation>
    </message>
    <message>
        <source>The hypervisor &quot;%1&quot; does not report changes: %2</source>
        <translation>El hipervisor «%1» no informa de los cambios: %2</translation>
    </message>
    <message>
        <source>The connection to the hypervisor was closed.</source>
        <translation>Se cerró la conexión con el hipervisor.</translation>
    </message>
    <message>
        <source>There is no connection to the hypervisor.</source>
        <translation>No hay conexión con el hipervisor.</translation>
    </message>
    <message>
        <source>Ports can be forwarded only while the virtual machine is off.</source>
        <translation>Solo se pueden redirigir puertos mientras la máquina virtual está apagada.</translation>
    </message>
</context>
<context>
    <name>Tarn::VirtualMachine</name>
    <message>
        <source>%1 has not shut down. It can be killed instead.</source>
        <translation>%1 no se ha apagado. Se puede forzar su cierre.</translation>
    </message>
    <message>
        <source>%1 could not be started. %2</source>
        <translation>No se pudo iniciar %1. %2</translation>
    </message>
    <message>
        <source>%1 could not be shut down. %2</source>
        <translation>No se pudo apagar %1. %2</translation>
    </message>
    <message>
        <source>%1 could not be killed. %2</source>
        <translation>No se pudo forzar el cierre de %1. %2</translation>
    </message>
    <message>
        <source>The protocol &quot;%1&quot; cannot be forwarded.</source>
        <translation>El protocolo «%1» no se puede redirigir.</translation>
    </message>
    <message>
        <source>0 is no port that can be forwarded.</source>
        <translation>El puerto 0 no se puede redirigir.</translation>
    </message>
    <message>
        <source>Ports can be forwarded only while the virtual machine is off.</source>
        <translation>Solo se pueden redirigir puertos mientras la máquina virtual está apagada.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::EmulatorMenu</name>
    <message>
        <source>off</source>
        <translation>apagado</translation>
    </message>
    <message>
        <source>starting</source>
        <translation>iniciándose</translation>
    </message>
    <message>
        <source>booting</source>
        <translation>arrancando</translation>
    </message>
    <message>
        <source>shutting down</source>
        <translation>apagándose</translation>
    </message>
    <message>
        <source>running</source>
        <translation>en marcha</translation>
    </message>
    <message>
        <source>Start %1</source>
        <translation>Iniciar %1</translation>
    </message>
    <message>
        <source>Shut Down</source>
        <translation>Apagar</translation>
    </message>
    <message>
        <source>Kill</source>
        <translation>Forzar cierre</translation>
    </message>
    <message>
        <source>Device Model</source>
        <translation>Modelo de dispositivo</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>emulator, state</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Velmo OS Emulator</source>
        <translation>Emulador de Velmo OS</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::TarnSettings</name>
    <message>
        <source>libvirt connection:</source>
        <translation>Conexión de libvirt:</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>automática</translation>
    </message>
    <message>
        <source>The URI of the hypervisor, for example qemu:///session. When it is empty, the user&apos;s own libvirt daemon is used if there is one, and otherwise a hypervisor driver inside the IDE.</source>
        <translation>El URI del hipervisor, por ejemplo qemu:///session. Si está vacío, se usa el servicio libvirt del usuario, si lo hay, y si no, un controlador de hipervisor dentro del IDE.</translation>
    </message>
    <message>
        <source>Emulators of the driver inside the IDE:</source>
        <translation>Emuladores del controlador del IDE:</translation>
    </message>
    <message>
        <source>The connection to the emulators changes when the IDE is started again.</source>
        <translation>La conexión con los emuladores cambiará cuando se reinicie el IDE.</translation>
    </message>
    <message>
        <source>Velmo OS Emulators</source>
        <translation>Emuladores de Velmo OS</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::ToolsMenu</name>
    <message>
        <source>Connect to the Emulators Again</source>
        <translation>Volver a conectar con los emuladores</translation>
    </message>
    <message>
        <source>No connection to the emulators</source>
        <translation>Sin conexión con los emuladores</translation>
    </message>
    <message>
        <source>Connecting to the emulators…</source>
        <translation>Conectando con los emuladores…</translation>
    </message>
    <message>
        <source>No emulators</source>
        <translation>No hay emuladores</translation>
    </message>
</context>
</TS>
