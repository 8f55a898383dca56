// SPDX-License-Identifier: MIT
#include "Program.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <pty.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// A folder with a passphrase file, a plain and a sealed file, in which the command runs.
class SealCommand : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        write(u"passphrase"_s, "correct horse\n");
        write(u"plain"_s, content);
        write(u"sealed"_s, Pellarvine::Encryptor::encrypt(content, u"correct horse"_s));
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }

    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }

    mode_t mode(const QString &name) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(qPrintable(path(name)), &status), 0);
        return status.st_mode & 07777;
    }

    QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    // Runs "pellarvine COMMAND --passphrase-file passphrase ARGUMENTS..." in the folder; names of
    // files are resolved there.
    Outcome run(const QString &command, QStringList arguments, const QByteArray &input = {}) const
    {
        for (QString &argument : arguments) {
            if (!argument.startsWith(u'-'))
                argument = path(argument);
        }
        return runProgram(u"pellarvine"_s,
                          QStringList { command, u"--passphrase-file"_s, path(u"passphrase"_s) }
                                  + arguments,
                          input);
    }

    const QByteArray content = QByteArray("All of it. ").repeated(100000);
    const QStringList namesAtFirst { u"passphrase"_s, u"plain"_s, u"sealed"_s };

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(SealCommand, seals_and_opens_files_quietly)
{
    Outcome outcome = run(u"seal"_s, { u"plain"_s, u"new"_s });
    EXPECT_EQ(outcome.status, 0) << outcome.errors.constData();
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(Pellarvine::Decryptor::decrypt(read(u"new"_s), u"correct horse"_s), content);

    outcome = run(u"open"_s, { u"new"_s, u"opened"_s });
    EXPECT_EQ(outcome.status, 0) << outcome.errors.constData();
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(read(u"opened"_s), content);
}

TEST_F(SealCommand, an_empty_file_stays_an_empty_file)
{
    write(u"empty"_s, {});
    ASSERT_EQ(run(u"seal"_s, { u"empty"_s, u"new"_s }).status, 0);
    EXPECT_EQ(read(u"new"_s).size(), 84);
    ASSERT_EQ(run(u"open"_s, { u"new"_s, u"opened"_s }).status, 0);
    EXPECT_EQ(read(u"opened"_s), "");
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
    EXPECT_EQ(Pellarvine::Decryptor::decrypt(read(u"old"_s), u"correct horse"_s), content);
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
    struct Case
    {
        QByteArray container;
        int status;
        QByteArray cause;
    };
    const Case cases[] = {
        { "#!/bin/sh\necho this is no container, whoever calls it one", 3, "not a sealed file" },
        { damaged, 4, "wrong passphrase or damaged" },
        { sealed.chopped(1), 4, "wrong passphrase or damaged" },
        { sealed.first(36), 4, "wrong passphrase or damaged" },
        { sealed.first(35), 5, "truncated, it ends within its header" },
        { "", 5, "truncated, it ends within its header" },
    };
    write(u"old"_s, "precious");
    for (const Case &each : cases) {
        write(u"sealed"_s, each.container);
        const Outcome toFile = run(u"open"_s, { u"--force"_s, u"sealed"_s, u"old"_s });
        EXPECT_EQ(toFile.status, each.status);
        EXPECT_EQ(toFile.errors,
                  "pellarvine: " + path(u"sealed"_s).toUtf8() + ": " + each.cause + "\n");
        EXPECT_EQ(read(u"old"_s), "precious");
        EXPECT_EQ(names(), (QStringList { u"old"_s } + namesAtFirst));

        const Outcome toStream = run(u"open"_s, { u"-"_s, u"-"_s }, each.container);
        EXPECT_EQ(toStream.status, each.status);
        EXPECT_EQ(toStream.output, "");
        EXPECT_EQ(toStream.errors, "pellarvine: standard input: " + each.cause + "\n");
    }
    write(u"sealed"_s, sealed);
    write(u"passphrase"_s, "wrong");
    EXPECT_EQ(run(u"open"_s, { u"sealed"_s, u"new"_s }).status, 4);
}

