// SPDX-License-Identifier: MIT
#include "Base/XmlReader.h"

#include <QStringConverter>

#include <algorithm>
#include <functional>
#include <numeric>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

XmlReader::XmlReader(const QByteArray &contents)
    : m_text(contents)
{
    bool isValid = contents.isValidUtf8();
    if (const auto marked = QStringConverter::encodingForData(contents, u'<')) {
        QStringDecoder decode(*marked);
        m_text = QString(decode(contents)).toUtf8();
        isValid = !decode.hasError();
    }
    m_isAscii = (std::accumulate(m_text.cbegin(), m_text.cend(), 0, std::bit_or<>()) & 0x80) == 0;
    m_lineEnd = m_text.indexOf('\n');
    // From a device, the base class reads small pieces, but in the encoding that they declare.
    const QByteArray declaration = m_text.first(m_text.indexOf('>') + 1).toUpper();
    if (declaration.contains("ENCODING") && !declaration.contains("UTF-8")) {
        addData(QString::fromUtf8(m_text));
    } else {
        m_buffer.setData(m_text);
        m_buffer.open(QIODevice::ReadOnly);
        setDevice(&m_buffer);
    }
    if (!isValid)
        raiseError(u"It is not text in UTF-8."_s);
}

QXmlStreamReader::TokenType XmlReader::readNext()
{
    m_tokenStart = offset();
    QXmlStreamReader::readNext();
    if (isDTD() && text().contains(u'[')) {
        m_place = placeAt(m_text.indexOf("<!DOCTYPE", m_tokenStart));
        raiseError(u"a document type declaration with contents is not allowed"_s);
    }
    return tokenType();
}

void XmlReader::refuseText()
{
    if (!isCharacters() || isWhitespace())
        return;
    m_place = placeAt(textStart());
    raiseError(u"there is text between the elements"_s);
}

// The offset behind the white space at the beginning of the token. The offset of the reader is no
// help: it has read the "<" of the next tag, too.
qsizetype XmlReader::textStart() const
{
    qsizetype start = m_tokenStart;
    while (start < m_text.size() && QChar(QLatin1Char(m_text[start])).isSpace())
        ++start;
    return start;
}

bool XmlReader::readChild()
{
    while (true) {
        readNext();
        refuseText();
        if (isStartElement()) {
            noteTag();
            return true;
        }
        if (isEndElement() || isEndDocument() || hasError())
            return false;
    }
}

// The reader reports the end of a tag; a tag contains no "<".
void XmlReader::noteTag()
{
    const qsizetype end = offset();
    m_tagStart = end > 0 ? m_text.lastIndexOf('<', end - 1) : -1;
    m_place = placeAt(m_tagStart);
}

void XmlReader::omit(qsizetype begin, qsizetype end)
{
    m_kept += QByteArrayView(m_text).sliced(m_omitted, begin - m_omitted);
    m_omitted = end;
}

void XmlReader::omitWhitespace()
{
    if (isWhitespace())
        omit(m_tokenStart, textStart());
}

QByteArray XmlReader::remainder()
{
    omit(m_text.size(), m_text.size());
    return m_kept;
}

// The base class counts in UTF-16, where the characters of four bytes count twice.
qsizetype XmlReader::offset()
{
    if (m_isAscii)
        return std::min(qsizetype(characterOffset()), m_text.size());
    while (m_character < characterOffset() && m_byte < m_text.size()) {
        const uchar first = static_cast<uchar>(m_text[m_byte]);
        const int bytes = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        m_byte += bytes;
        m_character += bytes == 4 ? 2 : 1;
    }
    return m_byte;
}

XmlPlace XmlReader::placeAt(qsizetype offset)
{
    while (m_lineEnd >= 0 && m_lineEnd < offset) {
        ++m_line;
        m_lineStart = m_lineEnd + 1;
        m_lineEnd = m_text.indexOf('\n', m_lineStart);
    }
    const auto before =
            QByteArrayView(m_text).sliced(m_lineStart, std::max(offset, m_lineStart) - m_lineStart);
    return { m_line, int(m_isAscii ? before.size() : QString::fromUtf8(before).size()) + 1 };
}

XmlPlace XmlReader::place() const
{
    // The reader has no place for errors that are raised here.
    return hasError() && error() != CustomError ? position() : m_place;
}

} // namespace Pellarvine::detail
