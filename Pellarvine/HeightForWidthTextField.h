// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSTextField.h>

namespace Pellarvine {

/// A text field that asks for the height that its text needs at the width that layout gave it:
///
///     auto *const note = new HeightForWidthTextField;
///     note->setStringValue(tr("Nothing is deleted from the server."));
///     NS::addAndPin(panel, note, 8); // as high as need be at any width of the panel
///
/// Its `preferredMaxLayoutWidth` is its own width as of the last layout pass, whatever is set. The
/// height that it asks for is that at this width; the width is what the text wants, so that a field
/// that was made narrow gets wider with its window again. Everything else is as in NS::TextField.
/// Main thread only.
class PELLARVINE_EXPORT HeightForWidthTextField : public NS::TextField
{
    Q_OBJECT

public:
    explicit HeightForWidthTextField(QWidget *parent = nullptr);

    /// As `NS::setFrame`, which calls it, and asks for a layout pass even where the frame stays the
    /// same.
    Q_INVOKABLE virtual void setFrame(const QRectF &frame);

    /// Takes over the width, then does what the base class does. A change of the frame asks for it.
    Q_INVOKABLE void performLayout() override;

    QSize sizeHint() const override;

protected:
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};

} // namespace Pellarvine
