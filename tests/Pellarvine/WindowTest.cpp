// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/Window.h>
#include <pellarvine/Platform/NSTitlebarAccessoryViewController.h>
#include <pellarvine/Platform/NSView.h>

#include <QAbstractButton>
#include <QScreen>
#include <QSignalSpy>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using NS::WindowButton;
using Pellarvine::Window;

namespace {

constexpr NS::Window::StyleMask wholeStyle =
        NS::Window::StyleMask(NS::Window::titled | NS::Window::closable | NS::Window::miniaturizable
                              | NS::Window::resizable);
constexpr QRectF content(100, 100, 400, 300);

// A window in the middle of its screen, set up as from an interface file.
struct Opened
{
    explicit Opened(double height = 0.0, NS::Window::StyleMask style = wholeStyle)
        : window(content, style)
    {
        if (height > 0.0)
            window.setTitleBarHeight(height);
    }

    QRectF button(WindowButton kind) const { return NS::frame(window.standardWindowButton(kind)); }

    std::vector<double> buttonLefts() const
    {
        return { button(WindowButton::close).x(), button(WindowButton::miniaturize).x(),
                 button(WindowButton::zoom).x() };
    }

    Window window;
};

QRectF inTitleBar(const Window &window, const QWidget *view)
{
    EXPECT_EQ(view->parentWidget(), window.titleBarView());
    return NS::frame(view);
}

} // namespace

// The height

// The accessory makes the window higher by h - 22. The compensation makes it lower by h and
// moves it up by h.
TEST(Window, the_first_height_moves_the_lower_edge_by_the_whole_height)
{
    for (const double height : { 0.0, -5.0, 22.0, 52.0 }) {
        SCOPED_TRACE(height);
        const double stored = std::max(height, 22.0);
        Opened opened;
        opened.window.setTitleBarHeight(height);
        EXPECT_EQ(opened.window.titleBarHeight(), stored);
        ASSERT_EQ(opened.window.titlebarAccessoryViewControllers().size(), 1);
        NS::TitlebarAccessoryViewController *const dummy =
                opened.window.titlebarAccessoryViewControllers().constFirst();
        EXPECT_EQ(dummy->view()->size(), QSizeF(10, stored - 22).toSize());
        EXPECT_EQ(dummy->fullScreenMinHeight(), stored);
        EXPECT_EQ(opened.window.titleBarView()->height(), stored);
        EXPECT_EQ(opened.window.frame(), QRectF(100, 122, 400, 300));
    }
}

TEST(Window, later_heights_exchange_the_accessory_and_keep_the_frame)
{
    Opened opened(52);
    const QRectF frame = opened.window.frame();
    const QPointer<NS::TitlebarAccessoryViewController> first =
            opened.window.titlebarAccessoryViewControllers().constFirst();
    QSignalSpy changes(&opened.window, &Window::titleBarHeightChanged);

    opened.window.setTitleBarHeight(52);
    EXPECT_FALSE(first) << "an equal height exchanges it too";
    EXPECT_EQ(opened.window.frame(), frame);
    EXPECT_TRUE(changes.isEmpty());

    for (const double height : { 80.0, 30.0, 22.0 }) {
        opened.window.setTitleBarHeight(height);
        EXPECT_EQ(opened.window.titlebarAccessoryViewControllers().size(), 1);
        EXPECT_EQ(opened.window.frame(), frame);
        EXPECT_EQ(opened.window.titleBarView()->height(), height);
    }
    EXPECT_EQ(changes.size(), 3);
}

TEST(Window, a_height_does_not_choose_a_place_on_the_screen)
{
    Window window;
    window.setTitleBarHeight(52);
    EXPECT_FALSE(window.testAttribute(Qt::WA_Moved)) << "the desktop would not place it";
    Opened placed(52);
    EXPECT_TRUE(placed.window.testAttribute(Qt::WA_Moved));
}

TEST(Window, a_height_before_the_window_shows_leaves_it_the_size_that_its_content_asks_for)
{
    class Content : public QWidget
    {
        QSize sizeHint() const override { return { 320, 240 }; }
    };
    Window window;
    window.setContentView(new Content);
    window.setTitleBarHeight(52);
    window.show();
    EXPECT_EQ(window.size(), QSize(320, 240 + 52));
}

