// SPDX-License-Identifier: MIT
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // A test that forks for a death test starts the whole program again.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // Qt warns in every program that runs in the C locale, which bare systems have.
    qputenv("LC_ALL", "C.UTF-8");
    if (qEnvironmentVariableIsEmpty("PELLARVINE_TEST_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else
        qputenv("QT_QPA_PLATFORM", qgetenv("PELLARVINE_TEST_PLATFORM"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
