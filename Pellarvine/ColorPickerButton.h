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
/// ("#1ABC9C"). Its own colour can be dragged out and copied. The tool tip, unless the program sets
/// one, and the accessible description name the colour. In style sheets it is a QPushButton:
/// `background` and `border` apply around the swatch. Main thread only.
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

    /// The colour to which the context menu and the popover can return. Default: invalid, which
    /// offers nothing.
    QColor defaultColor() const;
    void setDefaultColor(const QColor &color);

    /// The content of the popover. The button owns it.
    ColorPickerViewController *viewController() const;

    /// Called for each change of the panel's colour while a popover is open.
    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setColor(const QColor &color);
    /// Sets the default colour. Does nothing if that is invalid.
    void resetColor();

    /// Called by a click: sets the panel's colour to the button's, follows the panel, and opens a
    /// popover to the right of the button. A button without a parent widget opens no popover, but
    /// follows the panel.
    void buttonPressed();
    /// Called when a popover closes: stops following the panel.
    void popoverDidClose();

    void copy(); ///< to the clipboard, as a colour and as hexadecimal text
    void paste(); ///< from the clipboard; does nothing if that holds no colour

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
