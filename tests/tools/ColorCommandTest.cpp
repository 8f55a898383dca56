// SPDX-License-Identifier: MIT
#include "Program.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

Outcome runColor(const QStringList &texts, int standardOutput = -1)
{
    return runProgram(u"pellarvine"_s, QStringList { u"color"_s } + texts, {}, standardOutput);
}

} // namespace

TEST(ColorCommand, prints_a_line_a_colour)
{
    const Outcome result = runColor({ u"#1abc9c"_s, u"00000080"_s, u"fff"_s });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output,
              "#1ABC9C  #1ABC9CFF  rgba 0.102 0.737 0.612 1.000  hsba 0.467 0.862 0.737 1.000"
              "  darker #14967C  lighter #20EBC3\n"
              "#000000  #00000080  rgba 0.000 0.000 0.000 0.502  hsba 0.000 0.000 0.000 0.502"
              "  darker #000000  lighter #000000\n"
              "#FFFFFF  #FFFFFFFF  rgba 1.000 1.000 1.000 1.000  hsba 0.000 0.000 1.000 1.000"
              "  darker #CCCCCC  lighter #FFFFFF\n");
}

TEST(ColorCommand, refuses_each_bad_text_and_prints_the_others)
{
    const Outcome result = runColor({ u"12345"_s, u"#f00"_s, u"##fff"_s, u"foo"_s });
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.output.startsWith("#FF0000  #FF0000FF  "));
    EXPECT_EQ(result.output.count('\n'), 1);
    EXPECT_EQ(result.errors,
              "pellarvine: '12345' is not a color in hexadecimal RGB, RGBA, RRGGBB or RRGGBBAA\n"
              "pellarvine: '##fff' is not a color in hexadecimal RGB, RGBA, RRGGBB or RRGGBBAA\n"
              "pellarvine: 'foo' is not a color in hexadecimal RGB, RGBA, RRGGBB or RRGGBBAA\n");
    EXPECT_EQ(runColor({}).status, 2);
    EXPECT_EQ(runColor({ u"--no-such-option"_s }).status, 2);
}

TEST(ColorCommand, shows_swatches_on_a_terminal)
{
    int master = -1;
    int terminal = -1;
    ASSERT_EQ(openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
    const Outcome result = runColor({ u"#ff000080"_s }, terminal);
    close(terminal);
    QByteArray output(4096, '\0');
    output.truncate(std::max<ssize_t>(read(master, output.data(), std::size_t(output.size())), 0));
    close(master);
    EXPECT_EQ(result.status, 0);
    // Red of half the opacity, blended with white and with black.
    EXPECT_TRUE(output.startsWith("\x1b[48;2;255;127;127m  \x1b[0m\x1b[48;2;128;0;0m  \x1b[0m "
                                  "#FF0000  #FF000080  "))
            << output.constData();
    EXPECT_EQ(output.count("\x1b[48;2;"), 6);
}
