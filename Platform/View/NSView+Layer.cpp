// SPDX-License-Identifier: MIT
#include "View/Companion.h"
#include "View/NSView+Layer.h"
#include "View/NSView.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

namespace NS {

namespace {

class LayerBacking : public QObject
{
public:
    explicit LayerBacking(QWidget *widget)
        : QObject(widget)
        , m_widget(widget)
        , m_layer(std::make_shared<CA::Layer>())
        , m_entry(widget, this)
    {
        m_layer->setFrame(bounds(widget));
        connect(m_layer.get(), &CA::Layer::needsDisplay, widget, qOverload<>(&QWidget::update));
        widget->installEventFilter(this);
        widget->update();
    }

    const std::shared_ptr<CA::Layer> &layer() const { return m_layer; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != m_widget)
            return false;
        if (event->type() == QEvent::Resize)
            m_layer->setFrame(bounds(m_widget));
        if (event->type() == QEvent::Paint) {
            if (needsLayout(m_widget))
                layoutSubtreeIfNeeded(m_widget);
            m_layer->setFrame(bounds(m_widget)); // hidden widgets hear of their size late
            QPainter painter(m_widget);
            m_layer->render(painter, m_widget->height());
        }
        return false;
    }

private:
    QWidget *m_widget;
    std::shared_ptr<CA::Layer> m_layer;
    detail::CompanionEntry<LayerBacking> m_entry;
};

} // namespace

void setWantsLayer(QWidget *widget, bool wantsLayer)
{
    auto *const backing = detail::companionOf<LayerBacking>(widget);
    if (wantsLayer == bool(backing))
        return;
    if (wantsLayer) {
        new LayerBacking(widget);
        return;
    }
    delete backing;
    widget->update();
}

bool wantsLayer(const QWidget *widget)
{
    return detail::companionOf<LayerBacking>(widget) != nullptr;
}

std::shared_ptr<CA::Layer> layer(const QWidget *widget)
{
    const auto *const backing = detail::companionOf<LayerBacking>(widget);
    return backing ? backing->layer() : nullptr;
}

} // namespace NS
