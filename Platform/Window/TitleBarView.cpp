// SPDX-License-Identifier: MIT
#include "Window/TitleBarView.h"

#include "Base/Assign.h"
#include "Controls/NSTextField.h"
#include "View/NSView.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/StandardWindowButton.h"
#include "Window/WindowDrag.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

namespace {

// Of the standard buttons in the standard bar, from its upper left corner.
constexpr int firstButtonX = 7;
constexpr int buttonDistance = 20;
constexpr int buttonY = 3;

constexpr int titleMargin = 8;
constexpr int documentGap = 4;

constexpr NS::WindowButton controls[] = { NS::WindowButton::close, NS::WindowButton::miniaturize,
                                          NS::WindowButton::zoom };

int heightOf(NS::TitlebarAccessoryViewController *controller)
{
    const QWidget *const view = controller->view();
    return view ? view->height() : 0;
}

} // namespace

TitleBarView::TitleBarView(NS::Window *window, WindowDrag *drag)
    : QWidget(window)
    , m_window(window)
    , m_drag(drag)
{
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
        button->setGeometry(firstButtonX + buttonDistance * int(kind), buttonY,
                            button->sizeHint().width(), button->sizeHint().height());
        connect(button, &StandardWindowButton::hovered, this, &TitleBarView::showGlyphs);
    }
    connect(m_buttons[int(NS::WindowButton::close)], &QAbstractButton::clicked, window,
            &QWidget::close);
    connect(m_buttons[int(NS::WindowButton::miniaturize)], &QAbstractButton::clicked, window,
            &NS::Window::miniaturize);
    connect(m_buttons[int(NS::WindowButton::zoom)], &QAbstractButton::clicked, window,
            [window] { window->isFullScreen() ? window->toggleFullScreen() : window->zoom(); });

    StandardWindowButton *const icon = makeButton(NS::WindowButton::documentIcon);
    connect(icon, &QAbstractButton::clicked, this, [this, icon] {
        QMenu menu(this);
        QFileInfo place(m_window->representedURL().toLocalFile());
        while (!place.filePath().isEmpty() && !place.isRoot()) {
            place = QFileInfo(place.absolutePath());
            const QString folder = place.absoluteFilePath();
            QAction *const entry = menu.addAction(place.isRoot() ? QDir::toNativeSeparators(folder)
                                                                 : place.fileName());
            connect(entry, &QAction::triggered, this,
                    [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
        }
        if (!menu.isEmpty())
            menu.exec(icon->mapToGlobal(icon->rect().bottomLeft()));
    });
    connect(makeButton(NS::WindowButton::documentVersions), &QAbstractButton::clicked, window,
            &NS::Window::documentVersionsRequested);
    updateButtons();
}

StandardWindowButton *TitleBarView::makeButton(NS::WindowButton kind)
{
    auto *const button = new StandardWindowButton(kind, this);
    button->resize(button->sizeHint());
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
        const bool isOffered =
                button->kind() != NS::WindowButton::documentVersions || m_offersVersions;
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

void TitleBarView::setDrawsBackground(bool draws)
{
    m_drawsBackground = draws;
    update();
}

void TitleBarView::setBare(bool isBare)
{
    m_isBare = isBare;
    updateButtons();
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
        view->installEventFilter(this);
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
    if (QWidget *const view = controller->view()) {
        view->removeEventFilter(this);
        view->setParent(nullptr);
    }
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
    arrangeTitle();
    arrangeAccessories();
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
    int left = titleMargin;
    for (const NS::WindowButton kind : controls) {
        const StandardWindowButton *const control = button(kind);
        if (control && !control->isHidden() && control->parentWidget() == this)
            left = std::max(left, control->geometry().right() + 1 + titleMargin);
    }
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
    const int room = std::max(0, width() - left - titleMargin - before - after);
    const int titleWidth = std::min(room, titleSize.width());

    const int total = before + titleWidth + after;
    int x = std::max(left, (width() - total) / 2);
    x = std::max(left, std::min(x, width() - titleMargin - total));
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

bool TitleBarView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && !m_isArranging && fullHeight() != m_arrangedHeight)
        Q_EMIT fullHeightChanged();
    return QWidget::eventFilter(watched, event);
}

void TitleBarView::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    if (event->type() != QEvent::ChildAdded || !event->child()->isWidgetType())
        return;
    // Views that reach across the buttons leave them to be clicked.
    for (const auto &button : m_buttons) {
        if (button && button != event->child() && button->parentWidget() == this)
            button->raise();
    }
}

void TitleBarView::paintEvent(QPaintEvent *)
{
    if (!m_drawsBackground)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.14F);
    painter.fillRect(0, height() - 1, width(), 1, line);
}

void TitleBarView::mousePressEvent(QMouseEvent *event)
{
    if (m_isBare || event->button() != Qt::LeftButton)
        return event->ignore();
    m_drag->prepare(event->globalPosition().toPoint());
    event->accept();
}

void TitleBarView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (m_isBare || event->button() != Qt::LeftButton)
        return event->ignore();
    Q_EMIT doubleClicked();
}

void TitleBarView::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_isBare)
        return event->ignore();
    Q_EMIT menuRequested(event->globalPos());
}

} // namespace Pellarvine::detail
