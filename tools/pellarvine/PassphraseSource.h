// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Signals;
QT_FORWARD_DECLARE_CLASS(QCommandLineParser)

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

/// Adds --passphrase-file and --passphrase-fd.
void addPassphraseOptions(QCommandLineParser &parser);

enum class Prompt {
    once,
    twice, ///< a mistyped passphrase would lock the file for good
};

/// The passphrase from where the options say, else from the terminal, without echo. Throws
/// CommandError.
SecretText readPassphrase(const QCommandLineParser &parser, Prompt prompt, const Signals &signals);
