// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

/// What the picture of a class in the widget box shows.
enum class Glyph {
    border,
    solid,
    toolBar,
    inspectorSection,
    tableCell,
    segments,
    fullWidthSegments,
    textField,
    wrappedText,
    markup,
    image,
    replaceableImage,
    color,
    button,
    window,
};

/// Drawn, at any size and scale, in the colours of the palette.
QIcon widgetIcon(Glyph glyph);
