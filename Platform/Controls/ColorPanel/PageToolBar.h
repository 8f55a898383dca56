// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QToolBar>

namespace Pellarvine::detail {

/// The items of pages, of which one is shown: screen readers hear radio buttons. Has no bar of its
/// own behind them.
class PageToolBar : public QToolBar
{
    Q_OBJECT

public:
    explicit PageToolBar(QWidget *parent = nullptr);

protected:
    /// Prepares the button of a new item.
    void actionEvent(QActionEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace Pellarvine::detail
