// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>

QT_FORWARD_DECLARE_CLASS(QRectF)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {

class Button;

/// Draws what is inside a button's bezel. This one draws the button's text and icon; a subclass
/// draws something else:
///
///     class LevelCell : public NS::ButtonCell {
///         void drawInterior(const QRectF &frame, QWidget *) override
///         { drawLevel(*NS::GraphicsContext::current(), frame); }
///     };
///     button->setCell(new LevelCell);
///
/// The button that it is set on owns it.
class PELLARVINE_EXPORT ButtonCell : public QObject
{
    Q_OBJECT

public:
    explicit ButtonCell(QObject *parent = nullptr);
    ~ButtonCell() override;

    /// The button that it draws for; null until it is set on one.
    QWidget *controlView() const;

    /// Draws with the current graphics context. `frame` is the whole button in its own coordinates,
    /// y downwards, as always for controls; `view` is the button. The painter's state is the
    /// caller's affair: it is restored afterwards.
    virtual void drawInterior(const QRectF &frame, QWidget *view);

private:
    friend class Button;

    Button *m_button = nullptr;
};

} // namespace NS
