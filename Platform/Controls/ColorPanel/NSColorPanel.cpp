// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/NSColorPanel.h"

#include "Base/Assign.h"
#include "Controls/ColorPanel/ColorPanelContent.h"

#include <QApplication>
#include <QChildEvent>
#include <QKeyEvent>
#include <QMetaEnum>
#include <QPointer>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

namespace NS {

namespace {

constexpr qsizetype mostRecentColors = 8;

QPointer<ColorPanel> &shared()
{
    static QPointer<ColorPanel> panel;
    return panel;
}

// A popover is there for the window that it belongs to.
QWidget *windowInUse()
{
    QWidget *window = QApplication::activeWindow();
    while (window && window->parentWidget()
           && (window->windowType() == Qt::Tool || window->windowType() == Qt::Popup))
        window = window->parentWidget()->window();
    return window;
}

} // namespace

struct ColorPanel::Private
{
    QColor color = QColor(Qt::white);
    bool showsAlpha = false;
    Mode mode = wheelMode;
    QColor defaultColor;
    QList<QColor> recentColors;
    mutable QPointer<detail::ColorPanelContent> content;
    QSize hint; // of the window with its content, when it was last measured
};

ColorPanel *ColorPanel::sharedColorPanel()
{
    if (!shared()) {
        shared() = new ColorPanel;
        // Widgets must be gone before the application object is.
        qAddPostRoutine([] { delete shared(); });
    }
    return shared();
}

bool ColorPanel::sharedColorPanelExists()
{
    return shared();
}

ColorPanel::ColorPanel()
    : QWidget(nullptr, Qt::Tool)
    , d(std::make_unique<Private>())
{
    setWindowTitle(tr("Colours"));
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    contentView();
    adjustSize();
    d->hint = sizeHint();
    layout->activate(); // which gives the content its size before it is shown anywhere
    const auto follow = [this] {
        if (isVisible())
            followContent();
    };
    connect(this, &ColorPanel::showsAlphaChanged, this, follow, Qt::QueuedConnection);
    connect(this, &ColorPanel::defaultColorChanged, this, follow, Qt::QueuedConnection);
    connect(this, &ColorPanel::recentColorsChanged, this, follow, Qt::QueuedConnection);
}

ColorPanel::~ColorPanel()
{
    delete d->content; // wherever it is: it refers to this panel
}

QColor ColorPanel::color() const
{
    return d->color;
}

void ColorPanel::setColor(const QColor &color)
{
    if (!color.isValid())
        return;
    QColor rgb = color.toRgb();
    if (!d->showsAlpha)
        rgb.setAlpha(255);
    if (detail::assign(d->color, rgb))
        Q_EMIT colorChanged(rgb);
}

bool ColorPanel::showsAlpha() const
{
    return d->showsAlpha;
}

void ColorPanel::setShowsAlpha(bool showsAlpha)
{
    if (!detail::assign(d->showsAlpha, showsAlpha))
        return;
    Q_EMIT showsAlphaChanged(showsAlpha);
    setColor(d->color);
}

ColorPanel::Mode ColorPanel::mode() const
{
    return d->mode;
}

void ColorPanel::setMode(Mode mode)
{
    if (mode == d->mode || !QMetaEnum::fromType<Mode>().valueToKey(mode))
        return;
    d->mode = mode;
    Q_EMIT modeChanged(mode);
}

QColor ColorPanel::defaultColor() const
{
    return d->defaultColor;
}

void ColorPanel::setDefaultColor(const QColor &color)
{
    if (detail::assign(d->defaultColor, color))
        Q_EMIT defaultColorChanged(color);
}

QList<QColor> ColorPanel::recentColors() const
{
    return d->recentColors;
}

void ColorPanel::setRecentColors(const QList<QColor> &colors)
{
    QList<QColor> wanted;
    for (const QColor &color : colors) {
        const QColor rgb = color.toRgb();
        if (color.isValid() && wanted.size() < mostRecentColors && !wanted.contains(rgb))
            wanted.append(rgb);
    }
    if (detail::assign(d->recentColors, wanted))
        Q_EMIT recentColorsChanged(wanted);
}

void ColorPanel::addRecentColor(const QColor &color)
{
    setRecentColors(QList<QColor>(1, color) + d->recentColors);
}

QToolBar *ColorPanel::toolbar() const
{
    contentView();
    return d->content->toolbar();
}

QWidget *ColorPanel::contentView() const
{
    if (!d->content) {
        auto *const self = const_cast<ColorPanel *>(this);
        d->content = new detail::ColorPanelContent(self);
        self->layout()->addWidget(d->content);
        d->content->show(); // with the window, which may be about to be shown
    }
    return d->content;
}

void ColorPanel::reclaimContentView()
{
    QWidget *const content = contentView();
    if (content->parentWidget() == this)
        return;
    layout()->addWidget(content);
    content->show();
}

void ColorPanel::orderFront()
{
    const QWidget *const owner = windowInUse();
    if (owner && owner != this && owner->windowHandle()) {
        if (!windowHandle())
            create();
        if (windowHandle()->transientParent() != owner->windowHandle()) {
            // Desktops look at it when a window is shown.
            const QPoint place = pos();
            if (isVisible()) {
                hide();
                move(place);
            }
            windowHandle()->setTransientParent(owner->windowHandle());
        }
    }
    show();
    raise();
    activateWindow();
}

void ColorPanel::orderOut()
{
    hide();
}

void ColorPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setWindowTitle(tr("Colours"));
}

void ColorPanel::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    // An empty window is of no use to anybody.
    if (event->removed() && event->child() == d->content)
        hide();
}

void ColorPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel))
        return orderOut();
    QWidget::keyPressEvent(event);
}

void ColorPanel::showEvent(QShowEvent *event)
{
    reclaimContentView();
    followContent();
    QWidget::showEvent(event);
}

// A row that comes or goes changes the height of the window, not that of the page above it.
void ColorPanel::followContent()
{
    if (!d->content || d->content->parentWidget() != this)
        return;
    d->content->layout()->activate();
    const QSize change = sizeHint() - std::exchange(d->hint, sizeHint());
    if (!isMaximized() && !isFullScreen())
        resize(size() + change);
}

} // namespace NS
