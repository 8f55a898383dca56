// SPDX-License-Identifier: MIT
#include "Scenes/NibError.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

NibError::NibError(Reason reason, QString file, int line, int column, QString object, QString name,
                   const QString &message)
    : m_reason(reason)
    , m_file(std::move(file))
    , m_line(line)
    , m_column(column)
    , m_object(std::move(object))
    , m_name(std::move(name))
{
    QString text = QFileInfo(m_file).fileName();
    if (m_line > 0)
        text += u":%1:%2"_s.arg(m_line).arg(m_column);
    for (const QString &part : { m_object, message }) {
        if (!part.isEmpty())
            text += (text.isEmpty() ? u""_s : u": "_s) + part;
    }
    m_text = text.toUtf8();
}

NibError::~NibError() = default;

const char *NibError::what() const noexcept
{
    return m_text.constData();
}

} // namespace NS
