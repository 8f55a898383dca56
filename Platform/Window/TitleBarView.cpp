// SPDX-License-Identifier: MIT
#include "Window/TitleBarView.h"

#include "Base/Assign.h"
#include "Controls/NSTextField.h"
#include "View/AccessibleControl.h"
#include "View/NSView.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/StandardWindowButton.h"
#include "Window/TitleBarHandles.h"
#include "Window/WindowDrag.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

namespace {

constexpr int buttonDistance = 20; // in the standard bar

constexpr int titleMargin = 8;
constexpr int documentGap = 4;

constexpr NS::WindowButton controls[] = { NS::WindowButton::close, NS::WindowButton::miniaturize,
                                          NS::WindowButton::zoom };

class AccessibleTitleBar : public AccessibleControl
{
public:
    explicit AccessibleTitleBar(TitleBarView *bar)
        : AccessibleControl(bar, QAccessible::TitleBar, TitleBarView::tr("Title bar"))
    { }
};

int heightOf(NS::TitlebarAccessoryViewController *controller)
{
    const QWidget *const view = controller->view();
    return view ? view->height() : 0;
}

} // namespace

TitleBarView::TitleBarView(QWidget *window, WindowDrag *drag)
    : QWidget(window)
    , m_window(window)
    , m_drag(drag)
{
    makeAccessible<TitleBarView, AccessibleTitleBar>();
    m_title = new NS::TextField(this);
    m_title->setWraps(false);
    m_title->setElideMode(Qt::ElideMiddle);
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont font = this->font();
    font.setWeight(QFont::DemiBold);
    m_title->setFont(font);
    m_title->resize(0, standardHeight); // else showing it asks it for a size
    for (const NS::WindowButton kind : controls) {
        StandardWindowButton *const button = makeButton(kind);
        button->move(standardButtonPlace + QPoint(buttonDistance * int(kind), 0));
        connect(button, &StandardWindowButton::hovered, this, &TitleBarView::showGlyphs);
    }
    makeButton(NS::WindowButton::documentIcon);
    makeButton(NS::WindowButton::documentVersions);
    updateButtons();
}

StandardWindowButton *TitleBarView::makeButton(NS::WindowButton kind)
{
    auto *const button = new StandardWindowButton(kind, this);
    button->resize(button->sizeHint());
    connect(button, &QAbstractButton::clicked, this, [this, kind] { Q_EMIT buttonClicked(kind); });
    m_buttons[int(kind)] = button;
    return button;
}

StandardWindowButton *TitleBarView::button(NS::WindowButton kind) const
{
    const auto has = [&](NS::Window::StyleMaskFlag flag) {
        return m_styleMask.testFlag(NS::Window::titled) && m_styleMask.testFlag(flag);
    };
    const auto answer = [&] {
        switch (kind) {
        case NS::WindowButton::close:
            return has(NS::Window::closable);
        case NS::WindowButton::miniaturize:
            return has(NS::Window::miniaturizable);
        case NS::WindowButton::zoom:
            return has(NS::Window::resizable);
        case NS::WindowButton::documentIcon:
        case NS::WindowButton::documentVersions:
            return has(NS::Window::titled) && m_hasDocument;
        }
        return false;
    };
    return answer() ? m_buttons[int(kind)].data() : nullptr;
}

void TitleBarView::updateButtons()
{
    for (const auto &button : m_buttons) {
        if (!button || button->parentWidget() != this)
            continue;
        const bool isControl = std::ranges::find(controls, button->kind()) != std::end(controls);
        const bool isOffered = isControl ? m_buttonLayout.contains(button->kind())
                                         : button->kind() != NS::WindowButton::documentVersions
                                                   || m_offersVersions;
        button->setVisible(!m_isBare && isOffered && this->button(button->kind()));
    }
    if (m_title)
        m_title->setVisible(!m_isBare && m_isTitleVisible);
    arrangeTitle();
    NS::setNeedsLayout(m_window); // which may have another place for them
}

// The accessories' views end with the bar's children, when the bar itself no longer listens.
TitleBarView::~TitleBarView()
{
    for (NS::TitlebarAccessoryViewController *const controller : std::as_const(m_accessories))
        controller->disconnect(this);
}

void TitleBarView::setStyleMask(NS::Window::StyleMask styleMask)
{
    m_styleMask = styleMask;
    updateButtons();
}

void TitleBarView::setHasDocument(bool hasDocument)
{
    m_hasDocument = hasDocument;
    updateButtons();
}

void TitleBarView::setOffersVersions(bool offers)
{
    if (assign(m_offersVersions, offers))
        updateButtons();
}

void TitleBarView::setTitleVisible(bool isVisible)
{
    m_isTitleVisible = isVisible;
    updateButtons();
}

void TitleBarView::setLetsClicksThrough(bool lets)
{
    m_letsClicksThrough = lets;
    updateMask();
    update();
}

void TitleBarView::setBare(bool isBare)
{
    m_isBare = isBare;
    updateButtons();
}

