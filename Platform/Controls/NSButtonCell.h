// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>

QT_FORWARD_DECLARE_CLASS(QRectF)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {

class Button;

/// Draws the inside of a button's bezel: the button's text and icon. A subclass draws something
/// else:
///
///     class LevelCell : public NS::ButtonCell {
///         void drawInterior(const QRectF &frame, QWidget *) override
///         { drawLevel(*NS::GraphicsContext::current(), frame); }
///     };
///     button->setCell(new LevelCell);
///
/// The button owns its cell. Main thread only.
class PELLARVINE_EXPORT ButtonCell : public QObject
{
    Q_OBJECT

public:
    explicit ButtonCell(QObject *parent = nullptr);
    ~ButtonCell() override;

    /// The button to which the cell belongs; null if there is none.
    QWidget *controlView() const;

    /// Draws into the current graphics context. `frame` is the whole button in device-independent
    /// pixels, with y downwards; `view` is the button. The caller restores the painter's state.
    virtual void drawInterior(const QRectF &frame, QWidget *view);

private:
    friend class Button;

    Button *m_button = nullptr;
};

} // namespace NS
