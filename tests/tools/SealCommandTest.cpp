// SPDX-License-Identifier: MIT
#include "SealFolder.h"
#include "Shared/ContainerFormat.h"
#include "Shared/KeyGen.h"
#include "Terminal.h"

#include <pellarvine/Shared/Data+Random.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace detail = Pellarvine::detail;

using SealCommand = SealFolder;
using SealCommandOnTerminal = SealFolderOnTerminal;

TEST_F(SealCommand, seals_and_opens_files_quietly_and_empty_ones_too)
{
    for (const QByteArray &text : { content, QByteArray() }) {
        write(u"plain"_s, text);
        for (const QStringList &words : { QStringList { u"seal"_s, u"plain"_s, u"new"_s },
                                          QStringList { u"open"_s, u"new"_s, u"opened"_s } }) {
            const Outcome outcome = run(words[0], QStringList(u"--force"_s) + words.sliced(1));
            EXPECT_EQ(outcome.status, 0);
            EXPECT_EQ(outcome.output + outcome.errors, "");
        }
        EXPECT_TRUE(holds(u"new"_s, text));
        EXPECT_EQ(read(u"opened"_s), text);
    }
}

TEST_F(SealCommand, works_as_a_filter)
{
    const Outcome sealed = run(u"seal"_s, { u"-"_s, u"-"_s }, content);
    ASSERT_EQ(sealed.status, 0) << sealed.errors.constData();
    const Outcome opened = run(u"open"_s, { u"-"_s, u"-"_s }, sealed.output);
    EXPECT_EQ(opened.status, 0) << opened.errors.constData();
    EXPECT_EQ(opened.output, content);
}

TEST_F(SealCommand, the_result_has_the_sources_mode)
{
    for (const mode_t wanted : { 0600, 0644, 0755, 0440 }) {
        ASSERT_EQ(chmod(qPrintable(path(u"plain"_s)), wanted), 0);
        ASSERT_EQ(run(u"seal"_s, { u"--force"_s, u"plain"_s, u"new"_s }).status, 0);
        EXPECT_EQ(mode(u"new"_s), wanted);
        ASSERT_EQ(run(u"open"_s, { u"--force"_s, u"new"_s, u"opened"_s }).status, 0);
        EXPECT_EQ(mode(u"opened"_s), wanted);
    }
}

TEST_F(SealCommand, an_existing_file_is_replaced_only_by_force)
{
    write(u"old"_s, "precious");
    const Outcome refused = run(u"seal"_s, { u"plain"_s, u"old"_s });
    EXPECT_EQ(refused.status, 6);
    EXPECT_EQ(refused.errors,
              "pellarvine: " + path(u"old"_s).toUtf8() + ": exists; --force replaces it\n");
    EXPECT_EQ(read(u"old"_s), "precious");
    EXPECT_EQ(run(u"seal"_s, { u"--force"_s, u"plain"_s, u"old"_s }).status, 0);
    EXPECT_TRUE(holds(u"old"_s, content));
}

TEST_F(SealCommand, source_and_result_may_be_one_file)
{
    ASSERT_EQ(run(u"seal"_s, { u"--force"_s, u"plain"_s, u"plain"_s }).status, 0);
    EXPECT_EQ(read(u"plain"_s).first(4), QByteArray(":-)\0", 4));
    ASSERT_EQ(run(u"open"_s, { u"--force"_s, u"plain"_s, u"plain"_s }).status, 0);
    EXPECT_EQ(read(u"plain"_s), content);
}

TEST_F(SealCommand, each_fault_of_a_container_has_its_status_and_leaves_nothing)
{
    const QByteArray sealed = read(u"sealed"_s);
    QByteArray damaged = sealed;
    damaged[sealed.size() / 2] = char(damaged[sealed.size() / 2] ^ 1);
    const QByteArray tooShort = "not a sealed file, or cut short within its header";
    const std::tuple<QByteArray, int, QByteArray> faults[] = {
        { "#!/bin/sh\necho this is no container, whoever calls it one", 3, "not a sealed file" },
        { damaged, 4, "wrong passphrase or damaged" },
        { sealed.chopped(1), 4, "wrong passphrase or damaged" },
        { sealed.first(36), 4, "wrong passphrase or damaged" },
        { sealed.first(35), 5, tooShort },
        { "hello\n", 5, tooShort },
        { "", 5, tooShort },
    };
    write(u"old"_s, "precious");
    for (const auto &[container, status, cause] : faults) {
        write(u"sealed"_s, container);
        const Outcome toFile = run(u"open"_s, { u"--force"_s, u"sealed"_s, u"old"_s });
        EXPECT_EQ(toFile.status, status);
        EXPECT_EQ(toFile.errors, "pellarvine: " + path(u"sealed"_s).toUtf8() + ": " + cause + "\n");
        EXPECT_EQ(read(u"old"_s), "precious");
        EXPECT_EQ(names(), (QStringList { u"old"_s } + namesAtFirst));

        const Outcome toStream = run(u"open"_s, { u"-"_s, u"-"_s }, container);
        EXPECT_EQ(toStream.status, status);
        EXPECT_EQ(toStream.output, "");
        EXPECT_EQ(toStream.errors, "pellarvine: standard input: " + cause + "\n");
    }
    write(u"sealed"_s, sealed);
    write(u"passphrase"_s, "wrong");
    EXPECT_EQ(run(u"open"_s, { u"sealed"_s, u"new"_s }).status, 4);
}

