// SPDX-License-Identifier: MIT
#include "Window/TitleBarItems.h"

#include "Base/Assign.h"
#include "Controls/NSTextField.h"
#include "View/NSView.h"
#include "Window/StandardWindowButton.h"
#include "Window/TitleBarView.h"

#include <algorithm>

namespace Pellarvine::detail {

namespace {

constexpr int buttonDistance = 20; // in the standard bar

constexpr int titleMargin = 8;
constexpr int documentGap = 4;

constexpr NS::WindowButton controls[] = { NS::WindowButton::close, NS::WindowButton::miniaturize,
                                          NS::WindowButton::zoom };

} // namespace

TitleBarItems::TitleBarItems(TitleBarView *bar)
    : QObject(bar)
    , m_bar(bar)
{
    m_title = new NS::TextField(m_bar);
    m_title->setWraps(false);
    m_title->setElideMode(Qt::ElideMiddle);
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont font = m_bar->font();
    font.setWeight(QFont::DemiBold);
    m_title->setFont(font);
    m_title->resize(0, TitleBarView::standardHeight); // else showing it asks it for a size
    for (const NS::WindowButton kind : controls) {
        StandardWindowButton *const button = makeButton(kind);
        button->move(TitleBarView::standardButtonPlace + QPoint(buttonDistance * int(kind), 0));
        connect(button, &StandardWindowButton::hovered, this, &TitleBarItems::showGlyphs);
    }
    makeButton(NS::WindowButton::documentIcon);
    makeButton(NS::WindowButton::documentVersions);
    updateButtons();
}

void TitleBarItems::setStyleMask(NS::Window::StyleMask styleMask)
{
    m_styleMask = styleMask;
    updateButtons();
}

void TitleBarItems::setHasDocument(bool hasDocument)
{
    m_hasDocument = hasDocument;
    updateButtons();
}

void TitleBarItems::setOffersVersions(bool offers)
{
    if (assign(m_offersVersions, offers))
        updateButtons();
}

void TitleBarItems::setTitleVisible(bool isVisible)
{
    m_isTitleVisible = isVisible;
    updateButtons();
}

void TitleBarItems::setBare(bool isBare)
{
    m_isBare = isBare;
    updateButtons();
}

void TitleBarItems::setButtonLayout(const ButtonLayout &layout)
{
    if (!assign(m_buttonLayout, layout))
        return;
    placeButtons();
    updateButtons();
}

void TitleBarItems::setButtonFocusPolicy(Qt::FocusPolicy policy)
{
    for (const auto &button : m_buttons) {
        if (button)
            button->setFocusPolicy(policy);
    }
}

StandardWindowButton *TitleBarItems::button(NS::WindowButton kind) const
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

// Views that reach across the buttons leave them to be clicked.
void TitleBarItems::raiseAbove(const QObject *view)
{
    for (const auto &button : m_buttons) {
        if (button && button != view && button->parentWidget() == m_bar)
            button->raise();
    }
}

int TitleBarItems::leastWidth() const
{
    const Ends ends = buttonEnds();
    const int width = ends.left + m_bar->width() - ends.right;
    return width > 0 ? width + TitleBarView::standardButtonPlace.x() : 0;
}

void TitleBarItems::arrange()
{
    if (!m_buttonLayout.right.isEmpty())
        placeButtons();
    arrangeTitle();
}

void TitleBarItems::refresh()
{
    for (const auto &button : m_buttons) {
        if (button)
            button->updateName();
    }
    showGlyphs(false);
    if (m_title) {
        QColor ink = m_bar->palette().color(QPalette::WindowText);
        if (!looksActive(m_bar))
            ink.setAlphaF(0.5F);
        m_title->setTextColor(ink);
    }
    arrangeTitle();
}

TitleBarItems::Ends TitleBarItems::buttonEnds() const
{
    Ends ends { 0, m_bar->width() };
    for (const NS::WindowButton kind : controls) {
        const StandardWindowButton *const control = button(kind);
        if (!control || control->isHidden() || control->parentWidget() != m_bar)
            continue;
        if (m_buttonLayout.right.contains(kind))
            ends.right = std::min(ends.right, control->x());
        else
            ends.left = std::max(ends.left, control->x() + control->width());
    }
    return ends;
}

// Those that are still in the bar.
void TitleBarItems::placeButtons()
{
    for (const NS::WindowButton kind : controls) {
        StandardWindowButton *const button = m_buttons[int(kind)];
        if (!button || button->parentWidget() != m_bar)
            continue;
        const double x =
                m_buttonLayout.place(kind, m_bar->width(), TitleBarView::standardButtonPlace.x(),
                                     button->width(), buttonDistance - button->width());
        button->move(int(x), button->y());
    }
}

StandardWindowButton *TitleBarItems::makeButton(NS::WindowButton kind)
{
    auto *const button = new StandardWindowButton(kind, m_bar);
    button->resize(button->sizeHint());
    connect(button, &QAbstractButton::clicked, this, [this, kind] { Q_EMIT buttonClicked(kind); });
    m_buttons[int(kind)] = button;
    return button;
}

void TitleBarItems::updateButtons()
{
    for (const auto &button : m_buttons) {
        if (!button || button->parentWidget() != m_bar)
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
    NS::setNeedsLayout(m_bar->parentWidget()); // which may have another place for them
}

void TitleBarItems::showGlyphs(bool areShown)
{
    for (const NS::WindowButton kind : controls) {
        const auto &button = m_buttons[int(kind)];
        if (!button)
            continue;
        button->setShowsGlyph(areShown);
        button->update();
    }
}

QString TitleBarItems::titleText() const
{
    QString title = m_bar->parentWidget()->windowTitle();
    title.replace(QLatin1String("[*]"),
                  QLatin1String(m_bar->parentWidget()->isWindowModified() ? "*" : ""));
    return title;
}

// The title stands in the middle of the bar, as far as the buttons leave room.
void TitleBarItems::arrangeTitle()
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
    const QSize titleSize =
            isMeasured ? m_title->sizeHint() : QSize(0, TitleBarView::standardHeight);
    const int room = std::max(0, right - left - before - after);
    const int titleWidth = std::min(room, titleSize.width());

    const int total = before + titleWidth + after;
    int x = std::max(left, (m_bar->width() - total) / 2);
    x = std::max(left, std::min(x, right - total));
    const auto place = [](QWidget *item, int itemX, QSize size) {
        item->setGeometry(itemX, (TitleBarView::standardHeight - size.height()) / 2, size.width(),
                          size.height());
    };
    if (before > 0)
        place(m_buttons[int(NS::WindowButton::documentIcon)], x, { before - documentGap, 16 });
    place(m_title, x + before,
          { titleWidth, std::min(TitleBarView::standardHeight, titleSize.height()) });
    if (after > 0)
        place(m_buttons[int(NS::WindowButton::documentVersions)],
              x + before + titleWidth + documentGap, { after - documentGap, 16 });
}

} // namespace Pellarvine::detail
