// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProcess>

#include <memory>
#include <vector>

namespace EmulatorHost {

/*!
    Programs that run for as long as this object lives. Should this process die, the kernel ends them.
*/
class Processes
{
public:
    ~Processes() { stop(); }

    /*! Starts \a program; its standard error is this process's own. Returns null when it cannot be started. */
    QProcess *start(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment);

    /*!
        Ends all programs, the one that was started first last. Returns a complaint for each that crashed or failed;
       being killed from outside is neither.
    */
    QStringList stop();

private:
    std::vector<std::unique_ptr<QProcess>> m_processes;
};

} // namespace EmulatorHost
