// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <functional>

namespace Fuzz {

/// Random input that is the same for the same seed.
class Input
{
public:
    explicit Input(quint32 seed)
        : m_random(seed)
    {
    }

    bool chance(int percent) { return m_random.bounded(100) < percent; }
    /// From 0 to end - 1.
    int number(int end) { return m_random.bounded(end); }
    /// Any int, the borders more often than chance would have them.
    int anyInt();
    /// Any double: whole ones, small and large ones, those that are not finite.
    double anyDouble();
    /// A text of these characters, up to a length.
    QString text(const QString &alphabet, int longest);
    /// Any UTF-16 code units, lone surrogates included.
    QString anyText(int longest);
    QString oneOf(const QStringList &texts) { return texts.at(number(int(texts.size()))); }

private:
    QRandomGenerator m_random;
};

/// Called with fresh input; says what is wrong, or nothing.
using Target = std::function<QString(Input &)>;

/// Runs the target until time is up or something is wrong, as --seconds and --seed say, and prints how often it ran or
/// with which seed the failure comes again. Returns the program's exit code.
int run(const char *name, const Target &target);

} // namespace Fuzz
