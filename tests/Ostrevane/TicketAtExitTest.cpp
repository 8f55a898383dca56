// SPDX-License-Identifier: MIT
#include "Program.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Ending
{
    const char *way;
    const char *output;
};

class TicketAtExit : public ::testing::TestWithParam<Ending>
{ };

} // namespace

TEST_P(TicketAtExit, each_callback_is_called_once_and_off_the_main_thread)
{
    const Outcome program = runProgram(u"ticket_program"_s, { QString::fromUtf8(GetParam().way) });
    EXPECT_EQ(program.status, 0);
    EXPECT_EQ(program.output.toStdString(), GetParam().output);
    EXPECT_EQ(program.errors.toStdString(), "");
}

// -999 means cancelled, -1004 that the connection was refused.
INSTANTIATE_TEST_SUITE_P(ways, TicketAtExit,
                         ::testing::Values(Ending { "return", "-999\n-999\n" },
                                           Ending { "quit", "-999\n" },
                                           Ending { "exit", "-999\n-999\n" },
                                           Ending { "exit-at-once", "-999\n" },
                                           Ending { "exit-in-callback", "-1004\n-999\n" },
                                           Ending { "heap-application", "-999\n-999\n" },
                                           Ending { "without-application", "-999\n-999\n" },
                                           Ending { "second-application", "-999\n-999\n-1004\n" },
                                           Ending { "static-destructor", "-999\n-999\n" }),
                         [](const auto &ending) {
                             std::string name = ending.param.way;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });
