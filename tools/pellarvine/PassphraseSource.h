// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <QByteArray>
#include <QCommandLineOption>
#include <QString>

#include <optional>

class CommandLine;
class Signals;

/// A passphrase in memory, wiped by the destructor.
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
    twice, ///< because nobody could open a file with a mistyped passphrase
};

/// Reads the passphrase according to the options. Without options it comes from the program in
/// PELLARVINE_ASKPASS, or else from the terminal, without echo.
class PassphraseSource
{
public:
    /// Adds the options to `line`, which outlives the source.
    PassphraseSource(CommandLine &line, Prompt prompt);

    /// Throws CommandError if the options contradict each other, or if the passphrase would be read
    /// from the descriptor of `input`.
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
