// SPDX-License-Identifier: MIT
#include "View/LayerBacking.h"
#include "View/NSView+Layer.h"
#include "View/NSView.h"

#include <QEvent>
#include <QHash>
#include <QPainter>
#include <QWidget>

namespace NS {

namespace {

// Draws the layers of all layer-backed widgets.
class LayerBacking : public QObject
{
public:
    static LayerBacking &shared()
    {
        static auto *const backing = new LayerBacking; // outlives the last widget
        return *backing;
    }

    bool contains(const QWidget *widget) const { return m_backed.contains(widget); }

    void insert(QWidget *widget, detail::LayerSetUp setUp)
    {
        m_backed.insert(widget, { .layer = nullptr, .setUp = setUp });
        widget->installEventFilter(this);
        widget->update();
    }

    void remove(QWidget *widget)
    {
        widget->removeEventFilter(this);
        m_backed.remove(widget);
        widget->update();
    }

    CA::Layer *layerInUse(const QWidget *widget) const
    {
        const auto found = m_backed.constFind(widget);
        return found == m_backed.cend() ? nullptr : found->layer.get();
    }

    std::shared_ptr<CA::Layer> layer(QWidget *widget)
    {
        const auto found = m_backed.find(widget);
        if (found == m_backed.end())
            return nullptr;
        if (found->layer)
            return found->layer;
        auto made = std::make_shared<CA::Layer>();
        found->layer = made;
        made->setFrame(bounds(widget));
        if (const detail::LayerSetUp setUp = found->setUp)
            setUp(widget, *made);
        connect(made.get(), &CA::Layer::needsDisplay, widget, qOverload<>(&QWidget::update));
        return made;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *const widget = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::Resize) {
            if (CA::Layer *const known = layerInUse(widget))
                known->setFrame(bounds(widget));
        } else if (event->type() == QEvent::Paint) {
            if (needsLayout(widget))
                layoutSubtreeIfNeeded(widget);
            if (const auto drawn = layer(widget)) {
                drawn->setFrame(bounds(widget)); // a hidden widget gets no resize event
                QPainter painter(widget);
                drawn->render(painter, widget->height());
            }
        } else if (event->type() == QEvent::Destroy) {
            m_backed.remove(widget);
        }
        return false;
    }

private:
    LayerBacking() = default;

    struct Entry
    {
        std::shared_ptr<CA::Layer> layer; // null until it is needed
        detail::LayerSetUp setUp = nullptr;
    };

    QHash<const QWidget *, Entry> m_backed;
};

} // namespace

void setWantsLayer(QWidget *widget, bool wantsLayer)
{
    LayerBacking &backing = LayerBacking::shared();
    if (wantsLayer == backing.contains(widget))
        return;
    if (!wantsLayer) {
        backing.remove(widget);
        return;
    }
    backing.insert(widget, nullptr);
    static_cast<void>(backing.layer(widget));
}

bool wantsLayer(const QWidget *widget)
{
    return LayerBacking::shared().contains(widget);
}

std::shared_ptr<CA::Layer> layer(const QWidget *widget)
{
    return LayerBacking::shared().layer(const_cast<QWidget *>(widget));
}

} // namespace NS

namespace Pellarvine::detail {

void setWantsLayer(QWidget *widget, LayerSetUp setUp)
{
    if (!NS::wantsLayer(widget))
        NS::LayerBacking::shared().insert(widget, setUp);
}

CA::Layer *layerInUse(const QWidget *widget)
{
    return NS::LayerBacking::shared().layerInUse(widget);
}

} // namespace Pellarvine::detail
