// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/ColorPickerViewController.h>
#include <pellarvine/Platform/KeyValueObserving.h>
#include <pellarvine/Platform/NSButton.h>

#include <QColor>

#include <memory>

namespace Pellarvine {

/// A push button that shows a colour, and lets the user choose another in a popover beside it. The
/// colour follows the pointer there:
///
///     auto *const fill = new Pellarvine::ColorPickerButton(inspector);
///     fill->setAccessibleName(tr("Fill"));
///     fill->setColor(shape->fill());
///     const Pellarvine::Binding binding(fill, u"color"_s, shape, u"fill"_s);
///
/// The button takes a colour that is dropped on it or pasted, as a colour or as hex text
/// ("#1ABC9C"), and gives its own by dragging it out and by copying. Its tool tip, unless one is
/// set, and its accessible description tell the colour. In style sheets it is a QPushButton:
/// `background` and `border` apply to what is around the swatch, which keeps its place. Main thread
/// only.
class PELLARVINE_EXPORT ColorPickerButton : public NS::Button, public NS::KeyValueObserver
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged USER true)
    Q_PROPERTY(
            QColor defaultColor READ defaultColor WRITE setDefaultColor NOTIFY defaultColorChanged)
    Q_PROPERTY(Pellarvine::ColorPickerViewController *viewController READ viewController CONSTANT)

public:
    explicit ColorPickerButton(QWidget *parent = nullptr);
    /// `NS::setFrame` places the button, once it has a parent.
    explicit ColorPickerButton(const QRectF &frame, QWidget *parent = nullptr) = delete;
    ~ColorPickerButton() override;

    /// Default: green. An invalid colour is taken for an opaque black.
    QColor color() const;

    /// What the context menu and the popover go back to. Invalid if there is no such colour.
    /// Default: invalid.
    QColor defaultColor() const;
    void setDefaultColor(const QColor &color);

    /// What the popovers show. The button owns it.
    ColorPickerViewController *viewController() const;

    /// What the popover changes: called for each change of the panel's colour while one is open.
    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setColor(const QColor &color);
    /// To the default colour; does nothing if there is none.
    void resetColor();

    /// What a click does: has the panel show the button's colour, starts to follow it, and opens a
    /// popover to the right of the button. Without a parent widget none is opened; the button
    /// follows the panel all the same, until a popover of its own closes.
    void buttonPressed();
    /// Ends one following of the panel. A popover calls it when it closes.
    void popoverDidClose();

    /// To the clipboard, as a colour and as hexadecimal text.
    void copy();
    /// From the clipboard, which does nothing if that has no colour.
    void paste();

Q_SIGNALS:
    void colorChanged(const QColor &color);
    void defaultColorChanged(const QColor &color);

protected:
    bool event(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
