// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QWidget>

namespace Pellarvine::detail {

/// Lies over a view and paints the findings about its layout.
class PELLARVINE_INTERNAL_EXPORT LayoutOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit LayoutOverlay(QWidget *view);

    /// The view's overlay, or null.
    static LayoutOverlay *of(const QWidget *view);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// Lays an overlay over each window in which constraints are at work, as long as this lives.
class PELLARVINE_INTERNAL_EXPORT LayoutDebugging : public QObject
{
public:
    explicit LayoutDebugging(QObject *parent = nullptr);
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace Pellarvine::detail
