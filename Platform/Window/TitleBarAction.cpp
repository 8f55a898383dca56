// SPDX-License-Identifier: MIT
#include "Window/TitleBarAction.h"

#include "View/DesktopSettings.h"

#include <QHash>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

struct Click
{
    QString kwinSetting; // in kwinrc
    QString gnomeSetting;
    TitleBarAction standard;
};

Click clickOf(TitleBarClick click)
{
    switch (click) {
    case TitleBarClick::doubleClick:
        return { u"Windows/TitlebarDoubleClickCommand"_s, u"action-double-click-titlebar"_s,
                 TitleBarAction::zoom };
    case TitleBarClick::middle:
        return { u"MouseBindings/CommandActiveTitlebar2"_s, u"action-middle-click-titlebar"_s,
                 TitleBarAction::none };
    case TitleBarClick::right:
        return { u"MouseBindings/CommandActiveTitlebar3"_s, u"action-right-click-titlebar"_s,
                 TitleBarAction::windowMenu };
    }
    Q_UNREACHABLE();
}

QString settingFor(const Click &click)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    if (desktops.contains(u"KDE"_s)) {
        const QString file =
                QStandardPaths::locate(QStandardPaths::GenericConfigLocation, u"kwinrc"_s);
        return QSettings(file, QSettings::IniFormat).value(click.kwinSetting).toString();
    }
    return DesktopSettings::instance()
            .value(u"org.gnome.desktop.wm.preferences"_s, click.gnomeSetting)
            .toString();
}

} // namespace

TitleBarAction titleBarAction(TitleBarClick click)
{
    // By the names of KWin and GNOME. Any other action counts as the standard one.
    static const QHash<QString, TitleBarAction> actions {
        { u"maximize"_s, TitleBarAction::zoom },
        { u"toggle-maximize"_s, TitleBarAction::zoom },
        { u"minimize"_s, TitleBarAction::miniaturize },
        { u"lower"_s, TitleBarAction::lower },
        { u"operations menu"_s, TitleBarAction::windowMenu },
        { u"menu"_s, TitleBarAction::windowMenu },
        { u"nothing"_s, TitleBarAction::none },
        { u"none"_s, TitleBarAction::none },
    };
    const Click facts = clickOf(click);
    return actions.value(settingFor(facts).toLower(), facts.standard);
}

} // namespace Pellarvine::detail
