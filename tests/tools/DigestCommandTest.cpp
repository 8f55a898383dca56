// SPDX-License-Identifier: MIT
#include "Program.h"
#include "TemporaryFolder.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <csignal>
#include <utility>

using namespace Qt::StringLiterals;

TEST(DigestCommand, lines_are_accepted_by_the_systems_checkers)
{
    const TemporaryFolder folder;
    const QString plain = folder.file(u"plain"_s, "content");
    const QString odd = folder.file(u"a\\b\nc ü"_s, QByteArray(300000, 'x'));
    for (const QString &algorithm :
         { u"md5"_s, u"sha1"_s, u"sha224"_s, u"sha256"_s, u"sha384"_s, u"sha512"_s }) {
        const Outcome digest =
                runProgram(u"pellarvine"_s, { u"digest"_s, u"-a"_s, algorithm, plain, odd });
        ASSERT_EQ(digest.status, 0) << digest.errors.constData();
        ASSERT_EQ(digest.output.count('\n'), 2);
        const QString checkList = folder.file(u"list"_s, digest.output);
        EXPECT_EQ(QProcess::execute(algorithm + u"sum"_s,
                                    { u"--check"_s, u"--strict"_s, u"--quiet"_s, checkList }),
                  0)
                << qPrintable(algorithm);
    }
}

TEST(DigestCommand, reads_standard_input_and_defaults_to_sha256)
{
    const Outcome digest = runProgram(u"pellarvine"_s, { u"digest"_s, u"-"_s }, "abc");
    EXPECT_EQ(digest.status, 0);
    EXPECT_EQ(digest.output,
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad  -\n");
}

TEST(DigestCommand, names_each_file_that_cannot_be_read_and_prints_the_others)
{
    const TemporaryFolder folder;
    const QString good = folder.file(u"good"_s, "content");
    const Outcome digest = runProgram(
            u"pellarvine"_s, { u"digest"_s, folder.path(), good, folder.filePath(u"absent"_s) });
    EXPECT_EQ(digest.status, 6);
    EXPECT_EQ(digest.output.count('\n'), 1);
    EXPECT_EQ(digest.errors, "pellarvine: " + folder.path().toUtf8() + ": Is a directory\n"
                                     + "pellarvine: " + folder.path().toUtf8()
                                     + "/absent: No such file or directory\n");
}

TEST(DigestCommand, a_closed_pipe_ends_it_and_a_full_disk_is_an_error)
{
    const QString command = programPath(u"pellarvine"_s);
    const std::pair<QString, int> rows[] = {
        { u"%1 digest $(yes /dev/null | head -2000) | true; exit ${PIPESTATUS[0]}"_s,
          128 + SIGPIPE },
        { u"%1 digest /dev/null >/dev/full"_s, 6 },
        { u"%1 digest --help >/dev/full"_s, 6 },
    };
    for (const auto &[script, status] : rows) {
        QProcess bash;
        bash.start(u"bash"_s, { u"-c"_s, script.arg(command) });
        ASSERT_TRUE(bash.waitForFinished());
        EXPECT_EQ(bash.exitCode(), status) << qPrintable(script);
    }
}

TEST(DigestCommand, bad_usage_has_status_2_and_one_line)
{
    const QList<QStringList> cases {
        { u"digest"_s },
        { u"digest"_s, u"--algorithm"_s, u"crc32"_s, u"x"_s },
        { u"digest"_s, u"--no-such-option"_s },
        { u"no-such-command"_s },
    };
    for (const QStringList &arguments : cases) {
        const Outcome outcome = runProgram(u"pellarvine"_s, arguments);
        EXPECT_EQ(outcome.status, 2) << qPrintable(arguments.join(u' '));
        EXPECT_EQ(outcome.errors.count('\n'), 1) << outcome.errors.constData();
        EXPECT_EQ(outcome.output, "");
    }
}