TEST_F(SealCommand, a_malformed_text_under_a_right_tag_is_an_error)
{
    const Pellarvine::Data salts = Pellarvine::secureRandomData(2 * detail::saltLength);
    const Pellarvine::Data iv = Pellarvine::secureRandomData(detail::ivLength);
    const auto key = [&](qsizetype salt) {
        return detail::KeyGen::generateAES256(
                "correct horse", QByteArrayView(salts).sliced(salt, detail::saltLength));
    };
    detail::CryptorEngine engine(detail::CryptorOperation::encrypt, key(0), iv);
    const QByteArray unpadded = engine.feed(QByteArray(1 << 20, '\0'));
    for (const QByteArray &ciphertext : { unpadded, unpadded.chopped(3), QByteArray() }) {
        const QByteArray body =
                QByteArray(detail::containerMagic, detail::magicLength) + salts + iv + ciphertext;
        detail::HMAC tag(key(detail::saltLength));
        tag.feed(body);
        write(u"sealed"_s, body + tag.finalize());
        for (const QString &output : { u"new"_s, u"-"_s }) {
            const Outcome outcome = run(u"open"_s, { u"sealed"_s, output });
            EXPECT_EQ(outcome.status, 4);
            EXPECT_EQ(outcome.output, "");
            EXPECT_EQ(outcome.errors,
                      "pellarvine: " + path(u"sealed"_s).toUtf8()
                              + ": the passphrase is right, but the sealed text is malformed\n");
        }
        EXPECT_EQ(names(), namesAtFirst);
    }
}

TEST_F(SealCommand, a_missing_folder_for_temporary_files_is_named)
{
    const Outcome outcome = shell(u"TMPDIR=/nonexistent/folder pellarvine open $key sealed -"_s);
    EXPECT_EQ(outcome.status, 6);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors,
              "pellarvine: TMPDIR /nonexistent/folder: No such file or directory\n");
}

TEST_F(SealCommand, closed_standard_descriptors_do_not_become_files)
{
    EXPECT_EQ(shell(u"pellarvine open $key sealed new <&- >&- 2>&-"_s).status, 0);
    EXPECT_EQ(read(u"new"_s), content);
    EXPECT_EQ(shell(u"pellarvine open $key absent other <&- >&- 2>&-"_s).status, 6);
    const std::pair<QString, QByteArray> faults[] = {
        { u"pellarvine seal $key - other <&-"_s, "standard input: Bad file descriptor" },
        { u"pellarvine seal $key plain - >&-"_s, "standard output: Bad file descriptor" },
        { u"pellarvine digest plain >&-"_s, "standard output: Bad file descriptor" },
        { u"pellarvine --version >&-"_s, "standard output: Bad file descriptor" },
    };
    for (const auto &[script, message] : faults) {
        const Outcome outcome = shell(script);
        EXPECT_EQ(outcome.status, 6) << qPrintable(script);
        EXPECT_EQ(outcome.errors, "pellarvine: " + message + '\n');
    }
    EXPECT_EQ(names(), QStringList { u"new"_s } + namesAtFirst);
}

TEST_F(SealCommand, errors_of_the_system_are_one_line_that_names_the_file)
{
    const std::tuple<QStringList, QString, QByteArray> faults[] = {
        { { u"absent"_s, u"new"_s }, u"absent"_s, "No such file or directory" },
        { { u"."_s, u"new"_s }, u"."_s, "Is a directory" },
        { { u"plain"_s, u"."_s }, u"."_s, "Is a directory" },
        { { u"plain"_s, u"absent/new"_s }, u"absent/new"_s, "No such file or directory" },
    };
    for (const auto &[arguments, file, cause] : faults) {
        const Outcome outcome = run(u"seal"_s, arguments);
        EXPECT_EQ(outcome.status, 6);
        EXPECT_EQ(outcome.errors, "pellarvine: " + path(file).toUtf8() + ": " + cause + '\n');
    }
    EXPECT_EQ(names(), namesAtFirst);
}

