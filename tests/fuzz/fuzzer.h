// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Fuzz {

/// Random input that is the same for the same seed.
class Input
{
public:
    Input(quint32 seed, const QStringList &corpus)
        : m_random(seed)
        , m_corpus(corpus)
    {
    }

    /// From now on sample() is this text.
    void setSample(const QString &sample) { m_sample = sample; }
    /// A file of the corpus as it is, or one that was changed here and there, or nothing: then any input will do.
    std::optional<QString> sample();

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
    QString mutated(QString text);

    QRandomGenerator m_random;
    QStringList m_corpus;
    std::optional<QString> m_sample;
};

/// Called with fresh input; says what is wrong, or nothing.
using Target = std::function<QString(Input &)>;

/// Runs the target with each file of --corpus, and then until time is up or something is wrong, as --seconds and --seed
/// say. Prints how often it ran, or with which file or seed the failure comes again. Returns the program's exit code.
int run(const char *name, const Target &target);

} // namespace Fuzz
