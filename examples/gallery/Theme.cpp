// SPDX-License-Identifier: MIT
#include "Theme.h"

#include "FlatStyle.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace {

struct Colors
{
    QRgb window, base, alternate, text, dim, border, button, accent, onAccent, link, error;
};

constexpr Colors lightColors {
    0xfff6f7f9, 0xffffffff, 0xffeef0f4, 0xff1d2129, 0xff5f6775, 0xffd5d9e0,
    0xffffffff, 0xff2f6fde, 0xffffffff, 0xff2459b8, 0xffb3261e,
};
constexpr Colors darkColors {
    0xff1b1e24, 0xff23272f, 0xff2a2f38, 0xffe8eaee, 0xffa0a8b5, 0xff3a404b,
    0xff2d323c, 0xff5b92f0, 0xff0f1115, 0xff8ab4ff, 0xffffb4ab,
};

QPalette palette(const Colors &colors)
{
    QPalette palette(QColor::fromRgb(colors.button), QColor::fromRgb(colors.window));
    const auto set = [&](QPalette::ColorRole role, QRgb color) {
        palette.setColor(role, QColor::fromRgb(color));
    };
    set(QPalette::Window, colors.window);
    set(QPalette::WindowText, colors.text);
    set(QPalette::Base, colors.base);
    set(QPalette::AlternateBase, colors.alternate);
    set(QPalette::Text, colors.text);
    set(QPalette::Button, colors.button);
    set(QPalette::ButtonText, colors.text);
    set(QPalette::PlaceholderText, colors.dim);
    set(QPalette::Highlight, colors.accent);
    set(QPalette::HighlightedText, colors.onAccent);
    set(QPalette::Link, colors.link);
    set(QPalette::LinkVisited, colors.link);
    set(QPalette::Mid, colors.border);
    set(QPalette::BrightText, colors.error);
    set(QPalette::ToolTipBase, colors.base);
    set(QPalette::ToolTipText, colors.text);
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText }) {
        QColor disabled = QColor::fromRgb(colors.dim);
        disabled.setAlphaF(0.6F);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}

// %1 is the colour of placeholder texts, for which Qt 6.4's style sheets have no name.
constexpr auto styleSheet = R"(
QProgressBar { background: palette(mid); border: none; border-radius: 4px; max-height: 8px; }
QProgressBar::chunk { background: palette(highlight); border-radius: 4px; }
QListWidget#pages { background: transparent; border: none; outline: none; }
QListWidget#pages::item { padding: 6px 12px; border-radius: 6px; margin: 1px 8px; }
QListWidget#pages::item:selected { background: palette(highlight);
                                   color: palette(highlighted-text); }
QListWidget#pages::item:disabled { color: %1; margin-top: 8px; }
QToolButton#menuButton::menu-indicator { image: none; }
)";

} // namespace

void Theme::apply(QApplication &application, Scheme scheme)
{
    QApplication::setStyle(new FlatStyle);
    QApplication::setPalette(palette(scheme == dark ? darkColors : lightColors));
    QApplication::setFont(font(body));
    const QColor dim = QApplication::palette().color(QPalette::PlaceholderText);
    application.setStyleSheet(QString::fromLatin1(styleSheet).arg(dim.name()));
}

Theme::Scheme Theme::preferredScheme()
{
    const QPalette palette = QApplication::palette();
    const bool isDark = palette.color(QPalette::Window).lightness()
                        < palette.color(QPalette::WindowText).lightness();
    return isDark ? dark : light;
}

QFont Theme::font(Role role)
{
    if (role == monospace)
        return QFontDatabase::systemFont(QFontDatabase::FixedFont);
    QFont font(u"Inter"_s);
    font.setPointSizeF(QFontDatabase::systemFont(QFontDatabase::GeneralFont).pointSizeF());
    if (role == strong)
        font.setWeight(QFont::DemiBold);
    if (role == heading) {
        font.setPointSizeF(font.pointSizeF() * 1.8);
        font.setWeight(QFont::Bold);
    }
    return font;
}