TEST_F(SealCommand, bad_usage_has_status_2)
{
    const QList<QStringList> cases {
        {},
        { u"plain"_s },
        { u"plain"_s, u"new"_s, u"more"_s },
        { u"--nonsense"_s, u"plain"_s, u"new"_s },
        { u"--passphrase-fd=0"_s, u"plain"_s, u"new"_s }, // with --passphrase-file
    };
    for (const QStringList &arguments : cases) {
        const Outcome outcome = run(u"seal"_s, arguments);
        EXPECT_EQ(outcome.status, 2) << qPrintable(arguments.join(u' '));
        EXPECT_EQ(outcome.errors.count('\n'), 1) << outcome.errors.constData();
    }
    EXPECT_EQ(names(), namesAtFirst);
}

TEST_F(SealCommand, a_closed_pipe_and_a_full_disk_are_errors)
{
    const std::pair<QString, QByteArray> faults[] = {
        { u"pellarvine seal $key plain - >/dev/full"_s,
          "standard output: No space left on device" },
        // The limit on a file's size stands in for a full disk; the result would be a MiB.
        { u"ulimit -f 100; pellarvine open $key sealed new"_s, "new: File too large" },
        { u"pellarvine seal $key plain - | true; exit ${PIPESTATUS[0]}"_s,
          "standard output: Broken pipe" },
    };
    for (const auto &[script, message] : faults) {
        const Outcome outcome = shell(script);
        EXPECT_EQ(outcome.status, 6) << qPrintable(script);
        EXPECT_EQ(outcome.errors, "pellarvine: " + message + '\n');
        EXPECT_EQ(names(), namesAtFirst);
    }
}

#if !defined(PELLARVINE_SANITIZED) // whose own memory is counted too
TEST_F(SealCommand, takes_the_same_memory_whatever_the_length)
{
    ASSERT_TRUE(QFile::resize(path(u"plain"_s), qint64(192) << 20)); // zeros that take no disk
    for (const QStringList &arguments :
         { QStringList { u"seal"_s, path(u"plain"_s), path(u"new"_s) },
           QStringList { u"open"_s, path(u"new"_s), path(u"opened"_s) } }) {
        const QByteArray program = programPath(u"pellarvine"_s).toUtf8();
        const QByteArray passphrase = path(u"passphrase"_s).toUtf8();
        const QByteArray words[] = { arguments[0].toUtf8(), arguments[1].toUtf8(),
                                     arguments[2].toUtf8() };
        const pid_t child = fork();
        if (child == 0) {
            execl(program, program.data(), words[0].data(), "--passphrase-file", passphrase.data(),
                  words[1].data(), words[2].data(), nullptr);
            _exit(127);
        }
        ASSERT_GT(child, 0) << std::strerror(errno);
        int status = -1;
        rusage usage = {};
        ASSERT_EQ(wait4(child, &status, 0, &usage), child);
        EXPECT_EQ(status, 0);
        EXPECT_LT(usage.ru_maxrss, 64 * 1024) << "KiB";
    }
}
#endif

TEST_F(SealCommandOnTerminal, shows_progress_on_a_terminal_unless_it_is_to_be_quiet)
{
    // Zeros that take no disk, and longer than the progress waits before it shows.
    ASSERT_TRUE(QFile::resize(path(u"plain"_s), qint64(512) << 20));
    const QStringList arguments { u"seal"_s, u"--passphrase-file"_s, path(u"passphrase"_s),
                                  path(u"plain"_s), path(u"new"_s) };
    Terminal shown(arguments);
    EXPECT_TRUE(shown.sees(" of 512.0 MiB, "));
    EXPECT_TRUE(shown.sees("/s, "));
    EXPECT_TRUE(shown.sees(" left"));
    EXPECT_EQ(shown.finish(), 0);
    EXPECT_TRUE(shown.shown().endsWith("\r\033[K")) << "the line is taken away at the end";

    Terminal quiet(arguments + QStringList { u"--quiet"_s, u"--force"_s });
    EXPECT_EQ(quiet.finish(), 0);
    EXPECT_EQ(quiet.shown(), "");
}

TEST_F(SealCommandOnTerminal, a_terminal_gets_no_sealed_bytes)
{
    Terminal seal(
            { u"seal"_s, u"--passphrase-file"_s, path(u"passphrase"_s), path(u"plain"_s), u"-"_s });
    EXPECT_EQ(seal.finish(), 2);
    EXPECT_TRUE(seal.shown().contains("standard output is a terminal"));
}
