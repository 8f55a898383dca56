// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QBrush>
#include <QWidget>

QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QSpinBox)

namespace Pellarvine::detail {

class ColorSlider;

/// One component of a colour: its name, a slider, and a field for its number.
class ColorComponentRow : public QWidget
{
    Q_OBJECT

public:
    ColorComponentRow(const QString &name, int maximum, const QString &suffix,
                      QWidget *parent = nullptr);

    /// Does not emit a signal of an edit.
    void setState(int value, const QGradientStops &stops, const QColor &knobColor);

    /// @{
    /// The widths that the name and the field need. Rows above each other have the same columns.
    int nameWidth() const;
    int fieldWidth() const;
    void setColumns(int nameWidth, int fieldWidth);
    /// @}

    ColorSlider *slider() const { return m_slider; }
    QSpinBox *field() const { return m_field; }

Q_SIGNALS:
    /// With every movement of the slider, and with every number entered.
    void edited(int value);

private:
    QLabel *m_name;
    ColorSlider *m_slider;
    QSpinBox *m_field;
};

} // namespace Pellarvine::detail
