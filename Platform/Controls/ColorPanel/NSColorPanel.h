// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QColor>
#include <QList>
#include <QWidget>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QToolBar)

namespace NS {

/// The program's colour chooser: a window whose content can be shown elsewhere, such as in a
/// popover.
///
///     auto *const panel = NS::ColorPanel::sharedColorPanel();
///     panel->setColor(shape->color());
///     connect(panel, &NS::ColorPanel::colorChanged, shape, &Shape::setColor);
///     panel->orderFront();
///
/// Its pages are a wheel of hue and saturation, sliders for the components, and the program's
/// colour lists. Below them are the opacity, the colour in hexadecimal digits, the recent colours,
/// and a button that picks a colour from the screen. The button is there on X11, and elsewhere if
/// the desktop's portal can pick colours. Main thread only.
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

    /// Default: white. It changes with every movement of the mouse. Without the opacity slider it
    /// is always opaque. The setter ignores an invalid colour.
    QColor color() const;

    /// Whether there is an opacity slider. Default: false. Hiding it makes the colour opaque.
    bool showsAlpha() const;

    /// The page that is shown. Default: wheelMode.
    Mode mode() const;

    /// The colour that the "Default" button chooses. Default: invalid, which hides the button.
    QColor defaultColor() const;

    /// The colours that were chosen last, latest first, at most eight. The colour is added when the
    /// content is hidden, if it has changed since it was shown. A program can store the list and
    /// set it at its next start. Default: empty.
    QList<QColor> recentColors() const;

    /// Moves the colour to the front of recentColors(). Does nothing if it is invalid.
    void addRecentColor(const QColor &color);

    /// The tool bar above the pages, a part of the content. It has one action for each page, the
    /// wheel first. Triggering an action shows its page.
    QToolBar *toolbar() const;

    /// The content of the window. Giving it another parent hides the window, which takes it back
    /// when it is shown again. If the content is deleted elsewhere, the next call makes it again.
    QWidget *contentView() const;

    /// Takes the content back without showing the window.
    void reclaimContentView();

public Q_SLOTS:
    void setColor(const QColor &color);
    void setShowsAlpha(bool showsAlpha);
    void setMode(NS::ColorPanel::Mode mode);
    void setDefaultColor(const QColor &color);
    /// Skips invalid colours, repeated colours, and those after the eighth.
    void setRecentColors(const QList<QColor> &colors);
    /// Shows the window with the focus. It stays above the window that is active now.
    void orderFront();
    /// Hides the window, like Esc. Content that is shown elsewhere stays visible.
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
    void followContent();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