TEST(Window, a_shown_window_keeps_its_frame_at_every_height)
{
    class Content : public QWidget
    {
        QSize minimumSizeHint() const override { return { 100, 70 }; }
    };
    Opened opened;
    Window &window = opened.window;
    window.setContentView(new Content);
    window.show();
    window.setTitleBarHeight(52);
    const QRectF frame = window.frame();
    const double highest = window.screen()->availableSize().height();
    for (const int greatest : { QWIDGETSIZE_MAX, window.height() }) {
        window.setMaximumHeight(greatest);
        for (const double height : { 30.0, 80.0, 22.0, frame.height() - 70, 22.0, 52.0 }) {
            window.setTitleBarHeight(height);
            EXPECT_EQ(window.frame(), frame) << height;
            QCoreApplication::processEvents();
            EXPECT_EQ(window.frame(), frame) << height << ", later";
        }
    }
    window.setMaximumHeight(QWIDGETSIZE_MAX);

    // The window grows if the content has no room, and becomes no larger than the screen.
    const double top = frame.y() + frame.height();
    for (const double height : { frame.height(), 5000.0, 1e300 }) {
        const double high = std::min(height, highest);
        for (int i = 0; i < 2; ++i) {
            window.setTitleBarHeight(height);
            QCoreApplication::processEvents();
            EXPECT_EQ(window.titleBarHeight(), high);
            EXPECT_EQ(window.frame(), QRectF(100, top - high - 70, 400, high + 70));
        }
        window.setTitleBarHeight(30);
        EXPECT_EQ(window.frame(), frame);
    }
    window.setTitleBarHeight(frame.height());
    window.setFrame(QRectF(0, 0, 500, 600), false);
    window.setTitleBarHeight(30);
    EXPECT_EQ(window.frame(), QRectF(0, 0, 500, 600)) << "the frame that was chosen since";

    window.showMaximized();
    window.setTitleBarHeight(60);
    window.setTitleBarHeight(90);
    window.showNormal();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.frame(), QRectF(0, 0, 500, 600));
}

TEST(Window, numbers_that_are_not_finite_count_as_0)
{
    Opened opened(52);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double number : { std::nan(""), infinity, -infinity }) {
        opened.window.setTitleBarHeight(52);
        opened.window.setTitleBarHeight(number);
        EXPECT_EQ(opened.window.titleBarHeight(), 22);
        EXPECT_EQ(opened.window.titleBarView()->height(), 22);
        opened.window.setTrafficLightHorizontalMargin(number);
        opened.window.setTrafficLightVerticalMargin(number);
        opened.window.setTrafficLightGap(number);
        EXPECT_EQ(opened.window.trafficLightHorizontalMargin(), 0);
        EXPECT_EQ(opened.window.trafficLightVerticalMargin(), 0);
        EXPECT_EQ(opened.window.trafficLightGap(), 0);
        NS::TitlebarAccessoryViewController accessory;
        accessory.setFullScreenMinHeight(number);
        EXPECT_EQ(accessory.fullScreenMinHeight(), 0);
    }
}

TEST(Window, the_accessory_at_index_0_is_taken_for_its_own)
{
    Opened opened;
    NS::TitlebarAccessoryViewController hosts;
    opened.window.addTitlebarAccessoryViewController(&hosts);
    opened.window.setTitleBarHeight(30);
    opened.window.setTitleBarHeight(40);
    EXPECT_FALSE(opened.window.titlebarAccessoryViewControllers().contains(&hosts));
    EXPECT_EQ(hosts.parent(), nullptr);
    EXPECT_EQ(opened.window.titlebarAccessoryViewControllers().size(), 2);
}

// The buttons

