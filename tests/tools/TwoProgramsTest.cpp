// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TwoPrograms, sealing_loads_no_graphics)
{
    QProcess loader;
    loader.start(u"ldd"_s, { programPath(u"pellarvine"_s) });
    ASSERT_TRUE(loader.waitForFinished());
    const QByteArray libraries = loader.readAllStandardOutput();
    EXPECT_TRUE(libraries.contains("libpellarvinecore.so"));
    for (const char *needless : { "libpellarvinegui", "libQt6Gui", "libX11", "libfontconfig" })
        EXPECT_FALSE(libraries.contains(needless)) << needless;
}

TEST(TwoPrograms, a_command_whose_program_is_missing_says_where_it_should_be)
{
    QTemporaryDir folder;
    const QString lone = folder.filePath(u"bin/pellarvine"_s);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"bin"_s));
    ASSERT_TRUE(QFile::copy(programPath(u"pellarvine"_s), lone));
    QProcess process;
    process.start(lone, { u"markup"_s });
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 6);
    EXPECT_EQ(process.readAllStandardError(),
              "pellarvine: " + QFile::encodeName(QDir(folder.path()).canonicalPath())
                      + "/libexec/pellarvine/pellarvine-text: No such file or directory\n");
}
