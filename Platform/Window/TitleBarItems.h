// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/ButtonLayout.h"
#include "Window/NSWindow.h"

#include <QObject>
#include <QPointer>

#include <array>

namespace NS {
class TextField;
}

namespace Pellarvine::detail {

class StandardWindowButton;
class TitleBarView;

/// The buttons and the title in the first 22 units of a title bar, which are children of the bar.
/// The bar owns them. A button that a program has moved into another view stays there.
class TitleBarItems : public QObject
{
    Q_OBJECT

public:
    explicit TitleBarItems(TitleBarView *bar);

    /// Shows the buttons of the mask. The others are hidden, and button() returns null for them.
    void setStyleMask(NS::Window::StyleMask styleMask);
    void setHasDocument(bool hasDocument);
    void setOffersVersions(bool offers);
    void setTitleVisible(bool isVisible);
    /// Whether the desktop draws title and buttons instead.
    bool isBare() const { return m_isBare; }
    void setBare(bool isBare);
    const ButtonLayout &buttonLayout() const { return m_buttonLayout; }
    void setButtonLayout(const ButtonLayout &layout);
    void setButtonFocusPolicy(Qt::FocusPolicy policy);

    StandardWindowButton *button(NS::WindowButton kind) const;

    /// Keeps the buttons above a view that was added to the bar.
    void raiseAbove(const QObject *view);
    /// The width that the buttons need.
    int leastWidth() const;
    /// Places the title and the document's buttons. The standard buttons get their places when they
    /// are made, and stay where a program moves them, unless some stand on the right.
    void arrange();
    /// After a change of the window's title, state or activity.
    void refresh();

Q_SIGNALS:
    void buttonClicked(NS::WindowButton kind);

private:
    struct Ends
    {
        int left; // up to where the buttons on the left reach
        int right; // from where on those on the right stand
    };

    Ends buttonEnds() const;
    void placeButtons();
    StandardWindowButton *makeButton(NS::WindowButton kind);
    void updateButtons();
    void showGlyphs(bool areShown);
    QString titleText() const;
    void arrangeTitle();

    TitleBarView *m_bar;
    QPointer<NS::TextField> m_title;
    std::array<QPointer<StandardWindowButton>, 7> m_buttons; // by kind
    NS::Window::StyleMask m_styleMask;
    ButtonLayout m_buttonLayout;
    bool m_hasDocument = false;
    bool m_offersVersions = false;
    bool m_isTitleVisible = true;
    bool m_isBare = false;
};

} // namespace Pellarvine::detail
