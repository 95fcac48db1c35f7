<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>QSsh::SshRemoteProcessRunner</name>
    <message>
        <source>The command on %1 did not end in time.</source>
        <translation>Команда на %1 не завершилась вовремя.</translation>
    </message>
    <message>
        <source>There is no command to run on %1.</source>
        <translation>Не указана команда для выполнения на %1.</translation>
    </message>
    <message>
        <source>There is no host to run &quot;%1&quot; on.</source>
        <translation>Не указан компьютер для выполнения «%1».</translation>
    </message>
    <message>
        <source>The program &quot;ssh&quot; was not found. Install the OpenSSH client (package &quot;openssh-client&quot;).</source>
        <translation>Программа «ssh» не найдена. Установите клиент OpenSSH (пакет «openssh-client»).</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; could not be started.</source>
        <translation>Не удалось запустить программу «%1».</translation>
    </message>
    <message>
        <source>The connection to %1 was cut off.</source>
        <translation>Соединение с %1 прервано.</translation>
    </message>
    <message>
        <source>The command could not be run on %1: %2</source>
        <translation>Не удалось выполнить команду на %1: %2</translation>
    </message>
    <message>
        <source>The command ended with exit code %1 on %2. %3</source>
        <translation>Команда завершилась с кодом %1 на %2. %3</translation>
    </message>
</context>
<context>
    <name>Tarn::Emulator</name>
    <message>
        <source>%1 could not be made a &quot;%2&quot;. %3</source>
        <translation>Не удалось сделать %1 устройством «%2». %3</translation>
    </message>
</context>
<context>
    <name>Tarn::Internal</name>
    <message>
        <source>The file &quot;%1&quot; could not be written.</source>
        <translation>Не удалось записать файл «%1».</translation>
    </message>
    <message>
        <source>Another program is using these emulators; close it and connect again.</source>
        <translation>Эти эмуляторы использует другая программа; закройте её и подключитесь снова.</translation>
    </message>
    <message>
        <source>libvirt&apos;s QEMU driver may be missing (package &quot;libvirt-daemon-driver-qemu&quot;).</source>
        <translation>Возможно, отсутствует драйвер QEMU для libvirt (пакет «libvirt-daemon-driver-qemu»).</translation>
    </message>
    <message>
        <source>libvirt&apos;s daemon or its QEMU driver may be missing (packages &quot;libvirt-daemon&quot; and &quot;libvirt-daemon-driver-qemu&quot;).</source>
        <translation>Возможно, отсутствует служба libvirt или её драйвер QEMU (пакеты «libvirt-daemon» и «libvirt-daemon-driver-qemu»).</translation>
    </message>
    <message>
        <source>The %1 &quot;%2&quot; does not exist.</source>
        <translation>Не существует: %1 «%2».</translation>
    </message>
    <message>
        <source>The definition of the virtual machine is not an emulator&apos;s.</source>
        <translation>Определение виртуальной машины не является определением эмулятора.</translation>
    </message>
    <message>
        <source>The virtual machine has no user-mode network interface with the passt backend, so no port can be forwarded to it.</source>
        <translation>У виртуальной машины нет сетевого интерфейса пользовательского режима на основе passt, поэтому перенаправить порт на неё нельзя.</translation>
    </message>
    <message>
        <source>The port %1 of this host belongs to a range of ports that is forwarded already.</source>
        <translation>Порт %1 этого компьютера входит в диапазон портов, который уже перенаправляется.</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is missing. Install QEMU (package &quot;qemu-system-x86&quot;).</source>
        <translation>Нет программы «%1». Установите QEMU (пакет «qemu-system-x86»).</translation>
    </message>
    <message>
        <source>The program &quot;passt&quot; is missing. Install it (package &quot;passt&quot;).</source>
        <translation>Нет программы «passt». Установите её (пакет «passt»).</translation>
    </message>
    <message>
        <source>kernel</source>
        <translation>ядро</translation>
    </message>
    <message>
        <source>initial RAM disk</source>
        <translation>начальный RAM-диск</translation>
    </message>
    <message>
        <source>disk image</source>
        <translation>образ диска</translation>
    </message>
