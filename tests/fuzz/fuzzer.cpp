// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzzer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>

#include <array>
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>

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

int run(const char *name, const Target &target)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({u"seconds"_s, u"How long to run."_s, u"N"_s, u"3"_s});
    parser.addOption({u"seed"_s, u"Where the random numbers start."_s, u"S"_s, u"1"_s});
    parser.process(QCoreApplication::arguments());
    bool isSeconds = false;
    bool isSeed = false;
    const std::chrono::seconds time(parser.value(u"seconds"_s).toUInt(&isSeconds));
    quint32 seed = parser.value(u"seed"_s).toUInt(&isSeed);
    if (!isSeconds || !isSeed) {
        std::fprintf(stderr, "%s: --seconds and --seed take whole numbers\n", name);
        return EXIT_FAILURE;
    }

    QElapsedTimer timer;
    timer.start();
    quint64 runs = 0;
    do { // each run has a seed of its own, so that a failure comes again at once
        Input input(seed);
        const QString wrong = target(input);
        ++runs;
        if (!wrong.isEmpty()) {
            std::fprintf(stderr, "%s: %s\nrun again with: --seed %u\n", name, qUtf8Printable(wrong), seed);
            return EXIT_FAILURE;
        }
        ++seed;
    } while (timer.durationElapsed() < time);
    std::printf("%s: %llu runs, nothing wrong\n", name, static_cast<unsigned long long>(runs));
    return EXIT_SUCCESS;
}

} // namespace Fuzz
