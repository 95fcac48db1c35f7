// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <chrono>

namespace QSsh {

// What is done about the server's identity before anything is sent to it.
enum class HostKeyCheck {
    // NO check: whoever answers on the host and port is trusted, and no known_hosts file is read or written. Meant for
    // a virtual machine behind a port of this host's loopback interface: its host key changes whenever its image is
    // made anew, and who can listen on the port in its place is already running programs on this host.
    AcceptAnyHostKey,
    // The server's key must already be in SshConnectionParameters::knownHostsFile, or in the user's own file when that
    // is empty; nothing is added to either.
    RequireKnownHostKey,
};

// How to reach an SSH server. Login is by the given private key only: no agent, no password, no settings of the user's
// own ~/.ssh/config.
struct SshConnectionParameters
{
    QString host;
    quint16 port = 22;
    QString userName;
    QString privateKeyFile;           // absolute path
    std::chrono::seconds timeout{10}; // for the connection and the handshake; at least 1 s
    // For the whole of one command, the connection included; zero means no limit.
    std::chrono::seconds commandTimeout{120};
    HostKeyCheck hostKeyCheck = HostKeyCheck::RequireKnownHostKey;
    QString knownHostsFile; // absolute path, or empty; used by RequireKnownHostKey only

    friend bool operator==(const SshConnectionParameters &, const SshConnectionParameters &) = default;
};

} // namespace QSsh
