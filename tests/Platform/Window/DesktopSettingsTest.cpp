// SPDX-License-Identifier: MIT
// The user's settings of the desktop, from a portal on a private bus, or from a file.
#include "View/DesktopSettings.h"

#include "Drawing/Shades.h"
#include "PortalOnBus.h"
#include "TemporaryFolder.h"
#include "View/ColorSchemeFollower.h"
#include "Window/ButtonLayout.h"
#include "Window/TitleBarAction.h"

#include <pellarvine/Pellarvine/Window.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QScopeGuard>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace Pellarvine::detail;
using Groups = QMap<QString, QVariantMap>;

namespace {

const QString preferences = u"org.gnome.desktop.wm.preferences"_s;
const QString appearance = u"org.freedesktop.appearance"_s;

class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    Groups settings;

public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList &groups) // NOLINT: its name on the bus
    {
        Groups asked;
        for (const QString &group : groups) {
            if (settings.contains(group))
                asked.insert(group, settings.value(group));
        }
        return asked;
    }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);
};

} // namespace

// A session bus with a portal, and the program's connection to it.
class DesktopSettingsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!PortalOnBus::isPossible())
            GTEST_SKIP() << "dbus-daemon is not installed";
        qDBusRegisterMetaType<Groups>();
        m_bus.start(&portal);
    }
    void TearDown() override { delete &DesktopSettings::instance(); } // for the next test
    void start() { DesktopSettings::instance().start(m_bus.program()); }
    void change(const QString &group, const QString &key, const QVariant &value)
    {
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(value));
    }

    Portal portal;

private:
    PortalOnBus m_bus;
};

TEST_F(DesktopSettingsTest, clicks_on_title_bars_do_what_the_user_has_set)
{
    portal.settings[preferences][u"action-double-click-titlebar"_s] = u"minimize"_s;
    portal.settings[preferences][u"action-right-click-titlebar"_s] = u"lower"_s;
    EXPECT_EQ(titleBarAction(TitleBarClick::doubleClick), TitleBarAction::zoom);
    EXPECT_EQ(titleBarAction(TitleBarClick::middle), TitleBarAction::none);
    EXPECT_EQ(titleBarAction(TitleBarClick::right), TitleBarAction::windowMenu);
    start();
    EXPECT_TRUE(QTest::qWaitFor([] {
        return titleBarAction(TitleBarClick::doubleClick) == TitleBarAction::miniaturize
               && titleBarAction(TitleBarClick::right) == TitleBarAction::lower;
    }));
    change(preferences, u"action-middle-click-titlebar"_s, u"toggle-maximize"_s);
    EXPECT_TRUE(QTest::qWaitFor(
            [] { return titleBarAction(TitleBarClick::middle) == TitleBarAction::zoom; }));
    NS::Window window;
    window.show();
    QTest::mouseClick(window.windowHandle(), Qt::MiddleButton, {}, { 300, 11 });
    EXPECT_TRUE(window.isMaximized());
}

TEST_F(DesktopSettingsTest, the_palette_follows_scheme_and_accent_while_it_is_asked_to)
{
    const QPalette before = QApplication::palette();
    ASSERT_FALSE(isDark(before));
    const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
    portal.settings[appearance][u"color-scheme"_s] = 1U;
    start();
    {
        const ColorSchemeFollower follower;
        EXPECT_TRUE(QTest::qWaitFor([] { return isDark(QApplication::palette()); }));
        change(appearance, u"accent-color"_s, QVariant::fromValue(PortalColor { 1.0, 0.5, 0.0 }));
        const QColor orange = QColor::fromRgbF(1.0F, 0.5F, 0.0F);
        EXPECT_TRUE(QTest::qWaitFor(
                [&] { return QApplication::palette().color(QPalette::Highlight) == orange; }));
        // Numbers that are not a colour.
        change(appearance, u"accent-color"_s, QVariant::fromValue(PortalColor { -1.0, 0.5, 7.0 }));
        EXPECT_TRUE(QTest::qWaitFor(
                [&] { return QApplication::palette().color(QPalette::Highlight) != orange; }));
        EXPECT_TRUE(isDark(QApplication::palette()));
        change(appearance, u"color-scheme"_s, 0U);
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::palette() == before; }));
        change(appearance, u"color-scheme"_s, 1U);
        EXPECT_TRUE(QTest::qWaitFor([] { return isDark(QApplication::palette()); }));
    }
    EXPECT_EQ(QApplication::palette(), before);
}

