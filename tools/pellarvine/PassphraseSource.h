// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <QByteArray>
#include <QCommandLineOption>
#include <QString>

#include <optional>

class CommandLine;
class Signals;

/// A passphrase in memory, wiped when it goes.
class SecretText
{
public:
    explicit SecretText(QString text)
        : m_text(std::move(text))
    { }
    SecretText(SecretText &&other) noexcept = default;
    SecretText &operator=(SecretText &&other) noexcept = default;
    ~SecretText();

    QStringView view() const { return m_text; }

private:
    QString m_text;
};

enum class Prompt {
    once,
    twice, ///< a mistyped passphrase would lock the file for good
};

/// The options that say where the passphrase comes from, and reading it from there. Without them it
/// comes from the program that PELLARVINE_ASKPASS names, else from the terminal, without echo.
class PassphraseSource
{
public:
    /// Adds the options to `line`, which has to outlive the source.
    PassphraseSource(CommandLine &line, Prompt prompt);

    /// Throws CommandError if the options contradict each other, or if the passphrase would come
    /// from the descriptor that `input` is.
    void check(const QByteArray &input) const;

    /// Throws CommandError, Interrupted.
    SecretText read(const Signals &signals) const;

private:
    SecretText askOnTerminal(const Signals &signals) const;
    SecretText generate() const;
    SecretText askByProgram(const QByteArray &program, const Signals &signals) const;
    template <typename Ask>
    SecretText askFor(Ask ask) const;
    SecretText checked(SecretText passphrase) const;
    std::optional<int> descriptor() const;

    CommandLine &m_line;
    Prompt m_prompt;
    QCommandLineOption m_file;
    QCommandLineOption m_descriptor;
    QCommandLineOption m_program;
    QCommandLineOption m_generate;
    QCommandLineOption m_allowEmpty;
};
