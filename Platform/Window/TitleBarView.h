// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/TitleBarAction.h"

#include <QList>
#include <QWidget>

namespace NS {
class TitlebarAccessoryViewController;
}

namespace Pellarvine::detail {

class TitleBarItems;
class WindowDrag;

/// The view at the top of a window. Its first 22 units show its items: the buttons, the title, and
/// the document's icon and versions button; the accessories are stacked below. A press that no
/// child takes moves the window. The window owns the bar, but not the bar the accessories'
/// controllers. Lengths are in device-independent pixels.
class TitleBarView : public QWidget
{
    Q_OBJECT

public:
    static constexpr int standardHeight = 22;
    /// The upper left corner of the close button in a standard bar.
    static constexpr QPoint standardButtonPlace = { 7, 3 };

    TitleBarView(QWidget *window, WindowDrag *drag);
    ~TitleBarView() override;

    TitleBarItems *items() const { return m_items; }

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

    /// Places the items and the accessories.
    void arrange();
    /// After a change of the window's title, state or activity.
    void refresh();

Q_SIGNALS:
    /// The accessories' heights changed.
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
    int heightOf(NS::TitlebarAccessoryViewController *controller) const;
    void takeView(NS::TitlebarAccessoryViewController *controller);
    void arrangeAccessories();
    void updateMask();
    bool takeFromHandle(QMouseEvent *event);

    WindowDrag *m_drag;
    TitleBarItems *m_items = nullptr; // until the bar is complete
    QList<NS::TitlebarAccessoryViewController *> m_accessories;
    bool m_letsClicksThrough = false;
    bool m_isArranging = false;
    int m_arrangedHeight = standardHeight;
};

} // namespace Pellarvine::detail
