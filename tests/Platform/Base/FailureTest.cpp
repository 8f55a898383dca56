// SPDX-License-Identifier: MIT
#include "Base/Failure.h"

#include <gtest/gtest.h>

namespace Pellarvine::detail {

TEST(Failure, a_fatal_error_is_one_line_on_standard_error_and_aborts)
{
    EXPECT_EXIT(fatalError("Could not create cryptor"), ::testing::KilledBySignal(SIGABRT),
                "(^|\n)Could not create cryptor\n$");
}

TEST(Failure, a_warning_is_one_line_on_standard_output_and_returns)
{
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    printWarning("Warning: could not fetch image data!");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Warning: could not fetch image data!\n");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

} // namespace Pellarvine::detail
