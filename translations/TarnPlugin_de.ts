<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QSsh::SshRemoteProcessRunner</name>
    <message>
        <source>The command on %1 did not end in time.</source>
        <translation>Der Befehl auf %1 endete nicht rechtzeitig.</translation>
    </message>
    <message>
        <source>There is no command to run on %1.</source>
        <translation>Es gibt keinen Befehl, der auf %1 auszuführen wäre.</translation>
    </message>
    <message>
        <source>There is no host to run &quot;%1&quot; on.</source>
        <translation>Es gibt keinen Rechner, auf dem „%1“ auszuführen wäre.</translation>
    </message>
    <message>
        <source>The program &quot;ssh&quot; was not found. Install the OpenSSH client (package &quot;openssh-client&quot;).</source>
        <translation>Das Programm „ssh“ wurde nicht gefunden. Installieren Sie den OpenSSH-Client (Paket „openssh-client“).</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; could not be started.</source>
        <translation>Das Programm „%1“ konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The connection to %1 was cut off.</source>
        <translation>Die Verbindung zu %1 wurde unterbrochen.</translation>
    </message>
    <message>
        <source>The command could not be run on %1: %2</source>
        <translation>Der Befehl konnte auf %1 nicht ausgeführt werden: %2</translation>
    </message>
    <message>
        <source>The command ended with exit code %1 on %2. %3</source>
        <translation>Der Befehl endete mit dem Rückgabewert %1 auf %2. %3</translation>
    </message>
</context>
<context>
    <name>Tarn::Emulator</name>
    <message>
        <source>%1 could not be made a &quot;%2&quot;. %3</source>
        <translation>%1 konnte nicht zu „%2“ gemacht werden. %3</translation>
    </message>
</context>
<context>
    <name>Tarn::Internal</name>
    <message>
        <source>The file &quot;%1&quot; could not be written.</source>
        <translation>Die Datei „%1“ konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Another program is using these emulators; close it and connect again.</source>
        <translation>Ein anderes Programm verwendet diese Emulatoren; schließen Sie es und verbinden Sie erneut.</translation>
    </message>
    <message>
        <source>libvirt&apos;s QEMU driver may be missing (package &quot;libvirt-daemon-driver-qemu&quot;).</source>
        <translation>Vielleicht fehlt der QEMU-Treiber von libvirt (Paket „libvirt-daemon-driver-qemu“).</translation>
    </message>
    <message>
        <source>libvirt&apos;s daemon or its QEMU driver may be missing (packages &quot;libvirt-daemon&quot; and &quot;libvirt-daemon-driver-qemu&quot;).</source>
        <translation>Vielleicht fehlt der Dienst von libvirt oder dessen QEMU-Treiber (Pakete „libvirt-daemon“ und „libvirt-daemon-driver-qemu“).</translation>
    </message>
    <message>
        <source>The %1 &quot;%2&quot; does not exist.</source>
        <translation>Nicht vorhanden: %1 „%2“.</translation>
    </message>
    <message>
        <source>The definition of the virtual machine is not an emulator&apos;s.</source>
        <translation>Die Definition der virtuellen Maschine ist nicht die eines Emulators.</translation>
    </message>
    <message>
        <source>The virtual machine has no user-mode network interface with the passt backend, so no port can be forwarded to it.</source>
        <translation>Die virtuelle Maschine hat keine Netzwerkschnittstelle im Benutzermodus mit passt, also kann kein Port zu ihr weitergeleitet werden.</translation>
    </message>
    <message>
        <source>The port %1 of this host belongs to a range of ports that is forwarded already.</source>
        <translation>Der Port %1 dieses Rechners gehört zu einem Bereich von Ports, der schon weitergeleitet wird.</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is missing. Install QEMU (package &quot;qemu-system-x86&quot;).</source>
        <translation>Das Programm „%1“ fehlt. Installieren Sie QEMU (Paket „qemu-system-x86“).</translation>
    </message>
    <message>
        <source>The program &quot;passt&quot; is missing. Install it (package &quot;passt&quot;).</source>
        <translation>Das Programm „passt“ fehlt. Installieren Sie es (Paket „passt“).</translation>
    </message>
    <message>
        <source>kernel</source>
        <translation>Kernel</translation>
    </message>
    <message>
        <source>initial RAM disk</source>
        <translation>initiale RAM-Disk</translation>
    </message>
    <message>
        <source>disk image</source>
        <translation>Datenträgerabbild</translation>
    </message>
