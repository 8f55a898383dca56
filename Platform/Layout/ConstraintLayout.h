// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QLayout>

namespace Pellarvine::detail {

class LayoutEngine;

/// Reports the engine's answers to Qt. It holds no items: the engine places the widgets.
class ConstraintLayout : public QLayout
{
public:
    /// Owns the engine from now on.
    ConstraintLayout(QWidget *host, LayoutEngine *engine);

    /// Whether the host has such a layout, or none of another kind.
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

/// Whether a Qt layout of another kind places the widget in its parent.
bool isPlacedByOtherLayout(const QWidget *widget);

/// Whether no such layout decides where `from`, or what lies between it and `ancestor`, is.
bool isReachable(const QWidget *from, const QWidget *ancestor);

} // namespace Pellarvine::detail
