// SPDX-License-Identifier: MIT
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // A test that forks for a death test starts the whole program again.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    if (qEnvironmentVariableIsEmpty("PELLARVINE_TEST_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else
        qputenv("QT_QPA_PLATFORM", qgetenv("PELLARVINE_TEST_PLATFORM"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
