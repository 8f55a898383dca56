// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSTextField.h>

namespace Pellarvine {

/// A text field whose sizeHint() has the height that the text needs at the field's width:
///
///     auto *const note = new HeightForWidthTextField;
///     note->setStringValue(tr("Nothing is deleted from the server."));
///     NS::addAndPin(panel, note, 8); // as high as its text at any width of the panel
///
/// Each layout pass sets `preferredMaxLayoutWidth` to the field's width. The width of sizeHint() is
/// that of the text without line breaks, up to a readable width, so a narrow field grows again when
/// its window does. Everything else is as in NS::TextField. Main thread only.
class PELLARVINE_EXPORT HeightForWidthTextField : public NS::TextField
{
    Q_OBJECT

public:
    explicit HeightForWidthTextField(QWidget *parent = nullptr);

    /// Called by `NS::setFrame`. Also requests a layout pass, even if the frame stays the same.
    Q_INVOKABLE virtual void setFrame(const QRectF &frame);

    /// Sets `preferredMaxLayoutWidth`, then calls the base class. A new frame requests it.
    Q_INVOKABLE void performLayout() override;

    QSize sizeHint() const override;

protected:
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};

} // namespace Pellarvine