void TitleBarView::setButtonLayout(const ButtonLayout &layout)
{
    if (!assign(m_buttonLayout, layout))
        return;
    placeButtons();
    updateButtons();
}

// Those that are still in the bar.
void TitleBarView::placeButtons()
{
    for (const NS::WindowButton kind : controls) {
        StandardWindowButton *const button = m_buttons[int(kind)];
        if (!button || button->parentWidget() != this)
            continue;
        const double x = m_buttonLayout.place(kind, width(), standardButtonPlace.x(),
                                              button->width(), buttonDistance - button->width());
        button->move(int(x), button->y());
    }
}

void TitleBarView::setButtonFocusPolicy(Qt::FocusPolicy policy)
{
    for (const auto &button : m_buttons) {
        if (button)
            button->setFocusPolicy(policy);
    }
}

void TitleBarView::insertAccessory(NS::TitlebarAccessoryViewController *controller)
{
    m_accessories.append(controller);
    const auto adopt = [this, controller] {
        QWidget *const view = controller->view();
        if (!view)
            return;
        NS::addSubview(this, view);
    };
    adopt();
    connect(controller, &NS::ViewController::viewChanged, this, [this, adopt] {
        adopt();
        Q_EMIT fullHeightChanged();
    });
    connect(controller, &NS::TitlebarAccessoryViewController::fullScreenMinHeightChanged, this,
            &TitleBarView::fullHeightChanged);
    connect(controller, &QObject::destroyed, this, [this, controller] {
        m_accessories.removeOne(controller);
        Q_EMIT fullHeightChanged();
    });
    Q_EMIT fullHeightChanged();
}

void TitleBarView::removeAccessory(int index)
{
    NS::TitlebarAccessoryViewController *const controller = m_accessories.takeAt(index);
    controller->disconnect(this);
    controller->setParent(nullptr);
    if (QWidget *const view = controller->view())
        view->setParent(nullptr);
    Q_EMIT fullHeightChanged();
}

int TitleBarView::fullHeight() const
{
    int height = standardHeight;
    for (NS::TitlebarAccessoryViewController *const controller : m_accessories)
        height += heightOf(controller);
    return height;
}

int TitleBarView::fullScreenHeight() const
{
    double height = standardHeight;
    for (const NS::TitlebarAccessoryViewController *const controller : m_accessories)
        height = std::max(height, controller->fullScreenMinHeight());
    return std::min(fullHeight(), int(std::ceil(height)));
}

void TitleBarView::arrange()
{
    const QScopedValueRollback<bool> guard(m_isArranging, true);
    if (!m_buttonLayout.right.isEmpty())
        placeButtons();
    arrangeTitle();
    arrangeAccessories();
    updateMask();
}

int TitleBarView::leastWidth() const
{
    int width = layout() ? layout()->totalMinimumSize().width() : 0;
    const Ends ends = buttonEnds();
    const int buttonsWidth = ends.left + this->width() - ends.right;
    if (buttonsWidth > 0)
        width = std::max(width, buttonsWidth + standardButtonPlace.x());
    for (NS::TitlebarAccessoryViewController *const controller : m_accessories) {
        if (const QWidget *const view = controller->view())
            width = std::max({ width, view->minimumWidth(), view->minimumSizeHint().width() });
    }
    return width;
}

TitleBarView::Ends TitleBarView::buttonEnds() const
{
    Ends ends { 0, width() };
    for (const NS::WindowButton kind : controls) {
        const StandardWindowButton *const control = button(kind);
        if (!control || control->isHidden() || control->parentWidget() != this)
            continue;
        if (m_buttonLayout.right.contains(kind))
            ends.right = std::min(ends.right, control->x());
        else
            ends.left = std::max(ends.left, control->x() + control->width());
    }
    return ends;
}

// A mask leaves the pointer, its cursor and the wheel to what lies below.
void TitleBarView::updateMask()
{
    if (!m_letsClicksThrough)
        return clearMask();
    QRegion solid(-1, -1, 1, 1); // an empty region would be no mask
    for (const QObject *const child : children()) {
        if (child->isWidgetType() && !static_cast<const QWidget *>(child)->isHidden())
            solid += static_cast<const QWidget *>(child)->geometry();
    }
    setMask(solid);
}

QString TitleBarView::titleText() const
{
    QString title = m_window->windowTitle();
    title.replace(QLatin1String("[*]"), QLatin1String(m_window->isWindowModified() ? "*" : ""));
    return title;
}

