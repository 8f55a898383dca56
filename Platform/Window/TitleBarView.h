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

/// The view at the top of a window. Its first 22 units show the standard buttons, the title, and
/// the document's icon and versions button; the accessories are stacked below. A press that no
/// child takes moves the window. The window owns the bar; the bar owns the buttons, not the
/// accessories' controllers. Lengths are in device-independent pixels.
class TitleBarView : public QWidget
{
    Q_OBJECT

public:
    static constexpr int standardHeight = 22;
    /// The upper left corner of the close button in a standard bar.
    static constexpr QPoint standardButtonPlace = { 7, 3 };

    TitleBarView(QWidget *window, WindowDrag *drag);
    ~TitleBarView() override;

    /// Which buttons there are. The others are hidden, and button() returns null for them.
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

    /// The height of the standard bar and all accessories.
    int fullHeight() const;
    /// The height in full screen: the greatest least height that an accessory asks for there.
    int fullScreenHeight() const;

    /// The least width that the buttons and views need.
    int leastWidth() const;

    /// Whether the content lies behind the bar. Then the bar draws no background, and the content
    /// takes the clicks beside the bar's own controls.
    void setLetsClicksThrough(bool lets);

    /// Places the title, the document's buttons and the accessories. The standard buttons get their
    /// places when they are made, and stay where a program moves them.
    void arrange();
    /// After a change of the window's title, state or activity.
    void refresh();

Q_SIGNALS:
    /// The accessories' heights changed.
    void fullHeightChanged();
    void leastWidthChanged();
    void buttonClicked(NS::WindowButton kind);
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

    QWidget *m_window;
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
