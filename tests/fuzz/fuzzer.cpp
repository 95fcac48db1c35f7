// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzzer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <array>
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace Fuzz {

int Input::anyInt()
{
    static constexpr std::array borders{
        0, 1, -1, 100, 299, 300, 1000, -1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    return chance(50) ? borders.at(size_t(number(int(borders.size())))) : int(m_random.generate());
}

double Input::anyDouble()
{
    switch (number(4)) {
    case 0:
        return anyInt();
    case 1:
        return m_random.generateDouble() * 2 - 1;
    case 2:
        return anyInt() * 1e-8;
    default: // any bits: denormal numbers, infinities and not-a-numbers among them
        return std::bit_cast<double>(m_random.generate64() | (chance(5) ? 0x7ff0000000000000ULL : 0));
    }
}

QString Input::text(const QString &alphabet, int longest)
{
    QString text(number(longest + 1), QChar());
    for (QChar &character : text)
        character = alphabet.at(number(int(alphabet.size())));
    return text;
}

QString Input::anyText(int longest)
{
    QString text(number(longest + 1), QChar());
    for (QChar &character : text)
        character = QChar(char16_t(number(chance(80) ? 0x80 : 0x10000)));
    return text;
}

std::optional<QString> Input::sample()
{
    if (m_sample || m_corpus.isEmpty() || !chance(30))
        return m_sample;
    return mutated(oneOf(m_corpus));
}

QString Input::mutated(QString text)
{
    for (int changes = number(5); changes > 0; --changes) {
        const int position = number(int(text.size()) + 1);
        switch (number(5)) {
        case 0:
            text.remove(position, 1 + number(4));
            break;
        case 1:
            text.insert(position, anyText(3));
            break;
        case 2:
            text.insert(position, text.mid(number(int(text.size()) + 1), number(20)));
            break;
        case 3:
            if (position < text.size())
                text[position] = QChar(u' ' + number(95));
            break;
        default:
            text.insert(position, oneOf(m_corpus));
            break;
        }
    }
    return text;
}

namespace {

struct Corpus
{
    QStringList names;
    QStringList texts;
};

Corpus readCorpus(const QString &folder)
{
    Corpus corpus;
    const QDir directory(folder);
    corpus.names = directory.entryList(QDir::Files, QDir::Name);
    for (const QString &name : std::as_const(corpus.names)) {
        QFile file(directory.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            corpus.texts.append(QString::fromUtf8(file.readAll()));
    }
    return corpus;
}

} // namespace

int run(const char *name, const Target &target)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({u"seconds"_s, u"How long to run."_s, u"N"_s, u"3"_s});
    parser.addOption({u"seed"_s, u"Where the random numbers start."_s, u"S"_s, u"1"_s});
    parser.addOption({u"corpus"_s, u"A folder of files to begin with."_s, u"DIR"_s});
    parser.process(QCoreApplication::arguments());
    bool isSeconds = false;
    bool isSeed = false;
    const std::chrono::seconds time(parser.value(u"seconds"_s).toUInt(&isSeconds));
    quint32 seed = parser.value(u"seed"_s).toUInt(&isSeed);
    if (!isSeconds || !isSeed) {
        std::fprintf(stderr, "%s: --seconds and --seed take whole numbers\n", name);
        return EXIT_FAILURE;
    }

    const Corpus corpus = readCorpus(parser.value(u"corpus"_s));
    if (parser.isSet(u"corpus"_s) && (corpus.names.isEmpty() || corpus.texts.size() != corpus.names.size())) {
        std::fprintf(stderr, "%s: the corpus cannot be read\n", name);
        return EXIT_FAILURE;
    }
    for (qsizetype i = 0; i < corpus.texts.size(); ++i) {
        Input input(seed, corpus.texts);
        input.setSample(corpus.texts.at(i));
        const QString wrong = target(input);
        if (!wrong.isEmpty()) {
            std::fprintf(stderr, "%s: %s: %s\n", name, qUtf8Printable(corpus.names.at(i)), qUtf8Printable(wrong));
            return EXIT_FAILURE;
        }
    }

    QElapsedTimer timer;
    timer.start();
    quint64 runs = 0;
    do { // each run has a seed of its own, so that a failure comes again at once
        Input input(seed, corpus.texts);
        const QString wrong = target(input);
        ++runs;
        if (!wrong.isEmpty()) {
            std::fprintf(stderr, "%s: %s\nrun again with: --seed %u\n", name, qUtf8Printable(wrong), seed);
            return EXIT_FAILURE;
        }
        ++seed;
    } while (timer.durationElapsed() < time);
    std::printf(
        "%s: %lld files and %llu runs, nothing wrong\n",
        name,
        static_cast<long long>(corpus.texts.size()),
        static_cast<unsigned long long>(runs));
    return EXIT_SUCCESS;
}

} // namespace Fuzz
