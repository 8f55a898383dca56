// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QLayout>

namespace Pellarvine::detail {

class LayoutEngine;

/// The QLayout that reports the sizes of an engine to Qt. It has no items, because the engine
/// places the widgets.
class ConstraintLayout : public QLayout
{
public:
    /// Takes ownership of the engine.
    ConstraintLayout(QWidget *host, LayoutEngine *engine);

    /// Whether the host has a ConstraintLayout or no layout.
    static bool canServe(const QWidget *host);

    void addItem(QLayoutItem *item) override { delete item; }
    QLayoutItem *itemAt(int) const override { return nullptr; }
    QLayoutItem *takeAt(int) override { return nullptr; }
    int count() const override { return 0; }
    bool isEmpty() const override { return false; }

    void invalidate() override;
    void setGeometry(const QRect &rect) override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    QSize maximumSize() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    int minimumHeightForWidth(int width) const override;
    Qt::Orientations expandingDirections() const override;

private:
    LayoutEngine *m_engine;
};

/// Whether another kind of QLayout places the widget in its parent.
bool isPlacedByOtherLayout(const QWidget *widget);

/// Whether no other kind of QLayout places `from` or a widget between it and `ancestor`.
bool isReachable(const QWidget *from, const QWidget *ancestor);

} // namespace Pellarvine::detail
