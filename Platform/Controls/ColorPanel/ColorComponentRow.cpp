// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorComponentRow.h"

#include "Controls/ColorPanel/ColorSlider.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace Pellarvine::detail {

ColorComponentRow::ColorComponentRow(const QString &name, int maximum, const QString &suffix,
                                     QWidget *parent)
    : QWidget(parent)
    , m_name(new QLabel(name))
    , m_slider(new ColorSlider)
    , m_field(new QSpinBox)
{
    m_name->setBuddy(m_slider);
    m_slider->setAccessibleName(name);
    m_slider->setRange(0, maximum);
    m_slider->setPageStep(maximum / 10);
    m_field->setAccessibleName(name);
    m_field->setRange(0, maximum);
    m_field->setSuffix(suffix);
    m_field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_name);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_field);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_slider, &QSlider::valueChanged, this, &ColorComponentRow::edited);
    connect(m_field, &QSpinBox::valueChanged, this, &ColorComponentRow::edited);
}

void ColorComponentRow::setState(int value, const QGradientStops &stops, const QColor &knobColor)
{
    const QSignalBlocker sliderBlocker(m_slider);
    const QSignalBlocker fieldBlocker(m_field);
    m_slider->setValue(value);
    m_slider->setStops(stops);
    m_slider->setKnobColor(knobColor);
    m_field->setValue(value);
}

int ColorComponentRow::nameWidth() const
{
    return m_name->sizeHint().width();
}

int ColorComponentRow::fieldWidth() const
{
    return m_field->sizeHint().width() + 8;
}

void ColorComponentRow::setColumns(int nameWidth, int fieldWidth)
{
    m_name->setMinimumWidth(nameWidth);
    m_field->setFixedWidth(fieldWidth);
}

} // namespace Pellarvine::detail
