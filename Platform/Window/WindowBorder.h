// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QWidget>

namespace Pellarvine::detail {

/// The fine line around a window, above everything in it, which also cuts the window's corners
/// round. It covers no more than the line and the corners.
class WindowBorder : public QWidget
{
    Q_OBJECT

public:
    explicit WindowBorder(QWidget *window);

    /// Round corners need a translucent window.
    void setRound(bool isRound);
    void arrange();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double radius() const;

    bool m_isRound = false;
};

} // namespace Pellarvine::detail
