// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QWidget>

namespace Pellarvine::detail {

/// The fine line around a window, above everything in it, which also cuts the window's corners
/// round and draws the shadow in the window's margin. It covers no more than those.
class WindowBorder : public QWidget
{
    Q_OBJECT

public:
    explicit WindowBorder(QWidget *window);

    /// Round corners need a translucent window.
    void setRound(bool isRound);
    /// Around the window that is seen.
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