TEST(Window, centred_buttons_stand_in_the_middle_of_any_title_bar)
{
    for (const double height : { 22.0, 38.0, 52.0, 100.0 }) {
        Opened opened(height);
        opened.window.awakeFromNib();
        opened.window.layoutIfNeeded();
        EXPECT_THAT(opened.buttonLefts(), testing::ElementsAre(7, 27, 47));
        for (const WindowButton kind : { WindowButton::close, WindowButton::zoom })
            EXPECT_EQ(opened.button(kind), QRectF(opened.button(kind).x(), height / 2 - 8, 14, 16));
        const QRectF title = NS::frame(opened.window.titleBarTextField());
        EXPECT_NEAR(title.center().y(), height / 2, 0.5);
    }
}

TEST(Window, buttons_that_are_not_centred_keep_their_distance_from_the_top)
{
    Opened opened(38);
    opened.window.setCenterTrafficLightButtons(false);
    opened.window.setTrafficLightVerticalMargin(3);
    opened.window.setWindowTitle(QStringLiteral("Letters"));
    opened.window.setRepresentedURL(QUrl(QStringLiteral("file:///home/ada/letters.txt")));
    opened.window.awakeFromNib();
    NS::layoutSubtreeIfNeeded(&opened.window);
    EXPECT_EQ(opened.button(WindowButton::close).y(), 38 - 16 - 3);
    EXPECT_EQ(opened.button(WindowButton::documentIcon).y(), 38 - 16 - 3);
    EXPECT_EQ(opened.button(WindowButton::documentVersions).y(), 38 - 16 - 3);
    const QRectF title = NS::frame(opened.window.titleBarTextField());
    EXPECT_EQ(title.y(), 38 - title.height() - 3);
    EXPECT_GT(title.x(), opened.button(WindowButton::documentIcon).right());
}

TEST(Window, margin_and_gap_take_effect_at_the_next_pass)
{
    Opened opened;
    opened.window.awakeFromNib();
    opened.window.layoutIfNeeded();
    opened.window.setTrafficLightHorizontalMargin(12);
    opened.window.setTrafficLightGap(9);
    EXPECT_THAT(opened.buttonLefts(), testing::ElementsAre(7, 27, 47));
    EXPECT_TRUE(NS::needsLayout(&opened.window));
    NS::layoutSubtreeIfNeeded(&opened.window);
    EXPECT_THAT(opened.buttonLefts(), testing::ElementsAre(12, 12 + 23, 12 + 46));
}

TEST(Window, margins_of_0_are_measured_once_and_others_kept)
{
    Opened standard(52);
    standard.window.awakeFromNib();
    EXPECT_EQ(standard.window.trafficLightHorizontalMargin(), 7.0);
    EXPECT_EQ(standard.window.trafficLightVerticalMargin(), 3.0);

    Opened own(52);
    own.window.setTrafficLightHorizontalMargin(12);
    own.window.setTrafficLightVerticalMargin(5);
    own.window.awakeFromNib();
    EXPECT_EQ(own.window.trafficLightHorizontalMargin(), 12.0);
    EXPECT_EQ(own.window.trafficLightVerticalMargin(), 5.0);
}

TEST(Window, shown_without_waking_it_has_its_buttons_at_their_standard_places)
{
    Opened opened(52);
    opened.window.layoutIfNeeded(); // before the places of the buttons are known
    opened.window.show();
    opened.window.grab();
    EXPECT_THAT(opened.buttonLefts(), testing::ElementsAre(7, 27, 47));
    EXPECT_EQ(opened.window.trafficLightVerticalMargin(), 3.0);
}

TEST(Window, a_missing_button_leaves_its_place_empty)
{
    Opened opened(0, wholeStyle & ~NS::Window::miniaturizable);
    opened.window.awakeFromNib();
    opened.window.setTrafficLightGap(10);
    opened.window.layoutIfNeeded();
    EXPECT_EQ(opened.window.standardWindowButton(WindowButton::miniaturize), nullptr);
    EXPECT_EQ(opened.button(WindowButton::zoom).x(), 7 + 2 * 24);
}

