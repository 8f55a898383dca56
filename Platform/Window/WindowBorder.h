// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QWidget>

namespace Pellarvine::detail {

/// Draws the line around a window, cuts the window's corners round and draws the shadow in its
/// margin. Lies above all other children of the window; its mask covers only those parts.
class WindowBorder : public QWidget
{
    Q_OBJECT

public:
    explicit WindowBorder(QWidget *window);

    /// Round corners need a translucent window.
    void setRound(bool isRound);
    /// The margin around the visible window.
    void setMargin(int margin);
    void arrange();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double radius() const;
    QRect seen() const;

    bool m_isRound = false;
    int m_margin = 0;
};

} // namespace Pellarvine::detail