TEST_F(DesktopSettingsTest, each_desktop_says_in_its_own_way_that_there_should_be_less_motion)
{
    portal.settings[appearance][u"reduced-motion"_s] = 0U;
    start();
    ASSERT_TRUE(QTest::qWaitFor([] {
        return DesktopSettings::instance().value(appearance, u"reduced-motion"_s).isValid();
    }));
    NS::Window window;
    window.show();
    const QRectF before = window.frame();
    const struct
    {
        QString group;
        QString key;
        QVariant less;
        QVariant usual;
    } settings[] = {
        { appearance, u"reduced-motion"_s, 1U, 0U },
        { u"org.gnome.desktop.interface"_s, u"enable-animations"_s, false, true },
        { u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0"_s, u"1.5"_s },
    };
    for (const auto &setting : settings) {
        const auto reduces = [] {
            return DesktopSettings::instance().reducesMotion();
        };
        EXPECT_FALSE(reduces()) << setting.key.toStdString();
        change(setting.group, setting.key, setting.less);
        EXPECT_TRUE(QTest::qWaitFor(reduces)) << setting.key.toStdString();
        const QRectF other = window.frame().adjusted(0, 0, 40, 0);
        window.setFrame(other, false, true);
        EXPECT_EQ(window.frame(), other) << setting.key.toStdString();
        change(setting.group, setting.key, setting.usual);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !reduces(); })) << setting.key.toStdString();
    }
    window.setFrame(before, false, true);
    EXPECT_NE(window.frame(), before);
}

TEST_F(DesktopSettingsTest, buttons_stand_where_the_user_wants_them_once_the_window_asks_for_it)
{
    using NS::WindowButton;
    portal.settings[preferences][u"button-layout"_s] = u"close:appmenu,minimize"_s;
    start();
    ASSERT_TRUE(QTest::qWaitFor([] {
        return DesktopSettings::instance().value(preferences, u"button-layout"_s).isValid();
    }));
    Pellarvine::Window window;
    window.setTrafficLightHorizontalMargin(10);
    window.resize(400, 300);
    window.show();
    const auto x = [&](WindowButton kind) {
        window.layoutIfNeeded();
        const QAbstractButton *const button = window.standardWindowButton(kind);
        return button->isVisible() ? button->x() : -1;
    };
    EXPECT_EQ(x(WindowButton::miniaturize), 30);
    window.setFollowsDesktopButtonLayout(true);
    EXPECT_EQ(x(WindowButton::close), 10);
    EXPECT_EQ(x(WindowButton::miniaturize), 400 - 10 - 14);
    EXPECT_EQ(x(WindowButton::zoom), -1);
    window.resize(500, 300);
    EXPECT_EQ(x(WindowButton::miniaturize), 500 - 10 - 14);
    change(preferences, u"button-layout"_s, u":minimize,maximize,close"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return x(WindowButton::close) == 500 - 10 - 14; }));
    EXPECT_EQ(x(WindowButton::zoom), 500 - 10 - 14 - 20);
    EXPECT_EQ(x(WindowButton::miniaturize), 500 - 10 - 14 - 40);
    window.resize(1, 300); // the minimum width has room for the buttons
    EXPECT_GE(x(WindowButton::miniaturize), 0);
    EXPECT_LT(window.width(), 100);
    window.setFollowsDesktopButtonLayout(false);
    EXPECT_EQ(x(WindowButton::close), 10);
    EXPECT_EQ(x(WindowButton::zoom), 50);
}

namespace {

// KWin's file of settings with those contents, on its desktop.
class KwinFile
{
public:
    explicit KwinFile(const QByteArray &contents)
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        qputenv("XDG_CURRENT_DESKTOP", "KDE");
        m_folder.file(u"kwinrc"_s, contents);
    }
    ~KwinFile()
    {
        qunsetenv("XDG_CURRENT_DESKTOP");
        qunsetenv("XDG_CONFIG_HOME");
    }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST(KwinSettings, are_read_from_its_file)
{
    using enum TitleBarClick;
    const std::tuple<QByteArray, TitleBarClick, TitleBarAction> rows[] = {
        { "[Windows]\nTitlebarDoubleClickCommand=Minimize\n", doubleClick,
          TitleBarAction::miniaturize },
        { "[Windows]\nTitlebarDoubleClickCommand=Nothing\n", doubleClick, TitleBarAction::none },
        { "[MouseBindings]\nCommandActiveTitlebar2=Lower\n", middle, TitleBarAction::lower },
        { "[MouseBindings]\nCommandActiveTitlebar3=Maximize\n", right, TitleBarAction::zoom },
        { "[MouseBindings]\nCommandActiveTitlebar3=Shade\n", right, // an unsupported action
          TitleBarAction::windowMenu },
    };
    for (const auto &[contents, click, action] : rows) {
        const KwinFile file(contents);
        EXPECT_EQ(titleBarAction(click), action) << contents.constData();
    }
}

TEST(KwinButtons, are_read_from_its_file_too)
{
    using NS::WindowButton;
    ButtonLayout expected {
        {}, { WindowButton::miniaturize, WindowButton::zoom, WindowButton::close }
    };
    {
        const KwinFile empty("");
        EXPECT_EQ(desktopButtonLayout(), expected); // KWin's own standard
    }
    const KwinFile file("[org.kde.kdecoration2]\nButtonsOnLeft=XM\nButtonsOnRight=I\n");
    expected = { { WindowButton::close }, { WindowButton::miniaturize } };
    EXPECT_EQ(desktopButtonLayout(), expected);
}

#include "DesktopSettingsTest.moc"
