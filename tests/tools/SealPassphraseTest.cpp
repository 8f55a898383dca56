// SPDX-License-Identifier: MIT
#include "SealFolder.h"
#include "Terminal.h"

#include <QRegularExpression>

#include <tuple>

using SealPassphrase = SealFolder;
using SealPassphraseOnTerminal = SealFolderOnTerminal;

TEST_F(SealPassphrase, the_passphrase_comes_from_a_descriptor_too_less_one_newline)
{
    const QStringList files { path(u"sealed"_s), u"-"_s };
    const auto open = [&](const QByteArray &input) {
        return runProgram(u"pellarvine"_s,
                          QStringList { u"open"_s, u"--passphrase-fd"_s, u"0"_s } + files, input);
    };
    EXPECT_EQ(open("correct horse\n").output, content);
    EXPECT_EQ(open("correct horse").output, content);
    EXPECT_EQ(open("\xff").status, 6);
}

TEST_F(SealPassphrase, the_text_to_seal_is_not_taken_for_the_passphrase)
{
    for (const QString &source :
         { u"--passphrase-fd 0"_s, u"--passphrase-file -"_s, u"--passphrase-file /dev/stdin"_s }) {
        for (const QString &input : { u"-"_s, u"/dev/stdin"_s }) {
            const Outcome outcome = shell(
                    u"(cat passphrase plain) | pellarvine seal %1 %2 new"_s.arg(source, input));
            EXPECT_EQ(outcome.status, 2) << qPrintable(source);
            EXPECT_EQ(outcome.errors,
                      "pellarvine: standard input cannot be both IN and the passphrase\n");
        }
        EXPECT_EQ(names(), namesAtFirst);
        EXPECT_EQ(shell(u"pellarvine seal %1 plain new <passphrase"_s.arg(source)).status, 0);
        EXPECT_TRUE(holds(u"new"_s, content));
        ASSERT_TRUE(QFile::remove(path(u"new"_s)));
    }
}

TEST_F(SealPassphrase, is_one_line_in_any_form_that_editors_write)
{
    for (const char *form : { "correct horse\r\n",
                              "\xEF\xBB\xBF"
                              "correct horse\n",
                              "\xEF\xBB\xBF"
                              "correct horse" }) {
        write(u"passphrase"_s, form);
        EXPECT_EQ(run(u"seal"_s, { u"--force"_s, u"plain"_s, u"new"_s }).status, 0);
        EXPECT_TRUE(holds(u"new"_s, content)) << form;
    }
    ASSERT_TRUE(QFile::remove(path(u"new"_s)));
    for (const char *lines : { "correct horse\n\n", "correct horse\nbattery\n" }) {
        write(u"passphrase"_s, lines);
        for (const QString &command : { u"seal"_s, u"open"_s }) {
            const Outcome outcome = run(command, { u"sealed"_s, u"new"_s });
            EXPECT_EQ(outcome.status, 2);
            EXPECT_EQ(outcome.errors,
                      "pellarvine: " + path(u"passphrase"_s).toUtf8()
                              + ": has more than one line; a passphrase is a single line\n");
        }
    }
    EXPECT_EQ(names(), namesAtFirst);
}

TEST_F(SealPassphrase, an_empty_one_seals_only_on_demand)
{
    for (const char *empty : { "", "\n", "\r\n" }) {
        write(u"passphrase"_s, empty);
        const Outcome outcome = run(u"seal"_s, { u"plain"_s, u"new"_s });
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.errors,
                  "pellarvine: the passphrase is empty; --allow-empty-passphrase allows that\n");
        EXPECT_EQ(names(), namesAtFirst);
    }
    EXPECT_EQ(run(u"seal"_s, { u"--allow-empty-passphrase"_s, u"plain"_s, u"new"_s }).status, 0);
    EXPECT_EQ(run(u"open"_s, { u"new"_s, u"opened"_s }).status, 0);
    EXPECT_EQ(read(u"opened"_s), content);
}

TEST_F(SealPassphrase, a_program_asks_for_it)
{
    write(u"ask"_s, "#!/bin/sh\necho \"$1\" >>asked\ncat\necho correct horse\n");
    write(u"fail"_s, "#!/bin/sh\necho correct horse\nexit 1\n");
    write(u"differ"_s, "#!/bin/sh\necho \"$1\"\n");
    for (const QString &name : { u"ask"_s, u"fail"_s, u"differ"_s })
        ASSERT_EQ(chmod(qPrintable(path(name)), 0700), 0);
    // The program does not get the data to seal.
    Outcome outcome = shell(u"pellarvine seal --askpass ./ask - new"_s, content);
    EXPECT_EQ(outcome.status, 0) << outcome.errors.constData();
    EXPECT_EQ(read(u"asked"_s), "Passphrase: \nOnce more: \n");
    EXPECT_TRUE(holds(u"new"_s, content));
    outcome = shell(u"PELLARVINE_ASKPASS=./ask pellarvine open new -"_s);
    EXPECT_EQ(outcome.output, content);
    EXPECT_EQ(read(u"asked"_s), "Passphrase: \nOnce more: \nPassphrase: \n");
    // An option comes before the environment.
    EXPECT_EQ(shell(u"PELLARVINE_ASKPASS=./fail pellarvine open $key new -"_s).status, 0);

    const std::tuple<QString, int, QByteArray> faults[] = {
        { u"./fail"_s, 6, "./fail: failed to ask for a passphrase" },
        { u"./absent"_s, 6, "./absent: No such file or directory" },
        { u"./differ"_s, 2, "the two passphrases differ" },
        { u"./ask $key"_s, 2,
          "--passphrase-file, --passphrase-fd, --askpass and --generate cannot be used together" },
    };
    for (const auto &[program, status, message] : faults) {
        outcome = shell(u"pellarvine seal --askpass "_s + program + u" plain other"_s);
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(outcome.errors, "pellarvine: " + message + '\n');
    }
    EXPECT_FALSE(names().contains(u"other"_s));
}

