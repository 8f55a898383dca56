// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/ButtonLayout.h"
#include "Window/NSWindow.h"
#include "Window/TitleBarAction.h"

#include <QPointer>

#include <array>

namespace NS {
class TextField;
}

namespace Pellarvine::detail {

class StandardWindowButton;
class WindowDrag;

/// The view at the top of a window: in its first 22 units the standard buttons, the title and what
/// belongs to the document, below them the accessories. What no child takes moves the window.
class TitleBarView : public QWidget
{
    Q_OBJECT

public:
    static constexpr int standardHeight = 22;
    /// The upper left corner of the close button in a standard bar.
    static constexpr QPoint standardButtonPlace = { 7, 3 };

    TitleBarView(NS::Window *window, WindowDrag *drag);
    ~TitleBarView() override;

    /// Which buttons there are. What is not in the mask is hidden, and not answered by button().
    void setStyleMask(NS::Window::StyleMask styleMask);
    void setHasDocument(bool hasDocument);
    void setOffersVersions(bool offers);
    void setTitleVisible(bool isVisible);
    /// Whether the desktop draws title and buttons instead.
    void setBare(bool isBare);
    const ButtonLayout &buttonLayout() const { return m_buttonLayout; }
    void setButtonLayout(const ButtonLayout &layout);
    void setButtonFocusPolicy(Qt::FocusPolicy policy);

    StandardWindowButton *button(NS::WindowButton kind) const;

    void insertAccessory(NS::TitlebarAccessoryViewController *controller);
    void removeAccessory(int index);
    const QList<NS::TitlebarAccessoryViewController *> &accessories() const
    {
        return m_accessories;
    }

    /// Of the standard bar and all accessories.
    int fullHeight() const;
    /// In full screen: what the accessories ask for at the least.
    int fullScreenHeight() const;

    /// The least that buttons and views need.
    int leastWidth() const;

    /// Whether the bar of a window whose content reaches up behind it, and which draws nothing,
    /// leaves the content the clicks beside its own controls.
    void setLetsClicksThrough(bool lets);

    /// Places title, document buttons and accessories. The standard buttons are put in their places
    /// when they are made and stay where they are moved to.
    void arrange();
    /// After a change of the window's title, state or activity.
    void refresh();

Q_SIGNALS:
    /// The accessories' heights became others.
    void fullHeightChanged();
    void leastWidthChanged();
    void clicked(Pellarvine::detail::TitleBarClick click, QPoint globalPosition);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

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
    void arrangeAccessories();
    void updateMask();
    bool takeFromHandle(QMouseEvent *event);

    NS::Window *m_window;
    WindowDrag *m_drag;
    QPointer<NS::TextField> m_title;
    std::array<QPointer<StandardWindowButton>, 7> m_buttons; // by kind
    QList<NS::TitlebarAccessoryViewController *> m_accessories;
    NS::Window::StyleMask m_styleMask;
    ButtonLayout m_buttonLayout;
    bool m_hasDocument = false;
    bool m_offersVersions = false;
    bool m_isTitleVisible = true;
    bool m_letsClicksThrough = false;
    bool m_isBare = false;
    bool m_isArranging = false;
    int m_arrangedHeight = standardHeight;
};

} // namespace Pellarvine::detail