TEST(Window, a_pass_comes_by_itself_before_painting)
{
    Opened opened(52);
    opened.window.awakeFromNib();
    opened.window.show();
    opened.window.grab();
    EXPECT_EQ(opened.button(WindowButton::close), QRectF(7, 18, 14, 16));
    opened.window.resize(500, 400);
    opened.window.setWindowTitle(QStringLiteral("Another title"));
    opened.window.grab();
    const QRectF title = NS::frame(opened.window.titleBarTextField());
    EXPECT_NEAR(title.center().x(), 250, 1);
    EXPECT_NEAR(title.center().y(), 26, 0.5);
}

TEST(Window, title_and_document_icon_keep_their_place)
{
    Opened opened(52);
    opened.window.setWindowTitle(QStringLiteral("Letters"));
    opened.window.setRepresentedURL(QUrl(QStringLiteral("file:///home/ada/letters.txt")));
    opened.window.awakeFromNib();
    opened.window.show();
    const auto expectInMiddle = [&](const char *when) {
        opened.window.grab();
        EXPECT_NEAR(NS::frame(opened.window.titleBarTextField()).center().y(), 26, 0.5) << when;
        EXPECT_EQ(opened.button(WindowButton::documentIcon).center().y(), 26) << when;
    };
    expectInMiddle("at first");
    {
        const QSignalSpy versions(&opened.window, &NS::Window::documentVersionsRequested);
        expectInMiddle("with a receiver for versions");
        EXPECT_EQ(opened.button(WindowButton::documentVersions).center().y(), 26);
    }
    QCoreApplication::processEvents();
    expectInMiddle("without the receiver");
    opened.window.hide();
    opened.window.show();
    expectInMiddle("after it was hidden");
    opened.window.toggleFullScreen();
    expectInMiddle("in full screen");
    opened.window.toggleFullScreen();
    opened.window.setFullKeyboardAccess(true);
    opened.window.setNativeDecorations(true);
    opened.window.setNativeDecorations(false);
    expectInMiddle("after native decorations");
}

// The title

TEST(Window, hiding_the_title_works_at_once_and_on_waking)
{
    Opened opened;
    QSignalSpy changes(&opened.window, &Window::hidesTitleChanged);
    opened.window.setHidesTitle(true);
    EXPECT_EQ(opened.window.titleVisibility(), NS::Window::titleHidden);
    EXPECT_TRUE(opened.window.titleBarTextField()->isHidden());
    opened.window.setTitleVisibility(NS::Window::titleVisible);
    opened.window.setHidesTitle(true);
    EXPECT_EQ(opened.window.titleVisibility(), NS::Window::titleHidden) << "though it was stored";
    opened.window.setTitleVisibility(NS::Window::titleVisible);
    opened.window.awakeFromNib();
    EXPECT_EQ(opened.window.titleVisibility(), NS::Window::titleHidden);
    opened.window.setHidesTitle(false);
    EXPECT_FALSE(opened.window.titleBarTextField()->isHidden());
    EXPECT_EQ(changes.size(), 2);
}

// The adopted views

// The inner view goes from 2 * 20 to 2 * 20 beyond the right edge. The tool bar view begins below
// twice the vertical margin and the 16 units of a button.
TEST(Window, adopted_views_lie_where_the_margins_say)
{
    struct Adoption
    {
        bool isCentered;
        double verticalMargin;
        QRectF inner; // y upwards, in a title bar of 400 x 60
        QRectF toolbar;
    };
    const Adoption rows[] = {
        { true, 8, { 40, 8, 400, 44 }, { 20, 8, 360, 20 } },
        { false, 8, { 40, 60 - 24, 400, 16 }, { 20, 8, 360, 20 } },
        { true, 0, { 40, 3, 400, 54 }, { 20, 3, 360, 35 } }, // the standard margin
    };
    for (const Adoption &row : rows) {
        SCOPED_TRACE(&row - rows);
        Opened opened(60);
        Window &window = opened.window;
        window.setCenterTrafficLightButtons(row.isCentered);
        window.setTrafficLightHorizontalMargin(20);
        window.setTrafficLightVerticalMargin(row.verticalMargin);
        QWidget former;
        auto *const inner = new QWidget(&former);
        auto *const toolbar = new QWidget;
        window.setInnerTitleBarView(inner);
        window.setToolbarView(toolbar);
        EXPECT_EQ(inner->parentWidget(), &former) << "until the window wakes";
        window.awakeFromNib();
        NS::layoutSubtreeIfNeeded(&window);
        EXPECT_EQ(inTitleBar(window, inner), row.inner);
        EXPECT_EQ(inTitleBar(window, toolbar), row.toolbar);

        window.resize(500, 400);
        NS::layoutSubtreeIfNeeded(&window);
        EXPECT_EQ(inTitleBar(window, inner), row.inner.adjusted(0, 0, 100, 0));
        EXPECT_EQ(inTitleBar(window, toolbar), row.toolbar.adjusted(0, 0, 100, 0));
    }
}

