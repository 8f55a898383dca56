// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QWidget>

namespace Pellarvine::detail {

/// Covers a view and paints the findings about its layout.
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

/// While it exists, each window with constraints gets an overlay.
class PELLARVINE_INTERNAL_EXPORT LayoutDebugging : public QObject
{
public:
    explicit LayoutDebugging(QObject *parent = nullptr);
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace Pellarvine::detail
