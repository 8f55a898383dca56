// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QCommandLineParser>

#include <functional>
#include <stdexcept>

/// The exit statuses. The manual page documents the values.
enum class ExitStatus {
    success = 0,
    badUsage = 2,
    invalidFileFormat = 3,
    invalidHMAC = 4,
    truncatedFile = 5,
    systemError = 6,
};

/// A failed run: one line for standard error, and the exit status. The line consists of bytes,
/// because names of files need not be text.
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

/// Options and file names of a sub-command, as bytes. QCommandLineParser takes text.
class CommandLine : private QCommandLineParser
{
public:
    CommandLine(const char *command, const QString &description);

    using QCommandLineParser::addOption;
    using QCommandLineParser::addOptions;
    using QCommandLineParser::addPositionalArgument;
    using QCommandLineParser::isSet;

    /// Prints the help and exits for --help. Throws CommandError with badUsage for an unknown
    /// option and for an empty file name.
    void parse(const QByteArrayList &arguments);

    QByteArray value(const QCommandLineOption &option) const;
    /// All values of an option that may occur several times.
    QByteArrayList values(const QCommandLineOption &option) const;
    QByteArrayList operands() const;

    /// The sub-command's name.
    const QByteArray &command() const { return m_command; }

private:
    QByteArray m_command;
};

/// The body of main(). Returns the exit status of `run`, and prints an exception on standard error.
int exitStatusOf(const std::function<void()> &run);
