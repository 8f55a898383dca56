// SPDX-License-Identifier: MIT
// Not API: a view that waits for its content.
#pragma once

#include "Base/Global.h"

#include <QBasicTimer>
#include <QWidget>

namespace Pellarvine::detail {

/// An arc that turns in the middle of a view. A translucent veil covers the view. It is shown at
/// once. `view` owns it.
class PELLARVINE_INTERNAL_EXPORT Spinner : public QWidget
{
    Q_OBJECT

public:
    explicit Spinner(QWidget *view);

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_timer;
    int m_step = 0;
};

} // namespace Pellarvine::detail
