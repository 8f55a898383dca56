// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

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

/// A run that failed: one line for standard error, and the exit status.
class CommandError : public std::runtime_error
{
public:
    CommandError(ExitStatus status, const QString &message)
        : std::runtime_error(message.toStdString())
        , m_status(status)
    { }
    ExitStatus status() const { return m_status; }

private:
    ExitStatus m_status;
};

/// Parses the arguments of sub-command `name`. Prints the help and leaves for --help; throws
/// CommandError with badUsage for what it does not know.
void parse(QCommandLineParser &parser, const QString &name, const QStringList &arguments);

/// The body of main(): the exit status of `run`. What it throws is said on standard error.
int exitStatusOf(const std::function<void()> &run);
