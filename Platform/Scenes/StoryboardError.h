// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <exception>

namespace NS {

/// An error in a storyboard file, with its place. A plain value, for any thread.
///
///     try {
///         NS::Storyboard::storyboardWithName(u"Mail"_s);
///     } catch (const NS::StoryboardError &error) {
///         qWarning("%s", error.what()); // :/Mail.storyboard:12:5: there is no scene "draft"
///     }
class PELLARVINE_EXPORT StoryboardError : public std::exception
{
public:
    /// Without a place if `line` is 0.
    StoryboardError(const QString &fileName, qint64 line, qint64 column, const QString &problem);
    ~StoryboardError() override;

    /// The path of the file.
    const QString &fileName() const noexcept { return m_fileName; }
    /// @{
    /// From 1; 0 if the file cannot be read.
    qint64 line() const noexcept { return m_line; }
    qint64 column() const noexcept { return m_column; }
    /// @}
    /// The message, untranslated.
    const QString &problem() const noexcept { return m_problem; }

    /// Place and message in one line, for logs.
    const char *what() const noexcept override;

private:
    QString m_fileName;
    qint64 m_line;
    qint64 m_column;
    QString m_problem;
    QByteArray m_text;
};

/// Thrown if the storyboard has no scene or segue of a name. A plain value, for any thread.
class PELLARVINE_EXPORT UnknownIdentifierError : public std::exception
{
public:
    /// `what` is missing in `where`: "scene", "Mail.storyboard".
    UnknownIdentifierError(const QString &what, const QString &identifier, const QString &where,
                           const QStringList &knownIdentifiers);
    ~UnknownIdentifierError() override;

    /// The unknown name.
    const QString &identifier() const noexcept { return m_identifier; }
    /// The names that the storyboard has, in the order of the file.
    const QStringList &knownIdentifiers() const noexcept { return m_knownIdentifiers; }

    /// All of it in one line, for logs.
    const char *what() const noexcept override;

private:
    QString m_identifier;
    QStringList m_knownIdentifiers;
    QByteArray m_text;
};

} // namespace NS
