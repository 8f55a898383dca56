// SPDX-License-Identifier: MIT
#include "View/ColorSchemeFollower.h"

#include "Drawing/Shades.h"
#include "View/DesktopSettings.h"

#include <QApplication>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

const QString group = u"org.freedesktop.appearance"_s;

// The numbers of the portal. Others mean no preference.
constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

QPalette darkPalette()
{
    const QColor window(0x2a, 0x2b, 0x2e);
    const QColor text(0xf2, 0xf2, 0xf2);
    QPalette palette(QColor(0x3a, 0x3b, 0x3f), window);
    palette.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x21));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x27, 0x2a));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3b, 0x3f));
    palette.setColor(QPalette::Link, QColor(0x7a, 0xb4, 0xff));
    palette.setColor(QPalette::LinkVisited, QColor(0xc0, 0xa0, 0xf0));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xde));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role :
         { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText }) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, mixed(window, text, 0.4));
    }
    palette.setColor(QPalette::PlaceholderText, mixed(window, text, 0.55));
    return palette;
}

void setAccent(QPalette &palette, const QColor &accent)
{
    const bool isLight = accent.lightnessF() > 0.65F;
    for (const auto state : { QPalette::Active, QPalette::Inactive }) {
        palette.setColor(state, QPalette::Highlight, accent);
        palette.setColor(state, QPalette::HighlightedText, isLight ? Qt::black : Qt::white);
    }
}

} // namespace

ColorSchemeFollower::ColorSchemeFollower(QObject *parent)
    : QObject(parent)
    , m_own(QApplication::palette())
{
    DesktopSettings &settings = DesktopSettings::instance();
    settings.start();
    connect(&settings, &DesktopSettings::changed, this, [this](const QString &changed) {
        if (changed == group)
            apply();
    });
    apply();
}

ColorSchemeFollower::~ColorSchemeFollower()
{
    if (qApp)
        QApplication::setPalette(m_own);
}

void ColorSchemeFollower::apply()
{
    const DesktopSettings &settings = DesktopSettings::instance();
    const uint scheme = settings.value(group, u"color-scheme"_s).toUInt();
    QPalette palette = m_own;
    if (scheme == preferDark && !isDark(m_own))
        palette = darkPalette();
    else if (scheme == preferLight && isDark(m_own))
        palette = QApplication::style()->standardPalette();
    const QVariant accent = settings.value(group, u"accent-color"_s);
    if (accent.isValid())
        setAccent(palette, accent.value<QColor>());
    if (palette != QApplication::palette())
        QApplication::setPalette(palette);
}

} // namespace Pellarvine::detail
