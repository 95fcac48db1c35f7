// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "democamera.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSide = 4096;

std::optional<QSize> parseSize(const QString &text)
{
    const QStringList parts = text.split(u'x');
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    const QSize limit(longestSide, longestSide);
    if (parts.size() != 2 || size.isEmpty() || size.width() % 2 || size.boundedTo(limit) != size)
        return {};
    return size;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"A camera without hardware, which PipeWire offers."_s);
    parser.addHelpOption();
    parser.addOption({u"name"_s, u"What the camera is called."_s, u"name"_s, u"Demo Camera"_s});
    parser.addOption({u"size"_s, u"A size that it offers; give the option again for more."_s, u"WIDTHxHEIGHT"_s});
    parser.addOption(
        {u"priority"_s, u"Programs that name no camera get the one with the highest."_s, u"number"_s, u"1000"_s});
    parser.process(application);

    QList<QSize> sizes;
    const QStringList sizeTexts = parser.values(u"size"_s);
    for (const QString &text : sizeTexts) {
        const std::optional<QSize> size = parseSize(text);
        if (!size) {
            std::fprintf(stderr, "not a size: %s\n", qUtf8Printable(text));
            return EXIT_FAILURE;
        }
        sizes.append(*size);
    }
    if (sizes.isEmpty())
        sizes = {{1280, 720}, {640, 480}, {320, 240}};

    pw_init(&argc, &argv);
    int code = EXIT_FAILURE;
    {
        DemoCamera::Camera camera(parser.value(u"name"_s), sizes, {30, 15}, parser.value(u"priority"_s).toInt());
        code = camera.run();
    }
    pw_deinit();
    return code;
}
