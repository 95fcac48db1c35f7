// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "processes.h"

#include <csignal>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace EmulatorHost {

QStringList Processes::stop()
{
    QStringList complaints;
    while (!m_processes.empty()) {
        QProcess &process = *m_processes.back();
        if (process.state() != QProcess::NotRunning) {
            process.terminate();
            if (!process.waitForFinished(20'000)) {
                complaints.append(u"%1 does not end"_s.arg(process.program()));
                process.kill();
                process.waitForFinished();
            }
        }
        // The exit code of a crash is the signal.
        if (process.exitCode() != 0 && !(process.exitStatus() == QProcess::CrashExit && process.exitCode() == SIGKILL))
            complaints.append(u"%1 failed with %2"_s.arg(process.program()).arg(process.exitCode()));
        m_processes.pop_back();
    }
    return complaints;
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
