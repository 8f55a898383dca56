// SPDX-License-Identifier: MIT
// Not API: an XML reader that knows where things stand.
#pragma once

#include "Base/Global.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

namespace Pellarvine::detail {

/// A place in a file. Both count from 1; both are 0 where no place is known.
struct XmlPlace
{
    int line = 0;
    int column = 0;
};

/// Reads a file as it is; an error where it is not text is the first thing to be read. A document
/// type declaration has to be empty: entities and default attributes of a file's own would let a
/// small file become a large one, or read others.
class PELLARVINE_PRIVATE_EXPORT XmlReader : public QXmlStreamReader
{
public:
    explicit XmlReader(const QByteArray &contents);

    /// As QXmlStreamReader::readNext(), with an error for a document type declaration with
    /// contents.
    TokenType readNext();

    /// To be called once readNext() has been. Raises an error for text that is not white space.
    void refuseText();

    /// To the next element in the current one; false at the end of that and at an error, which text
    /// between the elements is too. Does what noteTag() does.
    bool readChild();

    /// To be called once a start tag has been read, if its place is to be known.
    void noteTag();

    /// Where the tag that was noted last starts; after an error, where that is.
    XmlPlace place() const;

    /// Where the reading has come to.
    XmlPlace position() const { return { int(lineNumber()), int(columnNumber()) + 1 }; }

private:
    // Of a character of the text. Offsets never decrease from call to call.
    XmlPlace placeAt(qsizetype offset);

    QString m_text;
    XmlPlace m_place { 1, 1 };
    int m_line = 1; // of m_lineStart
    qsizetype m_lineStart = 0;
    qsizetype m_scanned = 0;
    qsizetype m_tokenStart = 0;
};

} // namespace Pellarvine::detail