TEST_F(SealPassphrase, an_empty_name_is_bad_usage)
{
    for (const QString &script :
         { u"pellarvine seal $key '' new"_s, u"pellarvine open $key sealed ''"_s,
           u"pellarvine seal --passphrase-file '' plain new"_s, u"pellarvine digest ''"_s }) {
        const Outcome outcome = shell(script);
        EXPECT_EQ(outcome.status, 2) << qPrintable(script);
        EXPECT_TRUE(outcome.errors.contains("empty")) << outcome.errors.constData();
    }
    EXPECT_EQ(names(), namesAtFirst);
}

TEST_F(SealPassphraseOnTerminal, asks_twice_without_echo_to_seal_and_once_to_open)
{
    Terminal seal({ u"seal"_s, path(u"plain"_s), path(u"new"_s) });
    ASSERT_TRUE(seal.sees("Passphrase: "));
    seal.type("tr0ub4dor\n");
    ASSERT_TRUE(seal.sees("Once more: "));
    seal.type("tr0ub4dor\n");
    EXPECT_EQ(seal.finish(), 0) << seal.shown().constData();
    EXPECT_FALSE(seal.shown().contains("tr0ub4dor"));
    EXPECT_EQ(Pellarvine::Decryptor::decrypt(read(u"new"_s), u"tr0ub4dor"_s), content);

    Terminal open({ u"open"_s, path(u"new"_s), path(u"opened"_s) });
    ASSERT_TRUE(open.sees("Passphrase: "));
    open.type("tr0ub4dor\n");
    EXPECT_EQ(open.finish(), 0) << open.shown().constData();
    EXPECT_EQ(read(u"opened"_s), content);
}

TEST_F(SealPassphraseOnTerminal, typed_lines_that_are_none_seal_nothing)
{
    const std::pair<QByteArrayList, QByteArray> rows[] = {
        { { "one\n", "other\n" }, "the two passphrases differ" },
        // The terminal itself cuts a line that is so long.
        { { QByteArray(4100, 'x') + '\n' }, "the passphrase is too long for the terminal" },
        { { "\n" }, "the passphrase is empty" },
    };
    for (const auto &[lines, message] : rows) {
        Terminal seal({ u"seal"_s, path(u"plain"_s), path(u"new"_s) });
        QByteArray question = "Passphrase: ";
        for (const QByteArray &line : lines) {
            ASSERT_TRUE(seal.sees(question));
            seal.type(line);
            question = "Once more: ";
        }
        EXPECT_EQ(seal.finish(), 2);
        EXPECT_TRUE(seal.shown().contains(message)) << seal.shown().constData();
        EXPECT_EQ(names(), namesAtFirst);
    }
}

TEST_F(SealPassphraseOnTerminal, a_generated_passphrase_is_shown_once_and_opens_the_file)
{
    Terminal seal({ u"seal"_s, u"--generate"_s, path(u"plain"_s), path(u"new"_s) });
    ASSERT_EQ(seal.finish(), 0) << seal.shown().constData();
    const QRegularExpressionMatch shown =
            QRegularExpression(u"^Passphrase: ([a-z]+(?:-[a-z]+){5})\r\n"_s)
                    .match(QString::fromUtf8(seal.shown()));
    ASSERT_TRUE(shown.hasMatch()) << seal.shown().constData();
    EXPECT_EQ(Pellarvine::Decryptor::decrypt(read(u"new"_s), shown.captured(1)), content);
}

TEST_F(SealPassphrase, is_generated_for_a_terminal_alone)
{
    const auto seal = [&](const QString &options) {
        return shell(u"setsid -w pellarvine seal %1 plain new <passphrase"_s.arg(options));
    };
    EXPECT_EQ(seal(u"--generate"_s).errors,
              "pellarvine: there is no terminal to print the generated passphrase\n");
    EXPECT_EQ(seal(u"--generate --passphrase-fd 0"_s).status, 2);
    EXPECT_EQ(shell(u"pellarvine open --generate sealed new"_s).status, 2);
    EXPECT_EQ(names(), namesAtFirst);
}
