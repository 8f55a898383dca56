// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QColor>
#include <QList>
#include <QWidget>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QToolBar)

namespace NS {

/// The program's one colour chooser: a window of its own, whose content can also live elsewhere.
///
///     auto *const panel = NS::ColorPanel::sharedColorPanel();
///     panel->setColor(shape->color());
///     connect(panel, &NS::ColorPanel::colorChanged, shape, &Shape::setColor);
///     panel->orderFront();
///
/// Its pages are a wheel of hue and saturation with a slider for brightness, sliders for red, green
/// and blue or hue, saturation and brightness, and the program's colour lists; below them are
/// opacity, the colour as hex text (read like `Pellarvine::colorWithHex`), the colours chosen last,
/// and a way to pick a colour from the screen: a loupe on X11, elsewhere what the desktop's portal
/// has, if it has one.
class PELLARVINE_EXPORT ColorPanel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged USER true)
    Q_PROPERTY(bool showsAlpha READ showsAlpha WRITE setShowsAlpha NOTIFY showsAlphaChanged)
    Q_PROPERTY(Mode mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(
            QColor defaultColor READ defaultColor WRITE setDefaultColor NOTIFY defaultColorChanged)
    Q_PROPERTY(QList<QColor> recentColors READ recentColors WRITE setRecentColors NOTIFY
                       recentColorsChanged)

public:
    /// The pages. Setting a number that is none of these changes nothing.
    enum Mode {
        rgbMode = 1, ///< sliders for red, green and blue
        hsbMode = 3, ///< sliders for hue, saturation and brightness
        colorListMode = 5, ///< the colour lists
        wheelMode = 6, ///< the wheel
    };
    Q_ENUM(Mode)

    /// Made by the first call, hidden, and destroyed with the application object.
    static ColorPanel *sharedColorPanel();
    static bool sharedColorPanelExists(); ///< asks without making it
    ~ColorPanel() override;

    /// White until something else is chosen. Changes with every movement of the mouse. Opaque while
    /// there is no opacity slider, also if what is set is not. An invalid colour is not set.
    QColor color() const;

    /// Whether there is an opacity slider. Default: false; clearing it makes the colour opaque.
    bool showsAlpha() const;

    /// The page that is shown. Default: wheelMode.
    Mode mode() const;

    /// What a button of the panel goes back to. Invalid if there is none, which hides the button.
    /// Default: invalid.
    QColor defaultColor() const;

    /// The colours that were chosen last, the latest first, at most eight; offered below the
    /// colour. One is added when the content is hidden with another colour than it was shown with.
    /// A program that is to remember them stores them, and sets them when it starts. Default:
    /// empty.
    QList<QColor> recentColors() const;

    /// Adds a colour in front, and removes an equal one behind it. Does nothing if it is invalid.
    void addRecentColor(const QColor &color);

    /// Stands on top of the content and moves with it. Its actions are its items, one a page, the
    /// wheel first; triggering one shows that page.
    QToolBar *toolbar() const;

    /// All that is in the window. Put into another parent it leaves the window, which hides then;
    /// the window takes it back when it is shown again. If it is destroyed elsewhere, the next call
    /// makes it anew, in the state that the panel is in.
    QWidget *contentView() const;

    /// Brings the content back into the window, which stays hidden.
    void reclaimContentView();

public Q_SLOTS:
    void setColor(const QColor &color);
    void setShowsAlpha(bool showsAlpha);
    void setMode(NS::ColorPanel::Mode mode);
    void setDefaultColor(const QColor &color);
    /// Passes over invalid colours, equal ones after the first, and what is too many.
    void setRecentColors(const QList<QColor> &colors);
    /// Shows the window, above others and with the focus. It then stays above the window that is
    /// active now.
    void orderFront();
    /// Hides the window, as Esc in it does. Content that is elsewhere stays to be seen there.
    void orderOut();

Q_SIGNALS:
    void colorChanged(const QColor &color);
    void showsAlphaChanged(bool showsAlpha);
    void modeChanged(NS::ColorPanel::Mode mode);
    void defaultColorChanged(const QColor &color);
    void recentColorsChanged(const QList<QColor> &colors);

protected:
    void changeEvent(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    ColorPanel();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