TEST_F(SealCommand, errors_of_the_system_are_one_line_that_names_the_file)
{
    struct Case
    {
        QStringList arguments;
        QString file;
        QByteArray cause;
    };
    const Case cases[] = {
        { { u"absent"_s, u"new"_s }, path(u"absent"_s), "No such file or directory" },
        { { u"."_s, u"new"_s }, path(u"."_s), "Is a directory" },
        { { u"plain"_s, u"."_s }, path(u"."_s), "Is a directory" },
        { { u"plain"_s, u"absent/new"_s }, path(u"absent/new"_s), "No such file or directory" },
    };
    for (const Case &each : cases) {
        const Outcome outcome = run(u"seal"_s, each.arguments);
        EXPECT_EQ(outcome.status, 6);
        EXPECT_EQ(outcome.errors, "pellarvine: " + each.file.toUtf8() + ": " + each.cause + "\n");
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
        { u"--passphrase-fd"_s, u"0"_s, u"plain"_s, u"new"_s }, // with --passphrase-file
    };
    for (const QStringList &arguments : cases) {
        const Outcome outcome = run(u"seal"_s, arguments);
        EXPECT_EQ(outcome.status, 2) << qPrintable(arguments.join(u' '));
        EXPECT_EQ(outcome.errors.count('\n'), 1) << outcome.errors.constData();
    }
    EXPECT_EQ(names(), namesAtFirst);
}

TEST_F(SealCommand, the_passphrase_comes_from_a_descriptor_too_less_one_newline)
{
    const QStringList files { path(u"sealed"_s), u"-"_s };
    const auto open = [&](const QByteArray &input) {
        return runProgram(u"pellarvine"_s,
                          QStringList { u"open"_s, u"--passphrase-fd"_s, u"0"_s } + files, input);
    };
    EXPECT_EQ(open("correct horse\n").output, content);
    EXPECT_EQ(open("correct horse").output, content);
    EXPECT_EQ(open("correct horse\n\n").status, 4);
    EXPECT_EQ(open("\xff").status, 6);
}

TEST_F(SealCommand, a_closed_pipe_and_a_full_disk_are_errors)
{
    const QString command = u"exec %1 seal --passphrase-file %2 %3 - >/dev/full"_s.arg(
            programPath(u"pellarvine"_s), path(u"passphrase"_s), path(u"plain"_s));
    QProcess full;
    full.start(u"sh"_s, { u"-c"_s, command });
    ASSERT_TRUE(full.waitForFinished());
    EXPECT_EQ(full.exitCode(), 6);
    EXPECT_EQ(full.readAllStandardError(),
              "pellarvine: standard output: No space left on device\n");

    // The limit on a file's size stands in for a full disk; the result would be a MiB.
    QProcess limited;
    limited.start(u"sh"_s,
                  { u"-c"_s, u"ulimit -f 100; exec %1 open --passphrase-file %2 %3 %4"_s.arg(
                                     programPath(u"pellarvine"_s), path(u"passphrase"_s),
                                     path(u"sealed"_s), path(u"new"_s)) });
    ASSERT_TRUE(limited.waitForFinished());
    EXPECT_EQ(limited.exitCode(), 6);
    EXPECT_EQ(limited.readAllStandardError(),
              "pellarvine: " + path(u"new"_s).toUtf8() + ": File too large\n");
    EXPECT_EQ(names(), namesAtFirst);

    QProcess closed;
    closed.start(
            u"bash"_s,
            { u"-c"_s,
              u"%1 seal --passphrase-file %2 %3 - | true; exit ${PIPESTATUS[0]}"_s.arg(
                      programPath(u"pellarvine"_s), path(u"passphrase"_s), path(u"plain"_s)) });
    ASSERT_TRUE(closed.waitForFinished());
    EXPECT_EQ(closed.exitCode(), 6);
    EXPECT_EQ(closed.readAllStandardError(), "pellarvine: standard output: Broken pipe\n");
}

