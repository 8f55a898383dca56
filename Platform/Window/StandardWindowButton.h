// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindowButton.h"

#include <QAbstractButton>

namespace Pellarvine::detail {

/// Whether the widget's window draws itself as the one that is being used. One that is not on the
/// screen does, for pictures of it.
bool looksActive(const QWidget *widget);

/// One of the buttons in a window's title bar. It draws itself in the window's state: coloured
/// while the window is active or the pointer is near, grey otherwise, with a glyph under the
/// pointer.
class StandardWindowButton : public QAbstractButton
{
    Q_OBJECT

public:
    StandardWindowButton(NS::WindowButton kind, QWidget *parent);

    NS::WindowButton kind() const { return m_kind; }

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

    NS::WindowButton m_kind;
    bool m_showsGlyph = false;
};

} // namespace Pellarvine::detail
