// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "processes.h"

#include <csignal>

#include <sys/prctl.h>

namespace EmulatorHost {

Processes::~Processes()
{
    // The bus was started first and goes last.
    while (!m_processes.empty()) {
        QProcess &process = *m_processes.back();
        process.disconnect();
        process.terminate();
        if (!process.waitForFinished(5000)) {
            process.kill();
            process.waitForFinished();
        }
        m_processes.pop_back();
    }
}

QProcess *Processes::start(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process->start(program, arguments);
    if (!process->waitForStarted())
        return nullptr;
    m_processes.push_back(std::move(process));
    return m_processes.back().get();
}

} // namespace EmulatorHost