TEST_F(SealCommand, a_signal_ends_it_and_leaves_nothing)
{
    for (const int signal : { SIGINT, SIGTERM, SIGHUP }) {
        QProcess process;
        process.start(programPath(u"pellarvine"_s),
                      { u"seal"_s, u"--passphrase-file"_s, path(u"passphrase"_s), u"-"_s,
                        path(u"new"_s) });
        ASSERT_TRUE(process.waitForStarted());
        process.write(content);
        // A pipe holds 64 KiB, so that the command has opened its output by the time it has taken
        // a MiB. It then waits for more.
        while (process.bytesToWrite() > 0)
            ASSERT_TRUE(process.waitForBytesWritten());
        const pid_t pid = pid_t(process.processId());
        ASSERT_GT(pid, 0); // 0 is this process's own group
        ASSERT_EQ(kill(pid, signal), 0);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 6);
        EXPECT_EQ(process.readAllStandardError(), "pellarvine: interrupted\n");
        EXPECT_EQ(names(), namesAtFirst);
    }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
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

namespace {

// The command with a terminal of its own, which takes what a person would type.
class Terminal
{
public:
    explicit Terminal(const QStringList &arguments)
    {
        QList<QByteArray> words { programPath(u"pellarvine"_s).toUtf8() };
        for (const QString &argument : arguments)
            words.append(argument.toUtf8());
        std::vector<char *> pointers;
        for (QByteArray &word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        m_child = forkpty(&m_descriptor, nullptr, nullptr, nullptr);
        if (m_child == 0) {
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        if (m_child < 0)
            ADD_FAILURE() << "forkpty: " << std::strerror(errno);
    }
    ~Terminal()
    {
        // kill() takes -1 for every process. After finish() the number may be another process's.
        if (m_child > 0) {
            kill(m_child, SIGKILL);
            waitpid(m_child, nullptr, 0);
        }
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    // Reads until `text` has been shown; false if the command ended without.
    bool sees(const QByteArray &text)
    {
        while (!m_shown.contains(text)) {
            char byte = 0;
            if (::read(m_descriptor, &byte, 1) != 1)
                return false;
            m_shown += byte;
        }
        return true;
    }

    void type(const QByteArray &text) const
    {
        EXPECT_EQ(::write(m_descriptor, text.data(), std::size_t(text.size())), text.size());
    }

    // Reads to the end and gives the exit status.
    int finish()
    {
        char byte = 0;
        while (::read(m_descriptor, &byte, 1) == 1)
            m_shown += byte;
        int status = 0;
        if (m_child < 0 || waitpid(m_child, &status, 0) != m_child)
            return -1;
        m_child = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    const QByteArray &shown() const { return m_shown; }

private:
    int m_descriptor = -1;
    pid_t m_child = -1;
    QByteArray m_shown;
};

class SealCommandOnTerminal : public SealCommand
{
protected:
    void SetUp() override
    {
        int terminal = -1;
        int other = -1;
        if (openpty(&terminal, &other, nullptr, nullptr, nullptr) != 0)
            GTEST_SKIP() << "no pseudo-terminal can be made: " << std::strerror(errno);
        close(terminal);
        close(other);
        SealCommand::SetUp();
    }
};

} // namespace

TEST_F(SealCommandOnTerminal, asks_twice_without_echo_to_seal_and_once_to_open)
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

TEST_F(SealCommandOnTerminal, two_passphrases_that_differ_seal_nothing)
{
    Terminal seal({ u"seal"_s, path(u"plain"_s), path(u"new"_s) });
    ASSERT_TRUE(seal.sees("Passphrase: "));
    seal.type("one\n");
    ASSERT_TRUE(seal.sees("Once more: "));
    seal.type("other\n");
    EXPECT_EQ(seal.finish(), 2);
    EXPECT_TRUE(seal.shown().contains("the two passphrases differ"));
    EXPECT_EQ(names(), namesAtFirst);
}

TEST_F(SealCommandOnTerminal, an_interrupted_question_leaves_nothing)
{
    Terminal seal({ u"seal"_s, path(u"plain"_s), path(u"new"_s) });
    ASSERT_TRUE(seal.sees("Passphrase: "));
    seal.type("half\x03"); // Ctrl+C
    EXPECT_EQ(seal.finish(), 6);
    EXPECT_TRUE(seal.shown().contains("pellarvine: interrupted"));
    EXPECT_EQ(names(), namesAtFirst);
}

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