</context>
<context>
    <name>Tarn::Internal::Hypervisor</name>
    <message>
        <source>The connection to the hypervisor was lost.</source>
        <translation>Соединение с гипервизором потеряно.</translation>
    </message>
    <message>
        <source>There is no connection to the hypervisor &quot;%1&quot;: %2 %3</source>
        <translation>Нет соединения с гипервизором «%1»: %2 %3</translation>
    </message>
    <message>
        <source>The hypervisor &quot;%1&quot; does not report changes: %2</source>
        <translation>Гипервизор «%1» не сообщает об изменениях: %2</translation>
    </message>
    <message>
        <source>The connection to the hypervisor was closed.</source>
        <translation>Соединение с гипервизором закрыто.</translation>
    </message>
    <message>
        <source>There is no connection to the hypervisor.</source>
        <translation>Нет соединения с гипервизором.</translation>
    </message>
    <message>
        <source>Ports can be forwarded only while the virtual machine is off.</source>
        <translation>Порты можно перенаправить, только пока виртуальная машина выключена.</translation>
    </message>
</context>
<context>
    <name>Tarn::VirtualMachine</name>
    <message>
        <source>%1 has not shut down. It can be killed instead.</source>
        <translation>%1 не завершает работу. Работу можно завершить принудительно.</translation>
    </message>
    <message>
        <source>%1 could not be started. %2</source>
        <translation>Не удалось запустить %1. %2</translation>
    </message>
    <message>
        <source>%1 could not be shut down. %2</source>
        <translation>Не удалось завершить работу %1. %2</translation>
    </message>
    <message>
        <source>%1 could not be killed. %2</source>
        <translation>Не удалось принудительно завершить работу %1. %2</translation>
    </message>
    <message>
        <source>The protocol &quot;%1&quot; cannot be forwarded.</source>
        <translation>Протокол «%1» нельзя перенаправить.</translation>
    </message>
    <message>
        <source>0 is no port that can be forwarded.</source>
        <translation>Порт 0 нельзя перенаправить.</translation>
    </message>
    <message>
        <source>Ports can be forwarded only while the virtual machine is off.</source>
        <translation>Порты можно перенаправить, только пока виртуальная машина выключена.</translation>
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
        <translation>выключен</translation>
    </message>
    <message>
        <source>starting</source>
        <translation>запускается</translation>
    </message>
    <message>
        <source>booting</source>
        <translation>загружается</translation>
    </message>
    <message>
        <source>shutting down</source>
        <translation>завершает работу</translation>
    </message>
    <message>
        <source>running</source>
        <translation>работает</translation>
    </message>
    <message>
        <source>Start %1</source>
        <translation>Запустить %1</translation>
    </message>
    <message>
        <source>Shut Down</source>
        <translation>Завершить работу</translation>
    </message>
    <message>
        <source>Kill</source>
        <translation>Завершить принудительно</translation>
    </message>
    <message>
        <source>Device Model</source>
        <translation>Модель устройства</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>emulator, state</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Velmo OS Emulator</source>
        <translation>Эмулятор Velmo OS</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::TarnSettings</name>
    <message>
        <source>libvirt connection:</source>
        <translation>Подключение libvirt:</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>автоматически</translation>
    </message>
    <message>
        <source>The URI of the hypervisor, for example qemu:///session. When it is empty, the user&apos;s own libvirt daemon is used if there is one, and otherwise a hypervisor driver inside the IDE.</source>
        <translation>URI гипервизора, например qemu:///session. Если он не указан, используется служба libvirt пользователя, а если её нет — драйвер гипервизора внутри среды разработки.</translation>
    </message>
    <message>
        <source>Emulators of the driver inside the IDE:</source>
        <translation>Эмуляторы драйвера внутри среды:</translation>
    </message>
    <message>
        <source>The connection to the emulators changes when the IDE is started again.</source>
        <translation>Подключение к эмуляторам изменится после перезапуска среды разработки.</translation>
    </message>
    <message>
        <source>Velmo OS Emulators</source>
        <translation>Эмуляторы Velmo OS</translation>
    </message>
</context>
<context>
    <name>TarnPlugin::Internal::ToolsMenu</name>
    <message>
        <source>Connect to the Emulators Again</source>
        <translation>Снова подключиться к эмуляторам</translation>
    </message>
    <message>
        <source>No connection to the emulators</source>
        <translation>Нет подключения к эмуляторам</translation>
    </message>
    <message>
        <source>Connecting to the emulators…</source>
        <translation>Подключение к эмуляторам…</translation>
    </message>
    <message>
        <source>No emulators</source>
        <translation>Нет эмуляторов</translation>
    </message>
</context>
</TS>
