// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"

#include <pellarvine/Shared/Contrast.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <optional>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace Pellarvine;

namespace {

// Clamps a colour that was made lighter than white.
NS::Color clamped(const NS::Color &color)
{
    const auto &[red, green, blue, alpha] = color.rgba();
    return NS::Color(RGBA { std::clamp(red, 0.0, 1.0), std::clamp(green, 0.0, 1.0),
                            std::clamp(blue, 0.0, 1.0), std::clamp(alpha, 0.0, 1.0) });
}

// Two cells of a terminal in the colour on that background.
QString cells(const NS::Color &color, const NS::Color &ground)
{
    const QColor seen = seenOn(ground, color).toQColor();
    return QString::asprintf("\x1b[48;2;%d;%d;%dm  \x1b[0m", seen.red(), seen.green(), seen.blue());
}

// On white and on black: a translucent colour looks different on them.
QString swatch(const NS::Color &color)
{
    return cells(color, NS::Color::white()) + cells(color, NS::Color::black()) + u' ';
}

QString line(const NS::Color &color, bool hasSwatches)
{
    const auto shown = [&](const NS::Color &other) {
        return (hasSwatches ? swatch(other) : QString()) + hexStringWithoutAlpha(other);
    };
    const RGBA &rgba = color.rgba();
    const HSBA hsba = color.hsba();
    return shown(color) + u"  "_s + hexStringWithAlpha(color)
           + QString::asprintf("  rgba %.3f %.3f %.3f %.3f", rgba.red, rgba.green, rgba.blue,
                               rgba.alpha)
           + QString::asprintf("  hsba %.3f %.3f %.3f %.3f", hsba.hue, hsba.saturation,
                               hsba.brightness, hsba.alpha)
           + u"  darker "_s + shown(clamped(darker(color))) + u"  lighter "_s
           + shown(clamped(lighter(color)));
}

// The library accepts any text that begins with a digit.
bool isHexadecimal(QByteArrayView text)
{
    if (text.startsWith('#'))
        text = text.sliced(1);
    return std::all_of(text.begin(), text.end(),
                       [](unsigned char character) { return std::isxdigit(character); });
}

} // namespace

void runColor(const QByteArrayList &arguments)
{
    CommandLine commandLine(
            "color",
            u"Prints a line for each colour: both hexadecimal forms, components from 0 to 1 as "
            u"red, "
            u"green,\n"
            "blue and alpha and as hue, saturation, brightness and alpha, and the colour made\n"
            "darker and lighter, clamped to what a screen can show. On a terminal each has a "
            "swatch,\n"
            "seen on white and on black."_s);
    commandLine.addPositionalArgument(
            u"TEXT"_s, u"RGB, RGBA, RRGGBB or RRGGBBAA in hexadecimal, with or without \"#\"."_s,
            u"TEXT..."_s);
    commandLine.parse(arguments);
    if (commandLine.operands().isEmpty())
        throw CommandError(ExitStatus::badUsage, "color: no TEXT given");

    const bool isTerminal = isatty(STDOUT_FILENO) == 1;
    // Prints the other colours before it fails for the last text that is not a colour.
    std::optional<CommandError> failure;
    for (const QByteArray &text : commandLine.operands()) {
        const auto color = colorWithHex(QString::fromLocal8Bit(text));
        if (color && isHexadecimal(text)) {
            std::printf("%s\n", qPrintable(line(*color, isTerminal)));
            continue;
        }
        if (failure)
            std::fprintf(stderr, "pellarvine: %s\n", failure->what());
        failure.emplace(ExitStatus::badUsage,
                        '\'' + text
                                + "' is not a color in hexadecimal RGB, RGBA, "
                                  "RRGGBB or RRGGBBAA");
    }
    if (failure)
        throw *failure;
}
