// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <pellarvine/Platform/NSWindow.h>

#include <QAbstractButton>

namespace NS {

/// One of the buttons in a window's title bar. It draws itself in the window's state: coloured while
/// the window is active or the pointer is near, grey otherwise, with a glyph under the pointer.
class StandardWindowButton : public QAbstractButton
{
    Q_OBJECT

public:
    StandardWindowButton(WindowButton kind, QWidget *parent);

    WindowButton kind() const { return m_kind; }

    /// Whether the three buttons show what they do, as they do together.
    void setShowsGlyph(bool shows);
    /// The names that change with the window's state.
    void updateName();

    QSize sizeHint() const override;

Q_SIGNALS:
    void hovered(bool isHovered);

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void drawControl(QPainter &painter) const;
    void drawDocument(QPainter &painter) const;
    void drawVersions(QPainter &painter) const;

    WindowButton m_kind;
    bool m_showsGlyph = false;
};

} // namespace NS