</context>
<context>
    <name>Tarn::Internal::Hypervisor</name>
    <message>
        <source>The connection to the hypervisor was lost.</source>
        <translation>Die Verbindung zum Hypervisor ging verloren.</translation>
    </message>
    <message>
        <source>There is no connection to the hypervisor &quot;%1&quot;: %2 %3</source>
        <translation>Es gibt keine Verbindung zum Hypervisor „%1“: %2 %3</translation>
    </message>
    <message>
        <source>The hypervisor &quot;%1&quot; does not report changes: %2</source>
        <translation>Der Hypervisor „%1“ meldet keine Änderungen: %2</translation>
    </message>
    <message>
        <source>The connection to the hypervisor was closed.</source>
        <translation>Die Verbindung zum Hypervisor wurde geschlossen.</translation>
    </message>
    <message>
        <source>There is no connection to the hypervisor.</source>
        <translation>Es gibt keine Verbindung zum Hypervisor.</translation>
    </message>
    <message>
        <source>Ports can be forwarded only while the virtual machine is off.</source>
        <translation>Ports können nur weitergeleitet werden, solange die virtuelle Maschine ausgeschaltet ist.</translation>
    </message>
</context>
<context>
    <name>Tarn::VirtualMachine</name>
    <message>
        <source>%1 has not shut down. It can be killed instead.</source>
        <translation>%1 wurde nicht heruntergefahren. Stattdessen kann das Ende erzwungen werden.</translation>
    </message>
    <message>
        <source>%1 could not be started. %2</source>
        <translation>%1 konnte nicht gestartet werden. %2</translation>
    </message>
    <message>
        <source>%1 could not be shut down. %2</source>
        <translation>%1 konnte nicht heruntergefahren werden. %2</translation>
    </message>
    <message>
        <source>%1 could not be killed. %2</source>
        <translation>Das Ende von %1 konnte nicht erzwungen werden. %2</translation>
    </message>
    <message>
        <source>The protocol &quot;%1&quot; cannot be forwarded.</source>
        <translation>Das Protokoll „%1“ kann nicht weitergeleitet werden.</translation>
    </message>
    <message>
        <source>0 is no port that can be forwarded.</source>
        <translation>0 ist kein Port, der weitergeleitet werden kann.</translation>
    </message>
    <message>
        <source>Ports can be forwarded only while the virtual machine is off.</source>
        <translation>Ports können nur weitergeleitet werden, solange die virtuelle Maschine ausgeschaltet ist.</translation>
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
        <translation>aus</translation>
    </message>
    <message>
        <source>starting</source>
        <translation>startet</translation>
    </message>
    <message>
        <source>booting</source>
        <translation>fährt hoch</translation>
    </message>
    <message>
        <source>shutting down</source>
        <translation>fährt herunter</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>Start %1</source>
        <translation>%1 starten</translation>
    </message>
    <message>
        <source>Shut Down</source>
        <translation>Herunterfahren</translation>
    </message>
    <message>
        <source>Kill</source>
        <translation>Ende erzwingen</translation>
    </message>
    <message>
        <source>Device Model</source>
        <translation>Gerätemodell</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>emulator, state</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Velmo OS Emulator</source>
        <translation>Velmo OS-Emulator</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::TarnSettings</name>
    <message>
        <source>libvirt connection:</source>
        <translation>Verbindung von libvirt:</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>automatisch</translation>
    </message>
    <message>
        <source>The URI of the hypervisor, for example qemu:///session. When it is empty, the user&apos;s own libvirt daemon is used if there is one, and otherwise a hypervisor driver inside the IDE.</source>
        <translation>Die URI des Hypervisors, zum Beispiel qemu:///session. Ist sie leer, wird der libvirt-Dienst des Benutzers verwendet, falls es ihn gibt, und sonst ein Hypervisor-Treiber in der IDE.</translation>
    </message>
    <message>
        <source>Emulators of the driver inside the IDE:</source>
        <translation>Emulatoren des Treibers in der IDE:</translation>
    </message>
    <message>
        <source>The connection to the emulators changes when the IDE is started again.</source>
        <translation>Die Verbindung zu den Emulatoren ändert sich, wenn die IDE neu gestartet wird.</translation>
    </message>
    <message>
        <source>Velmo OS Emulators</source>
        <translation>Velmo OS-Emulatoren</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::ToolsMenu</name>
    <message>
        <source>Connect to the Emulators Again</source>
        <translation>Erneut mit den Emulatoren verbinden</translation>
    </message>
    <message>
        <source>No connection to the emulators</source>
        <translation>Keine Verbindung zu den Emulatoren</translation>
    </message>
    <message>
        <source>Connecting to the emulators…</source>
        <translation>Verbindung zu den Emulatoren wird hergestellt …</translation>
    </message>
    <message>
        <source>No emulators</source>
        <translation>Keine Emulatoren</translation>
    </message>
</context>
</TS>