TEST(Window, adopted_views_are_mirrored_from_right_to_left_and_buttons_are_not)
{
    Opened opened(60);
    auto *const inner = new QWidget;
    opened.window.setTrafficLightHorizontalMargin(20);
    opened.window.setInnerTitleBarView(inner);
    opened.window.setLayoutDirection(Qt::RightToLeft);
    opened.window.awakeFromNib();
    NS::layoutSubtreeIfNeeded(&opened.window);
    EXPECT_EQ(NS::frame(inner).left(), -40);
    EXPECT_EQ(NS::frame(inner).right(), 360);
    EXPECT_THAT(opened.buttonLefts(), testing::ElementsAre(20, 40, 60));
}

TEST(Window, an_inner_view_can_be_kept_clear_of_buttons_and_edges)
{
    for (const Qt::LayoutDirection direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        Opened opened(60);
        auto *const inner = new QWidget;
        inner->setMinimumWidth(250);
        opened.window.setTrafficLightHorizontalMargin(20);
        opened.window.setKeepsTitleBarViewClear(true);
        opened.window.setInnerTitleBarView(inner);
        opened.window.setLayoutDirection(direction);
        opened.window.awakeFromNib();
        opened.window.show();
        NS::layoutSubtreeIfNeeded(&opened.window);
        const double end = opened.button(WindowButton::zoom).right() + 20;
        EXPECT_EQ(NS::frame(inner).left(), end);
        EXPECT_EQ(NS::frame(inner).right(), 400 - 20);
        opened.window.resize(10, 300);
        EXPECT_EQ(opened.window.width(), end + 250 + 20) << "it cannot get narrower";
    }
}

TEST(Window, buttons_lie_above_the_adopted_views)
{
    Opened opened(60);
    opened.window.setInnerTitleBarView(new QWidget);
    opened.window.setToolbarView(new QWidget);
    opened.window.awakeFromNib();
    opened.window.show();
    NS::layoutSubtreeIfNeeded(&opened.window);
    for (const WindowButton kind :
         { WindowButton::close, WindowButton::miniaturize, WindowButton::zoom }) {
        QAbstractButton *const button = opened.window.standardWindowButton(kind);
        EXPECT_EQ(opened.window.titleBarView()->childAt(button->geometry().center()), button);
    }
}

TEST(Window, an_accessory_of_the_program_lies_below_buttons_and_views)
{
    for (const int height : { 22, 60 }) {
        Opened opened(height);
        Window &window = opened.window;
        auto *const inner = new QWidget;
        QPointer<QWidget> toolbar;
        window.setInnerTitleBarView(inner);
        if (height == 60)
            window.setToolbarView(toolbar = new QWidget);
        window.awakeFromNib();
        window.show();
        NS::TitlebarAccessoryViewController accessory;
        auto *const view = new QWidget;
        view->resize(10, 30);
        accessory.setView(view);
        const auto expectBand = [&](const char *when) {
            window.grab();
            const QAbstractButton *const close = window.standardWindowButton(WindowButton::close);
            EXPECT_EQ(close->y(), height / 2 - 8) << when;
            EXPECT_NEAR(window.titleBarTextField()->geometry().center().y(), 0.5 * height, 1)
                    << when;
            for (const QWidget *const adopted : { inner, toolbar.data() })
                EXPECT_EQ(adopted ? adopted->geometry().bottom() + 1 : height - 3, height - 3)
                        << when;
        };
        expectBand("without it");
        window.addTitlebarAccessoryViewController(&accessory);
        expectBand("with it");
        EXPECT_EQ(window.titleBarView()->height(), height + 30);
        EXPECT_EQ(window.titleBarView()->childAt(20, height + 10), view);
        view->resize(10, 50);
        expectBand("when it has grown");
        window.toggleFullScreen();
        expectBand("in full screen");
        window.toggleFullScreen();
        window.removeTitlebarAccessoryViewControllerAtIndex(1);
        expectBand("without it again");
    }
}

