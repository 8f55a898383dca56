// SPDX-License-Identifier: MIT
#include "Scenes/StoryboardError.h"

using namespace Qt::StringLiterals;

namespace NS {

StoryboardError::StoryboardError(const QString &fileName, qint64 line, qint64 column,
                                 const QString &problem)
    : m_fileName(fileName)
    , m_line(line)
    , m_column(column)
    , m_problem(problem)
    , m_text(line > 0 ? u"%1:%2:%3: %4"_s.arg(fileName).arg(line).arg(column).arg(problem).toUtf8()
                      : u"%1: %2"_s.arg(fileName, problem).toUtf8())
{ }

StoryboardError::~StoryboardError() = default;

const char *StoryboardError::what() const noexcept
{
    return m_text.constData();
}

UnknownIdentifierError::UnknownIdentifierError(const QString &what, const QString &identifier,
                                               const QString &where,
                                               const QStringList &knownIdentifiers)
    : m_identifier(identifier)
    , m_knownIdentifiers(knownIdentifiers)
    , m_text(u"%1 has no %2 \"%3\" (%4)"_s
                     .arg(where, what, identifier,
                          knownIdentifiers.isEmpty() ? u"it has none"_s
                                                     : knownIdentifiers.join(u", "_s))
                     .toUtf8())
{ }

UnknownIdentifierError::~UnknownIdentifierError() = default;

const char *UnknownIdentifierError::what() const noexcept
{
    return m_text.constData();
}

} // namespace NS
