// SPDX-License-Identifier: MIT
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // A death test starts the program again, because forking a process with threads is unsafe.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // Qt prints a warning in the C locale, which minimal systems have.
    qputenv("LC_ALL", "C.UTF-8");
    if (qEnvironmentVariableIsEmpty("PELLARVINE_TEST_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else
        qputenv("QT_QPA_PLATFORM", qgetenv("PELLARVINE_TEST_PLATFORM"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