TEST(Window, views_that_it_did_not_adopt_end_with_it)
{
    QPointer<QWidget> inner = new QWidget;
    QPointer<QWidget> toolbar = new QWidget;
    {
        Window window;
        window.setInnerTitleBarView(inner);
        window.setToolbarView(toolbar);
    }
    EXPECT_FALSE(inner);
    EXPECT_FALSE(toolbar);
}

// Failures

TEST(Window, without_a_close_button_waking_warns_and_adopts_nothing)
{
    for (const NS::Window::StyleMask style :
         { NS::Window::StyleMask(NS::Window::borderless), wholeStyle & ~NS::Window::closable }) {
        Opened opened(0, style);
        auto *const inner = new QWidget;
        opened.window.setInnerTitleBarView(inner);
        opened.window.setHidesTitle(true);
        opened.window.setTitleVisibility(NS::Window::titleVisible);
        testing::internal::CaptureStdout();
        opened.window.awakeFromNib();
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "Warning: Window can't resolve close button!\n");
        EXPECT_EQ(inner->parentWidget(), nullptr);
        EXPECT_EQ(opened.window.trafficLightHorizontalMargin(), 0.0);
        EXPECT_EQ(opened.window.titleVisibility(), NS::Window::titleVisible);
        EXPECT_EQ(opened.window.titleBarView(), nullptr);
        EXPECT_EQ(opened.window.titleBarTextField(), nullptr);
        opened.window.layoutIfNeeded();
    }
}

TEST(Window, a_close_button_that_leaves_its_view_while_waking_is_warned_of)
{
    Opened opened;
    auto *const inner = new QWidget;
    opened.window.setInnerTitleBarView(inner);
    opened.window.setHidesTitle(true);
    opened.window.setTitleVisibility(NS::Window::titleVisible);
    const std::unique_ptr<QAbstractButton> button(
            opened.window.standardWindowButton(WindowButton::close));
    QObject::connect(&opened.window, &NS::Window::titleVisibilityChanged, button.get(),
                     [&] { button->setParent(nullptr); });
    testing::internal::CaptureStdout();
    opened.window.awakeFromNib();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Warning: Window can't resolve title bar view!\n");
    EXPECT_EQ(opened.window.trafficLightHorizontalMargin(), 7.0);
    EXPECT_EQ(opened.window.titleVisibility(), NS::Window::titleHidden);
    EXPECT_EQ(inner->parentWidget(), nullptr);
}

TEST(WindowDeathTest, a_button_in_no_view_stops_the_program)
{
    Opened opened;
    const std::unique_ptr<QAbstractButton> button(
            opened.window.standardWindowButton(WindowButton::close));
    button->setParent(nullptr);
    EXPECT_DEATH(opened.window.awakeFromNib(), "close button is in no view");
    EXPECT_DEATH(opened.window.layoutIfNeeded(), "is in no view");
    EXPECT_DEATH(opened.window.removeTitlebarAccessoryViewControllerAtIndex(0), "that index");
}

TEST(Window, overridden_operations_reach_the_platform)
{
    Opened opened;
    opened.window.setFrame(QRectF(70, 80, 310, 210), false, false);
    opened.window.orderFront();
    EXPECT_TRUE(opened.window.isVisible());
    const QByteArray state = opened.window.saveState();
    opened.window.setFrame(QRectF(0, 0, 350, 250), false);
    EXPECT_TRUE(opened.window.restoreState(state));
    EXPECT_EQ(opened.window.frame(), QRectF(70, 80, 310, 210));
    EXPECT_FALSE(opened.window.restoreState("nonsense"));
}
