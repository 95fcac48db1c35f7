// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "domainxml.h"

using namespace Qt::StringLiterals;

QString DomainXml::toString() const
{
    return uR"(<domain type='%1'>
  <name>%2</name>
  <metadata>%3</metadata>
  <memory unit='MiB'>64</memory>
  <vcpu>1</vcpu>
  <os>%4</os>
  <devices>
    <interface type='user'>
      <mac address='52:54:00:11:22:33'/>
      <backend type='%5'/>
      <model type='virtio'/>
      %6
    </interface>
    %7
  </devices>
</domain>)"_s.arg(type, name.toHtmlEscaped(), metadata, os, interfaceBackend, portForwards, devices);
}

QString DomainXml::defaultMetadata(const QString &deviceModel)
{
    return uR"(<velmo:emulator xmlns:velmo="urn:velmo:emulator:1">
      <velmo:deviceModel name="%1"/>
      <velmo:ssh user="root" privateKey="/keys/emulator"/>
    </velmo:emulator>)"_s.arg(deviceModel);
}

QString DomainXml::portForward(const QString &protocol, int hostPort, int guestPort)
{
    return u"<portForward proto='%1' address='127.0.0.1'><range start='%2' to='%3'/></portForward>"_s.arg(protocol)
        .arg(hostPort)
        .arg(guestPort);
}
