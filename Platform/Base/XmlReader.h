// SPDX-License-Identifier: MIT
// Not API: an XML reader that knows where things stand.
#pragma once

#include "Base/Global.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

namespace Pellarvine::detail {

/// Reads a file as it is; an error where it is not text is the first thing to be read.
class PELLARVINE_PRIVATE_EXPORT XmlReader : public QXmlStreamReader
{
public:
    explicit XmlReader(const QByteArray &contents);

    /// To be called once a start tag has been read, if its place is to be known.
    void noteTag();

    /// Where the tag that was noted last starts, counted from 1.
    int tagLine() const { return m_line; }
    int tagColumn() const { return m_column; }

    /// Where the reading has come to.
    int line() const { return int(lineNumber()); }
    int column() const { return int(columnNumber()) + 1; }

private:
    QString m_text;
    int m_line = 1;
    int m_column = 1;
    qsizetype m_scanned = 0;
    qsizetype m_lineStart = 0;
};

} // namespace Pellarvine::detail
