// SPDX-License-Identifier: MIT
#pragma once

#include <QTextOption>

namespace NS {

/// How a paragraph is set. A plain value; as made, it is the platform's default style. Lengths are
/// in device-independent pixels.
///
///     NS::ParagraphStyle style;
///     style.alignment = Qt::AlignHCenter;
///     style.paragraphSpacing = 6;
///     text.addAttributes({ { NS::ParagraphStyleAttributeName, QVariant::fromValue(style) } },
///                        0, 9);
struct ParagraphStyle
{
    /// AlignLeft is the leading side, at the right in text that runs to the left; add AlignAbsolute
    /// for the left side whatever the direction.
    Qt::Alignment alignment = Qt::AlignLeft;
    /// Where a line may end.
    QTextOption::WrapMode wrapMode = QTextOption::WordWrap;
    /// LayoutDirectionAuto takes it from the text.
    Qt::LayoutDirection baseWritingDirection = Qt::LayoutDirectionAuto;
    /// Between the leading edge and the first line.
    double firstLineHeadIndent = 0.0;
    /// Between the leading edge and the lines below the first.
    double headIndent = 0.0;
    /// What is added between two lines.
    double lineSpacing = 0.0;
    /// What is left free above the paragraph.
    double paragraphSpacingBefore = 0.0;
    /// What is left free below the paragraph.
    double paragraphSpacing = 0.0;

    friend bool operator==(const ParagraphStyle &, const ParagraphStyle &) = default;
};

} // namespace NS

Q_DECLARE_METATYPE(NS::ParagraphStyle)
