// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QCommandLineParser>

#include <functional>
#include <stdexcept>

/// How a run ends. The values are the exit statuses that the manual page promises.
enum class ExitStatus {
    success = 0,
    badUsage = 2,
    invalidFileFormat = 3,
    invalidHMAC = 4,
    truncatedFile = 5,
    systemError = 6,
};

/// A run that failed: one line for standard error, and the exit status. The line is bytes, since it
/// names files, whose names need not be text.
class CommandError : public std::runtime_error
{
public:
    CommandError(ExitStatus status, const QByteArray &message)
        : std::runtime_error(message.toStdString())
        , m_status(status)
    { }
    ExitStatus status() const { return m_status; }

private:
    ExitStatus m_status;
};

/// Options and names of files of a sub-command. QCommandLineParser takes text; this takes and gives
/// the bytes that the arguments are.
class CommandLine : private QCommandLineParser
{
public:
    CommandLine(const char *command, const QString &description);

    using QCommandLineParser::addOption;
    using QCommandLineParser::addOptions;
    using QCommandLineParser::addPositionalArgument;
    using QCommandLineParser::isSet;

    /// Prints the help and leaves for --help; throws CommandError with badUsage for an unknown
    /// option and for an empty name of a file.
    void parse(const QByteArrayList &arguments);

    QByteArray value(const QCommandLineOption &option) const;
    /// Of an option that may be given several times.
    QByteArrayList values(const QCommandLineOption &option) const;
    QByteArrayList operands() const;

    /// The sub-command's name.
    const QByteArray &command() const { return m_command; }

private:
    QByteArray m_command;
};

/// The body of main(): the exit status of `run`. What it throws is said on standard error.
int exitStatusOf(const std::function<void()> &run);
