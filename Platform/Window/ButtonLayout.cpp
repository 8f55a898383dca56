// SPDX-License-Identifier: MIT
#include "Window/ButtonLayout.h"

#include "View/DesktopSettings.h"

#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

using Buttons = QList<NS::WindowButton>;

// "SIAX", each letter a button. A title bar of ours has no others.
Buttons buttonsFromKwin(const QString &letters)
{
    Buttons buttons;
    for (const QChar letter : letters) {
        if (letter == u'X')
            buttons.append(NS::WindowButton::close);
        else if (letter == u'I')
            buttons.append(NS::WindowButton::miniaturize);
        else if (letter == u'A')
            buttons.append(NS::WindowButton::zoom);
    }
    return buttons;
}

// "icon,minimize,maximize,close"
Buttons buttonsFromGnome(const QString &names)
{
    Buttons buttons;
    for (const QString &name : names.split(u',')) {
        if (name == "close"_L1)
            buttons.append(NS::WindowButton::close);
        else if (name == "minimize"_L1)
            buttons.append(NS::WindowButton::miniaturize);
        else if (name == "maximize"_L1)
            buttons.append(NS::WindowButton::zoom);
    }
    return buttons;
}

} // namespace

double ButtonLayout::place(NS::WindowButton kind, double barWidth, double margin,
                           double buttonWidth, double gap) const
{
    const double step = buttonWidth + gap;
    const qsizetype leftIndex = left.indexOf(kind);
    if (leftIndex >= 0)
        return margin + step * double(leftIndex);
    const qsizetype rightIndex = right.indexOf(kind);
    if (rightIndex < 0)
        return 0.0;
    return barWidth - margin - step * double(right.size() - rightIndex) + gap;
}

ButtonLayout desktopButtonLayout()
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    if (desktops.contains(u"KDE"_s)) {
        const QSettings kwin(
                QStandardPaths::locate(QStandardPaths::GenericConfigLocation, u"kwinrc"_s),
                QSettings::IniFormat);
        const auto letters = [&kwin](const QString &side, const QString &standard) {
            return kwin.value("org.kde.kdecoration2/ButtonsOn"_L1 + side, standard).toString();
        };
        return { buttonsFromKwin(letters(u"Left"_s, u"MS"_s)),
                 buttonsFromKwin(letters(u"Right"_s, u"HIAX"_s)) };
    }
    const QString told = DesktopSettings::instance()
                                 .value(u"org.gnome.desktop.wm.preferences"_s, u"button-layout"_s)
                                 .toString();
    if (told.isEmpty())
        return {};
    return { buttonsFromGnome(told.section(u':', 0, 0)),
             buttonsFromGnome(told.section(u':', 1, 1)) };
}

} // namespace Pellarvine::detail
