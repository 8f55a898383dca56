// SPDX-License-Identifier: MIT
// Not API: an XML reader with places for errors.
#pragma once

#include "Base/Global.h"

#include <QBuffer>
#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

namespace Pellarvine::detail {

/// A place in a file. Line and column count from 1, and are 0 if the place is not known.
struct XmlPlace
{
    int line = 0;
    int column = 0;

    bool operator==(const XmlPlace &) const = default;
};

/// Reads the contents of an XML file, and knows the places of its tags. Contents that are not text
/// are an error of the first read. A document type declaration with contents is an error: entities
/// and default attributes could expand a small file into a large one, or read other files.
class PELLARVINE_PRIVATE_EXPORT XmlReader : public QXmlStreamReader
{
public:
    explicit XmlReader(const QByteArray &contents);

    /// As QXmlStreamReader::readNext(). A document type declaration with contents is an error.
    TokenType readNext();

    /// Raises an error if the last readNext() has read text other than white space.
    void refuseText();

    /// Goes to the next child of the current element and calls noteTag(). False at the end of the
    /// current element and after an error, such as text between the children.
    bool readChild();

    /// Remembers the place of the start tag that has just been read, for place().
    void noteTag();

    /// The place of the last noteTag(); after an error, the place of the error.
    XmlPlace place() const;

    /// The offset of the tag of the last noteTag(), for omitFrom().
    qsizetype tagOffset() const { return m_tagStart; }

    /// Leaves everything before the tag of the last noteTag() out of remainder().
    void omitProlog() { m_omitted = m_tagStart; }

    /// Leaves the part from an offset to the last token out of remainder().
    void omitFrom(qsizetype begin) { omit(begin, offset()); }

    /// Leaves out the white space that readNext() has just read, if it was that.
    void omitWhitespace();

    /// The contents without the omitted parts, in UTF-8.
    QByteArray remainder();

    /// The place behind the last token.
    XmlPlace position() const { return { int(lineNumber()), int(columnNumber()) + 1 }; }

private:
    // Offsets are in bytes of m_text. They never decrease from call to call.
    qsizetype offset();
    XmlPlace placeAt(qsizetype offset);
    qsizetype textStart() const;
    void omit(qsizetype begin, qsizetype end);

    QByteArray m_text; // in UTF-8
    QBuffer m_buffer; // reads m_text
    bool m_isAscii = false; // characters are bytes
    qsizetype m_byte = 0; // the result of offset(), and how many characters are before it
    qint64 m_character = 0;
    XmlPlace m_place { 1, 1 };
    int m_line = 1;
    qsizetype m_lineStart = 0; // of m_line
    qsizetype m_lineEnd = -1; // negative in the last line
    qsizetype m_tokenStart = 0;
    qsizetype m_tagStart = 0;
    QByteArray m_kept; // the part of remainder() before m_omitted
    qsizetype m_omitted = 0;
};

} // namespace Pellarvine::detail
