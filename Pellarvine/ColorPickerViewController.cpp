// SPDX-License-Identifier: MIT
#include "Pellarvine/ColorPickerViewController.h"

#include <QAction>
#include <QPointer>
#include <QToolBar>

namespace Pellarvine {

struct ColorPickerViewController::Private
{
    QPointer<NS::ColorPanel> colorPanel;
};

ColorPickerViewController::ColorPickerViewController(QObject *parent)
    : ViewController(parent)
    , d(std::make_unique<Private>())
{
    setTitle(tr("Colours"));
}

// The view is the panel's: it must not go with the controller, or with what last contained it.
ColorPickerViewController::~ColorPickerViewController()
{
    if (d->colorPanel && !d->colorPanel->contentView()->isVisible())
        d->colorPanel->reclaimContentView();
    setView(nullptr);
}

NS::ColorPanel *ColorPickerViewController::colorPanel() const
{
    return d->colorPanel;
}

void ColorPickerViewController::loadView()
{
    if (NS::ColorPanel::sharedColorPanelExists() && NS::ColorPanel::sharedColorPanel()->isVisible())
        NS::ColorPanel::sharedColorPanel()->orderOut();
    NS::ColorPanel *const panel = NS::ColorPanel::sharedColorPanel();
    d->colorPanel = panel;
    Q_EMIT colorPanelChanged(panel);
    panel->setShowsAlpha(true);
    panel->setMode(NS::ColorPanel::wheelMode);
    // Shows the page of the first item, like a click.
    if (!panel->toolbar()->actions().isEmpty())
        panel->toolbar()->actions().constFirst()->trigger();
    QWidget *const content = panel->contentView();
    setView(content);
    content->setGeometry(0, 0, content->width(), content->height());
    content->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

} // namespace Pellarvine
