// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSTextField.h>
#include <pellarvine/Platform/NSWindow.h>

namespace Pellarvine {

/// A window whose title bar has any height, buttons at any place, and two views of your own:
///
///     auto *const window = new Pellarvine::Window;
///     window->setTitleBarHeight(52);
///     window->setTrafficLightHorizontalMargin(12);
///     window->setInnerTitleBarView(searchField);
///     window->setKeepsTitleBarViewClear(true); // beside the buttons, not below them
///     window->awakeFromNib(); // adopts the views; a window from an interface file does it itself
///     window->show();
///
/// A window that is shown without awakeFromNib() has its buttons at their standard places, and does
/// not adopt the views. The margins, the gap and the centring take effect at the next layout pass,
/// the views and the margins' standard values in awakeFromNib(). Lengths are in device-independent
/// pixels; one that is not a finite number counts as 0. Main thread only.
class PELLARVINE_EXPORT Window : public NS::Window
{
    Q_OBJECT
    Q_PROPERTY(bool centerTrafficLightButtons READ centerTrafficLightButtons WRITE
                       setCenterTrafficLightButtons NOTIFY centerTrafficLightButtonsChanged)
    Q_PROPERTY(bool hidesTitle READ hidesTitle WRITE setHidesTitle NOTIFY hidesTitleChanged)
    Q_PROPERTY(double trafficLightHorizontalMargin READ trafficLightHorizontalMargin WRITE
                       setTrafficLightHorizontalMargin NOTIFY trafficLightHorizontalMarginChanged)
    Q_PROPERTY(double trafficLightVerticalMargin READ trafficLightVerticalMargin WRITE
                       setTrafficLightVerticalMargin NOTIFY trafficLightVerticalMarginChanged)
    Q_PROPERTY(double trafficLightGap READ trafficLightGap WRITE setTrafficLightGap NOTIFY
                       trafficLightGapChanged)
    Q_PROPERTY(QWidget *innerTitleBarView READ innerTitleBarView WRITE setInnerTitleBarView NOTIFY
                       innerTitleBarViewChanged)
    Q_PROPERTY(QWidget *toolbarView READ toolbarView WRITE setToolbarView NOTIFY toolbarViewChanged)
    Q_PROPERTY(bool keepsTitleBarViewClear READ keepsTitleBarViewClear WRITE
                       setKeepsTitleBarViewClear NOTIFY keepsTitleBarViewClearChanged)
    Q_PROPERTY(double titleBarHeight READ titleBarHeight WRITE setTitleBarHeight NOTIFY
                       titleBarHeightChanged)
    Q_PROPERTY(QWidget *titleBarView READ titleBarView STORED false)
    Q_PROPERTY(NS::TextField *titleBarTextField READ titleBarTextField STORED false)

public:
    explicit Window(QWidget *parent = nullptr);
    /// `contentRect` is the frame of the content below a title bar of the standard height, in
    /// screen coordinates.
    Window(const QRectF &contentRect, StyleMask styleMask, QWidget *parent = nullptr);
    ~Window() override;

    /// Whether buttons and title stand in the vertical middle of the title bar, or
    /// `trafficLightVerticalMargin` below its top edge. Default: true.
    bool centerTrafficLightButtons() const;
    void setCenterTrafficLightButtons(bool areCentered);

    bool hidesTitle() const; ///< default: false
    void setHidesTitle(bool hidesTitle);

    /// From the title bar's left edge to the close button, or, with followsDesktopButtonLayout(),
    /// from either edge to the outermost button. awakeFromNib() replaces 0 by the standard margin.
    double trafficLightHorizontalMargin() const;
    void setTrafficLightHorizontalMargin(double margin);

    /// From the title bar's top edge to the buttons, and around the two views. 0 is replaced too.
    double trafficLightVerticalMargin() const;
    void setTrafficLightVerticalMargin(double margin);

    double trafficLightGap() const; ///< between two buttons; default: 6
    void setTrafficLightGap(double gap);

    /// A view in the row of the buttons. It begins at twice the horizontal margin and ends as far
    /// beyond the trailing edge; the buttons lie over it. The window owns it and the toolbar view,
    /// and shows them after awakeFromNib(). Default: null.
    QWidget *innerTitleBarView() const;
    void setInnerTitleBarView(QWidget *view);

    /// Whether the inner view reaches from a margin beside the buttons to a margin from the
    /// opposite edge instead. Takes effect in awakeFromNib(). Default: false.
    bool keepsTitleBarViewClear() const;
    void setKeepsTitleBarViewClear(bool keeps);

    /// A view between the margins, below the row of the buttons. Default: null.
    QWidget *toolbarView() const;
    void setToolbarView(QWidget *view);

    /// The height of the title bar without the program's own accessories, from the standard height
    /// to the available height of the screen. Each call, also with an equal value, replaces the
    /// accessory at index 0, which fills the rest of the height. The window keeps its frame unless
    /// its content needs more height. But the first call makes the window lower by the standard
    /// height, as if the height before were 0.
    double titleBarHeight() const;
    void setTitleBarHeight(double height);

    QWidget *titleBarView() const; ///< the parent of the close button; null without a button
    NS::TextField *titleBarTextField() const; ///< shows the title; null without a title bar

    void setFrame(const QRectF &frame, bool display) override;
    void setFrame(const QRectF &frame, bool display, bool animate) override;
    using NS::Window::setFrame;
    bool restoreState(const QByteArray &state) override;
    void orderFront() override;
    void awakeFromNib() override;
    /// Places the buttons and the title, nothing else.
    void layoutIfNeeded() override;

Q_SIGNALS:
    void centerTrafficLightButtonsChanged(bool areCentered);
    void hidesTitleChanged(bool hidesTitle);
    void trafficLightHorizontalMarginChanged(double margin);
    void trafficLightVerticalMarginChanged(double margin);
    void trafficLightGapChanged(double gap);
    void innerTitleBarViewChanged(QWidget *view);
    void toolbarViewChanged(QWidget *view);
    void keepsTitleBarViewClearChanged(bool keeps);
    void titleBarHeightChanged(double height);

protected:
    void windowDidResize(QResizeEvent *notification) override;
    void showEvent(QShowEvent *event) override;

private:
    void setNeedsLayout();
    double verticalPlace(const QWidget *item) const;

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
