// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/PortalColorPicker.h"

#include "PortalOnBus.h"

#include <pellarvine/Platform/NSPopover.h>

#include <QApplication>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QSignalSpy>
#include <QTimer>

#include <optional>

using namespace Qt::StringLiterals;
using Pellarvine::detail::PortalColorPicker;

namespace {

class Screenshots : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Screenshot")
    Q_PROPERTY(uint version MEMBER version)

public:
    uint version = 2;
    QVariant color; // the colour that the user picks
    uint code = 0;
    bool choosesPath = false;
    bool refuses = false;
    bool forgets = false; // does not answer
    int calls = 0;

    void answer(const QString &request)
    {
        QDBusMessage response = QDBusMessage::createSignal(
                request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        response.setArguments({ code, QVariantMap { { u"color"_s, color } } });
        QDBusConnection(u"portal"_s).send(response);
    }

public Q_SLOTS:
    QDBusObjectPath PickColor(const QString &, const QVariantMap &options) // NOLINT: as on the bus
    {
        ++calls;
        if (refuses) {
            sendErrorReply(u"org.freedesktop.portal.Error.NotAllowed"_s);
            return {};
        }
        if (forgets)
            return QDBusObjectPath(u"/org/freedesktop/portal/desktop/request/lost"_s);
        if (choosesPath) {
            const QString own = u"/org/freedesktop/portal/desktop/request/own"_s;
            QTimer::singleShot(500, this, [this, own] { answer(own); });
            return QDBusObjectPath(own);
        }
        QString sender = message().service().mid(1);
        const QString path = u"/org/freedesktop/portal/desktop/request/"_s
                             + sender.replace(u'.', u'_') + u'/'
                             + options.value(u"handle_token"_s).toString();
        answer(path); // answers before the call returns
        return QDBusObjectPath(path);
    }
};

class PortalColorPickerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!PortalOnBus::isPossible())
            GTEST_SKIP() << "dbus-daemon is not installed";
        bus.start(&portal);
    }
    // Whether the picker finds a portal.
    bool isFound()
    {
        picker.emplace(bus.program());
        QSignalSpy found(&*picker, &PortalColorPicker::found);
        return found.wait(500);
    }

    Screenshots portal;
    PortalOnBus bus;
    std::optional<PortalColorPicker> picker;
};

} // namespace

TEST_F(PortalColorPickerTest, a_portal_that_picks_colours_is_found)
{
    EXPECT_TRUE(isFound());
    portal.version = 1;
    EXPECT_FALSE(isFound());
}

TEST_F(PortalColorPickerTest, it_reports_what_the_desktop_has_picked)
{
    struct Row
    {
        const char *name;
        QVariant color;
        uint code;
        bool choosesPath;
        bool refuses;
        QColor picked;
    };
    const QVariant orange = QVariant::fromValue(PortalColor { 1.0, 0.5, 0.0 });
    const QColor color = QColor::fromRgbF(1.0F, 0.5F, 0.0F);
    const Row rows[] = {
        { "picked", orange, 0, false, false, color },
        { "cancelled", orange, 1, false, false, {} },
        { "at a path of the portal's own", orange, 0, true, false, color },
        { "no colour", QVariant::fromValue(PortalColor { 7.0, 0.5, 0.0 }), 0, false, false, {} },
        { "text", u"orange"_s, 0, false, false, {} },
        { "not allowed", orange, 0, false, true, {} },
        { "picked after all of that", orange, 0, false, false, color },
    };
    ASSERT_TRUE(isFound());
    QSignalSpy picks(&*picker, &PortalColorPicker::picked);
    for (const Row &row : rows) {
        portal.color = row.color;
        portal.code = row.code;
        portal.choosesPath = row.choosesPath;
        portal.refuses = row.refuses;
        const int calls = portal.calls;
        picker->pick();
        EXPECT_EQ(picks.wait(row.picked.isValid() ? 5000 : 200), row.picked.isValid()) << row.name;
        EXPECT_EQ(portal.calls, calls + 1) << row.name;
        if (row.picked.isValid() && !picks.isEmpty()) {
            EXPECT_EQ(picks.takeFirst().constFirst().value<QColor>(), row.picked) << row.name;
        }
    }
    portal.forgets = true;
    picker->pick();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal.calls == int(std::size(rows)) + 1; }));
    portal.forgets = false;
    picker->pick();
    EXPECT_TRUE(picks.wait());
    EXPECT_EQ(picks.count(), 1);
}

// While the desktop picks, it may take the keyboard, as if the user had left the program.
TEST_F(PortalColorPickerTest, a_transient_popover_stays_until_the_desktop_has_picked)
{
    ASSERT_TRUE(isFound());
    QWidget window;
    window.show();
    auto *const controller = new NS::ViewController;
    controller->setView(new QWidget);
    NS::Popover popover;
    popover.setContentViewController(controller);
    popover.setBehavior(NS::Popover::Behavior::transient);
    popover.showRelativeToRect({}, &window, NS::RectEdge::maxY);
    portal.forgets = true; // the user has not picked yet
    picker->pick();
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_TRUE(popover.isShown());
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    picker.reset();
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(popover.isShown());
}

#include "PortalColorPickerTest.moc"