// The title stands in the middle of the bar, as far as the buttons leave room.
void TitleBarView::arrangeTitle()
{
    if (!m_title)
        return;
    const Ends ends = buttonEnds();
    const int left = ends.left + titleMargin;
    const int right = ends.right - titleMargin;
    const auto buttonWidth = [this](NS::WindowButton kind) {
        const StandardWindowButton *const button = this->button(kind);
        return button && !button->isHidden() ? button->width() + documentGap : 0;
    };
    const int before = buttonWidth(NS::WindowButton::documentIcon);
    const int after = buttonWidth(NS::WindowButton::documentVersions);

    // A text that nobody sees is not laid out: that may be the program's first, which loads fonts.
    const bool isSeen = !m_isBare && m_isTitleVisible;
    if (isSeen)
        m_title->setStringValue(titleText());
    const bool isMeasured = isSeen && !m_title->stringValue().isEmpty();
    const QSize titleSize = isMeasured ? m_title->sizeHint() : QSize(0, standardHeight);
    const int room = std::max(0, right - left - before - after);
    const int titleWidth = std::min(room, titleSize.width());

    const int total = before + titleWidth + after;
    int x = std::max(left, (width() - total) / 2);
    x = std::max(left, std::min(x, right - total));
    const auto place = [](QWidget *item, int itemX, QSize size) {
        item->setGeometry(itemX, (standardHeight - size.height()) / 2, size.width(), size.height());
    };
    if (before > 0)
        place(m_buttons[int(NS::WindowButton::documentIcon)], x, { before - documentGap, 16 });
    place(m_title, x + before, { titleWidth, std::min(standardHeight, titleSize.height()) });
    if (after > 0)
        place(m_buttons[int(NS::WindowButton::documentVersions)],
              x + before + titleWidth + documentGap, { after - documentGap, 16 });
}

void TitleBarView::arrangeAccessories()
{
    int y = standardHeight;
    for (NS::TitlebarAccessoryViewController *const controller : std::as_const(m_accessories)) {
        if (QWidget *const view = controller->view())
            view->setGeometry(0, y, width(), view->height());
        y += heightOf(controller);
    }
    m_arrangedHeight = y;
}

void TitleBarView::refresh()
{
    for (const auto &button : m_buttons) {
        if (button)
            button->updateName();
    }
    showGlyphs(false);
    if (m_title) {
        QColor ink = palette().color(QPalette::WindowText);
        if (!looksActive(this))
            ink.setAlphaF(0.5F);
        m_title->setTextColor(ink);
    }
    arrangeTitle();
    update();
}

void TitleBarView::showGlyphs(bool areShown)
{
    for (const NS::WindowButton kind : controls) {
        const auto &button = m_buttons[int(kind)];
        if (!button)
            continue;
        button->setShowsGlyph(areShown);
        button->update();
    }
}

bool TitleBarView::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        Q_EMIT leastWidthChanged();
    return QWidget::event(event);
}

// Sees its children, and the window before its widgets do.
bool TitleBarView::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return watched->isWindowType() && takeFromHandle(static_cast<QMouseEvent *>(event));
    case QEvent::Resize:
        if (!m_isArranging && fullHeight() != m_arrangedHeight)
            Q_EMIT fullHeightChanged();
        [[fallthrough]];
    case QEvent::Move:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        if (!m_isArranging && m_letsClicksThrough && watched->isWidgetType())
            updateMask();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

// Takes a press on a part of a view that moves the window, as if the bar itself were there.
bool TitleBarView::takeFromHandle(QMouseEvent *event)
{
    const QPoint place = mapFrom(m_window, event->position().toPoint());
    QWidget *const target = childAt(place);
    if (m_isBare || !target || event->button() != Qt::LeftButton
        || !mouseDownCanMoveWindow(target, target->mapFrom(this, place)))
        return false;
    QMouseEvent own(event->type(), place, event->globalPosition(), event->button(),
                    event->buttons(), event->modifiers());
    return QCoreApplication::sendEvent(this, &own);
}

void TitleBarView::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    if (!event->child()->isWidgetType())
        return;
    if (event->type() == QEvent::ChildRemoved)
        event->child()->removeEventFilter(this);
    if (event->type() != QEvent::ChildAdded)
        return;
    event->child()->installEventFilter(this);
    // Views that reach across the buttons leave them to be clicked.
    for (const auto &button : m_buttons) {
        if (button && button != event->child() && button->parentWidget() == this)
            button->raise();
    }
}

void TitleBarView::paintEvent(QPaintEvent *)
{
    if (m_letsClicksThrough)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.14F);
    painter.fillRect(0, height() - 1, width(), 1, line);
}

void TitleBarView::mousePressEvent(QMouseEvent *event)
{
    if (m_isBare || (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton))
        return event->ignore();
    if (event->button() == Qt::LeftButton)
        m_drag->prepare(event->globalPosition().toPoint());
    event->accept();
}

void TitleBarView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_isBare || event->button() != Qt::MiddleButton || !rect().contains(event->pos()))
        return event->ignore();
    Q_EMIT clicked(TitleBarClick::middle, event->globalPosition().toPoint());
}

void TitleBarView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (m_isBare || event->button() != Qt::LeftButton)
        return event->ignore();
    Q_EMIT clicked(TitleBarClick::doubleClick, event->globalPosition().toPoint());
}

void TitleBarView::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_isBare)
        return event->ignore();
    Q_EMIT clicked(TitleBarClick::right, event->globalPos());
}

} // namespace Pellarvine::detail
