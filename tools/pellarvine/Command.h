// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

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

/// One sub-command: a file of its own, listed in commands().
struct Command
{
    const char *name;
    const char *summary;

    /// Runs with the arguments behind the sub-command's name. Throws CommandError.
    void (*run)(const QStringList &arguments);

    /// Whether it runs in a QGuiApplication, which fonts need and which takes longer to start.
    bool needsFonts = false;
};

void runSeal(const QStringList &arguments);
void runOpen(const QStringList &arguments);
void runDigest(const QStringList &arguments);
void runColor(const QStringList &arguments);
void runMarkup(const QStringList &arguments);

/// All sub-commands, in the order of the help.
const QList<Command> &commands();

/// The one of that name; null if there is none.
const Command *commandNamed(const QString &name);

/// Parses the arguments of sub-command `name`. Prints the help and leaves for --help; throws
/// CommandError with badUsage for what it does not know.
void parse(QCommandLineParser &parser, const QString &name, const QStringList &arguments);
