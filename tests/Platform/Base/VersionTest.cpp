// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/Version.h>

#include <QStringList>
#include <gtest/gtest.h>

TEST(Version, symbols_of_the_loaded_library_agree_with_the_macros)
{
    const auto text = QString::fromLatin1(reinterpret_cast<const char *>(PellarvineVersionString));
    const QStringList parts = text.split(QLatin1Char('.'));
    ASSERT_EQ(parts.size(), 3);
    EXPECT_EQ(parts[0].toInt(), PELLARVINE_VERSION_MAJOR);
    EXPECT_EQ(parts[1].toInt(), PELLARVINE_VERSION_MINOR);
    EXPECT_EQ(parts[2].toInt(), PELLARVINE_VERSION_PATCH);
    EXPECT_EQ(PellarvineVersionNumber, (parts[0] + QLatin1Char('.') + parts[1]).toDouble());
}
